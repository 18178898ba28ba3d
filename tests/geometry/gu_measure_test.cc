#include "geometry/gu_measure.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <cmath>

#include "tests/geometry/points.h"

namespace {

Points const kSquare = {{0, 0}, {10, 0}, {10, 10}, {0, 10}};

std::int64_t TwiceSignedArea(Points const& p) {
    std::int64_t sum = 0;
    for (std::size_t i = 0; i < p.size(); ++i) {
        auto const& q = p[(i + 1) % p.size()];
        sum += std::int64_t{p[i].x} * q.y - std::int64_t{q.x} * p[i].y;
    }
    return sum;
}

// Checks orientation and area of a simple polygon in both directions, from a random first point.
template <class Orientation>
void CheckMeasures(Points p, std::mt19937& random, Orientation orientation) {
    std::rotate(p.begin(), p.begin() + static_cast<std::ptrdiff_t>(random() % p.size()), p.end());
    for (int turn = 0; turn < 2; ++turn) {
        std::int64_t const area = TwiceSignedArea(p);
        int const count = static_cast<int>(p.size());
        ASSERT_EQ(area > 0 ? 1 : -1, orientation(count, p.data())) << testing::PrintToString(p);
        ASSERT_EQ(static_cast<double>(std::abs(area)) / 2,
                  gu_polygon_area(static_cast<unsigned short>(count), p.data()));
        std::reverse(p.begin(), p.end());
    }
}

TEST(GuPolygonOrientation, AgreesWithTheSignedAreaOfStars) {
    std::mt19937 random(52);
    for (int i = 0; i < 3000; ++i) {
        int const corners = 3 + static_cast<int>(random() % 12);
        Points star;
        for (int k = 0; k < corners; ++k) {
            double const angle = 6.283185307179586 * k / corners;
            int const radius = 50 + static_cast<int>(random() % 1000);
            star.push_back({static_cast<gu_coord_t>(std::lround(radius * std::cos(angle))),
                            static_cast<gu_coord_t>(std::lround(radius * std::sin(angle)))});
        }
        CheckMeasures(star, random, gu_polygon_orientationi);
    }
}

TEST(GuPolygonOrientation, AgreesWithTheSignedAreaOfSkylines) {
    std::mt19937 random(53);
    for (int i = 0; i < 3000; ++i) {
        int const columns = 1 + static_cast<int>(random() % 6);
        Points skyline = {{columns, 0}, {0, 0}};
        for (int k = 0; k < columns; ++k) {
            int const height = 1 + static_cast<int>(random() % 4);
            skyline.push_back({k, height});
            skyline.push_back({k + 1, height});
        }
        if (i % 2)
            for (auto& p : skyline) p.x = -p.x;
        CheckMeasures(skyline, random, gu_polygon_orientation);
        CheckMeasures(skyline, random, gu_ortho_polygon_orientation);
    }
}

TEST(GuPolygonOrientation, FlatOutlinesAndRangeEnds) {
    struct {
        Points points;
        int want, want_ortho;
    } const rows[] = {
        {kSquare, 1, 1},
        {{kSquare.rbegin(), kSquare.rend()}, -1, -1},
        {{{0, 0}, {0, 5}}, 1, 1},
        {{}, 1, 1},
        {{{0, 0}, {0, 9}, {0, 5}}, 1, -1},  // all leftmost: no turn
        {{{0, kHighest}, {0, kHighest}, {0, kHighest}}, 1, 1},
        {{{kLowest, 0}, {kLowest, 9}, {kHighest, 9}, {kHighest, 0}}, -1, -1},
        {{{kLowest, kLowest}, {kHighest, kLowest}, {kHighest, kHighest}, {kLowest, kHighest}},
         1,
         1},
    };
    for (auto const& row : rows) {
        int const count = static_cast<int>(row.points.size());
        EXPECT_EQ(row.want, gu_polygon_orientationi(count, row.points.data())) << &row - rows;
        EXPECT_EQ(row.want_ortho, gu_ortho_polygon_orientationi(count, row.points.data()))
            << &row - rows;
    }
}

TEST(GuPolygonMeasures, PerimeterAreaAndBox) {
    Points const ends = {{kLowest, kLowest}, {kHighest, kLowest}, {kHighest, kHighest}};
    struct {
        Points points;
        double periphery, area;
        gu_rect_t box;
    } const rows[] = {
        {{}, 0, 0, {kHighest, kHighest, -kHighest, -kHighest}},
        {{{3, 4}}, 0, 0, {3, 4, 3, 4}},
        {{{0, 0}, {3, 4}}, 10, 0, {0, 0, 3, 4}},
        {kSquare, 40, 100, {0, 0, 10, 10}},
        {{{kLowest, kLowest}}, 0, 0, {kLowest, kLowest, kLowest, kLowest}},
        // Edges wrap to -1 in the perimeter; the area takes the true differences.
        {ends,
         2 + std::sqrt(2.0),
         4294967295.0 * 4294967295.0 / 2,
         {kLowest, kLowest, kHighest, kHighest}},
    };
    for (auto const& row : rows) {
        auto const count = static_cast<unsigned short>(row.points.size());
        gu_rect_t const box = gu_bounding_box(count, row.points.data());
        EXPECT_DOUBLE_EQ(row.periphery, gu_polygon_periphery(count, row.points.data()));
        EXPECT_DOUBLE_EQ(row.area, gu_polygon_area(count, row.points.data()));
        EXPECT_EQ((gu_point_t{row.box.x1, row.box.y1}), (gu_point_t{box.x1, box.y1}));
        EXPECT_EQ((gu_point_t{row.box.x2, row.box.y2}), (gu_point_t{box.x2, box.y2}));
    }
    Points many(65535, {1, 1});  // the count is unsigned
    many[65534] = {7, 1};
    EXPECT_EQ(7, gu_bounding_box(65535, many.data()).x2);
    EXPECT_EQ(12, gu_polygon_periphery(65535, many.data()));
}

TEST(GuIsRectangle, AcceptsAnyRotation) {
    struct {
        Points points;
        int want;
    } const rows[] = {
        {{{0, 0}, {10, 10}, {0, 20}, {-10, 10}}, 1},
        {kSquare, 1},
        {{{0, 0}, {10, 0}, {12, 10}, {2, 10}}, 0},
        {{{0, 0}, {10, 0}, {10, 10}, {1, 10}}, 0},
        {{{0, 0}, {0, 10}, {10, 0}, {10, 10}}, 0},  // crosses itself
        {{{0, 0}, {10, 0}, {10, 10}}, 0},
        {{{kLowest, 0}, {kHighest, 0}, {kHighest, 9}, {kLowest, 9}}, 1},
    };
    for (auto const& row : rows)
        EXPECT_EQ(row.want,
                  gu_is_rectangle(static_cast<short>(row.points.size()), row.points.data()))
            << "row " << &row - rows;
}

}  // namespace
