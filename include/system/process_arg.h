// ProcessArg, known as Process::Arg: one argument of a program, made from whatever it is.
#ifndef KORBASE_SYSTEM_PROCESS_ARG_H
#define KORBASE_SYSTEM_PROCESS_ARG_H

#include <korbase_api.h>
#include <text/string.h>

#include <generic/tolist>

// Numbers are written as the standard output streams do, in the global locale. Copies share the
// text, so an argument belongs to one thread at a time.
class KORBASE_API ProcessArg {
public:
    ProcessArg();  // ""
    ProcessArg(String_t const& text) : text(text) {}
    ProcessArg(char const* text) : text(text) {}
    // A whole number alone is taken as a character, too: write {number, 1} for its digits.
    ProcessArg(char c);
    // `base` 0: octal, 2: hexadecimal, anything else: decimal. Octal and hexadecimal digits are
    // those of the value's 32 bits.
    ProcessArg(int value, int base);
    // `format` 3: fixed, 4: scientific, anything else: the general form.
    ProcessArg(double value, int format, int precision);
    // The texts joined by ", "; "" for an empty list.
    ProcessArg(TOList<String_t> const& list);

    String_t const& Str() const { return text; }

private:
    String_t text;
};

#endif
