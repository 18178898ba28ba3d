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

// Rectangles or trapezoids.
Numbers Decompose(bool upright, Points const& points, unsigned stride = 8) {
    return upright ? PiecesOf<gu_rect_t>(gu_polygon_to_rects, points, stride)
                   : PiecesOf<gu_trapezoid_t>(gu_polygon_to_trapezoids, points, stride);
}

TEST(Decomposition, OfKnownOutlines) {
    Rows<bool, char const*, char const*> const rows = {
        {true, "0 0, 5 9, 7 3", "0 0 7 3, 0 3 5 9"},  // slanted: x of the start
        // The slanted edge passes 3.75, and -3.75 on the other side, at height 3.
        {false, "0 0, 5 4, 9 3", "0 3 9 0 0 3, 3 5 5 9 3 4"},
        {false, "0 0, -9 3, -5 4", "0 -9 -3 0 0 3, -9 -5 -5 -3 3 4"},
        // 3/9 of 6 is below 2 by a trifle that only the fused operation keeps: 0, not 1.
        {false, "-1 0, 2 9, 20 6", "-1 0 20 -1 0 6, 0 2 2 20 6 9"}};
    for (auto const& [upright, points, want] : rows)
        EXPECT_EQ(NumbersOf(want), Decompose(upright, PointsOf(points))) << points;
}

// Cuts every edge at every height, sorts all pieces and pairs them, for trapezoids or, with every
// edge upright at the x of its start, for rectangles.
Numbers CutAndPair(bool upright, Points const& points) {
    struct Edge {
        gu_coord_t x0, y0, x1, y1;
    };
    auto const wrapped = [](gu_coord_t a, gu_coord_t b) {
        return double(static_cast<std::int32_t>(static_cast<std::uint32_t>(std::int64_t{a} - b)));
    };
    std::vector<Edge> pieces;
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
        double const slope = wrapped(x1, x0) / wrapped(y1, y0);
        double const exact = std::fma(slope, wrapped(y, y0), double(x0));
        auto const x = static_cast<gu_coord_t>(std::clamp<double>(exact, kLowest, kHighest));
        pieces[i] = {x0, y0, x, y};
        pieces.push_back({x, y, x1, y1});
    }
    std::sort(pieces.begin(), pieces.end(), [](Edge const& a, Edge const& b) {
        return std::tie(a.y0, a.x0, a.x1) < std::tie(b.y0, b.x0, b.x1);
    });
    Numbers out;
    for (std::size_t i = 0; i < pieces.size(); i += 2) {
        Edge const &e = pieces[i], &f = pieces[i + 1];
        auto const piece =
            upright ? Numbers{e.x0, e.y0, f.x0, f.y1} : Numbers{e.x0, e.x1, f.x1, f.x0, e.y0, f.y1};
        out.insert(out.end(), piece.begin(), piece.end());
    }
    return out;
}

TEST(Decomposition, AgreesWithCuttingEverythingFirst) {
    Rows<unsigned, int> const kinds = {{13, 3}, {40, 9},    {30, 1073741823}, {20, kHighest},
                                       {20, 2}, {60, 1000}, {60, 12}};
    std::mt19937 random(57);
    for (int i = 0; i < 7000; ++i) {
        auto const [most, reach] = kinds[random() % 7];
        Points points = RandomPoints(random, static_cast<int>(random() % most), reach);
        for (auto& p : points) {
            if (reach == 2) {  // to the ends of the range, where differences wrap
                if (random() % 2) p.x = p.x > 0 ? kHighest - p.x : kLowest - p.x;
                if (random() % 2) p.y = p.y > 0 ? kHighest - p.y : kLowest - p.y;
            }
            if (reach == 12) p = {p.x * 2520, p.y * 5};  // many cuts are whole numbers
        }
        for (std::size_t k = 1; k < points.size() && i % 3 == 0; ++k)  // axis-parallel
            (k % 2 ? points[k].x : points[k].y) = k % 2 ? points[k - 1].x : points[k - 1].y;
        for (bool const upright : {false, true})
            ASSERT_EQ(CutAndPair(upright, points), Decompose(upright, points, 8 + random() % 9))
                << testing::PrintToString(points);
    }
}

Numbers Widen(Points const& points, gu_coord_t width, int ends, unsigned stride = 8) {
    return PiecesOf<gu_rect_t>(gu_path_to_rects, points, stride, width,
                               static_cast<gu_PathType_t>(ends));
}

TEST(GuPathToRects, KnownPaths) {
    Rows<char const*, gu_coord_t, int, char const*> const rows = {
        {"5 5", 4, 2, "3 3 7 7"},  // a point has no ends
        {"", 4, 2, ""},
        {"2147483647 0, 2147483647 8", 4, 0, "-2147483647 0 2147483645 8"}};
    for (auto const& [points, width, ends, want] : rows)
        EXPECT_EQ(NumbersOf(want), Widen(PointsOf(points), width, ends)) << want;
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
}

// The trees of heights of both decompositions, which differ in their names only.
template <class Node>
struct HeightNode : testing::Test {
    ~HeightNode() override { bnode_t::DeleteTree(root); }

    void Add(gu_coord_t y) {
        int grew = 0;
        root = static_cast<Node*>(AVLnode::Insert(root, Node::Compare, &y, Node::Create, &y, grew));
    }
    unsigned Cut(gu_coord_t y0, gu_coord_t y1, long& cut) {
        if constexpr (std::is_same_v<Node, ctree_node_t>)
            return root->FindLowestYCut(Edge_t{0, y0, 0, y1}, cut);
        else
            return root->FindLowestYCut(OEdge_t{y0, y1, 0}, cut);
    }

    Node* root = nullptr;
};

using Nodes = testing::Types<ctree_node_t, octree_node_t>;
TYPED_TEST_SUITE(HeightNode, Nodes, );

TYPED_TEST(HeightNode, FindsTheLowestHeightInsideAnEdge) {
    std::mt19937 random(55);
    std::set<gu_coord_t> heights;
    for (int i = 0; i < 20000; ++i) {
        if (i % 200 == 0) {
            gu_coord_t const y = i % 1800 ? RandomCoord(random, 12) : i % 400 ? kLowest : kHighest;
            heights.insert(y);
            this->Add(y);
            EXPECT_EQ(static_cast<int>(heights.size()), bnode_t::Size(this->root));
        }
        gu_coord_t const y0 = RandomCoord(random, 13);
        gu_coord_t const y1 = i % 4 ? y0 + 1 + static_cast<int>(random() % 9) : kHighest;
        long const limit = i % 3 ? kHighest : y0 + 3;
        long cut = limit;
        bool const found = this->Cut(y0, y1, cut) > 0;
        auto const want = heights.upper_bound(y0);
        bool const inside = want != heights.end() && *want < y1 && *want < limit;
        ASSERT_TRUE(inside == found && cut == (inside ? *want : limit)) << y0 << ' ' << y1;
    }
}

TYPED_TEST(HeightNode, CountsHowOftenTheCutWasLowered) {
    for (gu_coord_t y = 1; y <= 7; ++y) this->Add(y);  // 4 at the root
    long cut = kHighest;
    EXPECT_EQ(3U, this->Cut(0, 8, cut));  // 4, 2, 1
}

}  // namespace
