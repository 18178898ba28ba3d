// Axis-parallel outlines and paths as rectangles.
#ifndef KORBASE_GEOMETRY_GU_RECTS_H
#define KORBASE_GEOMETRY_GU_RECTS_H

#include <geometry/gu_types.h>
#include <geometry/octree_node.h>
#include <korbase_api.h>

#include <cstdint>
#include <generic/tvarr>

// The ends of a path. 0: flush with its first and last point; 1: half the width beyond them.
typedef std::int16_t gu_PathType_t;

extern "C" {

// Cuts the axis-parallel outline of `count` points at the height of every corner, and pairs the
// pieces of each slab by the even-odd rule. Orientation does not matter, and the outline may touch
// or overlap itself. `points` are records of `stride` bytes, of any alignment, that begin with a
// gu_point_t; the last one joins the first. Kept: a slanted edge counts as a vertical one at the x
// of the point where it starts.
//
// `out` then holds the rectangles only: by their lower y, then from left to right; none is merged
// with one above or below. Returns their number, 0 for an outline without height.
//
// Takes one growth of `out` and, for more than 128 points, memory in proportion to them that goes
// back at the end. Throws std::bad_alloc with `out` empty or unchanged. Any thread may call it.
KORBASE_API unsigned gu_polygon_to_rects(unsigned stride, unsigned count, void const* points,
                                         TVarr<gu_rect_t>& out);

// One rectangle for each segment of the axis-parallel path through `count` points, records as
// above. Each reaches half of `width`, rounded toward zero, to both sides of its segment; the
// square around a bend belongs to the segment before it. Segments that are not horizontal count as
// vertical. A negative width is for two or more points. A single point gives the square around it,
// whatever `ends` is.
//
// `out` then holds the rectangles only, in the order of the path. Returns their number. Aborts when
// `ends` is neither 0 nor 1. Coordinates wrap at 32 bits. Throws std::bad_alloc with `out` empty.
// Any thread may call it.
KORBASE_API unsigned gu_path_to_rects(unsigned stride, unsigned count, void const* points,
                                      gu_coord_t width, gu_PathType_t ends, TVarr<gu_rect_t>& out);

}  // extern "C"

#endif
