// Lists of points for the tests of the geometry.
#ifndef KORBASE_TESTS_GEOMETRY_POINTS_H
#define KORBASE_TESTS_GEOMETRY_POINTS_H

#include <geometry/gu_types.h>

#include <ostream>
#include <random>
#include <vector>

using Points = std::vector<gu_point_t>;

gu_coord_t const kLowest = -2147483647 - 1;
gu_coord_t const kHighest = 2147483647;

inline bool operator==(gu_point_t const& a, gu_point_t const& b) {
    return a.x == b.x && a.y == b.y;
}

inline std::ostream& operator<<(std::ostream& os, gu_point_t const& p) {
    return os << '(' << p.x << ',' << p.y << ')';
}

// From -reach to reach, both included.
inline gu_coord_t RandomCoord(std::mt19937& random, int reach) {
    auto const span = 2 * static_cast<unsigned>(reach) + 1;
    return static_cast<gu_coord_t>(static_cast<std::int64_t>(random() % span) - reach);
}

inline Points RandomPoints(std::mt19937& random, int count, int reach) {
    Points points(static_cast<std::size_t>(count));
    for (auto& p : points) {
        p.x = RandomCoord(random, reach);
        p.y = RandomCoord(random, reach);
    }
    return points;
}

#endif
