/* Circles, axis-parallel ellipses and arcs of them as polygons and polylines whose edges touch the
 * curve: the corners lie outside it, on radii enlarged by 1 / cos(half a step).
 *
 * `width` and `height` are diameters in database units, angles are radians, counter-clockwise from
 * the positive x axis (y points up). Coordinates beyond their range are cut at its ends. The
 * functions keep no state: any thread may call them. C11 and C++17. */
#ifndef KORBASE_GEOMETRY_GU_ARC_H
#define KORBASE_GEOMETRY_GU_ARC_H

#include <geometry/gu_types.h>
#include <korbase_api.h>

#ifdef __cplusplus
extern "C" {
#endif

/* A closed polygon of `segments` corners around the whole curve, counter-clockwise, the first half
 * a step above the positive x axis; coordinates are rounded. `out` has room for `segments` points,
 * `*out_count` receives their number. Kept: a negative number writes no point and stores its 16
 * bits. */
KORBASE_API void gu_circle2polygon(unsigned short* out_count, gu_point_t* out,
                                   gu_point_t const* centre, int width, int height, short segments);

/* A polyline from the angle `start` along `sweep` (negative is clockwise), in single precision and
 * with coordinates cut toward zero: the end points on the curve, the corners between them outside.
 *
 * A sweep beyond a full turn is first reduced by full turns. Kept: the comparison is made in
 * double, so that a full turn as a float, just above the true one, leaves nearly nothing.
 * `segments` is the number of segments of a full circle, the sweep gets its share of them, one at
 * least. There are two points more than segments, but never more than `max_points`: `out` has room
 * for as many. `*out_count` receives the number of points, 0 when `max_points` is below 2. */
KORBASE_API void gu_arc2a2polygon(unsigned short* out_count, gu_point_t* out,
                                  gu_point_t const* centre, int width, int height, short segments,
                                  short max_points, float start, float sweep);

/* The same from the direction in which `start` lies, seen from the centre; its distance does not
 * matter. */
KORBASE_API void gu_arcpa2polygon(unsigned short* out_count, gu_point_t* out,
                                  gu_point_t const* centre, gu_point_t const* start, int width,
                                  int height, short segments, short max_points, float sweep);

#ifdef __cplusplus
}
#endif

#endif
