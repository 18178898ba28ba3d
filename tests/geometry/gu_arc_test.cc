#include "geometry/gu_arc.h"

#include "geometry/gu_angle.h"
#include "tests/geometry/points.h"

namespace {

// What a function draws around `centre`, checked not to have touched more than `room` points.
template <class Function, class... More>
Points Drawn(int room, Function draw, gu_point_t centre, More... more) {
    gu_point_t const untouched = {-77, -77};
    Points out(static_cast<std::size_t>(std::max(room, 0)) + 1, untouched);
    unsigned short count = 4711;
    draw(&count, out.data(), &centre, more...);
    EXPECT_EQ(untouched, out.back());
    out.resize(count);
    return out;
}

TEST(GuCircle, StartsHalfAStepAboveTheAxis) {
    // Centre, width, height, segments > points. Rounded on both sides of 0; the radius of a single
    // segment is negative.
    for (auto const& [text, n, _, want] :
         PointRows{"3 4 20 10 4: > 13 9, -7 9, -7 -1, 13 -1", "0 0 20 20 1: > 10 0",
                   "-3 0 30 30 5: > 12 11, -9 18, -22 0, -9 -18, 12 -11"}) {
        gu_point_t const centre = {int(n[0]), int(n[1])};
        EXPECT_EQ(want, Drawn(n[4], gu_circle2polygon, centre, n[2], n[3], n[4])) << text;
    }
}

TEST(GuArc, CountsItsPoints) {
    // Segments, maximum, sweep: points. (float)pi is above pi, 6.2831855 is the smallest float
    // above a full turn. The last ones: little room, or none, and what cannot be reduced.
    for (auto const* row :
         {"64 4 3.1415927: 4", "64 100 -3.1415927: 34", "64 33 3.1415927: 33",
          "100 200 -19.566371: 13", "100 200 6.283185: 101", "100 200 6.2831855: 3",
          "32767 32767 6.283185: 32767", "100 -5 3: 0", "100 200 nan: 3"}) {
        short segments, room;
        float sweep;
        std::size_t want;
        ASSERT_EQ(4, std::sscanf(row, "%hd %hd %f: %zu", &segments, &room, &sweep, &want));
        Points const arc =
            Drawn(room, gu_arc2a2polygon, {0, 0}, 2000, 2000, segments, room, 1, sweep);
        EXPECT_EQ(want, arc.size()) << row;
    }
}

TEST(GuArc, InnerPointsStandHalfAStepOnEnlargedRadii) {
    std::mt19937 random(22);
    for (int round = 0; round < 300; ++round) {
        gu_point_t const centre = {RandomCoord(random, 100000), RandomCoord(random, 100000)};
        int const rx = 50000 + RandomCoord(random, 45000), ry = 100000 - rx;
        auto const segments = static_cast<short>(8 + random() % 200);
        auto const start = static_cast<float>(RandomCoord(random, 7000)) / 1000;
        auto const sweep = static_cast<float>(RandomCoord(random, 6200)) / 1000;
        Points const arc =
            Drawn(500, gu_arc2a2polygon, centre, 2 * rx, 2 * ry, segments, 500, start, sweep);
        std::size_t const last = arc.size() - 1;
        double const step = sweep / static_cast<double>(last - 1);
        for (std::size_t i = 0; i <= last; ++i) {
            bool const end = i % last == 0;
            double const angle = start + (i == last ? sweep : end ? 0 : (i - 0.5) * step);
            double const enlarged = end ? 1 : 1 / std::cos(step / 2);
            // Adding steps in single precision loses up to two units more.
            double const error = end ? 1.1 : 3;
            ASSERT_NEAR(centre.x + rx * enlarged * std::cos(angle), arc[i].x, error) << round;
            ASSERT_NEAR(centre.y + ry * enlarged * std::sin(angle), arc[i].y, error) << round;
        }
    }
}

TEST(GuArc, NarrowsAnglesAndCutsTowardZero) {
    EXPECT_EQ(-90.0F, gu_rad2deg(-1.57079633F));
    EXPECT_EQ(0x1.1df46ap-6F, gu_deg2rad(1.0F));
    EXPECT_EQ(PointRow(": 10 0, 9 10, 0 9").points,
              Drawn(100, gu_arc2a2polygon, {0, 0}, 21, 21, 4, 100, 0, 1.57079633F));
    EXPECT_EQ(PointRow(": -1 0, -2 0").points,
              Drawn(2, gu_arc2a2polygon, {-2, 0}, 3, 3, 4, 2, 0, 3.14159265F));
    // A start point fixes only the angle. Here, the difference wraps to -1.
    gu_point_t const start = {INT32_MAX, 0}, centre = {INT32_MIN, 0};
    EXPECT_EQ(Drawn(30, gu_arc2a2polygon, centre, 300, 200, 50, 30, 3.1415927F, 2.5F),
              Drawn(30, gu_arcpa2polygon, centre, &start, 300, 200, 50, 30, 2.5F));
}

}  // namespace
