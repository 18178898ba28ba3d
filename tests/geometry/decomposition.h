// Decompositions of outlines beside a plain model. A piece is compared by its numbers: the four of
// a gu_rect_t, the six of a gu_trapezoid_t.
#ifndef KORBASE_TESTS_GEOMETRY_DECOMPOSITION_H
#define KORBASE_TESTS_GEOMETRY_DECOMPOSITION_H

#include <generic/tvarr>
#include <set>

#include "tests/geometry/points.h"

using Numbers = std::vector<int>;

// What call(count, records, out) makes of the points in records of `stride` bytes.
template <class Piece, class Call>
Numbers PiecesOf(Points const& points, std::size_t stride, Call call) {
    std::vector<char> records(stride * points.size() + 1);
    for (std::size_t i = 0; i < points.size(); ++i)
        std::memcpy(&records[i * stride], &points[i], sizeof points[i]);
    TVarr<Piece> out(1, VARR_DOUBLE);
    out.App(Piece());  // must go
    unsigned const length = call(static_cast<unsigned>(points.size()), records.data(), out);
    EXPECT_EQ(length, out.Len());
    Numbers numbers(length * sizeof(Piece) / sizeof(int));
    if (length > 0) std::memcpy(numbers.data(), out.Get(), length * sizeof(Piece));
    return numbers;
}

// Cuts every edge at every height, sorts all pieces and pairs them, for trapezoids or, with every
// edge upright at the x of its start, for rectangles.
inline Numbers CutAndPair(Points const& points, bool upright) {
    struct Edge {
        gu_coord_t x0, y0, x1, y1;
    };
    auto const wrapped = [](gu_coord_t a, gu_coord_t b) {
        return double(static_cast<std::int32_t>(static_cast<std::uint32_t>(std::int64_t{a} - b)));
    };
    std::vector<Edge> pieces;
    std::set<gu_coord_t> heights;
    for (std::size_t i = 0; i < points.size(); ++i) {
        gu_point_t a = points[i], b = points[(i + 1) % points.size()];
        if (a.y == b.y) continue;
        if (upright) b.x = a.x;
        if (a.y > b.y) std::swap(a, b);
        pieces.push_back({a.x, a.y, b.x, b.y});
        heights.insert({a.y, b.y});
    }
    for (std::size_t i = 0; i < pieces.size(); ++i) {
        auto const [x0, y0, x1, y1] = pieces[i];
        gu_coord_t const y = *heights.upper_bound(y0);
        if (y >= y1) continue;
        double const exact =
            std::fma(wrapped(x1, x0) / wrapped(y1, y0), wrapped(y, y0), double(x0));
        auto const x = static_cast<gu_coord_t>(std::clamp<double>(exact, kLowest, kHighest));
        pieces[i] = {x0, y0, x, y};
        pieces.push_back({x, y, x1, y1});
    }
    std::sort(pieces.begin(), pieces.end(), [](Edge const& a, Edge const& b) {
        return std::tie(a.y0, a.x0, a.x1) < std::tie(b.y0, b.x0, b.x1);
    });
    Numbers out;
    for (std::size_t i = 0; i < pieces.size(); i += 2) {
        Edge const &e = pieces[i], &f = pieces[i + 1];
        auto const piece =
            upright ? Numbers{e.x0, e.y0, f.x0, f.y1} : Numbers{e.x0, e.x1, f.x1, f.x0, e.y0, f.y1};
        out.insert(out.end(), piece.begin(), piece.end());
    }
    return out;
}

// Outlines of eight kinds in turn: few or many points, near or far, on few or many heights.
inline Points AnyOutline(std::mt19937& random, int i) {
    struct {
        unsigned most;
        int reach;
    } const kinds[] = {{13, 3},        {40, 9}, {100, 200},  {30, 1073741823},
                       {20, kHighest}, {20, 2}, {200, 1000}, {60, 12}};
    auto const [most, reach] = kinds[i % 8];
    Points points = RandomPoints(random, static_cast<int>(random() % most), reach);
    for (auto& p : points) {
        if (reach == 2) {  // to the ends of the range, where differences wrap
            if (random() % 2) p.x = p.x > 0 ? kHighest - p.x : kLowest - p.x;
            if (random() % 2) p.y = p.y > 0 ? kHighest - p.y : kLowest - p.y;
        }
        if (reach == 1000) p.y = (&p - points.data()) % 2 ? 0 : 1 + p.x % 2;  // one slab
        if (reach == 12) p = {p.x * 2520, p.y * 5};  // many cuts are whole numbers
    }
    return points;
}

#endif
