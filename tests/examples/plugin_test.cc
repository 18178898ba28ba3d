// Runs the program with the plug-in beside it and looks at its output and status.
#include <gtest/gtest.h>
#include <stdio.h>
#include <sys/wait.h>

#include <string>

namespace {

// What it prints on both outputs, and its exit status behind that.
std::string Output(std::string const& arguments) {
    FILE* const pipe = popen(("{ " PLUGIN_COMMAND " " + arguments + "; } 2>&1").c_str(), "r");
    if (!pipe) return "no pipe";
    std::string out;
    for (int c; (c = getc(pipe)) != EOF;) out += static_cast<char>(c);
    int const status = pclose(pipe);
    return out + (WIFEXITED(status) ? std::to_string(WEXITSTATUS(status)) : "killed");
}

TEST(Plugin, MeasuresAlongTheSearchPathOrComplains) {
    std::string const square = " 0 0 10 0 10 10 0 10";
    struct {
        std::string arguments, want;
    } const rows[] = {
        {"compactness.so" + square, "compactness 0.785398\n0"},
        {"-p /missing," PLUGIN_FOLDER " compactness.so" + square, "compactness 0.785398\n0"},
        {PLUGIN_FOLDER "/compactness.so 5 5 5 5 5 5", "compactness 0\n0"},
        {"-p /missing compactness.so" + square, "plugin: compactness.so: cannot be loaded\n1"},
        {"libm.so.6" + square, "plugin: libm.so.6: is no plug-in of this program\n1"},
        {"x.so 0 0 1 1 2 3px", "plugin: 3px: is no coordinate\n1"},
        {"x.so 0 0 1 1 2147483648 0", "plugin: 2147483648: is no coordinate\n1"},
        {"compactness.so" + square + " >/dev/full", "plugin: standard output: cannot write\n1"}};
    for (auto const& row : rows) EXPECT_EQ(row.want, Output(row.arguments)) << row.arguments;
    for (char const* few : {"", "-p", "-p /", "x.so", "x.so 0 0 1 1", "x.so 0 0 1 1 2 2 3"})
        EXPECT_EQ("usage: plugin [-p PATH] LIBRARY X Y X Y X Y...\n1", Output(few)) << few;
}

}  // namespace
