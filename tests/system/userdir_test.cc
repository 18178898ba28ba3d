#include "system/userdir.h"

#include <pwd.h>

#include "system/pathname.h"
#include "tests/system/processes.h"

using UserDir = ProcessTest;

TEST_F(UserDir, TellsTheRootTheUserAndTheTime) {
    setenv("TALDIR", "/tmp", 1);
    EXPECT_STREQ("/tmp", TalDir());
    setenv("TALDIR", "/no such directory", 1);
    std::string const root = TalDir(), home = getpwuid(getuid())->pw_dir;
    EXPECT_TRUE(root == "." || (root.find("/tal") != root.npos && fs::exists(root)));

    char buf[300] = "x", text[30];
    EXPECT_TRUE(GetHomeDir(nullptr, 9) == 22 && GetHomeDir(buf, 0) == 22 && *buf == 'x');
    for (unsigned size : {1U, 3U, 300U}) {
        EXPECT_EQ(0, GetHomeDir(buf, size));
        EXPECT_EQ(home.substr(0, size - 1), buf);
    }
    EXPECT_STREQ(getpwuid(geteuid())->pw_name, getusername());

    std::time_t now;
    std::string name;
    do now = std::time(nullptr), name = getuname();
    while (std::time(nullptr) != now);
    std::tm const at = *std::localtime(&now);
    std::strftime(text, sizeof text, "%H%M%S", &at);
    EXPECT_EQ(std::to_string(at.tm_year * 1000 + at.tm_yday) + text, name);
}

TEST_F(UserDir, KnowsUsersWithoutAnEntry) {
    uid_t const nobody = 54321;
    if (getuid() != 0 || getpwuid(nobody)) GTEST_SKIP() << "needs to change the user";
    EXPECT_EQ(0, InChild([] {
                  char buf[9] = "x";
                  if (setuid(nobody) || GetHomeDir(buf, sizeof buf) != 2 || *buf) return 1;
                  if (*getusername() || !Pathname::Home().IsNull()) return 2;
                  return Pathname("~/a/").Abs() == "/a" && Pathname("~").Abs() == "" ? 0 : 3;
              }));
}
