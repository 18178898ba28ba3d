// The arguments of a program: options of one letter in front, names behind them.
#ifndef KORBASE_EXAMPLES_LAYOUT_COMMAND_LINE_H
#define KORBASE_EXAMPLES_LAYOUT_COMMAND_LINE_H

#include <geometry/gu_types.h>
#include <text/string.h>

#include <initializer_list>

namespace layout {

// An option and where it goes: its value, or a flag that it sets.
struct Option {
    char letter;
    String_t* value;  // null for a flag
    bool* flag = nullptr;
    char const* name = nullptr;  // a flag's other spelling, dashes included
};

class CommandLine {
public:
    // `usage`, whole lines, is printed behind every complaint. Both texts must outlive this.
    CommandLine(char const* program, char const* usage) : program(program), usage(usage) {}

    // Takes the options in `arguments` behind the first, up to "--" or what does not begin with a
    // dash. Returns what follows, up to a null pointer; null after a complaint.
    char** Take(char** arguments, std::initializer_list<Option> options) const;

    // Prints "program: what text" to standard error. Always 1, an exit status.
    int Complain(char const* what, char const* text) const;

    char const* Program() const { return program; }

private:
    char const* program;
    char const* usage;
};

// Reads a whole number, all of `text`. False if it is none, or out of the range.
bool ReadNumber(char const* text, int least, int most, int& number);

// What programs that cut layouts are told by -u, -s and -o.
struct CutOptions {
    String_t unit_text{"1n"}, distance_text{"0"};
    String_t picture;  // null for none
    bool table = true;

    double unit = 1e-9;       // metres
    gu_coord_t distance = 0;  // database units

    // Finds unit and distance in their texts; false after a complaint.
    bool Parse(CommandLine const& line);
};

}  // namespace layout

#endif
