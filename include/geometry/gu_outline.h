/* Outlines as arrays of points: the angles of their edges, snapping, and points that say nothing.
 * The functions keep no state: any thread may call them. C11 and C++17. */
#ifndef KORBASE_GEOMETRY_GU_OUTLINE_H
#define KORBASE_GEOMETRY_GU_OUTLINE_H

#include <geometry/gu_types.h>
#include <korbase_api.h>

#ifdef __cplusplus
extern "C" {
#endif

/* The worst angle among the edges points[0]-points[1] to points[count - 2]-points[count - 1] and,
 * when `closed` is not 0, the edge from the last point to the first: 0 all are axis-parallel or
 * null, 1 some are at 45 degrees, 2 some have another angle. 0 when there is no point. Both names
 * are the same function. */
KORBASE_API int gu_check_orthoi(int count, gu_point_t const* points, int closed);
KORBASE_API int gu_check_ortho(int count, gu_point_t const* points, int closed);

/* Turns the segment from `point` to `*reference` into the nearest allowed direction: horizontal or
 * vertical in mode 0; mode 1 also leaves segments of 45 degrees; any other mode changes nothing.
 *
 * Returns the point, x in the upper and y in the lower 32 bits, and moves `*reference` where
 * needed. A segment nearer to an axis moves the reference only. Kept: one nearer to a diagonal
 * moves both ends and comes to lie along an axis: falling segments and rising ones up to 45 degrees
 * at the y where the diagonal through `point` has the reference's x, steeper rising ones at the x
 * where it has the reference's y. */
KORBASE_API uint64_t gu_snap_ortho(gu_point_t point, gu_point_t* reference, int mode);

/* 0 1 2 3: the way of correcting each class of diagonal segment, as gu_snap_ortho looks it up. */
KORBASE_API extern int const m2b[4];

/* Copies `points` to `out`, which has room for `count` points and may be `points` itself, without
 * those that equal the point just before them. Returns the number of points written. A last point
 * equal to the first stays. Kept: a count below 2, even 0 or less, copies points[0] and returns 1.
 * The form without the `i` narrows the result to 16 bits. */
KORBASE_API int gu_delete_multiple_pointsi(int count, gu_point_t const* points, gu_point_t* out);
KORBASE_API short gu_delete_multiple_points(short count, gu_point_t const* points, gu_point_t* out);

/* Removes, in place, the points that lie on the line through their neighbours: repeated ones, those
 * in the middle of a straight run, and those where the outline turns back on itself. Each inner
 * point is tested against the last point kept before it. An open path (`closed` 0) keeps its first
 * point and loses a last one that repeats its neighbour; of a closed outline the first and then the
 * last point are tested as well. Returns the new count. The form without the `i` narrows the result
 * to 16 bits. */
KORBASE_API int gu_delete_redundant_pointsi(int count, gu_point_t* points, int closed);
KORBASE_API short gu_delete_redundant_points(short count, gu_point_t* points, int closed);

#ifdef __cplusplus
}
#endif

#endif
