#include "geometry/gu_intersection.h"

#include <gtest/gtest.h>

#include <cmath>

#include "tests/geometry/points.h"

namespace {

struct Row {
    gu_point_t p1, p2, q1, q2;
    int want;
    gu_point_t point;
};

TEST(GuIntersection, Segments) {
    Row const rows[] = {
        {{0, 0}, {10, 10}, {0, 10}, {10, 0}, 1, {5, 5}},
        {{0, 0}, {10, 0}, {5, 0}, {20, 0}, 1, {5, 0}},    // in one line: q1
        {{0, 0}, {10, 0}, {20, 0}, {5, 0}, 1, {5, 0}},    // or q2
        {{0, 0}, {10, 0}, {-5, 0}, {20, 0}, 0, {77, 7}},  // neither end on the first
        {{0, 0}, {1, 1}, {5, 5}, {6, 7}, 0, {77, 7}},
        {{0, 0}, {10, 0}, {10, 0}, {10, 5}, 1, {10, 0}},  // touching ends
        {{0, 0}, {10, 0}, {4, 0}, {4, 0}, 1, {4, 0}},
        {{4, 0}, {4, 0}, {0, 0}, {10, 0}, 0, {77, 7}},  // the first has no direction
        {{0, 0}, {3, 3}, {0, 1}, {1, 0}, 1, {1, 0}},    // halves move away from q1
        {{kLowest, 0}, {-1, 0}, {-9, -5}, {-9, 5}, 1, {-9, 0}},
    };
    for (auto const& row : rows) {
        gu_point_t out = {77, 7};
        EXPECT_EQ(row.want, gu_intersection(&row.p1, &row.p2, &row.q1, &row.q2, &out));
        EXPECT_EQ(row.point, out) << "row " << &row - rows;
    }
}

TEST(GuLineIntersection, ReachesBeyondBothEndsUnlessParallel) {
    Row const rows[] = {
        {{0, 0}, {1, 0}, {9, 9}, {9, 8}, 1, {9, 0}},
        {{0, 0}, {1, 0}, {9, 0}, {8, 0}, 0, {77, 7}},  // one line, but outside the first segment
        {{0, 0}, {10, 0}, {20, 0}, {8, 0}, 1, {8, 0}},
        {{0, 0}, {10, 0}, {0, 1}, {10, 1}, 0, {77, 7}},
        // The parameter is beyond 2^32: the offset saturates, the sum wraps.
        {{5, 0}, {6, 0}, {0, 1000000000}, {1000000000, 999999999}, 1, {kLowest + 4, 0}},
    };
    for (auto const& row : rows) {
        gu_point_t out = {77, 7};
        EXPECT_EQ(row.want, gu_line_intersection(&row.p1, &row.p2, &row.q1, &row.q2, &out));
        EXPECT_EQ(row.point, out) << "row " << &row - rows;
    }
}

// Integer cross products instead of the solver.
struct Exact {
    std::int64_t d1x, d1y, d2x, d2y, det, num_t, num_s;

    explicit Exact(Points const& p)
        : d1x(p[1].x - p[0].x), d1y(p[1].y - p[0].y), d2x(p[3].x - p[2].x), d2y(p[3].y - p[2].y) {
        std::int64_t const x = p[2].x - p[0].x, y = p[2].y - p[0].y;
        det = d1x * d2y - d1y * d2x;
        num_t = x * d2y - y * d2x;
        num_s = x * d1y - y * d1x;
    }
    bool InUnit(std::int64_t num) const {
        return det > 0 ? 0 <= num && num <= det : det <= num && num <= 0;
    }
};

bool OnSegment(gu_point_t const& a, gu_point_t const& b, gu_point_t const& p) {
    return (b.x - a.x) * (p.y - a.y) == (b.y - a.y) * (p.x - a.x) && std::min(a.x, b.x) <= p.x &&
           p.x <= std::max(a.x, b.x) && std::min(a.y, b.y) <= p.y && p.y <= std::max(a.y, b.y);
}

TEST(GuIntersection, AgreesWithExactArithmetic) {
    std::mt19937 random(54);
    int met = 0;
    for (int i = 0; i < 50000; ++i) {
        Points const p = RandomPoints(random, 4, i % 2 ? 3 : 300);
        Exact const exact(p);
        gu_point_t out = {};
        double t = -1;
        bool const null_first = exact.d1x == 0 && exact.d1y == 0;
        bool const q1_on = !null_first && OnSegment(p[0], p[1], p[2]);
        bool const q2_on = !null_first && OnSegment(p[0], p[1], p[3]);
        bool const line = exact.det ? true : q1_on || q2_on;
        bool const segment =
            exact.det ? exact.InUnit(exact.num_t) && exact.InUnit(exact.num_s) : q1_on || q2_on;
        for (bool lines : {true, false}) {
            auto const* const a = p.data();
            bool const got = lines ? gu_line_intersection_l(a, a + 1, a + 2, a + 3, &t, &out)
                                   : gu_intersection_l(a, a + 1, a + 2, a + 3, &t, &out) == 1;
            ASSERT_EQ(lines ? line : segment, got) << testing::PrintToString(p);
            if (!got) continue;
            ++met;
            if (exact.det == 0) {
                ASSERT_EQ(q1_on ? p[2] : p[3], out) << testing::PrintToString(p);
                continue;
            }
            double const want = static_cast<double>(exact.num_t) / static_cast<double>(exact.det);
            ASSERT_EQ(want, t);
            double const slack = 0.5 + 1e-6;
            ASSERT_NEAR(p[0].x + want * static_cast<double>(exact.d1x), out.x, slack);
            ASSERT_NEAR(p[0].y + want * static_cast<double>(exact.d1y), out.y, slack);
        }
    }
    EXPECT_GT(met, 50000);
}

}  // namespace
