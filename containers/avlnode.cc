// The textbook algorithms with the recursion unrolled along the parent links: a change starts at a
// leaf and climbs, and stops as soon as the height of the subtree below is what it was.
#include "containers/avlnode.h"

namespace {

AVLnode* Left(AVLnode const* n) { return static_cast<AVLnode*>(n->left); }
AVLnode* Right(AVLnode const* n) { return static_cast<AVLnode*>(n->right); }
AVLnode* Parent(AVLnode const* n) { return static_cast<AVLnode*>(n->parent); }

void SetLeft(AVLnode* n, bnode_t* child) {
    n->left = child;
    if (child) child->parent = n;
}

void SetRight(AVLnode* n, bnode_t* child) {
    n->right = child;
    if (child) child->parent = n;
}

// `p` has a left (right) subtree higher by two: the node that heads it after the rotation, in
// balance.
AVLnode* LiftLeft(AVLnode* p) {
    AVLnode* const p1 = Left(p);
    if (p1->bal > 0) return AVLnode::RotateLR(p, p1, Right(p1));
    p->bal = p1->bal = 0;
    return AVLnode::RotateLL(p, p1);
}

AVLnode* LiftRight(AVLnode* p) {
    AVLnode* const p1 = Right(p);
    if (p1->bal < 0) return AVLnode::RotateRL(p, p1, Left(p1));
    p->bal = p1->bal = 0;
    return AVLnode::RotateRR(p, p1);
}

// One side of `p` has grown: brings it into balance. `grew` becomes 0 when the height is what it
// was.
AVLnode* Grown(AVLnode* p, bool on_left, int& grew) {
    int const tilt = on_left ? -1 : 1;
    if (p->bal == 0) {
        p->bal = tilt;
        return p;
    }
    grew = 0;
    if (p->bal == tilt) return on_left ? LiftLeft(p) : LiftRight(p);
    p->bal = 0;
    return p;
}

// One side of `p` has become lower by one: brings it into balance. `shrank` becomes 0 when the
// height is what it was.
AVLnode* Lowered(AVLnode* p, bool on_left, int& shrank) {
    int const tilt = on_left ? 1 : -1;
    if (p->bal == 0) {
        p->bal = tilt;
        shrank = 0;
        return p;
    }
    if (p->bal != tilt) {
        p->bal = 0;
        return p;
    }
    AVLnode* const p1 = on_left ? Right(p) : Left(p);
    bool const even = p1->bal == 0;
    AVLnode* const head = on_left ? LiftRight(p) : LiftLeft(p);
    if (even) {  // the inner grandchild is as high as the outer one: the height stays
        p->bal = tilt;
        p1->bal = -tilt;
        shrank = 0;
    }
    return head;
}

// One side of `p`, a node of the tree `root`, has become lower: rebalances from there up. Returns
// the root.
AVLnode* Shrunk(AVLnode* root, AVLnode* p, bool on_left, int& shrank) {
    while (shrank) {
        AVLnode* const up = p == root ? nullptr : Parent(p);
        bool const p_on_left = up && up->left == p;
        AVLnode* const head = Lowered(p, on_left, shrank);
        if (!up) return head;
        (p_on_left ? up->left : up->right) = head;
        p = up;
        on_left = p_on_left;
    }
    return root;
}

}  // namespace

bnode_t* AVLnode::Dup() const { return new AVLnode(*this); }

AVLnode::~AVLnode() {}

AVLnode* AVLnode::Insert(AVLnode* root, CompareFn cmp, void const* key, CreateFn create,
                         void* create_arg, VisitFn found, void* found_arg, int& grew) {
    grew = 0;
    AVLnode* parent = nullptr;
    bool on_left = false;
    for (AVLnode* n = root; n; n = on_left ? Left(n) : Right(n)) {
        int const order = cmp(n, key);
        if (order == 0) {
            if (found) found(n, found_arg);
            return root;
        }
        parent = n;
        on_left = order > 0;
    }
    AVLnode* const node = create(create_arg);
    return node ? Link(root, parent, on_left, node, grew) : root;
}

AVLnode* AVLnode::Insert(AVLnode* root, CompareFn cmp, void const* key, CreateFn create,
                         void* create_arg, int& grew) {
    return Insert(root, cmp, key, create, create_arg, nullptr, nullptr, grew);
}

AVLnode* AVLnode::Delete(AVLnode* root, CompareFn cmp, void const* key, int& shrank,
                         AVLnode*& removed) {
    shrank = 0;
    removed = static_cast<AVLnode*>(Find(root, cmp, key));
    return removed ? Unlink(root, removed, shrank) : root;
}

AVLnode* AVLnode::Link(AVLnode* root, AVLnode* parent, bool on_left, AVLnode* node, int& grew) {
    node->parent = parent;
    node->left = node->right = nullptr;
    node->bal = 0;
    grew = 1;
    if (!parent) return node;

    (on_left ? parent->left : parent->right) = node;
    for (AVLnode* p = parent;;) {
        AVLnode* const up = p == root ? nullptr : Parent(p);
        bool const p_on_left = up && up->left == p;
        AVLnode* const head = Grown(p, on_left, grew);
        if (!up) return head;
        (p_on_left ? up->left : up->right) = head;
        if (!grew) return root;
        p = up;
        on_left = p_on_left;
    }
}

AVLnode* AVLnode::Unlink(AVLnode* root, AVLnode* node, int& shrank) {
    AVLnode* const up = node == root ? nullptr : Parent(node);
    bool const on_left = up && up->left == node;
    AVLnode* heir = nullptr;
    shrank = 1;
    if (node->left && node->right) {
        AVLnode* const rest = Del(Left(node), shrank, heir);
        SetLeft(heir, rest);
        SetRight(heir, node->right);
        heir->bal = node->bal;
        heir->parent = node->parent;
        if (shrank) heir = Bal1(heir, shrank);
    } else {
        heir = node->left ? Left(node) : Right(node);
        if (heir) heir->parent = node->parent;
    }
    node->parent = node->left = node->right = nullptr;
    if (!up) return heir;
    (on_left ? up->left : up->right) = heir;
    return Shrunk(root, up, on_left, shrank);
}

AVLnode* AVLnode::RotateLL(AVLnode* p, AVLnode* p1) {
    p1->parent = p->parent;
    SetLeft(p, p1->right);
    SetRight(p1, p);
    return p1;
}

AVLnode* AVLnode::RotateRR(AVLnode* p, AVLnode* p1) {
    p1->parent = p->parent;
    SetRight(p, p1->left);
    SetLeft(p1, p);
    return p1;
}

AVLnode* AVLnode::RotateLR(AVLnode* p, AVLnode* p1, AVLnode* p2) {
    p2->parent = p->parent;
    SetRight(p1, p2->left);
    SetLeft(p2, p1);
    SetLeft(p, p2->right);
    SetRight(p2, p);
    p->bal = p2->bal < 0 ? 1 : 0;
    p1->bal = p2->bal > 0 ? -1 : 0;
    p2->bal = 0;
    return p2;
}

AVLnode* AVLnode::RotateRL(AVLnode* p, AVLnode* p1, AVLnode* p2) {
    p2->parent = p->parent;
    SetLeft(p1, p2->right);
    SetRight(p2, p1);
    SetRight(p, p2->left);
    SetLeft(p2, p);
    p->bal = p2->bal > 0 ? -1 : 0;
    p1->bal = p2->bal < 0 ? 1 : 0;
    p2->bal = 0;
    return p2;
}

AVLnode* AVLnode::Bal1(AVLnode* p, int& shrank) { return Lowered(p, true, shrank); }

AVLnode* AVLnode::Bal2(AVLnode* p, int& shrank) { return Lowered(p, false, shrank); }

AVLnode* AVLnode::Del(AVLnode* root, int& shrank, AVLnode*& removed) {
    removed = static_cast<AVLnode*>(Iterator::RDown(root));
    AVLnode* const up = removed == root ? nullptr : Parent(removed);
    bnode_t* const rest = removed->left;
    if (rest) rest->parent = removed->parent;
    removed->parent = removed->left = nullptr;
    shrank = 1;
    if (!up) return static_cast<AVLnode*>(rest);
    up->right = rest;
    return Shrunk(root, up, false, shrank);
}
