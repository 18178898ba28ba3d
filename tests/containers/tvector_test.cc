#include "generic/tvector"

#include <numeric>

#include "generic/autoarr"
#include "tests/support/test.h"
#include "text/string.h"

namespace {

TEST(TVector, CopiesAreDeepAndResizeKeepsTheFront) {
    TVector<String_t> names(3);
    EXPECT_TRUE(names[2].IsNull());
    names.Preset("a");
    names[1U] = "b";  // any integer type is an index
    TVector<String_t> copy(names);
    names[1] = "changed";
    String_t* const resized = copy.Resize(5);
    EXPECT_TRUE(resized == static_cast<String_t*>(copy) && resized == copy.Resize(5));
    EXPECT_EQ("a b a  ", Joined(copy));
    EXPECT_STREQ("a", copy.Resize(1)[0].Get());
    copy = names;
    EXPECT_EQ("a changed a", Joined(copy));
}

TEST(TVectorDeathTest, HasNoStorageBelowOneRow) {
    TVector<int> v(-2), zero(0);
    EXPECT_EQ(nullptr, static_cast<int*>(v));
    v.Preset(1);
    char const* const message = R"(generic/tvector:[0-9]+:.*m != 0 && 0 <= r && r < rows)";
    EXPECT_DEATH(zero[0], message);
    zero = v;
    EXPECT_EQ(-2, zero.Rows());
    ASSERT_NE(nullptr, v.Resize(3));
    std::iota(v.begin(), v.end(), 1);
    EXPECT_DEATH(std::as_const(v)[3], message);
    TVector<int> moved(std::move(v));
    EXPECT_EQ("1 2 3", Joined(moved));
    EXPECT_EQ(nullptr, v.begin());
    EXPECT_EQ(nullptr, moved.Resize(0));
}

// That each array is deleted once is for the memory checkers to see.
TEST(AutoArr, HandsItsArrayOver) {
    char* const text = new char[8];
    std::strcpy(text, "layer");
    AutoArr<char> a(text), b(a), c(new char[1]), d = AutoArr<char>(new char[2]);
    EXPECT_TRUE(!a);
    EXPECT_EQ(text, b.Get());
    b = *&b;
    b = text;
    EXPECT_EQ('y', b[2U]);
    c = b;  // deletes the array of `c`
    EXPECT_EQ(nullptr, b.GetArrp());
    d = std::move(c);
    EXPECT_STREQ("layer", d);
    delete[] d.Release();
    EXPECT_TRUE(!d);
}

}  // namespace
