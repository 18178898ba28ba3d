#include "text/string.h"

#include <cctype>
#include <optional>
#include <thread>
#include <type_traits>

#include "tests/support/test.h"
#include "text/bytestring.h"
#include "text/except.h"
#include "text/urlcode.h"

constexpr unsigned kMost = 0xFFFFFFFF;

// The texts with a bar behind each, "~" for null. Changes what they share, if they do.
static std::string Texts(std::vector<String_t> strings) {
    std::string texts;
    for (String_t& s : strings) {
        char const* const text = s;
        texts += (text ? text : "~") + std::string("|");
        EXPECT_TRUE(s.IsNull() == !text && s.IsEmpty() == (!text || !*text)) << text;
        EXPECT_TRUE(s.Len() == s.View().size() && s.View().data() == text) << text;
        EXPECT_STREQ(text, std::unique_ptr<char[]>(s.Save()).get());
        s.Reserve(0);
    }
    return texts;
}

TEST(String, TellsNullFromEmpty) {
    char const ab_x[] = {'a', 'b', '\0', 'x'};
    EXPECT_EQ("ab|~||~||~||xyz|",
              Texts({String_t(ab_x, 4), String_t("abc", 0), String_t("", 3), String_t(nullptr, 3),
                     String_t(7u), String_t(std::string_view()), String_t(std::string_view("")),
                     String_t(std::string("xyz"))}));
    // Padded with NULs up to the count; what lies behind one is not copied.
    EXPECT_TRUE(String_t("ab", 4).Get()[3] == 0 && String_t(ab_x, 4).Get()[3] == 0);
}

TEST(String, CopiesPiecesAndChangedTexts) {
    String_t const s("Metal-2\xe4"), a("a"), null;
    // Nothing left gives null. A count of 2^31 and more is negative, and one may wrap to 0.
    EXPECT_EQ("eta|tal-2\xe4|~|~|Metal-2\xe4|~|~|~|~|",
              Texts({s.SubStr(1, 3), s.SubStr(2, 100), s.SubStr(2, 1), null.SubStr(0, 4),
                     s.SubStr(0, 0x7FFFFFFE), s.SubStr(0, 0x7FFFFFFF), s.SubStr(8, 9),
                     s.SubStr(9, 12), s.SubStr(0, kMost)}));
    String_t const wide("\t\n\v\f\r a b\n"), blank("   ");
    EXPECT_EQ("a b|a b\n|\t\n\v\f\r a b|~| |~|~|~|",
              Texts({wide.Trim(), wide.TrimLeft(), wide.TrimRight(), blank.Trim(), blank.TrimLeft(),
                     blank.TrimRight(), null.Trim(), null.TrimLeft()}));
    EXPECT_EQ("METAL-2\xe4|metal-2\xe4|M|Mexal-2\xe4|M__al-_\xe4|~|",
              Texts({s.Toupper(), s.Tolower(), s.Subst("e", '\0'), s.Subst('t', 'x'),
                     s.Subst("e2t", '_'), null.Subst("a", 'b')}));
    EXPECT_EQ("ab|ba|a|~||", Texts({a + "b", "b" + a, a + null, null + null, null + ""}));
}

static void Set(String_t& s, std::string_view t) { t.size() % 2 ? s = t.data() : s.Assign(t); }
static void Append(String_t& s, std::string_view t) { s += t.data(); }
static void Prepend(String_t& s, std::string_view t) { s.Prepend(t.data()); }
static void Set(ByteString& b, std::string_view t) { b = {t.data(), unsigned(t.size())}; }
static void Append(ByteString& b, std::string_view t) { b.Append(t.data(), unsigned(t.size())); }
static void Prepend(ByteString& b, std::string_view t) { b.Prepend(t.data(), unsigned(t.size())); }

// The model: pointers to optional texts, shared and ordered as documented. Bytes are never "".
template <class Value>
static void CheckAsModel() {
    constexpr bool is_text = std::is_same_v<Value, String_t>;
    using Text = std::optional<std::string>;
    std::string const filled("new", is_text ? 3 : 4);
    std::mt19937 random(12);
    Value values[6];
    std::shared_ptr<Text> model[6];
    for (auto& text : model) text = std::make_shared<Text>();
    for (int step = 0; step < 20000; ++step) {
        unsigned const i = random() % 6, j = random() % 6;
        Value& value = values[i];
        std::string const old = model[i]->value_or("");
        std::string_view const own = value.View().substr(old.size() / 2),
                               texts[] = {{}, "", "lay\xff", own}, text = texts[random() % 4];
        Text const given = text.data() ? Text(text) : Text();
        auto const change = [&](Text const& to) { model[i] = std::make_shared<Text>(to); };
        switch (old.size() > 100 ? 7 : random() % 7) {
            case 0: value = values[j], model[i] = model[j]; break;
            case 1:
                value = Value(std::move(values[j]));
                model[i] = std::exchange(model[j], std::make_shared<Text>());
                break;
            case 2: Set(value, text), change(given); break;
            case 3: value = Value(text), change(given); break;
            case 4: Append(value, text), given ? change(old + *given) : void(); break;
            case 5: Prepend(value, text), given ? change(*given + old) : void(); break;
            case 6: std::memcpy(value.Reserve(4), "new", 4), *model[i] = filled; break;
            default: value.Reserve(0), *model[i] = ""; break;
        }
        for (unsigned k = 0; k < 6; ++k) {
            ASSERT_EQ(model[k]->value_or(""), values[k].View()) << step;
            ASSERT_EQ(*model[k] && (is_text || !(*model[k])->empty()), values[k].Get() != nullptr);
        }
        if constexpr (is_text) {
            Text const &a = *model[i], &b = *model[j];
            std::tuple const want(a<b, a> b, a <= b, a >= b, a == b, a != b);
            auto const compare = [](auto const& s, auto const& t) {
                return std::tuple(s<t, s> t, s <= t, s >= t, s == t, s != t);
            };
            ASSERT_EQ(want, compare(value, values[j]));
            ASSERT_EQ(want, compare(value, values[j].Get()));
            ASSERT_EQ(want, compare(value.Get(), values[j]));
        }
    }
}

TEST(String, SharesAsTheModelThroughRandomSteps) {
    CheckAsModel<String_t>();
    CheckAsModel<ByteString>();
}

TEST(String, ReadsWordsAndLinesOfAnyLength) {
    std::string const longest(5000, 'x');
    std::istringstream in("  word " + longest + ' ');
    String_t first, word;
    EXPECT_TRUE(in >> first >> word);
    EXPECT_FALSE(in >> word);  // which leaves the last one alone
    EXPECT_EQ("word  " + longest, Joined(std::vector<String_t>{first, String_t(), word}));

    std::istringstream lines("a\n\nb\n1--2---3"), whole(longest);
    std::string pieces;
    for (int i = 0; i < 3; ++i) String_t::Getline(lines, word, "\n"), pieces += Texts({word});
    while (String_t::Getline(lines, word, "--").good()) pieces += Texts({word});
    EXPECT_EQ("a||b|1|2|-3|", pieces);
    EXPECT_EQ(longest, String_t::Getline(whole, word, nullptr) ? word.Get() : "");
}

TEST(Except, ShowsWhatIsGiven) {
    EXPECT_STREQ("x, m, thrown in f:42", Except("x", "m", "f", 42).ToString());
}

TEST(UrlCode, CodesEveryByteAndDecodesWhatScanfReads) {
    for (int byte = 1; byte < 256; ++byte) {
        char const text[] = {'a', static_cast<char>(byte), '4', '1', '\0'};
        bool const plain = std::isalnum(byte) || std::strchr("*-._", byte);
        char coded[8];
        std::snprintf(coded, sizeof coded, plain ? "a%c41" : "a%%%02x41", byte);
        EXPECT_STREQ(coded, UrlEncode(text));
        EXPECT_STREQ(text, UrlDecode(coded));
    }
    EXPECT_STREQ("a+b\4x\7x\xff%Aa%4", UrlDecode("a+b%4gx% 7x%-1%%41a%4"));
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

TEST(ByteString, KeepsNoBufferForNoBytes) {
    ByteString const b("abcde", 5), zero("a\0b", 3), none, ab("ab", 2);
    std::string all;
    for (ByteString const& made :
         {ByteString(0u, "abc", 3, '-'), ByteString(3, 'x'), ByteString(nullptr, 3),
          ByteString(4, "ab", 2, '-'), ByteString(2, "abc", 3, '-'), b.SubStr(1, 3),
          b.SubStr(1, kMost), b.SubStr(3, 2), b.SubStr(5, 9), b.Subst("ace", 2, 'x'),
          zero.Subst('a', '\0'), ByteString(ab).Append('x', 2), ByteString(ab).Prepend('x', 2)}) {
        std::unique_ptr<char[]> const saved(made.Save());
        EXPECT_TRUE(!made.Len() == !made.Get() && !made.Len() == !saved);
        all += std::string(saved ? saved.get() : "", made.Len()) + '|';
    }
    EXPECT_EQ(std::string("|xxx||ab--|ab|bcd|bcde|||xbxde|\0\0b|abxx|xxab|", 45), all);
    EXPECT_TRUE(ab == b && b == ab && ab != zero && none == ByteString(0u) && none != ab);
}

TEST(ByteString, AdoptsBytesWithItsCopies) {
    ByteString a("ab", 2), b(a);
    a.Erase('x');
    EXPECT_EQ("xx", b.View());
    char* const adopted = new char[1]{'z'};
    for (int i = 0; i < 2; ++i) a.Redefine(adopted, 1);
    EXPECT_TRUE(a.Get() == adopted && b.Get() == adopted && b.Len() == 1);
}
