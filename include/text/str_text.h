/* Terminated texts that may be null: length, comparison, copies.
 *
 * Sizes and counts are bytes. The functions keep no state: any thread may call them. */
#ifndef KORBASE_TEXT_STR_TEXT_H
#define KORBASE_TEXT_STR_TEXT_H

#include <korbase_api.h>

#ifdef __cplusplus
extern "C" {
#endif

/* The length of the text, 0 for null. */
KORBASE_API unsigned str_len(char const* text);

/* Negative, 0 or positive as `a` sorts before, with or behind `b` by unsigned bytes. Null sorts
 * before every text (-1, or 1 when `b` is null) and equals only null. */
KORBASE_API int str_cmp(char const* a, char const* b);
/* The same over at most `n` characters. Kept: null and a text differ even for n = 0. */
KORBASE_API int str_ncmp(char const* a, char const* b, unsigned n);

/* As str_cmp without regard to case: two letters compare by their upper-case forms; where either is
 * not a letter (of the current locale), the result is their difference as unsigned bytes. */
KORBASE_API int str_icmp(char const* a, char const* b);
/* The same over at most `n` characters; 0 when n < 1. */
KORBASE_API int str_nicmp(char const* a, char const* b, int n);

/* Append `src`, or at most `n` characters of it, behind `dst`, which has room for them and a
 * terminator. Nothing when either is null. */
KORBASE_API void str_cat(char* dst, char const* src);
KORBASE_API void str_ncat(char* dst, char const* src, unsigned n);

/* Copies `src` to `dst`; a null `src` gives "", a null `dst` does nothing. */
KORBASE_API void str_cpy(char* dst, char const* src);
/* Copies at most `n` characters and fills with terminators up to and including dst[n]: `dst` has n
 * + 1 bytes. A null `src` gives "", a null `dst` does nothing. */
KORBASE_API void str_ncpy(char* dst, char const* src, unsigned n);

/* Copies as much of `src` as fits into the `size` bytes at `dst`, terminator included. Nothing when
 * `dst` or `src` is null or size is 0. Returns `dst`. */
KORBASE_API char* str_lcpy(char* dst, char const* src, unsigned size);
/* Appends as much of `src` as fits into the `size` bytes at `dst`, terminator included. Nothing
 * when `dst` or `src` is null, size is 0 or the text in `dst` leaves no room. Returns `dst`. */
KORBASE_API char* str_lcat(char* dst, char const* src, unsigned size);

/* A copy of the text, of "" for null, that the caller gives back with str_free.
 * Aborts without a message when there is no memory. */
KORBASE_API char* str_save(char const* text);
/* The same of at most `n` characters; the block always has n + 1 bytes, zero behind the text. */
KORBASE_API char* str_nsave(char const* text, unsigned n);
/* Gives back what str_save or str_nsave returned; null is allowed. */
KORBASE_API void str_free(void* text);

/* The system's text for an errno value, as strerror gives it. */
KORBASE_API char const* str_error(int error);

#ifdef __cplusplus
}
#endif

#endif
