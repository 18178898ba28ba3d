#include "text/str_field.h"

#include "tests/support/test.h"

namespace {

TEST(StrField, PadAndSubstrFillTheDestination) {
    Rows<char const*, int, int, int, char const*> const rows = {
        {"abc", 1, 2, 5, "ab   #"},    {"abc", 1, 9, 5, "abc  #"},   {"abc", 1, 9, 2, "ab####"},
        {"abc", 1, -1, 2, "  ####"},   {nullptr, 1, 3, 2, "  ####"}, {"abc", 1, 3, -1, "######"},
        {"abcdef", 2, 3, 5, "bcd  #"}, {"abc", 4, 1, 2, "  ####"},   {"abc", 99, 1, 2, "  ####"},
        {"abc", 0, 3, 2, "  ####"}};
    for (auto const& [s, pos, count, dstlen, want] : rows) {
        std::string field = "######", padded = field, stars = want;
        str_substr(s, pos, count, field.data(), dstlen);
        EXPECT_EQ(want, field) << pos << ' ' << count << ' ' << dstlen;
        std::replace(stars.begin(), stars.end(), ' ', '*');
        str_pad(s, count, '*', dstlen, padded.data());
        if (pos != 1) continue;
        EXPECT_EQ(stars, padded) << count << ' ' << dstlen;
    }
    char field[7] = "abcdef";
    str_substr(field, 2, 4, field, 6);  // a piece of the field moves to its front
    EXPECT_STREQ("bcde  ", field);
    str_pad("abc", 3, '*', 3, nullptr);
}

TEST(StrField, LengthAndShiftsTakeAnyCount) {
    for (int len = -1; len <= 5; ++len) {
        std::string const text = std::string("a\tb-c").substr(0, std::max(len, 0));
        EXPECT_EQ(len, str_length((text + "   ").data(), len > 0 ? len + 3 : len));
        for (int n : {INT_MIN, 0, 1, 4, 5, 6, INT_MAX}) {
            int const shift = std::clamp(n, 0, std::max(len, 0));
            std::string const blanks(shift, ' ');
            std::string left = text + "#", right = left;
            str_lshft(left.data(), len, n);
            str_rshft(right.data(), len, n);
            EXPECT_EQ(text.substr(shift) + blanks + "#", left) << len << " by " << n;
            EXPECT_EQ(blanks + text.substr(0, text.size() - shift) + "#", right) << n;
        }
    }
    EXPECT_EQ(2, str_length("a\t ", 3) + str_length("   ", 3) + str_length(nullptr, 3));
    for (auto* const shift : {str_lshft, str_rshft}) shift(nullptr, 3, 1);
}

TEST(StrField, CaseConvertsTheShorterLength) {
    int const lengths[][3] = {{3, 9, 3}, {9, 4, 4}, {-1, 5, 0}};
    for (auto const& [length, maximum, count] : lengths) {
        std::string lower = "Ab-Cd", upper = lower, rest = lower.substr(count);
        tolower_(lower.data(), &length, maximum);
        toupper_(upper.data(), &length, maximum);
        EXPECT_EQ(std::string("ab-cd", count) + rest, lower);
        EXPECT_EQ(std::string("AB-CD", count) + rest, upper);
    }
    toupper_(nullptr, lengths[0], 3);
}

}  // namespace
