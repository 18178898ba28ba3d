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
    if (random() % 2)
        for (auto& q : p) std::swap(q.x, q.y);
    std::rotate(p.begin(), p.begin() + static_cast<std::ptrdiff_t>(random() % p.size()), p.end());
    return p;
}

TEST(GuMeasure, AgreesWithTheSignedArea) {
    std::mt19937 random(52);
    for (int i = 0; i < 6000; ++i) {
        Points const p = Skyline(random, i % 2);
        auto const n = p.size();
        int twice = 0;
        for (std::size_t k = 0; k < n; ++k)
            twice += p[k].x * p[(k + 1) % n].y - p[(k + 1) % n].x * p[k].y;
        int const count = static_cast<int>(n), want = twice > 0 ? 1 : -1;
        ASSERT_EQ(want, gu_polygon_orientation(count, p.data())) << testing::PrintToString(p);
        ASSERT_EQ(want, i % 2 ? gu_ortho_polygon_orientation(count, p.data()) : want);
        ASSERT_EQ(std::abs(twice) / 2.0, gu_polygon_area(static_cast<unsigned short>(n), p.data()));
    }
}

TEST(GuMeasure, FlatOutlinesAndRangeEnds) {
    // Orientation, axis-parallel orientation, rectangle, perimeter, area; box; points.
    for (std::string const row : {"1 1 0 0 0; 2147483647 2147483647, -2147483647 -2147483647;",
                                  "1 1 0 0 0; -2147483648 4, -2147483648 4; -2147483648 4",
                                  "1 1 1 20 25; -3 0, 4 7; 0 0, 4 3, 1 7, -3 4",
                                  "1 1 0 30 40; 0 0, 13 4; 0 0, 10 0, 13 4, 3 4",
                                  "1 1 0 18 18; 0 0, 6 4; 0 0, 6 0, 6 4, 3 4"}) {
        Points const box = PointsOf(row, 5), p(box.begin() + 2, box.end());
        auto const n = static_cast<unsigned short>(p.size());
        gu_rect_t const b = gu_bounding_box(n, p.data());
        std::ostringstream got;
        got << gu_polygon_orientationi(n, p.data()) << ' '
            << gu_ortho_polygon_orientationi(n, p.data()) << ' '
            << gu_is_rectangle(static_cast<short>(n), p.data()) << ' '
            << gu_polygon_periphery(n, p.data()) << ' ' << gu_polygon_area(n, p.data()) << "; "
            << b.x1 << ' ' << b.y1 << ", " << b.x2 << ' ' << b.y2;
        EXPECT_EQ(row.substr(0, row.rfind(';')), got.str());
    }
    // Here the perimeter's edges wrap to -1, but the area takes the true differences.
    Points const whole = {{kLowest, 0}, {kHighest, 0}, {kHighest, 9}, {kLowest, 9}};
    EXPECT_EQ(20, gu_polygon_periphery(4, whole.data()));
    EXPECT_EQ(4294967295.0 * 9, gu_polygon_area(4, whole.data()));
}

TEST(GuCheckOrtho, ReportsTheWorstEdge) {
    // Result, closed: points.
    for (auto const* row : {"1 1: 0 0, 10 0, 10 10", "2 1: 0 0, 10 0, 10 5", "2 0: 0 0, 1 2, 3 4",
                            "0 1:", "1 0: -2147483648 0, 0 -2147483648"}) {
        auto const flags = NumbersOf(row);
        Points const p = PointsOf(row, 2);
        EXPECT_EQ(flags[0], gu_check_ortho(static_cast<int>(p.size()), p.data(), flags[1])) << row;
    }
}

TEST(GuSnapOrtho, MovesThePointAndItsReference) {
    // Mode: point, reference > both afterwards.
    for (auto const* row :
         {"0: 3 10, 0 0 > 3 10, 3 0", "0: 5 5, 0 0 > 5 5, 0 5", "1: 5 5, 0 0 > 5 5, 0 0",
          "1: 10 4, 0 0 > 10 4, 0 4", "1: 4 10, 0 0 > 4 10, 4 0", "2: 0 0, 10 6 > 0 0, 10 6",
          "1: 0 0, 10 -6 > 0 -10, 10 -10", "1: 0 0, 10 -15 > 0 -10, 10 -10",
          "1: 0 0, 10 6 > 0 10, 10 10", "1: 0 0, 10 15 > 15 0, 15 15",
          "0: 2147483647 0, -2147483648 5 > 2147483647 0, 2147483647 5"}) {
        Points p = PointsOf(row, 1);
        std::uint64_t const packed = gu_snap_ortho(p[0], &p[1], NumbersOf(row)[0]);
        p[0] = {static_cast<gu_coord_t>(packed >> 32), static_cast<gu_coord_t>(packed)};
        EXPECT_TRUE(p[0] == p[2] && p[1] == p[3]) << row << ", got " << p[0] << p[1];
    }
}

TEST(GuDeleteMultiplePoints, KeepsTheFirstOfEachRun) {
    Points p = PointsOf("1 1, 1 1, 2 2, 2 2, 1 1"), want = PointsOf("1 1, 2 2, 1 1, 2 2, 1 1");
    EXPECT_EQ(3, gu_delete_multiple_points(5, p.data(), p.data()));
    EXPECT_EQ(want, p);
}

TEST(GuDeleteRedundantPoints, KeepsTheCorners) {
    // Of an open line (0) or an outline (1). Some turn back, or lose the first and then the last.
    Rows<int, char const*, char const*> const rows = {
        {0, "0 0, 4 0, 9 0, 2 0, 2 2", "0 0, 2 0, 2 2"},
        {0, "0 0, 3 3, 3 3, 5 4, 0 0", "0 0, 3 3, 5 4, 0 0"},
        {1, "5 0, 10 0, 10 10, 0 10, 0 0", "10 0, 10 10, 0 10, 0 0"},
        {1, "4 0, 9 0, 9 9, -5 0, 0 0", "9 0, 9 9, -5 0"},
        {1, "0 0, 5 5, 9 9", "9 9"},
        {1, "", ""}};
    for (auto const& [closed, before, after] : rows) {
        Points p = PointsOf(before);
        auto const count = static_cast<short>(p.size());
        p.resize(static_cast<std::size_t>(gu_delete_redundant_points(count, p.data(), closed)));
        EXPECT_EQ(PointsOf(after), p) << before;
    }
}

using Sizing = int (*)(int, gu_point_t*, int);

int Size(Sizing sizing, Points& points, int distance) {
    int const count = sizing(static_cast<int>(points.size()), points.data(), distance);
    if (count >= 0) points.resize(static_cast<std::size_t>(count));
    return count;
}

TEST(GuSizing, PutsEachCornerAtTheDistanceFromBothOfItsEdges) {
    std::mt19937 random(12);
    for (int round = 0; round < 2000; ++round) {
        Points before = Skyline(random, round % 2);
        for (auto& p : before) p = {p.x * 1000, p.y * 1000};
        if (before.front() == before.back()) continue;
        Points after = before;
        int const distance = RandomCoord(random, 300);
        int const n =
            Size(round % 4 == 1 ? gu_size_ortho_polygoni : gu_size_polygon, after, distance);
        before.resize(std::size_t(
            gu_delete_multiple_pointsi(int(before.size()), before.data(), before.data())));
        ASSERT_EQ(before.size(), after.size());
        for (int i = 0; i < n; ++i)
            for (int const edge : {i + n - 1, i}) {
                auto const &a = before[std::size_t(edge % n)],
                           &b = before[std::size_t((edge + 1) % n)];
                auto const& p = after[std::size_t(i)];
                double const dx = b.x - a.x, dy = b.y - a.y;
                double const right = (dy * (p.x - a.x) - dx * (p.y - a.y)) / std::hypot(dx, dy);
                // A coordinate is off by half a unit at most, a distance by less than one.
                ASSERT_NEAR(gu_polygon_orientation(n, before.data()) * distance, right, 0.75);
            }
    }
    // A middle point moves along a horizontal run, but across a vertical one.
    Points runs = PointsOf("0 0, 5 0, 10 0, 10 5, 10 10, 0 10");
    gu_size_ortho_polygon(6, runs.data(), 2);
    EXPECT_EQ(PointsOf("-2 -2, 3 -2, 12 -2, 12 7, 12 12, -2 12"), runs);
}

TEST(GuSizing, RefusesTooFewPointsAndOutlinesThatTurnBack) {
    for (auto const* row : {"3 3", "0 0, 10 0, 10 10, 0 10, 0 0", "0 0, 5 0, 2 0, 2 7"}) {
        Points points = PointsOf(row);
        EXPECT_EQ(-1, Size(gu_size_polygon, points, 1)) << row;
    }
    Points repeated = PointsOf("7 7, 7 7");
    Size(gu_size_polygon, repeated, 1);
    EXPECT_EQ(PointsOf("0 0"), repeated);
}

TEST(GuSizing, EndsOfTheRange) {
    Points cut = PointsOf("0 0, 0 10, 2147483647 10, 2147483647 0"), wrapped = cut, far = cut;
    Size(gu_size_polygon, far, kLowest);  // its negation is no int
    EXPECT_EQ(kHighest, far[0].x);
    Size(gu_size_polygon, cut, 1);
    EXPECT_EQ(PointsOf("-1 -1, -1 11, 2147483647 11, 2147483647 -1"), cut);
    Size(gu_size_ortho_polygoni, wrapped, 1);
    EXPECT_EQ(PointsOf("-1 -1, -1 11, -2147483648 11, -2147483648 -1"), wrapped);
}

TEST(GuIntersection, RoundsAndWraps) {
    // p1 p2 q1 q2: where the lines and the segments meet; 0 0 if they do not. Halves move away from
    // p1 and q1. In the last row, the offset saturates and the sum wraps.
    for (auto const* row :
         {"0 0, 3 3, 0 1, 1 0: 1 1, 1 0", "-2147483648 0, -1 0, -9 -5, -9 5: -9 0, -9 0",
          "5 0, 6 0, 0 1000000000, 1000000000 999999999: -2147483644 0, 0 0"}) {
        Points const p = PointsOf(row);
        gu_point_t lines = {0, 0}, segments = {0, 0};
        EXPECT_EQ(1, gu_line_intersection(&p[0], &p[1], &p[2], &p[3], &lines)) << row;
        EXPECT_EQ(p[5].x != 0, gu_intersection(&p[0], &p[1], &p[2], &p[3], &segments)) << row;
        EXPECT_TRUE(p[4] == lines && p[5] == segments) << row << lines << segments;
    }
}

// Of the vectors from `a` to `b` and from `c` to `d`.
int Cross(gu_point_t const& a, gu_point_t const& b, gu_point_t const& c, gu_point_t const& d) {
    return (b.x - a.x) * (d.y - c.y) - (b.y - a.y) * (d.x - c.x);
}

bool Within(int part, int whole) {
    return whole > 0 ? 0 <= part && part <= whole : whole <= part && part <= 0;
}

TEST(GuIntersection, AgreesWithExactArithmetic) {
    std::mt19937 random(54);
    for (int i = 0; i < 50000; ++i) {
        Points const p = RandomPoints(random, 4, i % 2 ? 3 : 300);
        auto const on_first = [&](gu_point_t const& q) {
            return !(p[0] == p[1]) && Cross(p[0], p[1], p[0], q) == 0 &&
                   Within(q.x - p[0].x, p[1].x - p[0].x) && Within(q.y - p[0].y, p[1].y - p[0].y);
        };
        int const det = Cross(p[0], p[1], p[2], p[3]);
        int const t_part = Cross(p[0], p[2], p[2], p[3]), s_part = Cross(p[0], p[2], p[0], p[1]);
        bool const end_on_first = on_first(p[2]) || on_first(p[3]);
        bool const lines = det ? true : end_on_first;
        bool const segments = det ? Within(t_part, det) && Within(s_part, det) : end_on_first;
        gu_point_t at[2];
        double t = 0;
        SCOPED_TRACE(testing::PrintToString(p));
        ASSERT_EQ(lines, gu_line_intersection_l(&p[0], &p[1], &p[2], &p[3], &t, &at[0]));
        ASSERT_EQ(segments, gu_intersection_l(&p[0], &p[1], &p[2], &p[3], &t, &at[1]));
        for (int k = 0; k < lines + segments; ++k) {
            if (det == 0) {
                ASSERT_EQ(on_first(p[2]) ? p[2] : p[3], at[k]);
                continue;
            }
            ASSERT_EQ(static_cast<double>(t_part) / det, t);
            ASSERT_NEAR(p[0].x + t * (p[1].x - p[0].x), at[k].x, 0.500001);
            ASSERT_NEAR(p[0].y + t * (p[1].y - p[0].y), at[k].y, 0.500001);
        }
    }
}

}  // namespace
