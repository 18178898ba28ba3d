// Lists of points for the tests of the geometry.
#ifndef KORBASE_TESTS_GEOMETRY_POINTS_H
#define KORBASE_TESTS_GEOMETRY_POINTS_H

#include <geometry/gu_types.h>

#include "tests/support/test.h"

using Integers = std::vector<std::int64_t>;
using Points = std::vector<gu_point_t>;

inline bool operator==(gu_point_t const& a, gu_point_t const& b) {
    return a.x == b.x && a.y == b.y;
}

inline std::ostream& operator<<(std::ostream& os, gu_point_t const& p) {
    return os << p.x << ' ' << p.y;
}

// A difference, wrapped at 32 bits.
inline gu_coord_t Minus(std::int64_t a, std::int64_t b) {
    return static_cast<gu_coord_t>(static_cast<std::uint32_t>(a - b));
}

// A row of a table, "7 8: 1 2, 3 4 > 5 6": numbers, points, and the points that are wanted.
struct PointRow {
    std::string text;
    Integers numbers;
    Points points, want;

    PointRow(char const* row) : text(row) {
        std::istringstream in(row);
        for (std::int64_t n; in >> n;) numbers.push_back(n);
        for (Points* const list : {&points, &want}) {
            in.clear();
            in.ignore();
            for (gu_point_t p; in >> p.x >> p.y; in.ignore()) list->push_back(p);
        }
    }
};

using PointRows = std::vector<PointRow>;

// From -reach to reach, both included.
inline gu_coord_t RandomCoord(std::mt19937& random, int reach) {
    return Minus(random() % (2 * static_cast<unsigned>(reach) + 1), reach);
}

inline Points RandomPoints(std::mt19937& random, int count, int reach) {
    Points points(static_cast<std::size_t>(count));
    for (auto& p : points) p = {RandomCoord(random, reach), RandomCoord(random, reach)};
    return points;
}

#endif
