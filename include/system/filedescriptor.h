// FileDescriptor: redirections for a child process between fork and exec.
#ifndef KORBASE_SYSTEM_FILEDESCRIPTOR_H
#define KORBASE_SYSTEM_FILEDESCRIPTOR_H

#include <korbase_api.h>

// Safe in a child that was forked from a process with threads. A descriptor always goes to the
// lowest free number, so `fd` has to be open and no lower number free. Each function returns -1
// with errno at the first system call that fails, which may leave `fd` closed.
class KORBASE_API FileDescriptor {
public:
    // Makes `fd` the file at `path`, opened with `flags`, and if it is created there, with `mode`.
    // Returns 0.
    static int Redirect(int fd, char const* path, int flags);
    static int Redirect(int fd, char const* path, int flags, unsigned int mode);
    // Makes `fd` a duplicate of `other`. Returns the number of the duplicate.
    static int Redirect(int fd, int other);
};

#endif
