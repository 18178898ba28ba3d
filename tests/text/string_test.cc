#include "text/string.h"

#include <optional>
#include <thread>
#include <type_traits>

#include "tests/support/test.h"

namespace {

static_assert(!std::is_convertible_v<unsigned, String_t>);

constexpr unsigned kMost = 0xFFFFFFFF;

// The texts with a bar behind each, "~" for null. Changes what they share, if they do.
std::string Texts(std::vector<String_t> strings) {
    std::string texts;
    for (String_t& s : strings) {
        char const* const text = s;
        texts += (text ? text : "~") + std::string("|");
        EXPECT_TRUE(s == text && text == s && s == String_t(text)) << text;
        EXPECT_FALSE(s != text || text != s || s != String_t(text)) << text;
        EXPECT_TRUE(s.IsNull() == !text && s.IsEmpty() == (!text || !*text)) << text;
        EXPECT_TRUE(s.Len() == s.View().size() && s.View().data() == text) << text;
        EXPECT_STREQ(text, std::unique_ptr<char[]>(s.Save()).get());
        s.Reserve(0);
    }
    return texts;
}

TEST(StringMaking, TellsNullFromEmpty) {
    char const ab_x[] = {'a', 'b', '\0', 'x'};
    EXPECT_EQ("ab|ab|~||~||~||xyz|",
              Texts({String_t("ab", 4), String_t(ab_x, 4), String_t("abc", 0), String_t("", 3),
                     String_t(nullptr, 3), String_t(7u), String_t(std::string_view()),
                     String_t(std::string_view("")), String_t(std::string("xyz"))}));
    // Padded with NULs up to the count; what lies behind one is not copied.
    EXPECT_TRUE(String_t("ab", 4).Get()[3] == 0 && String_t(ab_x, 4).Get()[3] == 0);
    EXPECT_TRUE(String_t() != "" && String_t("") != nullptr && String_t() == 0);
    EXPECT_THROW(String_t("x", kMost), std::bad_alloc);
    EXPECT_THROW(String_t{kMost}, std::bad_alloc);
    String_t s("kept");
    EXPECT_THROW(s.Reserve(kMost), std::bad_alloc);
    EXPECT_STREQ("kept", s);
}

// Nothing left gives null, not "". A count of 2^31 and more is negative, and one may wrap to 0.
TEST(StringSubStr, CopiesBothEndsAndClips) {
    String_t const s("hello"), null;
    EXPECT_EQ("ell|ello|~|~|hello|~|~|~|~|",
              Texts({s.SubStr(1, 3), s.SubStr(1, 100), s.SubStr(2, 1), null.SubStr(0, 4),
                     s.SubStr(0, 0x7FFFFFFE), s.SubStr(0, 0x7FFFFFFF), s.SubStr(5, 9),
                     s.SubStr(9, 12), s.SubStr(0, kMost)}));
    EXPECT_STREQ("hello", s);
}

TEST(StringTrim, KeepsTheLastCharacterOnlyAtTheLeft) {
    std::string texts;
    for (String_t const s :
         {"\t\n\v\f\r a b\n", "   ", "\xe9 ", "", static_cast<char const*>(nullptr)})
        texts += Texts({s.Trim(), s.TrimLeft(), s.TrimRight()});
    EXPECT_EQ("a b|a b\n|\t\n\v\f\r a b|~| |~|\xe9|\xe9 |\xe9|~|~|~|~|~|~|", texts);
}

TEST(StringCopies, ConvertReplaceAndJoin) {
    String_t const s("Metal-2\xe4"), a("a"), null;
    String_t own("abc"), tail("abcdefgh");
    own.Prepend((own += own).Get() + 4);
    tail = tail.Get() + 5;
    EXPECT_EQ("METAL-2\xe4|metal-2\xe4|M|Mexal-2\xe4|M__al-_\xe4|~|",
              Texts({s.Toupper(), s.Tolower(), s.Subst("e", '\0'), s.Subst('t', 'x'),
                     s.Subst("e2t", '_'), null.Subst("a", 'b')}));
    EXPECT_EQ("ab|ba|a|~||bcabcabc|fgh|",
              Texts({a + "b", "b" + a, a + null, null + null, null + "", own, tail}));
    EXPECT_TRUE(s == "Metal-2\xe4" && a == "a" && null.IsNull());
}

TEST(StringOrder, FollowsTheBytesWithNullFirst) {
    char const* const ascending[] = {nullptr, "", "a", "ab\xff", "a\x80"};
    for (int n = 0; n < 25; ++n) {
        int const i = n / 5, j = n % 5;
        char const *const a = ascending[i], *const b = ascending[j];
        String_t const s(a), t(b);
        EXPECT_TRUE((s < t) == (i < j) && (s < b) == (i < j) && (a < t) == (i < j));
        EXPECT_TRUE((s <= t) == (i <= j) && (s <= b) == (i <= j) && (a <= t) == (i <= j));
        EXPECT_TRUE((s > t) == (i > j) && (s > b) == (i > j) && (a > t) == (i > j));
        EXPECT_TRUE((s >= t) == (i >= j) && (s >= b) == (i >= j) && (a >= t) == (i >= j));
    }
}

// The model: pointers to optional texts, shared as documented.
TEST(StringSharing, FollowsTheModelThroughRandomSteps) {
    using Text = std::optional<std::string>;
    char const* const texts[] = {nullptr, "", "x", "layer 7"};
    std::mt19937 random(12);
    String_t strings[6];
    std::shared_ptr<Text> model[6];
    for (auto& text : model) text = std::make_shared<Text>();
    for (int step = 0; step < 20000; ++step) {
        unsigned const i = random() % 6, j = random() % 6;
        char const* const text = texts[random() % 4];
        String_t& s = strings[i];
        std::string const old = model[i]->value_or("");
        auto const change = [&](Text const& to) { model[i] = std::make_shared<Text>(to); };
        std::string_view const piece = s.View().substr(old.size() / 3, old.size() / 2);
        switch (old.size() > 100 ? 8 : random() % 8) {
            case 0: s = strings[j], model[i] = model[j]; break;
            case 1: strings[i] = String_t(strings[j]), model[i] = model[j]; break;
            case 2:
                s = std::move(strings[j]);
                if (i != j) model[i] = std::exchange(model[j], std::make_shared<Text>());
                break;
            case 3: s = text, change(text ? Text(text) : Text()); break;
            case 4: s += text, text ? change(old + text) : void(); break;
            case 5: s.Prepend(text), text ? change(text + old) : void(); break;
            case 6: std::strcpy(s.Reserve(3), "new"), *model[i] = "new"; break;
            case 7: piece.data() ? change(Text(piece)) : change(Text()), s.Assign(piece); break;
            default: s.Reserve(0), *model[i] = ""; break;
        }
        for (unsigned k = 0; k < 6; ++k)
            ASSERT_STREQ(*model[k] ? (*model[k])->c_str() : nullptr, strings[k]) << step;
    }
}

TEST(StringRecords, OfTheOwnSizeComeFromThePoolAgain) {
    struct Wide : String_t::Srep {
        Wide() : Srep(nullptr) {}
        double more[8];
    };
    auto* const first = new String_t::Srep(nullptr);
    delete first;
    delete new Wide;
    EXPECT_EQ(first, std::make_unique<String_t::Srep>(nullptr).get());
}

TEST(StringReading, TakesWordsAndLinesOfAnyLength) {
    std::string const longest(5000, 'x');
    std::istringstream in("  word b " + longest + ' ');
    String_t word;
    for (std::string const want : {"word", "b", longest.c_str()}) {
        EXPECT_TRUE(in >> word);
        EXPECT_EQ(want, word.Get());
    }
    EXPECT_FALSE(in >> word);
    EXPECT_EQ(longest, word.Get());  // left alone
    EXPECT_EQ("a  b", Joined(std::vector<String_t>{"a", String_t(), "b"}));

    Rows<std::string, char const*, std::string> const rows = {{"a\n\nb", "\n", "a||b|"},
                                                              {"1--2---3", "--", "1|2|-3|"},
                                                              {longest, nullptr, longest + '|'}};
    for (auto const& [text, delim, want] : rows) {
        std::istringstream lines(text);
        std::string pieces;
        while (String_t::Getline(lines, word, delim).good())
            pieces += word.Get() + std::string("|");
        EXPECT_EQ(want, pieces);
        EXPECT_TRUE(lines.fail() && word.IsNull());
    }
}

TEST(StringThreads, MakeAndDropUnrelatedStrings) {
    std::vector<std::thread> threads;
    for (std::string const id : {"a", "b", "c", "d"})
        threads.emplace_back([id] {
            String_t kept[64];
            for (unsigned i = 0; i < 3000; ++i) {
                kept[i % 64] = String_t(id.c_str()) + std::to_string(i).c_str();
                ASSERT_EQ(id + std::to_string(i & ~63u), kept[0].Get());
            }
        });
    for (auto& thread : threads) thread.join();
}

}  // namespace
