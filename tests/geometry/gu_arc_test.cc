#include "geometry/gu_arc.h"

#include "geometry/gu_angle.h"
#include "tests/geometry/points.h"

namespace {

// The points of an arc, checked not to have touched more than `room`.
Points Arc(gu_point_t centre, int width, int height, short segments, short room, float start,
           float sweep) {
    gu_point_t const untouched = {-77, -77};
    Points out(static_cast<std::size_t>(std::max<int>(room, 0)) + 1, untouched);
    unsigned short count = 4711;
    gu_arc2a2polygon(&count, out.data(), &centre, width, height, segments, room, start, sweep);
    EXPECT_EQ(untouched, out.back());
    out.resize(count);
    return out;
}

TEST(GuAngle, ConvertsInDoubleAndNarrows) {
    EXPECT_EQ(-90.0F, gu_rad2deg(-1.57079633F));
    EXPECT_EQ(0x1.1df46ap-6F, gu_deg2rad(1.0F));
}

TEST(GuCircle, StartsHalfAStepAboveTheAxis) {
    // Centre, width, height, segments: points. Rounded on both sides of 0; the radius of a single
    // segment is negative.
    for (auto const* row : {"3 4 20 10 4: 13 9, -7 9, -7 -1, 13 -1",
                            "-3 0 30 30 5: 12 11, -9 18, -22 0, -9 -18, 12 -11",
                            "0 0 20 20 1: 10 0", "0 0 20 20 -1:"}) {
        auto const n = NumbersOf(row);
        Points const want = PointsOf(row, 5);
        Points out(want.size());
        gu_point_t const centre = {n[0], n[1]};
        unsigned short count = 4711;
        gu_circle2polygon(&count, out.data(), &centre, n[2], n[3], static_cast<short>(n[4]));
        EXPECT_EQ(want, out) << row;
        EXPECT_EQ(static_cast<unsigned short>(n[4]), count);
    }
}

TEST(GuArc, KeepsSinglePrecisionAndCutsTowardZero) {
    EXPECT_EQ(PointsOf("10 0, 9 10, 0 9"), Arc({0, 0}, 21, 21, 4, 100, 0, 1.57079633F));
    EXPECT_EQ(PointsOf("-1 0, -2 0"), Arc({-2, 0}, 3, 3, 4, 2, 0, 3.14159265F));
}

TEST(GuArc, CountsItsPoints) {
    // Segments, maximum, sweep, points. (float)pi is above pi, 6.2831855 is the smallest float
    // above a full turn. The last ones: little room, or none, and what cannot be reduced.
    Rows<short, short, float, std::size_t> const rows = {{64, 4, 3.1415927F, 4},
                                                         {64, 100, -3.1415927F, 34},
                                                         {64, 33, 3.1415927F, 33},
                                                         {64, 100, 3.1415925F, 33},
                                                         {100, 200, -19.566371F, 13},
                                                         {100, 200, 6.283185F, 101},
                                                         {100, 200, 6.2831855F, 3},
                                                         {-100, 200, 3.1415927F, 52},
                                                         {32767, 32767, 6.283185F, 32767},
                                                         {100, 2, 3, 2},
                                                         {100, -5, 3, 0},
                                                         {100, 200, 1e30F, 3},
                                                         {100, 200, std::nanf(""), 3}};
    for (auto const& [segments, room, sweep, want] : rows)
        EXPECT_EQ(want, Arc({0, 0}, 2000, 2000, segments, room, 1, sweep).size()) << sweep;
}

TEST(GuArc, InnerPointsStandHalfAStepOnEnlargedRadii) {
    std::mt19937 random(22);
    for (int round = 0; round < 300; ++round) {
        gu_point_t const centre = {RandomCoord(random, 100000), RandomCoord(random, 100000)};
        int const rx = 50000 + RandomCoord(random, 45000), ry = 100000 - rx;
        auto const segments = static_cast<short>(8 + random() % 200);
        auto const start = static_cast<float>(RandomCoord(random, 7000)) / 1000;
        auto const sweep = static_cast<float>(RandomCoord(random, 6200)) / 1000;
        auto const expect = [&](gu_point_t const& p, double angle, double step, double error) {
            double const enlarged = 1 / std::cos(step / 2);
            ASSERT_NEAR(centre.x + rx * enlarged * std::cos(angle), p.x, error) << round;
            ASSERT_NEAR(centre.y + ry * enlarged * std::sin(angle), p.y, error) << round;
        };
        auto const arc = Arc(centre, 2 * rx, 2 * ry, segments, 500, start, sweep);
        std::size_t const inner = arc.size() - 2;
        double const step = sweep / static_cast<double>(inner);
        expect(arc.front(), start, 0, 1.1);
        expect(arc.back(), start + sweep, 0, 1.1);
        // Adding steps in single precision loses up to two units more.
        for (unsigned i = 1; i <= inner; ++i) expect(arc[i], start + (i - 0.5) * step, step, 3);
    }
}

TEST(GuArc, AStartPointFixesOnlyTheAngle) {
    gu_point_t const centre = {kLowest, 0}, start = {kHighest, 0};  // the difference wraps to -1
    Points out(30);
    unsigned short count = 0;
    gu_arcpa2polygon(&count, out.data(), &centre, &start, 300, 200, 50, 30, 2.5F);
    out.resize(count);
    EXPECT_EQ(Arc(centre, 300, 200, 50, 30, 3.1415927F, 2.5F), out);
}

}  // namespace
