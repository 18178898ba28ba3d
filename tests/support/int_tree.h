// Tree nodes with an int for a key, and a check of balanced trees.
#ifndef KORBASE_TESTS_SUPPORT_INT_TREE_H
#define KORBASE_TESTS_SUPPORT_INT_TREE_H

#include <new>

#include "containers/avlnode.h"
#include "tests/support/test.h"

template <class Base>
struct IntNode : Base {
    int key;
    inline static int alive = 0, dups_left = -1;  // Dup() throws when none are left

    explicit IntNode(int k) : key(k) { ++alive; }
    IntNode(IntNode const& from) : Base(from), key(from.key) { ++alive; }
    ~IntNode() override { --alive; }
    bnode_t* Dup() const override {
        if (dups_left-- == 0) throw std::bad_alloc();
        return new IntNode(*this);
    }

    static int KeyOf(bnode_t const* n) { return static_cast<IntNode const*>(n)->key; }
    static int Cmp(bnode_t const* n, void const* key) {
        return KeyOf(n) - *static_cast<int const*>(key);
    }
    static Base* Make(void* key) {
        Base* const n = new IntNode(*static_cast<int*>(key));
        n->left = n->right = n->parent = n;  // what a factory leaves there does not matter
        return n;
    }
    // A visitor that appends the key to the std::vector<int> at `out`; LogThree stops with 7.
    static int Log(bnode_t* n, void* out) {
        static_cast<std::vector<int>*>(out)->push_back(KeyOf(n));
        return 0;
    }
    static int LogThree(bnode_t* n, void* out) {
        Log(n, out);
        return static_cast<std::vector<int>*>(out)->size() == 3 ? 7 : 0;
    }
};

// The height of a balanced tree with right parent links; a fault is reported.
inline int BalancedHeight(bnode_t const* n, bnode_t const* parent = nullptr) {
    if (!n) return 0;
    int const left = BalancedHeight(n->left, n), right = BalancedHeight(n->right, n);
    int const bal = static_cast<AVLnode const*>(n)->bal;
    EXPECT_TRUE(n->parent == parent && bal == right - left && bal >= -1 && bal <= 1);
    return 1 + std::max(left, right);
}

#endif
