#include "system/filemode.h"

#include <sys/stat.h>
#include <unistd.h>

#include <cerrno>

#include "system/tempfile.h"
#include "tests/support/test.h"

namespace {

TEST(FileMode, AsksForOwnerThenGroupThenOthers) {
    TempFile const file("km", "");
    int const fd = file.Fd();
    uid_t const me = getuid(), other = me + 12345;
    gid_t const mine = getgid(), foreign = mine + 12345;
    struct {
        uid_t owner;
        gid_t group;
        mode_t mode;
        int allowed;  // a digit each for reading, writing, executing
    } const rows[] = {{me, mine, 0421, 111},      {me, mine, 0142, 111},
                      {me, mine, 0214, 111},      {me, mine, 0, 0},
                      {me, foreign, 0070, 0},     {other, foreign, 0004, 100},
                      {other, foreign, 0773, 11}, {other, mine, 0750, 101},
                      {other, mine, 0702, 10},    {me, foreign, 0401, 101}};
    for (auto const& row : rows) {
        if (fchown(fd, row.owner, row.group) != 0) continue;  // for the superuser only
        ASSERT_EQ(0, fchmod(fd, row.mode));
        EXPECT_EQ(row.allowed,
                  100 * FileIsReadable(fd) + 10 * FileIsWritable(fd) + FileIsExecutable(fd))
            << std::oct << row.mode;
    }
    EXPECT_EQ(-EBADF, FileIsReadable(-1));
}

}  // namespace
