#include "system/userdir.h"

#include <pwd.h>
#include <stdlib.h>
#include <unistd.h>

#include <ctime>

#include "system/pathname.h"
#include "tests/support/test.h"

namespace {

TEST(UserDir, TellsTheInstallationRoot) {
    std::string want = ".";
    for (char const* root : {"/tal", "/usr/tal", "/usr/local/tal", "/opt/tal"})
        if (access(root, R_OK | X_OK) == 0) want = root;
    setenv("TALDIR", "/tmp", 1);
    EXPECT_STREQ("/tmp", TalDir());
    setenv("TALDIR", "/no such directory", 1);
    EXPECT_EQ(want, TalDir());
    unsetenv("TALDIR");
    EXPECT_EQ(want, TalDir());
}

TEST(UserDir, TellsTheUserAndTheTime) {
    std::string const home = getpwuid(getuid())->pw_dir;
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

TEST(UserDirDeathTest, KnowsUsersWithoutAnEntry) {
    uid_t const nobody = 54321;
    if (getuid() != 0 || getpwuid(nobody)) GTEST_SKIP() << "needs to change the user";
    auto const look = [] {
        char buf[9] = "x";
        bool const good = setuid(nobody) == 0 && GetHomeDir(buf, sizeof buf) == 2 && !*buf &&
                          !*getusername() && Pathname::Home().IsNull() &&
                          Pathname("~/a/").Abs() == "/a" && Pathname("~").Abs() == "";
        _exit(good ? 0 : 1);
    };
    EXPECT_EXIT(look(), testing::ExitedWithCode(0), "");
}

}  // namespace
