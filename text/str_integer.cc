#include "text/str_integer.h"

#include <algorithm>
#include <cstddef>
#include <cstdint>
#include <cstdlib>
#include <cstring>
#include <limits>
#include <type_traits>

namespace {

// "00" to "99": two digits for each division by 100.
constexpr char kPairs[] =
    "0001020304050607080910111213141516171819"
    "2021222324252627282930313233343536373839"
    "4041424344454647484950515253545556575859"
    "6061626364656667686970717273747576777879"
    "8081828384858687888990919293949596979899";

// Puts `fill` in front of the text from `first` to `end` until it has `width` characters or meets
// the buffer's begin.
char* FillTo(unsigned width, char fill, char* buffer, char* first, char const* end) {
    if (fill == '\0') return first;
    auto const room = static_cast<std::size_t>(end - buffer);
    auto const used = static_cast<std::size_t>(end - first);
    std::size_t const wanted = std::min<std::size_t>(width, room);
    if (used >= wanted) return first;
    first -= wanted - used;
    std::memset(first, fill, wanted - used);
    return first;
}

// Writes the digits of `value` in front of `end` and returns the first one.
template <class Unsigned>
char* DigitsBefore(char* end, Unsigned value) {
    for (; value >= 100; value /= 100) {
        end -= 2;
        std::memcpy(end, kPairs + 2 * (value % 100), 2);
    }
    if (value >= 10) {
        end -= 2;
        std::memcpy(end, kPairs + 2 * value, 2);
        return end;
    }
    *--end = static_cast<char>('0' + value);
    return end;
}

template <class Unsigned>
constexpr unsigned kLongest = std::numeric_limits<Unsigned>::digits10 + 2;  // digits and a sign

template <class Unsigned>
char* NumberBefore(char* end, Unsigned value, bool negative) {
    char* first = DigitsBefore(end, value);
    if (negative) *--first = '-';
    return first;
}

// The form with a fill, and for a buffer that may be too short: as much of the end of the text as
// it holds.
template <class Unsigned>
[[gnu::noinline]] char* PaddedDecimal(char* buffer, unsigned size, Unsigned value, bool negative,
                                      unsigned width, char fill) {
    if (size == 0) return buffer;
    char whole[kLongest<Unsigned>];
    char* const whole_end = whole + sizeof whole;
    char const* const text = NumberBefore(whole_end, value, negative);

    char* const end = buffer + (size - 1);
    auto const count = std::min<std::ptrdiff_t>(whole_end - text, end - buffer);
    std::memcpy(end - count, whole_end - count, static_cast<std::size_t>(count));
    *end = '\0';
    return FillTo(width, fill, buffer, end - count, end);
}

template <class Unsigned>
char* Decimal(char* buffer, unsigned size, Unsigned value, bool negative, unsigned width,
              char fill) {
    if (size <= kLongest<Unsigned> || fill != '\0')
        return PaddedDecimal(buffer, size, value, negative, width, fill);
    char* const end = buffer + (size - 1);
    *end = '\0';
    return NumberBefore(end, value, negative);
}

template <class Signed>
char* SignedDecimal(char* buffer, unsigned size, Signed value, unsigned width, char fill) {
    using Unsigned = std::make_unsigned_t<Signed>;
    auto const bits = static_cast<Unsigned>(value);
    return Decimal<Unsigned>(buffer, size, value < 0 ? Unsigned{0} - bits : bits, value < 0, width,
                             fill);
}

template <class Unsigned>
char* Radix(char* buffer, unsigned size, Unsigned value, unsigned width, char fill, int radix) {
    if (radix != 2 && radix != 8 && radix != 16) std::abort();
    unsigned const shift = radix == 2 ? 1 : radix == 8 ? 3 : 4;
    if (size == 0) return buffer;
    char* const end = buffer + (size - 1);
    *end = '\0';
    char* first = end;
    auto const put = [&first, buffer](char c) {
        if (first > buffer) *--first = c;
    };
    do {
        put("0123456789abcdef"[value & static_cast<Unsigned>(radix - 1)]);
        value >>= shift;
    } while (value != 0);
    first = FillTo(width, fill, buffer, first, end);
    if (radix != 8) put(radix == 2 ? 'b' : 'x');
    put('0');
    return first;
}

}  // namespace

char* str_int2str10(char* buffer, unsigned size, int value, unsigned width, char fill) {
    return SignedDecimal(buffer, size, value, width, fill);
}

char* str_long2str10(char* buffer, unsigned size, long value, unsigned width, char fill) {
    return SignedDecimal(buffer, size, value, width, fill);
}

char* str_longlong2str10(char* buffer, unsigned size, std::int64_t value, unsigned width,
                         char fill) {
    return SignedDecimal(buffer, size, value, width, fill);
}

char* str_uint2str10(char* buffer, unsigned size, unsigned value, unsigned width, char fill) {
    return Decimal(buffer, size, value, false, width, fill);
}

char* str_ulong2str10(char* buffer, unsigned size, unsigned long value, unsigned width, char fill) {
    return Decimal(buffer, size, value, false, width, fill);
}

char* str_ulonglong2str10(char* buffer, unsigned size, std::uint64_t value, unsigned width,
                          char fill) {
    return Decimal(buffer, size, value, false, width, fill);
}

char* str_int2strradix(char* buffer, unsigned size, unsigned value, unsigned width, char fill,
                       int radix) {
    return Radix(buffer, size, value, width, fill, radix);
}

char* str_long2strradix(char* buffer, unsigned size, unsigned long value, unsigned width, char fill,
                        int radix) {
    return Radix(buffer, size, value, width, fill, radix);
}

char* str_longlong2strradix(char* buffer, unsigned size, std::uint64_t value, unsigned width,
                            char fill, int radix) {
    return Radix(buffer, size, value, width, fill, radix);
}
