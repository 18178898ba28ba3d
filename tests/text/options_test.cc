// Options and argument vectors.
#include "text/options.h"

#include <gtest/gtest.h>

#include <climits>
#include <new>
#include <sstream>
#include <string>
#include <utility>

#include "tests/support/texts.h"
#include "text/argumentvector.h"

namespace {

// What `find` leaves of a value of 7, behind "!" for result 0; "-" for nothing done.
template <class Value, class Find>
std::string Show(Value value, Find const& find) {
    std::ostringstream out;
    int const found = find(value);
    out << (found ? "" : "!") << value;
    return out.str() == "!7" ? "-" : out.str();
}
String_t const kText("7");

TEST(GetOpt, FindsLettersAndWords) {
    struct {
        char const *args, *letter, *word;  // for "-o": result and value, as text and as number
    } const rows[] = {{"", "-|-", "-|-"},          {"p,-o,1,-o,2", "1|1", "1|1"},
                      {"-o", "-|-", "-|-"},        {"p,-o,~,-o,1", "7|-", "-|-"},
                      {"p,-o", "7|-", "-|-"},      {"p,-,o,,-O,-p", "-|-", "-|-"},
                      {"p,-o,", "|!0", "|-"},      {"p,-o,out", "out|!0", "out|-"},
                      {"p,-o1,3", "1|1", "-|-"},   {"p,-o,12x", "12x|!12", "12x|-"},
                      {"p,~,-o,1", "-|-", "-|-"},  {"p,x,-o, 12", " 12|12", " 12|12"},
                      {"p,-oout", "out|!0", "-|-"}};
    for (auto const& row : rows) {
        SCOPED_TRACE(row.args);
        Texts args(row.args);
        int const argc = args.Count();
        char** const argv = args.Vector();
        auto const letter = [=](auto& value) { return GetOpt(argc, argv, 'o', value); };
        auto const word = [=](auto& value) { return GetOpt(argc, argv, "-o", value); };
        EXPECT_EQ(row.letter, Show(kText, letter) + '|' + Show(7, letter));
        EXPECT_EQ(row.word, Show(kText, word) + '|' + Show(7, word));
        EXPECT_EQ(row.letter[0] != '-', GetOpt(argc, argv, 'o'));
    }
    int far = 0;
    EXPECT_EQ(1, GetOpt(3, Texts("p,-o,-3000000000").Vector(), 'o', far));
    EXPECT_EQ(INT_MIN, far);
    Texts args("p,-,word");
    EXPECT_EQ(1, GetOpt(3, args.Vector(), "word"));
    EXPECT_EQ(0, GetOpt(2, args.Vector(), "word"));
    EXPECT_EQ(0, GetOpt(3, args.Vector(), static_cast<char const*>(nullptr)));
}

TEST(CheckOpt, TakesTheValueAtTheCursor) {
    struct {
        char const *args, *letter, *word;  // for "-o": number and text; + when the cursor moved
    } const rows[] = {{"p", "-|-", "-|-"},         {"p,-o1x,3", "!1|1x", "-|-"},
                      {"p,,-o", "-|-", "-|-"},     {"p,-o,~", "-+|7+", "-+|7+"},
                      {"p,+o", "-+|7+", "-|-"},    {"p,-o,12", "12+|12+", "12+|12+"},
                      {"p,-o", "-+|7+", "-+|7+"},  {"p,-o,4x", "!4+|4x+", "!4+|4x+"},
                      {"p,-o12,3", "12|12", "-|-"}};
    for (auto const& row : rows) {
        SCOPED_TRACE(row.args);
        Texts args(row.args);
        auto const all = [&](auto name) {
            std::string shown;
            for (bool const as_text : {false, true}) {
                int argc = args.Count();
                char** argv = args.Vector();
                auto const text = [&](auto& v) { return CheckOpt(argc, &argv, name, v); };
                auto const number = [&](int& v) { return CheckOpt(argc, &argv, name, v, 2); };
                shown += as_text ? Show(kText, text) : Show(7, number) + "|";
                if (argc < args.Count()) shown.insert(shown.find_last_not_of('|') + 1, "+");
                EXPECT_EQ(args.Count() - argc, argv - args.Vector());
            }
            int argc = args.Count(), flag = 7;
            char** argv = args.Vector();
            int const matched = CheckOpt(argc, &argv, name, flag, 0);
            EXPECT_EQ(matched ? 1 : 7, flag);
            EXPECT_EQ(args.Vector(), argv);
            return shown;
        };
        EXPECT_EQ(row.letter, all('o'));
        EXPECT_EQ(row.word, all("-o"));
    }
}

TEST(ArgumentVector, OwnsCopies) {
    Texts args("one,~,two");
    ArgumentVector a(3, args.Vector()), b(a), none(-4, nullptr);
    args.Vector()[2][0] = a.Argv()[0][0] = '#';
    EXPECT_STREQ("one", b.Argv()[0]);
    EXPECT_EQ(nullptr, b.Argv()[1]);
    EXPECT_STREQ("two", a.Argv()[2]);
    EXPECT_EQ(nullptr, a.Argv()[3]);
    none = b;
    b = ArgumentVector();
    EXPECT_EQ(0, b.Argc());
    EXPECT_EQ(nullptr, b.Argv()[0]);
    ArgumentVector moved(std::move(none));
    EXPECT_EQ(0, none.Argc());  // NOLINT(bugprone-use-after-move): as documented
    EXPECT_STREQ("one", moved.Argv()[0]);
    char** const taken = moved.Argv();
    b.Reset(
        1, new char* [1] { new char[1] });
    b = std::move(moved);
    EXPECT_EQ(taken, b.Argv());
    b.Reset(-1, nullptr);
    EXPECT_EQ(0, b.Argc());
    EXPECT_THROW(ArgumentVector(536870910, args.Vector()), std::bad_array_new_length);
}

}  // namespace
