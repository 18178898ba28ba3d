/* Fixed-length fields: `len` characters that are padded with blanks and have no terminator.
 *
 * Positions count from 1. Nothing is read or written past the given lengths; null fields are left
 * alone. Source and destination may overlap. The functions keep no state: any thread may call them.
 */
#ifndef KORBASE_TEXT_STR_FIELD_H
#define KORBASE_TEXT_STR_FIELD_H

#include <korbase_api.h>

#ifdef __cplusplus
extern "C" {
#endif

/* The length of the field without its trailing blanks (the blank character only); `len` when len
 * < 1. */
KORBASE_API int str_length(char const* field, int len);

/* Fills the `dstlen` characters at `dst` with those of `src`, at most `srclen` and none behind a
 * terminator, then with `fill`. */
KORBASE_API void str_pad(char const* src, int srclen, char fill, int dstlen, char* dst);

/* Fills the `dstlen` characters at `dst` with at most `n` of those of `s` from position `pos` on,
 * none behind a terminator, then with blanks. A position below 1 or behind a terminator gives
 * blanks. */
KORBASE_API void str_substr(char const* s, int pos, int n, char* dst, int dstlen);

/* Shift the characters of the field `n` places to the left or right and fill the free end with
 * blanks; n >= len blanks the field, n < 1 leaves it alone. */
KORBASE_API void str_lshft(char* field, int len, int n);
KORBASE_API void str_rshft(char* field, int len, int n);

/* Convert the case of the first min(*length, maximum) characters, by the current locale. */
KORBASE_API void tolower_(char* field, int const* length, int maximum);
KORBASE_API void toupper_(char* field, int const* length, int maximum);

#ifdef __cplusplus
}
#endif

#endif
