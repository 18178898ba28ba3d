#include <geometry/gu_rects.h>

#include <gtest/gtest.h>

#include <algorithm>
#include <cstring>
#include <set>
#include <tuple>

#include "tests/geometry/points.h"

bool operator==(gu_rect_t const& a, gu_rect_t const& b) {
    return std::memcmp(&a, &b, sizeof a) == 0;
}

std::ostream& operator<<(std::ostream& os, gu_rect_t const& r) {
    return os << '(' << r.x1 << ' ' << r.y1 << ' ' << r.x2 << ' ' << r.y2 << ')';
}

namespace {

using Rects = std::vector<gu_rect_t>;

// What `call` makes of the points in records of `stride` bytes.
template <class Call>
Rects RectsOf(Points const& points, unsigned stride, Call call) {
    std::vector<char> records(stride * points.size() + 1);
    for (std::size_t i = 0; i < points.size(); ++i)
        std::memcpy(&records[i * stride], &points[i], sizeof points[i]);
    TVarr<gu_rect_t> out(1, VARR_DOUBLE);
    out.App({9, 9, 9, 9});  // must go
    unsigned const length = call(static_cast<unsigned>(points.size()), records.data(), out);
    EXPECT_EQ(length, out.Len());
    return Rects(out.begin(), out.end());
}

Rects Decompose(Points const& points, unsigned stride = 8) {
    return RectsOf(points, stride, [=](unsigned count, char const* records, auto& out) {
        return gu_polygon_to_rects(stride, count, records, out);
    });
}

Rects Widen(Points const& points, gu_coord_t width, gu_PathType_t ends, unsigned stride = 8) {
    return RectsOf(points, stride, [=](unsigned count, char const* records, auto& out) {
        return gu_path_to_rects(stride, count, records, width, ends, out);
    });
}

TEST(GuPolygonToRects, KnownOutlines) {
    struct {
        Points points;
        Rects want;
    } const rows[] = {
        {{{0, 0}, {10, 0}, {10, 10}, {0, 10}}, {{0, 0, 10, 10}}},
        {{{0, 0}, {20, 0}, {20, 10}, {10, 10}, {10, 20}, {0, 20}},
         {{0, 0, 20, 10}, {0, 10, 10, 20}}},
        {{{0, 0}, {5, 9}, {7, 3}}, {{0, 0, 7, 3}, {0, 3, 5, 9}}},  // slanted: x of the start
        {{}, {}},
        {{{0, 7}, {5, 7}}, {}},
        {{{kLowest, kLowest}, {kHighest, kLowest}, {kHighest, kHighest}, {kLowest, kHighest}},
         {{kLowest, kLowest, kHighest, kHighest}}}};
    for (auto const& row : rows) EXPECT_EQ(row.want, Decompose(row.points)) << &row - rows;
}

// Cuts every edge at every height, sorts all pieces, pairs them.
Rects PlainRects(Points const& points) {
    std::set<gu_coord_t> heights;
    for (auto const& p : points) heights.insert(p.y);
    std::vector<std::tuple<gu_coord_t, gu_coord_t, gu_coord_t>> pieces;  // y0, x, y1
    for (std::size_t i = 0; i < points.size(); ++i) {
        gu_point_t const from = points[i], to = points[(i + 1) % points.size()];
        auto y = heights.find(std::min(from.y, to.y));
        for (; *y < std::max(from.y, to.y); ++y) pieces.emplace_back(*y, from.x, *std::next(y));
    }
    std::sort(pieces.begin(), pieces.end());
    Rects out;
    for (std::size_t i = 0; i < pieces.size(); i += 2) {
        auto const [y0, x, y1] = pieces[i];
        out.push_back({x, y0, std::get<1>(pieces[i + 1]), y1});
    }
    return out;
}

TEST(GuPolygonToRects, AgreesWithCuttingEverythingFirst) {
    std::mt19937 random(71);
    for (int i = 0; i < 6000; ++i) {
        int const reach[] = {3, 12, 1000, 1000000, kHighest};
        Points points =
            RandomPoints(random, static_cast<int>(random() % (i % 50 ? 40 : 400)), reach[i % 5]);
        for (std::size_t k = 1; k < points.size() && i % 3; ++k)  // axis-parallel
            (k % 2 ? points[k].x : points[k].y) = k % 2 ? points[k - 1].x : points[k - 1].y;
        ASSERT_EQ(PlainRects(points), Decompose(points, 8 + random() % 9))
            << testing::PrintToString(points);
    }
}

TEST(GuPathToRects, KnownPaths) {
    struct {
        Points points;
        gu_coord_t width;
        gu_PathType_t ends;
        Rects want;
    } const rows[] = {{{{0, 0}, {10, 0}, {10, 10}}, 2, 0, {{0, -1, 11, 1}, {9, 1, 11, 10}}},
                      {{{0, 0}, {10, 0}, {10, 10}}, 2, 1, {{-1, -1, 11, 1}, {9, 1, 11, 11}}},
                      {{{0, 0}, {0, 10}, {10, 10}}, 2, 0, {{-1, 0, 1, 9}, {-1, 9, 10, 11}}},
                      {{{0, 0}, {0, 10}, {10, 10}}, 3, 0, {{-1, 0, 1, 9}, {-1, 9, 10, 11}}},
                      {{{5, 5}}, 4, 2, {{3, 3, 7, 7}}},  // a point has no ends
                      {{}, 4, 2, {}},
                      {{{0, 0}, {10, 0}}, -4, 1, {{2, -2, 8, 2}}},
                      {{{kHighest, 0}, {kHighest, 8}}, 4, 0, {{kLowest + 1, 0, kHighest - 2, 8}}}};
    for (auto const& row : rows)
        EXPECT_EQ(row.want, Widen(row.points, row.width, row.ends)) << &row - rows;
}

// The documented steps for two points and more, one rectangle after the other.
Rects PlainPath(Points const& p, int width, bool extended) {
    Rects out;
    int const h = width / 2;
    int x = 0, y = 0;
    for (std::size_t i = 0; i + 1 < p.size(); ++i) {
        gu_point_t const &b = p[i], &c = p[i + 1];
        bool const flat = b.y == c.y, last = i + 2 == p.size();
        int const d = (flat ? b.x < c.x : b.y < c.y) ? h : -h, more = extended ? d : 0;
        if (i == 0) x = flat ? b.x - more : b.x + d, y = flat ? b.y - d : b.y - more;
        int const far_x = !flat ? 2 * c.x - x : c.x + (last ? more : p[i + 2].y < b.y ? -h : h);
        int const far_y = flat ? 2 * c.y - y : c.y + (last ? more : p[i + 2].x < c.x ? h : -h);
        out.push_back(
            {std::min(x, far_x), std::min(y, far_y), std::max(x, far_x), std::max(y, far_y)});
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
        int const width = static_cast<int>(random() % 30) - 8, ends = i % 2;
        ASSERT_EQ(PlainPath(points, width, ends),
                  Widen(points, width, static_cast<gu_PathType_t>(ends), 8 + random() % 9))
            << testing::PrintToString(points) << " width " << width;
    }
}

TEST(GuPathToRectsDeathTest, OtherEndsAbort) {
    EXPECT_DEATH(Widen({{0, 0}, {9, 0}}, 2, 2), "geometry/gu7.cc:[0-9]+:.*`0'");
    EXPECT_DEATH(Widen({{0, 0}, {0, 9}, {9, 9}}, 2, -1), "geometry/gu7.cc:[0-9]+:.*`0'");
}

// The rest is shared with ctree_node_t and tested there.
TEST(OctreeNode, FindsHeightsAndComesFromItsPool) {
    octree_node_t* root = nullptr;
    int grew = 0;
    for (gu_coord_t y : {4, 2, 6, 1, 3, 5, 7, 4})
        root = static_cast<octree_node_t*>(
            AVLnode::Insert(root, octree_node_t::Compare, &y, octree_node_t::Create, &y, grew));
    EXPECT_EQ(7, bnode_t::Size(root));
    long cut = kHighest;
    EXPECT_EQ(2U, root->FindLowestYCut(OEdge_t{2, 7, 0}, cut));  // 4, 3
    EXPECT_EQ(3, cut);
    bnode_t* const copy = root->Dup();
    EXPECT_TRUE(static_cast<octree_node_t*>(copy)->y == 4 && !copy->left);
    delete copy;
    octree_node_t const* const next = new octree_node_t(8);
    EXPECT_EQ(copy, next);  // the last one freed
    delete next;
    bnode_t::DeleteTree(root);
}

}  // namespace
