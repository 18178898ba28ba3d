#include "text/str_text.h"

#include <cctype>
#include <iterator>

#include "tests/support/test.h"
#include "text/str_accumulator.h"
#include "text/str_search.h"

TEST(StrCompare, OrdersNullFirstAndFoldsLettersOnly) {
    Rows<char const*, char const*, int, int> const rows = {
        {nullptr, nullptr, 0, 0}, {nullptr, "", -1, -1}, {"", nullptr, 1, 1},
        {"abc", "ABC", 1, 0},     {"abC", "ABd", 1, -1}, {"ab", "abc", -1, -1},
        {"a\xff", "A\x01", 1, 1}, {"x", "X[", 1, -1}};
    for (auto const& [a, b, exact, folded] : rows) {
        int const got[] = {str_cmp(a, b), str_ncmp(a, b, 9), str_icmp(a, b), str_nicmp(a, b, 9)};
        for (int k = 0; k < 4; ++k) EXPECT_EQ(k < 2 ? exact : folded, std::clamp(got[k], -1, 1));
    }
    EXPECT_EQ(0, str_ncmp("abc", "abd", 2) + str_nicmp("abc", "ABd", 2) + str_nicmp("a", "b", 0));
    EXPECT_EQ('a' - '[', str_icmp("a", "["));  // '[' is no letter: the bytes, not 'A'
}

TEST(StrCopy, AgreesWithAModel) {
    std::mt19937 random(4);
    for (int i = 0; i < 5000; ++i) {
        std::string const front = RandomText(random, 6, "ab"), text = RandomText(random, 6, "cd");
        char const* const from = i % 4 ? text.c_str() : nullptr;
        std::size_t const n = random() % 12,
                          room = std::max(n, front.size() + 1) - front.size() - 1;
        std::string const whole = from ? text : "", cut = whole.substr(0, n);
        auto const check = [&](std::string const& want, auto copy, auto... size) {
            std::string got = front + '\0' + std::string(20, '#'), all = got;
            copy(got.data(), from, static_cast<unsigned>(size)...);
            EXPECT_EQ(all.replace(0, want.size() + 1, want + '\0'), got) << front << ' ' << n;
        };
        check(whole, str_cpy);
        check(front + whole, str_cat);
        check(front + cut, str_ncat, n);
        check(from ? cut + std::string(n - cut.size(), '\0') : "", str_ncpy, n);
        check(from && n ? text.substr(0, n - 1) : front, str_lcpy, n);
        check(front + whole.substr(0, room), str_lcat, n);
        char *const all = str_save(from), *const some = str_nsave(from, static_cast<unsigned>(n));
        EXPECT_TRUE(all == whole && some == cut && str_len(from) == whole.size());
        str_free(all), str_free(some);
    }
}

// Searches against std::string, on fields that have no terminator behind them.
template <class Indx, class Index, class Cont, class Ncont>
static void CheckSearch(Indx* indx, Index* index, Cont* cont, Ncont* ncont, int (*fold)(int)) {
    std::mt19937 random(11);
    for (int i = 0; i < 20000; ++i) {
        std::string s = RandomText(random, 8, "abAB"), sub = RandomText(random, 3, "abAB");
        std::vector<char> const field(s.begin(), s.end()), part(sub.begin(), sub.end());
        std::string const text = s, piece = sub;
        for (std::string* each : {&s, &sub})
            std::transform(each->begin(), each->end(), each->begin(), fold);
        int const slen = static_cast<int>(s.size()), pos = static_cast<int>(random() % 12) - 1;
        auto const sublen = static_cast<short>(sub.size());
        SCOPED_TRACE(text + " / " + piece + " at " + std::to_string(pos));
        int const found = s.empty() ? 0 : static_cast<int>(s.find(sub) + 1);
        ASSERT_EQ(found, indx(text.c_str(), piece.c_str()));
        ASSERT_EQ(found, index(field.data(), slen, part.data(), sublen));
        bool const here =
            sub.empty() || (pos >= 1 && pos <= slen && s.compare(pos - 1, sub.size(), sub) == 0);
        ASSERT_EQ(here, cont(pos, text.c_str(), piece.c_str()));
        ASSERT_EQ(here, ncont(pos, field.data(), slen, part.data(), sublen));
    }
    EXPECT_EQ(0, indx(nullptr, "a") + index("abc", 3, "a", -1) + cont(1, "a", nullptr));
}

TEST(StrSearch, AgreesWithAModel) {
    CheckSearch(str_indx, str_index, str_cont, str_ncont, [](int c) { return c; });
    CheckSearch(str_iindx, str_iindex, str_icont, str_nicont, std::toupper);
}

TEST(StrTok, CutsAtSeparatorsAndStaysOnTheTerminator) {
    for (std::string text : {"", "  ", "a", " a  bc d "}) {
        std::istringstream words(text);
        char* tokens[8];
        int const count = str_split(text.data(), isspace, tokens);
        EXPECT_EQ(Joined(std::vector<std::string>{std::istream_iterator<std::string>(words), {}}),
                  Joined(std::vector<std::string>(tokens, tokens + count)));
        char* cursor = text.data() + text.size();
        EXPECT_TRUE(!tokens[count] && !str_Tok(&cursor, nullptr, isspace) && !*cursor);
    }
    EXPECT_STREQ("\xe9", str_FindC("ab\xe9", [](int c) { return int(c == 0xe9); }));
}

// Pieces, null texts and the own text's ends against a string, and the steps of growth.
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
            char const* const own = acc.buffer ? acc.buffer + random() % (model.size() + 1) : "";
            char const *const texts[] = {piece.c_str(), own, nullptr}, *const text =
                                                                           texts[random() % 3];
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
