/* Integers as text, written into the tail of a caller's buffer.
 *
 * The last of the `size` bytes becomes the terminator and the text stands before it; the result
 * points at its first character, and what lies before that is untouched. Nothing is ever written
 * before the buffer: a text that is too long for it loses its front. The functions keep no state:
 * any thread may call them. */
#ifndef KORBASE_TEXT_STR_INTEGER_H
#define KORBASE_TEXT_STR_INTEGER_H

#include <korbase_api.h>
#include <stdint.h>

#ifdef __cplusplus
extern "C" {
#endif

/* Decimal. A `fill` other than '\0' is put in front until the text has `width` characters.
 * Kept: it stands before the sign, so -42 with width 5 and fill '0' is "00-42". */
KORBASE_API char* str_int2str10(char* buffer, unsigned size, int value, unsigned width, char fill);
KORBASE_API char* str_long2str10(char* buffer, unsigned size, long value, unsigned width,
                                 char fill);
KORBASE_API char* str_longlong2str10(char* buffer, unsigned size, int64_t value, unsigned width,
                                     char fill);
KORBASE_API char* str_uint2str10(char* buffer, unsigned size, unsigned value, unsigned width,
                                 char fill);
KORBASE_API char* str_ulong2str10(char* buffer, unsigned size, unsigned long value, unsigned width,
                                  char fill);
KORBASE_API char* str_ulonglong2str10(char* buffer, unsigned size, uint64_t value, unsigned width,
                                      char fill);

/* In radix 2, 8 or 16 (any other aborts) with lower-case digits, behind the prefix "0b", "0" or
 * "0x". A `fill` other than '\0' is put between prefix and digits until those have `width`
 * characters: 255 with width 4 and fill '0' is "0x00ff". */
KORBASE_API char* str_int2strradix(char* buffer, unsigned size, unsigned value, unsigned width,
                                   char fill, int radix);
KORBASE_API char* str_long2strradix(char* buffer, unsigned size, unsigned long value,
                                    unsigned width, char fill, int radix);
KORBASE_API char* str_longlong2strradix(char* buffer, unsigned size, uint64_t value, unsigned width,
                                        char fill, int radix);

#ifdef __cplusplus
}
#endif

#endif
