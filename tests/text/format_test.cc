#include "text/format.h"

#include <iomanip>
#include <iostream>

#include "tests/support/test.h"
#include "tests/support/texts.h"
#include "text/strfmt.h"

template <class T>
static std::string Printf(std::string const& format, int width, int precision, T value) {
    char buffer[512];
    std::snprintf(buffer, sizeof buffer, format.c_str(), std::max(width, 0), precision, value);
    return buffer;
}

TEST(StrFormat, PrintsAndComplains) {
    std::string const high = std::to_string(ULONG_MAX), nan = ": expected a numeric value\n",
                      far = ": Numerical result out of range\n";
    struct {
        std::string format, args, want, complaints = {};  // args separated by commas, ~ is null
    } const rows[] = {
        {"%%|%d|%+d% d%+s|%hd%lu%Lg|%i%#i", "12abc,1,2,t,1,2,3,010,0x10", "%|12|12t|123|100"},
        {"%5s|%d|%c|%b|%.2s|%d|%s|%c|%f", "~,~,~,~,~,,,,", "(nil)|0|||(n|0|||0.000000"},
        {"%5c|%.0c|%05d|%.d|%.s|%.f", "xy,z,7,0,abc,2.5", "x|z|    7|0||2"},
        {"%-3d|%.3d|%x %d %u %X %d %o %i", "1,2,26,26,10,26,26,8,8", "1  |200|1a 1a a 1A 1A 10 10"},
        {"%E %g %x %e", "1,1e20,10,2", "1.000000E+00 1E+20 a 2.000000e+00"},
        {"%.3d %10f %5d %.1f %5f", "1,1,1,1,1", "001 001.000000     1 1.0   1.0"},
        {R"(\a\b\f\n\r\t\v\\\"\c\x1b34 \xCg \01234 \08)", "", "\a\b\f\n\r\t\v\\\"c4354 12g 834 08"},
        {"%b%s", "1%d\\x41,\\n", "1%d65\\n"},
        {"%*u|%o", high + ',' + high + ',' + high, high + '|' + Printf("%*.*lo", 0, -1, LONG_MAX),
         high + far},
        {"%f|%*s", "-,z,q", "0.000000|q", '-' + nan + 'z' + nan},
        {"%E%d%.99999999999999999999s", "1e999,abc,d", "INF0d",
         "1e999" + far + "abc" + nan + "99999999999999999999" + far},
        {"\\xg", "", "0g", "missing hexadecimal number in escape\n"},
        {"\\q%d\\", "", "q0", "\\q: invalid escape\n\\: invalid escape\n"}};
    for (auto const& row : rows) {
        Texts args(row.args);
        std::ostringstream out;
        testing::internal::CaptureStderr();
        EXPECT_EQ(args.Count(), StrFormat(out, row.format.c_str(), args.Count(), args.Vector()));
        EXPECT_EQ(row.complaints, testing::internal::GetCapturedStderr());
        EXPECT_EQ(row.want, out.str()) << row.format;
    }
}

// Both functions beside snprintf, with fields below 0 for those not given.
template <class T>
static void Compare(std::string const& flag, char conversion, int width, int precision, T value) {
    std::string const format = '%' + flag + "*.*" + conversion;
    std::string want = Printf(format, width, precision, value);
    if (std::is_integral_v<T> && precision >= 0) {
        want = Printf(format, 0, -1, value);
        want.insert(0, static_cast<std::size_t>(std::max(precision - int(want.size()), 0)), '0');
        std::string const blanks(static_cast<std::size_t>(std::max(0, width - precision)), ' ');
        want = flag.empty() ? blanks + want : want + blanks;
    }
    std::ostringstream texts, from_values, from_texts;
    texts << std::setprecision(17) << width << ',' << precision << ',' << value;
    StrFmt(from_values, format.c_str(), width, precision, value);
    ASSERT_EQ(want, from_values.str()) << format << ' ' << texts.str();
    StrFormat(from_texts, format.c_str(), 3, Texts(texts.str()).Vector());
    ASSERT_EQ(want, from_texts.str()) << format << ' ' << texts.str();
}

TEST(StrFormat, AgreesWithSnprintfAsDoesStrFmt) {
    std::mt19937 random(14);
    auto const below = [&](int n) { return static_cast<int>(random() % static_cast<unsigned>(n)); };
    for (int round = 0; round < 10000 && !HasFatalFailure(); ++round) {
        char const* const flag = below(2) ? "-" : "";
        int const width = below(14) - 2, precision = below(14) - 4;
        int const number = static_cast<int>(random()) >> below(32);
        Compare(flag, "di"[below(2)], width, precision, number);
        // texts are read as the platform's long
        Compare(flag, "ouxX"[below(4)], width, precision, number & INT_MAX);
        Compare(flag, "feEgG"[below(5)], width, precision, number / 1024.0);
        Compare(flag, 's', width, precision, std::to_string(number).c_str());
    }
}

TEST(StrFormatDeathTest, UnknownDirectivesAbort) {
    std::string const begin = "%y: invalid directive\n.*text/",
                      end = R"(:[0-9]+: .*print_direc\(.*`0')";
    EXPECT_DEATH(StrFormat(std::cout, "%5.2ly", 0, nullptr), begin + "format\\.cc" + end);
    EXPECT_DEATH(StrFmt(std::cout, "%y"), begin + "strfmt\\.cc" + end);
}
