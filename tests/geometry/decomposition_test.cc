// Decompositions of outlines and paths beside plain models. A piece is compared by its numbers: the
// four of a gu_rect_t, the six of a gu_trapezoid_t.
#include <geometry/ctree_node.h>
#include <geometry/gu_rects.h>
#include <geometry/gu_trapezoids.h>
#include <geometry/octree_node.h>

#include <generic/tvarr>
#include <set>

#include "tests/geometry/points.h"

namespace {

using Numbers = std::vector<int>;

// What a function makes of the points in records of `stride` bytes.
template <class Piece, class Function, class... More>
Numbers PiecesOf(Function function, Points const& points, unsigned stride, More... more) {
    std::vector<char> records(stride * points.size() + 1);
    for (std::size_t i = 0; i < points.size(); ++i)
        std::memcpy(&records[i * stride], &points[i], sizeof points[i]);
    TVarr<Piece> out(1, VARR_DOUBLE);
    out.App(Piece());  // must go
    auto const count = static_cast<unsigned>(points.size());
    unsigned const length = function(stride, count, records.data(), more..., out);
    EXPECT_EQ(length, out.Len());
    Numbers numbers(length * sizeof(Piece) / sizeof(int));
    if (length > 0) std::memcpy(numbers.data(), out.Get(), length * sizeof(Piece));
    return numbers;
}

// Cuts every edge at every height, sorts all pieces and pairs them, for trapezoids or, with every
// edge upright at the x of its start, for rectangles.
Numbers CutAndPair(bool upright, Points const& points) {
    std::vector<Edge_t> pieces;
    std::set<gu_coord_t> heights;
    for (std::size_t i = 0; i < points.size(); ++i) {
        gu_point_t a = points[i], b = points[(i + 1) % points.size()];
        if (a.y == b.y) continue;
        if (upright) b.x = a.x;
        if (a.y > b.y) std::swap(a, b);
        pieces.push_back({a.x, a.y, b.x, b.y});
        heights.insert({a.y, b.y});
    }
    for (std::size_t i = 0; i < pieces.size(); ++i) {
        auto const [x0, y0, x1, y1] = pieces[i];
        gu_coord_t const y = *heights.upper_bound(y0);
        if (y >= y1) continue;
        double const slope = double(Minus(x1, x0)) / Minus(y1, y0);
        double const exact = std::fma(slope, Minus(y, y0), x0);
        auto const x = static_cast<gu_coord_t>(std::clamp<double>(exact, INT32_MIN, INT32_MAX));
        pieces[i] = {x0, y0, x, y};
        pieces.push_back({x, y, x1, y1});
    }
    std::sort(pieces.begin(), pieces.end(), [](Edge_t const& a, Edge_t const& b) {
        return std::tie(a.y0, a.x0, a.x1) < std::tie(b.y0, b.x0, b.x1);
    });
    Numbers out;
    for (std::size_t i = 0; i < pieces.size(); i += 2) {
        auto const [x0, y0, x1, y1] = pieces[i];
        Edge_t const& right = pieces[i + 1];
        if (upright)
            out.insert(out.end(), {x0, y0, right.x0, y1});
        else
            out.insert(out.end(), {x0, x1, right.x1, right.x0, y0, y1});
    }
    return out;
}

TEST(Decomposition, AgreesWithCuttingEverythingFirst) {
    // Products come to the ends of the range, where differences wrap; multiples of 2520 have many
    // whole numbers as cuts.
    int const reaches[] = {2, 3, 12, 1000, 1 << 30, INT32_MAX}, factors[] = {1, 1, 1 << 30, 2520};
    std::mt19937 random(57);
    for (int i = 0; i < 7000; ++i) {
        // Some have more points than are sorted by comparisons, and than the stack has room for.
        Points points = RandomPoints(random, random() % (i % 64 ? 50 : 200), reaches[random() % 6]);
        std::int64_t const times_x = factors[random() % 4], times_y = factors[random() % 4];
        for (auto& p : points) p = {Minus(0, p.x * times_x), Minus(0, p.y * times_y)};
        for (std::size_t k = 1; k < points.size() && i % 3 == 0; ++k)  // axis-parallel
            (k % 2 ? points[k].x : points[k].y) = k % 2 ? points[k - 1].x : points[k - 1].y;
        unsigned const stride = 8 + random() % 9;
        ASSERT_EQ(std::pair(CutAndPair(true, points), CutAndPair(false, points)),
                  std::pair(PiecesOf<gu_rect_t>(gu_polygon_to_rects, points, stride),
                            PiecesOf<gu_trapezoid_t>(gu_polygon_to_trapezoids, points, stride)))
            << testing::PrintToString(points);
    }
}

// The documented steps, one rectangle after the other.
Numbers PlainPath(Points const& p, int width, bool extended) {
    Numbers out;
    int const h = width / 2;
    if (p.size() == 1)
        out = {Minus(p[0].x, h), Minus(p[0].y, h), Minus(p[0].x, -h), Minus(p[0].y, -h)};
    int x = 0, y = 0;
    for (std::size_t i = 0; i + 1 < p.size(); ++i) {
        gu_point_t const &b = p[i], &c = p[i + 1];
        bool const flat = b.y == c.y, last = i + 2 == p.size();
        int const d = (flat ? b.x < c.x : b.y < c.y) ? h : -h, more = extended ? d : 0;
        if (i == 0) x = Minus(b.x, flat ? more : -d), y = Minus(b.y, flat ? d : more);
        bool const adds = !last && (flat ? p[i + 2].y >= b.y : p[i + 2].x < c.x);
        int const beyond = last ? more : adds ? h : -h;
        int const far_x = flat ? Minus(c.x, -beyond) : Minus(2 * std::int64_t{c.x}, x);
        int const far_y = flat ? Minus(2 * std::int64_t{c.y}, y) : Minus(c.y, -beyond);
        auto const [left, right] = std::minmax({x, far_x});
        auto const [bottom, top] = std::minmax({y, far_y});
        out.insert(out.end(), {left, bottom, right, top});
        x = far_x, y = far_y;
    }
    return out;
}

TEST(GuPathToRects, AgreesWithTheDocumentedSteps) {
    std::mt19937 random(72);
    for (int i = 0; i < 3000; ++i) {
        Points points = RandomPoints(random, i % 14, i % 9 ? 20 : INT32_MAX);
        for (std::size_t k = 1; k < points.size() && random() % 16; ++k)
            (random() % 2 ? points[k].x = points[k - 1].x : points[k].y = points[k - 1].y);
        int const width = RandomCoord(random, 20), ends = points.size() == 1 ? 2 : i / 14 % 2;
        ASSERT_EQ(PlainPath(points, width, ends),
                  PiecesOf<gu_rect_t>(gu_path_to_rects, points, 8 + random() % 9, width, ends))
            << testing::PrintToString(points) << " width " << width;
    }
}

TEST(GuPathToRectsDeathTest, OtherEndsAbort) {
    EXPECT_DEATH(PiecesOf<gu_rect_t>(gu_path_to_rects, {{0, 0}, {9, 0}}, 8, 2, 2),
                 "geometry/gu7.cc:[0-9]+:.*`0'");
}

// Of one of the trees of heights, which differ in their names only.
template <class Node, class Edge>
void CheckHeights(Edge (*edge)(gu_coord_t y0, gu_coord_t y1)) {
    std::set<gu_coord_t> const heights = {INT32_MIN, -9, -4, -3, 0, 1, 2, 7, INT32_MAX};
    Node* root = nullptr;
    int grew = 0;
    for (int i = 0; i < 2; ++i)  // the second time, all are known
        for (gu_coord_t y : heights)
            root = static_cast<Node*>(
                AVLnode::Insert(root, Node::Compare, &y, Node::Create, &y, grew));
    EXPECT_EQ(9, bnode_t::Size(root));
    long cut = INT32_MAX;
    EXPECT_EQ(2U, root->FindLowestYCut(edge(INT32_MIN, 8), cut));  // lowered to -3 and -9
    for (int i = 0; i < 4000; ++i) {
        gu_coord_t const y0 = i % 20 - 11, y1 = i % 7 ? y0 + 1 + i / 20 % 9 : INT32_MAX;
        long const limit = i % 3 ? INT32_MAX : y0 + 3, want = *heights.upper_bound(y0);
        bool const inside = want < y1 && want < limit;
        cut = limit;
        EXPECT_EQ(inside, root->FindLowestYCut(edge(y0, y1), cut) > 0) << y0 << ' ' << y1;
        EXPECT_EQ(inside ? want : limit, cut) << y0 << ' ' << y1;
    }
    bnode_t::DeleteTree(root);
}

TEST(HeightNode, FindsTheLowestHeightInsideAnEdge) {
    CheckHeights<ctree_node_t, Edge_t>([](auto y0, auto y1) { return Edge_t{0, y0, 0, y1}; });
    CheckHeights<octree_node_t, OEdge_t>([](auto y0, auto y1) { return OEdge_t{y0, y1, 0}; });
}

}  // namespace
