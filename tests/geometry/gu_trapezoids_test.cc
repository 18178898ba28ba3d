#include "geometry/gu_trapezoids.h"

#include <gtest/gtest.h>

#include <cstring>
#include <thread>

#include "tests/geometry/allocations.h"
#include "tests/geometry/plain_trapezoids.h"

bool operator==(gu_trapezoid_t const& a, gu_trapezoid_t const& b) {
    return std::memcmp(&a, &b, sizeof a) == 0;
}

std::ostream& operator<<(std::ostream& os, gu_trapezoid_t const& t) {
    return os << '(' << t.x_bl << ' ' << t.x_tl << ' ' << t.x_tr << ' ' << t.x_br << ' ' << t.y_b
              << ' ' << t.y_t << ')';
}

namespace {

using Trapezoids = std::vector<gu_trapezoid_t>;

Trapezoids Decompose(Points const& points) {
    TVarr<gu_trapezoid_t> out(1, VARR_DOUBLE);
    out.App({9, 9, 9, 9, 9, 9});  // must go
    auto const count = static_cast<unsigned>(points.size());
    unsigned const length = gu_polygon_to_trapezoids(sizeof(gu_point_t), count, points.data(), out);
    EXPECT_EQ(length, out.Len());
    return Trapezoids(out.begin(), out.end());
}

TEST(GuTrapezoids, KnownOutlines) {
    struct {
        Points points;
        Trapezoids want;
    } const rows[] = {
        {{{0, 0}, {10, 0}, {10, 10}, {0, 10}}, {{0, 0, 10, 10, 0, 10}}},
        {{{0, 0}, {10, 0}, {5, 10}}, {{0, 5, 5, 10, 0, 10}}},
        {{{0, 0}, {10, 5}, {0, 10}}, {{0, 0, 10, 0, 0, 5}, {0, 0, 0, 10, 5, 10}}},
        // The slanted edge passes 3.75, and -3.75 on the other side, at height 3.
        {{{0, 0}, {5, 4}, {9, 3}}, {{0, 3, 9, 0, 0, 3}, {3, 5, 5, 9, 3, 4}}},
        {{{0, 0}, {-9, 3}, {-5, 4}}, {{0, -9, -3, 0, 0, 3}, {-9, -5, -5, -3, 3, 4}}},
        // 3/9 of 6 is below 2 by a trifle that only the fused operation keeps: 0, not 1.
        {{{-1, 0}, {2, 9}, {20, 6}}, {{-1, 0, 20, -1, 0, 6}, {0, 2, 2, 20, 6, 9}}},
        {{}, {}},
        {{{0, 7}, {5, 7}, {3, 7}}, {}},
        {{{0, 0}, {4, 8}}, {{0, 4, 4, 0, 0, 8}}},                  // two edges that coincide
        {{{0, 0}, {8, 8}, {0, 8}, {8, 0}}, {{0, 8, 0, 8, 0, 8}}},  // crossing: not cut there
        {{{0, 0},
          {30, 0},
          {30, 30},
          {0, 30},
          {0, 10},
          {10, 10},
          {10, 20},
          {20, 20},
          {20, 10},
          {10, 10},
          {0, 10}},  // a square hole at the end of a slit
         {{0, 0, 30, 30, 0, 10},
          {0, 0, 10, 10, 10, 20},
          {20, 20, 30, 30, 10, 20},
          {0, 0, 30, 30, 20, 30}}},
        {{{kLowest, kLowest}, {kHighest, kLowest}, {kHighest, kHighest}, {kLowest, kHighest}},
         {{kLowest, kLowest, kHighest, kHighest, kLowest, kHighest}}},
    };
    for (auto const& row : rows) EXPECT_EQ(row.want, Decompose(row.points)) << &row - rows;
}

// Points of one of the kinds that make trouble: few heights, many crossings, long thin edges, range
// ends.
Points Troublesome(std::mt19937& random, int kind) {
    auto const corners = [&](unsigned most) { return static_cast<int>(random() % most); };
    switch (kind) {
        case 0: return RandomPoints(random, corners(13), 3);
        case 1: return RandomPoints(random, corners(40), 9);
        case 2: return RandomPoints(random, corners(100), 200);
        case 3: return RandomPoints(random, corners(30), 1073741823);
        case 4: return RandomPoints(random, corners(20), kHighest);
        case 5: {  // low and high rows: all edges cross in one slab
            Points p = RandomPoints(random, corners(200), 1000);
            for (std::size_t i = 0; i < p.size(); ++i) p[i].y = i % 2 ? 0 : 1 + p[i].x % 2;
            return p;
        }
        case 6: {  // coordinates at and near the ends, where differences wrap
            Points p = RandomPoints(random, corners(20), 2);
            for (auto& q : p) {
                if (random() % 2) q.x = q.x > 0 ? kHighest - q.x : kLowest - q.x;
                if (random() % 2) q.y = q.y > 0 ? kHighest - q.y : kLowest - q.y;
            }
            return p;
        }
        default: {  // slopes that meet whole numbers at many heights
            Points p = RandomPoints(random, corners(60), 12);
            for (auto& q : p) q = {q.x * 2520, q.y * 5};
            return p;
        }
    }
}

TEST(GuTrapezoids, AgreesWithCuttingEverythingFirst) {
    std::mt19937 random(57);
    for (int i = 0; i < 8000; ++i) {
        Points const points = Troublesome(random, i % 8);
        ASSERT_EQ(PlainTrapezoids(points), Decompose(points)) << testing::PrintToString(points);
    }
    Points const large = RandomPoints(random, 500, 100000);
    ASSERT_EQ(PlainTrapezoids(large), Decompose(large));
}

TEST(GuTrapezoids, ReadsRecordsOfAnyStride) {
    std::mt19937 random(58);
    Points const points = RandomPoints(random, 100, 50);
    for (std::size_t stride : {9U, 13U, 16U}) {
        std::vector<char> records(stride * points.size());
        for (std::size_t i = 0; i < points.size(); ++i)
            std::memcpy(&records[i * stride], &points[i], sizeof points[i]);
        TVarr<gu_trapezoid_t> out(10, VARR_ADD);
        gu_polygon_to_trapezoids(static_cast<unsigned>(stride), 100, records.data(), out);
        EXPECT_EQ(PlainTrapezoids(points), Trapezoids(out.begin(), out.end())) << stride;
    }
}

// Teeth of the heights that `height` gives, on a bar.
template <class Height>
Points Comb(int teeth, Height height) {
    Points points = {{4 * teeth, 0}, {0, 0}};
    for (int i = 0; i < teeth; ++i) {
        int const y = height(i);
        points.insert(points.end(), {{4 * i, 10}, {4 * i, y}, {4 * i + 2, y}, {4 * i + 2, 10}});
    }
    return points;
}

TEST(GuTrapezoids, TakesFewAllocationsAndThreeTimesTheOutput) {
    std::mt19937 random(59);
    Points star;
    for (int i = 0; i < 5000; ++i) {
        double const angle = 6.283185307179586 * i / 5000;
        double const radius = 1e8 * (1 + 0.2 * std::sin(5 * angle));
        star.push_back({static_cast<gu_coord_t>(radius * std::cos(angle)),
                        static_cast<gu_coord_t>(radius * std::sin(angle))});
    }
    Points const outlines[] = {
        star,
        Comb(5000, [](int) { return 20; }),
        Comb(5000, [](int i) { return 20 + i; }),
        Comb(200, [&](int) { return 20 + static_cast<int>(random() % 1000); }),
        RandomPoints(random, 300, 1000),
    };
    for (auto const& points : outlines) {
        TVarr<gu_trapezoid_t> out(64, VARR_ADD);
        HeapUse().Reset();
        auto const count = static_cast<unsigned>(points.size());
        unsigned const length = gu_polygon_to_trapezoids(8, count, points.data(), out);
        EXPECT_LE(HeapUse().calls, 4U);
        EXPECT_LE(HeapUse().peak, 3 * length * sizeof(gu_trapezoid_t) + 2048);
        EXPECT_LT(out.Size(), length + 64);
    }
    Points const few = RandomPoints(random, 60, 10);
    TVarr<gu_trapezoid_t> out(4096, VARR_ADD);
    HeapUse().Reset();
    EXPECT_GT(gu_polygon_to_trapezoids(8, 60, few.data(), out), 0U);
    EXPECT_EQ(0U, HeapUse().calls);
}

TEST(GuTrapezoids, LeavesNothingHalfDoneWithoutMemory) {
    std::mt19937 random(60);
    Points const points = RandomPoints(random, 200, 1000);
    Trapezoids const want = PlainTrapezoids(points);
    for (std::size_t call = 1; call <= 4; ++call) {
        TVarr<gu_trapezoid_t> out(4, VARR_DOUBLE);
        out.App(want[7]);
        HeapUse().Reset();
        HeapUse().fail_at = call;
        EXPECT_THROW(gu_polygon_to_trapezoids(8, 200, points.data(), out), std::bad_alloc);
        HeapUse().Reset();
        EXPECT_LE(out.Len(), 1U) << call;
        EXPECT_EQ(want.size(), gu_polygon_to_trapezoids(8, 200, points.data(), out));
        EXPECT_EQ(want, Trapezoids(out.begin(), out.end()));
    }
}

TEST(GuTrapezoidsThreads, CallsDoNotDisturbEachOther) {
    std::mt19937 random(61);
    Points const points[] = {RandomPoints(random, 150, 500), RandomPoints(random, 30, 500)};
    Trapezoids const want[] = {PlainTrapezoids(points[0]), PlainTrapezoids(points[1])};
    auto const run = [&](int mine) {
        for (int i = 0; i < 50; ++i) EXPECT_EQ(want[mine], Decompose(points[mine]));
    };
    std::thread other(run, 1);
    run(0);
    other.join();
}

}  // namespace
