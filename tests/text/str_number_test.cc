// Numbers in texts and in streams.
#include "text/str_number.h"

#include <cctype>
#include <cfloat>
#include <iomanip>

#include "tests/support/test.h"
#include "text/numread.h"

namespace {

// The value that `convert` makes of `text`; 77 when it reads nothing, else `count` characters.
template <class Real>
Real ValueOf(char const* text, int count, int (*convert)(char const*, Real*)) {
    Real value = 77;
    EXPECT_EQ(count, convert(text, &value)) << text;
    return value;
}

TEST(StrToInt, CountsWhatItReadAndWraps) {
    EXPECT_EQ(-42, ValueOf("  -42abc", 5, str_toint));
    EXPECT_EQ(INT_MAX, ValueOf("-2147483649", 11, str_toint));
    EXPECT_EQ(1874919423, ValueOf("9999999999999999", 16, str_toint));
    for (char const* text : {"00000000000000001", " \t\n", "- 5"})
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
        auto const i = any_letters.find(upper), j = exact_letters.find(c);
        double const any = i < 9 ? 2 * any_factors[i] : 2,
                     exact = j < 17 ? 2 * exact_factors[j] : 2;
        ASSERT_EQ(any, ValueOf(text, 1 + (i < 9), str_todouble));
        ASSERT_EQ(exact, ValueOf(text, 1 + (j < 17), str_ctodouble));
    }
    EXPECT_EQ(2e-3, ValueOf("2mil", 2, str_todouble));
    EXPECT_EQ(1e7, ValueOf("10mEg", 5, str_todouble));
}

TEST(StrToNumber, CountsWhatItReadAndElseLeavesTheOutputAlone) {
    Rows<char const*, int, double> const rows = {{"  -1.5K", 7, -1500},  {"+4.7 K", 4, 4.7},
                                                 {"1d+3x", 4, 1e3},      {"1e -2", 5, 0.01},
                                                 {"1E999", 5, HUGE_VAL}, {"1E-2147483648", 13, 0}};
    for (auto const& [text, count, value] : rows)
        for (auto* const convert : {str_todouble, str_ctodouble})
            EXPECT_DOUBLE_EQ(value, ValueOf(text, count, convert)) << text;
    for (char const* text : {"-", "- 1", ".K", "inf ", "INF", "1ex", "1E10000000000000000"})
        for (auto* const convert : {str_todouble, str_ctodouble})
            EXPECT_EQ(77, ValueOf(text, 0, convert));
    EXPECT_EQ(DBL_MAX, ValueOf("+inf", 4, str_todouble));
    EXPECT_EQ(-FLT_MIN, ValueOf(" -min", 5, str_tofloat_));
    EXPECT_TRUE(std::signbit(ValueOf("-0", 2, str_todouble)));
    EXPECT_TRUE(std::isnan(ValueOf("0e999", 5, str_todouble)));  // 0 times an infinite factor
}

template <class Real>
Real Product(Real base, std::size_t count) {
    return count == 0 ? 1 : Product(base, count - 1) * base;
}

// The definition: a chain of fused multiply-adds from the last digit backwards.
template <class Real>
Real ChainValue(std::string const& digits) {
    Real value = 0, power = 1;
    for (auto i = digits.size(); i-- > 0; power *= 10)
        value = std::fma(static_cast<Real>(digits[i] - '0'), power, value);
    return value;
}

// Checks the bits that `convert` makes of the two runs of digits with a suffix of value `factor`.
template <class Real>
void Check(std::string const& whole, std::string const& fraction, std::string const& suffix,
           Real factor, int (*convert)(char const*, Real*)) {
    bool const front = !whole.empty() && whole.size() <= 32,
               back = !fraction.empty() && fraction.size() <= 32;
    Real want = front ? ChainValue<Real>(whole) : 0;
    if (back) want += ChainValue<Real>(fraction) / Product<Real>(10, fraction.size());
    want = front || back ? want * factor : 77;
    std::string const text = whole + '.' + fraction + suffix;
    Real const value =
        ValueOf(text.c_str(), front || back ? static_cast<int>(text.size()) : 0, convert);
    ASSERT_EQ(0, std::memcmp(&want, &value, sizeof value)) << text << ": " << value;
}

TEST(StrToNumber, IsBitForBitTheDefinedChain) {
    std::mt19937 random(1);
    for (int i = 0; i < 100000; ++i) {
        unsigned const longest = random() % 4 ? 11 : 34, e = random() % 50;
        std::string const whole = RandomText(random, longest, "00123456789"),
                          fraction = RandomText(random, longest, "00123456789"),
                          digits = std::to_string(e);
        Check(whole, fraction, "", 1.0, str_todouble);
        Check(whole, fraction, "F", 1e-15f, str_tofloat);
        Check(whole, fraction, "e-" + digits, Product(0.1, e), str_ctodouble);
        Check(whole, fraction, "e-" + digits, Product(0.1f, e), str_tofloat);
        Check(whole, fraction, "e" + digits, Product(10.0, e), str_todouble);
    }
}

// The value and the rest of the stream; 77 when the reader fails and stores nothing.
template <class Reader>
std::string Read(Reader read, std::string const& text) {
    std::stringstream stream(text), shown;
    double value = 77;
    bool const failed = read(stream, value).fail();
    EXPECT_EQ(failed, value == 77) << text;
    stream.clear();
    shown << std::setprecision(15) << value << '|';
    if (stream.peek() != EOF) shown << stream.rdbuf();
    return shown.str();
}

TEST(GetDouble, ReadsNumbersAndBothTables) {
    // "MEG" and "MIL"; else the last character looked at comes back in upper case, and an "E" or
    // "I" before it is lost. The micro is not that of the text functions.
    char const* const any_case[][2] = {
        {"2U,", "2e-06|,"},   {"3meg!", "3000000|!"}, {"3Mil", "7.62e-05|"}, {"3mel", "77|"},
        {"3mxy", "0.003|Xy"}, {"3mexy", "0.003|Xy"},  {"5%", "5|%"}};
    char const* const exact_case[][2] = {
        {"2u", "2e-06|"}, {"3meg!", "0.003|eg!"}, {"3Mil", "3000000|il"}, {"5%", "0.05|"}};
    // Of a word that is no number two characters go, at most those of its line.
    char const* const both[][2] = {{" -1K r", "-1000| r"}, {"+.5\n", "0.5|\n"}, {"5.k", "5000|"},
                                   {"4.7 K", "4.7| K"},    {"1D -2", "0.01|"},  {"1E+", "1|"},
                                   {"1e-999", "0|"},       {"-min", "77|n"},    {"x\n", "77|\n"},
                                   {".", "77|"},           {"1E", "77|"}};
    for (auto const& [text, want] : any_case) EXPECT_EQ(want, Read(GetDouble, text)) << text;
    for (auto const& [text, want] : exact_case) EXPECT_EQ(want, Read(GetCDouble, text)) << text;
    for (auto* const read : {GetDouble, GetCDouble}) {
        for (auto const& [text, want] : both) EXPECT_EQ(want, Read(read, text)) << text;
        // 128 characters count, the point and a supplied 0 among them, and 31 of an exponent.
        std::string const z(126, '0'), e = z.substr(98);
        EXPECT_EQ("2| 2| 0.5|", Read(read, z + "029") + ' ' + Read(read, z + "02.5") + ' ' +
                                    Read(read, z + ".56"));
        EXPECT_EQ("100|2 0.01|2",
                  Read(read, "1e" + e + "0022") + ' ' + Read(read, "1e-" + e + "022"));
    }
}

TEST(GetDouble, KeepsToTheStateOfTheStream) {
    std::istringstream fixed("3mx"), failed("1 2"), narrow("16777217.5 1e99 x");
    double value = 77;
    failed.setstate(std::ios_base::failbit);
    EXPECT_TRUE(GetCDouble(failed, value).fail() && value == 77);
    EXPECT_TRUE(GetDouble(fixed, value).bad() && value == 3e-3);  // cannot put back the "X"
    float a = 0, b = 0;
    EXPECT_TRUE(GetCFloat(GetFloat(narrow, a), b) && a == 16777218 && b == HUGE_VALF);
    EXPECT_TRUE(GetFloat(narrow, a).fail() && a == 16777218);
}

}  // namespace
