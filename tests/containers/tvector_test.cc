#include "generic/tvector"

#include "generic/autoarr"
#include "tests/support/test.h"
#include "text/string.h"

namespace {

TEST(TVector, CopiesAreDeepAndResizeKeepsTheFront) {
    TVector<String_t> names(3);
    names.Preset("a");
    TVector<String_t> copy(names);
    names[1] = "changed";
    String_t* const resized = copy.Resize(5);
    EXPECT_TRUE(resized == static_cast<String_t*>(copy) && resized == copy.Resize(5));
    EXPECT_EQ("a a a  ", Joined(copy));
    copy = names;
    copy.Resize(2);
    EXPECT_EQ("a changed", Joined(copy));
}

TEST(TVectorDeathTest, HasNoStorageBelowOneRow) {
    TVector<int> v(-2);
    v.Preset(1);
    EXPECT_DEATH(v[0], R"(generic/tvector:[0-9]+:.*m != 0 && 0 <= r && r < rows)");
    v.Resize(3)[2] = 7;
    EXPECT_EQ("0 0 7", Joined(v));
    EXPECT_EQ(nullptr, v.Resize(0));
}

TEST(AutoArr, HandsItsArrayOver) {
    AutoArr<char> a(new char[8]), b(a), c(new char[1]);
    char* const text = b;
    c = b;  // deletes the array of `c`
    EXPECT_TRUE(!a && !b.GetArrp() && c.Get() == text);
    delete[] c.Release();
}

}  // namespace
