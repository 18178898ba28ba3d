#include "text/numread.h"

#include <iomanip>

#include "tests/support/test.h"

namespace {

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
        EXPECT_EQ("1e-126|", Read(read, "." + z.substr(1) + "19"));
        EXPECT_EQ("100|2 0.01|2",
                  Read(read, "1e" + e + "0022") + ' ' + Read(read, "1e-" + e + "022"));
    }
}

TEST(GetDouble, KeepsToTheStateOfTheStream) {
    std::istringstream fixed("3mx"), failed("1 2");
    double value = 77;
    failed.setstate(std::ios_base::failbit);
    EXPECT_TRUE(GetCDouble(failed, value).fail() && value == 77);
    EXPECT_TRUE(GetDouble(fixed, value).bad());  // cannot take the changed character back
    EXPECT_EQ(3 * 1e-3, value);
}

TEST(GetFloat, NarrowsADouble) {
    std::istringstream stream("16777217.5 1e99 -2mX 3P x");  // the X can go back as it is
    float a = 0, b = 0, c = 0, d = 0, untouched = 77;
    GetCFloat(GetFloat(GetFloat(GetFloat(stream, a), b), c).ignore(), d);
    EXPECT_TRUE(stream.good());
    EXPECT_TRUE(GetFloat(stream, untouched).fail());
    EXPECT_TRUE(a == 16777218 && b == HUGE_VALF && untouched == 77);
    EXPECT_TRUE(c == static_cast<float>(-2 * 1e-3) && d == static_cast<float>(3e15));
}

}  // namespace
