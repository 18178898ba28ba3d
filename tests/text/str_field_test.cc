#include "text/str_field.h"

#include "tests/support/test.h"
#include "text/str_columns.h"

TEST(StrField, PadAndSubstrFillTheDestination) {
    Rows<char const*, int, int, int, char const*> const rows = {
        {"abc", 1, 2, 5, "ab   #"},    {"abc", 1, 9, 5, "abc  #"},   {"abc", 1, 9, 2, "ab####"},
        {"abc", 1, -1, 2, "  ####"},   {nullptr, 1, 3, 2, "  ####"}, {"abc", 1, 3, -1, "######"},
        {"abcdef", 2, 3, 5, "bcd  #"}, {"abc", 99, 1, 2, "  ####"},  {"abc", 0, 3, 2, "  ####"}};
    for (auto const& [s, pos, count, dstlen, want] : rows) {
        std::string field = "######";
        str_substr(s, pos, count, field.data(), dstlen);
        EXPECT_EQ(want, field) << pos;
    }
    char field[7] = "abcdef";
    str_substr(field, 2, 4, field, 6);  // a piece of the field moves to its front
    EXPECT_STREQ("bcde  ", field);
    str_pad("xyz", 2, '*', 3, field);
    EXPECT_STREQ("xy*e  ", field);
}

TEST(StrField, LengthAndShiftsTakeAnyCount) {
    for (int len = -1; len <= 5; ++len) {
        std::string const text = std::string("a\tb-c").substr(0, std::max(len, 0));
        EXPECT_EQ(len, str_length((text + "   ").data(), len > 0 ? len + 3 : len));
        for (int n : {INT_MIN, 0, 1, 4, 5, 6, INT_MAX}) {
            int const shift = std::clamp(n, 0, std::max(len, 0));
            std::string left = text + '#', right = left, blanks(shift, ' ');
            str_lshft(left.data(), len, n), str_rshft(right.data(), len, n);
            EXPECT_EQ(text.substr(shift) + blanks + '#', left) << n;
            EXPECT_EQ(blanks + text.substr(0, text.size() - shift) + '#', right) << n;
        }
    }
}

TEST(StrField, CaseConvertsTheShorterLength) {
    char text[] = "Ab-Cd-EF";
    int const lengths[] = {1, 9, -1};
    tolower_(text, &lengths[1], 4), tolower_(text, &lengths[2], 5), toupper_(text, lengths, 3);
    EXPECT_STREQ("Ab-cd-EF", text);
}

TEST(StrFmtMulCols, GoesDownTheColumns) {
    static std::string listing;
    auto const print = [](void* element) { listing += *static_cast<char*>(element); };
    auto const falling = [](void const* a, void const* b) { return -std::memcmp(a, b, 1); };
    Rows<int, int, char const*> const rows = {
        {5, 2, "41/30/2/"}, {3, INT_MAX, "012/"}, {3, 0, ""}, {1, -2, "0/"}, {0, -2, "/"}};
    for (auto const& [count, columns, want] : rows) {
        char elements[] = "01243";  // sorted where all are listed
        str_fmt_mul_cols(elements, count, 1, count == 5 ? +falling : nullptr, columns, print,
                         [] { listing += '/'; });
        EXPECT_EQ(want, std::exchange(listing, "")) << count << " in " << columns;
    }
}
