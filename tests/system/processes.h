// Real processes in tests: bodies that run in a child of their own, and what must not stay behind.
#ifndef KORBASE_TESTS_SYSTEM_PROCESSES_H
#define KORBASE_TESTS_SYSTEM_PROCESSES_H

#include <fcntl.h>
#include <gtest/gtest.h>
#include <signal.h>
#include <sys/wait.h>
#include <unistd.h>

#include <cerrno>
#include <filesystem>
#include <fstream>
#include <set>
#include <string>

inline std::string ReadFile(std::string const& path) {
    std::ifstream in(path);
    return {std::istreambuf_iterator<char>(in), {}};
}

inline bool IsOpen(int fd) { return fcntl(fd, F_GETFD) != -1; }

inline std::set<std::string> OpenDescriptors() {
    std::set<std::string> open;
    for (auto const& entry : std::filesystem::directory_iterator("/proc/self/fd"))
        open.insert(entry.path().filename().string());
    return open;
}

// Tests that leave no descriptor open and no child behind, and get a folder of their own.
class ProcessTest : public testing::Test {
protected:
    ProcessTest() { std::filesystem::create_directory(folder); }
    ~ProcessTest() override {
        std::filesystem::remove_all(folder);
        EXPECT_EQ(before, OpenDescriptors());
        EXPECT_EQ(-1, waitpid(-1, nullptr, WNOHANG));
    }

    // Runs `body` in a forked child, with its result as the exit code; what it writes to standard
    // output and standard error goes to `out`. Returns the code, or minus the signal.
    template <class Body>
    int InChild(Body const& body) {
        std::string const path = folder + "/out";
        pid_t const pid = fork();
        if (pid == 0) {
            if (!std::freopen(path.c_str(), "w", stdout)) _exit(99);
            dup2(1, 2);
            int const code = body();
            std::fflush(stdout);
            _exit(code);
        }
        int status;
        if (waitpid(pid, &status, 0) != pid) return -999;
        out = ReadFile(path);
        return WIFEXITED(status) ? WEXITSTATUS(status) : -WTERMSIG(status);
    }

    std::string const folder = "/tmp/system_test." + std::to_string(getpid());
    std::string const path = folder + "/file";
    std::string out;

private:
    std::set<std::string> const before = OpenDescriptors();
};

#endif
