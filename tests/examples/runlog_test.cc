// Runs the program and looks at its exit code, its output and what it says about mistakes.
#include <chrono>
#include <regex>

#include "program.h"

namespace {

class RunLog : public Program {
protected:
    // The exit code; the time stamps are taken off `out`.
    int Run(std::string const& arguments) {
        int const code = RunProgram(RUNLOG_COMMAND, arguments);
        std::regex const stamp(R"((^|\n)\d{4}-\d\d-\d\d \d\d:\d\d:\d\d\.\d{3}  )");
        out = std::regex_replace(out, stamp, "$1>");
        return code;
    }
};

}  // namespace

TEST_F(RunLog, CopiesLinesAndEndsLikeTheCommand) {
    struct {
        char const *arguments, *out;
        int code;
    } const rows[] = {{"printf 'a\\n\\nb'", ">a\n>\n>b\n", 0},
                      {"sh -c 'echo a; echo b >&2; exit 5'", ">a\n>b\n", 5},
                      {"sh -c 'printf a; sleep 0.1; echo b; kill -9 $$'", ">ab\n", 137},
                      {"sh -c 'sleep 5 & echo a'", ">a\n", 0},  // does not wait for what is left
                      {"-t 0.2 sh -c 'echo a; exec sleep 5'", ">a\n", 128 + 15},
                      {"-t200m sh -c 'exec >&- 2>&-; exec sleep 5'", "", 128 + 15},
                      {"-t 200m -- sleep 5 >&-", "", 125},
                      {"-o log seq 2; cat log >stdout", ">1\n>2\n", 0}};
    auto const start = std::chrono::steady_clock::now();
    for (auto const& row : rows) {
        EXPECT_EQ(row.code, Run(row.arguments)) << row.arguments;
        EXPECT_EQ(row.out, out) << row.arguments;
    }
    EXPECT_LT(std::chrono::steady_clock::now() - start, std::chrono::seconds(5));
    // Not even an ignored SIGCHLD, which programs inherit, hides how the command ended.
    EXPECT_EQ(5,
              RunProgram("timeout 5 env --ignore-signal=CHLD " RUNLOG_COMMAND, "sh -c 'exit 5'"));
}

TEST_F(RunLog, NamesMistakes) {
    struct {
        char const *arguments, *message;
        int code;
    } const rows[] = {{"", "runlog: no command given\nusage: runlog ", 125},
                      {"-x true", "runlog: unknown option -x\nusage: ", 125},
                      {"-t", "runlog: a value is missing after -t\nusage: ", 125},
                      {"-t 0 true", "runlog: not a time limit: 0\nusage: ", 125},
                      {"-t 5s true", "runlog: not a time limit: 5s\nusage: ", 125},
                      {"-o /none/x true", "runlog: cannot write /none/x: No such file", 125},
                      {"-o /dev/full echo a", "runlog: cannot write /dev/full: No space", 125},
                      {"no-such-program", "runlog: cannot run no-such-program: No such file", 127}};
    for (auto const& row : rows) {
        EXPECT_EQ(row.code, Run(row.arguments)) << row.arguments;
        EXPECT_EQ(0u, err.find(row.message)) << row.arguments << ": " << err;
    }
}
