// What StrFormat and StrFmt share: one scanner for formats, and the printing of values.
//
// The scanner writes text and escapes itself and hands each directive to the function that was
// called, which knows where its arguments are. A value is printed by setting up the caller's stream
// and inserting it; what was set stays on the stream.
#ifndef KORBASE_TEXT_DIRECTIVE_H
#define KORBASE_TEXT_DIRECTIVE_H

#include <iosfwd>

namespace korbase_detail {

// What a directive says. A field below 0 was not given.
struct Directive {
    bool left;        // '-'
    int width;        // characters
    int precision;    // characters or digits; 0 for a bare '.'
    char conversion;  // the letter; '\0' when the format ends before it
};

// The source of a format's arguments. The scanner asks in the order of the format.
class FormatArguments {
public:
    virtual int Star() = 0;          // the value of a '*'
    virtual char const* Text() = 0;  // the text of a %b, null when there is none
    // Prints one directive with its argument; asserts on an unknown conversion.
    virtual void print_direc(Directive const& directive) = 0;

protected:
    ~FormatArguments() = default;
};

// Prints all of `format`; returns the number of its directives, those of "%%" and "%b" included.
int PrintFormat(std::ostream& out, char const* format, FormatArguments& arguments);

// Prints a number by the integer or the floating directive given.
void PrintInteger(std::ostream& out, Directive const& directive, long value);
void PrintInteger(std::ostream& out, Directive const& directive, unsigned long value);
void PrintFloat(std::ostream& out, Directive const& directive, double value);
// Prints `text`, of which no more than the precision is read. The stream's settings do not matter.
void PrintText(std::ostream& out, Directive const& directive, char const* text);

// Says on standard error what was wrong with the number that `text` was to be: by `errno`, which
// the caller had cleared before the conversion, or because nothing up to `end` was converted.
void CheckNumber(char const* text, char const* end);

}  // namespace korbase_detail

#endif
