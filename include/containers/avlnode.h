// AVLnode: a node of height-balanced binary search trees (Adelson-Velsky and Landis) with parent
// links.
//
// Search, walks, ranges and copies are those of bnode_t; insertion and deletion here keep the
// heights of the two subtrees of every node within one of each other, so both are logarithmic.
// Nodes are relinked, never copied: the address of an entry stays valid until it is deleted. The
// routines also work on a part of a tree; the node that heads it afterwards gets the parent of the
// one that headed it before, and the caller links it there. A tree belongs to one thread at a time.
#ifndef KORBASE_CONTAINERS_AVLNODE_H
#define KORBASE_CONTAINERS_AVLNODE_H

#include <containers/bnode.h>
#include <korbase_api.h>

class KORBASE_API AVLnode : public bnode_t {
public:
    // A new node, which the tree owns from then on.
    using CreateFn = AVLnode* (*)(void* arg);

    int bal;  // height(right) - height(left): -1, 0 or 1

    AVLnode() : bal(0) {}
    // A copy takes the balance, so that a copied tree is balanced as its source; an assigned node
    // keeps its own.
    AVLnode(AVLnode const&) = default;
    AVLnode& operator=(AVLnode const&) { return *this; }

    bnode_t* Dup() const override;
    ~AVLnode() override;

    // Adds the node that `create(create_arg)` returns; if a node is equal to `key`, calls
    // `found(node, found_arg)` instead (nothing when `found` is null). Returns the root and sets
    // `grew` to 1 if the tree is higher than before, else to 0. Unchanged when `create` throws or
    // returns null.
    static AVLnode* Insert(AVLnode* root, CompareFn cmp, void const* key, CreateFn create,
                           void* create_arg, VisitFn found, void* found_arg, int& grew);
    static AVLnode* Insert(AVLnode* root, CompareFn cmp, void const* key, CreateFn create,
                           void* create_arg, int& grew);

    // Takes the node equal to `key` out of the tree and hands it over in `removed`, without links,
    // for the caller to destroy; null when there is none. Returns the root and sets `shrank` to 1
    // if the tree is lower than before, else to 0.
    static AVLnode* Delete(AVLnode* root, CompareFn cmp, void const* key, int& shrank,
                           AVLnode*& removed);

    // The two operations for callers that made the descent themselves. Link hangs `node` as a leaf
    // under `parent`, an empty place on the left or the right side (null: into an empty tree);
    // Unlink takes `node` out of the tree. Both rebalance up to `root` and return the root.
    static AVLnode* Link(AVLnode* root, AVLnode* parent, bool on_left, AVLnode* node, int& grew);
    static AVLnode* Unlink(AVLnode* root, AVLnode* node, int& shrank);

    // The rotations lift p1, a child of `p`, or p2, the inner child of p1, to the place of `p`; LL
    // and LR on the left side, RR and RL on the right. They set the parent links of all nodes that
    // move. The double ones also set the three balances. They return the node that was lifted.
    static AVLnode* RotateLL(AVLnode* p, AVLnode* p1);
    static AVLnode* RotateLR(AVLnode* p, AVLnode* p1, AVLnode* p2);
    static AVLnode* RotateRL(AVLnode* p, AVLnode* p1, AVLnode* p2);
    static AVLnode* RotateRR(AVLnode* p, AVLnode* p1);

    // Restore the balance of `p` after its left (Bal1) or right (Bal2) subtree has become lower by
    // one. Return the head of the subtree and set `shrank` to 0 if its height is what it was.
    static AVLnode* Bal1(AVLnode* p, int& shrank);
    static AVLnode* Bal2(AVLnode* p, int& shrank);

    // Takes the rightmost node of the tree `root`, which must not be empty, out of it and hands it
    // over in `removed`. Returns the root, null when nothing is left; `shrank` as for Delete.
    static AVLnode* Del(AVLnode* root, int& shrank, AVLnode*& removed);
};

#endif
