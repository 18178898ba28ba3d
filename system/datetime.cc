#include "system/datetime.h"

#include <cstdio>
#include <istream>
#include <ostream>
#include <string>

#include "system/local_time.h"
#include "text/str_number.h"
#include "text/stringtok.h"

namespace {

using korbase_detail::LocalTime;
using korbase_detail::LocalTimeNow;

constexpr std::time_t kInvalid = -1;
constexpr int kFirstYear = 1900;  // year 0 of the platform's record

// Calendar fields: the year in full, months from 1.
struct Fields {
    int year = 0, month = 0, day = 0, hour = 0, minute = 0, second = 0;
};

std::time_t ToSeconds(Fields const& fields) {
    std::tm record = {};
    // The two ends of `int` that the record cannot hold have no time either.
    if (__builtin_sub_overflow(fields.year, kFirstYear, &record.tm_year) ||
        __builtin_sub_overflow(fields.month, 1, &record.tm_mon))
        return kInvalid;
    record.tm_mday = fields.day;
    record.tm_hour = fields.hour;
    record.tm_min = fields.minute;
    record.tm_sec = fields.second;
    record.tm_isdst = -1;
    return std::mktime(&record);
}

std::time_t TodayAt(int hour, int minute, int second) {
    std::tm record = LocalTimeNow();
    record.tm_hour = hour;
    record.tm_min = minute;
    record.tm_sec = second;
    return std::mktime(&record);
}

// How the character behind the first number orders the three numbers of a date. The second number
// ends there, too.
struct DateForm {
    char const* separator;
    int Fields::*order[3];
};

constexpr DateForm kDateForms[] = {
    {".", {&Fields::day, &Fields::month, &Fields::year}},
    {"/", {&Fields::month, &Fields::day, &Fields::year}},
    {"-", {&Fields::year, &Fields::month, &Fields::day}},
};

// True if `token` is a number and nothing else; false for null.
bool ReadNumber(char const* token, int& number) {
    int const used = str_toint(token, &number);
    return used > 0 && token[used] == '\0';
}

bool ReadDigits(char const* token, Fields& fields) {
    return std::sscanf(token, "%4d%2d%2d%2d%2d%2d", &fields.year, &fields.month, &fields.day,
                       &fields.hour, &fields.minute, &fields.second) >= 5;
}

bool ReadDate(DateForm const& form, char const* first, StringTok& next, Fields& fields) {
    if (!ReadNumber(first, fields.*form.order[0]) ||
        !ReadNumber(next(form.separator), fields.*form.order[1]) ||
        !ReadNumber(next(". "), fields.*form.order[2]))
        return false;
    if (fields.year < 70)
        fields.year += 2000;
    else if (fields.year < 100)
        fields.year += 1900;
    return true;
}

// Minute and second may be missing.
bool ReadTimeOfDay(char const* hour, StringTok& next, Fields& fields) {
    if (!ReadNumber(hour, fields.hour)) return false;
    for (int* const field : {&fields.minute, &fields.second}) {
        *field = 0;
        char const* const token = next(":");
        if (token && !ReadNumber(token, *field)) return false;
    }
    return true;
}

bool ReadFields(char const* text, Fields& fields) {
    StringTok next(text);
    char const* const first = next(".:/-");
    if (!first) return false;
    if (ReadDigits(first, fields)) return true;

    for (DateForm const& form : kDateForms)
        if (next.Sep() == *form.separator)
            return ReadDate(form, first, next, fields) && ReadTimeOfDay(next(":"), next, fields);

    std::tm const today = LocalTimeNow();
    fields.year = today.tm_year + kFirstYear;
    fields.month = today.tm_mon + 1;
    fields.day = today.tm_mday;
    return ReadTimeOfDay(first, next, fields);
}

std::time_t Parse(char const* text) {
    Fields fields;
    return ReadFields(text, fields) ? ToSeconds(fields) : kInvalid;
}

// Sets a stream to decimal numbers for its scope.
class DecimalScope {
public:
    explicit DecimalScope(std::ios_base& scoped) : stream(scoped), flags(scoped.flags()) {
        stream.setf(std::ios_base::dec, std::ios_base::basefield);
    }
    DecimalScope(DecimalScope const&) = delete;
    DecimalScope& operator=(DecimalScope const&) = delete;
    ~DecimalScope() { stream.flags(flags); }

private:
    std::ios_base& stream;
    std::ios_base::fmtflags flags;
};

}  // namespace

DateTime::DateTime(int year, int month, int day, int hour, int minute, int second)
    : seconds(ToSeconds({year, month, day, hour, minute, second})) {}

DateTime::DateTime(int hour, int minute, int second) : seconds(TodayAt(hour, minute, second)) {}

DateTime::DateTime(char const* text) : seconds(Parse(text)) {}

String_t DateTime::Format(char const* format, int local) const {
    std::tm record;
    if (!(local ? LocalTime(seconds, record) : gmtime_r(&seconds, &record) != nullptr))
        return String_t();
    char text[128];
    std::size_t const length = std::strftime(text, sizeof text, format ? format : "%c", &record);
    return String_t(text, static_cast<unsigned>(length));
}

std::ostream& operator<<(std::ostream& out, DateTime const& time) {
    DecimalScope const decimal(out);
    return out << time.Seconds();
}

std::istream& operator>>(std::istream& in, DateTime& time) {
    DecimalScope const decimal(in);
    std::time_t seconds = 0;
    if (in >> seconds) time.seconds = seconds;
    return in;
}
