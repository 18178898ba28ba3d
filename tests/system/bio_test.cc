#include "system/bio.h"

#include "tests/system/processes.h"

using Bio = ProcessTest;

TEST_F(Bio, OpensCreatesReadsAndRewrites) {
    FILE* file = bio_open("filetail", 5);  // cut to four characters
    for (int n : {4, 0, -1}) bio_put(file, "abcdef", n);
    bio_reset(file);
    char data[11] = "..........";
    EXPECT_EQ(4, bio_eof(file) + bio_get(file, data, -1) + bio_get(file, data, 10));
    EXPECT_STREQ("abcd......", data);
    EXPECT_TRUE(bio_eof(file) == 1 && bio_close(file) == 0);
    file = bio_open("file", 1000);
    EXPECT_TRUE(bio_get(file, data, 1) == 1 && bio_rewrite(file) == 0);
    bio_put(file, "xy", 2);
    EXPECT_TRUE(bio_close(file) == 0 && ReadFile("file") == "xy" && !bio_open("file", -1));
    FILE *const from = bio_popen("echo abc; exit 3", 0), *const to = bio_popen("grep -q abc", 1);
    EXPECT_TRUE(bio_get(from, data, 10) == 4 && WEXITSTATUS(bio_pclose(from)) == 3);
    bio_put(to, "abc\n", 4);
    EXPECT_EQ(0, bio_pclose(to));
}
