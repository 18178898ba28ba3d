#include "system/datestr.h"

#include <sys/times.h>

#include "tests/support/test.h"
#include "tests/system/time_zone.h"

namespace {

TEST(DateStr, WritesTheFixedForms) {
    struct {
        int day, month, year, second;
        char const *date, *time;
    } const rows[] = {{5, 10, 126, 59, "05-NOV-26", "14:03:59"},
                      {31, 0, 199, 0, "31-JAN-99", "14:03:00"},
                      {1, 12, 0, INT_MIN, "01-DEC-00", "14:03:-2147483648"},
                      {INT_MIN, -1, -1, 7, "-2147483648-JAN-99", "14:03:07"}};
    for (auto const& r : rows) {
        char date[19], time[36];
        struct tm fields = {r.second, 3, 14, r.day, r.month, r.year, 0, 0, 0, 0, nullptr};
        EXPECT_EQ(std::strlen(r.date), static_cast<unsigned>(CreateDateStr(date, &fields)));
        EXPECT_EQ(std::strlen(r.time), static_cast<unsigned>(CreateTimeStr(time, &fields)));
        EXPECT_EQ(r.date + std::string(r.time), date + std::string(time));
    }
}

TEST(DateStr, WritesNowInLocalTimeWithoutTerminators) {
    // Each call has to notice that the zone has changed; only getctime ends its text.
    std::tuple<char const*, void (*)(char*), char const*> const rows[] = {
        {"UTC0", getdatestr, "%d-%^b-%y"},
        {"<+14>-14", getdatestr_, "%d-%^b-%y"},
        {"<-11:30>11:30", gettimestr, "%T"},
        {"<+13>-13", gettimestr_, "%T"},
        {"<-12>12", [](char* dst) { EXPECT_EQ(dst, getctime(dst)); }, "%a %b %e %T %Y\n"}};
    for (auto const& [rules, write, format] : rows) {
        TimeZone const scope(rules);
        char out[40] = {}, text[40];
        time_t now = 0;
        do {  // until it happens in one second
            now = time(nullptr);
            std::memset(out, '#', sizeof out - 1);
            write(out);
        } while (time(nullptr) != now);
        struct tm fields = {};
        tzset();
        std::string want(text, strftime(text, 40, format, localtime_r(&now, &fields)));
        if (want.back() != '\n') want.resize(sizeof out - 1, '#');
        EXPECT_EQ(want, out) << rules;
    }
}

TEST(CpuTime, IsTicksOverSixty) {
    struct tms before = {}, after = {};
    do times(&before);
    while (before.tms_utime < 2 || before.tms_stime < 2);
    float const used = getcputime();
    times(&after);
    EXPECT_GE(used, static_cast<float>(before.tms_utime + before.tms_stime) / 60 - 1e-3F);
    EXPECT_LE(used, static_cast<float>(after.tms_utime + after.tms_stime) / 60 + 1e-3F);
}

}  // namespace
