// Decomposition of an outline into horizontal trapezoids, as needed to fill or fracture layout
// shapes.
#ifndef KORBASE_GEOMETRY_GU_TRAPEZOIDS_H
#define KORBASE_GEOMETRY_GU_TRAPEZOIDS_H

#include <geometry/ctree_node.h>
#include <geometry/gu_types.h>
#include <korbase_api.h>

#include <generic/tvarr>

extern "C" {

// Cuts the outline of `count` points at the height of every corner of an edge that is not
// horizontal, and pairs the pieces of each slab by the even-odd rule. Orientation does not matter,
// and the outline may touch or overlap itself. `points` are records of `stride` bytes, of any
// alignment, that begin with a gu_point_t; the last one joins the first.
//
// `out` then holds the trapezoids only: slabs from the lowest upward, in each from left to right by
// the lower and then the upper x of the left edge. Returns their number, 0 for an outline without
// height. Kept: where an edge is cut, its x is truncated toward zero; trapezoids above and below
// share that corner. Kept: edges that cross inside a slab are not cut there, so upper corners may
// be in reverse order.
//
// Takes one growth of `out` and, for more than 64 edges, memory in proportion to them that goes
// back at the end. Throws std::bad_alloc with `out` empty or unchanged. Any thread may call it.
KORBASE_API unsigned gu_polygon_to_trapezoids(unsigned stride, unsigned count, void const* points,
                                              TVarr<gu_trapezoid_t>& out);

}  // extern "C"

#endif
