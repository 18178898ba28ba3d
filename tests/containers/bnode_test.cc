#include "containers/bnode.h"

#include <set>

#include "tests/support/int_tree.h"

namespace {

using Node = IntNode<bnode_t>;
using Keys = std::vector<int>;

bnode_t* Chain(int n) {  // each node but the first the left child of the one before
    bnode_t* const root = new Node(--n);
    for (bnode_t* last = root; n-- > 0; last = last->left)
        bnode_t::Insert(last, Node::Cmp, &n, Node::Make, &n);
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
            // Between two children the rightmost node of the left one takes the place.
            bnode_t* const gone = bnode_t::Find(root, Node::Cmp, &key);
            bnode_t* const up = gone ? gone->parent : nullptr;
            bnode_t* const* const place = !up ? &root : up->left == gone ? &up->left : &up->right;
            bool const full = gone && gone->left && gone->right;
            int const heir = full ? *std::prev(model.find(key)) : -1;
            root = bnode_t::Delete(root, Node::Cmp, &key);
            ASSERT_EQ(heir, full ? Node::KeyOf(*place) : -1);
            model.erase(key);
        }
        std::string const shape = Shape(root);
        int const size = static_cast<int>(model.size()), copies = below(64);
        ASSERT_EQ(std::pair(size, size), std::pair(Node::alive, bnode_t::Size(root)));
        ASSERT_EQ(std::string::npos, shape.find('!')) << shape;
        ASSERT_EQ(Joined(model), Joined(Model(root, "lnr")));
        bnode_t const* const found = bnode_t::Find(root, Node::Cmp, &probe);
        ASSERT_EQ(model.count(probe) ? probe : -1, found ? Node::KeyOf(found) : -1);
        try {
            Node::dups_left = copies;
            bnode_t* const copy = bnode_t::DupTree(root);
            ASSERT_EQ(shape, Shape(copy));
            bnode_t::DeleteTree(copy);
        } catch (std::bad_alloc const&) {
            ASSERT_LT(copies, size);
        }
        ASSERT_EQ(size, Node::alive) << "after " << copies << " copies";

        // Each walk as a whole, and one that is stopped at the third node.
        bnode_t* const part = root && root->left && step % 2 ? root->left : root;
        for (auto const& [order, walk] : kWalks) {
            Keys all, some, want = Model(part, order);
            ASSERT_EQ(0, walk(part, Node::Log, &all));
            ASSERT_EQ(want, all) << order << shape;
            ASSERT_EQ(want.size() < 3 ? 0 : 7, walk(part, Node::LogThree, &some));
            want.resize(some.size());
            ASSERT_EQ(want, some) << order << shape;
        }
        Keys want, up, down;
        if (lo <= hi) want.assign(model.lower_bound(lo), model.upper_bound(hi));
        bnode_t::Range(root, Node::Log, &up, Node::Cmp, &lo, &hi);
        ASSERT_EQ(want, up) << lo << shape;
        bnode_t::RevRange(root, Node::Log, &down, Node::Cmp, &lo, &hi);
        ASSERT_EQ(want, Keys(down.rbegin(), down.rend())) << lo << shape;
    }
    bnode_t::DeleteTree(root);
}

TEST(BnodeBalance, RebuildsAChainWhoseWalksNeedNoStack) {
    using Slot = bnode_t* const*;
    auto const down = [](Slot a, Slot b) { return Node::KeyOf(*b) - Node::KeyOf(*a); };
    Node::dups_left = -1;
    bnode_t* const chain = Chain(300000);
    bnode_t* const copy = bnode_t::DupTree(chain->left);
    for (auto const& [order, walk] : kWalks) {
        Keys keys;
        walk(copy, Node::Log, &keys);
        EXPECT_EQ(299999U, keys.size()) << order;
    }
    bnode_t* const small = Chain(6)->Balance(down);
    EXPECT_EQ("((5(4))3((2)1(0)))", Shape(small));
    for (bnode_t* const tree : {chain, copy->Balance(down), small}) bnode_t::DeleteTree(tree);
}

}  // namespace
