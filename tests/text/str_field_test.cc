#include "text/str_field.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <climits>
#include <string>

namespace {

TEST(StrLength, CountsNoTrailingBlanks) {
    EXPECT_EQ(3, str_length("a b   ", 6));
    EXPECT_EQ(0, str_length("   ", 3));
    EXPECT_EQ(2, str_length("a\t ", 3));  // only the blank character
    EXPECT_EQ(1, str_length("abc", 1));
    EXPECT_EQ(0, str_length("abc", 0));
    EXPECT_EQ(-4, str_length("abc", -4));
    EXPECT_EQ(0, str_length(nullptr, 3));
}

TEST(StrPad, CopiesToATerminatorAndFillsTheRest) {
    struct {
        char const* src;
        int srclen, dstlen;
        char const* want;
    } const rows[] = {{"abc", 3, 5, "abc**#"},   {"abc", 2, 5, "ab***#"}, {"abc", 9, 5, "abc**#"},
                      {"abc", 9, 2, "ab####"},   {"abc", 0, 2, "**####"}, {"abc", -1, 2, "**####"},
                      {nullptr, 3, 2, "**####"}, {"abc", 3, 0, "######"}, {"abc", 3, -1, "######"}};
    for (auto const& row : rows) {
        char field[7] = "######";
        str_pad(row.src, row.srclen, '*', row.dstlen, field);
        EXPECT_STREQ(row.want, field) << row.srclen << ' ' << row.dstlen;
    }
    str_pad("abc", 3, '*', 3, nullptr);
}

TEST(StrSubstr, CountsFromOneAndPadsWithBlanks) {
    struct {
        char const* s;
        int pos, n, dstlen;
        char const* want;
    } const rows[] = {
        {"abcdef", 2, 3, 5, "bcd  #"},       {"abcdef", 5, 9, 5, "ef   #"},
        {"abcdef", 1, 6, 3, "abc###"},       {"abcdef", 7, 1, 2, "  ####"},  // on the terminator
        {"abcdef", 99, 1, 2, "  ####"},      {"abcdef", 0, 3, 2, "  ####"},
        {"abcdef", INT_MIN, 3, 2, "  ####"}, {"abcdef", 2, 0, 2, "  ####"},
        {nullptr, 1, 1, 2, "  ####"}};
    for (auto const& row : rows) {
        char field[7] = "######";
        str_substr(row.s, row.pos, row.n, field, row.dstlen);
        EXPECT_STREQ(row.want, field) << row.pos << ' ' << row.n << ' ' << row.dstlen;
    }
}

TEST(StrShift, MovesAndBlanksAtAnyDistance) {
    for (int len = 0; len <= 5; ++len) {
        for (int n : {INT_MIN, -1, 0, 1, 2, 4, 5, 6, INT_MAX}) {
            int const shift = std::clamp(n, 0, len);
            std::string const text = std::string("abcde").substr(0, len), blanks(shift, ' ');
            std::string left = text + "#", right = left;
            str_lshft(left.data(), len, n);
            str_rshft(right.data(), len, n);
            EXPECT_EQ(text.substr(shift) + blanks + "#", left) << len << " by " << n;
            EXPECT_EQ(blanks + text.substr(0, len - shift) + "#", right) << len << " by " << n;
        }
    }
    str_lshft(nullptr, 3, 1);
    str_rshft(nullptr, 3, 1);
}

TEST(FieldCase, ConvertsTheShorterLength) {
    struct {
        int length, maximum;
        char const *lower, *upper;
    } const rows[] = {{3, 9, "ab-Cd", "AB-Cd"},
                      {9, 4, "ab-cd", "AB-Cd"},
                      {-1, 5, "Ab-Cd", "Ab-Cd"},
                      {5, 5, "ab-cd", "AB-CD"}};
    for (auto const& row : rows) {
        char lower[] = "Ab-Cd", upper[] = "Ab-Cd";
        tolower_(lower, &row.length, row.maximum);
        toupper_(upper, &row.length, row.maximum);
        EXPECT_STREQ(row.lower, lower) << row.length;
        EXPECT_STREQ(row.upper, upper) << row.length;
    }
    toupper_(nullptr, &rows[0].length, 3);
}

}  // namespace
