/* Sizing: moves every edge of a polygon outward or inward by a fixed distance.
 *
 * A positive `distance` (database units) grows the polygon whatever its orientation, a negative one
 * shrinks it. The `count` points are edited in place; those that repeat the point before them are
 * dropped, every other corner keeps its index. Corners are mitred without a limit: the sharper the
 * corner, the further it moves. What a shrunken outline no longer has room for is not cleaned up.
 *
 * The functions return the new count, or -1 below two points. They keep no state: any thread may
 * call them. Exhausted memory ends the process as in SCalloc. C11 and C++17. */
#ifndef KORBASE_GEOMETRY_GU_SIZING_H
#define KORBASE_GEOMETRY_GU_SIZING_H

#include <geometry/gu_types.h>
#include <korbase_api.h>

#ifdef __cplusplus
extern "C" {
#endif

/* Sizes any simple polygon. -1 also where the outline turns back exactly onto itself or its last
 * point repeats the first; the points are then partly overwritten and mean nothing. Corners beyond
 * the range of coordinates are moved to its ends. Kept: a polygon of one repeated point becomes the
 * single point (0, 0). */
KORBASE_API int gu_size_polygon(int count, gu_point_t* points, int distance);

/* Sizes an axis-parallel polygon: every corner moves by the distance in both directions, computed
 * in integers that wrap at 32 bits. Kept: only the count's lowest 16 bits, read as signed, reach
 * the test for the orientation, so that it may be wrong above 32767 points. The form without the
 * `i` narrows the result to 16 bits. */
KORBASE_API int gu_size_ortho_polygoni(int count, gu_point_t* points, int distance);
KORBASE_API short gu_size_ortho_polygon(short count, gu_point_t* points, int distance);

#ifdef __cplusplus
}
#endif

#endif
