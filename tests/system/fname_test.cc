#include "system/fname.h"

#include "tests/support/test.h"

namespace {

// The rules one by one, by recursion.
bool Matches(char const* pattern, char const* name) {
    if (*pattern == '*' && pattern[1] == '\0') return true;
    if (*pattern == '\0' || *name == '\0') return *pattern == *name;
    if (*pattern == '*') return Matches(pattern + 1, name) || Matches(pattern, name + 1);
    return (*pattern == '?' || *pattern == *name) && Matches(pattern + 1, name + 1);
}

TEST(FnameMatch, AgreesWithTheRules) {
    EXPECT_TRUE(fname_match(nullptr, nullptr) == 0 && fname_match("?", nullptr) == -1);
    std::mt19937 random(7);
    for (int i = 0; i < 50000; ++i) {
        std::string p, name;
        for (auto n = random() % 8; n > 0; --n) p += "ab*?*a"[random() % 6];
        for (auto n = random() % 9; n > 0; --n) name += "ab"[random() % 2];
        ASSERT_EQ(Matches(p.c_str(), name.c_str()) ? 0 : -1, fname_match(p.c_str(), name.c_str()))
            << p << ' ' << name;
    }
    EXPECT_EQ(-1, fname_match("*a*a*a*a*a*a*a*a*a*b", std::string(5000, 'a').c_str())) << "at once";
}

}  // namespace
