#include <generic/autoarr>
#include <generic/tvector>

#include <gtest/gtest.h>

#include <cstring>
#include <numeric>
#include <utility>

#include "text/string.h"

namespace {

TEST(TVector, CopiesAreDeepAndResizeKeepsTheFront) {
    TVector<String_t> names(3);
    EXPECT_TRUE(names[2].IsNull());
    names.Preset("a");
    names[1u] = "b";  // any integer type is an index
    TVector<String_t> copy(names);
    names = TVector<String_t>(names);
    names[1] = "changed";
    EXPECT_STREQ("b", copy[1].Get());

    String_t* const resized = copy.Resize(5);
    EXPECT_EQ(static_cast<String_t*>(copy), resized);
    EXPECT_EQ(5, copy.Rows());
    EXPECT_STREQ("b", copy[1].Get());
    EXPECT_TRUE(copy[4].IsNull());
    EXPECT_EQ(resized, copy.Resize(5));
    copy.Resize(2);
    copy = names;
    EXPECT_STREQ("changed", copy[1].Get());
    EXPECT_EQ(3, copy.Rows());
}

TEST(TVector, HasNoStorageBelowOneRow) {
    TVector<int> v(0);
    EXPECT_EQ(nullptr, static_cast<int*>(v));
    v.Preset(1);
    ASSERT_NE(nullptr, v.Resize(3));
    std::iota(v.begin(), v.end(), 1);
    TVector<int> const moved(std::move(v));
    EXPECT_EQ(6, std::accumulate(moved.begin(), moved.end(), 0));
    EXPECT_EQ(3, moved(2));
    EXPECT_EQ(nullptr, v.begin());

    TVector<double> negative(-2), other(1);
    other = negative;
    EXPECT_EQ(-2, other.Rows());
    EXPECT_EQ(other.begin(), other.end());
    EXPECT_EQ(nullptr, other.Resize(0));
}

TEST(TVectorDeathTest, IndexesOutsideAbort) {
    TVector<int> empty(0), two(2);
    char const* const message = R"(generic/tvector:[0-9]+:.*m != 0 && 0 <= r && r < rows)";
    EXPECT_DEATH(empty[0], message);
    EXPECT_DEATH(two[2], message);
    EXPECT_DEATH(two[-1], message);
    EXPECT_DEATH(std::as_const(two)[0xFFFFFFFFu], message);
}

// That each array is deleted once is for the memory checkers to see.
TEST(AutoArr, HandsItsArrayOver) {
    char* const text = new char[8];
    std::strcpy(text, "layer");
    AutoArr<char> a(text), b(a);
    EXPECT_TRUE(!a);
    EXPECT_EQ(text, b.Get());
    b = *&b;
    b = text;
    b.Reset(text);
    EXPECT_EQ('y', b[2u]);

    AutoArr<char> c(new char[1]), d = AutoArr<char>(new char[2]);
    c = b;  // deletes the array of `c`
    EXPECT_EQ(nullptr, b.GetArrp());
    d = std::move(c);
    EXPECT_STREQ("layer", d);
    delete[] d.Release();
    EXPECT_TRUE(!d);
    d = new char[3];
    d = nullptr;
    EXPECT_TRUE(!d);
}

}  // namespace
