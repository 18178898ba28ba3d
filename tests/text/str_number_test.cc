#include "text/str_number.h"

#include <cctype>
#include <cfloat>

#include "tests/support/test.h"

namespace {

// The value that `convert` makes of `text`; 77 when it reads nothing, else `count` characters.
template <class Real>
Real ValueOf(char const* text, int count, int (*convert)(char const*, Real*)) {
    Real value = 77;
    EXPECT_EQ(count, convert(text, &value)) << text;
    return value;
}

TEST(StrToInt, CountsWhatItReadAndWraps) {
    Rows<char const*, int, int> const rows = {
        {"  -42abc", 5, -42},         {"+007", 4, 7},
        {"4294967297", 10, 1},        {"2147483648", 10, INT_MIN},
        {"-2147483649", 11, INT_MAX}, {"9999999999999999", 16, 1874919423}};
    for (auto const& [text, count, value] : rows) EXPECT_EQ(value, ValueOf(text, count, str_toint));
    for (char const* text : {"00000000000000001", "", " \t\n", "-", "- 5", "x5"})
        EXPECT_EQ(77, ValueOf(text, 0, str_toint));
    EXPECT_EQ(0, str_toint(nullptr, nullptr) + str_tofloat(nullptr, nullptr));
    EXPECT_EQ(-12, str_tolong(" -12x"));
}

TEST(StrToNumber, KnowsItsLettersAndNoOtherCharacter) {
    constexpr double micro = 1.000000000000001e-06;
    std::string const any_letters = "AFPNUMKGT", exact_letters = "yzafpnum%kKMGTPZY";
    double const any_factors[] = {1e-18, 1e-15, 1e-12, 1e-9, micro, 1e-3, 1e3, 1e9, 1e12};
    double const exact_factors[] = {1e-24, 1e-21, 1e-18, 1e-15, 1e-12, 1e-9, micro, 1e-3, 0.01,
                                    1e3,   1e3,   1e6,   1e9,   1e12,  1e15, 1e21,  1e24};
    for (int byte = 1; byte < 256; ++byte) {
        auto const c = static_cast<char>(byte), upper = static_cast<char>(std::toupper(byte));
        if (std::strchr(".DdEe0123456789", c)) continue;
        char const text[] = {'2', c, '\0'};
        auto const any = any_letters.find(upper), exact = exact_letters.find(c);
        bool const has_any = any != std::string::npos, has_exact = exact != std::string::npos;
        double const factor = has_any ? any_factors[any] : 1;
        ASSERT_EQ(2 * factor, ValueOf(text, 1 + has_any, str_todouble));
        ASSERT_EQ(has_exact ? 2 * exact_factors[exact] : 2,
                  ValueOf(text, 1 + has_exact, str_ctodouble));
    }
    EXPECT_EQ(2e-3, ValueOf("2mil", 2, str_todouble));
    EXPECT_EQ(1e7, ValueOf("10mEg", 5, str_todouble));
}

TEST(StrToNumber, CountsWhatItReadAndElseLeavesTheOutputAlone) {
    Rows<char const*, int, double> const rows = {
        {"  -1.5K", 7, -1500}, {"+4.7 K", 4, 4.7},     {"1d+3x", 4, 1e3},
        {"1e -2", 5, 0.01},    {"1E999", 5, HUGE_VAL}, {"-1E-2147483648", 14, -0.0}};
    for (auto const& [text, count, value] : rows) {
        double const got = ValueOf(text, count, str_todouble);
        EXPECT_DOUBLE_EQ(value, got) << text;
        EXPECT_EQ(std::signbit(value), std::signbit(got)) << text;
        EXPECT_DOUBLE_EQ(value, ValueOf(text, count, str_ctodouble));
        EXPECT_FLOAT_EQ(static_cast<float>(value), ValueOf(text, count, str_tofloat_));
    }
    for (char const* text : {"-", "- 1", ".K", "inf ", "INF", "1ex", "1E10000000000000000"})
        for (auto* const convert : {str_todouble, str_ctodouble})
            EXPECT_EQ(77, ValueOf(text, 0, convert));
    EXPECT_EQ(DBL_MAX, ValueOf("+inf", 4, str_todouble));
    EXPECT_EQ(-DBL_MIN, ValueOf(" -min", 5, str_ctodouble));
    EXPECT_EQ(FLT_MAX, ValueOf("inf", 3, str_tofloat));
    EXPECT_EQ(-FLT_MIN, ValueOf("-min", 4, str_tofloat));
    EXPECT_TRUE(std::isnan(ValueOf("0e999", 5, str_todouble)));  // 0 times an infinite factor
}

// The definition, step by step: a chain of fused multiply-adds from the last digit backwards.
template <class Real>
Real ChainValue(std::string const& digits) {
    Real value = static_cast<Real>(digits.back() - '0'), power = 1;
    for (auto i = digits.size() - 1; i-- > 0;)
        value = std::fma(static_cast<Real>(digits[i] - '0'), power *= 10, value);
    return value;
}

template <class Real>
Real Product(Real base, int count) {
    Real product = 1;
    while (count-- > 0) product *= base;
    return product;
}

// Checks the bits that `convert` makes of the two runs of digits with a suffix of value `factor`.
template <class Real>
void Check(std::string const& whole, std::string const& fraction, std::string const& suffix,
           Real factor, int (*convert)(char const*, Real*)) {
    auto const is_part = [](std::string const& digits) {
        return !digits.empty() && digits.size() <= 32;
    };
    Real want = is_part(whole) ? ChainValue<Real>(whole) : 0;
    if (is_part(fraction))
        want += ChainValue<Real>(fraction) / Product<Real>(10, static_cast<int>(fraction.size()));
    want *= factor;
    std::string const text = whole + '.' + fraction + suffix;
    bool const any = is_part(whole) || is_part(fraction);
    Real const value = ValueOf(text.c_str(), any ? static_cast<int>(text.size()) : 0, convert);
    if (!any) want = 77;
    ASSERT_EQ(0, std::memcmp(&want, &value, sizeof value))
        << text << ": " << value << ", not " << want;
}

TEST(StrToNumber, IsBitForBitTheDefinedChain) {
    std::mt19937 random(1);
    for (int i = 0; i < 100000; ++i) {
        unsigned const longest = random() % 4 ? 11 : 34;
        std::string const whole = RandomText(random, longest, "00123456789"),
                          fraction = RandomText(random, longest, "00123456789");
        Check(whole, fraction, "", 1.0, str_todouble);
        Check(whole, fraction, "F", 1e-15f, str_tofloat);
        int const e = static_cast<int>(random() % 89) - 50;
        std::string const suffix = "e" + std::to_string(e);
        Check(whole, fraction, suffix, Product(e < 0 ? 0.1 : 10, std::abs(e)), str_ctodouble);
        Check(whole, fraction, suffix, Product(e < 0 ? 0.1f : 10, std::abs(e)), str_tofloat);
    }
}

}  // namespace
