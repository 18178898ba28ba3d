// Edge_t and ctree_node_t: pieces of an outline, and a height-balanced tree of the heights that cut
// them.
//
// The records of the textbook way to cut an outline into slabs: insert the heights of all corners
// into a tree, then cut each edge at the lowest height inside it until there is none.
// gu_polygon_to_trapezoids gives the same pieces without them.
#ifndef KORBASE_GEOMETRY_CTREE_NODE_H
#define KORBASE_GEOMETRY_CTREE_NODE_H

#include <geometry/gu_types.h>
#include <korbase_api.h>

#include <cstddef>
#include <generic/tshsort>
#include <generic/tvarr>

#include <containers/avlnode.h>
#include <containers/pool.h>

// A piece of an edge that is not horizontal, from its lower end (x0, y0) to its upper end (x1, y1):
// y0 < y1.
struct Edge_t {
    gu_coord_t x0, y0, x1, y1;
};

extern template class KORBASE_API TVarr<Edge_t>;
extern template KORBASE_API void TShSort<Edge_t>(Edge_t* a, unsigned n,
                                                 int (*cmp)(Edge_t const*, Edge_t const*));

// A height. Nodes come from one pool, which any thread may use; a tree belongs to one thread at a
// time.
class KORBASE_API ctree_node_t : public AVLnode {
public:
    gu_coord_t y;

    explicit ctree_node_t(gu_coord_t height) : y(height) {}

    bnode_t* Dup() const override;
    ~ctree_node_t() override;

    // The callbacks for AVLnode::Insert and bnode_t::Find: the key, and the argument of Create, is
    // a gu_coord_t.
    static int Compare(bnode_t const* node, void const* key);
    static AVLnode* Create(void* y);

    // Looks in the tree below this node for the lowest height strictly inside `edge`. If there is
    // one below `cut`, that height goes to `cut`. Returns how often the descent lowered `cut`: 0
    // when there is none.
    unsigned FindLowestYCut(Edge_t const& edge, long& cut) const;

    static void* operator new(std::size_t size);
    static void operator delete(void* node, std::size_t size);

    static Pool heap;  // of nodes, in chunks of 16384 bytes
};

#endif
