#include "text/stringtok.h"

#include "tests/support/test.h"
#include "text/stringsplitter.h"
#include "text/strlist.h"

// The pieces, each with a bar behind it.
static std::string Tokens(char const* text, char const* separators) {
    StringTok next(text);
    std::string pieces;
    while (char const* const piece = next(separators)) pieces += piece + std::string("|");
    EXPECT_EQ(nullptr, next("#"));  // stays exhausted, also for other separators
    return pieces;
}

static std::string Pieces(StringSplitter splitter) {
    std::string pieces;
    for (; !splitter.Done(); splitter.Next()) pieces += splitter.Get() + std::string("|");
    splitter.Next();
    EXPECT_EQ(nullptr, splitter.Get());
    return pieces;
}

static std::string Listed(char const* text, char const* separators) {
    TOList<String_t> list;
    int const count = Split(text, list, separators);
    EXPECT_EQ(count, list.Len());
    return count ? Concat(list, '|').Get() + std::string("|") : "";
}

TEST(TextPieces, AgreeWithEditedText) {
    std::mt19937 random(15);
    for (int round = 0; round < 5000; ++round) {
        std::string const text = RandomText(random, 11, "ab,; #"),
                          separators = round % 2 ? "," : ",;";
        std::string want = text;
        for (char& c : want) c = separators.find(c) == std::string::npos ? c : '|';
        EXPECT_EQ(want + '|', Listed(text.c_str(), separators.c_str()));
        if (!want.empty() && want.back() != '|') want += '|';
        EXPECT_EQ(want, Pieces({text.c_str(), separators.c_str()})) << text;
        for (std::size_t at; (at = ('|' + want).find("||")) < want.size();) want.erase(at, 1);
        EXPECT_EQ(want, Tokens(text.c_str(), separators.c_str())) << text;
    }
    EXPECT_EQ("", Tokens(nullptr, ",") + Pieces({nullptr, ",", " "}) + Listed(nullptr, ","));
    EXPECT_EQ("a b|||c|a|b|", Pieces({" a b . ,. ,,c", ",", " ."}) + Pieces({",a,,b,", ",", ","}));
}
