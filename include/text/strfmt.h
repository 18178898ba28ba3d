// StrFmt: a format in the manner of printf, with ordinary arguments, onto a stream.
#ifndef KORBASE_TEXT_STRFMT_H
#define KORBASE_TEXT_STRFMT_H

#include <korbase_api.h>

#include <iosfwd>

extern "C" {

// Prints `format`, whose directives and escapes text/format.h explains, with the arguments that
// follow. Returns the number of directives, "%%" and "%b" included; -1 for a null format.
//
// The arguments: an int for d and i; an int or unsigned for o u x X, printed as 32 unsigned bits;
// a double for f e E g G; an int for c and '*', where a negative one counts as not given; a text
// for s, not null and terminated unless a precision bounds it, and for %b, where null is nothing.
// Changes errno where the format has digits.
KORBASE_API int StrFmt(std::ostream& out, char const* format, ...);
}

#endif
