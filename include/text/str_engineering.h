/* Numbers as text in engineering notation: three digits, with the scale letter in place of the
 * point. */
#ifndef KORBASE_TEXT_STR_ENGINEERING_H
#define KORBASE_TEXT_STR_ENGINEERING_H

#include <korbase_api.h>

#ifdef __cplusplus
extern "C" {
#endif

/* Writes `x` into `buffer` (8 bytes are enough) and returns the buffer: 1234 is "1K23", -0.0047 is
 * "-4M70", 123456 is "123K". The letters are A F P N U M _ K ME G T for 1e-18 to 1e12, "_" for
 * units, "ME" for mega; 0 is "0_00". A value that is not a number or lies outside the letters'
 * range leaves the buffer as it was. Kept: digits that round up to 1000 are written so, 9999.7 is
 * "10K00". Any thread may call it. */
KORBASE_API char* str_tosc_r(char* buffer, double x);

/* The same in a static buffer that the next call of any thread overwrites. */
KORBASE_API char* str_tosc(double x);

#ifdef __cplusplus
}
#endif

#endif
