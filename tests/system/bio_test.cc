#include "system/bio.h"

#include "tests/system/processes.h"

using Bio = ProcessTest;

TEST_F(Bio, OpensCreatesReadsAndRewrites) {
    FILE* file = bio_open("filetail", 5);  // cut to four characters
    ASSERT_NE(nullptr, file);
    EXPECT_EQ(1, bio_eof(file));
    for (int n : {4, 0, -1}) bio_put(file, "abcdef", n);
    EXPECT_EQ(0, bio_close(file));

    file = bio_open("file", 1000);
    ASSERT_NE(nullptr, file);
    EXPECT_EQ(0, bio_eof(file));
    char data[11] = "..........";
    EXPECT_EQ(0, bio_get(file, data, -1));
    EXPECT_EQ(4, bio_get(file, data, 10));
    EXPECT_STREQ("abcd......", data);
    EXPECT_EQ(1, bio_eof(file));
    bio_reset(file);
    EXPECT_EQ(1, bio_get(file, data, 1));
    EXPECT_EQ(0, bio_rewrite(file));
    bio_put(file, "xy", 2);
    EXPECT_EQ(0, bio_close(file));
    EXPECT_EQ("xy", ReadFile("file"));
    for (int bad : {0, -1}) EXPECT_EQ(nullptr, bio_open("file", bad));

    FILE *const from = bio_popen("echo abc; exit 3", 0), *const to = bio_popen("grep -q abc", 1);
    EXPECT_EQ(4, bio_get(from, data, 10));
    EXPECT_EQ(3, WEXITSTATUS(bio_pclose(from)));
    bio_put(to, "abc\n", 4);
    EXPECT_EQ(0, bio_pclose(to));
}

TEST(BioDeathTest, ACommandIsReadOrWritten) {
    char const* const message = R"(system/bio\.cc:[0-9]+:.*bio_popen.*0 <= flag && flag < 2)";
    for (int flag : {-1, 2}) EXPECT_DEATH(bio_popen("true", flag), message);
}
