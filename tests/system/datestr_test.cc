#include "system/datestr.h"

#include <sys/times.h>

#include "tests/support/test.h"
#include "tests/system/time_zone.h"

TEST(DateStr, WritesTheFixedForms) {
    Rows<int, int, int, int, char const*> const rows = {
        {5, 10, 126, 59, "05-NOV-26 14:03:59"},
        {1, 12, 0, INT_MIN, "01-DEC-00 14:03:-2147483648"},
        {INT_MIN, -1, -1, 7, "-2147483648-JAN-99 14:03:07"}};
    for (auto const& [day, month, year, second, want] : rows) {
        char text[55];
        struct tm fields = {second, 3, 14, day, month, year, 0, 0, 0, 0, nullptr};
        int const length = CreateDateStr(text, &fields);
        EXPECT_EQ(std::strlen(want), length + 1U + CreateTimeStr(text + length + 1, &fields));
        text[length] = ' ';
        EXPECT_STREQ(want, text);
    }
}

// Each call has to notice that the zone has changed; only getctime ends its text.
TEST(DateStr, WritesNowInLocalTimeWithoutTerminators) {
    Rows<char const*, void (*)(char*), char const*> const rows = {
        {"<+14>-14", getdatestr_, "%d-%^b-%y"},
        {"<-11:30>11:30", gettimestr_, "%T"},
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
        tzset();
        std::string want(text, strftime(text, 40, format, std::localtime(&now)));
        if (want.back() != '\n') want.resize(sizeof out - 1, '#');
        EXPECT_EQ(want, out) << rules;
    }
}

TEST(CpuTime, IsTicksOverSixty) {
    struct tms before = {}, after = {};
    do times(&before);
    while (before.tms_utime < 2 || before.tms_stime < 2);
    float const used = getcputime() * 60;
    times(&after);
    EXPECT_GE(used, static_cast<float>(before.tms_utime + before.tms_stime) - 0.1F);
    EXPECT_LE(used, static_cast<float>(after.tms_utime + after.tms_stime) + 0.1F);
}
