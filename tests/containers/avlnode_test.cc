#include "containers/avlnode.h"

#include <set>

#include "tests/support/int_tree.h"

namespace {

using Node = IntNode<AVLnode>;
// AVLnode::Insert; a node that was equal puts its key into `found`.
AVLnode* Add(AVLnode* root, int key, int& grew, std::vector<int>* found = nullptr) {
    return AVLnode::Insert(root, Node::Cmp, &key, Node::Make, &key, found ? Node::Log : nullptr,
                           found, grew);
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
            std::vector<int> found;
            root = Add(root, key, change, &found);
            ASSERT_EQ(model.insert(key).second ? "" : std::to_string(key), Joined(found));
        } else {
            AVLnode* removed = root;
            root = AVLnode::Delete(root, Node::Cmp, &key, change, removed);
            ASSERT_EQ(model.erase(key) == 1, removed && Node::KeyOf(removed) == key);
            ASSERT_TRUE(!removed || (!removed->parent && !removed->left && !removed->right));
            delete removed;
        }
        int const now = BalancedHeight(root);
        ASSERT_EQ(fill ? now - height : height - now, change) << "step " << step;
        height = now;
        std::vector<int> keys;
        bnode_t::Inorder(root, Node::Log, &keys);
        ASSERT_EQ(Joined(model), Joined(keys));
    }
    int const absent = 1000;
    int change = 0;
    EXPECT_THROW(AVLnode::Insert(root, Node::Cmp, &absent, Node::Fail, nullptr, change),
                 std::bad_alloc);
    EXPECT_EQ(height, BalancedHeight(root));
    bnode_t::DeleteTree(root);
}

// A part of a tree: the node that heads it afterwards names the outer parent.
TEST(AVLPart, KeepsTheOuterParentThroughRotationAndRemoval) {
    Node outer(100);
    int change = 0;
    AVLnode* part = Add(nullptr, 1, change);
    part->parent = &outer;
    for (int const key : {2, 3, 4, 5, 0}) part = Add(part, key, change);
    EXPECT_EQ(3, BalancedHeight(part, &outer));
    for (bool last = true; part; last = !last) {
        AVLnode* removed = nullptr;
        int const key = Node::KeyOf(part);
        part = last ? AVLnode::Del(part, change, removed)
                    : AVLnode::Delete(part, Node::Cmp, &key, change, removed);
        delete removed;
        BalancedHeight(part, &outer);
    }
    EXPECT_EQ(1, Node::alive);
}

}  // namespace
