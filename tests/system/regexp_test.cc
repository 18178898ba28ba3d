#include "system/regexp.h"

#include "tests/support/test.h"

TEST(Regexp, FindsAndKeepsTheLastError) {
    Regexp pattern("b+", REG_EXTENDED), bad("a[");
    regmatch_t at{-1, -1};
    EXPECT_TRUE(pattern.Match("abbc", &at) == 0 && at.rm_so == 1 && at.rm_eo == 3);
    String_t const success = pattern.ErrorString();
    EXPECT_TRUE(pattern.Match(nullptr) == REG_NOMATCH && pattern.ErrorString() != success);
    EXPECT_TRUE(Regexp(nullptr).Match("b") == 0 && bad.Error() != 0 &&
                bad.Match("a[") == bad.Error());
}
