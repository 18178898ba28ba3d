#include "text/options.h"

#include "tests/support/test.h"
#include "tests/support/texts.h"
#include "text/argumentvector.h"

// What `call` makes of a value that was 7: behind "!" for result 0, "-" where nothing was done.
template <class Value, class Call>
static std::string Show(Value value, Call const& call) {
    int const found = call(value);
    std::string const shown = (found ? "" : "!") + Joined(std::vector<Value>{value});
    return shown == "!7" ? " -" : ' ' + shown;
}

// What is made of `name`: by GetOpt as flag, text and number, by CheckOpt as text, number and flag,
// with "+" when the cursor moved.
template <class Name>
static std::string Found(char const* list, Name name) {
    Texts args(list);
    int const count = args.Count();
    char** const first = args.Vector();
    auto const get = [&](auto& value) { return GetOpt(count, first, name, value); };
    std::string found =
        (GetOpt(count, first, name) ? "1" : "0") + Show(String_t("7"), get) + Show(7, get) + ',';
    auto const check = [&](auto value, auto... need) {
        int left = count;
        char** at = first;
        found += Show(value, [&](auto& v) { return CheckOpt(left, &at, name, v, need...); });
        EXPECT_EQ(count - left, at - first);
        if (left < count) found += '+';
    };
    check(String_t("7")), check(7, 1), check(7, 0);
    return found;
}

TEST(Options, AreLettersOrWordsAnywhereOrAtTheCursor) {
    char const* const rows[][2] = {{"p,-oout", "1 out !0, out !0 1|0 - -, - - -"},
                                   {"-o", "0 - -, - - -|0 - -, - - -"},
                                   {"p,-o,1,-o,2", "1 1 1, 1+ 1+ 1|1 1 1, 1+ 1+ 1"},
                                   {"p,-o", "1 7 -, 7+ -+ 1|1 - -, 7+ -+ 1"},
                                   {"p,-,o,,-O", "0 - -, - - -|0 - -, - - -"},
                                   {"p,-o,4x", "1 4x !4, 4x+ !4+ 1|1 4x -, 4x+ !4+ 1"},
                                   {"p,~,-o,1", "0 - -, - - -|0 - -, - - -"},
                                   {"p,+o", "0 - -, 7+ -+ 1|0 - -, - - -"},
                                   {"p,-o1,3", "1 1 1, 1 1 1|0 - -, - - -"}};
    for (auto const& [list, want] : rows)
        EXPECT_EQ(want, Found(list, 'o') + '|' + Found(list, "-o")) << list;
    EXPECT_EQ("1 -3000000000 -2147483648", Found("p,-o-3000000000", 'o').substr(0, 25));
}

TEST(ArgumentVector, OwnsCopies) {
    Texts args("one,~,two");
    ArgumentVector a(3, args.Vector()), b(a), c(-4, nullptr);
    args.Vector()[2][0] = a.Argv()[0][0] = '#';
    c = b;
    b = ArgumentVector();
    EXPECT_EQ("one two", c.Argv()[0] + std::string(" ") + c.Argv()[2]);
    EXPECT_TRUE(!c.Argv()[1] && !c.Argv()[3] && !b.Argv()[0] && b.Argc() == 0);
}
