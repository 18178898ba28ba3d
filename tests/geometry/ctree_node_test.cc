// The trees of heights of both decompositions, which differ in their names only.
#include "geometry/ctree_node.h"

#include <set>

#include "geometry/octree_node.h"
#include "tests/geometry/points.h"

namespace {

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
    std::unique_ptr<bnode_t> const copy(this->root->Dup());
    EXPECT_TRUE(static_cast<TypeParam*>(copy.get())->y == 4 && !copy->left);
}

}  // namespace
