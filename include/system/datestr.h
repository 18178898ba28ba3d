/* Dates and times in fixed forms in caller's buffers, and the processor time of this process.
 *
 * Local time is that of the platform's time zone. Different threads may call these functions while
 * none changes the environment (TZ). Buffers must not be null. */
#ifndef KORBASE_SYSTEM_DATESTR_H
#define KORBASE_SYSTEM_DATESTR_H

#include <korbase_api.h>
#include <time.h>

#ifdef __cplusplus
extern "C" {
#endif

/* Writes the date of `t` as "05-NOV-26" or its time of day as "14:03:59", and a terminator. Return
 * the number of characters before it. A month outside 0 to 11 is the first or last one. A day,
 * hour, minute or second that has not two digits is written as it is: there are at most 18
 * characters in a date, 35 in a time. */
KORBASE_API int CreateDateStr(char* dst, struct tm const* t);
KORBASE_API int CreateTimeStr(char* dst, struct tm const* t);

/* Writes the 26 bytes of the platform's ctime() of now, as "Thu Nov  5 14:03:59 2026\n" and a
 * terminator. Returns `dst`. */
KORBASE_API char* getctime(char* dst);

/* Write the current date or time of day in the forms above. Kept: exactly 9 or 8 characters without
 * a terminator. The names with an underscore are the same functions for languages that append one
 * and keep text in blank-padded fields; what a longer field holds behind the text stays. */
KORBASE_API void getdatestr(char* dst);
KORBASE_API void gettimestr(char* dst);
KORBASE_API void getdatestr_(char* dst);
KORBASE_API void gettimestr_(char* dst);

/* The processor time of this process, user and system, in clock ticks divided by 60. Kept: so these
 * are seconds only where a tick is 1/60 s; where it is 1/100 s, a second counts as 1.67. */
KORBASE_API float getcputime(void);

#ifdef __cplusplus
}
#endif

#endif
