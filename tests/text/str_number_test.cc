#include "text/str_number.h"

#include "tests/support/test.h"
#include "text/numread.h"

// What `convert` makes of values that were 77, and how many characters it read.
template <class Value>
static std::string Shown(int (*convert)(char const*, Value*),
                         std::vector<char const*> const& texts) {
    std::ostringstream shown;
    shown.precision(16);
    for (char const* text : texts) {
        Value value = 77;
        int const count = convert(text, &value);
        shown << value << ':' << count << ' ';
    }
    return shown.str();
}

TEST(StrToNumber, CountsWhatItReadAndElseLeavesTheOutputAlone) {
    EXPECT_EQ("-42:5 2147483647:11 1874919423:16 77:0 77:0 77:0 77:0 ",
              Shown(str_toint, {"  -42abc", "-2147483649", "9999999999999999", "00000000000000001",
                                " \t\n", "- 5", nullptr}));
    for (auto* const convert : {str_todouble, str_ctodouble}) {
        EXPECT_EQ("-1500:7 4.7:4 1000:4 0.01:5 inf:5 0:13 -0:2 1.000000000000001e-06:2 ",
                  Shown(convert, {"  -1.5K", "+4.7 K", "1d+3x", "1e -2", "1E999", "1E-2147483648",
                                  "-0", "1u"}));
        for (char const* text : {"-", "- 1", ".K", "inf ", "INF", "1ex", "1E10000000000000000"})
            EXPECT_EQ("77:0 ", Shown(convert, {text})) << text;
    }
    EXPECT_EQ("0.002:2 10000000:5 1.797693134862316e+308:4 ",
              Shown(str_todouble, {"2mil", "10mEg", "+inf"}));
    EXPECT_EQ("-1.175494350822288e-38:5 77:0 ", Shown(str_tofloat_, {" -min", nullptr}));
    EXPECT_EQ(-12, str_tolong(" -12x"));
}

TEST(StrToNumber, KnowsItsLettersAndNoOtherCharacter) {
    std::ostringstream any, exact;
    for (int byte = 1; byte < 256; ++byte) {
        char const c = static_cast<char>(byte), text[] = {'1', c, '\0'};
        double value = 0;
        if (std::strchr(".DdEe0123456789", c)) continue;
        if (str_todouble(text, &value) > 1) any << c << value << ' ';
        if (str_ctodouble(text, &value) > 1) exact << c << value << ' ';
    }
    EXPECT_EQ(
        "A1e-18 F1e-15 G1e+09 K1000 M0.001 N1e-09 P1e-12 T1e+12 U1e-06 a1e-18 f1e-15 g1e+09 k1000 "
        "m0.001 n1e-09 p1e-12 t1e+12 u1e-06 ",
        any.str());
    EXPECT_EQ(
        "%0.01 G1e+09 K1000 M1e+06 P1e+15 T1e+12 Y1e+24 Z1e+21 a1e-18 f1e-15 k1000 m0.001 n1e-09 "
        "p1e-12 u1e-06 y1e-24 z1e-21 ",
        exact.str());
}

// Checks the bits that `convert` makes of two runs of digits and a suffix: `base`, `count` times,
// is its factor. A run is a chain of fused multiply-adds from the last digit backwards.
template <class Real>
static void Check(std::string const& whole, std::string const& fraction, std::string const& suffix,
                  Real base, unsigned count, int (*convert)(char const*, Real*)) {
    Real want = 0, factor = 1;
    bool found = false;
    for (auto const* digits : {&whole, &fraction}) {
        if (digits->empty() || digits->size() > 32) continue;
        Real value = 0, power = 1;
        for (auto i = digits->size(); i-- > 0; power *= 10)
            value = std::fma(static_cast<Real>((*digits)[i] - '0'), power, value);
        want += digits == &whole ? value : value / power;
        found = true;
    }
    for (unsigned i = 0; i < count; ++i) factor *= base;
    want = found ? want * factor : 77;
    std::string const text = whole + '.' + fraction + suffix;
    Real value = 77;
    ASSERT_EQ(found ? text.size() : 0U, static_cast<unsigned>(convert(text.c_str(), &value)));
    ASSERT_EQ(0, std::memcmp(&want, &value, sizeof value)) << text << ": " << value;
}

TEST(StrToNumber, IsBitForBitTheDefinedChain) {
    std::mt19937 random(1);
    for (int i = 0; i < 100000; ++i) {
        unsigned const longest = random() % 4 ? 11 : 34, e = random() % 50;
        std::string const whole = RandomText(random, longest, "00123456789"),
                          fraction = RandomText(random, longest, "00123456789"),
                          digits = std::to_string(e);
        Check(whole, fraction, "", 1.0, 1, str_todouble);
        Check(whole, fraction, "F", 1e-15f, 1, str_tofloat);
        Check(whole, fraction, "e-" + digits, 0.1, e, str_ctodouble);
        Check(whole, fraction, "e-" + digits, 0.1f, e, str_tofloat);
        Check(whole, fraction, "e" + digits, 10.0, e, str_todouble);
    }
}

// The values that `read` makes and what it leaves of the streams; 77 when it fails and stores
// nothing.
template <class Reader>
static std::string Read(Reader read, std::vector<std::string> const& texts) {
    std::stringstream shown;
    for (std::string const& text : texts) {
        std::stringstream stream(text);
        double value = 77;
        bool const failed = !read(stream, value);
        EXPECT_EQ(failed, value == 77) << text;
        stream.clear();
        shown << value << '|';
        if (stream.peek() != EOF) shown << stream.rdbuf();
        shown << ' ';
    }
    return shown.str();
}

TEST(GetDouble, ReadsNumbersAndBothTables) {
    // "MEG" and "MIL"; else the last character looked at comes back in upper case, and an "E" or
    // "I" before it is lost. The micro is not that of the text functions.
    EXPECT_EQ("2e-06|, 3e+06|! 7.62e-05| 77| 0.003|Xy 0.003|Xy 5|% ",
              Read(GetDouble, {"2U,", "3meg!", "3Mil", "3mel", "3mxy", "3mexy", "5%"}));
    EXPECT_EQ("2e-06| 0.003|eg! 3e+06|il 0.05| ", Read(GetCDouble, {"2u", "3meg!", "3Mil", "5%"}));
    std::string const z(126, '0'), e(28, '0');
    for (auto* const read : {GetDouble, GetCDouble}) {
        // Of a word that is no number two characters go, at most those of its line.
        EXPECT_EQ("-1000| r 0.5|\n 5000| 4.7| K 0.01| 1| 0| 77|n 77|\n 77| 77| ",
                  Read(read, {" -1K r", "+.5\n", "5.k", "4.7 K", "1D -2", "1E+", "1e-999", "-min",
                              "x\n", ".", "1E"}));
        // 128 characters count, the point and a supplied 0 among them, and 31 of an exponent.
        EXPECT_EQ("2| 2| 0.5| 100|2 0.01|2 ", Read(read, {z + "029", z + "02.5", z + ".56",
                                                          "1e" + e + "0022", "1e-" + e + "022"}));
    }
}

TEST(GetFloat, RoundsToFloatAndSaturates) {
    std::istringstream narrow("16777217.5 1e99");
    float a = 0, b = 0;
    EXPECT_TRUE(GetCFloat(GetFloat(narrow, a), b) && a == 16777218 && b == HUGE_VALF);
}
