// Runs the program on texts and looks at what it prints.
#include "program.h"

using Expand = Program;

TEST_F(Expand, SubstitutesLineByLine) {
    std::string const rows[][3] = {
        {"-D layer=met1 -DW=5", "$layer: ${W}u\n\n$W", "met1: 5u\n\n50"},
        {"-k -D 'a=x = $b' -D b=y", "$a ${c} $$b", "x = $b ${c} $y0"},
        {"-k", "${a\nb} $\n", "${a\nb} $\n0"}};  // a reference ends with its line
    for (auto const& [options, text, want] : rows) {
        WriteFile("in", text);
        Answers(EXPAND_COMMAND, {{options + " in", want}});
    }
}

TEST_F(Expand, RefusesWhatItCannotUse) {
    WriteFile("good", "$a\n");
    WriteFile("zero", std::string("a\n\0b\n$a c", 9));
    Answers(EXPAND_COMMAND, {{"good zero", "expand: more than one file: zero\n1"},
                             {"-D a=1 zero", "a\n1 czero:2: zero byte in the line\n1"},
                             {"good >/dev/full", "expand: cannot write standard output\n1"}});
}
