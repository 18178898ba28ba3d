#include "text/str_integer.h"

#include <charconv>

#include "tests/support/abort_text.h"
#include "tests/support/test.h"

namespace {

// Checks that `write` leaves the text at the end of a buffer and touches nothing else.
template <class Value, class... Radix>
void Check(char* (*write)(char*, unsigned, Value, unsigned, char, Radix...), Value value,
           unsigned width, char fill, Radix... radix) {
    char digits[65];
    int const base = sizeof...(radix) ? (0 + ... + radix) : 10;
    std::string text(digits, std::to_chars(digits, digits + sizeof digits, value, base).ptr);
    if (fill && text.size() < width) text.insert(0, width - text.size(), fill);
    text.insert(0, base == 2 ? "0b" : base == 8 ? "0" : base == 16 ? "0x" : "");
    std::string buffer(100, '#');
    std::string const want = std::string(99 - text.size(), '#') + text + '\0';
    ASSERT_EQ(&buffer[99 - text.size()], write(buffer.data(), 100, value, width, fill, radix...));
    ASSERT_EQ(want, buffer);
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
    EXPECT_EQ(b + 1, str_int2str10(b + 1, 3, -12345, 20, '*'));
    EXPECT_STREQ("#45", b);
    EXPECT_STREQ("ff", str_int2strradix(b + 1, 3, 255, ~0u, '*', 16));
    EXPECT_EQ(b, str_int2str10(b, 0, 7, 0, '\0'));
    EXPECT_EQ('#', b[0]);
}

TEST(StrIntegerDeathTest, OtherRadicesAbort) {
    EXPECT_EXIT(str_longlong2strradix(nullptr, 0, 1, 0, '\0', 10), testing::KilledBySignal(SIGABRT),
                AbortText(""));
}

}  // namespace
