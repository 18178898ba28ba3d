#include "system/fname.h"

#include "tests/support/test.h"

// The rules one by one, by recursion.
static bool Matches(char const* pattern, char const* name) {
    if (*pattern == '*' && pattern[1] == '\0') return true;
    if (*pattern == '\0' || *name == '\0') return *pattern == *name;
    if (*pattern == '*') return Matches(pattern + 1, name) || Matches(pattern, name + 1);
    return (*pattern == '?' || *pattern == *name) && Matches(pattern + 1, name + 1);
}

TEST(FnameMatch, AgreesWithTheRules) {
    std::mt19937 random(7);
    for (int i = 0; i < 50000; ++i) {
        std::string const p = RandomText(random, 7, "ab*?*a"), name = RandomText(random, 8, "ab");
        ASSERT_EQ(Matches(p.c_str(), name.c_str()) ? 0 : -1, fname_match(p.c_str(), name.c_str()))
            << p << ' ' << name;
    }
    EXPECT_EQ(-1, fname_match("*a*a*a*a*a*a*a*a*a*b", std::string(5000, 'a').c_str())) << "at once";
}
