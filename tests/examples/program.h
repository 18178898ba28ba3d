// Runs example programs as processes in a fresh folder.
#ifndef KORBASE_TESTS_EXAMPLES_PROGRAM_H
#define KORBASE_TESTS_EXAMPLES_PROGRAM_H

#include <sys/wait.h>

#include "tests/support/fresh_folder.h"
#include "tests/support/test.h"

namespace fs = std::filesystem;

struct Program : testing::Test {
    // The exit status of `command`, as a shell reads it; the outputs in `out` and `err`.
    int Run(std::string const& command) {
        int const status = std::system(("{ " + command + "\n} >stdout 2>stderr").c_str());
        out = ReadFile("stdout");
        err = ReadFile("stderr");
        fs::remove("stdout");
        fs::remove("stderr");
        return WIFEXITED(status) ? WEXITSTATUS(status) : -1;
    }
    // The same as a text: what it wrote, up to how it is used, and the exit status behind it.
    std::string Answer(std::string const& command) {
        int const status = Run(command);
        return out + err.substr(0, err.find("usage: ")) + std::to_string(status);
    }
    // The answers to arguments.
    void Answers(std::string const& command, Rows<std::string, std::string> const& rows) {
        for (auto const& [arguments, want] : rows)
            EXPECT_EQ(want, Answer(command + ' ' + arguments)) << arguments;
    }

    FreshFolder const folder;
    std::string out, err;
};

#endif
