#include "geometry/gu_measure.h"

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
    Points many(65535, {1, 1});  // the count is unsigned
    many.back().x = 7;
    EXPECT_EQ(7, gu_bounding_box(65535, many.data()).x2);
}

}  // namespace
