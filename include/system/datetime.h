// DateTime: a point in time, made from calendar fields or from what people type, and printed.
//
// Calendar fields are in local time; the rules of the time zone are the platform's, and out of
// range fields go over into the next ones: 32 January is 1 February. What the platform's time_t
// cannot hold is -1, as for a text that is no time; where time_t has 32 bits, it ends on 19 January
// 2038.
//
// A value; different threads may use it while none changes the environment (TZ).
#ifndef KORBASE_SYSTEM_DATETIME_H
#define KORBASE_SYSTEM_DATETIME_H

#include <korbase_api.h>
#include <text/string.h>

#include <ctime>
#include <iosfwd>

class KORBASE_API DateTime {
public:
    // The year in full, months from 1. Whether daylight saving is in force then, the platform says.
    DateTime(int year, int month, int day, int hour, int minute, int second);
    // A time of day today. Kept: daylight saving counts as in force when it is so now, even if the
    // given time lies on the other side of today's change.
    DateTime(int hour, int minute, int second);
    // Reads one of these; -1 for another text and for null:
    //
    //     20261115143000  202611151430    digits: year, month, day, hour, minute, second if given
    //     15.11.2026 14:30:05             day.month.year
    //     11/15/26 14:30                  month/day/year
    //     2026-11-15 14                   year-month-day
    //     14:30                           today
    //
    // Minute and second may be missing. Kept: the hour may not, a date alone is -1. What follows
    // the digits, or a ":" behind the second, is not looked at. In the forms with separators 2000
    // is added to years below 70, and 1900 to those from 70 to 99.
    explicit DateTime(char const* text);

    // The time as strftime writes it in at most 127 characters, in local time when `local` is not
    // 0, else in universal time; "%c" for a null format. The null string when that is empty or too
    // long, or the year has no `int`.
    String_t Format(char const* format, int local) const;

    // Seconds since 1970 began in universal time.
    std::time_t Seconds() const { return seconds; }

private:
    friend KORBASE_API std::istream& operator>>(std::istream& in, DateTime& time);

    std::time_t seconds;
};

// The seconds in decimal, whatever base the stream has. A failed read leaves `time` as it was.
KORBASE_API std::ostream& operator<<(std::ostream& out, DateTime const& time);
KORBASE_API std::istream& operator>>(std::istream& in, DateTime& time);

#endif
