#include "text/str_columns.h"

#include <gtest/gtest.h>

#include <climits>
#include <string>

namespace {

std::string listing;

std::string Listed(std::string elements, int count, int columns, bool sorted) {
    listing.clear();
    str_fmt_mul_cols(
        elements.data(), count, 1,
        sorted ? [](void const* a,
                    void const*
                        b) { return *static_cast<char const*>(a) - *static_cast<char const*>(b); }
               : static_cast<int (*)(void const*, void const*)>(nullptr),
        columns, [](void* element) { listing += *static_cast<char*>(element); },
        [] { listing += '/'; });
    return listing;
}

TEST(StrFmtMulCols, GoesDownTheColumns) {
    EXPECT_EQ("03/14/2/", Listed("01234", 5, 2, false));
    EXPECT_EQ("03/14/2/", Listed("42310", 5, 2, true));
    EXPECT_EQ("0/1/2/", Listed("012", 3, 1, false));
    EXPECT_EQ("012/", Listed("012", 3, 9, false));
    EXPECT_EQ("012/", Listed("012", 3, INT_MAX, false));
    EXPECT_EQ("", Listed("012", 3, 0, true));
    EXPECT_EQ("", Listed("012", 3, -2, false));
    EXPECT_EQ("", Listed("", 0, 2, true));
    EXPECT_EQ("", Listed("", -3, 2, true));
}

}  // namespace
