#include "text/urlcode.h"

#include <cctype>

#include "tests/support/test.h"

namespace {

TEST(UrlCode, CodesEveryByte) {
    for (int byte = 1; byte < 256; ++byte) {
        char const text[] = {'a', static_cast<char>(byte), '4', '1', '\0'};
        bool const plain = std::isalnum(byte) || std::strchr("*-._", byte);
        char coded[8];
        std::snprintf(coded, sizeof coded, plain ? "a%c41" : "a%%%02x41", byte);
        EXPECT_STREQ(coded, UrlEncode(text));
        EXPECT_STREQ(text, UrlDecode(coded));
    }
    EXPECT_TRUE(UrlEncode(nullptr).IsNull());
}

TEST(UrlCode, DecodesWhatScanfReads) {
    char const* const rows[][2] = {{nullptr, nullptr}, {"a+b%20c", "a+b c"}, {"%4A%4a", "JJ"},
                                   {"%4gx", "\4x"},    {"% 7x", "\7x"},      {"%-1", "\xff"},
                                   {"a%4", "a%4"},     {"%%41", "%A"},       {"a%00b", "a"}};
    for (auto const& [coded, want] : rows) EXPECT_STREQ(want, UrlDecode(coded)) << coded;
}

}  // namespace
