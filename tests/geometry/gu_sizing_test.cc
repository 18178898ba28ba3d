#include "geometry/gu_sizing.h"

#include "tests/geometry/points.h"

namespace {

using Sizing = int (*)(int, gu_point_t*, int);

int Size(Sizing sizing, Points& points, int distance) {
    int const count = sizing(static_cast<int>(points.size()), points.data(), distance);
    if (count >= 0) points.resize(static_cast<std::size_t>(count));
    return count;
}

TEST(GuSizing, MovesTheCornersOfAxisParallelOutlines) {
    // Distance: before > after, in both directions. Repeated points go; the last one has all kinds
    // of corners.
    for (std::string const row :
         {"-1: 0 0, 0 0, 10 0, 10 0, 10 10, 0 10 > 1 1, 9 1, 9 9, 1 9",
          "2: 0 10, 10 10, 10 0, 20 0, 20 10, 30 10, 30 20, 20 20, 20 30, 10 30, 10 20, 0 20 > -2 "
          "8, 8 8, 8 -2, 22 -2, 22 8, 32 8, 32 22, 22 22, 22 32, 8 32, 8 22, -2 22"}) {
        auto const arrow = row.find('>');
        for (Sizing const sizing : {gu_size_polygon, gu_size_ortho_polygoni})
            for (bool const clockwise : {false, true}) {
                Points points = PointsOf(row.substr(0, arrow), 1),
                       want = PointsOf(row.substr(arrow));
                if (clockwise) std::reverse(points.begin(), points.end());
                if (clockwise) std::reverse(want.begin(), want.end());
                Size(sizing, points, NumbersOf(row)[0]);
                EXPECT_EQ(want, points) << row;
            }
    }
    // A middle point moves along a horizontal run, but across a vertical one.
    Points runs = PointsOf("0 0, 5 0, 10 0, 10 5, 10 10, 0 10");
    gu_size_ortho_polygon(6, runs.data(), 2);
    EXPECT_EQ(PointsOf("-2 -2, 3 -2, 12 -2, 12 7, 12 12, -2 12"), runs);
}

TEST(GuSizing, PutsEachCornerAtTheDistanceFromBothOfItsEdges) {
    std::mt19937 random(12);
    for (int round = 0; round < 300; ++round) {
        std::size_t const n = 3 + random() % 40;
        int const turn = round % 2 ? 1 : -1, distance = RandomCoord(random, 3000);
        Points before;  // a star
        for (unsigned i = 0; i < n; ++i) {
            double const angle = turn * 6.283185307179586 * i / static_cast<unsigned>(n);
            double const radius = 20000 + static_cast<double>(random() % 80000);
            before.push_back({int(radius * std::cos(angle)), int(radius * std::sin(angle))});
        }
        Points after = before;
        ASSERT_EQ(static_cast<int>(n), Size(gu_size_polygon, after, distance));
        for (std::size_t i = 0; i < n; ++i)
            for (std::size_t const edge : {i + n - 1, i}) {
                auto const &a = before[edge % n], &b = before[(edge + 1) % n], &p = after[i];
                double const dx = b.x - a.x, dy = b.y - a.y;
                double const right = (dy * (p.x - a.x) - dx * (p.y - a.y)) / std::hypot(dx, dy);
                // A coordinate is off by half a unit at most, a distance by less than one.
                ASSERT_NEAR(turn * distance, right, 0.75) << round;
            }
    }
}

TEST(GuSizing, RefusesTooFewPointsAndOutlinesThatTurnBack) {
    // The last ones: a closing point, and edges of different lengths.
    for (auto const* row :
         {"3 3", "0 0, 10 0, 0 0", "0 0, 10 0, 10 10, 0 10, 0 0", "0 0, 5 0, 2 0, 2 7"}) {
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

    Points comb = {{0, 0}};  // clockwise, 40002 points: negative in 16 bits
    for (int i = 0; i < 40000; ++i) comb.push_back({(i + 1) / 2, 10 + i / 2 % 2});
    comb.push_back({20000, 0});
    EXPECT_EQ(40002, Size(gu_size_ortho_polygoni, comb, 1));
    EXPECT_EQ((gu_point_t{1, 1}), comb[0]);  // shrunk, as if it were counter-clockwise
}

}  // namespace
