#include "text/numeric.h"

#include <cstdint>
#include <cstdlib>

#include "base/saturate.h"

using korbase_detail::SaturateToInt32;

int mth_round(double x) { return x >= 0 ? SaturateToInt32(x + 0.5) : -SaturateToInt32(0.5 - x); }

int gcd(int a, int b) {
    if (a <= 0) return b;
    while (a > 0) {
        int const larger = a < b ? b : a;
        int const smaller = a < b ? a : b;
        // Unsigned, since the difference of a negative `b` may leave the range.
        a = static_cast<int>(static_cast<std::uint32_t>(larger) -
                             static_cast<std::uint32_t>(smaller));
        b = smaller;
    }
    return b;
}

void halt() { std::abort(); }
