#include "system/datestr.h"

#include <sys/times.h>

#include <algorithm>
#include <cstdio>
#include <cstring>

#include "system/local_time.h"

namespace {

constexpr int kDateLength = 9, kTimeLength = 8;      // of dates and times that exist
constexpr int kMaxDateSize = 19, kMaxTimeSize = 36;  // of any fields, with the terminator
constexpr double kTicks = 60;                        // kept: whatever the platform's rate is

constexpr char kMonths[][4] = {"JAN", "FEB", "MAR", "APR", "MAY", "JUN",
                               "JUL", "AUG", "SEP", "OCT", "NOV", "DEC"};

// Not negative for the years before 1900 either: 1899 is 99.
int YearOfCentury(int tm_year) { return (tm_year % 100 + 100) % 100; }

}  // namespace

int CreateDateStr(char* dst, struct tm const* t) {
    return std::snprintf(dst, kMaxDateSize, "%2.2d-%s-%2.2d", t->tm_mday,
                         kMonths[std::clamp(t->tm_mon, 0, 11)], YearOfCentury(t->tm_year));
}

int CreateTimeStr(char* dst, struct tm const* t) {
    return std::snprintf(dst, kMaxTimeSize, "%2.2d:%2.2d:%2.2d", t->tm_hour, t->tm_min, t->tm_sec);
}

char* getctime(char* dst) {
    time_t const now = time(nullptr);
    tzset();
    ctime_r(&now, dst);
    return dst;
}

void getdatestr(char* dst) {
    struct tm const now = korbase_detail::LocalTimeNow();
    char text[kMaxDateSize];
    CreateDateStr(text, &now);
    std::memcpy(dst, text, kDateLength);
}

void gettimestr(char* dst) {
    struct tm const now = korbase_detail::LocalTimeNow();
    char text[kMaxTimeSize];
    CreateTimeStr(text, &now);
    std::memcpy(dst, text, kTimeLength);
}

void getdatestr_(char* dst) { getdatestr(dst); }

void gettimestr_(char* dst) { gettimestr(dst); }

float getcputime(void) {
    struct tms used = {};
    times(&used);
    auto const user = static_cast<double>(used.tms_utime);
    auto const system = static_cast<double>(used.tms_stime);
    return static_cast<float>(user / kTicks + system / kTicks);
}
