#include "text/str_number.h"

#include <gtest/gtest.h>

#include <cfloat>
#include <climits>
#include <cmath>
#include <cstring>
#include <map>
#include <random>
#include <string>

namespace {

constexpr double kMicro = 1.000000000000001e-06;

TEST(StrToInt, CountsWhatItReadAndWraps) {
    struct {
        char const* text;
        int count, value;
    } const rows[] = {
        {"  -42abc", 5, -42},         {"+007", 4, 7},
        {"2147483648", 10, INT_MIN},  {"4294967297", 10, 1},
        {"-2147483649", 11, INT_MAX}, {"9999999999999999", 16, 1874919423},
        {"0000000000000001", 16, 1},  {"00000000000000001", 0, 77},  // 17 digits
    };
    for (auto const& row : rows) {
        int value = 77;
        EXPECT_EQ(row.count, str_toint(row.text, &value)) << row.text;
        EXPECT_EQ(row.value, value) << row.text;
    }
    int value = 7;
    for (char const* text : {static_cast<char const*>(nullptr), "", " \t\n", "-", "- 5", "x5"})
        EXPECT_EQ(0, str_toint(text, &value)) << text;
    EXPECT_EQ(7, value);
    EXPECT_EQ(-12, str_tolong(" -12x"));
}

TEST(StrToNumber, KnowsItsLettersAndNoOtherCharacter) {
    std::map<char, double> any_case, exact_case;
    std::size_t i = 0;
    for (double factor : {1e-18, 1e-15, 1e-12, 1e-9, kMicro, 1e-3, 1e3, 1e9, 1e12}) {
        any_case["AFPNUMKGT"[i]] = any_case["afpnumkgt"[i]] = factor;
        ++i;
    }
    i = 0;
    for (double factor : {1e-24, 1e-21, 1e-18, 1e-15, 1e-12, 1e-9, kMicro, 1e-3, 0.01, 1e3, 1e3,
                          1e6, 1e9, 1e12, 1e15, 1e21, 1e24})
        exact_case["yzafpnum%kKMGTPZY"[i++]] = factor;
    for (int byte = 1; byte < 256; ++byte) {
        auto const c = static_cast<char>(byte);
        if (std::strchr(".DdEe0123456789", c)) continue;
        std::string const text = std::string("2") + c;
        double value = 0;
        float narrow = 0;
        bool const any = any_case.count(c), exact = exact_case.count(c);
        ASSERT_EQ(1 + any, str_todouble(text.c_str(), &value)) << text;
        ASSERT_EQ(any ? 2 * any_case[c] : 2, value) << text;
        ASSERT_EQ(1 + any, str_tofloat(text.c_str(), &narrow)) << text;
        ASSERT_EQ(any ? 2 * static_cast<float>(any_case[c]) : 2, narrow) << text;
        ASSERT_EQ(1 + exact, str_ctodouble(text.c_str(), &value)) << text;
        ASSERT_EQ(exact ? 2 * exact_case[c] : 2, value) << text;
    }
}

TEST(StrToNumber, CountsWhatItRead) {
    struct {
        char const* text;
        int count;
        double value;
    } const rows[] = {
        {"  -1.5K", 7, -1500},
        {"5.K", 3, 5000},
        {".5k", 3, 500},
        {"+4.7 K", 4, 4.7},
        {"1K23", 2, 1000},
        {"1d+3x", 4, 1e3},
        {"1e -2", 5, 0.1 * 0.1},  // blanks may stand before an exponent
        {"1E999", 5, HUGE_VAL},
        {"-1E-2147483648", 14, -0.0},
        {" -min", 5, -DBL_MIN},
        {"12345678901234567890123456789012", 32, 12345678901234567890123456789012.0},
        {"123456789012345678901234567890123.5", 35, 0.5},  // a part of 33 digits counts as none
        {"2.123456789012345678901234567890123k", 36, 2000},
    };
    for (auto const& row : rows) {
        double value = 7, exact_case = 7;
        EXPECT_EQ(row.count, str_todouble(row.text, &value)) << row.text;
        EXPECT_EQ(row.count, str_ctodouble(row.text, &exact_case)) << row.text;
        EXPECT_DOUBLE_EQ(row.value, value) << row.text;
        EXPECT_DOUBLE_EQ(row.value, exact_case) << row.text;
        EXPECT_EQ(std::signbit(row.value), std::signbit(value)) << row.text;
    }
    double value = 0;
    EXPECT_EQ(5, str_todouble("10mEg", &value));
    EXPECT_EQ(1e7, value);
    for (char const* text : {"1me", "1mil"}) {
        EXPECT_EQ(2, str_todouble(text, &value)) << text;
        EXPECT_EQ(1e-3, value) << text;
    }
    EXPECT_EQ(5, str_todouble("0e999", &value));  // 0 times an infinite factor
    EXPECT_TRUE(std::isnan(value));
    float narrow = 0;
    EXPECT_EQ(3, str_tofloat("inf", &narrow));
    EXPECT_EQ(FLT_MAX, narrow);
    EXPECT_EQ(4, str_tofloat_("-min", &narrow));
    EXPECT_EQ(-FLT_MIN, narrow);
}

TEST(StrToNumber, LeavesTheOutputAloneWithoutANumber) {
    for (char const* text :
         {static_cast<char const*>(nullptr), "", " ", ".", ".K", "-", "- 1", "--1", "K", "inf ",
          "INF", "1E", "1ex", "1E12345678901234567", "123456789012345678901234567890123"}) {
        double value = 7;
        float narrow = 7;
        EXPECT_EQ(0, str_todouble(text, &value)) << text;
        EXPECT_EQ(0, str_ctodouble(text, &value)) << text;
        EXPECT_EQ(0, str_tofloat(text, &narrow)) << text;
        EXPECT_EQ(7, value + narrow - 7) << text;
    }
}

// The definition, step by step: a chain of fused multiply-adds from the last digit backwards.
template <class Real>
Real ChainValue(std::string const& digits) {
    Real value = static_cast<Real>(digits.back() - '0'), power = 1;
    for (auto i = digits.size() - 1; i-- > 0;) {
        power *= 10;
        value = std::fma(static_cast<Real>(digits[i] - '0'), power, value);
    }
    return value;
}

bool IsPart(std::string const& digits) { return !digits.empty() && digits.size() <= 32; }

template <class Real>
Real DefinedValue(std::string const& whole, std::string const& fraction, Real factor) {
    Real value = IsPart(whole) ? ChainValue<Real>(whole) : 0;
    if (IsPart(fraction)) {
        Real power = 10;
        for (auto i = fraction.size(); i > 1; --i) power *= 10;
        value += ChainValue<Real>(fraction) / power;
    }
    return value * factor;
}

template <class Real>
Real DefinedPower(int exponent) {
    Real power = 1;
    for (int i = 0; i < std::abs(exponent); ++i)
        power *= exponent < 0 ? static_cast<Real>(0.1) : 10;
    return power;
}

std::string RandomDigits(std::mt19937& random) {
    std::string digits(random() % 4 ? random() % 12 : random() % 35, '0');
    auto const zeros = random() % 3 ? 0 : random() % (digits.size() + 1);
    for (auto i = zeros; i < digits.size(); ++i) digits[i] = static_cast<char>('0' + random() % 10);
    return digits;
}

template <class Real>
void ExpectSameBits(Real want, int (*convert)(char const*, Real*), std::string const& text) {
    Real value = 77;
    ASSERT_EQ(static_cast<int>(text.size()), convert(text.c_str(), &value)) << text;
    ASSERT_EQ(0, std::memcmp(&want, &value, sizeof value))
        << text << ": " << value << ", not " << want;
}

TEST(StrToNumber, IsBitForBitTheDefinedChain) {
    std::mt19937 random(1);
    for (int i = 0; i < 100000; ++i) {
        std::string const whole = RandomDigits(random), fraction = RandomDigits(random);
        bool const is_number = IsPart(whole) || IsPart(fraction);
        std::string text = whole + (fraction.empty() ? "" : "." + fraction);
        double value = 77;
        if (!is_number) {
            ASSERT_EQ(0, str_todouble(text.c_str(), &value)) << text;
            continue;
        }
        ExpectSameBits(DefinedValue(whole, fraction, 1.0), str_todouble, text);
        ExpectSameBits(DefinedValue(whole, fraction, 1.0f), str_tofloat, text);
        ExpectSameBits(DefinedValue(whole, fraction, 1e-9), str_ctodouble, text + "n");
        ExpectSameBits(DefinedValue(whole, fraction, 1e-15f), str_tofloat, text + "F");
        int const exponent = static_cast<int>(random() % 100) - 50;
        text += "e" + std::to_string(exponent);
        ExpectSameBits(DefinedValue(whole, fraction, DefinedPower<double>(exponent)), str_ctodouble,
                       text);
        if (exponent > 38) continue;  // an infinite factor
        ExpectSameBits(DefinedValue(whole, fraction, DefinedPower<float>(exponent)), str_tofloat,
                       text);
    }
}

}  // namespace
