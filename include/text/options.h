// Finding options in the arguments of a program.
//
// `argc` and `argv` are those of main(): argv[0] is never examined, a null pointer ends the
// vector early, and with a count below 2 nothing is found. All functions return 1 or 0. Numbers are
// decimal, as strtol reads them (which may change errno); what int cannot hold becomes its nearest
// end. An empty text is not a number. Nothing here writes to the arguments or keeps state.
#ifndef KORBASE_TEXT_OPTIONS_H
#define KORBASE_TEXT_OPTIONS_H

#include <korbase_api.h>
#include <text/string.h>

// Search the whole vector for an option of one letter: the first argument that begins with '-' and
// `c`, whatever follows.
KORBASE_API int GetOpt(int argc, char** argv, char c);
// Its value is the rest of the argument ("-oout") or else the next argument. Kept: 1 also where
// there is neither; `value` is untouched then.
KORBASE_API int GetOpt(int argc, char** argv, char c, String_t& value);
// 1 only if the value is wholly a number. Kept: `value` is set to what could be read ("12x": 12) in
// any case; it is untouched only where there is no text to read.
KORBASE_API int GetOpt(int argc, char** argv, char c, int& value);

// Search the whole vector for an argument that equals `name`, dashes included. Its value is the
// next argument; without one, or when it is not wholly a number, the result is 0 and `value`
// untouched.
KORBASE_API int GetOpt(int argc, char** argv, char const* name);
KORBASE_API int GetOpt(int argc, char** argv, char const* name, String_t& value);
KORBASE_API int GetOpt(int argc, char** argv, char const* name, int& value);

// For callers that walk the vector: they step `argc` and `*argv` themselves from argument to
// argument and examine the one after the cursor, (*argv)[1]. Where it does not match, the result is
// 0 and nothing changes. A value in an argument of its own makes the cursor go one further.

// Matches when the second character is `c`: the caller has seen the '-'. The value is the rest of
// the argument, for which the cursor stays, or else the following argument. Kept: 1 also where
// there is neither; the cursor has moved, `value` is untouched.
KORBASE_API int CheckOpt(int& argc, char*** argv, char c, String_t& value);
// Matches when the argument equals `name`; the value is the following argument, as above.
KORBASE_API int CheckOpt(int& argc, char*** argv, char const* name, String_t& value);

// The same with numbers. With needValue 0 the option is a flag: `value` becomes 1, the cursor
// stays. Otherwise the result is 1 only if the value is wholly a number. Kept: `value` is set to
// what could be read in any case, and the cursor moves for a bad or missing value, too.
KORBASE_API int CheckOpt(int& argc, char*** argv, char c, int& value, int needValue);
KORBASE_API int CheckOpt(int& argc, char*** argv, char const* name, int& value, int needValue);

#endif
