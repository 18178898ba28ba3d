// The plain way to cut an outline into trapezoids: cut every edge at every height, sort all pieces,
// pair them.
#ifndef KORBASE_TESTS_GEOMETRY_PLAIN_TRAPEZOIDS_H
#define KORBASE_TESTS_GEOMETRY_PLAIN_TRAPEZOIDS_H

#include <algorithm>
#include <cmath>
#include <cstdint>
#include <set>
#include <tuple>
#include <utility>
#include <vector>

#include "tests/geometry/points.h"

inline double WrappedDifference(gu_coord_t a, gu_coord_t b) {
    return static_cast<std::int32_t>(static_cast<std::uint32_t>(std::int64_t{a} - b));
}

inline gu_coord_t CutX(gu_point_t const& low, gu_point_t const& high, gu_coord_t y) {
    double const slope = WrappedDifference(high.x, low.x) / WrappedDifference(high.y, low.y);
    double const x = std::fma(slope, WrappedDifference(y, low.y), static_cast<double>(low.x));
    return static_cast<gu_coord_t>(std::clamp<double>(x, kLowest, kHighest));
}

inline std::vector<gu_trapezoid_t> PlainTrapezoids(Points const& points) {
    std::vector<std::pair<gu_point_t, gu_point_t>> pieces;  // lower and upper end
    std::set<gu_coord_t> heights;
    for (std::size_t i = 0; i < points.size(); ++i) {
        gu_point_t const from = points[i], to = points[(i + 1) % points.size()];
        if (from.y == to.y) continue;
        pieces.emplace_back(from.y < to.y ? from : to, from.y < to.y ? to : from);
        heights.insert({from.y, to.y});
    }
    for (std::size_t i = 0; i < pieces.size(); ++i) {
        auto const piece = pieces[i];
        gu_coord_t const y = *heights.upper_bound(piece.first.y);
        if (y >= piece.second.y) continue;
        gu_point_t const cut = {CutX(piece.first, piece.second, y), y};
        pieces[i].second = cut;
        pieces.emplace_back(cut, piece.second);
    }
    std::sort(pieces.begin(), pieces.end(), [](auto const& a, auto const& b) {
        return std::tie(a.first.y, a.first.x, a.second.x) <
               std::tie(b.first.y, b.first.x, b.second.x);
    });
    std::vector<gu_trapezoid_t> out;
    for (std::size_t i = 0; i < pieces.size(); i += 2) {
        auto const &e = pieces[i], &f = pieces[i + 1];
        out.push_back({e.first.x, e.second.x, f.second.x, f.first.x, e.first.y, f.second.y});
    }
    return out;
}

#endif
