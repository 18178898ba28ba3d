#include "geometry/gu_sizing.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <cmath>

#include "tests/geometry/points.h"

namespace {

using Sizing = int (*)(int, gu_point_t*, int);

int Size(Sizing sizing, Points& points, int distance) {
    return sizing(static_cast<int>(points.size()), points.data(), distance);
}

TEST(GuSizing, MovesTheCornersOfAxisParallelOutlines) {
    struct {
        Points points;
        int distance;
        Points want;
    } const rows[] = {
        {{{0, 0}, {10, 0}, {10, 10}, {0, 10}}, 1, {{-1, -1}, {11, -1}, {11, 11}, {-1, 11}}},
        {{{0, 0}, {0, 10}, {10, 10}, {10, 0}}, 1, {{-1, -1}, {-1, 11}, {11, 11}, {11, -1}}},
        {{{0, 0}, {10, 0}, {10, 10}, {0, 10}}, -1, {{1, 1}, {9, 1}, {9, 9}, {1, 9}}},
        // a repeated point goes, also in front
        {{{0, 0}, {10, 0}, {10, 0}, {10, 10}, {0, 10}},
         1,
         {{-1, -1}, {11, -1}, {11, 11}, {-1, 11}}},
        {{{0, 0}, {0, 0}, {10, 0}, {10, 10}, {0, 10}}, 1, {{-1, -1}, {11, -1}, {11, 11}, {-1, 11}}},
        // an L: its inner corner moves outward too
        {{{0, 0}, {9, 0}, {9, 4}, {5, 4}, {5, 8}, {0, 8}},
         2,
         {{-2, -2}, {11, -2}, {11, 6}, {7, 6}, {7, 10}, {-2, 10}}},
    };
    for (auto const& row : rows) {
        for (Sizing const sizing : {gu_size_polygon, gu_size_ortho_polygoni}) {
            Points points = row.points;
            int const count = Size(sizing, points, row.distance);
            ASSERT_EQ(static_cast<int>(row.want.size()), count) << &row - rows;
            points.resize(row.want.size());
            EXPECT_EQ(row.want, points) << &row - rows;
        }
    }
}

TEST(GuSizing, BothWaysAgreeOnRandomHistograms) {
    std::mt19937 random(11);
    for (int round = 0; round < 500; ++round) {
        // Columns of heights that alternate around 1000, in either direction.
        Points points = {{0, 0}};
        int x = 0;
        for (unsigned i = 0; i < 1 + random() % 20; ++i) {
            int const y = static_cast<int>(1 + random() % 999 + 1000 * (i % 2));
            points.push_back({x, y});
            points.push_back({x += 1 + static_cast<int>(random() % 100000), y});
        }
        points.push_back({x, 0});
        if (random() % 2) std::reverse(points.begin(), points.end());

        Points ortho = points;
        int const distance = RandomCoord(random, 5000);
        ASSERT_EQ(Size(gu_size_polygon, points, distance),
                  Size(gu_size_ortho_polygoni, ortho, distance));
        ASSERT_EQ(ortho, points) << "round " << round << ", distance " << distance;
    }
}

// How far `p` lies to the right of the line from `a` to `b`.
double RightOf(gu_point_t const& a, gu_point_t const& b, gu_point_t const& p) {
    double const dx = b.x - a.x, dy = b.y - a.y;
    return (dy * (p.x - a.x) - dx * (p.y - a.y)) / std::hypot(dx, dy);
}

TEST(GuSizePolygon, PutsEachCornerAtTheDistanceFromBothOfItsEdges) {
    std::mt19937 random(12);
    for (int round = 0; round < 300; ++round) {
        int const count = 3 + static_cast<int>(random() % 40);
        Points before;
        for (int i = 0; i < count; ++i) {
            double const angle = 6.283185307179586 * i / count;
            double const radius = 20000 + static_cast<double>(random() % 80000);
            before.push_back({static_cast<int>(radius * std::cos(angle)),
                              static_cast<int>(radius * std::sin(angle))});
        }
        bool const clockwise = random() % 2 != 0;
        if (clockwise) std::reverse(before.begin(), before.end());
        int const distance = RandomCoord(random, 3000);
        double const right = clockwise ? -distance : distance;

        Points after = before;
        ASSERT_EQ(count, Size(gu_size_polygon, after, distance));
        for (std::size_t i = 0; i < before.size(); ++i) {
            auto const& corner = before[i];
            auto const& previous = before[(i + before.size() - 1) % before.size()];
            auto const& next = before[(i + 1) % before.size()];
            // A coordinate is off by half a unit at most, a distance by less than one.
            ASSERT_NEAR(right, RightOf(previous, corner, after[i]), 0.75) << round << ": " << i;
            ASSERT_NEAR(right, RightOf(corner, next, after[i]), 0.75) << round << ": " << i;
        }
    }
}

TEST(GuSizePolygon, RefusesTooFewPointsAndOutlinesThatTurnBack) {
    Points const rows[] = {
        {},
        {{3, 3}},
        {{0, 0}, {10, 0}, {0, 0}},
        {{0, 0}, {10, 0}, {10, 10}, {0, 10}, {0, 0}},  // an edge without length
        {{0, 0}, {5, 0}, {2, 0}, {2, 7}},              // edges of different lengths
    };
    for (auto const& row : rows) {
        Points points = row;
        EXPECT_EQ(-1, Size(gu_size_polygon, points, 1)) << &row - rows;
    }
    Points one = {{3, 3}};
    EXPECT_EQ(-1, gu_size_ortho_polygoni(1, one.data(), 1));
    EXPECT_EQ(-1, gu_size_ortho_polygon(0, one.data(), 1));
}

TEST(GuSizing, EndsOfTheRange) {
    Points repeated = {{7, 7}, {7, 7}};
    EXPECT_EQ(1, Size(gu_size_polygon, repeated, 1));
    EXPECT_EQ((gu_point_t{0, 0}), repeated[0]);

    Points const square = {{0, 0}, {0, 10}, {kHighest, 10}, {kHighest, 0}};
    Points cut = square, wrapped = square;
    EXPECT_EQ(4, Size(gu_size_polygon, cut, 1));
    EXPECT_EQ((Points{{-1, -1}, {-1, 11}, {kHighest, 11}, {kHighest, -1}}), cut);
    EXPECT_EQ(4, Size(gu_size_ortho_polygoni, wrapped, 1));
    EXPECT_EQ((Points{{-1, -1}, {-1, 11}, {kLowest, 11}, {kLowest, -1}}), wrapped);

    Points clockwise = {{0, 0}, {0, 10}, {10, 10}, {10, 0}};
    EXPECT_EQ(4, Size(gu_size_polygon, clockwise, kLowest));  // its negation is no int
    EXPECT_EQ((gu_point_t{kHighest, kHighest}), clockwise[0]);
}

TEST(GuSizeOrthoPolygon, TakesTheOrientationFromTheLowest16BitsOfTheCount) {
    Points comb = {{0, 0}};  // clockwise, 40002 points
    for (int i = 0; i < 20000; ++i) {
        comb.push_back({i, 10 + i % 2});
        comb.push_back({i + 1, 10 + i % 2});
    }
    comb.push_back({20000, 0});
    EXPECT_EQ(40002, Size(gu_size_ortho_polygoni, comb, 1));
    EXPECT_EQ((gu_point_t{1, 1}), comb[0]);  // shrunk, as if it were counter-clockwise
}

}  // namespace
