#include "geometry/octree_node.h"

#include <new>

#include "geometry/height_node.h"

template class TVarr<OEdge_t>;
template void TShSort<OEdge_t>(OEdge_t* a, unsigned n, int (*cmp)(OEdge_t const*, OEdge_t const*));

Pool octree_node_t::heap;

octree_node_t::~octree_node_t() = default;

bnode_t* octree_node_t::Dup() const { return new octree_node_t(y); }

int octree_node_t::Compare(bnode_t const* node, void const* key) {
    return korbase_detail::CompareHeight<octree_node_t>(node, key);
}

AVLnode* octree_node_t::Create(void* y) { return new octree_node_t(*static_cast<gu_coord_t*>(y)); }

unsigned octree_node_t::FindLowestYCut(OEdge_t const& edge, long& cut) const {
    return korbase_detail::LowestCut(this, edge.y0, edge.y1, cut);
}

void* octree_node_t::operator new(std::size_t size) {
    if (size != sizeof(octree_node_t)) return ::operator new(size);
    return heap.Alloc(sizeof(octree_node_t), korbase_detail::kHeightChunkBytes);
}

void octree_node_t::operator delete(void* node, std::size_t size) {
    if (size == sizeof(octree_node_t))
        heap.Free(node);
    else
        ::operator delete(node);
}
