#include "geometry/gu_rects.h"

#include "tests/geometry/decomposition.h"

namespace {

Numbers Decompose(Points const& points, unsigned stride = 8) {
    return PiecesOf<gu_rect_t>(points, stride, [=](unsigned n, void const* at, auto& out) {
        return gu_polygon_to_rects(stride, n, at, out);
    });
}

Numbers Widen(Points const& points, gu_coord_t width, int ends, unsigned stride = 8) {
    return PiecesOf<gu_rect_t>(points, stride, [=](unsigned n, void const* at, auto& out) {
        return gu_path_to_rects(stride, n, at, width, static_cast<gu_PathType_t>(ends), out);
    });
}

TEST(GuPolygonToRects, KnownOutlines) {
    char const* const rows[][2] = {
        {"0 0, 20 0, 20 10, 10 10, 10 20, 0 20", "0 0 20 10, 0 10 10 20"},
        {"0 0, 5 9, 7 3", "0 0 7 3, 0 3 5 9"},  // slanted: x of the start
        {"0 7, 5 7", ""},
        {"-2147483648 -2147483648, 2147483647 -2147483648, 2147483647 2147483647, -2147483648 "
         "2147483647",
         "-2147483648 -2147483648 2147483647 2147483647"}};
    for (auto const& [points, want] : rows)
        EXPECT_EQ(NumbersOf(want), Decompose(PointsOf(points))) << points;
}

TEST(GuPolygonToRects, AgreesWithCuttingEverythingFirst) {
    std::mt19937 random(71);
    for (int i = 0; i < 3000; ++i) {
        Points points = AnyOutline(random, i);
        for (std::size_t k = 1; k < points.size() && i % 3; ++k)  // axis-parallel
            (k % 2 ? points[k].x : points[k].y) = k % 2 ? points[k - 1].x : points[k - 1].y;
        ASSERT_EQ(CutAndPair(points, true), Decompose(points, 8 + random() % 9))
            << testing::PrintToString(points);
    }
    Points const many = RandomPoints(random, 400, 1000);
    EXPECT_EQ(CutAndPair(many, true), Decompose(many));
}

TEST(GuPathToRects, KnownPaths) {
    struct {
        char const* points;
        gu_coord_t width;
        int ends;
        char const* want;
    } const rows[] = {{"0 0, 10 0, 10 10", 2, 0, "0 -1 11 1, 9 1 11 10"},
                      {"0 0, 10 0, 10 10", 2, 1, "-1 -1 11 1, 9 1 11 11"},
                      {"0 0, 0 10, 10 10", 3, 0, "-1 0 1 9, -1 9 10 11"},
                      {"5 5", 4, 2, "3 3 7 7"},  // a point has no ends
                      {"", 4, 2, ""},
                      {"0 0, 10 0", -4, 1, "2 -2 8 2"},
                      {"2147483647 0, 2147483647 8", 4, 0, "-2147483647 0 2147483645 8"}};
    for (auto const& row : rows)
        EXPECT_EQ(NumbersOf(row.want), Widen(PointsOf(row.points), row.width, row.ends))
            << row.want;
}

// The documented steps for two points and more, one rectangle after the other.
Numbers PlainPath(Points const& p, int width, bool extended) {
    Numbers out;
    int const h = width / 2;
    int x = 0, y = 0;
    for (std::size_t i = 0; i + 1 < p.size(); ++i) {
        gu_point_t const &b = p[i], &c = p[i + 1];
        bool const flat = b.y == c.y, last = i + 2 == p.size();
        int const d = (flat ? b.x < c.x : b.y < c.y) ? h : -h, more = extended ? d : 0;
        if (i == 0) x = flat ? b.x - more : b.x + d, y = flat ? b.y - d : b.y - more;
        int const far_x = !flat ? 2 * c.x - x : c.x + (last ? more : p[i + 2].y < b.y ? -h : h);
        int const far_y = flat ? 2 * c.y - y : c.y + (last ? more : p[i + 2].x < c.x ? h : -h);
        for (int n :
             {std::min(x, far_x), std::min(y, far_y), std::max(x, far_x), std::max(y, far_y)})
            out.push_back(n);
        x = far_x, y = far_y;
    }
    return out;
}

TEST(GuPathToRects, AgreesWithTheDocumentedSteps) {
    std::mt19937 random(72);
    for (int i = 0; i < 3000; ++i) {
        Points points = RandomPoints(random, 2 + static_cast<int>(random() % 12), 20);
        for (std::size_t k = 1; k < points.size() && i % 4; ++k)
            (random() % 2 ? points[k].x = points[k - 1].x : points[k].y = points[k - 1].y);
        int const width = static_cast<int>(random() % 30) - 8;
        ASSERT_EQ(PlainPath(points, width, i % 2), Widen(points, width, i % 2, 8 + random() % 9))
            << testing::PrintToString(points) << " width " << width;
    }
}

TEST(GuPathToRectsDeathTest, OtherEndsAbort) {
    EXPECT_DEATH(Widen({{0, 0}, {9, 0}}, 2, 2), "geometry/gu7.cc:[0-9]+:.*`0'");
    EXPECT_DEATH(Widen({{0, 0}, {0, 9}, {9, 9}}, 2, -1), "geometry/gu7.cc:[0-9]+:.*`0'");
}

}  // namespace
