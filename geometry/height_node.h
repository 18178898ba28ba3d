// What the nodes of the two trees of heights have in common: a Node has its height in `y`.
#ifndef KORBASE_GEOMETRY_HEIGHT_NODE_H
#define KORBASE_GEOMETRY_HEIGHT_NODE_H

#include <geometry/gu_types.h>

#include "containers/bnode.h"

namespace korbase_detail {

constexpr unsigned kHeightChunkBytes = 16384;  // of the nodes' pools

template <class Node>
int CompareHeight(bnode_t const* node, void const* key) {
    gu_coord_t const height = static_cast<Node const*>(node)->y;
    gu_coord_t const wanted = *static_cast<gu_coord_t const*>(key);
    return (height > wanted) - (height < wanted);
}

// Lowers `cut` to the lowest height of the tree that is above y0 and below y1. Returns how often
// the descent lowered it.
template <class Node>
unsigned LowestCut(Node const* tree, gu_coord_t y0, gu_coord_t y1, long& cut) {
    unsigned lowered = 0;
    for (bnode_t const* at = tree; at;) {
        gu_coord_t const height = static_cast<Node const*>(at)->y;
        if (height <= y0) {
            at = at->right;
            continue;
        }
        if (height < y1 && height < cut) {
            cut = height;
            ++lowered;
        }
        at = at->left;
    }
    return lowered;
}

}  // namespace korbase_detail

#endif
