#include "text/str_text.h"

#include <cstddef>
#include <cstdint>
#include <cstdlib>
#include <cstring>

#include "text/letter_fold.h"

namespace {

char* NewText(std::size_t size) {
    // A size of 0 is that of the longest text plus one, wrapped on a 32-bit target.
    auto* const block = size ? static_cast<char*>(std::malloc(size)) : nullptr;
    if (!block) std::abort();
    return block;
}

// str_icmp over at most `n` characters.
int CompareFolded(char const* a, char const* b, std::size_t n) {
    if (a == b) return 0;
    if (!a) return -1;
    if (!b) return 1;
    for (; n > 0; --n, ++a, ++b) {
        int const difference = korbase_detail::FoldedDifference(*a, *b);
        if (difference != 0 || *a == '\0') return difference;
    }
    return 0;
}

}  // namespace

unsigned str_len(char const* text) { return text ? static_cast<unsigned>(std::strlen(text)) : 0; }

int str_cmp(char const* a, char const* b) {
    if (a == b) return 0;
    if (!a) return -1;
    return b ? std::strcmp(a, b) : 1;
}

int str_ncmp(char const* a, char const* b, unsigned n) {
    if (a == b) return 0;
    if (!a) return -1;
    return b ? std::strncmp(a, b, n) : 1;
}

int str_icmp(char const* a, char const* b) { return CompareFolded(a, b, SIZE_MAX); }

int str_nicmp(char const* a, char const* b, int n) {
    return n < 1 ? 0 : CompareFolded(a, b, static_cast<std::size_t>(n));
}

void str_cat(char* dst, char const* src) {
    if (dst && src) str_cpy(dst + std::strlen(dst), src);
}

void str_ncat(char* dst, char const* src, unsigned n) {
    if (dst && src) std::strncat(dst, src, n);
}

void str_cpy(char* dst, char const* src) {
    if (!src) src = "";
    if (dst) std::memcpy(dst, src, std::strlen(src) + 1);
}

void str_ncpy(char* dst, char const* src, unsigned n) {
    if (!dst) return;
    if (!src) {
        *dst = '\0';
        return;
    }
    std::strncpy(dst, src, n);
    dst[n] = '\0';
}

char* str_lcpy(char* dst, char const* src, unsigned size) {
    if (!dst || !src || size == 0) return dst;
    std::size_t const count = strnlen(src, size - 1);
    std::memcpy(dst, src, count);
    dst[count] = '\0';
    return dst;
}

char* str_lcat(char* dst, char const* src, unsigned size) {
    if (!dst || !src || size == 0) return dst;
    std::size_t const length = strnlen(dst, size);
    if (length + 1 < size) str_lcpy(dst + length, src, size - static_cast<unsigned>(length));
    return dst;
}

char* str_save(char const* text) {
    std::size_t const length = text ? std::strlen(text) : 0;
    char* const copy = NewText(length + 1);
    if (length) std::memcpy(copy, text, length);
    copy[length] = '\0';
    return copy;
}

char* str_nsave(char const* text, unsigned n) {
    char* const copy = NewText(static_cast<std::size_t>(n) + 1);
    std::strncpy(copy, text ? text : "", n);
    copy[n] = '\0';
    return copy;
}

void str_free(void* text) { std::free(text); }

char const* str_error(int error) { return std::strerror(error); }
