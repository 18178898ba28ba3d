// Runs the program and looks at what it prints and leaves behind.
#include "program.h"

namespace {

class TempDirExample : public Program {};

TEST_F(TempDirExample, ListsTheFilesAndRemovesThem) {
    struct {
        char const *arguments, *out;
        int status;
    } const rows[] = {{"'printf abc > b.txt; mkdir d; touch d/x a.o; echo done' '*.?*'",
                       "a.o: 0 bytes\nb.txt: 3 bytes\ndone\n", 0},
                      {"'exit 3'", "", 3},
                      {"", "", 2}};
    for (auto const& row : rows) {
        EXPECT_EQ(row.status, RunProgram(TEMPDIR_COMMAND, row.arguments)) << err;
        EXPECT_EQ(row.out, out);
    }
    EXPECT_EQ(0, RunProgram(TEMPDIR_COMMAND, "'pwd -P; touch file' none"));
    EXPECT_EQ(0u, out.find("/tmp/tempdir."));
    EXPECT_FALSE(std::filesystem::exists(out.substr(0, out.size() - 1)));
}

}  // namespace
