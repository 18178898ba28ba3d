// Process::CloseFds: by one system call where the kernel has it, else from the list that the kernel
// gives of the open descriptors, else one number after the other. Nothing is allocated.
#include <dirent.h>
#include <fcntl.h>
#include <sys/syscall.h>
#include <unistd.h>

#include <climits>
#include <cstddef>
#include <cstring>

#include "base/unique_fd.h"
#include "system/process.h"

namespace {

// The number in the name of a directory entry, -1 for "." and "..".
int NumberIn(char const* name) {
    int number = *name >= '0' && *name <= '9' ? 0 : -1;
    for (; *name >= '0' && *name <= '9'; ++name) number = number * 10 + (*name - '0');
    return number;
}

void CloseListed(int directory, unsigned from) {
    char buffer[4096];
    for (;;) {
        long const filled = syscall(SYS_getdents64, directory, buffer, sizeof buffer);
        if (filled <= 0) return;
        for (long at = 0; at < filled;) {
            char const* const entry = buffer + at;
            unsigned short length;
            std::memcpy(&length, entry + offsetof(dirent64, d_reclen), sizeof length);
            int const fd = NumberIn(entry + offsetof(dirent64, d_name));
            if (fd >= 0 && fd != directory && static_cast<unsigned>(fd) >= from) close(fd);
            at += length;
        }
    }
}

void CloseAllNumbers(unsigned from) {
    int const end = getdtablesize();
    if (from > INT_MAX) return;
    for (int fd = static_cast<int>(from); fd < end; ++fd) close(fd);
}

}  // namespace

void Process::CloseFds(unsigned int from) {
#ifdef SYS_close_range
    if (syscall(SYS_close_range, from, UINT_MAX, 0) == 0) return;
#endif
    korbase_detail::UniqueFd const directory(
        open("/proc/self/fd", O_RDONLY | O_DIRECTORY | O_CLOEXEC));
    if (directory)
        CloseListed(directory.Get(), from);
    else
        CloseAllNumbers(from);
}
