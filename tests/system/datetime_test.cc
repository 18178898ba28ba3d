#include "system/datetime.h"

#include "tests/support/test.h"

// Reads fields that are given in each of the forms; what time_t cannot hold is to be -1.
static void Check(char const* rules, int east_minutes, int y, int mo, int d, int h, int mi, int s) {
    setenv("TZ", rules, 1);
    std::tm fields = {s, mi, h, d, mo - 1, y - 1900, 0, 0, 0, 0, nullptr};
    long long want = timegm(&fields);
    if (want != -1) want -= east_minutes * 60;
    if (want != static_cast<std::time_t>(want)) want = -1;
    DateTime const made(y, mo, d, h, mi, s);
    char text[80];
    for (char const* form : {"%3$d.%2$d.%1$d %4$d:%5$d:%6$d", "%2$d/%3$d/%1$d %4$d:%5$d:%6$d",
                             "%1$d-%2$02d-%3$02d.%4$d:%5$d:%6$d", "%d%02d%02d%02d%02d%02d"}) {
        std::snprintf(text, sizeof text, form, y, mo, d, h, mi, s);
        EXPECT_EQ(want, DateTime(text).Seconds()) << rules << ' ' << text;
    }
    EXPECT_EQ(want, made.Seconds()) << text;
    EXPECT_TRUE(want == -1 || made.Format("%Y%m%d%H%M%S", 1) == text) << rules << ' ' << text;
}

TEST(DateTime, TakesTimesInManyZones) {
    char const* const est = "EST5EDT,M3.2.0,M11.1.0";
    // Around changes of the clock; the last second of 32 bits and past it.
    Rows<char const*, int, int, int, int, int, int, int> const rows = {
        {est, -300, 2026, 3, 8, 1, 59, 59},
        {est, -240, 2026, 3, 8, 3, 0, 0},
        {est, -300, 2038, 1, 18, 22, 14, 7},
        {est, -300, 2038, 1, 18, 22, 14, 8}};
    for (auto const& row : rows) std::apply(Check, row);
    std::mt19937 random(35);
    auto const below = [&](unsigned n) { return static_cast<int>(random() % n); };
    for (int i = 0; i < 2000 && !HasFailure(); ++i) {
        int const zone = below(4), east[] = {0, 330, -660, 840};
        char const* const rules[] = {"UTC0", "IST-5:30", "<-11>11", "<+14>-14"};
        Check(rules[zone], east[zone], i % 2 ? 1901 + below(138) : 1000 + below(9000),
              1 + below(12), 1 + below(28), below(24), below(60), below(60));
    }
}

TEST(DateTime, ReadsTextsToTheirRules) {
    setenv("TZ", "UTC0", 1);
    std::istringstream rows(
        "202611151430=20261115 143000|20261115143005rest=20261115 143005|"
        "2026 11 15 14 30=20261115 143000|20261115143=20261115 140300|"
        "202611151430:45=20261115 143000|15.11.2026.14=20261115 140000|"
        "..15..11.26  14:30:05:9x=20261115 143005|15. 11.26 +14:30=20261115 143000|"
        "11/15/26.9:5=20261115 090500|1.2.37 -1=20370131 230000|1/1/70 0=19700101 000000|"
        "99-1-1 0=19990101 000000|15.11.2026=|:/-.=|15.11 14:30=|x.11.26 14=|15/11.26 14=|"
        "15.11.26 14:30 =|20261115 14:30=|4.-2147483648.26 0=");
    for (std::string row; std::getline(rows, row, '|');) {
        auto const mark = row.find('=');
        DateTime const time(row.substr(0, mark).c_str());
        std::string const got = time.Seconds() == -1 ? "" : time.Format("%Y%m%d %H%M%S", 0).Get();
        EXPECT_EQ(row.substr(mark + 1), got) << row;
    }
}

TEST(DateTime, TimesOfDayAreToday) {
    setenv("TZ", "UTC0", 1);
    std::time_t day, read, made;
    do {  // until it happens in one day
        day = std::time(nullptr) / 86400;
        read = DateTime("8:01:05").Seconds(), made = DateTime(7, 1, 5).Seconds();
    } while (std::time(nullptr) / 86400 != day);
    EXPECT_TRUE(read == day * 86400 + 28865 && made == day * 86400 + 25265) << read << ' ' << made;
}

TEST(DateTime, FormatsUpTo127CharactersAndStreamsInDecimal) {
    setenv("TZ", "CET-1CEST,M3.5.0,M10.5.0/3", 1);
    DateTime time(2026, 7, 5, 1, 2, 3), other(12, 0, 0);
    String_t const most(std::string(127, 'x'));
    EXPECT_STREQ("Sat Jul  4 23:02:03 2026", time.Format(nullptr, 0));
    EXPECT_TRUE(time.Format(most, 1) == most && time.Format(most + "x", 1).IsNull());
    std::stringstream in("1794753000 -1 ff"), out;
    int number = 0;  // in the base of the stream, which stays
    in >> std::hex >> time >> other >> number;
    out << std::hex << time << ' ' << other << ' ' << number;
    EXPECT_EQ(in.str(), out.str());
}
