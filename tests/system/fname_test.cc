#include "system/fname.h"

#include <gtest/gtest.h>

#include <random>
#include <string>

namespace {

// The rules one by one, a "*" by recursion.
int Matched(char const* pattern, char const* name) {
    for (; *pattern != '*'; ++pattern, ++name) {
        if (*name == '\0') return *pattern == '\0' ? 0 : -1;
        if (*pattern != '?' && *pattern != *name) return -1;
    }
    if (pattern[1] == '\0') return 0;
    for (; *name != '\0'; ++name)
        if (Matched(pattern + 1, name) == 0) return 0;
    return -1;
}

TEST(FnameMatch, AgreesWithTheRules) {
    EXPECT_TRUE(fname_match(nullptr, nullptr) == 0 && fname_match("?", nullptr) == -1);
    std::mt19937 random(7);
    for (int i = 0; i < 50000; ++i) {
        std::string pattern, name;
        for (auto n = random() % 8; n > 0; --n) pattern += "ab*?*a"[random() % 6];
        for (auto n = random() % 9; n > 0; --n) name += "ab"[random() % 2];
        ASSERT_EQ(Matched(pattern.c_str(), name.c_str()),
                  fname_match(pattern.c_str(), name.c_str()))
            << pattern << ' ' << name;
    }
    EXPECT_EQ(-1, fname_match("*a*a*a*a*a*a*a*a*a*b", std::string(5000, 'a').c_str())) << "at once";
}

}  // namespace
