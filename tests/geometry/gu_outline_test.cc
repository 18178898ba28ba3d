#include "geometry/gu_outline.h"

#include <gtest/gtest.h>

#include "tests/geometry/points.h"

namespace {

TEST(GuCheckOrtho, ReportsTheWorstEdge) {
    struct {
        Points points;
        int closed, want;
    } const rows[] = {
        {{{0, 0}, {10, 0}, {10, 10}}, 0, 0},
        {{{0, 0}, {10, 0}, {10, 10}}, 1, 1},  // the closing edge counts
        {{{0, 0}, {10, 0}, {10, 5}}, 1, 2},
        {{{0, 10}, {10, 0}, {10, 10}}, 0, 1},
        {{{0, 0}, {1, 2}, {3, 4}}, 0, 2},  // 2 stays when a better edge follows
        {{{7, 7}}, 1, 0},
        {{}, 1, 0},
        {{{0, kLowest}, {0, kHighest}}, 0, 0},
        {{{kLowest, 0}, {0, kLowest}}, 0, 1},  // dx and dy are both -2^31 after wrapping
    };
    for (auto const& row : rows) {
        int const count = static_cast<int>(row.points.size());
        EXPECT_EQ(row.want, gu_check_orthoi(count, row.points.data(), row.closed)) << &row - rows;
        EXPECT_EQ(row.want, gu_check_ortho(count, row.points.data(), row.closed)) << &row - rows;
    }
}

TEST(GuSnapOrtho, MovesThePointAndItsReference) {
    struct {
        gu_point_t point, reference;
        int mode;
        gu_point_t want, want_reference;
    } const rows[] = {
        {{10, 3}, {0, 0}, 0, {10, 3}, {0, 3}},
        {{3, 10}, {0, 0}, 0, {3, 10}, {3, 0}},
        {{5, 5}, {0, 0}, 0, {5, 5}, {0, 5}},  // 45 degrees count as flat
        {{5, 5}, {5, 0}, 0, {5, 5}, {5, 0}},
        {{5, 5}, {0, 0}, 1, {5, 5}, {0, 0}},
        {{10, 4}, {0, 0}, 1, {10, 4}, {0, 4}},
        {{4, 10}, {0, 0}, 1, {4, 10}, {4, 0}},
        {{0, 0},
         {10, -6},
         1,
         {0, -10},
         {10, -10}},  // falling: in y, and away from the reference's y
        {{0, 0}, {10, -15}, 1, {0, -10}, {10, -10}},
        {{0, 0}, {10, 6}, 1, {0, 10}, {10, 10}},
        {{0, 0}, {10, 15}, 1, {15, 0}, {15, 15}},  // rising above 45 degrees: in x
        {{0, 0}, {10, 6}, 2, {0, 0}, {10, 6}},
        {{kHighest, 0}, {kLowest, 5}, 0, {kHighest, 0}, {kHighest, 5}},  // dx wraps to 1
        {{0, 0}, {kLowest, kLowest}, 1, {0, 0}, {kLowest, kLowest}},
    };
    for (auto const& row : rows) {
        gu_point_t reference = row.reference;
        std::uint64_t const packed = gu_snap_ortho(row.point, &reference, row.mode);
        gu_point_t const got = {static_cast<gu_coord_t>(packed >> 32),
                                static_cast<gu_coord_t>(packed & 0xFFFFFFFFU)};
        EXPECT_EQ(row.want, got) << "row " << &row - rows;
        EXPECT_EQ(row.want_reference, reference) << "row " << &row - rows;
    }
    for (int i = 0; i < 4; ++i) EXPECT_EQ(i, m2b[i]);
}

TEST(GuDeleteMultiplePoints, KeepsTheFirstOfEachRun) {
    Points const points = {{1, 1}, {1, 1}, {2, 2}, {2, 2}, {1, 1}};
    Points const want = {{1, 1}, {2, 2}, {1, 1}};
    Points out(5);
    ASSERT_EQ(3, gu_delete_multiple_pointsi(5, points.data(), out.data()));
    EXPECT_EQ(want, Points(out.begin(), out.begin() + 3));

    Points in_place = points;
    ASSERT_EQ(3, gu_delete_multiple_points(5, in_place.data(), in_place.data()));
    EXPECT_EQ(want, Points(in_place.begin(), in_place.begin() + 3));

    for (int count : {1, 0, -3}) {
        out[0] = {9, 9};
        EXPECT_EQ(1, gu_delete_multiple_pointsi(count, points.data(), out.data())) << count;
        EXPECT_EQ(points[0], out[0]) << count;
    }
}

bool Straight(gu_point_t const& a, gu_point_t const& b, gu_point_t const& c) {
    return (b.x - a.x) * (c.y - b.y) == (c.x - b.x) * (b.y - a.y);
}

Points WithoutRedundant(Points p, bool closed) {
    for (std::size_t i = 1; i + 1 < p.size();)
        if (Straight(p[i - 1], p[i], p[i + 1]))
            p.erase(p.begin() + static_cast<std::ptrdiff_t>(i));
        else
            ++i;
    if (p.size() < 2) return p;
    if (!closed) {
        if (p.back() == p[p.size() - 2]) p.pop_back();
        return p;
    }
    if (Straight(p.back(), p[0], p[1])) p.erase(p.begin());
    if (p.size() >= 2 && Straight(p[p.size() - 2], p.back(), p[0])) p.pop_back();
    return p;
}

TEST(GuDeleteRedundantPoints, AgreesWithRemovingOneByOne) {
    std::mt19937 random(51);
    for (int i = 0; i < 20000; ++i) {
        Points points = RandomPoints(random, static_cast<int>(random() % 9), 2);
        bool const closed = i % 2;
        Points const want = WithoutRedundant(points, closed);
        Points const before = points;
        int const count =
            gu_delete_redundant_pointsi(static_cast<int>(points.size()), points.data(), closed);
        points.resize(static_cast<std::size_t>(count));
        ASSERT_EQ(want, points) << testing::PrintToString(before) << (closed ? " closed" : " open");
    }
    Points square = {{0, 0}, {10, 0}, {10, 10}, {0, 10}, {0, 5}};
    EXPECT_EQ(4, gu_delete_redundant_points(5, square.data(), 1));
    EXPECT_EQ((gu_point_t{0, 10}), square[3]);
    EXPECT_EQ(-1, gu_delete_redundant_pointsi(-1, square.data(), 1));
}

}  // namespace
