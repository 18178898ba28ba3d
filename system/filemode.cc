#include "system/filemode.h"

#include <sys/stat.h>
#include <unistd.h>

#include <cerrno>

namespace {

int Allows(int fd, mode_t owner, mode_t group, mode_t others) {
    struct stat status;
    if (fstat(fd, &status) != 0) return -errno;
    if (status.st_uid == getuid() && (status.st_mode & owner)) return 1;
    if (status.st_gid == getgid() && (status.st_mode & group)) return 1;
    return (status.st_mode & others) != 0;
}

}  // namespace

int FileIsReadable(int fd) { return Allows(fd, S_IRUSR, S_IRGRP, S_IROTH); }
int FileIsWritable(int fd) { return Allows(fd, S_IWUSR, S_IWGRP, S_IWOTH); }
int FileIsExecutable(int fd) { return Allows(fd, S_IXUSR, S_IXGRP, S_IXOTH); }
