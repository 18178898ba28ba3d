#include "text/urlcode.h"

#include <cstdlib>
#include <cstring>
#include <string>
#include <string_view>

namespace {

constexpr char kPlain[] = "ABCDEFGHIJKLMNOPQRSTUVWXYZabcdefghijklmnopqrstuvwxyz0123456789*-._";

}  // namespace

String_t UrlEncode(char const* text) {
    if (!text) return String_t();
    std::string coded;
    for (;;) {
        std::size_t const plain = std::strspn(text, kPlain);
        coded.append(text, plain);
        text += plain;
        if (*text == '\0') return String_t(std::string_view(coded));
        auto const byte = static_cast<unsigned char>(*text++);
        coded += {'%', "0123456789abcdef"[byte >> 4], "0123456789abcdef"[byte & 15]};
    }
}

String_t UrlDecode(char const* text) {
    if (!text) return String_t();
    std::string decoded;
    for (;;) {
        std::size_t const plain = std::strcspn(text, "%");
        decoded.append(text, plain);
        text += plain;
        if (*text == '\0') return String_t(std::string_view(decoded));
        ++text;
        std::string const digits(text, strnlen(text, 2));
        char* end = nullptr;
        unsigned long const value = std::strtoul(digits.c_str(), &end, 16);
        bool const is_number = digits.size() == 2 && end != digits.c_str();
        decoded += is_number ? static_cast<char>(value) : '%';
        if (is_number) text += 2;
    }
}
