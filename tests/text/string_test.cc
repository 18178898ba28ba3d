#include "text/string.h"

#include <gtest/gtest.h>

#include <memory>
#include <optional>
#include <random>
#include <sstream>
#include <string>
#include <thread>
#include <type_traits>
#include <vector>

namespace {

static_assert(std::is_nothrow_move_constructible_v<String_t>);
static_assert(std::is_nothrow_move_assignable_v<String_t>);
static_assert(!std::is_convertible_v<unsigned, String_t>);
static_assert(!std::is_convertible_v<std::string_view, String_t>);
static_assert(!std::is_convertible_v<String_t, std::string_view>);
static_assert(sizeof(String_t) == sizeof(void*));

constexpr unsigned kMost = 0xFFFFFFFF;

TEST(StringMaking, TellsNullFromEmpty) {
    char const ab_x[] = {'a', 'b', '\0', 'x'};
    struct Row {
        String_t made;
        char const* want;
    };
    for (auto const& [made, want] :
         {Row{String_t("ab", 4), "ab"}, Row{String_t(ab_x, 4), "ab"},
          Row{String_t("abc", 0), nullptr}, Row{String_t("", 3), ""},
          Row{String_t(nullptr, 3), nullptr}, Row{String_t(), nullptr}, Row{String_t(""), ""},
          Row{String_t(7u), ""}, Row{String_t(std::string_view()), nullptr},
          Row{String_t(std::string_view("")), ""}, Row{String_t(std::string("xyz")), "xyz"}}) {
        EXPECT_STREQ(want, made);
        EXPECT_TRUE(made == want && want == made && made == String_t(want)) << made;
        EXPECT_FALSE(made != want || want != made || made != String_t(want)) << made;
        EXPECT_EQ(want == nullptr, made.IsNull()) << made;
        EXPECT_EQ(!want || !*want, made.IsEmpty()) << made;
        EXPECT_EQ(want ? std::strlen(want) : 0, made.Len()) << made;
        EXPECT_EQ(want ? want : "", std::string(made.View())) << made;
        EXPECT_EQ(made.Get(), std::string_view(made).data()) << made;
        EXPECT_STREQ(want, std::unique_ptr<char[]>(made.Save()).get());
    }
    // Padded with NULs up to the count; what lies behind one is not copied.
    EXPECT_TRUE(String_t("ab", 4).Get()[3] == 0 && String_t(ab_x, 4).Get()[3] == 0);
    EXPECT_TRUE(String_t() != "" && String_t("") != nullptr && String_t() == 0);
    EXPECT_THROW(String_t("x", kMost), std::bad_alloc);
    EXPECT_THROW(String_t{kMost}, std::bad_alloc);
    String_t s("kept");
    EXPECT_THROW(s.Reserve(kMost), std::bad_alloc);
    EXPECT_TRUE(s == "kept");
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

// Nothing left gives null, not "". A count of 2^31 and more is negative, and one may wrap to 0.
TEST(StringSubStr, CopiesBothEndsAndClips) {
    struct Row {
        char const* text;
        unsigned from, to;
        char const* want;
    };
    for (Row const& row :
         {Row{"hello", 1, 3, "ell"}, Row{"hello", 1, 100, "ello"}, Row{"hello", 2, 1, nullptr},
          Row{nullptr, 0, 4, nullptr}, Row{"hello", 0, 0x7FFFFFFE, "hello"},
          Row{"hello", 0, 0x7FFFFFFF, nullptr}, Row{"hello", 5, 9, nullptr},
          Row{"hello", 9, 12, nullptr}, Row{"hello", kMost, 3, nullptr},
          Row{"hello", 0, kMost, nullptr}})
        EXPECT_STREQ(row.want, String_t(row.text).SubStr(row.from, row.to).Get())
            << "from " << row.from << " to " << row.to;
}

TEST(StringTrim, KeepsTheLastCharacterOnlyAtTheLeft) {
    struct Row {
        char const *text, *both, *left, *right;
    };  // a negative char where char is signed
    for (Row const& row :
         {Row{"\t\n\v\f\r a b\n", "a b", "a b\n", "\t\n\v\f\r a b"},
          Row{nullptr, nullptr, nullptr, nullptr}, Row{"  a  ", "a", "a  ", "  a"},
          Row{"", nullptr, nullptr, nullptr}, Row{" a", "a", "a", " a"},
          Row{"   ", nullptr, " ", nullptr}, Row{"\xe9 ", "\xe9", "\xe9 ", "\xe9"}}) {
        String_t const s(row.text);
        EXPECT_STREQ(row.both, s.Trim()) << '"' << s << '"';
        EXPECT_STREQ(row.left, s.TrimLeft()) << '"' << s << '"';
        EXPECT_STREQ(row.right, s.TrimRight()) << '"' << s << '"';
    }
}

TEST(StringCopies, ConvertReplaceAndJoin) {
    String_t const s("Metal-2\xe4"), a("a"), null;
    String_t own("abc");
    own.Prepend((own += own).Get() + 4);
    struct Row {
        String_t got;
        char const* want;
    };
    for (Row const& row :
         {Row{s.Toupper(), "METAL-2\xe4"}, Row{s.Tolower(), "metal-2\xe4"},
          Row{s.Subst("e", '\0'), "M"}, Row{s.Subst('t', 'x'), "Mexal-2\xe4"},
          Row{s.Subst("e2t", '_'), "M__al-_\xe4"}, Row{s.Subst(nullptr, '_'), s},
          Row{null.Subst("a", 'b'), nullptr}, Row{String_t("").Tolower(), ""}, Row{a + "b", "ab"},
          Row{"b" + a, "ba"}, Row{a + null, "a"}, Row{null + null, nullptr}, Row{null + "", ""},
          Row{own, "bcabcabc"}, Row{own = own.Get() + 5, "abc"}})
        EXPECT_STREQ(row.want, row.got) << row.got;
}

TEST(StringSharing, DerivedTextsNeverShare) {
    String_t const s("ab");
    for (String_t piece : {s.SubStr(0, 1), s.Trim(), s.TrimLeft(), s.TrimRight(), s + nullptr,
                           s.Subst("", 'x'), s.Toupper().Tolower()}) {
        EXPECT_STREQ("ab", piece);
        piece.Reserve(1);
        EXPECT_STREQ("ab", s);
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
        switch (old.size() > 100 ? 7 : random() % 7) {
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
    std::string const length(5000, 'x');
    struct Row {
        std::string input, word;  // "old": left alone
        bool good;
        std::string rest;
    };
    for (Row const& row : {Row{"  word", "word", true, ""}, Row{"a b", "a", true, " b"},
                           Row{"  ", "old", false, ""}, Row{length, length, true, ""}}) {
        std::istringstream in(row.input);
        String_t word("old");
        in >> word;
        EXPECT_EQ(row.word, word.Get()) << row.input;
        EXPECT_EQ(row.good, in.good()) << row.input;
        in.clear();
        EXPECT_EQ(row.rest, std::string(std::istreambuf_iterator<char>(in), {})) << row.input;
    }
    std::ostringstream out;
    out << String_t("a") << String_t() << String_t("") << "b";
    EXPECT_EQ("ab", out.str());
}

TEST(StringReading, CutsLinesAtATextOfAnyLength) {
    struct Row {
        char const *input, *delim;
        std::vector<char const*> pieces;  // of successful calls
    };
    for (Row const& row : {Row{"a\nb\n", "\n", {"a", "b"}}, Row{"a\n\nb", "\n", {"a", "", "b"}},
                           Row{"1--2---3", "--", {"1", "2", "-3"}},
                           Row{"no end", nullptr, {"no end"}}, Row{"", "\n", {}}}) {
        std::istringstream in(row.input);
        String_t piece("old");
        for (char const* want : row.pieces) {
            ASSERT_TRUE(String_t::Getline(in, piece, row.delim).good()) << row.input;
            EXPECT_STREQ(want, piece) << row.input;
        }
        EXPECT_TRUE(String_t::Getline(in, piece, row.delim).fail()) << row.input;
        EXPECT_TRUE(piece.IsNull()) << row.input;
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
