#include "system/datestr.h"

#include <gtest/gtest.h>
#include <sys/times.h>

#include <climits>
#include <cstring>

#include "tests/system/time_zone.h"

namespace {

TEST(DateStr, WritesTheFixedForms) {
    char text[36];
    auto const date = [&](int day, int month, int year) {
        struct tm fields = {};
        fields.tm_mday = day;
        fields.tm_mon = month;
        fields.tm_year = year;
        std::size_t const count = static_cast<std::size_t>(CreateDateStr(text, &fields));
        EXPECT_EQ(std::strlen(text), count);
        return std::string(text);
    };
    EXPECT_EQ("05-NOV-26", date(5, 10, 126));
    EXPECT_EQ("31-JAN-99", date(31, 0, 199));
    EXPECT_EQ("01-DEC-00", date(1, 12, 0));
    EXPECT_EQ("-2147483648-JAN-99", date(INT_MIN, -1, -1));
    struct tm fields = {};
    fields.tm_hour = 9;
    fields.tm_sec = INT_MIN;
    EXPECT_EQ(17, CreateTimeStr(text, &fields));
    EXPECT_STREQ("09:00:-2147483648", text);
}

TEST(DateStr, WritesNowInLocalTimeWithoutTerminators) {
    for (char const* rules : {"UTC0", "<+14>-14", "<-11:30>11:30"}) {
        TimeZone const scope(rules);
        char out[64], want[80];
        time_t now = 0;
        do {  // until all of it happens in one second
            now = time(nullptr);
            std::memset(out, '#', sizeof out);
            EXPECT_EQ(out + 38, getctime(out + 38));
            getdatestr(out);
            getdatestr_(out + 10);
            gettimestr(out + 20);
            gettimestr_(out + 29);
        } while (time(nullptr) != now);
        struct tm fields = {};
        std::strftime(want, sizeof want, "%d-%b-%y#%d-%b-%y#%T#%T#%c\n",
                      localtime_r(&now, &fields));
        EXPECT_STRCASEEQ(want, out) << rules;
    }
}

TEST(CpuTime, IsTicksOverSixty) {
    struct tms before = {}, after = {};
    do times(&before);
    while (before.tms_utime + before.tms_stime < 3);
    float const used = getcputime();
    times(&after);
    EXPECT_GE(used, static_cast<float>(before.tms_utime + before.tms_stime) / 60 - 1e-3F);
    EXPECT_LE(used, static_cast<float>(after.tms_utime + after.tms_stime) / 60 + 1e-3F);
}

}  // namespace
