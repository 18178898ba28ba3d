#include "system/filedescriptor.h"

#include <fcntl.h>
#include <sys/stat.h>

#include "processes.h"

namespace {

class Redirection : public ProcessTest {};

TEST_F(Redirection, PutsFilesInThePlaceOfDescriptors) {
    std::string const file = folder + "/file";
    char const* const path = file.c_str();
    int const code = InChild([path] {
        auto const table = OpenDescriptors();
        umask(0);
        if (FileDescriptor::Redirect(1, path, O_WRONLY) != -1 || errno != ENOENT) return 1;
        if (FileDescriptor::Redirect(1, path, O_WRONLY | O_CREAT, 0640) != 0) return 2;
        if (write(1, "one", 3) != 3) return 3;
        if (FileDescriptor::Redirect(1, path, O_WRONLY | O_APPEND) != 0) return 4;
        if (FileDescriptor::Redirect(2, 1) != 2 || write(2, "two", 3) != 3) return 5;
        if (FileDescriptor::Redirect(50, path, O_RDONLY) != -1 || errno != EBADF) return 6;
        if (FileDescriptor::Redirect(50, 1) != -1 || errno != EBADF) return 7;
        if (table != OpenDescriptors()) return 8;
        close(0);  // the file opened takes its number: nothing is left to duplicate
        return FileDescriptor::Redirect(0, path, O_RDONLY) != -1 || errno != EBADF ? 9 : 0;
    });
    EXPECT_EQ(0, code);
    struct stat info;
    ASSERT_EQ(0, stat(path, &info));
    EXPECT_EQ(0640u, info.st_mode & 07777u);
    EXPECT_EQ("onetwo", ReadFile(file));
}

}  // namespace
