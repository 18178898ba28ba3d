// Runs the program and looks at what it prints and leaves behind.
#include "program.h"

namespace {

struct TempDirExample : Program {
    TempDirExample() : Program(TEMPDIR_COMMAND) {}
};

TEST_F(TempDirExample, ListsTheFilesAndRemovesThem) {
    EXPECT_EQ("a.o: 0 bytes\nb.txt: 3 bytes\ndone\n0",
              Answer("'printf abc > b.txt; mkdir d; touch d/x a.o; echo done' '*.?*'"));
    EXPECT_EQ("3", Answer("'exit 3'"));
    EXPECT_EQ("tempdir: cannot write standard output\n1", Answer("'echo a' >/dev/full"));
    EXPECT_EQ(0, Run("'pwd -P; touch file' none"));
    EXPECT_EQ(0u, out.find("/tmp/tempdir."));
    EXPECT_FALSE(fs::exists(out.substr(0, out.size() - 1)));
}

}  // namespace
