#include "system/userdir.h"

#include <pwd.h>

#include "system/pathname.h"
#include "tests/system/processes.h"

using UserDir = ProcessTest;

TEST_F(UserDir, TellsTheRootTheUserAndTheTime) {
    for (auto const& [root, want] : {std::pair("/tmp", "/tmp"), {"/no such directory", "."}}) {
        setenv("TALDIR", root, 1);
        EXPECT_STREQ(want, TalDir());
    }
    std::string const home = getpwuid(getuid())->pw_dir;
    char buf[300] = "x";
    EXPECT_TRUE(GetHomeDir(nullptr, 9) == 22 && GetHomeDir(buf, 0) == 22 && *buf == 'x');
    EXPECT_TRUE(GetHomeDir(buf, 3) == 0 && home.substr(0, 2) == buf);
    EXPECT_STREQ(getpwuid(geteuid())->pw_name, getusername());
    EXPECT_EQ(12U, std::strlen(getuname()));  // three digits of the year from 1900
}

TEST_F(UserDir, KnowsUsersWithoutAnEntry) {
    if (getuid() != 0) GTEST_SKIP() << "needs to change the user";
    EXPECT_EQ(0, InChild([] {
                  char buf[9] = "x";
                  if (setuid(54321) || GetHomeDir(buf, sizeof buf) != 2 || *buf) return 1;
                  if (*getusername() || !Pathname::Home().IsNull()) return 2;
                  return Pathname("~/a/").Abs() == "/a" && Pathname("~").Abs() == "" ? 0 : 3;
              }));
}
