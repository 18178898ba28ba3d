#include "text/string.h"

#include <array>
#include <optional>
#include <thread>
#include <type_traits>

#include "tests/support/test.h"

namespace {

static_assert(!std::is_convertible_v<unsigned, String_t>);

constexpr unsigned kMost = 0xFFFFFFFF;

struct Row {
    String_t got;
    char const* want;  // nullptr: the null string
};

// The texts of the rows, by every way to look at them. Changes what they share, if they do.
void Check(std::vector<Row> rows) {
    for (auto& [got, want] : rows) {
        EXPECT_STREQ(want, got);
        EXPECT_TRUE(got == want && want == got && got == String_t(want)) << got;
        EXPECT_FALSE(got != want || want != got || got != String_t(want)) << got;
        EXPECT_TRUE(got.IsNull() == !want && got.IsEmpty() == (!want || !*want)) << got;
        EXPECT_EQ(want ? std::strlen(want) : 0, got.Len()) << got;
        EXPECT_EQ(want ? want : "", std::string(got.View())) << got;
        EXPECT_EQ(got.Get(), std::string_view(got).data()) << got;
        EXPECT_STREQ(want, std::unique_ptr<char[]>(got.Save()).get());
        got.Reserve(0);
    }
}

TEST(StringMaking, TellsNullFromEmpty) {
    char const ab_x[] = {'a', 'b', '\0', 'x'};
    Check({Row{String_t("ab", 4), "ab"}, Row{String_t(ab_x, 4), "ab"},
           Row{String_t("abc", 0), nullptr}, Row{String_t("", 3), ""},
           Row{String_t(nullptr, 3), nullptr}, Row{String_t(), nullptr}, Row{String_t(""), ""},
           Row{String_t(7u), ""}, Row{String_t(std::string_view()), nullptr},
           Row{String_t(std::string_view("")), ""}, Row{String_t(std::string("xyz")), "xyz"}});
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
    Check({Row{s.SubStr(1, 3), "ell"}, Row{s.SubStr(1, 100), "ello"}, Row{s.SubStr(2, 1), nullptr},
           Row{null.SubStr(0, 4), nullptr}, Row{s.SubStr(0, 0x7FFFFFFE), "hello"},
           Row{s.SubStr(0, 0x7FFFFFFF), nullptr}, Row{s.SubStr(5, 9), nullptr},
           Row{s.SubStr(9, 12), nullptr}, Row{s.SubStr(kMost, 3), nullptr},
           Row{s.SubStr(0, kMost), nullptr}});
    EXPECT_STREQ("hello", s);
}

// Also with a character that is negative where char is signed.
TEST(StringTrim, KeepsTheLastCharacterOnlyAtTheLeft) {
    using Row4 = std::array<char const*, 4>;
    for (auto const& [text, both, left, right] :
         {Row4{"\t\n\v\f\r a b\n", "a b", "a b\n", "\t\n\v\f\r a b"}, Row4{" a", "a", "a", " a"},
          Row4{nullptr, nullptr, nullptr, nullptr}, Row4{"  a  ", "a", "a  ", "  a"},
          Row4{"", nullptr, nullptr, nullptr}, Row4{"a", "a", "a", "a"},
          Row4{"   ", nullptr, " ", nullptr}, Row4{"\xe9 ", "\xe9", "\xe9 ", "\xe9"}}) {
        String_t const s(text);
        Check({Row{s.Trim(), both}, Row{s.TrimLeft(), left}, Row{s.TrimRight(), right}});
        EXPECT_STREQ(text, s);
    }
}

TEST(StringCopies, ConvertReplaceAndJoin) {
    String_t const s("Metal-2\xe4"), a("a"), null;
    String_t own("abc"), tail("abcdefgh");
    own.Prepend((own += own).Get() + 4);
    tail = tail.Get() + 5;
    Check({Row{s.Toupper(), "METAL-2\xe4"}, Row{s.Tolower(), "metal-2\xe4"},
           Row{s.Subst("e", '\0'), "M"}, Row{s.Subst('t', 'x'), "Mexal-2\xe4"},
           Row{s.Subst("e2t", '_'), "M__al-_\xe4"}, Row{s.Subst(nullptr, '_'), "Metal-2\xe4"},
           Row{null.Subst("a", 'b'), nullptr}, Row{String_t("").Tolower(), ""}, Row{a + "b", "ab"},
           Row{"b" + a, "ba"}, Row{a + null, "a"}, Row{null + null, nullptr}, Row{null + "", ""},
           Row{own, "bcabcabc"}, Row{tail, "fgh"}});
    EXPECT_TRUE(s == "Metal-2\xe4" && a == "a" && null.IsNull());
}

TEST(StringOrder, FollowsTheBytesWithNullFirst) {
    char const* const ascending[] = {nullptr, "", "a", "ab\xff", "a\x80", "b"};
    for (int i = 0; i < 6; ++i)
        for (int j = 0; j < 6; ++j) {
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
        switch (old.size() > 100 ? 9 : random() % 9) {
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
            case 7:
                s.Assign(text ? text : std::string_view()), change(text ? Text(text) : Text());
                break;
            case 8: piece.data() ? change(Text(piece)) : change(Text()), s.Assign(piece); break;
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

TEST(StringReading, TakesWords) {
    std::string const length(5000, 'x');  // "old": there is no word, and the target is left alone
    for (auto const& [input, want, rest] : std::vector<std::array<std::string, 3>>{
             {"  word", "word", ""}, {"a b", "a", " b"}, {"  ", "old", ""}, {length, length, ""}}) {
        std::istringstream in(input);
        String_t word("old");
        in >> word;
        EXPECT_EQ(want != "old", in.good()) << input;
        in.clear();
        EXPECT_EQ(want, word.Get()) << input;
        EXPECT_EQ(rest, std::string(std::istreambuf_iterator<char>(in), {})) << input;
    }
    EXPECT_EQ("a  b", Joined(std::vector<String_t>{"a", String_t(), "b"}));
}

TEST(StringReading, CutsLinesAtATextOfAnyLength) {
    char const* const rows[][3] = {{"a\nb\n", "\n", "a|b|"},
                                   {"a\n\nb", "\n", "a||b|"},
                                   {"1--2---3", "--", "1|2|-3|"},
                                   {"no end", nullptr, "no end|"},
                                   {"", "\n", ""}};
    for (auto const& [input, delim, want] : rows) {
        std::istringstream in(input);
        String_t piece("old");
        std::string pieces;
        while (String_t::Getline(in, piece, delim).good()) pieces += piece.Get() + std::string("|");
        EXPECT_EQ(want, pieces);
        EXPECT_TRUE(in.fail() && piece.IsNull()) << input;
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
