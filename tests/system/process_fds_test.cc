// Process::CloseFds without the system call for it, with and without room for a folder.
#include <linux/filter.h>
#include <linux/seccomp.h>
#include <stddef.h>
#include <sys/prctl.h>
#include <sys/resource.h>
#include <sys/syscall.h>

#include "system/process.h"
#include "tests/system/processes.h"

using ProcessCloseFds = ProcessTest;

// From here on this process has no close_range; false if that cannot be had.
static bool ForbidCloseRange() {
    sock_filter code[] = {BPF_STMT(BPF_LD | BPF_W | BPF_ABS, offsetof(seccomp_data, nr)),
                          BPF_JUMP(BPF_JMP | BPF_JEQ | BPF_K, SYS_close_range, 0, 1),
                          BPF_STMT(BPF_RET | BPF_K, SECCOMP_RET_ERRNO | ENOSYS),
                          BPF_STMT(BPF_RET | BPF_K, SECCOMP_RET_ALLOW)};
    sock_fprog const program = {4, code};
    return prctl(PR_SET_NO_NEW_PRIVS, 1, 0, 0, 0) == 0 &&
           prctl(PR_SET_SECCOMP, SECCOMP_MODE_FILTER, &program) == 0;
}

// 0 if of all descriptors up to 499 exactly those below `from` survive.
static int CloseFrom(unsigned from, bool full) {
    rlimit const limit = {500, 500};
    for (int fd = 3; fd < 500; ++fd) dup2(2, fd);
    if (!full) close(10);  // room for the folder
    if (!ForbidCloseRange() || setrlimit(RLIMIT_NOFILE, &limit) != 0) return 99;
    Process::CloseFds(from);
    for (int fd = 0; fd < 500; ++fd)
        if (fd != 10 && IsOpen(fd) != (static_cast<unsigned>(fd) < from)) return 1;
    return 0;
}

TEST_F(ProcessCloseFds, ClosesFromTheBoundUpwards) {
    for (bool full : {false, true})
        for (unsigned from : {0u, 3u, 60u, 499u, 0x80000000u, 0xFFFFFFFFu}) {
            int const code = InChild([&] { return CloseFrom(from, full); });
            if (code == 99) GTEST_SKIP() << "no filter of system calls";
            EXPECT_EQ(0, code) << "from " << from << ", table full: " << full;
        }
}
