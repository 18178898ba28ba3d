#include "text/str_integer.h"

#include <gtest/gtest.h>

#include <climits>
#include <cstdlib>
#include <functional>
#include <random>
#include <string>

#include "tests/support/abort_text.h"

namespace {

std::string InRadix(std::uint64_t value, unsigned radix) {
    std::string text;
    do text.insert(text.begin(), "0123456789abcdef"[value % radix]);
    while (value /= radix);
    return text;
}

std::string FilledTo(unsigned width, char fill, std::string const& text) {
    return fill && text.size() < width ? std::string(width - text.size(), fill) + text : text;
}

// The text that `write` leaves at the end of a buffer, after checks of everything around it.
std::string Written(std::function<char*(char*, unsigned)> const& write) {
    constexpr unsigned size = 100;
    std::string buffer(size, '#');
    char* const text = write(buffer.data(), size);
    EXPECT_EQ('\0', buffer[size - 1]);
    EXPECT_EQ(std::string(text - buffer.data(), '#'), buffer.substr(0, text - buffer.data()));
    EXPECT_EQ(text + std::string(text).size(), &buffer[size - 1]);
    return text;
}

TEST(StrInteger, EveryFormAgreesWithAModel) {
    std::mt19937_64 random(5);
    for (int i = 0; i < 20000; ++i) {
        std::uint64_t const bits = i < 64    ? ~std::uint64_t{0} << i
                                   : i < 128 ? std::uint64_t{1} << (i - 64)
                                             : random() >> random() % 64;
        unsigned const width = random() % 30;
        char const fill = "\0*0"[random() % 3];
        auto const decimal = [&](auto* write, auto value) {
            ASSERT_EQ(
                FilledTo(width, fill, std::to_string(value)),
                Written([&](char* b, unsigned n) { return write(b, n, value, width, fill); }));
        };
        decimal(str_int2str10, static_cast<int>(bits));
        decimal(str_uint2str10, static_cast<unsigned>(bits));
        decimal(str_long2str10, static_cast<long>(bits));
        decimal(str_ulong2str10, static_cast<unsigned long>(bits));
        decimal(str_longlong2str10, static_cast<std::int64_t>(bits));
        decimal(str_ulonglong2str10, bits);

        int const radix = 1 << "\1\3\4"[i % 3];
        auto const in_radix = [&](auto* write, auto value) {
            std::string const prefix = radix == 2 ? "0b" : radix == 8 ? "0" : "0x";
            std::string const digits = InRadix(value, radix);
            ASSERT_EQ(prefix + FilledTo(width, fill, digits), Written([&](char* b, unsigned n) {
                          return write(b, n, value, width, fill, radix);
                      }));
        };
        in_radix(str_int2strradix, static_cast<unsigned>(bits));
        in_radix(str_long2strradix, static_cast<unsigned long>(bits));
        in_radix(str_longlong2strradix, bits);
    }
}

TEST(StrInteger, PutsTheFillInFrontOfTheSignAndBehindThePrefix) {
    char b[16];
    EXPECT_STREQ("00-42", str_int2str10(b, 16, -42, 5, '0'));
    EXPECT_STREQ("-2147483648", str_int2str10(b, 16, INT_MIN, 0, '\0'));
    EXPECT_STREQ("0x00ff", str_int2strradix(b, 16, 255, 4, '0', 16));
    EXPECT_STREQ("00", str_int2strradix(b, 16, 0, 0, '\0', 8));
}

TEST(StrInteger, LosesTheFrontInABufferThatIsTooShort) {
    char b[5] = "####";
    EXPECT_EQ(b + 1, str_int2str10(b + 1, 3, -12345, 20, '*'));
    EXPECT_STREQ("#45", b);
    EXPECT_STREQ("ff", str_int2strradix(b + 1, 3, 255, ~0u, '*', 16));
    EXPECT_STREQ("", str_int2str10(b + 1, 1, 7, 0, '\0'));
    EXPECT_EQ(b, str_int2str10(b, 0, 7, 0, '\0'));
    EXPECT_EQ('#', b[0]);
}

TEST(StrIntegerDeathTest, OtherRadicesAbort) {
    char b[16];
    for (int radix : {0, 1, 10, 32, -2})
        EXPECT_EXIT(str_longlong2strradix(b, 16, 1, 0, '\0', radix),
                    testing::KilledBySignal(SIGABRT), AbortText(""));
}

}  // namespace
