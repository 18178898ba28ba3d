// Texts that end with a NUL, searches in them and their accumulator.
#include "text/str_text.h"

#include <cctype>
#include <cerrno>
#include <iterator>

#include "tests/support/test.h"
#include "text/str_accumulator.h"
#include "text/str_search.h"

namespace {

TEST(StrCompare, OrdersNullFirstAndFoldsLettersOnly) {
    Rows<char const*, char const*, int, int> const rows = {
        {nullptr, nullptr, 0, 0}, {nullptr, "", -1, -1}, {"", nullptr, 1, 1},
        {"abc", "ABC", 1, 0},     {"abC", "ABd", 1, -1}, {"ab", "abc", -1, -1},
        {"a\xff", "A\x01", 1, 1}, {"x", "X[", 1, -1}};
    auto const sign = [](int value) { return (value > 0) - (value < 0); };
    for (auto const& [a, b, exact, folded] : rows) {
        EXPECT_TRUE(exact == sign(str_cmp(a, b)) && exact == sign(str_ncmp(a, b, 9)));
        EXPECT_TRUE(folded == sign(str_icmp(a, b)) && folded == sign(str_nicmp(a, b, 9)));
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
        std::string text = std::string(used, 'x') + std::string(11, '\0'), want = text, copy = text;
        if (used < size) std::snprintf(&want[used], size - used, "%s", "abcdef");
        EXPECT_EQ(text.data(), str_lcat(text.data(), "abcdef", size));
        EXPECT_EQ(want, text) << "size " << size << ", used " << used;
        std::snprintf(want.assign(copy).data(), size, "%s", "abcdef");
        EXPECT_EQ(copy.data(), str_lcpy(copy.data(), "abcdef", size));
        EXPECT_EQ(want, copy) << "size " << size;
    }
    EXPECT_TRUE(!str_lcpy(nullptr, "x", 2) && !str_lcat(nullptr, "x", 2));
}

TEST(StrSave, CopiesAndMakesNullEmpty) {
    std::string texts;
    for (char* const each : {str_save("abc"), str_nsave("abc", 2), str_nsave("abc", 9),
                             str_save(nullptr), str_nsave(nullptr, 2)})
        texts += each + std::string("|"), str_free(each);
    EXPECT_EQ("abc|ab|abc|||", texts);
}

// Searches against std::string, on fields that have no terminator behind them.
template <class Indx, class Index, class Cont, class Ncont>
void CheckSearch(Indx* indx, Index* index, Cont* cont, Ncont* ncont, int (*fold)(int)) {
    std::mt19937 random(11);
    for (int i = 0; i < 20000; ++i) {
        std::string const text = RandomText(random, 8, "abAB"),
                          piece = RandomText(random, 3, "abAB");
        std::vector<char> const field(text.begin(), text.end()), part(piece.begin(), piece.end());
        std::string s = text, sub = piece;
        std::transform(s.begin(), s.end(), s.begin(), fold);
        std::transform(sub.begin(), sub.end(), sub.begin(), fold);
        int const slen = static_cast<int>(s.size()), pos = static_cast<int>(random() % 12) - 1;
        auto const sublen = static_cast<short>(sub.size());
        SCOPED_TRACE(text + " / " + piece + " at " + std::to_string(pos));
        int const found = s.empty() ? 0 : static_cast<int>(s.find(sub) + 1);
        ASSERT_EQ(found, indx(text.c_str(), piece.c_str()));
        ASSERT_EQ(found, index(field.data(), slen, part.data(), sublen));
        bool const inside = pos >= 1 && pos <= slen;
        bool const here = sub.empty() || (inside && s.compare(pos - 1, sub.size(), sub) == 0);
        ASSERT_EQ(here, cont(pos, text.c_str(), piece.c_str()));
        ASSERT_EQ(here, ncont(pos, field.data(), slen, part.data(), sublen));
    }
    EXPECT_EQ(0, indx(nullptr, "a") + indx("a", nullptr) + index("abc", 3, nullptr, 1) +
                     index("abc", -1, "a", 1) + index("abc", 3, "a", -1));
    EXPECT_EQ(0, cont(1, nullptr, "a") + cont(1, "a", nullptr) + ncont(1, "abc", 3, "a", -1));
}

TEST(StrSearch, AgreesWithAModel) {
    CheckSearch(str_indx, str_index, str_cont, str_ncont, [](int c) { return c; });
    CheckSearch(str_iindx, str_iindex, str_icont, str_nicont, std::toupper);
}

TEST(StrFindC, GivesThePredicateUnsignedBytesButNotTheTerminator) {
    char const text[] = "ab\xe9";
    EXPECT_EQ(text + 2, str_FindC(text, [](int c) { return int(c == 0xe9); }));
    EXPECT_TRUE(!str_FindCN("ab", [](int c) { return int(c == 0); }) &&
                !str_FindC(nullptr, isdigit));
}

TEST(StrTok, CutsAtSeparatorsAndStaysOnTheTerminator) {
    for (std::string text : {"", "  ", "a", " a  bc d "}) {
        std::istringstream words(text);
        char* tokens[8];
        int const count = str_split(text.data(), isspace, tokens);
        std::vector<std::string> const want{std::istream_iterator<std::string>(words), {}};
        EXPECT_EQ(want, std::vector<std::string>(tokens, tokens + count));
        char* cursor = text.data() + text.size();
        EXPECT_TRUE(!tokens[count] && !str_Tok(&cursor, nullptr, isspace) && !*cursor);
    }
    char* none[1];
    EXPECT_EQ(0, str_split(nullptr, isspace, none));
}

// Pieces, null texts and the accumulated text's own ends against a string, and the steps of growth.
TEST(StrAccumulator, AgreesWithAStringAndGrowsInStepsOf128) {
    std::mt19937 random(3);
    for (int round = 0; round < 100; ++round) {
        str_arr_t acc;
        str_arr_init(&acc);
        EXPECT_EQ(nullptr, str_arr_str(&acc));
        std::string model;
        unsigned capacity = 128;  // the first use allocates, whatever the text
        for (int i = 0; i < 60; ++i) {
            std::string const piece(random() % 150, static_cast<char>('a' + i % 26));
            char const* texts[] = {piece.c_str(), nullptr, piece.c_str()};
            if (acc.buffer) texts[2] = acc.buffer + random() % (model.size() + 1);
            char const* const text = texts[random() % 3];
            bool const replaces = random() % 8 == 0;
            model = (replaces ? "" : model) + (text ? std::string(text) : "");
            ASSERT_EQ(model, (replaces ? str_arr_cpy : str_arr_cat)(&acc, text));
            while (capacity <= model.size()) capacity += 128;
            ASSERT_EQ(static_cast<int>(capacity), acc.capacity);
            ASSERT_TRUE(acc.end == acc.buffer + model.size() && acc.buffer == str_arr_str(&acc));
        }
        str_arr_delete(&acc);
    }
}

}  // namespace
