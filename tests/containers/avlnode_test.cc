#include "containers/avlnode.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <cstdlib>
#include <new>
#include <numeric>
#include <random>
#include <set>
#include <string>
#include <vector>

namespace {

struct Node : AVLnode {
    int key;
    explicit Node(int k) : key(k) {}
    bnode_t* Dup() const override { return new Node(*this); }

    static int KeyOf(bnode_t const* n) { return static_cast<Node const*>(n)->key; }
    static int Cmp(bnode_t const* n, void const* key) {
        int const a = KeyOf(n), b = *static_cast<int const*>(key);
        return a < b ? -1 : a > b;
    }
    static AVLnode* Make(void* key) {
        Node* const n = new Node(*static_cast<int*>(key));
        n->bal = 9;  // what a factory leaves in the links and the balance does not matter
        n->left = n->right = n->parent = n;
        return n;
    }
};

// The height of a tree in which order, balances and parent links hold; a failure is reported once.
int CheckedHeight(bnode_t const* n, bnode_t const* parent = nullptr) {
    if (!n) return 0;
    int const left = CheckedHeight(n->left, n), right = CheckedHeight(n->right, n);
    AVLnode const* const avl = static_cast<AVLnode const*>(n);
    if (n->parent != parent || avl->bal != right - left || std::abs(avl->bal) > 1 ||
        (n->left && Node::KeyOf(n->left) >= Node::KeyOf(n)) ||
        (n->right && Node::KeyOf(n->right) <= Node::KeyOf(n)))
        ADD_FAILURE() << "at " << Node::KeyOf(n) << ", balance " << avl->bal;
    return 1 + std::max(left, right);
}

std::vector<int> KeysOf(bnode_t* root) {
    std::vector<int> keys;
    auto const add = [](bnode_t* n, void* out) {
        static_cast<std::vector<int>*>(out)->push_back(Node::KeyOf(n));
        return 0;
    };
    bnode_t::Inorder(root, add, &keys);
    return keys;
}

AVLnode* Add(AVLnode* root, int key, int& grew) {
    return AVLnode::Insert(root, Node::Cmp, &key, Node::Make, &key, grew);
}

AVLnode* TreeOf(std::vector<int> const& keys) {
    AVLnode* root = nullptr;
    int grew = 0;
    for (int const key : keys) root = Add(root, key, grew);
    return root;
}

TEST(AVLTree, StaysBalancedAndReportsItsHeightUnderRandomChanges) {
    std::mt19937 random(3);
    std::set<int> model;
    AVLnode* root = nullptr;
    int height = 0;
    for (int step = 0; step < 12000; ++step) {
        // Filling and emptying in turns reaches every shape, the empty tree included.
        int const key = static_cast<int>(random() % 200);
        bool const fill = random() % 8 < (step / 500 % 2 ? 6U : 2U);
        int change = 5;
        if (fill) {
            root = Add(root, key, change);
            model.insert(key);
        } else {
            AVLnode* removed = root;
            root = AVLnode::Delete(root, Node::Cmp, &key, change, removed);
            ASSERT_EQ(model.erase(key) == 1, removed != nullptr);
            if (removed) {
                ASSERT_EQ(key, Node::KeyOf(removed));
                ASSERT_TRUE(!removed->parent && !removed->left && !removed->right);
                delete removed;
            }
        }
        int const now = CheckedHeight(root);
        ASSERT_EQ(fill ? now - height : height - now, change) << "step " << step;
        height = now;
        ASSERT_EQ(std::vector<int>(model.begin(), model.end()), KeysOf(root));
    }
    bnode_t::DeleteTree(root);
}

TEST(AVLTree, TakesEveryOrderOfSixAndLosesAnyNode) {
    std::vector<int> order(6);
    std::iota(order.begin(), order.end(), 0);
    do {
        for (int const key : order) {
            AVLnode* root = TreeOf(order);
            int shrank = 0;
            AVLnode* removed = nullptr;
            root = AVLnode::Delete(root, Node::Cmp, &key, shrank, removed);
            EXPECT_LE(CheckedHeight(root), 3);
            EXPECT_EQ(5, bnode_t::Size(root));
            delete removed;
            bnode_t::DeleteTree(root);
        }
    } while (std::next_permutation(order.begin(), order.end()));
}

TEST(AVLTree, OfSevenAscendingKeysIsPerfect) {
    AVLnode* const root = TreeOf({1, 2, 3, 4, 5, 6, 7});
    EXPECT_EQ(4, Node::KeyOf(root));
    EXPECT_EQ(3, CheckedHeight(root));
    AVLnode* const copy = static_cast<AVLnode*>(bnode_t::DupTree(root));
    EXPECT_EQ(3, CheckedHeight(copy));
    EXPECT_EQ(KeysOf(root), KeysOf(copy));
    bnode_t::DeleteTree(root);
    bnode_t::DeleteTree(copy);
}

TEST(AVLInsert, ReportsAnEqualNodeAndSurvivesAFailingFactory) {
    AVLnode* const root = TreeOf({2, 1, 3});
    int key = 3, grew = 5, found = 0;
    auto const note = [](bnode_t* n, void* out) {
        return *static_cast<int*>(out) = Node::KeyOf(n);
    };
    EXPECT_EQ(root, AVLnode::Insert(root, Node::Cmp, &key, Node::Make, &key, note, &found, grew));
    EXPECT_EQ(3, found);
    EXPECT_EQ(0, grew);
    key = 4;
    AVLnode::CreateFn const fail = [](void*) -> AVLnode* { throw std::bad_alloc(); };
    EXPECT_THROW(AVLnode::Insert(root, Node::Cmp, &key, fail, &key, grew), std::bad_alloc);
    EXPECT_EQ((std::vector<int>{1, 2, 3}), KeysOf(root));
    bnode_t::DeleteTree(root);
}

// A part of a tree: the node that heads it afterwards names the outer parent.
TEST(AVLPart, KeepsTheOuterParentThroughRotationAndRemoval) {
    Node outer(100);
    int change = 0;
    AVLnode* part = Add(nullptr, 1, change);
    part->parent = &outer;
    for (int const key : {2, 3, 4, 5, 0}) part = Add(part, key, change);
    EXPECT_EQ(3, CheckedHeight(part, &outer));
    while (part) {
        int const key = Node::KeyOf(part);
        AVLnode* removed = nullptr;
        part = AVLnode::Delete(part, Node::Cmp, &key, change, removed);
        delete removed;
        CheckedHeight(part, &outer);
    }
}

TEST(AVLDel, TakesTheRightmostUntilNothingIsLeft) {
    std::vector<int> keys(40);
    std::iota(keys.begin(), keys.end(), 0);
    AVLnode* root = TreeOf(keys);
    for (int want = 39, height = CheckedHeight(root); want >= 0; --want) {
        int shrank = 5;
        AVLnode* removed = nullptr;
        root = AVLnode::Del(root, shrank, removed);
        EXPECT_EQ(want, Node::KeyOf(removed));
        delete removed;
        int const now = CheckedHeight(root);
        EXPECT_EQ(height - now, shrank);
        height = now;
    }
    EXPECT_EQ(nullptr, root);
}

TEST(AVLRotations, SetBalancesAndLinks) {
    struct {
        int before, left, right;  // the balance of the inner grandchild; what its new children get
    } const rows[] = {{-1, 0, 1}, {0, 0, 0}, {1, -1, 0}};
    for (auto const& row : rows) {
        for (bool const lr : {true, false}) {
            Node a(1), b(2), c(3), inner_left(4), inner_right(5), outer(9);
            AVLnode &p = lr ? c : a, &p1 = lr ? a : c;
            p.parent = &outer;
            b.left = &inner_left;
            b.right = &inner_right;
            b.bal = row.before;
            EXPECT_EQ(&b, lr ? AVLnode::RotateLR(&p, &p1, &b) : AVLnode::RotateRL(&p, &p1, &b));
            EXPECT_TRUE(b.left == &a && b.right == &c && a.right == &inner_left &&
                        c.left == &inner_right);
            EXPECT_TRUE(b.parent == &outer && a.parent == &b && c.parent == &b &&
                        inner_left.parent == &a && inner_right.parent == &c);
            EXPECT_EQ(row.left, a.bal);
            EXPECT_EQ(row.right, c.bal);
            EXPECT_EQ(0, b.bal);
        }
    }
}

}  // namespace
