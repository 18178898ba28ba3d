// bnode_t: the base node of binary search trees, with the routines that need no balance.
//
// A tree is addressed by its root; an empty one is a null root. Node types derive from bnode_t, add
// key and data and override Dup(). The routines are static and learn about keys from callbacks.
// They step along the parent links and use no stack, so a degenerate tree of a million levels is
// only slow. Every routine also works on a part of a tree: the parent of the root it is given is
// never followed. A tree belongs to one thread at a time; callbacks must not change the tree they
// are called from.
#ifndef KORBASE_CONTAINERS_BNODE_H
#define KORBASE_CONTAINERS_BNODE_H

#include <korbase_api.h>

#include <generic/tvarr>

class KORBASE_API bnode_t {
public:
    // Positive when `node` sorts after `key`, negative when before, 0 when equal.
    using CompareFn = int (*)(bnode_t const* node, void const* key);
    // Called for each node of a walk; a non-zero result stops the walk and is what it returns.
    using VisitFn = int (*)(bnode_t* node, void* arg);
    // A new node, which the tree owns from then on.
    using CreateFn = bnode_t* (*)(void* arg);

    struct Iterator;

    bnode_t* parent;  // null at the root
    bnode_t* left;
    bnode_t* right;

    bnode_t() : parent(nullptr), left(nullptr), right(nullptr) {}
    // A copy takes the data of a node, never its place: a new node has no links, an assigned one
    // keeps its own.
    bnode_t(bnode_t const&) : bnode_t() {}
    // NOLINTNEXTLINE(bugprone-unhandled-self-assignment): nothing is assigned
    bnode_t& operator=(bnode_t const&) { return *this; }

    // A new node with a copy of this one's own data and without links. Derived types override it.
    virtual bnode_t* Dup() const;
    virtual ~bnode_t();

    // The node equal to `key`, or null.
    static bnode_t* Find(bnode_t* root, CompareFn cmp, void const* key);

    // Adds the node that `create(create_arg)` returns as a leaf; if a node is equal to `key`, calls
    // `found(node, found_arg)` instead (nothing when `found` is null). Returns the root. The tree
    // is unchanged when `create` throws or returns null.
    static bnode_t* Insert(bnode_t* root, CompareFn cmp, void const* key, CreateFn create,
                           void* create_arg, VisitFn found, void* found_arg);
    static bnode_t* Insert(bnode_t* root, CompareFn cmp, void const* key, CreateFn create,
                           void* create_arg);

    // Takes the node equal to `key` out and destroys it; its place goes to its only child or, with
    // two children, to the rightmost node of its left subtree. Returns the root; a new root has no
    // parent.
    static bnode_t* Delete(bnode_t* root, CompareFn cmp, void const* key);

    // Destroys all nodes, children first. Returns null.
    static bnode_t* DeleteTree(bnode_t* root);

    // Depth-first walks; Revorder is right, node, left. Return the visitor's first non-zero result,
    // or 0. The visitor of Postorder may destroy the node it is given.
    static int Preorder(bnode_t* root, VisitFn visit, void* arg);
    static int Inorder(bnode_t* root, VisitFn visit, void* arg);
    static int Revorder(bnode_t* root, VisitFn visit, void* arg);
    static int Postorder(bnode_t* root, VisitFn visit, void* arg);

    // Visits the nodes from `lo` to `hi`, both included, in ascending order, RevRange in descending
    // order; none when `lo` sorts after `hi`. What lies outside is skipped by whole subtrees.
    // Results as above.
    static int Range(bnode_t* root, VisitFn visit, void* arg, CompareFn cmp, void const* lo,
                     void const* hi);
    static int RevRange(bnode_t* root, VisitFn visit, void* arg, CompareFn cmp, void const* lo,
                        void const* hi);

    // The number of nodes, by counting them.
    static int Size(bnode_t* root);

    // Links nodes[lo] to nodes[hi], both included and in ascending order, into a tree of minimal
    // height below `parent` and returns its root: the element (lo + hi) / 2, and so on in both
    // halves. Null when lo > hi.
    static bnode_t* BuildTree(bnode_t* parent, bnode_t** nodes, int lo, int hi);

    // Sorts the nodes of the tree below this one by `cmp` and rebuilds it with minimal height.
    // Returns the new root, which has no parent. Unchanged when the work array cannot be allocated
    // (std::bad_alloc).
    bnode_t* Balance(int (*cmp)(bnode_t* const*, bnode_t* const*));

    // A copy of the tree, node by node through Dup(); its root has no parent. A Dup() that also
    // copies the children is taken at its word. Nothing leaks when Dup() throws.
    static bnode_t* DupTree(bnode_t const* root);

    // Calls check(node, level, arg) in ascending order; the root is at level `depth`, its children
    // one higher.
    static void CheckTree(bnode_t* root, int depth, void (*check)(bnode_t*, int, void*), void* arg);

protected:
    // DupTree with `copy` in place of Dup().
    static bnode_t* CopyTree(bnode_t const* root, bnode_t* (*copy)(bnode_t const*));
};

// The steps of an in-order walk. The successor of a node is LDown(right) if it has a right child,
// else LUp(node); the predecessor is RDown(left) or RUp(node). Null gives null. A descent also
// prefetches the subtrees that the walk enters on its way back.
struct bnode_t::Iterator {
    // The leftmost node below `n`, or `n` itself when it has no left child.
    static bnode_t* LDown(bnode_t* n) {
        for (bnode_t* next = n; next; next = n->left) {
            n = next;
            __builtin_prefetch(n->right);
        }
        return n;
    }
    // The nearest ancestor that `n` lies to the left of, or null when it lies to the right of all.
    static bnode_t* LUp(bnode_t* n) {
        if (!n) return nullptr;
        bnode_t* up = n->parent;
        for (; up && n == up->right; up = n->parent) n = up;
        return up;
    }
    // The mirror images.
    static bnode_t* RDown(bnode_t* n) {
        for (bnode_t* next = n; next; next = n->right) {
            n = next;
            __builtin_prefetch(n->left);
        }
        return n;
    }
    static bnode_t* RUp(bnode_t* n) {
        if (!n) return nullptr;
        bnode_t* up = n->parent;
        for (; up && n == up->left; up = n->parent) n = up;
        return up;
    }
};

extern template class KORBASE_API TVarr<bnode_t*>;  // containers/bnode.cc

#endif
