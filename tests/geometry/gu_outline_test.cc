#include "geometry/gu_outline.h"

#include "tests/geometry/points.h"

namespace {

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
    Points p = PointsOf("1 1, 1 1, 2 2, 2 2, 1 1");
    p.resize(static_cast<std::size_t>(gu_delete_multiple_points(5, p.data(), p.data())));
    EXPECT_EQ(PointsOf("1 1, 2 2, 1 1"), p);
    EXPECT_EQ(1, gu_delete_multiple_pointsi(-3, &p[1], &p[0]));
    EXPECT_EQ(p[1], p[0]);
}

TEST(GuDeleteRedundantPoints, KeepsTheCorners) {
    // Of an open line (0) or an outline (1). Some turn back, or lose the first and then the last.
    Rows<int, char const*, char const*> const rows = {
        {0, "0 0, 4 0, 9 0, 2 0, 2 2", "0 0, 2 0, 2 2"},
        {0, "0 0, 3 3, 3 3, 5 4, 0 0", "0 0, 3 3, 5 4, 0 0"},
        {1, "1 1, 1 1", "1 1"},
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

}  // namespace
