#include "system/userdir.h"

#include <pwd.h>
#include <unistd.h>

#include "tests/support/test.h"

TEST(UserDir, TellsTheRootTheUserAndTheTime) {
    setenv("TALDIR", "/tmp", 1);
    EXPECT_STREQ("/tmp", TalDir());
    std::string const home = getpwuid(getuid())->pw_dir;
    char buf[300];
    EXPECT_TRUE(GetHomeDir(buf, 3) == 0 && home.substr(0, 2) == buf);
    EXPECT_STREQ(getpwuid(geteuid())->pw_name, getusername());
    EXPECT_EQ(12U, std::strlen(getuname()));  // three digits of the year from 1900
}
