#include "text/str_text.h"

#include <cerrno>

#include "tests/support/abort_text.h"
#include "tests/support/test.h"

namespace {

int Sign(int value) { return (value > 0) - (value < 0); }

TEST(StrCompare, OrdersNullFirstAndFoldsLettersOnly) {
    Rows<char const*, char const*, int, int> const rows = {
        // the signs of the results
        {nullptr, nullptr, 0, 0}, {nullptr, "", -1, -1}, {"", nullptr, 1, 1},
        {"abc", "ABC", 1, 0},     {"abC", "ABd", 1, -1}, {"ab", "abc", -1, -1},
        {"a\xff", "A\x01", 1, 1}, {"x", "X[", 1, -1}};
    for (auto const& [a, b, exact, folded] : rows) {
        EXPECT_TRUE(exact == Sign(str_cmp(a, b)) && exact == Sign(str_ncmp(a, b, 9)));
        EXPECT_TRUE(folded == Sign(str_icmp(a, b)) && folded == Sign(str_nicmp(a, b, 9)));
    }
    EXPECT_EQ(0, str_ncmp("abc", "abd", 2) + str_nicmp("abc", "ABd", 2) + str_nicmp("a", "b", 0));
    EXPECT_EQ(-1, str_ncmp(nullptr, "x", 0));
    EXPECT_EQ('a' - '[', str_icmp("a", "["));  // '[' is no letter: the bytes, not 'A'
}

TEST(StrCopy, LeavesNullsAloneOrMakesThemEmpty) {
    std::string text(8, '#');
    char* const to = text.data();
    str_cpy(to, "ab");
    str_cat(to, nullptr), str_ncat(to, nullptr, 3);
    str_cat(nullptr, "x"), str_cpy(nullptr, "x"), str_ncpy(nullptr, "x", 1);
    str_ncat(to, "cdef", 2);
    EXPECT_EQ(std::string("abcd\0###", 8), text);
    str_ncpy(to, nullptr, 4);
    str_cpy(to + 1, nullptr);
    str_ncpy(to + 3, "x", 3);
    EXPECT_EQ(std::string("\0\0cx\0\0\0#", 8), text);
    EXPECT_EQ(2u, str_len(to + 2) + str_len(nullptr));
    EXPECT_STREQ(std::strerror(ENOENT), str_error(ENOENT));
}

TEST(StrLimitedCopy, NeverWritesPastTheSize) {
    for (unsigned i = 0; i < 80; ++i) {
        unsigned const size = i % 10, used = i / 10;
        std::string text = std::string(used, 'x') + std::string(11, '\0'), want = text;
        if (used < size) std::snprintf(&want[used], size - used, "%s", "abcdef");
        EXPECT_EQ(text.data(), str_lcat(text.data(), "abcdef", size));
        EXPECT_EQ(want, text) << "size " << size << ", used " << used;
        std::string copy(10, '#'), want_copy = copy;
        std::snprintf(want_copy.data(), size, "%s", "abcdef");
        EXPECT_EQ(copy.data(), str_lcpy(copy.data(), "abcdef", size));
        EXPECT_EQ(want_copy, copy) << "size " << size;
    }
    char text[] = "ab";
    for (auto* const copy : {str_lcpy, str_lcat})
        EXPECT_STREQ("ab", copy(copy(nullptr, "x", 2) ? nullptr : text, nullptr, 3));
}

TEST(StrSave, CopiesAndMakesNullEmpty) {
    char* const saved[] = {str_save("abc"), str_nsave("abc", 2), str_nsave("abc", 9),
                           str_save(nullptr), str_nsave(nullptr, 2)};
    std::string texts;
    for (char* const each : saved) texts += each + std::string("|"), str_free(each);
    EXPECT_EQ("abc|ab|abc|||", texts);
}

#if UINTPTR_MAX == UINT32_MAX  // no 32-bit count exhausts a larger address space
TEST(StrSaveDeathTest, AbortsSilentlyWithoutMemory) {
    EXPECT_EXIT(str_nsave("x", 0xFFFFFFFFu), testing::KilledBySignal(SIGABRT), AbortText(""));
}
#endif

}  // namespace
