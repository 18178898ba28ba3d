#include "system/filemode.h"

#include "system/tempfile.h"
#include "tests/system/processes.h"

TEST(FileMode, AsksForOwnerThenGroupThenOthers) {
    TempFile const file("km", "");
    uid_t const me = getuid(), other = me + 12345;
    gid_t const mine = getgid(), foreign = mine + 12345;
    // Allowed: a digit each for reading, writing, executing.
    Rows<uid_t, gid_t, unsigned, int> const rows = {
        {me, mine, 0421, 111},  {me, mine, 0142, 111},      {me, mine, 0214, 111},
        {me, foreign, 0070, 0}, {other, foreign, 0773, 11}, {other, mine, 0750, 101},
        {other, mine, 0702, 10}};
    for (auto const& [owner, group, mode, allowed] : rows) {
        int const fd = file.Fd();
        if (fchown(fd, owner, group) != 0) continue;  // for the superuser only
        fs::permissions(file.Path().Get(), fs::perms(mode));
        EXPECT_EQ(allowed,
                  100 * FileIsReadable(fd) + 10 * FileIsWritable(fd) + FileIsExecutable(fd))
            << std::oct << mode;
    }
}
