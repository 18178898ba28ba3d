#include "text/str_integer.h"

#include <charconv>

#include "tests/support/test.h"
#include "text/numeric.h"
#include "text/str_engineering.h"

// Checks that `write` leaves the end of the text at that of the buffer and touches nothing else.
template <class Value, class... Radix>
static void Check(char* (*write)(char*, unsigned, Value, unsigned, char, Radix...),
                  std::uint64_t bits, unsigned size, unsigned width, char fill, Radix... radix) {
    char digits[65];
    int const base = sizeof...(radix) ? (0 + ... + radix) : 10;
    auto const value = static_cast<Value>(bits);
    std::string text(digits, std::to_chars(digits, digits + sizeof digits, value, base).ptr);
    if (fill && text.size() < width) text.insert(0, width - text.size(), fill);
    text.insert(0, base == 2 ? "0b" : base == 8 ? "0" : base == 16 ? "0x" : "");
    text.erase(0, std::max<std::size_t>(text.size() + 1, size) - size);
    std::string buffer(100, '#'), want = buffer;
    std::size_t const at = size ? size - 1 - text.size() : 0;
    if (size) want.replace(at, text.size() + 1, text + '\0');
    ASSERT_EQ(&buffer[at], write(buffer.data(), size, value, width, fill, radix...));
    ASSERT_EQ(want, buffer);
}

TEST(StrInteger, EveryFormAgreesWithAModel) {
    std::mt19937_64 random(5);
    for (int i = 0; i < 20000; ++i) {
        std::uint64_t const bits = i < 64 ? ~std::uint64_t{0} << i : random() >> random() % 64;
        unsigned const size = i % 3 ? 100 : random() % 30, width = random() % 30;
        char const fill = "\0*0"[random() % 3];
        auto const check = [&](auto... write) { (Check(write, bits, size, width, fill), ...); };
        check(str_int2str10, str_uint2str10, str_long2str10, str_ulong2str10, str_longlong2str10,
              str_ulonglong2str10);
        int const radix = 1 << "\1\3\4"[i % 3];
        Check(str_int2strradix, bits, size, width, fill, radix);
        Check(str_long2strradix, bits, size, width, fill, radix);
        Check(str_longlong2strradix, bits, size, width, fill, radix);
    }
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
    EXPECT_STREQ("2K20", str_tosc(2200));
}
