// Conversions to 32-bit integers that are defined for every input.
#ifndef KORBASE_BASE_SATURATE_H
#define KORBASE_BASE_SATURATE_H

#include <algorithm>
#include <cstdint>
#include <limits>

namespace korbase_detail {

// `value` cut toward zero; the nearest end of the range when it lies outside, 0 for a NaN.
inline std::int32_t SaturateToInt32(double value) {
    constexpr auto lowest = std::numeric_limits<std::int32_t>::min();
    constexpr auto highest = std::numeric_limits<std::int32_t>::max();
    if (value <= static_cast<double>(lowest)) return lowest;
    if (value >= static_cast<double>(highest)) return highest;
    return value != value ? 0 : static_cast<std::int32_t>(value);
}

// The nearest value in range.
inline std::int32_t SaturateToInt32FromLong(long value) {
    return static_cast<std::int32_t>(std::clamp<long>(
        value, std::numeric_limits<std::int32_t>::min(), std::numeric_limits<std::int32_t>::max()));
}

}  // namespace korbase_detail

#endif
