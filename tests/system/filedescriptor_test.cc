#include "system/filedescriptor.h"

#include <sys/stat.h>

#include "tests/system/processes.h"

using Redirection = ProcessTest;

TEST_F(Redirection, PutsFilesInThePlaceOfDescriptors) {
    int const code = InChild([] {
        auto const redirect = [](auto... to) { return FileDescriptor::Redirect(to...); };
        auto const table = OpenDescriptors();
        umask(0);
        if (redirect(1, "file", O_WRONLY) != -1 || errno != ENOENT) return 1;
        if (redirect(1, "file", O_WRONLY | O_CREAT, 0640) || write(1, "one", 3) != 3) return 2;
        if (redirect(1, "file", O_WRONLY | O_APPEND) || redirect(2, 1) != 2) return 3;
        return write(2, "two", 3) != 3 || table != OpenDescriptors() ? 4 : 0;
    });
    EXPECT_EQ(0, code);
    EXPECT_EQ(0640u, static_cast<unsigned>(fs::status("file").permissions()));
    EXPECT_EQ("onetwo", ReadFile("file"));
}
