#include "geometry/gu_arc.h"

#include <gtest/gtest.h>

#include <cmath>
#include <limits>

#include "tests/geometry/points.h"

namespace {

double const kPi = 3.141592653589793;
gu_point_t const kUntouched = {-77, -77};

// The points of an arc, checked not to have touched more than `room`.
Points Arc(gu_point_t centre, int width, int height, short segments, short room, float start,
           float sweep) {
    Points out(static_cast<std::size_t>(room < 0 ? 0 : room) + 1, kUntouched);
    unsigned short count = 4711;
    gu_arc2a2polygon(&count, out.data(), &centre, width, height, segments, room, start, sweep);
    EXPECT_EQ(kUntouched, out.back());
    EXPECT_LT(count, out.size());
    out.resize(count);
    return out;
}

Points Circle(gu_point_t centre, int width, int height, short segments) {
    Points out(segments < 0 ? 0 : static_cast<std::size_t>(segments));
    unsigned short count = 4711;
    gu_circle2polygon(&count, out.data(), &centre, width, height, segments);
    EXPECT_EQ(static_cast<unsigned short>(segments), count);
    return out;
}

TEST(GuCircle, StartsHalfAStepAboveTheAxis) {
    EXPECT_EQ((Points{{10, 10}, {-10, 10}, {-10, -10}, {10, -10}}), Circle({0, 0}, 20, 20, 4));
    EXPECT_EQ((Points{{13, 9}, {-7, 9}, {-7, -1}, {13, -1}}), Circle({3, 4}, 20, 10, 4));
    EXPECT_EQ((Points{{12, 11}, {-9, 18}, {-22, 0}, {-9, -18}, {12, -11}}),
              Circle({-3, 0}, 30, 30, 5));                    // rounded on both sides of 0
    EXPECT_EQ((Points{{10, 0}}), Circle({0, 0}, 20, 20, 1));  // a negative radius at half a turn
    EXPECT_TRUE(Circle({0, 0}, 20, 20, 0).empty());
    EXPECT_TRUE(Circle({0, 0}, 20, 20, -1).empty());
    for (auto const& p : Circle({0, 0}, kHighest, kHighest, 2)) EXPECT_EQ(p.y > 0, p.y == kHighest);
}

TEST(GuCircle, ItsEdgesTouchTheEllipse) {
    std::mt19937 random(21);
    for (int round = 0; round < 300; ++round) {
        gu_point_t const centre = {RandomCoord(random, 100000), RandomCoord(random, 100000)};
        double const rx = 5000 + static_cast<int>(random() % 90000);
        double const ry = 5000 + static_cast<int>(random() % 90000);
        int const segments = 3 + static_cast<int>(random() % 200);
        auto const points = Circle(centre, static_cast<int>(2 * rx), static_cast<int>(2 * ry),
                                   static_cast<short>(segments));
        for (int i = 0; i < segments; ++i) {
            auto const& a = points[static_cast<std::size_t>(i)];
            auto const& b = points[static_cast<std::size_t>((i + 1) % segments)];
            // The middle of an edge lies on the curve, at the next whole step.
            double const angle = 2 * kPi * (i + 1) / segments;
            ASSERT_NEAR(centre.x + rx * std::cos(angle), (a.x + b.x) / 2.0, 0.51) << round;
            ASSERT_NEAR(centre.y + ry * std::sin(angle), (a.y + b.y) / 2.0, 0.51) << round;
        }
    }
}

TEST(GuArc, KeepsSinglePrecisionAndCutsTowardZero) {
    auto const quarter = static_cast<float>(kPi / 2);
    auto const half = static_cast<float>(kPi);
    EXPECT_EQ((Points{{10, 0}, {9, 10}, {0, 9}}), Arc({0, 0}, 20, 20, 4, 100, 0, quarter));
    EXPECT_EQ((Points{{10, 0}, {9, -10}, {0, -9}}), Arc({0, 0}, 20, 20, 4, 100, 0, -quarter));
    EXPECT_EQ((Points{{10, 0}, {9, 10}, {0, 9}}), Arc({0, 0}, 21, 21, 4, 100, 0, quarter));
    EXPECT_EQ((Points{{-1, 0}, {-2, 0}}), Arc({-2, 0}, 3, 3, 4, 2, 0, half));
}

TEST(GuArc, CountsItsPoints) {
    struct {
        short segments, max_points;
        float sweep;
        std::size_t want;
    } const rows[] = {
        {64, 4, 3.1415927f, 4},
        {64, 100, 3.1415927f, 34},  // (float)pi is above pi
        {64, 100, -3.1415927f, 34},
        {64, 34, 3.1415927f, 34},  // all 32 segments just fit
        {64, 33, 3.1415927f, 33},
        {64, 100, 3.1415925f, 33},  // a little less than half
        {100, 200, 7.0f, 13},       // reduced to 0.7168, 11.4 segments
        {100, 200, -7.0f - 12.566371f, 13},
        {100, 200, 6.283185f, 101},  // the largest float below a full turn
        {100, 200, 6.2831855f, 3},   // the smallest one above it
        {100, 200, 0, 3},
        {100, 3, 0, 3},
        {100, 2, 0, 2},  // no room for an inner point
        {100, 2, 3, 2},
        {100, 1, 3, 0},
        {100, 0, 3, 0},
        {100, -5, 3, 0},
        {-100, 200, 3.1415927f, 52},
        {32767, 32767, 6.283185f, 32767},
        {100, 200, 1e30f, 3},  // too large to be reduced: 32-bit maximum, cut to 16 bits
        {100, 200, std::numeric_limits<float>::quiet_NaN(), 3},
    };
    for (auto const& row : rows)
        EXPECT_EQ(row.want,
                  Arc({0, 0}, 2000, 2000, row.segments, row.max_points, 1, row.sweep).size())
            << row.segments << ", " << row.max_points << ", " << row.sweep;
}

TEST(GuArc, StartsAndEndsOnTheCurveAndTouchesIt) {
    std::mt19937 random(22);
    for (int round = 0; round < 300; ++round) {
        gu_point_t const centre = {RandomCoord(random, 100000), RandomCoord(random, 100000)};
        int const radius = 5000 + static_cast<int>(random() % 90000);
        auto const segments = static_cast<short>(8 + random() % 200);
        auto const start = static_cast<float>(RandomCoord(random, 7000)) / 1000;
        auto const sweep = static_cast<float>(RandomCoord(random, 6200)) / 1000;
        auto const points = Arc(centre, 2 * radius, 2 * radius, segments, 500, start, sweep);

        auto const from_centre = [&](double x, double y) {
            return std::hypot(x - centre.x, y - centre.y);
        };
        double const last = static_cast<double>(points.size()) - 1;
        for (std::size_t i = 1; i + 2 < points.size(); ++i) {
            auto const &a = points[i], &b = points[i + 1];
            ASSERT_NEAR(radius, from_centre((a.x + b.x) / 2.0, (a.y + b.y) / 2.0), 1.5) << round;
        }
        double const inner_radius = radius / std::cos(sweep / (last - 1) / 2);
        ASSERT_NEAR(inner_radius, from_centre(points[1].x, points[1].y), 1.5) << round;
        for (bool const at_end : {false, true}) {
            double const angle = at_end ? start + sweep : start;
            auto const& p = at_end ? points.back() : points.front();
            ASSERT_NEAR(centre.x + radius * std::cos(angle), p.x, 1.1) << round;
            ASSERT_NEAR(centre.y + radius * std::sin(angle), p.y, 1.1) << round;
        }
    }
}

TEST(GuArc, AStartPointFixesOnlyTheAngle) {
    struct {
        gu_point_t centre, start;
        float angle;
    } const rows[] = {
        {{5, 5}, {5, 1000}, 1.5707964f},
        {{5, 5}, {-1, 5}, 3.1415927f},
        {{5, 5}, {5, 5}, 0},
        {{kLowest, 0}, {kHighest, 0}, 3.1415927f},  // the difference wraps to -1
    };
    for (auto const& row : rows) {
        Points out(30);
        unsigned short count = 0;
        gu_arcpa2polygon(&count, out.data(), &row.centre, &row.start, 300, 200, 50, 30, 2.5f);
        out.resize(count);
        EXPECT_EQ(Arc(row.centre, 300, 200, 50, 30, row.angle, 2.5f), out) << &row - rows;
    }
}

}  // namespace
