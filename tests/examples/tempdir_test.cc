// Runs the program and looks at what it prints and leaves behind.
#include "program.h"

using TempDirExample = Program;

TEST_F(TempDirExample, ListsTheFilesAndRemovesThem) {
    Answers(TEMPDIR_COMMAND, {{"'printf abc > b.txt; mkdir d; touch d/x a.o; echo done' '*.?*'",
                               "a.o: 0 bytes\nb.txt: 3 bytes\ndone\n0"},
                              {"'exit 3'", "3"},
                              {"'echo a' >/dev/full", "tempdir: cannot write standard output\n1"}});
    EXPECT_EQ(0, Run(TEMPDIR_COMMAND " 'pwd -P; touch file' none"));
    EXPECT_EQ(0u, out.find("/tmp/tempdir."));
    EXPECT_FALSE(fs::exists(out.substr(0, out.size() - 1)));
}
