#include "text/except.h"

#include <gtest/gtest.h>

#include <cstring>
#include <utility>

namespace {

TEST(ExceptToString, LeavesOutWhatIsNotGiven) {
    struct {
        Except e;
        char const* want;
    } const rows[] = {
        {Except(), "unknown"},
        {Except("socket", "connection refused", "sock", 42),
         "socket, connection refused, thrown in sock:42"},
        {Except("x", String_t("")), "x"},
        {Except("x", "f", -1), "x"},  // no line, no file
        {Except("x", "f", 0), "x, thrown in f:0"},
        {Except("x", "", 3), "x"},
        {Except("", String_t()), nullptr},
        {Except("", String_t("m")), ", m"},
        {Except(nullptr, String_t("m")), nullptr},
    };
    for (auto const& row : rows) EXPECT_STREQ(row.want, row.e.ToString().Get());
}

TEST(Except, CopiesShareTheirTexts) {
    String_t message("m");
    Except a("k", message, "f", 7);
    Except b;
    b = a;
    b = *&b;
    std::strcpy(message.Reserve(1), "n");
    EXPECT_STREQ("n", b.Message());
    EXPECT_STREQ("f", b.File());
    EXPECT_STREQ("k", b.Kind());
    EXPECT_EQ(7, b.Line());
    Except const moved(std::move(b));
    EXPECT_STREQ("k, n, thrown in f:7", moved.ToString());
    EXPECT_THROW(throw moved, Except);
}

}  // namespace
