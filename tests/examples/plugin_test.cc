// Runs the program with the plug-in beside it and looks at its outputs and status.
#include "program.h"

using Plugin = Program;

TEST_F(Plugin, MeasuresAlongTheSearchPathOrComplains) {
    std::string const square = " 0 0 10 0 10 10 0 10";
    Answers(
        PLUGIN_COMMAND,
        {{"compactness.so" + square, "compactness 0.785398\n0"},
         {"-p /missing," PLUGIN_FOLDER " compactness.so" + square, "compactness 0.785398\n0"},
         {"-p /missing compactness.so" + square, "plugin: compactness.so: cannot be loaded\n1"},
         {"libm.so.6" + square, "plugin: libm.so.6: is no plug-in of this program\n1"},
         {"compactness.so" + square + " >/dev/full", "plugin: standard output: cannot write\n1"}});
}
