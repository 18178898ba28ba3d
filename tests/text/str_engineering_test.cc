#include "text/str_engineering.h"

#include <gtest/gtest.h>

#include <cmath>
#include <cstdio>
#include <limits>
#include <random>
#include <string>

#include "text/numeric.h"

namespace {

std::string Text(double x) {
    char buffer[16] = "kept";
    EXPECT_EQ(buffer, str_tosc_r(buffer, x));
    return buffer;
}

TEST(StrToSc, PutsTheLetterInPlaceOfThePoint) {
    struct {
        double x;
        char const* want;
    } const rows[] = {{0, "0_00"},
                      {-0.0, "0_00"},
                      {1, "1_00"},
                      {-0.0047, "-4M70"},
                      {1234, "1K23"},
                      {12345, "12K3"},
                      {123456, "123K"},
                      {4.7e6, "4ME70"},
                      {-999.9e6, "-1000ME"},  // the longest text
                      {9999.7, "10K00"},      // rounds up as it falls
                      {99.99, "100_0"},
                      {0.99999999998, "1_00"},  // counts as a power of ten already
                      {1e-18, "1A00"},
                      {9.99e-19, "kept"},
                      {1e-300, "kept"},
                      {9.999e12, "10T00"},
                      {1e13, "kept"},
                      {std::nan(""), "kept"},
                      {-std::numeric_limits<double>::infinity(), "kept"},
                      {std::numeric_limits<double>::denorm_min(), "kept"}};
    for (auto const& row : rows) EXPECT_EQ(row.want, Text(row.x)) << row.x;
    EXPECT_STREQ("2K20", str_tosc(2200));
}

std::string DefinedText(double x) {
    static char const* const letters[] = {"A", "F", "P", "N", "U", "M", "_", "K", "ME", "G", "T"};
    int const e = static_cast<int>(std::floor(std::log10(std::fabs(x)) + 1e-10));
    if (e < -18 || e > 12) return "kept";
    int const n = mth_round(std::fabs(x) / std::pow(10.0, e) * 100);
    char const *sign = x >= 0 ? "" : "-", *letter = letters[(e + 18) / 3];
    char out[32];
    switch ((e + 18) % 3) {
        case 0:
            std::snprintf(out, sizeof out, "%s%1.1d%s%2.2d", sign, n / 100, letter, n % 100);
            break;
        case 1:
            std::snprintf(out, sizeof out, "%s%2.2d%s%1.1d", sign, n / 10, letter, n % 10);
            break;
        default: std::snprintf(out, sizeof out, "%s%3.3d%s", sign, n, letter);
    }
    return out;
}

TEST(StrToSc, IsTheDefinedTextEverywhere) {
    std::mt19937_64 random(2);
    std::uniform_real_distribution<double> exponent(-18.5, 13.5), nearby(-30, 30);
    for (int i = 0; i < 100000; ++i) {
        double const x = (i % 2 ? -1 : 1) * std::pow(10.0, exponent(random));
        ASSERT_EQ(DefinedText(x), Text(x)) << x;
    }
    for (int e = -19; e <= 13; ++e) {
        double const power = std::pow(10.0, e);
        // Around the power, and around the value where the exponent changes: single steps and wider
        // ones.
        for (double const centre : {power, power * std::pow(10.0, -1e-10)})
            for (int i = 0; i < 3000; ++i) {
                double const ulp = power * std::numeric_limits<double>::epsilon();
                double const x = centre + std::trunc(nearby(random)) * ulp * std::pow(10.0, i % 10);
                ASSERT_EQ(DefinedText(x), Text(x)) << x;
            }
        // Halves of the last digit.
        for (int n = 200; n < 2000; ++n)
            ASSERT_EQ(DefinedText(n * 0.005 * power), Text(n * 0.005 * power)) << n << " e" << e;
    }
}

}  // namespace
