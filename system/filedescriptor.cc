#include "system/filedescriptor.h"

#include <fcntl.h>
#include <unistd.h>

#include "base/unique_fd.h"

using korbase_detail::UniqueFd;

namespace {

// Puts the descriptor just opened in the place of `fd`.
int MoveTo(int fd, UniqueFd opened) {
    if (!opened || close(fd) != 0) return -1;
    if (opened.Get() == fd) opened.Release();  // `fd` was free, and now it is again
    if (dup(opened.Get()) == -1) return -1;
    return close(opened.Release());
}

}  // namespace

int FileDescriptor::Redirect(int fd, char const* path, int flags) {
    return MoveTo(fd, UniqueFd(open(path, flags)));
}

int FileDescriptor::Redirect(int fd, char const* path, int flags, unsigned int mode) {
    return MoveTo(fd, UniqueFd(open(path, flags, static_cast<mode_t>(mode))));
}

int FileDescriptor::Redirect(int fd, int other) { return close(fd) != 0 ? -1 : dup(other); }
