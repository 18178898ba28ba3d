#include "geometry/ctree_node.h"

#include <gtest/gtest.h>

#include <set>

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
            gu_coord_t const ends[] = {kLowest, kHighest};
            gu_coord_t const y = random() % 8 ? RandomCoord(random, 12) : ends[k % 2];
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
    bnode_t* const copy = root->Dup();
    EXPECT_EQ(4, static_cast<ctree_node_t*>(copy)->y);
    EXPECT_EQ(nullptr, copy->left);
    delete copy;
    bnode_t::DeleteTree(root);
    struct Larger : ctree_node_t {
        Larger() : ctree_node_t(1) {}
        int more[4] = {};
    };
    delete static_cast<bnode_t*>(new Larger);  // too large for the pool
}

}  // namespace
