#include "text/str_columns.h"

#include "tests/support/test.h"

namespace {

std::string Listed(int count, int columns, int (*cmp)(void const*, void const*) = nullptr) {
    static std::string listing;
    short elements[] = {'0', '1', '2', '4', '3'};
    listing.clear();
    str_fmt_mul_cols(
        elements, count, sizeof *elements, cmp, columns,
        [](void* element) { listing += static_cast<char>(*static_cast<short*>(element)); },
        [] { listing += '/'; });
    return listing;
}

TEST(StrFmtMulCols, GoesDownTheColumns) {
    Rows<int, int, char const*> const rows = {
        {5, 2, "04/13/2/"}, {3, 1, "0/1/2/"}, {3, INT_MAX, "012/"}, {3, 0, ""},
        {3, -2, ""},        {1, -2, "0/"},    {0, -2, "/"},         {-3, 2, ""}};
    for (auto const& [count, columns, want] : rows)
        EXPECT_EQ(want, Listed(count, columns)) << count << " in " << columns;
    auto const compare = [](void const* a, void const* b) {
        return *static_cast<short const*>(b) - *static_cast<short const*>(a);
    };
    EXPECT_EQ("41/30/2/", Listed(5, 2, compare));
}

}  // namespace
