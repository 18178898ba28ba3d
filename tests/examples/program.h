// Runs an example program as a process in a fresh folder.
#ifndef KORBASE_TESTS_EXAMPLES_PROGRAM_H
#define KORBASE_TESTS_EXAMPLES_PROGRAM_H

#include <sys/wait.h>

#include "tests/support/fresh_folder.h"
#include "tests/support/test.h"

namespace fs = std::filesystem;

class Program : public testing::Test {
protected:
    // `command` starts the program, as a shell reads it.
    explicit Program(std::string const& command) : command(command) {}

    // The exit status with `arguments`, as a shell reads them; the outputs in `out` and `err`.
    int Run(std::string const& arguments) { return RunProgram(command, arguments); }
    // The same of another program.
    int RunProgram(std::string const& program, std::string const& arguments) {
        int const status = std::system((program + " >stdout 2>stderr " + arguments).c_str());
        out = ReadFile("stdout");
        err = ReadFile("stderr");
        fs::remove("stdout");
        fs::remove("stderr");
        return WIFEXITED(status) ? WEXITSTATUS(status) : -1;
    }
    // The same as a text: what it wrote, up to how it is used, and the exit status behind it.
    std::string Answer(std::string const& arguments) {
        int const status = Run(arguments);
        return out + err.substr(0, err.find("usage: ")) + std::to_string(status);
    }

    FreshFolder const folder;
    std::string const command;
    std::string out, err;
};

#endif
