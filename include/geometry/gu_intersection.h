/* Where two lines or two segments meet. A call that finds nothing leaves its outputs alone.
 * The functions keep no state: any thread may call them. C11 and C++17. */
#ifndef KORBASE_GEOMETRY_GU_INTERSECTION_H
#define KORBASE_GEOMETRY_GU_INTERSECTION_H

#include <geometry/gu_types.h>
#include <korbase_api.h>
#include <stdbool.h>

#ifdef __cplusplus
extern "C" {
#endif

/* The point where the line through `p1` and `p2` meets the line through `q1` and `q2`, rounded to
 * whole units, to `*out`, and its parameter on the first line (0 at `p1`, 1 at `p2`) to `*t`.
 * True, or 1, when there is one. Kept: parallel lines meet only if `q1` or `q2` lies between `p1`
 * and `p2`, both included; the first that does is the result. A first line without direction (p1
 * equal to p2) meets nothing. */
KORBASE_API bool gu_line_intersection_l(gu_point_t const* p1, gu_point_t const* p2,
                                        gu_point_t const* q1, gu_point_t const* q2, double* t,
                                        gu_point_t* out);
KORBASE_API int gu_line_intersection(gu_point_t const* p1, gu_point_t const* p2,
                                     gu_point_t const* q1, gu_point_t const* q2, gu_point_t* out);

/* The same for the segments from `p1` to `p2` and from `q1` to `q2`, ends included. The rounded
 * point is taken on the second segment; where the segments overlap in a line it is `q1` or `q2` as
 * above. Kept: segments that overlap without an end of the second lying on the first do not meet.
 */
KORBASE_API int gu_intersection_l(gu_point_t const* p1, gu_point_t const* p2, gu_point_t const* q1,
                                  gu_point_t const* q2, double* t, gu_point_t* out);
KORBASE_API int gu_intersection(gu_point_t const* p1, gu_point_t const* p2, gu_point_t const* q1,
                                gu_point_t const* q2, gu_point_t* out);

#ifdef __cplusplus
}
#endif

#endif
