// Walks without a stack: every step is a descent to a child or a climb along the parent links, and
// a climb ends at the root that the walk was given, whatever that root's own parent says.
#include "containers/bnode.h"

template class TVarr<bnode_t*>;

namespace {

using Side = bnode_t* bnode_t::*;

// The end of the tree `n` on one side. The subtrees on the other side, which a walk enters on its
// way back, are prefetched.
bnode_t* Far(bnode_t* n, Side side, Side other) {
    for (bnode_t* next = n; next; next = n->*side) {
        n = next;
        __builtin_prefetch(n->*other);
    }
    return n;
}

// The node after `n` in the order that `to` points along, within the tree `root`; null at its end.
bnode_t* Step(bnode_t* root, bnode_t* n, Side to, Side from) {
    if (n->*to) return Far(n->*to, from, to);
    for (; n != root; n = n->parent)
        if (n != n->parent->*to) return n->parent;
    return nullptr;
}

int Walk(bnode_t* root, bnode_t::VisitFn visit, void* arg, Side to, Side from) {
    if (!root) return 0;
    for (bnode_t* n = Far(root, from, to); n; n = Step(root, n, to, from))
        if (int const result = visit(n, arg)) return result;
    return 0;
}

// Visits from the first node not before `first` to the last one not behind `last`, as `to` points.
int WalkRange(bnode_t* root, bnode_t::VisitFn visit, void* arg, bnode_t::CompareFn cmp,
              void const* first, void const* last, Side to, Side from) {
    bool const ascending = to == &bnode_t::right;
    auto const order = [cmp, ascending](bnode_t const* n, void const* key) {
        int const result = cmp(n, key);
        int const sign = (result > 0) - (result < 0);
        return ascending ? sign : -sign;
    };
    bnode_t* start = nullptr;
    for (bnode_t* n = root; n;) {
        if (order(n, first) >= 0) {
            start = n;
            n = n->*from;
        } else if (order(n, last) <= 0) {
            n = n->*to;
        } else {
            return 0;  // the ends are in the wrong order
        }
    }
    for (bnode_t* n = start; n && order(n, last) <= 0; n = Step(root, n, to, from))
        if (int const result = visit(n, arg)) return result;
    return 0;
}

// The leaf where a walk with children first begins.
bnode_t* FirstLeaf(bnode_t* n) {
    while (bnode_t* const child = n->left ? n->left : n->right) n = child;
    return n;
}

int Destroy(bnode_t* n, void*) {
    delete n;
    return 0;
}

// Unlinks `n` from the subtree it heads and returns the node that takes its place, null for a leaf.
bnode_t* Replacement(bnode_t* n) {
    if (!n->right) return n->left;
    if (!n->left) return n->right;

    bnode_t* const heir = bnode_t::Iterator::RDown(n->left);
    if (heir != n->left) {
        heir->parent->right = heir->left;
        if (heir->left) heir->left->parent = heir->parent;
        heir->left = n->left;
        heir->left->parent = heir;
    }
    heir->right = n->right;
    heir->right->parent = heir;
    return heir;
}

// Destroys what is there of a copy, unless it was finished.
struct UnfinishedTree {
    bnode_t* root;
    ~UnfinishedTree() { bnode_t::DeleteTree(root); }
    bnode_t* Release() {
        bnode_t* const finished = root;
        root = nullptr;
        return finished;
    }
};

bnode_t* CopyNode(bnode_t const* n) { return n->Dup(); }

bool HasChildren(bnode_t const* n) { return n->left || n->right; }

// A side on which `from` has a child and its copy `to` has none yet; null when there is none.
Side Missing(bnode_t const* from, bnode_t const* to) {
    if (from->left && !to->left) return &bnode_t::left;
    if (from->right && !to->right) return &bnode_t::right;
    return nullptr;
}

}  // namespace

bnode_t* bnode_t::Dup() const { return new bnode_t(*this); }

bnode_t::~bnode_t() {}

bnode_t* bnode_t::Find(bnode_t* root, CompareFn cmp, void const* key) {
    bnode_t* n = root;
    while (n) {
        int const order = cmp(n, key);
        if (order == 0) break;
        n = order > 0 ? n->left : n->right;
    }
    return n;
}

bnode_t* bnode_t::Insert(bnode_t* root, CompareFn cmp, void const* key, CreateFn create,
                         void* create_arg, VisitFn found, void* found_arg) {
    bnode_t* parent = nullptr;
    Side side = nullptr;
    for (bnode_t* n = root; n; n = n->*side) {
        int const order = cmp(n, key);
        if (order == 0) {
            if (found) found(n, found_arg);
            return root;
        }
        parent = n;
        side = order > 0 ? &bnode_t::left : &bnode_t::right;
    }
    bnode_t* const leaf = create(create_arg);
    if (!leaf) return root;
    leaf->parent = parent;
    leaf->left = leaf->right = nullptr;
    if (!parent) return leaf;
    parent->*side = leaf;
    return root;
}

bnode_t* bnode_t::Insert(bnode_t* root, CompareFn cmp, void const* key, CreateFn create,
                         void* create_arg) {
    return Insert(root, cmp, key, create, create_arg, nullptr, nullptr);
}

bnode_t* bnode_t::Delete(bnode_t* root, CompareFn cmp, void const* key) {
    bnode_t* const n = Find(root, cmp, key);
    if (!n) return root;

    bnode_t* const heir = Replacement(n);
    bnode_t* const parent = n == root ? nullptr : n->parent;
    if (heir) heir->parent = parent;
    if (parent) (n == parent->left ? parent->left : parent->right) = heir;
    delete n;
    return parent ? root : heir;
}

bnode_t* bnode_t::DeleteTree(bnode_t* root) {
    Postorder(root, Destroy, nullptr);
    return nullptr;
}

int bnode_t::Preorder(bnode_t* root, VisitFn visit, void* arg) {
    for (bnode_t* n = root; n;) {
        if (int const result = visit(n, arg)) return result;
        if (n->left || n->right) {
            n = n->left ? n->left : n->right;
            continue;
        }
        // Climb to the nearest node whose right subtree is still to come.
        while (n != root && (n == n->parent->right || !n->parent->right)) n = n->parent;
        n = n == root ? nullptr : n->parent->right;
    }
    return 0;
}

int bnode_t::Inorder(bnode_t* root, VisitFn visit, void* arg) {
    return Walk(root, visit, arg, &bnode_t::right, &bnode_t::left);
}

int bnode_t::Revorder(bnode_t* root, VisitFn visit, void* arg) {
    return Walk(root, visit, arg, &bnode_t::left, &bnode_t::right);
}

int bnode_t::Postorder(bnode_t* root, VisitFn visit, void* arg) {
    for (bnode_t* n = root ? FirstLeaf(root) : nullptr; n;) {
        // The way on is read first: the visitor may destroy the node. A left child that is gone is
        // not looked at.
        bnode_t* next = n == root ? nullptr : n->parent;
        if (next && next->right && next->right != n) next = FirstLeaf(next->right);
        if (int const result = visit(n, arg)) return result;
        n = next;
    }
    return 0;
}

int bnode_t::Range(bnode_t* root, VisitFn visit, void* arg, CompareFn cmp, void const* lo,
                   void const* hi) {
    return WalkRange(root, visit, arg, cmp, lo, hi, &bnode_t::right, &bnode_t::left);
}

int bnode_t::RevRange(bnode_t* root, VisitFn visit, void* arg, CompareFn cmp, void const* lo,
                      void const* hi) {
    return WalkRange(root, visit, arg, cmp, hi, lo, &bnode_t::left, &bnode_t::right);
}

int bnode_t::Size(bnode_t* root) {
    int count = 0;
    auto const tally = [](bnode_t*, void* total) {
        ++*static_cast<int*>(total);
        return 0;
    };
    Inorder(root, tally, &count);
    return count;
}

bnode_t* bnode_t::BuildTree(bnode_t* parent, bnode_t** nodes, int lo, int hi) {
    if (lo > hi) return nullptr;
    int const middle = lo + (hi - lo) / 2;
    bnode_t* const n = nodes[middle];
    n->parent = parent;
    n->left = BuildTree(n, nodes, lo, middle - 1);
    n->right = BuildTree(n, nodes, middle + 1, hi);
    return n;
}

bnode_t* bnode_t::Balance(int (*cmp)(bnode_t* const*, bnode_t* const*)) {
    TVarr<bnode_t*> nodes(1024, VARR_DOUBLE);
    auto const collect = [](bnode_t* n, void* all) {
        static_cast<TVarr<bnode_t*>*>(all)->App(n);
        return 0;
    };
    Inorder(this, collect, &nodes);
    nodes.Sort(cmp);
    return BuildTree(nullptr, nodes.Get(), 0, static_cast<int>(nodes.Len()) - 1);
}

bnode_t* bnode_t::DupTree(bnode_t const* root) { return CopyTree(root, CopyNode); }

bnode_t* bnode_t::CopyTree(bnode_t const* root, bnode_t* (*copy)(bnode_t const*)) {
    if (!root) return nullptr;
    UnfinishedTree tree{copy(root)};
    tree.root->parent = nullptr;
    if (HasChildren(tree.root)) return tree.Release();

    bnode_t const* from = root;
    for (bnode_t* to = tree.root; to;) {
        Side const side = Missing(from, to);
        if (!side) {
            from = from->parent;
            to = to->parent;
            continue;
        }
        bnode_t* const child = copy(from->*side);
        child->parent = to;
        to->*side = child;
        if (HasChildren(child)) continue;
        from = from->*side;
        to = child;
    }
    return tree.Release();
}

void bnode_t::CheckTree(bnode_t* root, int depth, void (*check)(bnode_t*, int, void*), void* arg) {
    if (!root) return;
    int level = depth;
    for (bnode_t* n = root;;) {
        for (; n->left; n = n->left) ++level;
        check(n, level, arg);
        for (; !n->right; check(n, level, arg)) {
            for (; n != root && n == n->parent->right; n = n->parent) --level;
            if (n == root) return;
            n = n->parent;
            --level;
        }
        n = n->right;
        ++level;
    }
}
