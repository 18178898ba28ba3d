#include "geometry/gu_trapezoids.h"

#include <new>

#include "tests/geometry/decomposition.h"

static thread_local unsigned allocations;

// Not inlined, since the compiler then takes a replaced operator and malloc for a mismatched pair.
[[gnu::noinline]] void* operator new(std::size_t size) {
    ++allocations;
    void* const p = std::malloc(size);
    return p ? p : throw std::bad_alloc();
}
[[gnu::noinline]] void operator delete(void* p) noexcept { std::free(p); }
[[gnu::noinline]] void operator delete(void* p, std::size_t) noexcept { std::free(p); }

namespace {

Numbers Decompose(Points const& points, unsigned stride = 8) {
    return PiecesOf<gu_trapezoid_t>(points, stride, [=](unsigned n, void const* at, auto& out) {
        return gu_polygon_to_trapezoids(stride, n, at, out);
    });
}

TEST(GuTrapezoids, KnownOutlines) {
    char const* const rows[][2] = {
        {"0 0, 10 0, 10 10, 0 10", "0 0 10 10 0 10"},
        {"0 0, 10 5, 0 10", "0 0 10 0 0 5, 0 0 0 10 5 10"},
        // The slanted edge passes 3.75, and -3.75 on the other side, at height 3.
        {"0 0, 5 4, 9 3", "0 3 9 0 0 3, 3 5 5 9 3 4"},
        {"0 0, -9 3, -5 4", "0 -9 -3 0 0 3, -9 -5 -5 -3 3 4"},
        // 3/9 of 6 is below 2 by a trifle that only the fused operation keeps: 0, not 1.
        {"-1 0, 2 9, 20 6", "-1 0 20 -1 0 6, 0 2 2 20 6 9"},
        {"0 7, 5 7, 3 7", ""},
        {"0 0, 8 8, 0 8, 8 0", "0 8 0 8 0 8"}};  // crossing: not cut there
    for (auto const& [points, want] : rows)
        EXPECT_EQ(NumbersOf(want), Decompose(PointsOf(points))) << points;
}

TEST(GuTrapezoids, AgreesWithCuttingEverythingFirst) {
    std::mt19937 random(57);
    for (int i = 0; i < 4000; ++i) {
        Points const points = AnyOutline(random, i);
        ASSERT_EQ(CutAndPair(points, false), Decompose(points, 8 + random() % 6))
            << testing::PrintToString(points);
    }
}

TEST(GuTrapezoids, TakesFewAllocationsAndOneGrowth) {
    std::mt19937 random(59);
    for (int const count : {64, 300, 500}) {
        Points const points = RandomPoints(random, count, 100000);
        TVarr<gu_trapezoid_t> out(64, VARR_ADD);
        allocations = 0;
        unsigned const length =
            gu_polygon_to_trapezoids(8, static_cast<unsigned>(count), points.data(), out);
        EXPECT_LE(allocations, count > 64 ? 4U : 1U);
        EXPECT_LT(out.Size(), length + 64);
        EXPECT_EQ(CutAndPair(points, false), Decompose(points));
    }
}

}  // namespace
