// Runs the program and looks at its exit code, its output and what it says about mistakes.
#include <regex>

#include "program.h"

using RunLog = Program;

// Not even an ignored SIGCHLD, which programs inherit, hides how a command ended.
TEST_F(RunLog, CopiesLinesAndEndsLikeTheCommand) {
    char const* const rows[][2] = {
        {"sh -c 'echo a; echo b >&2; exit 5'", ">a\n>b\n5"},
        {"sh -c 'printf a; sleep 0.1; echo b; kill -9 $$'", ">ab\n137"},
        {"sh -c 'sleep 5 & echo; echo a'", ">\n>a\n0"},  // does not wait for what is left
        {"-t 1 sh -c 'echo a; exec sleep 5'", ">a\n143"},
        {"-o log seq 2; cat log >stdout", ">1\n>2\n0"},
        {"", "runlog: no command given\n125"},
        {"none-such", "runlog: cannot run none-such: No such file or directory\n127"}};
    std::regex const stamp(R"((^|\n)\d{4}-\d\d-\d\d \d\d:\d\d:\d\d\.\d{3}  )");
    for (auto const& [arguments, want] : rows) {
        std::string const command = "timeout 4 env --ignore-signal=CHLD " RUNLOG_COMMAND " ";
        EXPECT_EQ(want, std::regex_replace(Answer(command + arguments), stamp, "$1>")) << arguments;
    }
}
