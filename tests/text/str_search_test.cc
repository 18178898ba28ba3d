#include "text/str_search.h"

#include <gtest/gtest.h>

#include <cctype>
#include <random>
#include <string>
#include <vector>

namespace {

std::string Upper(std::string text) {
    for (char& c : text) c = static_cast<char>(std::toupper(static_cast<unsigned char>(c)));
    return text;
}

std::string RandomText(std::mt19937& random, unsigned longest) {
    std::string text(random() % (longest + 1), ' ');
    for (char& c : text) c = "abAB"[random() % 4];
    return text;
}

// Every search against std::string, on fields that have no terminator behind them.
TEST(StrSearch, AgreesWithAModel) {
    std::mt19937 random(11);
    for (int i = 0; i < 20000; ++i) {
        std::string const s = RandomText(random, 8), sub = RandomText(random, 3);
        std::vector<char> const field(s.begin(), s.end()), part(sub.begin(), sub.end());
        int const slen = static_cast<int>(s.size());
        auto const sublen = static_cast<short>(sub.size());
        int const pos = static_cast<int>(random() % 12) - 1;
        SCOPED_TRACE(s + " / " + sub + " at " + std::to_string(pos));

        int const at = s.empty() ? 0 : static_cast<int>(s.find(sub) + 1);
        int const folded = s.empty() ? 0 : static_cast<int>(Upper(s).find(Upper(sub)) + 1);
        ASSERT_EQ(at, str_indx(s.c_str(), sub.c_str()));
        ASSERT_EQ(folded, str_iindx(s.c_str(), sub.c_str()));
        ASSERT_EQ(at, str_index(field.data(), slen, part.data(), sublen));
        ASSERT_EQ(folded, str_iindex(field.data(), slen, part.data(), sublen));

        bool const inside = pos >= 1 && pos <= slen;
        bool const here = sub.empty() || (inside && s.compare(pos - 1, sub.size(), sub) == 0);
        bool const folds =
            sub.empty() || (inside && Upper(s).compare(pos - 1, sub.size(), Upper(sub)) == 0);
        ASSERT_EQ(here, str_cont(pos, s.c_str(), sub.c_str()));
        ASSERT_EQ(folds, str_icont(pos, s.c_str(), sub.c_str()));
        ASSERT_EQ(here, str_ncont(pos, field.data(), slen, part.data(), sublen));
        ASSERT_EQ(folds, str_nicont(pos, field.data(), slen, part.data(), sublen));
    }
}

TEST(StrSearch, RefusesNullsAndNegativeCounts) {
    EXPECT_EQ(0, str_indx(nullptr, "a"));
    EXPECT_EQ(0, str_iindx("a", nullptr));
    EXPECT_EQ(0, str_index("abc", 3, nullptr, 1));
    EXPECT_EQ(0, str_iindex("abc", -1, "a", 1));
    EXPECT_EQ(0, str_index("abc", 3, "a", -1));
    EXPECT_EQ(0, str_cont(1, nullptr, "a"));
    EXPECT_EQ(0, str_icont(1, "a", nullptr));
    EXPECT_EQ(0, str_ncont(1, "abc", 3, "a", -1));
    EXPECT_EQ(1, str_nicont(99, "abc", 3, "a", 0));
    EXPECT_EQ(nullptr, str_FindC(nullptr, isdigit));
}

TEST(StrFindC, GivesThePredicateUnsignedBytes) {
    char const text[] = "ab\xe9 1";
    EXPECT_EQ(text + 2, str_FindC(text, [](int c) { return int(c == 0xe9); }));
    EXPECT_EQ(text + 4, str_FindCN(text, isdigit));
    EXPECT_EQ(nullptr, str_FindC(text, [](int c) { return int(c == 0); }));  // not the terminator
    EXPECT_EQ(nullptr, str_FindCN("", isdigit));
}

TEST(StrSplit, SkipsSeparatorsAndStoresAFinalNull) {
    struct {
        char const* text;
        std::vector<std::string> want;
    } const rows[] = {
        {"", {}}, {"  ", {}}, {"a", {"a"}}, {" a  bc d ", {"a", "bc", "d"}}, {"a b", {"a", "b"}}};
    for (auto const& row : rows) {
        std::string text = row.text;
        char* tokens[8];
        int const count = str_split(text.data(), isspace, tokens);
        EXPECT_EQ(row.want, std::vector<std::string>(tokens, tokens + count)) << row.text;
        EXPECT_EQ(nullptr, tokens[count]);
    }
    char* token = nullptr;
    EXPECT_EQ(0, str_split(nullptr, isspace, &token));
}

TEST(StrTok, StaysOnTheTerminatorAndCutsTheSeparator) {
    char text[] = " a,b";
    char* cursor = nullptr;
    auto const comma = [](int c) { return int(c == ',' || c == ' '); };
    EXPECT_EQ(nullptr, str_Tok(&cursor, text, nullptr));
    EXPECT_EQ(text, cursor);
    EXPECT_STREQ("a", str_Tok(&cursor, nullptr, comma));
    EXPECT_EQ(text + 3, cursor);
    EXPECT_STREQ("b", str_Tok(&cursor, nullptr, comma));
    EXPECT_EQ(text + 4, cursor);
    EXPECT_EQ(nullptr, str_Tok(&cursor, nullptr, comma));
    EXPECT_EQ(nullptr, str_Tok(&cursor, nullptr, comma));
}

}  // namespace
