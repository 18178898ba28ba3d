#include "geometry/ctree_node.h"

#include <new>

#include "geometry/height_node.h"

template class TVarr<Edge_t>;
template void TShSort<Edge_t>(Edge_t* a, unsigned n, int (*cmp)(Edge_t const*, Edge_t const*));

Pool ctree_node_t::heap;

ctree_node_t::~ctree_node_t() = default;

bnode_t* ctree_node_t::Dup() const { return new ctree_node_t(y); }

int ctree_node_t::Compare(bnode_t const* node, void const* key) {
    return korbase_detail::CompareHeight<ctree_node_t>(node, key);
}

AVLnode* ctree_node_t::Create(void* y) { return new ctree_node_t(*static_cast<gu_coord_t*>(y)); }

unsigned ctree_node_t::FindLowestYCut(Edge_t const& edge, long& cut) const {
    return korbase_detail::LowestCut(this, edge.y0, edge.y1, cut);
}

void* ctree_node_t::operator new(std::size_t size) {
    if (size != sizeof(ctree_node_t)) return ::operator new(size);
    return heap.Alloc(sizeof(ctree_node_t), korbase_detail::kHeightChunkBytes);
}

void ctree_node_t::operator delete(void* node, std::size_t size) {
    if (size == sizeof(ctree_node_t))
        heap.Free(node);
    else
        ::operator delete(node);
}
