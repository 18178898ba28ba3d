#include "containers/bnode.h"

#include <set>

#include "tests/support/int_tree.h"

namespace {

using Node = IntNode<bnode_t>;
using Keys = std::vector<int>;

bnode_t* TreeOf(Keys const& keys) {
    bnode_t* root = nullptr;
    for (int key : keys) root = bnode_t::Insert(root, Node::Cmp, &key, Node::Make, &key);
    return root;
}

bnode_t* Chain(int n) {  // each node the left child of the next one
    bnode_t* root = nullptr;
    for (int i = 0; i < n; ++i) {
        bnode_t* const node = new Node(i);
        node->left = root;
        if (root) root->parent = node;
        root = node;
    }
    return root;
}

// "(left key right)" with nothing for an empty place; a wrong parent link shows as "!".
std::string Shape(bnode_t const* n, bnode_t const* parent = nullptr) {
    if (!n) return "";
    return (n->parent == parent ? "(" : "!(") + Shape(n->left, n) + std::to_string(Node::KeyOf(n)) +
           Shape(n->right, n) + ")";
}

// The keys in the order of a walk by plain recursion: "lnr" is left, node, right.
Keys Model(bnode_t const* n, std::string const& order) {
    Keys keys;
    for (char const step : n ? order : "") {
        bnode_t const* const child = step == 'l' ? n->left : n->right;
        Keys const part = step == 'n' ? Keys{Node::KeyOf(n)} : Model(child, order);
        keys.insert(keys.end(), part.begin(), part.end());
    }
    return keys;
}

Keys FirstThree(Keys keys) {
    keys.resize(std::min<std::size_t>(keys.size(), 3));
    return keys;
}

std::pair<char const*, int (*)(bnode_t*, bnode_t::VisitFn, void*)> const kWalks[] = {
    {"nlr", bnode_t::Preorder},
    {"lnr", bnode_t::Inorder},
    {"rnl", bnode_t::Revorder},
    {"lrn", bnode_t::Postorder}};

TEST(BnodeTree, AgreesWithASetUnderRandomChanges) {
    std::mt19937 random(5);
    auto const below = [&random](unsigned n) { return static_cast<int>(random() % n); };
    std::set<int> model;
    bnode_t* root = nullptr;
    for (int step = 0; step < 6000; ++step) {
        int key = below(64), probe = below(64), lo = below(66) - 1, hi = lo - 2 + below(40);
        if (below(2)) {
            Keys found;
            root = bnode_t::Insert(root, Node::Cmp, &key, Node::Make, &key, Node::LogThree, &found);
            ASSERT_EQ(model.insert(key).second ? Keys{} : Keys{key}, found);
        } else {
            root = bnode_t::Delete(root, Node::Cmp, &key);
            model.erase(key);
        }
        ASSERT_EQ(std::string::npos, Shape(root).find('!')) << Shape(root);
        ASSERT_EQ(static_cast<int>(model.size()), Node::alive);
        ASSERT_EQ(Node::alive, bnode_t::Size(root));
        bnode_t const* const found = bnode_t::Find(root, Node::Cmp, &probe);
        ASSERT_EQ(model.count(probe) ? probe : -1, found ? Node::KeyOf(found) : -1);

        ASSERT_EQ(Joined(model), Joined(Model(root, "lnr")));
        bnode_t* const part = root && root->left && step % 2 ? root->left : root;
        for (auto const& [order, walk] : kWalks) {
            Keys all, some, want = Model(part, order);
            ASSERT_EQ(0, walk(part, Node::Log, &all));
            ASSERT_EQ(want.size() < 3 ? 0 : 7, walk(part, Node::LogThree, &some));
            ASSERT_EQ(std::pair(want, FirstThree(want)), std::pair(all, some))
                << order << " of " << Shape(root);
        }
        Keys want;
        if (lo <= hi) want.assign(model.lower_bound(lo), model.upper_bound(hi));
        for (auto const range : {bnode_t::Range, bnode_t::RevRange}) {
            Keys seen, some;
            ASSERT_EQ(0, range(root, Node::Log, &seen, Node::Cmp, &lo, &hi));
            ASSERT_EQ(want, seen) << lo << " to " << hi << " of " << Shape(root);
            range(root, Node::LogThree, &some, Node::Cmp, &lo, &hi);
            ASSERT_EQ(FirstThree(want), some);
            std::reverse(want.begin(), want.end());  // the other one goes down
        }
    }
    int const absent = 99;
    std::string const shape = Shape(root);
    EXPECT_THROW(bnode_t::Insert(root, Node::Cmp, &absent, Node::Fail, nullptr), std::bad_alloc);
    EXPECT_EQ(shape, Shape(root));
    EXPECT_EQ(nullptr, bnode_t::DeleteTree(root));
}

TEST(BnodeDelete, ChoosesTheReplacement) {
    Rows<Keys, char const*> const rows = {
        {{8, 3, 2, 9}, "((2)3(9))"},              // the left child itself moves up
        {{8, 3, 1, 6, 5, 9}, "(((1)3(5))6(9))"},  // its left child stays
        {{8, 3, 1, 6, 5}, "((1)3((5)6))"}};       // the only child, whole
    int const key = 8;
    for (auto const& [keys, want] : rows) {
        bnode_t* const root = bnode_t::Delete(TreeOf(keys), Node::Cmp, &key);
        EXPECT_EQ(want, Shape(root));
        bnode_t::DeleteTree(root);
    }
}

TEST(BnodeCopy, LeavesNothingBehindWhenItFails) {
    bnode_t* const root = TreeOf({4, 2, 6, 1, 3, 5, 7});
    for (int const dups : {0, 1, 6}) {
        Node::dups_left = dups;
        EXPECT_THROW(bnode_t::DupTree(root), std::bad_alloc);
        EXPECT_EQ(7, Node::alive) << "after " << dups << " nodes";
    }
    Node::dups_left = -1;
    bnode_t::DeleteTree(root);
}

TEST(BnodeBalance, RebuildsAChainWhoseWalksNeedNoStack) {
    using Slot = bnode_t* const*;
    auto const up = [](Slot a, Slot b) { return Node::KeyOf(*a) - Node::KeyOf(*b); };
    auto const down = [](Slot a, Slot b) { return Node::KeyOf(*b) - Node::KeyOf(*a); };
    int const n = 300000;
    bnode_t* const chain = Chain(n);
    bnode_t* large = bnode_t::DupTree(chain->left);
    EXPECT_EQ(n - 1, bnode_t::Size(large));
    for (auto const& [order, walk] : kWalks) {
        Keys keys;
        walk(large, Node::Log, &keys);
        EXPECT_EQ(static_cast<std::size_t>(n - 1), keys.size()) << order;
    }
    large = large->Balance(up);
    Keys levels(n);
    auto const count = [](bnode_t*, int level, void* out) { ++(*static_cast<Keys*>(out))[level]; };
    bnode_t::CheckTree(large, 1, count, &levels);
    EXPECT_TRUE(levels[19] > 0 && levels[20] == 0);
    bnode_t* const small = Chain(6)->Balance(up)->Balance(down);
    EXPECT_EQ("((5(4))3((2)1(0)))", Shape(small));
    auto const key_and_level = [](bnode_t* n, int level, void* out) {
        static_cast<Keys*>(out)->insert(static_cast<Keys*>(out)->end(), {Node::KeyOf(n), level});
    };
    Keys seen;
    bnode_t::CheckTree(small->right, 10, key_and_level, &seen);
    EXPECT_EQ("2 11 1 10 0 11", Joined(seen));
    for (bnode_t* tree : {chain, large, small}) bnode_t::DeleteTree(tree);
    EXPECT_EQ(0, Node::alive);
}

}  // namespace
