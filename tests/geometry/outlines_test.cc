// What is measured, cleaned and sized of outlines, and where segments meet.
#include "geometry/gu_intersection.h"
#include "geometry/gu_measure.h"
#include "geometry/gu_outline.h"
#include "geometry/gu_sizing.h"
#include "tests/geometry/points.h"

namespace {

// Columns on a bar, with flat or slanted tops, in any direction.
Points Skyline(std::mt19937& random, bool flat) {
    int const columns = 1 + static_cast<int>(random() % 6), side = random() % 2 ? 1 : -1;
    Points p = {{side * columns, 0}, {0, 0}};
    for (int k = 0; k < columns; ++k) {
        int const begin = 1 + static_cast<int>(random() % 4), end = static_cast<int>(random() % 4);
        p.insert(p.end(), {{side * k, begin}, {side * (k + 1), flat ? begin : 1 + end}});
    }
    if (random() % 2) std::reverse(p.begin(), p.end());
    bool const swap = random() % 2;
    for (auto& q : p) q = {1000 * (swap ? q.y : q.x), 1000 * (swap ? q.x : q.y)};
    std::rotate(p.begin(), p.begin() + static_cast<std::ptrdiff_t>(random() % p.size()), p.end());
    return p;
}

// Of the vectors from `a` to `b` and from `c` to `d`.
std::int64_t Cross(gu_point_t const& a, gu_point_t const& b, gu_point_t const& c,
                   gu_point_t const& d) {
    return std::int64_t{b.x - a.x} * (d.y - c.y) - std::int64_t{b.y - a.y} * (d.x - c.x);
}

TEST(Outlines, AreMeasuredAndSizedAsTheirEdgesSay) {
    std::mt19937 random(52);
    for (int round = 0; round < 6000; ++round) {
        Points p = Skyline(random, round % 2), moved = p, single = p;
        auto const count = static_cast<short>(p.size());
        SCOPED_TRACE(testing::PrintToString(p));
        std::int64_t twice = 0;
        for (int i = 0; i < count; ++i) twice += Cross({0, 0}, p[i], {0, 0}, p[(i + 1) % count]);
        int const turn = twice > 0 ? 1 : -1;
        ASSERT_EQ(turn, gu_polygon_orientation(count, p.data()));
        ASSERT_EQ(turn, round % 2 ? gu_ortho_polygon_orientation(count, p.data()) : turn);
        ASSERT_EQ(std::abs(twice) / 2.0, gu_polygon_area(count, p.data()));
        if (p.front() == p.back()) continue;

        int const distance = RandomCoord(random, 300);
        auto const size = round % 4 == 1 ? gu_size_ortho_polygoni : gu_size_polygon;
        int const n = gu_delete_multiple_points(count, single.data(), single.data());
        single.resize(n);
        p.erase(std::unique(p.begin(), p.end()), p.end());
        ASSERT_EQ(p, single);
        ASSERT_EQ(n, size(count, moved.data(), distance));
        for (int i = 0; i < 2 * n; ++i) {
            int const edge = i / 2 + n - i % 2;  // on each side of a corner
            auto const &corner = moved[i / 2], &a = p[edge % n], &b = p[(edge + 1) % n];
            double const length = std::hypot(b.x - a.x, b.y - a.y);
            // A coordinate is off by half a unit at most, a distance by less than one.
            ASSERT_NEAR(-turn * distance, Cross(a, b, a, corner) / length, 0.75);
        }
    }
}

TEST(GuMeasure, FlatOutlinesAndRangeEnds) {
    // Orientation, axis-parallel orientation, rectangle, perimeter, area: points > box. Between the
    // ends of the range, edges wrap to -1 for the perimeter, but not for the area.
    for (auto const& [text, want, p, box] :
         PointRows{"1 1 0 0 0: > 2147483647 2147483647, -2147483647 -2147483647",
                   "1 1 0 0 0: -2147483648 4 > -2147483648 4, -2147483648 4",
                   "1 1 1 20 25: 0 0, 4 3, 1 7, -3 4 > -3 0, 4 7",
                   "1 1 0 18 18: 0 0, 6 0, 6 4, 3 4 > 0 0, 6 4",
                   "1 1 1 4 4294967295: -2147483648 0, 2147483647 0, 2147483647 1, -2147483648 1 > "
                   "-2147483648 0, 2147483647 1"}) {
        auto const n = static_cast<short>(p.size());
        auto const b = gu_bounding_box(n, p.data());
        Integers const got = {
            gu_polygon_orientationi(n, p.data()), gu_ortho_polygon_orientationi(n, p.data()),
            gu_is_rectangle(n, p.data()), std::int64_t(gu_polygon_periphery(n, p.data())),
            std::int64_t(gu_polygon_area(n, p.data()))};
        EXPECT_EQ(want, got) << text;
        EXPECT_EQ(box, Points({{b.x1, b.y1}, {b.x2, b.y2}})) << text;
    }
}

TEST(GuCheckOrtho, ReportsTheWorstEdge) {
    // Result, closed: points.
    for (auto const& [text, n, p, _] :
         PointRows{"1 1: 0 0, 10 0, 10 10", "2 1: 0 0, 10 0, 10 5", "2 0: 0 0, 1 2, 3 4",
                   "0 1:", "1 0: -2147483648 0, 0 -2147483648"})
        EXPECT_EQ(n[0], gu_check_ortho(p.size(), p.data(), n[1])) << text;
}

TEST(GuSnapOrtho, MovesThePointAndItsReference) {
    // Mode: point, reference.
    for (auto& [text, mode, p, want] :
         PointRows{"0: 3 10, 0 0 > 3 10, 3 0", "0: 5 5, 0 0 > 5 5, 0 5", "1: 5 5, 0 0 > 5 5, 0 0",
                   "1: 10 4, 0 0 > 10 4, 0 4", "2: 0 0, 10 6 > 0 0, 10 6",
                   "1: 0 0, 10 -6 > 0 -10, 10 -10", "1: 0 0, 10 -15 > 0 -10, 10 -10",
                   "1: 0 0, 10 15 > 15 0, 15 15",
                   "0: 2147483647 0, -2147483648 5 > 2147483647 0, 2147483647 5"}) {
        std::uint64_t const packed = gu_snap_ortho(p[0], &p[1], mode[0]);
        p[0] = {static_cast<gu_coord_t>(packed >> 32), static_cast<gu_coord_t>(packed)};
        EXPECT_EQ(want, p) << text;
    }
}

TEST(GuDeleteRedundantPoints, KeepsTheCorners) {
    // Of an open line (0) or an outline (1). Some turn back, or lose the first and then the last.
    for (auto& [text, closed, p, want] :
         PointRows{"0: 0 0, 4 0, 9 0, 2 0, 2 2 > 0 0, 2 0, 2 2",
                   "0: 0 0, 3 3, 3 3, 5 4, 0 0 > 0 0, 3 3, 5 4, 0 0",
                   "1: 5 0, 10 0, 10 10, 0 10, 0 0 > 10 0, 10 10, 0 10, 0 0",
                   "1: 4 0, 9 0, 9 9, -5 0, 0 0 > 9 0, 9 9, -5 0", "0: 5 5, 5 5 > 5 5"}) {
        auto const count = static_cast<short>(p.size());
        p.resize(gu_delete_redundant_points(count, p.data(), closed[0]));
        EXPECT_EQ(want, p) << text;
    }
}

TEST(GuSizing, EndsOfTheRangeAndOddOutlines) {
    // Axis-parallel, distance: points. Refused are a single point, and outlines that turn back or
    // repeat their first point. A middle point moves along a horizontal run, but across a vertical
    // one.
    for (auto& [text, n, p, want] : PointRows{
             "0 1: 3 3 >", "0 1: 7 7, 7 7 > 0 0", "0 1: 0 0, 10 0, 10 10, 0 10, 0 0 >",
             "0 1: 0 0, 5 0, 2 0, 2 7 >",
             "1 2: 0 0, 5 0, 10 0, 10 5, 10 10, 0 10 > -2 -2, 3 -2, 12 -2, 12 7, 12 12, -2 12",
             "1 1: 0 0, 0 10, 2147483647 10, 2147483647 0 > -1 -1, -1 11, -2147483648 11, "
             "-2147483648 -1",
             "0 -2147483648: 0 0, 0 10, 10 10, 10 0 > 2147483647 2147483647, 2147483647 "
             "-2147483638, -2147483638 -2147483638, -2147483638 2147483647"}) {
        auto const size = n[0] ? gu_size_ortho_polygoni : gu_size_polygon;
        int const count = size(p.size(), p.data(), n[1]);
        EXPECT_EQ(want.empty() ? -1 : int(want.size()), count) << text;
        p.resize(want.size());
        EXPECT_EQ(want, p) << text;
    }
}

bool Within(std::int64_t part, std::int64_t whole) {
    return whole > 0 ? 0 <= part && part <= whole : whole <= part && part <= 0;
}

// The share `t` of the way from `a` to `b`: the offset saturates, the sum wraps.
gu_point_t Along(gu_point_t const& a, gu_point_t const& b, double t) {
    auto const rounded = [t](double d) {
        return std::clamp<double>(std::round(t * d), INT32_MIN, INT32_MAX);
    };
    return {Minus(a.x, -rounded(b.x - a.x)), Minus(a.y, -rounded(b.y - a.y))};
}

TEST(GuIntersection, AgreesWithExactArithmetic) {
    std::mt19937 random(54);
    for (int i = 0; i < 50000; ++i) {
        int const reach = i % 2 ? 3 : i % 4 ? 300 : 30000, far = INT32_MAX - reach;
        Points p = RandomPoints(random, 4, reach);
        for (auto& q : p) q.x += i % 3 ? 0 : i % 5 ? far : -far;
        auto const &a = p[0], &b = p[1], &c = p[2], &d = p[3];
        auto const on_first = [&](gu_point_t const& q) {
            return !(a == b) && Cross(a, b, a, q) == 0 && Within(q.x - a.x, b.x - a.x) &&
                   Within(q.y - a.y, b.y - a.y);
        };
        auto const det = Cross(a, b, c, d), t_part = Cross(a, c, c, d), s_part = Cross(a, c, a, b);
        bool const end = on_first(c) || on_first(d);
        bool const meet = det ? Within(t_part, det) && Within(s_part, det) : end;
        gu_point_t const none = {7, 7}, at_end = on_first(c) ? c : end ? d : none;
        gu_point_t lines = none, segments = none;
        double t = 0;
        SCOPED_TRACE(testing::PrintToString(p));
        ASSERT_EQ(det || end, gu_line_intersection_l(&a, &b, &c, &d, &t, &lines));
        ASSERT_EQ(meet, gu_intersection_l(&a, &b, &c, &d, &t, &segments));
        ASSERT_TRUE(!det || double(t_part) / det == t);
        ASSERT_EQ(det ? Along(a, b, t) : at_end, lines);
        ASSERT_EQ(det && meet ? Along(c, d, double(s_part) / det) : det ? none : at_end, segments);
    }
}

}  // namespace
