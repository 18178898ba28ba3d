#include "geometry/gu_trapezoids.h"

#include <gtest/gtest.h>
#include <malloc.h>

#include <algorithm>
#include <cmath>
#include <cstdlib>
#include <cstring>
#include <new>
#include <set>
#include <tuple>

#include "tests/geometry/points.h"

// What the global allocation functions gave this thread since the last assignment of {}.
static thread_local struct {
    unsigned calls;
    std::ptrdiff_t bytes, peak;
} heap;

// Not inlined, since the compiler then takes a replaced operator and malloc for a mismatched pair.
[[gnu::noinline]] static void* Take(std::size_t size) {
    void* const p = std::malloc(size);
    if (!p) throw std::bad_alloc();
    ++heap.calls;
    heap.bytes += static_cast<std::ptrdiff_t>(malloc_usable_size(p));
    heap.peak = std::max(heap.peak, heap.bytes);
    return p;
}

[[gnu::noinline]] static void Give(void* p) {
    heap.bytes -= static_cast<std::ptrdiff_t>(malloc_usable_size(p));
    std::free(p);
}

void* operator new(std::size_t size) { return Take(size); }
void* operator new[](std::size_t size) { return Take(size); }
void operator delete(void* p) noexcept { Give(p); }
void operator delete(void* p, std::size_t) noexcept { Give(p); }
void operator delete[](void* p) noexcept { Give(p); }
void operator delete[](void* p, std::size_t) noexcept { Give(p); }

namespace {

using Numbers = std::vector<int>;  // six for each trapezoid

double Wrapped(gu_coord_t a, gu_coord_t b) {
    return static_cast<std::int32_t>(static_cast<std::uint32_t>(std::int64_t{a} - b));
}

// The plain way: cut every edge at every height, sort all pieces, pair them.
Numbers Plain(Points const& points) {
    std::vector<Edge_t> pieces;
    std::set<gu_coord_t> heights;
    for (std::size_t i = 0; i < points.size(); ++i) {
        gu_point_t a = points[i], b = points[(i + 1) % points.size()];
        if (a.y == b.y) continue;
        if (a.y > b.y) std::swap(a, b);
        pieces.push_back({a.x, a.y, b.x, b.y});
        heights.insert({a.y, b.y});
    }
    for (std::size_t i = 0; i < pieces.size(); ++i) {
        auto const [x0, y0, x1, y1] = pieces[i];
        gu_coord_t const y = *heights.upper_bound(y0);
        if (y >= y1) continue;
        double const slope = Wrapped(x1, x0) / Wrapped(y1, y0);
        double const exact = std::fma(slope, Wrapped(y, y0), static_cast<double>(x0));
        auto const x = static_cast<gu_coord_t>(std::clamp<double>(exact, kLowest, kHighest));
        pieces[i] = {x0, y0, x, y};
        pieces.push_back({x, y, x1, y1});
    }
    std::sort(pieces.begin(), pieces.end(), [](Edge_t const& a, Edge_t const& b) {
        return std::tie(a.y0, a.x0, a.x1) < std::tie(b.y0, b.x0, b.x1);
    });
    Numbers out;
    for (std::size_t i = 0; i < pieces.size(); i += 2) {
        Edge_t const &e = pieces[i], &f = pieces[i + 1];
        out.insert(out.end(), {e.x0, e.x1, f.x1, f.x0, e.y0, f.y1});
    }
    return out;
}

Numbers Decompose(Points const& points, std::size_t stride = sizeof(gu_point_t)) {
    std::vector<char> records(stride * points.size());
    for (std::size_t i = 0; i < points.size(); ++i)
        std::memcpy(&records[i * stride], &points[i], sizeof points[i]);
    TVarr<gu_trapezoid_t> out(1, VARR_DOUBLE);
    out.App({9, 9, 9, 9, 9, 9});  // must go
    auto const count = static_cast<unsigned>(points.size());
    unsigned const length =
        gu_polygon_to_trapezoids(static_cast<unsigned>(stride), count, records.data(), out);
    EXPECT_EQ(length, out.Len());
    Numbers numbers;
    for (auto const& t : out)
        numbers.insert(numbers.end(), {t.x_bl, t.x_tl, t.x_tr, t.x_br, t.y_b, t.y_t});
    return numbers;
}

TEST(GuTrapezoids, KnownOutlines) {
    struct {
        char const *points, *want;
    } const rows[] = {
        {"0 0, 10 0, 10 10, 0 10", "0 0 10 10 0 10"},
        {"0 0, 10 0, 5 10", "0 5 5 10 0 10"},
        {"0 0, 10 5, 0 10", "0 0 10 0 0 5, 0 0 0 10 5 10"},
        // The slanted edge passes 3.75, and -3.75 on the other side, at height 3.
        {"0 0, 5 4, 9 3", "0 3 9 0 0 3, 3 5 5 9 3 4"},
        {"0 0, -9 3, -5 4", "0 -9 -3 0 0 3, -9 -5 -5 -3 3 4"},
        // 3/9 of 6 is below 2 by a trifle that only the fused operation keeps: 0, not 1.
        {"-1 0, 2 9, 20 6", "-1 0 20 -1 0 6, 0 2 2 20 6 9"},
        {"0 7, 5 7, 3 7", ""},
        {"0 0, 4 8", "0 4 4 0 0 8"},            // two edges that coincide
        {"0 0, 8 8, 0 8, 8 0", "0 8 0 8 0 8"},  // crossing: not cut there
        // a square hole at the end of a slit
        {"0 0, 30 0, 30 30, 0 30, 0 10, 10 10, 10 20, 20 20, 20 10, 10 10, 0 10",
         "0 0 30 30 0 10, 0 0 10 10 10 20, 20 20 30 30 10 20, 0 0 30 30 20 30"}};
    for (auto const& row : rows)
        EXPECT_EQ(NumbersOf(row.want), Decompose(PointsOf(row.points))) << row.points;
}

TEST(GuTrapezoids, AgreesWithCuttingEverythingFirst) {
    struct {
        unsigned most;
        int reach;
    } const kinds[] = {{13, 3},        {40, 9}, {100, 200},  {30, 1073741823},
                       {20, kHighest}, {20, 2}, {200, 1000}, {60, 12}};
    std::mt19937 random(57);
    for (int i = 0; i < 8000; ++i) {
        auto const& kind = kinds[i % 8];
        Points points = RandomPoints(random, static_cast<int>(random() % kind.most), kind.reach);
        for (auto& p : points) {
            if (kind.reach == 2) {  // to the ends of the range, where differences wrap
                if (random() % 2) p.x = p.x > 0 ? kHighest - p.x : kLowest - p.x;
                if (random() % 2) p.y = p.y > 0 ? kHighest - p.y : kLowest - p.y;
            }
            if (kind.reach == 1000) p.y = (&p - points.data()) % 2 ? 0 : 1 + p.x % 2;  // one slab
            if (kind.reach == 12) p = {p.x * 2520, p.y * 5};  // many cuts are whole numbers
        }
        ASSERT_EQ(Plain(points), Decompose(points, 8 + static_cast<std::size_t>(i % 6)))
            << testing::PrintToString(points);
    }
    Points const large = RandomPoints(random, 500, 100000);
    ASSERT_EQ(Plain(large), Decompose(large));
}

TEST(GuTrapezoids, TakesFewAllocationsAndThreeTimesTheOutput) {
    std::mt19937 random(59);
    Points comb = {{20000, 0}, {0, 0}};
    for (int x = 0; x < 20000; x += 4)
        comb.insert(comb.end(), {{x, 10}, {x, 20}, {x + 2, 20}, {x + 2, 10}});
    for (auto const& points :
         {comb, RandomPoints(random, 300, 1000), RandomPoints(random, 64, 9)}) {
        TVarr<gu_trapezoid_t> out(64, VARR_ADD);
        heap = {};
        auto const count = static_cast<unsigned>(points.size());
        unsigned const length = gu_polygon_to_trapezoids(8, count, points.data(), out);
        auto const bytes = static_cast<std::ptrdiff_t>(length * sizeof(gu_trapezoid_t));
        EXPECT_LE(heap.calls, count > 64 ? 4U : 1U);
        EXPECT_GE(heap.peak, bytes);
        EXPECT_LE(heap.peak, 3 * bytes + 2048);
        EXPECT_LT(out.Size(), length + 64);
    }
}

}  // namespace
