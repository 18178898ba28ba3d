// Sums and differences of coordinates, which wrap at 32 bits.
#ifndef KORBASE_GEOMETRY_WRAP_H
#define KORBASE_GEOMETRY_WRAP_H

#include <geometry/gu_types.h>

#include <cstdint>

namespace korbase_detail {

inline gu_coord_t WrapAdd(gu_coord_t a, gu_coord_t b) {
    return static_cast<gu_coord_t>(static_cast<std::uint32_t>(a) + static_cast<std::uint32_t>(b));
}

inline gu_coord_t WrapSub(gu_coord_t a, gu_coord_t b) {
    return static_cast<gu_coord_t>(static_cast<std::uint32_t>(a) - static_cast<std::uint32_t>(b));
}

// The vector from one point to another; products of two of its coordinates round only beyond 2^53.
struct Vector {
    double x, y;
};

inline Vector Between(gu_point_t const& from, gu_point_t const& to) {
    return {static_cast<double>(WrapSub(to.x, from.x)), static_cast<double>(WrapSub(to.y, from.y))};
}

}  // namespace korbase_detail

#endif
