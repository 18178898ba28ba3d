// Lists of points for the tests of the geometry.
#ifndef KORBASE_TESTS_GEOMETRY_POINTS_H
#define KORBASE_TESTS_GEOMETRY_POINTS_H

#include <geometry/gu_types.h>

#include <iterator>
#include <ostream>

#include "tests/support/test.h"

using Points = std::vector<gu_point_t>;

gu_coord_t const kLowest = -2147483647 - 1;
gu_coord_t const kHighest = 2147483647;

inline bool operator==(gu_point_t const& a, gu_point_t const& b) {
    return a.x == b.x && a.y == b.y;
}

inline std::ostream& operator<<(std::ostream& os, gu_point_t const& p) {
    return os << '(' << p.x << ',' << p.y << ')';
}

// The numbers in a text, whatever stands between them.
inline std::vector<int> NumbersOf(std::string text) {
    std::replace_if(
        text.begin(), text.end(), [](char c) { return !std::strchr("-0123456789", c); }, ' ');
    std::istringstream in(text);
    return std::vector<int>(std::istream_iterator<int>(in), {});
}

// The same, in pairs, from the number `first` on.
inline Points PointsOf(std::string const& text, std::size_t first = 0) {
    auto const numbers = NumbersOf(text);
    Points points;
    for (std::size_t i = first; i < numbers.size(); i += 2)
        points.push_back({numbers[i], numbers[i + 1]});
    return points;
}

// From -reach to reach, both included.
inline gu_coord_t RandomCoord(std::mt19937& random, int reach) {
    auto const span = 2 * static_cast<unsigned>(reach) + 1;
    return static_cast<gu_coord_t>(static_cast<std::int64_t>(random() % span) - reach);
}

inline Points RandomPoints(std::mt19937& random, int count, int reach) {
    Points points(static_cast<std::size_t>(count));
    for (auto& p : points) p = {RandomCoord(random, reach), RandomCoord(random, reach)};
    return points;
}

#endif
