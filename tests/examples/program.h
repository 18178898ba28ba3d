// Runs example programs as processes in a fresh folder.
#ifndef KORBASE_TESTS_EXAMPLES_PROGRAM_H
#define KORBASE_TESTS_EXAMPLES_PROGRAM_H

#include <gtest/gtest.h>
#include <stdlib.h>
#include <sys/wait.h>

#include <filesystem>
#include <fstream>
#include <set>
#include <string>

class Program : public testing::Test {
protected:
    void SetUp() override {
        char name[] = "/tmp/example_test.XXXXXX";
        ASSERT_NE(nullptr, mkdtemp(name));
        folder = name;
    }
    void TearDown() override { std::filesystem::remove_all(folder); }

    void Write(char const* name, std::string const& text) {
        std::ofstream(folder / name, std::ios::binary) << text;
    }
    std::string Read(char const* name) {
        std::ifstream in(folder / name, std::ios::binary);
        return {std::istreambuf_iterator<char>(in), {}};
    }
    std::set<std::string> Names() {
        std::set<std::string> names;
        for (auto const& entry : std::filesystem::directory_iterator(folder))
            names.insert(entry.path().filename().string());
        return names;
    }
    // The exit status of `command`, a name in quotes, with `arguments` as a shell reads them; the
    // outputs in `out` and `err`.
    int RunProgram(std::string const& command, std::string const& arguments) {
        int const status = std::system(
            ("cd " + folder.string() + " && " + command + " >stdout 2>stderr " + arguments)
                .c_str());
        out = Read("stdout");
        err = Read("stderr");
        std::filesystem::remove(folder / "stdout");
        std::filesystem::remove(folder / "stderr");
        return WIFEXITED(status) ? WEXITSTATUS(status) : -1;
    }

    std::filesystem::path folder;
    std::string out, err;
};

#endif
