// Numbers with engineering scale letters from input streams.
//
// The readers skip blanks, then take a sign, digits with at most one point, and a scale letter; no
// blanks are allowed between them, except before an exponent. Digits beyond 128 characters are read
// and dropped. A failure sets the failbit and leaves the target untouched; reaching the end of the
// input behind a number is none.
#ifndef KORBASE_TEXT_NUMREAD_H
#define KORBASE_TEXT_NUMREAD_H

#include <korbase_api.h>

#include <istream>

// With the letters of str_todouble, and "MIL" for 2.54e-5; U is exactly 1e-6.
// Kept: an "M" looks at up to two characters behind it. "MEL" and "MIG" fail; where neither "MEG"
// nor "MIL" follows, the last character looked at goes back in upper case (a stream that cannot
// change its characters gets the badbit then, and the number is stored), and an "E" or "I" before
// it is lost. Kept: "inf" and "min" are not understood; at most two characters of such a word
// are consumed.
KORBASE_API std::istream& GetDouble(std::istream& is, double& out);
KORBASE_API std::istream& GetFloat(std::istream& is, float& out);  // reads a double and narrows it

// With the letters of str_ctodouble; u is exactly 1e-6.
KORBASE_API std::istream& GetCDouble(std::istream& is, double& out);
KORBASE_API std::istream& GetCFloat(std::istream& is, float& out);  // reads a double and narrows it

#endif
