#include "geometry/ctree_node.h"

#include <new>

template class TVarr<Edge_t>;
template void TShSort<Edge_t>(Edge_t* a, unsigned n, int (*cmp)(Edge_t const*, Edge_t const*));

namespace {

unsigned const kChunkBytes = 16384;

}  // namespace

Pool ctree_node_t::heap;

ctree_node_t::~ctree_node_t() = default;

bnode_t* ctree_node_t::Dup() const { return new ctree_node_t(y); }

int ctree_node_t::Compare(bnode_t const* node, void const* key) {
    gu_coord_t const height = static_cast<ctree_node_t const*>(node)->y;
    gu_coord_t const wanted = *static_cast<gu_coord_t const*>(key);
    return (height > wanted) - (height < wanted);
}

AVLnode* ctree_node_t::Create(void* y) { return new ctree_node_t(*static_cast<gu_coord_t*>(y)); }

unsigned ctree_node_t::FindLowestYCut(Edge_t const& edge, long& cut) const {
    unsigned lowered = 0;
    for (bnode_t const* at = this; at;) {
        gu_coord_t const height = static_cast<ctree_node_t const*>(at)->y;
        if (height <= edge.y0) {
            at = at->right;
            continue;
        }
        if (height < edge.y1 && height < cut) {
            cut = height;
            ++lowered;
        }
        at = at->left;
    }
    return lowered;
}

void* ctree_node_t::operator new(std::size_t size) {
    if (size != sizeof(ctree_node_t)) return ::operator new(size);
    return heap.Alloc(sizeof(ctree_node_t), kChunkBytes);
}

void ctree_node_t::operator delete(void* node, std::size_t size) {
    if (size == sizeof(ctree_node_t))
        heap.Free(node);
    else
        ::operator delete(node);
}
