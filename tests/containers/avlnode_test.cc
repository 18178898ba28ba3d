#include "containers/avlnode.h"

#include <set>

#include "tests/support/int_tree.h"

namespace {

using Node = IntNode<AVLnode>;

// Filling and emptying in turns reaches every shape, the empty tree included.
TEST(AVLTree, StaysBalancedAndReportsItsHeightUnderRandomChanges) {
    std::mt19937 random(3);
    std::set<int> model;
    AVLnode* root = nullptr;
    int height = 0;
    for (int step = 0; step < 12000; ++step) {
        int key = static_cast<int>(random() % 200), change = 5;
        bool const fill = random() % 8 < (step / 500 % 2 ? 6U : 1U);
        if (fill) {
            std::vector<int> found;
            root =
                AVLnode::Insert(root, Node::Cmp, &key, Node::Make, &key, Node::Log, &found, change);
            ASSERT_EQ(model.insert(key).second ? "" : std::to_string(key), Joined(found));
        } else {
            AVLnode* removed = root;
            bool const last = root && random() % 4 == 0;
            if (last) key = *model.rbegin();
            root = last ? AVLnode::Del(root, change, removed)
                        : AVLnode::Delete(root, Node::Cmp, &key, change, removed);
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
    bnode_t::DeleteTree(root);
}

}  // namespace
