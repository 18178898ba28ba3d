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

Points Circle(gu_point_t centre, int width, int height, short segments) {
    Points out(static_cast<std::size_t>(std::max<int>(segments, 0)));
    unsigned short count = 4711;
    gu_circle2polygon(&count, out.data(), &centre, width, height, segments);
    EXPECT_EQ(static_cast<unsigned short>(segments), count);
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
        EXPECT_EQ(PointsOf(row, 5), Circle({n[0], n[1]}, n[2], n[3], static_cast<short>(n[4])));
    }
}

TEST(GuArc, KeepsSinglePrecisionAndCutsTowardZero) {
    EXPECT_EQ(PointsOf("10 0, 9 10, 0 9"), Arc({0, 0}, 21, 21, 4, 100, 0, 1.57079633F));
    EXPECT_EQ(PointsOf("-1 0, -2 0"), Arc({-2, 0}, 3, 3, 4, 2, 0, 3.14159265F));
}

TEST(GuArc, CountsItsPoints) {
    // Segments, maximum, sweep, points. (float)pi is above pi, 6.2831855 is the smallest float
    // above a full turn. The last ones: little room inside, or none at all, and what cannot be
    // reduced.
    std::istringstream rows(
        "64 4 3.1415927 4  64 100 -3.1415927 34  64 33 3.1415927 33  64 100 3.1415925 33 "
        "100 200 -19.566371 13  100 200 6.283185 101  100 200 6.2831855 3  100 200 0 3  100 2 3 2 "
        "-100 200 3.1415927 52  32767 32767 6.283185 32767  100 1 3 0  100 -5 3 0 "
        "100 200 1e30 3  100 200 nan 3");
    short segments, room;
    std::string sweep;
    for (std::size_t want; rows >> segments >> room >> sweep >> want;)
        EXPECT_EQ(want, Arc({0, 0}, 2000, 2000, segments, room, 1, std::stof(sweep)).size())
            << segments << ' ' << room << ' ' << sweep;
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
        double step = sweep / static_cast<double>(inner);
        expect(arc.front(), start, 0, 1.1);
        expect(arc.back(), start + sweep, 0, 1.1);
        // Adding steps in single precision loses up to two units more.
        for (unsigned i = 1; i <= inner; ++i) expect(arc[i], start + (i - 0.5) * step, step, 3);

        auto const circle = Circle(centre, 2 * rx, 2 * ry, segments);
        step = 2 * std::acos(-1.0) / segments;
        for (unsigned i = 0; i < circle.size(); ++i)
            expect(circle[i], (i + 0.5) * step, step, 0.501);
    }
}

TEST(GuArc, AStartPointFixesOnlyTheAngle) {
    // Centre, start, angle. The last difference wraps to -1.
    std::istringstream rows(
        "5 5 5 1000 1.5707964  5 5 5 5 0  -2147483648 0 2147483647 0 3.1415927");
    gu_point_t c, p;
    for (float angle; rows >> c.x >> c.y >> p.x >> p.y >> angle;) {
        Points out(30);
        unsigned short count = 0;
        gu_arcpa2polygon(&count, out.data(), &c, &p, 300, 200, 50, 30, 2.5F);
        out.resize(count);
        EXPECT_EQ(Arc(c, 300, 200, 50, 30, angle, 2.5F), out) << c << p;
    }
}

}  // namespace
