#include "geometry/ctree_node.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <cstdint>
#include <set>
#include <tuple>
#include <vector>

#include "tests/geometry/allocations.h"
#include "tests/geometry/points.h"

namespace {

ctree_node_t* WithHeight(ctree_node_t* root, gu_coord_t y) {
    int grew = 0;
    return static_cast<ctree_node_t*>(
        AVLnode::Insert(root, ctree_node_t::Compare, &y, ctree_node_t::Create, &y, grew));
}

TEST(CtreeNode, FindsTheLowestHeightInsideAnEdge) {
    std::mt19937 random(55);
    for (int i = 0; i < 500; ++i) {
        std::set<gu_coord_t> heights;
        ctree_node_t* root = nullptr;
        for (unsigned k = random() % 20 + 1; k > 0; --k) {
            gu_coord_t const y = random() % 8 ? RandomCoord(random, 12)
                                 : k % 2      ? kLowest
                                              : kHighest;
            heights.insert(y);
            root = WithHeight(root, y);
        }
        EXPECT_EQ(static_cast<int>(heights.size()), bnode_t::Size(root));
        for (int k = 0; k < 20; ++k) {
            gu_coord_t const y0 = RandomCoord(random, 13);
            gu_coord_t const y1 = k % 4 ? y0 + 1 + static_cast<int>(random() % 9) : kHighest;
            long const limit = k % 3 ? kHighest : y0 + 3;
            long cut = limit;
            unsigned const found = root->FindLowestYCut(Edge_t{0, y0, 0, y1}, cut);
            auto const want = heights.upper_bound(y0);
            bool const inside = want != heights.end() && *want < y1 && *want < limit;
            EXPECT_EQ(inside, found > 0);
            EXPECT_EQ(inside ? *want : limit, cut);
        }
        bnode_t::DeleteTree(root);
    }
}

TEST(CtreeNode, CountsHowOftenTheCutWasLowered) {
    ctree_node_t* root = nullptr;
    for (gu_coord_t y = 1; y <= 7; ++y) root = WithHeight(root, y);  // 4 at the root
    long cut = kHighest;
    EXPECT_EQ(3U, root->FindLowestYCut(Edge_t{0, 0, 0, 8}, cut));  // 4, 2, 1
    EXPECT_EQ(1, cut);
    cut = 2;
    EXPECT_EQ(1U, root->FindLowestYCut(Edge_t{0, 0, 0, 8}, cut));
    bnode_t::DeleteTree(root);
}

TEST(CtreeNode, DupTakesTheHeightAndNodesComeFromThePool) {
    auto* const node = new ctree_node_t(5);
    node->left = new ctree_node_t(3);
    bnode_t* copy = node->Dup();
    auto const place = reinterpret_cast<std::uintptr_t>(copy);
    EXPECT_EQ(5, static_cast<ctree_node_t*>(copy)->y);
    EXPECT_EQ(nullptr, copy->left);
    HeapUse().Reset();
    delete copy;
    copy = new ctree_node_t(6);
    EXPECT_EQ(place, reinterpret_cast<std::uintptr_t>(copy));  // the last one freed
    delete copy;
    EXPECT_EQ(0U, HeapUse().calls);
    bnode_t::DeleteTree(node);

    struct Larger : ctree_node_t {
        Larger() : ctree_node_t(1) {}
        int more[4] = {};
    };
    HeapUse().Reset();
    delete static_cast<bnode_t*>(new Larger);
    EXPECT_EQ(1U, HeapUse().calls);
}

int ByAll(Edge_t const* a, Edge_t const* b) {
    auto const key = [](Edge_t const* e) { return std::tie(e->y0, e->x0, e->x1); };
    return key(a) < key(b) ? -1 : key(b) < key(a);
}

TEST(EdgeSort, ShellSortsEdges) {
    std::mt19937 random(56);
    for (unsigned n : {0U, 1U, 12U, 100U, 1000U}) {
        TVarr<Edge_t> edges(n + 1, VARR_ADD);
        for (unsigned i = 0; i < n; ++i)
            edges.App(
                Edge_t{RandomCoord(random, 3), RandomCoord(random, 3), RandomCoord(random, 3), 4});
        TShSort(edges.Get(), edges.Len(), ByAll);
        EXPECT_TRUE(std::is_sorted(edges.begin(), edges.end(),
                                   [](auto const& a, auto const& b) { return ByAll(&a, &b) < 0; }));
    }
}

}  // namespace
