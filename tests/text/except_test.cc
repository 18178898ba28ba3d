#include "text/except.h"

#include "tests/support/test.h"

namespace {

TEST(Except, LeavesOutOfItsTextWhatIsNotGiven) {
    std::string texts;
    for (Except const& e : {Except(), Except("x", "m", "f", 42), Except("x", "f", -1),
                            Except("x", "f", 0), Except("x", "", 3), Except("", "m")})
        texts += e.ToString() + "|";
    EXPECT_EQ("unknown|x, m, thrown in f:42|x|x, thrown in f:0|x|, m|", texts);
    EXPECT_TRUE(Except("").ToString().IsNull() && Except(nullptr, "m").ToString().IsNull());
    Except const a("k", "m", "f", 7);
    Except b, c;
    c = b = a;
    EXPECT_STREQ(a.ToString(), Except(std::move(c)).ToString());
    EXPECT_STREQ(a.ToString(), b.ToString());
}

}  // namespace
