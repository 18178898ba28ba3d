// StrFormat: a format in the manner of printf, with texts as arguments, onto a stream. It serves
// programs whose arguments come from a command line; StrFmt takes ordinary ones.
//
// The directives of both functions, which are safe on several threads for different streams:
//
//   %[flag][width][.precision][length]conversion
//
// The flag is one of "-+ #". Kept: only '-' (left adjustment) means anything. Width and precision
// are decimal digits, or '*' for the value of an argument; a bare '.' is precision 0. Those of
// numbers end at 1048576. The length is one of "hlL", which is skipped. The conversions:
//
//   d i        a signed integer. Kept: in the base that the stream has: hexadecimal after a %x.
//   u          an unsigned one, also in the stream's base
//   o x X      in octal or hexadecimal
//   f e E g G  a floating-point number, with the stream's width and precision if none is given
//   s          a text: at most `precision` characters of it, blanks up to `width`
//   c          one character. Kept: width and precision change nothing.
//
// For integers, a precision is the number of digits, filled up with zeros on the side that the
// stream's adjustment says; with a width, too, width - precision blanks go with it.
// Kept: however long the number is, and with its sign counted as a digit: "%5.3d" prints 1234 with
// two blanks before it.
//
// %% is a percent sign. %b is a text argument in which escapes are interpreted, those of the
// format: \a \b \f \n \r \t \v, and \\ \" \c for the character itself; \0 with up to three octal
// digits and \x with up to three hexadecimal ones. Kept: these two print the value as a number,
// \x41 as 65. Another escape is reported on standard error, and its character is printed.
//
// What the directives set on the stream stays there (base, letter case, notation, precision,
// adjustment, fill), and directives that do not set it inherit it: after %.3d, %8f fills with
// zeros. Diagnostics on standard error are flushed. An unknown conversion is reported there and
// aborts.
#ifndef KORBASE_TEXT_FORMAT_H
#define KORBASE_TEXT_FORMAT_H

#include <korbase_api.h>

#include <iosfwd>

extern "C" {

// Prints `format` with the texts argv[0] to argv[argc - 1]. Returns how many of them were used, -1
// for a null format.
//
// Numbers are read by strtol (d i o), strtoul (u x X and '*') or strtod, in base 10, up to the
// first character that does not fit. A number that is out of range or missing is reported on
// standard error, and printed as what the conversion gave, or 0. Where no argument is left,
// integers, floats and '*' are 0 and texts and characters nothing, without a report; so it is for
// null pointers, but %s prints "(nil)". Changes errno.
KORBASE_API int StrFormat(std::ostream& out, char const* format, int argc, char** argv);
}

#endif
