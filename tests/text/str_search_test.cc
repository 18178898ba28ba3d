#include "text/str_search.h"

#include <cctype>
#include <iterator>

#include "tests/support/test.h"

namespace {

// Every search against std::string, on fields that have no terminator behind them.
TEST(StrSearch, AgreesWithAModel) {
    using Fold = int (*)(int);
    std::tuple<decltype(&str_indx), decltype(&str_index), decltype(&str_cont), decltype(&str_ncont),
               Fold> const forms[] = {
        {str_indx, str_index, str_cont, str_ncont, [](int c) { return c; }},
        {str_iindx, str_iindex, str_icont, str_nicont, std::toupper}};
    std::mt19937 random(11);
    for (int i = 0; i < 40000; ++i) {
        auto const& [indx, index, cont, ncont, fold] = forms[i % 2];
        std::string s = RandomText(random, 8, "abAB"), sub = RandomText(random, 3, "abAB");
        std::vector<char> const field(s.begin(), s.end()), part(sub.begin(), sub.end());
        std::string const text = s, piece = sub;
        for (char& c : s) c = static_cast<char>(fold(c));
        for (char& c : sub) c = static_cast<char>(fold(c));
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
    EXPECT_EQ(0, str_indx(nullptr, "a") + str_iindx("a", nullptr) +
                     str_index("abc", 3, nullptr, 1) + str_iindex("abc", -1, "a", 1) +
                     str_index("abc", 3, "a", -1) + str_cont(1, nullptr, "a") +
                     str_icont(1, "a", nullptr) + str_ncont(1, "abc", 3, "a", -1));
}

TEST(StrFindC, GivesThePredicateUnsignedBytes) {
    char const text[] = "ab\xe9 1";
    EXPECT_EQ(text + 2, str_FindC(text, [](int c) { return int(c == 0xe9); }));
    EXPECT_EQ(text + 4, str_FindCN(text, isdigit));
    EXPECT_EQ(nullptr, str_FindC(text, [](int c) { return int(c == 0); }));  // not the terminator
    EXPECT_EQ(nullptr, str_FindC(nullptr, isdigit));
}

TEST(StrTok, CutsAtSeparatorsAndStaysOnTheTerminator) {
    for (std::string text : {"", "  ", "a", " a  bc d "}) {
        std::istringstream words(text);
        char* tokens[8];
        int const count = str_split(text.data(), isspace, tokens);
        std::vector<std::string> const want{std::istream_iterator<std::string>(words), {}};
        EXPECT_EQ(want, std::vector<std::string>(tokens, tokens + count));
        EXPECT_EQ(nullptr, tokens[count]);
    }
    char text[] = "a b", *cursor = nullptr;
    EXPECT_EQ(0, str_split(nullptr, isspace, &cursor));
    str_Tok(&cursor, text, nullptr);
    for (int const at : {0, 2}) EXPECT_EQ(text + at, str_Tok(&cursor, nullptr, isspace));
    EXPECT_EQ(nullptr, str_Tok(&cursor, nullptr, isspace));
    EXPECT_EQ(text + 3, cursor);
}

}  // namespace
