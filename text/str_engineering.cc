#include "text/str_engineering.h"

#include <cmath>
#include <cstdint>
#include <cstring>

#include "base/saturate.h"

using korbase_detail::SaturateToInt32;

namespace {

constexpr int kLowest = -18;
constexpr int kHighest = 12;

constexpr double kPowers[] = {1e-18, 1e-17, 1e-16, 1e-15, 1e-14, 1e-13, 1e-12, 1e-11,
                              1e-10, 1e-9,  1e-8,  1e-7,  1e-6,  1e-5,  1e-4,  1e-3,
                              1e-2,  1e-1,  1e0,   1e1,   1e2,   1e3,   1e4,   1e5,
                              1e6,   1e7,   1e8,   1e9,   1e10,  1e11,  1e12,  1e13};

constexpr char const* kLetters[] = {"A", "F", "P", "N", "U", "M", "_", "K", "ME", "G", "T"};

// floor(log10(x) + 1e-10) for x from 9e-19 to 1e13. The binary exponent leaves two candidates; the
// border between them is 10^(k - 1e-10). So close to it that the rounding of log10 decides, log10
// is asked.
int DecimalExponent(double x) {
    std::uint64_t bits;
    std::memcpy(&bits, &x, sizeof bits);
    int const binary = static_cast<int>(bits >> 52) - 1023;
    int const below = (binary * 78913) >> 18;  // floor(binary * log10(2))
    double const border = kPowers[below + 1 - kLowest] * 0.99999999976974149;
    if (std::fabs(x - border) <= border * 1e-12)
        return static_cast<int>(std::floor(std::log10(x) + 1e-10));
    return x < border ? below : below + 1;
}

char* PutText(char* out, char const* text, int count) {
    std::memcpy(out, text, static_cast<std::size_t>(count));
    return out + count;
}

}  // namespace

char* str_tosc_r(char* buffer, double x) {
    if (x == 0) return static_cast<char*>(std::memcpy(buffer, "0_00", 5));
    double const magnitude = std::fabs(x);
    if (!(magnitude > 0.9e-18 && magnitude < 1e13)) return buffer;
    int const exponent = DecimalExponent(magnitude);
    if (exponent < kLowest || exponent > kHighest) return buffer;

    int const step = exponent - kLowest;
    int const number = SaturateToInt32(magnitude / kPowers[step] * 100 + 0.5);  // 100 to 1000
    char const digits[] = {'1', static_cast<char>('0' + number / 100 % 10),
                           static_cast<char>('0' + number / 10 % 10),
                           static_cast<char>('0' + number % 10)};
    int const first = number < 1000;
    int const behind = 2 - step % 3;  // digits behind the letter
    char* out = buffer;
    if (x < 0) *out++ = '-';
    out = PutText(out, digits + first, 4 - first - behind);
    for (char const* letter = kLetters[step / 3]; *letter; ++letter) *out++ = *letter;
    out = PutText(out, digits + 4 - behind, behind);
    *out = '\0';
    return buffer;
}

char* str_tosc(double x) {
    static char buffer[16];
    return str_tosc_r(buffer, x);
}
