#include "text/str_text.h"

#include <gtest/gtest.h>

#include <cerrno>
#include <cstdint>
#include <cstring>
#include <string>

#include "tests/support/abort_text.h"

namespace {

int Sign(int value) { return (value > 0) - (value < 0); }

TEST(StrCompare, OrdersNullFirstAndFoldsLettersOnly) {
    struct {
        char const *a, *b;
        int exact, folded, first_two;  // signs; the last one without case
    } const rows[] = {{nullptr, nullptr, 0, 0, 0}, {nullptr, "", -1, -1, -1},
                      {"", nullptr, 1, 1, 1},      {"", "", 0, 0, 0},
                      {"abc", "ABC", 1, 0, 0},     {"abC", "ABd", 1, -1, 0},
                      {"ab", "abc", -1, -1, 0},    {"a\xff", "A\x01", 1, 1, 1},  // unsigned bytes
                      {"a", "[", 1, 1, 1},  // '[' is no letter: the bytes as they are, not 'A'
                      {"A", "[", -1, -1, -1},      {"x", "X[", 1, -1, -1}};
    for (auto const& row : rows) {
        SCOPED_TRACE(testing::Message()
                     << (row.a ? row.a : "null") << ' ' << (row.b ? row.b : "null"));
        EXPECT_EQ(row.exact, Sign(str_cmp(row.a, row.b)));
        EXPECT_EQ(row.exact, Sign(str_ncmp(row.a, row.b, 100)));
        EXPECT_EQ(row.folded, Sign(str_icmp(row.a, row.b)));
        EXPECT_EQ(row.folded, Sign(str_nicmp(row.a, row.b, 100)));
        EXPECT_EQ(row.first_two, Sign(str_nicmp(row.a, row.b, 2)));
        EXPECT_EQ(0, str_nicmp(row.a, row.b, 0));
    }
    EXPECT_EQ(0, str_ncmp("abc", "abd", 2));
    EXPECT_EQ(-1, str_ncmp(nullptr, "x", 0));
    EXPECT_EQ('a' - '[', str_icmp("a", "["));
}

TEST(StrCopy, LeavesNullsAloneOrMakesThemEmpty) {
    char text[8] = "ab";
    str_cat(text, nullptr);
    str_cat(nullptr, "x");
    str_ncat(text, nullptr, 3);
    str_ncat(text, "cdef", 2);
    EXPECT_STREQ("abcd", text);
    str_cpy(nullptr, "x");
    str_ncpy(nullptr, "x", 1);
    str_cpy(text, nullptr);
    EXPECT_STREQ("", text);
    std::memset(text, '#', sizeof text);
    str_ncpy(text, "ab", 4);
    EXPECT_EQ(std::string("ab\0\0\0###", 8), std::string(text, sizeof text));
    str_ncpy(text, "abcdef", 4);
    EXPECT_STREQ("abcd", text);
    EXPECT_EQ(0u, str_len(nullptr));
    EXPECT_STREQ(std::strerror(ENOENT), str_error(ENOENT));
}

TEST(StrLimitedCopy, NeverWritesPastTheSize) {
    std::string const source = "abcdef";
    for (unsigned size = 0; size <= 9; ++size) {
        for (unsigned used = 0; used <= 7; ++used) {
            char copy[10], both[10];
            std::memset(copy, '#', sizeof copy);
            std::memset(both, '#', sizeof both);
            std::memset(both, 'x', used);
            both[used] = '\0';
            EXPECT_EQ(copy, str_lcpy(copy, source.c_str(), size));
            EXPECT_EQ(both, str_lcat(both, source.c_str(), size));
            std::string const kept = source.substr(0, size ? size - 1 : 0);
            EXPECT_EQ(size ? kept + '\0' + '#' : "##",
                      std::string(copy, size ? kept.size() + 2 : 2));
            std::string want(used, 'x');
            if (used + 1 < size) want += source.substr(0, size - 1 - used);
            EXPECT_EQ(want, both) << "size " << size << ", used " << used;
        }
    }
    EXPECT_EQ(nullptr, str_lcpy(nullptr, "x", 2));
    char text[4] = "ab";
    EXPECT_STREQ("ab", str_lcpy(text, nullptr, 4));
    EXPECT_STREQ("ab", str_lcat(text, nullptr, 4));
}

TEST(StrSave, CopiesAndMakesNullEmpty) {
    struct {
        char const* text;
        unsigned n;
        char const *whole, *part;
    } const rows[] = {
        {"abc", 2, "abc", "ab"}, {"abc", 9, "abc", "abc"}, {"", 0, "", ""}, {nullptr, 3, "", ""}};
    for (auto const& row : rows) {
        char* const whole = str_save(row.text);
        char* const part = str_nsave(row.text, row.n);
        EXPECT_STREQ(row.whole, whole);
        EXPECT_STREQ(row.part, part);
        EXPECT_EQ('\0', part[row.n]);
        str_free(whole);
        str_free(part);
    }
    str_free(nullptr);
}

#if UINTPTR_MAX == UINT32_MAX  // no 32-bit count exhausts a larger address space
TEST(StrSaveDeathTest, AbortsSilentlyWithoutMemory) {
    for (unsigned n : {0xFFFFFFFFu, 0xFFFFFFF0u})
        EXPECT_EXIT(str_nsave("x", n), testing::KilledBySignal(SIGABRT), AbortText(""));
}
#endif

}  // namespace
