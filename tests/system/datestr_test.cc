#include "system/datestr.h"

#include <sys/times.h>

#include "tests/support/test.h"

TEST(DateStr, WritesTheFixedForms) {
    char text[55];
    for (auto const& [day, month, year, second, want] :
         {std::tuple(5, 10, 126, 59, "05-NOV-26 14:03:59"),
          {INT_MIN, -1, -1, 7, "-2147483648-JAN-99 14:03:07"}}) {
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
        {"<+14>-14", getdatestr_, "%d-%^b-%y##"},
        {"<-11:30>11:30", gettimestr_, "%T###"},
        {"<-12>12", [](char* dst) { EXPECT_EQ(dst, getctime(dst)); }, "%a %b %e %T %Y\n"}};
    for (auto const& [rules, write, format] : rows) {
        setenv("TZ", rules, 1);
        char out[40], text[40];
        time_t now;
        do {  // until it happens in one second
            now = time(nullptr);
            std::strcpy(out, "###########");
            write(out);
        } while (time(nullptr) != now);
        tzset();
        strftime(text, sizeof text, format, std::localtime(&now));
        EXPECT_STREQ(text, out) << rules;
    }
}

TEST(DateStr, CountsTicksOfBothKindsOfProcessorTime) {
    struct tms used = {};
    while (used.tms_utime < 12 || used.tms_stime < 12) times(&used);
    EXPECT_NEAR((used.tms_utime + used.tms_stime) / 60.0, getcputime(), 0.1);
}
