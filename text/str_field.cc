#include "text/str_field.h"

#include <algorithm>
#include <cctype>
#include <cstddef>
#include <cstring>

namespace {

void ConvertCase(char* field, int const* length, int maximum, int (*convert)(int)) {
    if (!field || !length) return;
    int const count = std::min(*length, maximum);
    for (int i = 0; i < count; ++i)
        field[i] = static_cast<char>(convert(static_cast<unsigned char>(field[i])));
}

}  // namespace

int str_length(char const* field, int len) {
    if (len < 1) return len;
    if (!field) return 0;
    while (len > 0 && field[len - 1] == ' ') --len;
    return len;
}

void str_pad(char const* src, int srclen, char fill, int dstlen, char* dst) {
    if (!dst || dstlen < 1) return;
    auto const room = static_cast<std::size_t>(dstlen);
    int const most = std::min(srclen, dstlen);
    std::size_t const count = src && most > 0 ? strnlen(src, static_cast<std::size_t>(most)) : 0;
    if (count) std::memmove(dst, src, count);
    std::memset(dst + count, fill, room - count);
}

void str_substr(char const* s, int pos, int n, char* dst, int dstlen) {
    bool const inside = s && pos >= 1 && !std::memchr(s, '\0', static_cast<std::size_t>(pos - 1));
    str_pad(inside ? s + pos - 1 : nullptr, n, ' ', dstlen, dst);
}

void str_lshft(char* field, int len, int n) {
    if (!field || len < 1 || n < 1) return;
    auto const shift = static_cast<std::size_t>(std::min(n, len));
    auto const kept = static_cast<std::size_t>(len) - shift;
    std::memmove(field, field + shift, kept);
    std::memset(field + kept, ' ', shift);
}

void str_rshft(char* field, int len, int n) {
    if (!field || len < 1 || n < 1) return;
    auto const shift = static_cast<std::size_t>(std::min(n, len));
    std::memmove(field + shift, field, static_cast<std::size_t>(len) - shift);
    std::memset(field, ' ', shift);
}

void tolower_(char* field, int const* length, int maximum) {
    ConvertCase(field, length, maximum, std::tolower);
}

void toupper_(char* field, int const* length, int maximum) {
    ConvertCase(field, length, maximum, std::toupper);
}
