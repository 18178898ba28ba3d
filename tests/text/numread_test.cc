#include "text/numread.h"

#include "tests/support/test.h"

namespace {

struct Row {
    std::string text;
    double value;  // 77: the reader fails and stores nothing
    std::string rest;
};

template <class Reader>
void Check(Reader read, Row const& row) {
    std::stringstream stream(row.text);
    double value = 77;
    EXPECT_EQ(row.value == 77, read(stream, value).fail()) << row.text;
    EXPECT_DOUBLE_EQ(row.value, value) << row.text;
    stream.clear();
    std::ostringstream rest;
    rest << stream.rdbuf();
    EXPECT_EQ(row.rest, rest.str()) << row.text;
}

TEST(GetDouble, ReadsNumbersAndBothTables) {
    // "MEG" and "MIL"; else the last character looked at comes back in upper case, and an "E" or
    // "I" before it is lost. The micro is not that of the text functions.
    Row const any_case[] = {{"2U,", 2e-6, ","},    {"3meg!", 3e6, "!"}, {"3Mil", 7.62e-5, ""},
                            {"3mel", 77, ""},      {"3mig", 77, ""},    {"3mxy", 3e-3, "Xy"},
                            {"3mexy", 3e-3, "Xy"}, {"3mi", 3e-3, ""},   {"5%", 5, "%"}};
    Row const exact_case[] = {{"2U,", 2, "U,"},    {"2u", 2e-6, ""},     {"3meg!", 3e-3, "eg!"},
                              {"3Mil", 3e6, "il"}, {"3mxy", 3e-3, "xy"}, {"5%", 0.05, ""}};
    // Of a word that is no number two characters go, at most those of its line.
    Row const both[] = {{" -1K r", -1e3, " r"}, {"+.5\n", 0.5, "\n"}, {"5.k", 5000, ""},
                        {"4.7 K", 4.7, " K"},   {"3m", 3e-3, ""},     {"1e3x", 1000, "x"},
                        {"1D -2", 0.01, ""},    {"1E+", 1, ""},       {"1e-999", 0, ""},
                        {"inf", 77, "f"},       {"-min", 77, "n"},    {"x\n", 77, "\n"},
                        {"- 1 ", 77, " "},      {"", 77, ""},         {" ", 77, ""},
                        {"-", 77, ""},          {".", 77, ""},        {"1E", 77, ""}};
    // 128 characters count, the point and a supplied 0 among them, and 31 of an exponent.
    std::string const z(126, '0'), e = "1e" + z.substr(98);
    Row const cut[] = {{z + "029 ", 2, " "},   {z + "02.5 ", 2, " "},
                       {z + "0.5 ", 0, " "},   {z + ".56 ", 0.5, " "},
                       {"." + z + "9", 0, ""}, {"." + z.substr(1) + "19", 1e-126, ""},
                       {e + "0022", 100, "2"}, {"1e-" + e.substr(2) + "022", 0.01, "2"}};
    for (auto const& row : any_case) Check(GetDouble, row);
    for (auto const& row : exact_case) Check(GetCDouble, row);
    for (auto const& row : both) Check(GetDouble, row), Check(GetCDouble, row);
    for (auto const& row : cut) Check(GetDouble, row), Check(GetCDouble, row);
}

TEST(GetDouble, KeepsToTheStateOfTheStream) {
    std::istringstream fixed("3mx"), failed("1 2");
    double value = 77;
    failed.setstate(std::ios_base::failbit);
    EXPECT_TRUE(GetCDouble(failed, value).fail());
    EXPECT_EQ(77, value);
    EXPECT_TRUE(GetDouble(fixed, value).bad());  // cannot take the changed character back
    EXPECT_EQ(3 * 1e-3, value);
}

TEST(GetFloat, NarrowsADouble) {
    std::istringstream stream("16777217.5 1e99 -2mX 3P x");  // the X can go back as it is
    float a = 0, b = 0, c = 0, d = 0, untouched = 77;
    GetCFloat(GetFloat(GetFloat(GetFloat(stream, a), b), c).ignore(), d);
    EXPECT_TRUE(stream.good());
    EXPECT_TRUE(GetFloat(stream, untouched).fail());
    EXPECT_EQ(16777218, a);
    EXPECT_EQ(HUGE_VALF, b);
    EXPECT_EQ(static_cast<float>(-2 * 1e-3), c);
    EXPECT_EQ(static_cast<float>(3e15), d);
    EXPECT_EQ(77, untouched);
}

}  // namespace
