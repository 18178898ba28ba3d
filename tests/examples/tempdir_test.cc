// Runs the program and looks at what it prints and leaves behind.
#include "program.h"

namespace {

using TempDirExample = Program;

TEST_F(TempDirExample, ListsTheFilesAndRemovesThem) {
    EXPECT_EQ(
        "a.o: 0 bytes\nb.txt: 3 bytes\ndone\n0",
        Answer(TEMPDIR_COMMAND " 'printf abc > b.txt; mkdir d; touch d/x a.o; echo done' '*.?*'"));
    EXPECT_EQ("3", Answer(TEMPDIR_COMMAND " 'exit 3'"));
    EXPECT_EQ("tempdir: cannot write standard output\n1",
              Answer(TEMPDIR_COMMAND " 'echo a' >/dev/full"));
    EXPECT_EQ(0, Run(TEMPDIR_COMMAND " 'pwd -P; touch file' none"));
    EXPECT_EQ(0u, out.find("/tmp/tempdir."));
    EXPECT_FALSE(fs::exists(out.substr(0, out.size() - 1)));
}

}  // namespace
