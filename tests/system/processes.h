// Real processes in tests: bodies that run in a child of their own, and what must not stay behind.
#ifndef KORBASE_TESTS_SYSTEM_PROCESSES_H
#define KORBASE_TESTS_SYSTEM_PROCESSES_H

#include <fcntl.h>
#include <signal.h>
#include <sys/wait.h>
#include <unistd.h>

#include <cerrno>
#include <set>

#include "tests/support/fresh_folder.h"
#include "tests/support/test.h"

namespace fs = std::filesystem;

inline bool IsOpen(int fd) { return fcntl(fd, F_GETFD) != -1; }

inline std::set<std::string> OpenDescriptors() {
    std::set<std::string> open;
    for (auto const& entry : fs::directory_iterator("/proc/self/fd"))
        open.insert(entry.path().filename().string());
    return open;
}

// Tests that leave no descriptor open and no child behind, in a folder of their own.
class ProcessTest : public testing::Test {
protected:
    ~ProcessTest() override {
        EXPECT_EQ(before, OpenDescriptors());
        EXPECT_EQ(-1, waitpid(-1, nullptr, WNOHANG));
    }

    // What `body` returns, run in a child that writes `out`, or minus the signal that ended it.
    template <class Body>
    int InChild(Body const& body) {
        pid_t const pid = fork();
        if (pid == 0) {
            if (!std::freopen("out", "w", stdout) || dup2(1, 2) != 2) _exit(99);
            int const code = body();
            std::fflush(stdout);
            _exit(code);
        }
        int status = 0x7F00;
        waitpid(pid, &status, 0);
        out = ReadFile("out");
        return WIFEXITED(status) ? WEXITSTATUS(status) : -WTERMSIG(status);
    }

    FreshFolder const folder;
    std::string out;
    std::set<std::string> const before = OpenDescriptors();
};

#endif
