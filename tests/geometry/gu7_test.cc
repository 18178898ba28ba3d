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

// Points in records of `stride` bytes.
std::vector<char> Records(Points const& points, std::size_t stride) {
    std::vector<char> records(stride * points.size() + 1);
    for (std::size_t i = 0; i < points.size(); ++i)
        std::memcpy(&records[i * stride], &points[i], sizeof points[i]);
    return records;
}

Rects Decompose(Points const& points, unsigned stride = sizeof(gu_point_t)) {
    TVarr<gu_rect_t> out(1, VARR_DOUBLE);
    out.App({9, 9, 9, 9});  // must go
    auto const count = static_cast<unsigned>(points.size());
    auto const records = Records(points, stride);
    unsigned const length = gu_polygon_to_rects(stride, count, records.data(), out);
    EXPECT_EQ(length, out.Len());
    return Rects(out.begin(), out.end());
}

Rects Widen(Points const& points, gu_coord_t width, gu_PathType_t ends, unsigned stride = 8) {
    TVarr<gu_rect_t> out(1, VARR_DOUBLE);
    out.App({9, 9, 9, 9});
    auto const count = static_cast<unsigned>(points.size());
    auto const records = Records(points, stride);
    unsigned const length = gu_path_to_rects(stride, count, records.data(), width, ends, out);
    EXPECT_EQ(length, out.Len());
    return Rects(out.begin(), out.end());
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
        bool const flat = p[i].y == p[i + 1].y, last = i + 2 == p.size();
        int const d = (flat ? p[i].x < p[i + 1].x : p[i].y < p[i + 1].y) ? h : -h;
        int const more = extended ? d : 0;
        if (i == 0) {
            x = flat ? p[0].x - more : p[0].x + d;
            y = flat ? p[0].y - d : p[0].y - more;
        }
        gu_rect_t r = {x, y, 0, 0};
        gu_point_t const& c = p[i + 1];
        if (flat) {
            r.y2 = 2 * c.y - y;
            r.x2 = c.x + (last ? more : p[i + 2].y < p[i].y ? -h : h);
        } else {
            r.x2 = 2 * c.x - x;
            r.y2 = last ? c.y + more : p[i + 2].x < c.x ? c.y + h : c.y - h;
        }
        x = r.x2;
        y = r.y2;
        if (r.x1 > r.x2) std::swap(r.x1, r.x2);
        if (r.y1 > r.y2) std::swap(r.y1, r.y2);
        out.push_back(r);
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

TEST(OctreeNode, FindsHeightsAndComesFromItsPool) {
    octree_node_t* root = nullptr;
    int grew = 0;
    for (gu_coord_t y : {4, 2, 6, 1, 3, 5, 7, 4, kLowest, kHighest})
        root = static_cast<octree_node_t*>(
            AVLnode::Insert(root, octree_node_t::Compare, &y, octree_node_t::Create, &y, grew));
    EXPECT_EQ(9, bnode_t::Size(root));
    struct {
        OEdge_t edge;
        long limit, cut;
    } const rows[] = {{{0, 9, 0}, kHighest, 1},
                      {{3, 5, 0}, 9, 4},
                      {{3, 4, 0}, 9, 9},
                      {{3, 5, 0}, 4, 4},
                      {{7, kHighest, 0}, 9, 9}};
    for (auto const& row : rows) {
        long cut = row.limit;
        EXPECT_EQ(row.cut != row.limit, root->FindLowestYCut(row.edge, cut) > 0) << &row - rows;
        EXPECT_EQ(row.cut, cut) << &row - rows;
    }
    bnode_t* const copy = root->Dup();
    EXPECT_EQ(root->y, static_cast<octree_node_t*>(copy)->y);
    EXPECT_EQ(nullptr, copy->left);
    void* const place = copy;
    delete copy;
    void* const next = octree_node_t::heap.Alloc(sizeof(octree_node_t), 16384);
    EXPECT_EQ(place, next);  // the last one freed
    octree_node_t::heap.Free(next);
    bnode_t::DeleteTree(root);
}

}  // namespace
