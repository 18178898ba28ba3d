// Numbers as texts: integers, and values with a letter for the point.
#include "text/str_integer.h"

#include <charconv>

#include "tests/support/test.h"
#include "text/numeric.h"
#include "text/str_engineering.h"

// Checks that `write` leaves the text at the end of a buffer and touches nothing else.
template <class Value, class... Radix>
static void Check(char* (*write)(char*, unsigned, Value, unsigned, char, Radix...), Value value,
                  unsigned width, char fill, Radix... radix) {
    char digits[65];
    int const base = sizeof...(radix) ? (0 + ... + radix) : 10;
    std::string text(digits, std::to_chars(digits, digits + sizeof digits, value, base).ptr);
    if (fill && text.size() < width) text.insert(0, width - text.size(), fill);
    text.insert(0, base == 2 ? "0b" : base == 8 ? "0" : base == 16 ? "0x" : "");
    std::string buffer(100, '#');
    ASSERT_EQ(&buffer[99 - text.size()], write(buffer.data(), 100, value, width, fill, radix...));
    ASSERT_EQ(std::string(99 - text.size(), '#') + text + '\0', buffer);
}

TEST(StrInteger, EveryFormAgreesWithAModel) {
    std::mt19937_64 random(5);
    for (int i = 0; i < 20000; ++i) {
        std::uint64_t const bits = i < 64 ? ~std::uint64_t{0} << i : random() >> random() % 64;
        unsigned const width = random() % 30;
        char const fill = "\0*0"[random() % 3];
        Check(str_int2str10, static_cast<int>(bits), width, fill);
        Check(str_uint2str10, static_cast<unsigned>(bits), width, fill);
        Check(str_long2str10, static_cast<long>(bits), width, fill);
        Check(str_ulong2str10, static_cast<unsigned long>(bits), width, fill);
        Check(str_longlong2str10, static_cast<std::int64_t>(bits), width, fill);
        Check(str_ulonglong2str10, bits, width, fill);
        int const radix = 1 << "\1\3\4"[i % 3];
        Check(str_int2strradix, static_cast<unsigned>(bits), width, fill, radix);
        Check(str_long2strradix, static_cast<unsigned long>(bits), width, fill, radix);
        Check(str_longlong2strradix, bits, width, fill, radix);
    }
}

TEST(StrInteger, LosesTheFrontInABufferThatIsTooShort) {
    char b[5] = "####";
    EXPECT_STREQ("45", str_int2str10(b + 1, 3, -12345, 20, '*'));
    EXPECT_STREQ("ff", str_int2strradix(b + 1, 3, 255, ~0u, '*', 16));
    EXPECT_EQ('#', *str_int2str10(b, 0, 7, 0, '\0'));
}

static std::string Text(double x) {
    char buffer[16] = "kept";
    EXPECT_EQ(buffer, str_tosc_r(buffer, x));
    return buffer;
}

static std::string DefinedText(double x) {
    static char const* const letters[] = {"A", "F", "P", "N", "U", "M", "_", "K", "ME", "G", "T"};
    int const e = static_cast<int>(std::floor(std::log10(std::fabs(x)) + 1e-10));
    if (e < -18 || e > 12) return "kept";
    std::string digits = std::to_string(mth_round(std::fabs(x) / std::pow(10.0, e) * 100));
    return (x < 0 ? "-" : "") +
           digits.insert(digits.size() - 2 + (e + 18) % 3, letters[(e + 18) / 3]);
}

TEST(StrToSc, IsTheDefinedTextEverywhere) {
    std::mt19937_64 random(2);
    std::uniform_real_distribution<double> mantissa(0.9, 10), nearby(-30, 30);
    for (int e = -19; e <= 13; ++e) {
        double const power = std::pow(10.0, e), border = power * std::pow(10.0, -1e-10);
        for (int i = 0; i < 3000; ++i) {
            // Around the power and the border of its exponent, any value, halves of the last digit.
            double const step = std::trunc(nearby(random)) * std::pow(10.0, e + i % 10) * 0x1p-52;
            for (double x :
                 {power + step, border + step, -mantissa(random) * power, i * 5e-3 * power})
                ASSERT_EQ(x == 0 ? "0_00" : DefinedText(x), Text(x)) << x;
        }
    }
    for (double x : {std::nan(""), -HUGE_VAL, 5e-324}) EXPECT_EQ("kept", Text(x));
    EXPECT_EQ("-1000ME 0_00", Text(-999.9e6) + ' ' + Text(-0.0));
    EXPECT_STREQ("2K20", str_tosc(2200));
}

TEST(StrIntegerDeathTest, OtherRadicesAbort) {
    EXPECT_EXIT(str_longlong2strradix(nullptr, 0, 1, 0, 0, 10), testing::KilledBySignal(SIGABRT),
                "");
}
