// Runs the program on texts and looks at what it prints.
#include "program.h"

namespace {

using namespace std::string_literals;

class Expand : public Program {};

TEST_F(Expand, SubstitutesLineByLine) {
    struct {
        char const* options;
        std::string text, want;
    } const rows[] = {
        {"-D layer=met1 -DW=5", "$layer: ${W}u\n\n$W", "met1: 5u\n\n5"},
        {"-D a=1 -D a=2 -D b=", "<$a><$b><$c>\r\n", "<2><><>\r\n"},
        {"-k -D 'a=x = $b' -D b=y", "$a ${c} $$b", "x = $b ${c} $y"},
        {"-k", "${a\nb} $\n", "${a\nb} $\n"},  // a reference ends with its line
        {"", "${a\nb}\n", "\nb}\n"},
        {"-D '0/1=m'", "${0/1}\n", "m\n"},
        {"-D a=1 --", "", ""},
    };
    for (auto const& row : rows) {
        Write("in", row.text);
        for (char const* from : {" <in", " in"}) {
            EXPECT_EQ(0, RunProgram(EXPAND_COMMAND, row.options + std::string(from))) << err;
            EXPECT_EQ(row.want, out) << row.options << from;
            EXPECT_EQ("", err);
        }
    }
}

TEST_F(Expand, RefusesWhatItCannotUse) {
    Write("good", "$a\n");
    Write("zero", "a\n\0b\n$a c"s);
    std::filesystem::create_directory(folder / "dir");
    struct {
        char const *arguments, *message, *out;
    } const rows[] = {
        {"-x good", "expand: unknown option -x\nusage: ", ""},
        {"-kk good", "expand: unknown option -kk\nusage: ", ""},
        {"-D", "expand: a value is missing after -D\nusage: ", ""},
        {"-D a good", "expand: not NAME=VALUE: a\nusage: ", ""},
        {"-D =a good", "expand: not NAME=VALUE: =a\nusage: ", ""},
        {"good zero", "expand: more than one file: zero\nusage: ", ""},
        {"none", "expand: cannot read none: No such file or directory\n", ""},
        {"dir", "expand: cannot read dir: Is a directory\n", ""},
        {"-D a=1 zero", "zero:2: zero byte in the line\n", "a\n1 c"},
        {"-- -D", "expand: cannot read -D: No such file or directory\n", ""},
        {"good >/dev/full", "expand: cannot write standard output\n", ""},
    };
    for (auto const& row : rows) {
        EXPECT_EQ(1, RunProgram(EXPAND_COMMAND, row.arguments)) << row.arguments;
        EXPECT_EQ(0u, err.find(row.message)) << row.arguments << ": " << err;
        EXPECT_EQ(row.out, out) << row.arguments;
    }
}

}  // namespace
