#include "system/filedescriptor.h"

#include <sys/stat.h>

#include "tests/system/processes.h"

using Redirection = ProcessTest;

TEST_F(Redirection, PutsFilesInThePlaceOfDescriptors) {
    int const code = InChild([] {
        auto const table = OpenDescriptors();
        char const* const name = "file";
        umask(0);
        using Fd = FileDescriptor;
        if (Fd::Redirect(1, name, O_WRONLY) != -1 || errno != ENOENT) return 1;
        if (Fd::Redirect(1, name, O_WRONLY | O_CREAT, 0640) || write(1, "one", 3) != 3) return 2;
        if (Fd::Redirect(1, name, O_WRONLY | O_APPEND) || Fd::Redirect(2, 1) != 2) return 3;
        if (write(2, "two", 3) != 3) return 4;
        if (Fd::Redirect(50, name, O_RDONLY) != -1 || errno != EBADF) return 5;
        if (Fd::Redirect(50, 1) != -1 || errno != EBADF) return 6;
        if (table != OpenDescriptors()) return 8;
        close(0);  // the file opened takes its number: nothing is left to duplicate
        return Fd::Redirect(0, name, O_RDONLY) != -1 || errno != EBADF ? 9 : 0;
    });
    EXPECT_EQ(0, code);
    EXPECT_EQ(0640u, static_cast<unsigned>(fs::status("file").permissions()));
    EXPECT_EQ("onetwo", ReadFile("file"));
}
