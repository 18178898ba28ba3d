/* Numbers from text, with the scale letters of engineering: 1.5K, 10MEG, 3.3n.
 *
 * The functions return the number of characters read, leading blanks, sign and scale letter
 * included; 0, with the output untouched, when there is no number, and for a null text. They stop
 * at what no longer belongs to the number. They keep no state: any thread may call them. */
#ifndef KORBASE_TEXT_STR_NUMBER_H
#define KORBASE_TEXT_STR_NUMBER_H

#include <korbase_api.h>

#ifdef __cplusplus
extern "C" {
#endif

/* A decimal integer of at most 16 digits; a 17th makes the call fail. Values beyond 32 bits wrap.
 */
KORBASE_API int str_toint(char const* text, int* out);

/* A number with a scale letter in either case:
 *
 *     A 1e-18   F 1e-15   P 1e-12   N 1e-9   U 1e-6   M 1e-3   K 1e3   MEG 1e6   G 1e9   T 1e12
 *     D, E: a decimal exponent as str_toint reads it follows; without one the call fails
 *
 * "5." and ".5" are numbers; a part of more than 32 digits is read but counts as absent. "inf" and
 * "min", when nothing follows them, are the largest finite and the smallest normal value. The value
 * is built from the last digit backwards by fused multiply-adds, in the type of the output, so
 * every target gives the same bits. Kept: the micro of str_todouble and str_ctodouble is five units
 * in the last place above 1e-6, and 0 with an exponent that overflows is stored as a NaN. */
KORBASE_API int str_tofloat(char const* text, float* out);
KORBASE_API int str_tofloat_(char const* text, float* out);
KORBASE_API int str_todouble(char const* text, double* out);

/* As str_todouble with letters whose case counts:
 *
 *     y 1e-24   z 1e-21   a 1e-18   f 1e-15   p 1e-12   n 1e-9   u 1e-6   m 1e-3   % 0.01
 *     k, K 1e3   M 1e6   G 1e9   T 1e12   P 1e15   Z 1e21   Y 1e24
 *     D, d, E, e: a decimal exponent follows */
KORBASE_API int str_ctodouble(char const* text, double* out);

/* The integer at the beginning of `text`, which must not be null, as strtol reads it in base 10. */
KORBASE_API long str_tolong(char const* text);

#ifdef __cplusplus
}
#endif

#endif
