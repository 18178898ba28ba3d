// Options and argument vectors.
#include "text/options.h"

#include <new>

#include "tests/support/test.h"
#include "tests/support/texts.h"
#include "text/argumentvector.h"

namespace {

// A value that was 7 before, behind "!" for result 0; "-" where nothing was done.
template <class Value>
std::string Show(int found, Value const& value) {
    std::string const shown = (found ? "" : "!") + Joined(std::vector<Value>{value});
    return shown == "!7" ? "-" : shown;
}

// What GetOpt finds of `name`: as text, as number, and whether.
template <class Name>
std::string Got(char const* list, Name name) {
    Texts args(list);
    String_t text("7");
    int number = 7, text_found = GetOpt(args.Count(), args.Vector(), name, text);
    int const number_found = GetOpt(args.Count(), args.Vector(), name, number);
    std::string const whether = GetOpt(args.Count(), args.Vector(), name) ? "1|" : "0|";
    return whether + Show(text_found, text) + '|' + Show(number_found, number);
}

TEST(GetOpt, FindsLettersAndWords) {
    char const* const rows[][3] = {
        {"p,-oout", "1|out|!0", "0|-|-"},   {"-o", "0|-|-", "0|-|-"},
        {"p,-o,1,-o,2", "1|1|1", "1|1|1"},  {"p,-o", "1|7|-", "1|-|-"},
        {"p,-,o,,-O,+o", "0|-|-", "0|-|-"}, {"p,-o,12x", "1|12x|!12", "1|12x|-"},
        {"p,~,-o,1", "0|-|-", "0|-|-"}};
    for (auto const& [list, letter, word] : rows)
        EXPECT_EQ(letter + std::string(" ") + word, Got(list, 'o') + ' ' + Got(list, "-o")) << list;
    EXPECT_EQ("0|-|-", Got("p,,", static_cast<char const*>(nullptr)));
    EXPECT_EQ("1|-3000000000|-2147483648", Got("p,-o-3000000000", 'o'));
}

// What CheckOpt makes of `name` as number, text and flag, with "+" when the cursor moved.
template <class Name>
std::string Checked(char const* list, Name name) {
    std::string shown;
    for (int form : {1, 2, 0}) {
        Texts args(list);
        int argc = args.Count(), number = 7;
        char** argv = args.Vector();
        String_t text("7");
        int const found = form == 2 ? CheckOpt(argc, &argv, name, text)
                                    : CheckOpt(argc, &argv, name, number, form);
        shown += form == 2 ? Show(found, text) : Show(found, number);
        shown += argc < args.Count() ? "+|" : "|";
        EXPECT_EQ(args.Count() - argc, argv - args.Vector());
    }
    return shown;
}

TEST(CheckOpt, TakesTheValueAtTheCursor) {
    EXPECT_EQ("-|-|-| -|-|-|", Checked("p,,-o", 'o') + ' ' + Checked("p,,-o", "-o"));
    EXPECT_EQ("-+|7+|1| -|-|-|", Checked("p,+o", 'o') + ' ' + Checked("p,+o", "-o"));
    EXPECT_EQ("-+|7+|1| -+|7+|1|", Checked("p,-o", 'o') + ' ' + Checked("p,-o", "-o"));
    EXPECT_EQ("!4+|4x+|1| !4+|4x+|1|", Checked("p,-o,4x", 'o') + ' ' + Checked("p,-o,4x", "-o"));
    EXPECT_EQ("1|1|1|", Checked("p,-o1,3", 'o'));
}

TEST(ArgumentVector, OwnsCopies) {
    Texts args("one,~,two");
    ArgumentVector a(3, args.Vector()), b(a), c(-4, nullptr);
    args.Vector()[2][0] = a.Argv()[0][0] = '#';
    c = b;
    b = ArgumentVector();
    EXPECT_EQ("one two", c.Argv()[0] + std::string(" ") + c.Argv()[2]);
    EXPECT_TRUE(!c.Argv()[1] && !c.Argv()[3] && !b.Argv()[0] && b.Argc() == 0);
    char** const taken = c.Argv();
    b = ArgumentVector(std::move(c));
    EXPECT_TRUE(b.Argv() == taken && c.Argc() == 0);  // NOLINT: moved-from, as documented
    b.Reset(-1, nullptr);
    EXPECT_THROW(ArgumentVector(536870910, args.Vector()), std::bad_array_new_length);
}

}  // namespace
