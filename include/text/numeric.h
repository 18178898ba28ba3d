/* Small numeric helpers. They keep no state: any thread may call them. */
#ifndef KORBASE_TEXT_NUMERIC_H
#define KORBASE_TEXT_NUMERIC_H

#include <korbase_api.h>

#ifdef __cplusplus
extern "C" {
#endif

/* `x` rounded to the nearest integer, halves away from zero. Values beyond the range of int give
 * its ends (at the lower end -2147483647), a NaN gives 0. */
KORBASE_API int mth_round(double x);

/* The greatest common divisor of two positive values, by repeated subtraction.
 * `b` unchanged when a <= 0. Requires b > 0 when a > 0: with b = 0 the call does not return. */
KORBASE_API int gcd(int a, int b);

/* Ends the process at once through abort(), printing nothing. */
KORBASE_API void halt(void) __attribute__((noreturn));

#ifdef __cplusplus
}
#endif

#endif
