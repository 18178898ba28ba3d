#include "text/str_engineering.h"

#include "tests/support/test.h"
#include "text/numeric.h"

namespace {

std::string Text(double x) {
    char buffer[16] = "kept";
    EXPECT_EQ(buffer, str_tosc_r(buffer, x));
    return buffer;
}

std::string DefinedText(double x) {
    static char const* const letters[] = {"A", "F", "P", "N", "U", "M", "_", "K", "ME", "G", "T"};
    int const e = static_cast<int>(std::floor(std::log10(std::fabs(x)) + 1e-10));
    if (e < -18 || e > 12) return "kept";
    int const n = mth_round(std::fabs(x) / std::pow(10.0, e) * 100);
    int const behind = 2 - (e + 18) % 3, unit = behind == 2 ? 100 : behind == 1 ? 10 : 1;
    char out[40];
    std::snprintf(out, sizeof out, "%s%d%s%.*d", x < 0 ? "-" : "", n / unit, letters[(e + 18) / 3],
                  behind, n % unit);
    return out;
}

TEST(StrToSc, IsTheDefinedTextEverywhere) {
    std::mt19937_64 random(2);
    std::uniform_real_distribution<double> mantissa(0.9, 10), nearby(-30, 30);
    for (int e = -19; e <= 13; ++e) {
        double const power = std::pow(10.0, e), border = power * std::pow(10.0, -1e-10);
        for (int i = 0; i < 3000; ++i) {
            // Around the power and the border of its exponent, any value, halves of the last digit.
            double const step =
                std::trunc(nearby(random)) * power * std::pow(10.0, i % 10) * 0x1p-52;
            for (double x :
                 {power + step, border + step, -mantissa(random) * power, i * 0.005 * power})
                ASSERT_EQ(x == 0 ? "0_00" : DefinedText(x), Text(x)) << x;
        }
    }
    for (double x : {std::nan(""), -HUGE_VAL, 5e-324}) EXPECT_EQ("kept", Text(x));
    EXPECT_EQ("-1000ME 0_00", Text(-999.9e6) + ' ' + Text(-0.0));
    EXPECT_STREQ("2K20", str_tosc(2200));
}

}  // namespace
