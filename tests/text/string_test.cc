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
    struct {
        String_t made;
        char const* want;
    } const rows[] = {
        {String_t(), nullptr},
        {String_t(nullptr), nullptr},
        {String_t(""), ""},
        {String_t("abc"), "abc"},
        {String_t("abc", 0), nullptr},
        {String_t(nullptr, 4), nullptr},
        {String_t("", 3), ""},
        {String_t("abc", 2), "ab"},
        {String_t("ab", 4), "ab"},
        {String_t(ab_x, 4), "ab"},  // nothing behind the terminator is copied
        {String_t(7u), ""},
        {String_t(std::string_view()), nullptr},
        {String_t(std::string_view("")), ""},
        {String_t(std::string("xyz")), "xyz"},
    };
    for (auto const& row : rows) {
        int const at = static_cast<int>(&row - rows);
        EXPECT_STREQ(row.want, row.made.Get()) << at;
        EXPECT_TRUE(row.made == row.want && row.want == row.made && row.made == String_t(row.want))
            << at;
        EXPECT_FALSE(row.made != row.want || row.want != row.made) << at;
        EXPECT_EQ(row.want == nullptr, row.made.IsNull()) << at;
        EXPECT_EQ(!row.want || !*row.want, row.made.IsEmpty()) << at;
        EXPECT_EQ(row.want ? std::strlen(row.want) : 0, row.made.Len()) << at;
        EXPECT_EQ(row.want ? row.want : "", std::string(row.made.View())) << at;
        EXPECT_EQ(row.made.Get(), row.made.View().data()) << at;
        std::unique_ptr<char[]> const saved(row.made.Save());
        EXPECT_STREQ(row.want, saved.get()) << at;
    }
    EXPECT_EQ(0, rows[8].made.Get()[3]);  // padded up to the given count
    EXPECT_TRUE(String_t() == nullptr && String_t() == 0 && String_t() != "" &&
                String_t("") != nullptr);
}

TEST(StringMaking, RefusesLengthsBeyondTheAddressRange) {
    EXPECT_THROW(String_t("x", kMost), std::bad_alloc);
    EXPECT_THROW(String_t{kMost}, std::bad_alloc);
    String_t s("kept");
    EXPECT_THROW(s.Reserve(kMost), std::bad_alloc);
    EXPECT_STREQ("kept", s);
}

TEST(StringOrder, FollowsTheBytesWithNullFirst) {
    char const* const ascending[] = {nullptr, "", "a", "a\x80", "ab\xff", "b"};
    int const order[] = {0, 1, 2, 4, 3, 5};
    for (int i = 0; i < 6; ++i)
        for (int j = 0; j < 6; ++j) {
            char const* const a = ascending[order[i]];
            char const* const b = ascending[order[j]];
            String_t const s(a), t(b);
            EXPECT_EQ(i < j, s < t && s < b && a < t) << i << ' ' << j;
            EXPECT_EQ(i <= j, s <= t && s <= b && a <= t) << i << ' ' << j;
            EXPECT_EQ(i > j, s > t && s > b && a > t) << i << ' ' << j;
            EXPECT_EQ(i >= j, s >= t && s >= b && a >= t) << i << ' ' << j;
        }
}

TEST(StringSubStr, CopiesBothEndsAndClips) {
    struct {
        char const* text;
        unsigned from, to;
        char const* want;
    } const rows[] = {
        {"hello", 1, 3, "ell"},     // both ends count
        {"hello", 1, 100, "ello"},  // cut at the end
        {"hello", 0, 0, "h"},
        {"hello", 2, 1, nullptr},      // nothing left: null, not ""
        {"hello", 5, 9, nullptr},      // `from` may stand on the terminator
        {"hello", 9, 12, nullptr},     // nothing is read past the terminator
        {"hello", 0, kMost, nullptr},  // the count wraps to 0
        {"hello", 2, kMost, nullptr},  // and to -2
        {"hello", 0, 0x7FFFFFFE, "hello"},
        {"hello", 0, 0x7FFFFFFF, nullptr},  // a negative count
        {"hello", kMost, 3, nullptr},       // a count of 5 from far behind the end
        {nullptr, 0, 4, nullptr},
    };
    for (auto const& row : rows)
        EXPECT_STREQ(row.want, String_t(row.text).SubStr(row.from, row.to).Get())
            << "from " << row.from << " to " << row.to;
}

TEST(StringTrim, KeepsTheLastCharacterOnlyAtTheLeft) {
    struct {
        char const *text, *both, *left, *right;
    } const rows[] = {
        {nullptr, nullptr, nullptr, nullptr},
        {"", nullptr, nullptr, nullptr},
        {" ", nullptr, " ", nullptr},
        {"   ", nullptr, " ", nullptr},
        {" a", "a", "a", " a"},
        {"  a  ", "a", "a  ", "  a"},
        {"a", "a", "a", "a"},
        {"\t\n\v\f\r a b\n", "a b", "a b\n", "\t\n\v\f\r a b"},
        {"\xe9 ", "\xe9", "\xe9 ", "\xe9"},  // a negative char where char is signed
    };
    for (auto const& row : rows) {
        String_t const s(row.text);
        EXPECT_STREQ(row.both, s.Trim().Get()) << '"' << s << '"';
        EXPECT_STREQ(row.left, s.TrimLeft().Get()) << '"' << s << '"';
        EXPECT_STREQ(row.right, s.TrimRight().Get()) << '"' << s << '"';
    }
}

TEST(StringCopies, ConvertAndReplaceCharacters) {
    String_t const s("Metal-2\xe4");
    EXPECT_STREQ("METAL-2\xe4", s.Toupper());
    EXPECT_STREQ("metal-2\xe4", s.Tolower());
    EXPECT_STREQ("Mexal-2\xe4", s.Subst('t', 'x'));
    EXPECT_STREQ("M__al-_\xe4", s.Subst("e2t", '_'));
    EXPECT_STREQ(s, s.Subst(nullptr, '_'));
    EXPECT_STREQ("M", s.Subst("e", '\0'));
    String_t const null;
    EXPECT_TRUE(null.Toupper().IsNull() && null.Subst('a', 'b').IsNull() &&
                null.Subst("a", 'b').IsNull());
    EXPECT_STREQ("", String_t("").Tolower().Get());
}

TEST(StringJoin, CountsNullAsNothing) {
    String_t const a("a"), null;
    EXPECT_STREQ("ab", a + "b");
    EXPECT_STREQ("ba", "b" + a);
    EXPECT_STREQ("aa", a + a);
    EXPECT_STREQ("a", a + null);
    EXPECT_STREQ("a", null + a);
    EXPECT_TRUE((null + null).IsNull());
    EXPECT_STREQ("", (null + "").Get());
    EXPECT_STREQ("", String_t().Prepend("").Get());
}

TEST(StringJoin, TakesPiecesOfItsOwnText) {
    String_t s("abc");
    s += s;
    s.Prepend(s.Get() + 4);
    EXPECT_STREQ("bcabcabc", s);
    s = s.Get() + 5;
    EXPECT_STREQ("abc", s);
}

TEST(StringSharing, ReserveReachesCopiesAndAppendDetaches) {
    String_t a("layer"), b(a);
    std::strcpy(a.Reserve(5), "metal");
    a += "1";
    EXPECT_STREQ("metal", b.Get());
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

// Handles on optional texts that share as documented; one step does the same to both sides.
class SharingModel {
public:
    static constexpr unsigned kHandles = 6;

    void Step(std::mt19937& random) {
        unsigned const i = random() % kHandles, j = random() % kHandles;
        char const* const texts[] = {nullptr, "", "x", "layer 7"};
        char const* const text = texts[random() % 4];
        String_t& s = strings[i];
        switch (random() % 8) {
            case 0: s = strings[j], model[i] = model[j]; break;
            case 1: strings[i] = String_t(strings[j]), model[i] = model[j]; break;
            case 2: Move(i, j); break;
            case 3:
                s = text, Change(i, text ? std::optional<std::string>(text) : std::nullopt);
                break;
            case 4:
                s += text;
                if (text) Change(i, model[i]->value_or("") + text);
                break;
            case 5:
                s.Prepend(text);
                if (text) Change(i, text + model[i]->value_or(""));
                break;
            case 6: std::strcpy(s.Reserve(3), "new"), *model[i] = "new"; break;
            default: s.Reserve(0), *model[i] = ""; break;
        }
        if (model[i]->value_or("").size() > 100) s = "", Change(i, "");
    }
    void Check(int step) const {
        for (unsigned i = 0; i < kHandles; ++i)
            ASSERT_STREQ(*model[i] ? (*model[i])->c_str() : nullptr, strings[i].Get()) << step;
    }

private:
    using Text = std::shared_ptr<std::optional<std::string>>;

    void Move(unsigned to, unsigned from) {
        if (to == from) return;
        strings[to] = std::move(strings[from]);
        model[to] = std::exchange(model[from], Null());
    }
    void Change(unsigned i, std::optional<std::string> const& text) {
        model[i] = std::make_shared<std::optional<std::string>>(text);
    }
    static Text Null() { return std::make_shared<std::optional<std::string>>(); }

    String_t strings[kHandles];
    Text model[kHandles] = {Null(), Null(), Null(), Null(), Null(), Null()};
};

TEST(StringSharing, FollowsTheModelThroughRandomSteps) {
    std::mt19937 random(12);
    SharingModel model;
    for (int step = 0; step < 20000 && !HasFatalFailure(); ++step) {
        model.Step(random);
        model.Check(step);
    }
}

TEST(StringRecords, OfTheOwnSizeComeFromThePoolAgain) {
    struct Wide : String_t::Srep {
        Wide() : Srep(nullptr) {}
        double more[8];
    };
    auto* const first = new String_t::Srep(nullptr);
    delete first;
    std::unique_ptr<Wide> const wide(new Wide);
    std::unique_ptr<String_t::Srep> const second(new String_t::Srep(nullptr));
    EXPECT_EQ(first, second.get());
}

TEST(StringReading, TakesWords) {
    struct {
        char const* input;
        char const* word;  // "old": left alone
        bool good;
        char const* rest;
    } const rows[] = {
        {"  word", "word", true, ""},  // the end of input behind a word is a success
        {"a b", "a", true, " b"},     {" \n\ta\n", "a", true, "\n"},
        {"", "old", false, ""},       {"  ", "old", false, ""},
    };
    for (auto const& row : rows) {
        std::istringstream in(row.input);
        String_t word("old");
        in >> word;
        EXPECT_STREQ(row.word, word) << row.input;
        EXPECT_EQ(row.good, in.good()) << row.input;
        in.clear();
        EXPECT_EQ(row.rest, std::string(std::istreambuf_iterator<char>(in), {})) << row.input;
    }
    std::string const length(5000, 'x');
    std::istringstream in(length);
    String_t word;
    in >> word;
    EXPECT_EQ(length, word.Get());
}

TEST(StringReading, CutsLinesAtATextOfAnyLength) {
    struct {
        char const *input, *delim;
        std::vector<char const*> pieces;  // of successful calls
    } const rows[] = {
        {"a\nb\n", "\n", {"a", "b"}},
        {"a\n\nb", "\n", {"a", "", "b"}},
        {"1--2---3", "--", {"1", "2", "-3"}},
        {"aab", "ab", {"a"}},
        {"no end", nullptr, {"no end"}},
        {"no end", "", {"no end"}},
        {"", "\n", {}},
    };
    for (auto const& row : rows) {
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

TEST(StringWriting, WritesNothingForNull) {
    std::ostringstream out;
    out << String_t("a") << String_t() << String_t("") << "b";
    EXPECT_EQ("ab", out.str());
}

TEST(StringThreads, MakeAndDropUnrelatedStrings) {
    std::vector<std::thread> threads;
    for (int id = 0; id < 4; ++id)
        threads.emplace_back([id] {
            std::vector<String_t> kept(64);
            for (int i = 0; i < 3000; ++i) {
                String_t s(std::to_string(id).c_str());
                String_t const copy(s);
                s += std::to_string(i).c_str();
                kept[static_cast<unsigned>(i) % 64] = s;
                ASSERT_EQ(std::to_string(id), copy.Get());
            }
            ASSERT_EQ(std::to_string(id) + "2999", kept[2999 % 64].Get());
        });
    for (auto& thread : threads) thread.join();
}

}  // namespace
