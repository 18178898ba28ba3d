#include "text/str_integer.h"

#include <cstddef>
#include <cstdint>
#include <cstdlib>
#include <cstring>
#include <type_traits>

namespace {

// "00" to "99": two digits for each division by 100.
constexpr char kPairs[] =
    "0001020304050607080910111213141516171819202122232425262728293031323334353637383940414243444546"
    "4748"
    "4950515253545556575859606162636465666768697071727374757677787980818283848586878889909192939495"
    "9697"
    "9899";

// Writes backwards from the end of a buffer and stops at its beginning.
class Tail {
public:
    Tail(char* buffer, unsigned size) : begin_(buffer), end_(buffer), next_(buffer) {
        if (size == 0) return;
        end_ = next_ = buffer + (size - 1);
        *end_ = '\0';
    }
    void Put(char c) {
        if (next_ > begin_) *--next_ = c;
    }
    void PutPair(unsigned value) {
        Put(kPairs[2 * value + 1]);
        Put(kPairs[2 * value]);
    }
    void FillTo(unsigned width, char fill) {
        auto const room = static_cast<std::size_t>(end_ - begin_);
        auto const used = static_cast<std::size_t>(end_ - next_);
        std::size_t const wanted = width < room ? width : room;
        if (fill == '\0' || used >= wanted) return;
        next_ -= wanted - used;
        std::memset(next_, fill, wanted - used);
    }
    char* Text() const { return next_; }

private:
    char* begin_;
    char* end_;   // the terminator
    char* next_;  // the first character so far
};

template <class Unsigned>
char* Decimal(char* buffer, unsigned size, Unsigned value, bool negative, unsigned width,
              char fill) {
    Tail tail(buffer, size);
    for (; value >= 100; value /= 100) tail.PutPair(static_cast<unsigned>(value % 100));
    if (value >= 10)
        tail.PutPair(static_cast<unsigned>(value));
    else
        tail.Put(static_cast<char>('0' + value));
    if (negative) tail.Put('-');
    tail.FillTo(width, fill);
    return tail.Text();
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
    Tail tail(buffer, size);
    do {
        tail.Put("0123456789abcdef"[value & static_cast<Unsigned>(radix - 1)]);
        value >>= shift;
    } while (value != 0);
    tail.FillTo(width, fill);
    if (radix != 8) tail.Put(radix == 2 ? 'b' : 'x');
    tail.Put('0');
    return tail.Text();
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
