#include "geometry/gu_intersection.h"

#include "tests/geometry/points.h"

namespace {

TEST(GuIntersection, RoundsAndWraps) {
    // p1 p2 q1 q2: where the lines and the segments meet; 0 0 if they do not. Halves move away from
    // p1 and q1. In the last row, the offset saturates and the sum wraps.
    for (auto const* row :
         {"0 0, 3 3, 0 1, 1 0: 1 1, 1 0", "-2147483648 0, -1 0, -9 -5, -9 5: -9 0, -9 0",
          "5 0, 6 0, 0 1000000000, 1000000000 999999999: -2147483644 0, 0 0"}) {
        Points const p = PointsOf(row);
        gu_point_t lines = {0, 0}, segments = {0, 0};
        EXPECT_EQ(1, gu_line_intersection(&p[0], &p[1], &p[2], &p[3], &lines)) << row;
        EXPECT_EQ(p[5].x != 0, gu_intersection(&p[0], &p[1], &p[2], &p[3], &segments)) << row;
        EXPECT_TRUE(p[4] == lines && p[5] == segments) << row << lines << segments;
    }
}

// Of the vectors from `a` to `b` and from `c` to `d`.
int Cross(gu_point_t const& a, gu_point_t const& b, gu_point_t const& c, gu_point_t const& d) {
    return (b.x - a.x) * (d.y - c.y) - (b.y - a.y) * (d.x - c.x);
}

bool Within(int part, int whole) {
    return whole > 0 ? 0 <= part && part <= whole : whole <= part && part <= 0;
}

TEST(GuIntersection, AgreesWithExactArithmetic) {
    std::mt19937 random(54);
    for (int i = 0; i < 50000; ++i) {
        Points const p = RandomPoints(random, 4, i % 2 ? 3 : 300);
        auto const on_first = [&](gu_point_t const& q) {
            return !(p[0] == p[1]) && Cross(p[0], p[1], p[0], q) == 0 &&
                   Within(q.x - p[0].x, p[1].x - p[0].x) && Within(q.y - p[0].y, p[1].y - p[0].y);
        };
        int const det = Cross(p[0], p[1], p[2], p[3]);
        int const t_part = Cross(p[0], p[2], p[2], p[3]), s_part = Cross(p[0], p[2], p[0], p[1]);
        bool const end_on_first = on_first(p[2]) || on_first(p[3]);
        bool const lines = det ? true : end_on_first;
        bool const segments = det ? Within(t_part, det) && Within(s_part, det) : end_on_first;
        gu_point_t at[2];
        double t = 0;
        SCOPED_TRACE(testing::PrintToString(p));
        ASSERT_EQ(lines, gu_line_intersection_l(&p[0], &p[1], &p[2], &p[3], &t, &at[0]));
        ASSERT_EQ(segments, gu_intersection_l(&p[0], &p[1], &p[2], &p[3], &t, &at[1]));
        for (int k = 0; k < lines + segments; ++k) {
            if (det == 0) {
                ASSERT_EQ(on_first(p[2]) ? p[2] : p[3], at[k]);
                continue;
            }
            ASSERT_EQ(static_cast<double>(t_part) / det, t);
            ASSERT_NEAR(p[0].x + t * (p[1].x - p[0].x), at[k].x, 0.500001);
            ASSERT_NEAR(p[0].y + t * (p[1].y - p[0].y), at[k].y, 0.500001);
        }
    }
}

}  // namespace
