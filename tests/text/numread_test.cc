#include "text/numread.h"

#include <gtest/gtest.h>

#include <cmath>
#include <sstream>
#include <string>

namespace {

using Reader = std::istream& (*)(std::istream&, double&);

// What a reader makes of `text`: "fail", or the value and what is left of the text.
std::string Outcome(Reader read, std::string const& text) {
    std::stringstream stream(text);
    double value = 77;
    read(stream, value);
    std::ostringstream outcome;
    outcome.precision(17);
    if (stream.fail()) return value == 77 ? "fail" : "fail, but stored";
    outcome << value << '|';
    stream.clear();
    outcome << stream.rdbuf();
    return outcome.str();
}

std::string Read(double value, std::string const& rest) {
    std::ostringstream text;
    text.precision(17);
    text << value << '|' << rest;
    return text.str();
}

TEST(GetDouble, ReadsNumbersAndBothTables) {
    std::string const digits127(127, '0');
    struct {
        std::string text, any_case, exact_case;
    } const rows[] = {
        {"  -1.5K rest", Read(-1500, " rest"), Read(-1500, " rest")},
        {"+.5\n", Read(0.5, "\n"), Read(0.5, "\n")},
        {"5.k", Read(5000, ""), Read(5000, "")},
        {"4.7 K", Read(4.7, " K"), Read(4.7, " K")},
        {"2u", Read(2 * 1e-6, ""), Read(2 * 1e-6, "")},  // not the micro of the text functions
        {"2U,", Read(2 * 1e-6, ","), Read(2, "U,")},
        {"3meg!", Read(3e6, "!"), Read(3 * 1e-3, "eg!")},
        {"3Mil", Read(3 * 2.54e-5, ""), Read(3e6, "il")},
        {"3mel", "fail", Read(3 * 1e-3, "el")},
        {"3m", Read(3 * 1e-3, ""), Read(3 * 1e-3, "")},
        {"3mxy", Read(3 * 1e-3, "Xy"),
         Read(3 * 1e-3, "xy")},  // the character looked at comes back in upper case
        {"3mexy", Read(3 * 1e-3, "Xy"), Read(3 * 1e-3, "exy")},  // and the one before it is lost
        {"3mi", Read(3 * 1e-3, ""), Read(3 * 1e-3, "i")},
        {"5%", Read(5, "%"), Read(5 * 0.01, "")},
        {"1e3x", Read(1000, "x"), Read(1000, "x")},
        {"1D -2", Read(0.01, ""), Read(0.01, "")},
        {"1E+", Read(1, ""), Read(1, "")},
        {"1e" + std::string(32, '1'), Read(HUGE_VAL, "1"),
         Read(HUGE_VAL, "1")},  // 31 digits at most
        {"1e-999", Read(0, ""), Read(0, "")},
        {digits127 + "19 ", Read(1, " "), Read(1, " ")},   // the 129th digit is dropped
        {digits127 + "1.5 ", Read(1, " "), Read(1, " ")},  // and so is a point
        {digits127 + ".5 ", Read(0, " "), Read(0, " ")},   // the point is the 128th character
        {digits127.substr(1) + ".56 ", Read(0.5, " "), Read(0.5, " ")},
        {"." + digits127.substr(2) + "19", Read(1e-126, ""),
         Read(1e-126, "")},  // with the 0 before the point
    };
    for (auto const& row : rows) {
        EXPECT_EQ(row.any_case, Outcome(GetDouble, row.text)) << row.text;
        EXPECT_EQ(row.exact_case, Outcome(GetCDouble, row.text)) << row.text;
    }
    for (char const* text : {"", "  ", "x", "-", "- 1", ".", ".k", "inf", "min", "1E", "1Ex"}) {
        EXPECT_EQ("fail", Outcome(GetDouble, text)) << text;
        EXPECT_EQ("fail", Outcome(GetCDouble, text)) << text;
    }
}

TEST(GetDouble, StoresTheNumberWhereAStreamCannotTakeTheCharacterBack) {
    std::istringstream stream("3mx");  // its characters cannot be changed
    double value = 0;
    GetDouble(stream, value);
    EXPECT_EQ(3 * 1e-3, value);
    EXPECT_TRUE(stream.bad());
    std::istringstream upper("3mX");
    EXPECT_TRUE(GetDouble(upper, value).good());
}

TEST(GetDouble, LeavesTheTargetAloneOnAFailedStream) {
    std::istringstream stream("1 2");
    stream.setstate(std::ios_base::failbit);
    double value = 77;
    EXPECT_TRUE(GetCDouble(stream, value).fail());
    EXPECT_EQ(77, value);
}

TEST(GetFloat, NarrowsADouble) {
    std::istringstream stream("16777217.5 1e99 -2u 3P x");
    float values[5] = {0, 0, 0, 0, 77};
    GetFloat(stream, values[0]) >> std::ws;
    GetFloat(stream, values[1]);
    GetCFloat(stream, values[2]);
    GetCFloat(stream, values[3]);
    EXPECT_TRUE(stream.good());
    EXPECT_TRUE(GetFloat(stream, values[4]).fail());
    EXPECT_EQ(static_cast<float>(16777217.5), values[0]);
    EXPECT_EQ(HUGE_VALF, values[1]);
    EXPECT_EQ(static_cast<float>(-2 * 1e-6), values[2]);
    EXPECT_EQ(3e15f, values[3]);
    EXPECT_EQ(77, values[4]);
}

}  // namespace
