#include "text/except.h"

#include <gtest/gtest.h>

#include <cstring>
#include <utility>

namespace {

TEST(Except, LeavesOutOfItsTextWhatIsNotGiven) {
    struct {
        Except e;
        char const* want;
    } const rows[] = {
        {Except(), "unknown"},
        {Except("x"), "x"},
        {Except("socket", "refused", "sock", 42), "socket, refused, thrown in sock:42"},
        {Except("x", String_t("")), "x"},
        {Except("x", "f", -1), "x"},
        {Except("x", "f", 0), "x, thrown in f:0"},
        {Except("x", "", 3), "x"},
        {Except("", "m"), ", m"},
        {Except(""), nullptr},
        {Except(nullptr, "m"), nullptr}};
    for (auto const& row : rows) EXPECT_STREQ(row.want, row.e.ToString());
    EXPECT_TRUE(rows[1].e.Message().IsNull() && rows[1].e.File().IsNull());
    EXPECT_EQ(-1, rows[1].e.Line());
}

TEST(Except, CopiesShareTheirTexts) {
    String_t message("m");
    Except a("k", message, "f", 7), b;
    b = a;
    b = *&b;
    std::strcpy(message.Reserve(1), "n");
    EXPECT_STREQ("k, n, thrown in f:7", b.ToString());
    Except const moved(std::move(b));
    EXPECT_THROW(throw moved, Except);
    EXPECT_STREQ("k, n, thrown in f:7", moved.ToString());
}

}  // namespace
