#include "text/str_text.h"

#include <cerrno>

#include "tests/support/abort_text.h"
#include "tests/support/test.h"

namespace {

using namespace std::string_literals;

int Sign(int value) { return (value > 0) - (value < 0); }

TEST(StrCompare, OrdersNullFirstAndFoldsLettersOnly) {
    // The signs of the results; the last one is without case.
    Rows<char const*, char const*, int, int, int> const rows = {
        {nullptr, nullptr, 0, 0, 0}, {nullptr, "", -1, -1, -1},   {"", nullptr, 1, 1, 1},
        {"", "", 0, 0, 0},           {"abc", "ABC", 1, 0, 0},     {"abC", "ABd", 1, -1, 0},
        {"ab", "abc", -1, -1, 0},    {"a\xff", "A\x01", 1, 1, 1}, {"a", "[", 1, 1, 1},
        {"x", "X[", 1, -1, -1}};
    for (auto const& [a, b, exact, folded, first_two] : rows) {
        int const want[] = {exact, exact, folded, folded, first_two, 0};
        int const got[] = {str_cmp(a, b),      str_ncmp(a, b, 9),  str_icmp(a, b),
                           str_nicmp(a, b, 9), str_nicmp(a, b, 2), str_nicmp(a, b, 0)};
        for (int i = 0; i < 6; ++i)
            EXPECT_EQ(want[i], Sign(got[i])) << i << " of " << exact << folded;
    }
    EXPECT_EQ(0, str_ncmp("abc", "abd", 2));
    EXPECT_EQ(-1, str_ncmp(nullptr, "x", 0));
    EXPECT_EQ('a' - '[', str_icmp("a", "["));  // '[' is no letter: the bytes, not 'A'
}

TEST(StrCopy, LeavesNullsAloneOrMakesThemEmpty) {
    std::string text(8, '#');
    char* const to = text.data();
    str_cpy(to, "ab");
    str_cat(to, nullptr), str_cat(nullptr, "x"), str_ncat(to, nullptr, 3);
    str_cpy(nullptr, "x"), str_ncpy(nullptr, "x", 1);
    str_ncat(to, "cdef", 2);
    EXPECT_EQ("abcd\0###"s, text);
    str_ncpy(to, nullptr, 4);
    str_cpy(to + 1, nullptr);
    EXPECT_EQ("\0\0cd\0###"s, text);
    str_ncpy(to, "ab", 5);
    str_cat(to, "c");
    EXPECT_EQ("abc\0\0\0##"s, text);
    str_ncpy(to, "abcdef", 4);
    EXPECT_EQ(4u, str_len(to) + str_len(nullptr));
    EXPECT_STREQ(std::strerror(ENOENT), str_error(ENOENT));
}

TEST(StrLimitedCopy, NeverWritesPastTheSize) {
    for (unsigned i = 0; i < 80; ++i) {
        unsigned const size = i % 10, used = i / 10;
        std::string copy(10, '#'), both = std::string(used, 'x') + '\0' + copy;
        std::string want_copy = copy, want_both = both;
        std::snprintf(want_copy.data(), size, "%s", "abcdef");
        if (used < size) std::snprintf(&want_both[used], size - used, "%s", "abcdef");
        EXPECT_EQ(copy.data(), str_lcpy(copy.data(), "abcdef", size));
        EXPECT_EQ(both.data(), str_lcat(both.data(), "abcdef", size));
        EXPECT_EQ(want_copy, copy) << "size " << size;
        EXPECT_EQ(want_both, both) << "size " << size << ", used " << used;
    }
    char text[] = "ab";
    for (auto* const copy : {str_lcpy, str_lcat})
        EXPECT_STREQ("ab", copy(copy(nullptr, "x", 2) ? nullptr : text, nullptr, 3));
}

TEST(StrSave, CopiesAndMakesNullEmpty) {
    for (unsigned n : {0, 2, 3, 9}) {
        for (char const* text : {"abc", "", static_cast<char const*>(nullptr)}) {
            char *const whole = str_save(text), *const part = str_nsave(text, n);
            EXPECT_STREQ(text ? text : "", whole);
            EXPECT_EQ(std::string(whole).substr(0, n), part) << n;
            EXPECT_EQ('\0', part[n]);
            for (char* const each : {whole, part}) str_free(each);
        }
    }
}

#if UINTPTR_MAX == UINT32_MAX  // no 32-bit count exhausts a larger address space
TEST(StrSaveDeathTest, AbortsSilentlyWithoutMemory) {
    for (unsigned n : {0xFFFFFFFFu, 0xFFFFFFF0u})
        EXPECT_EXIT(str_nsave("x", n), testing::KilledBySignal(SIGABRT), AbortText(""));
}
#endif

}  // namespace
