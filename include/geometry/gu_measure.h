/* What can be measured of a polygon: orientation, perimeter, area, bounding box, and whether it is
 * a rectangle. The functions read points[0] to points[count - 1], close the polygon themselves and
 * keep no state: any thread may call them. C11 and C++17. */
#ifndef KORBASE_GEOMETRY_GU_MEASURE_H
#define KORBASE_GEOMETRY_GU_MEASURE_H

#include <geometry/gu_types.h>
#include <korbase_api.h>

#ifdef __cplusplus
extern "C" {
#endif

/* 1 for a counter-clockwise simple polygon (y points up), -1 for a clockwise one. 1 below three
 * points and where the tested leftmost corner does not turn. Coordinates may span the whole range.
 * Both names are the same function. */
KORBASE_API int gu_polygon_orientationi(int count, gu_point_t const* points);
KORBASE_API int gu_polygon_orientation(int count, gu_point_t const* points);

/* The same for an axis-parallel polygon, from the direction in which it leaves its lowest leftmost
 * point. Requires that the point after that one is less than 2^31 higher. Both names are the same
 * function. */
KORBASE_API int gu_ortho_polygon_orientationi(int count, gu_point_t const* points);
KORBASE_API int gu_ortho_polygon_orientation(int count, gu_point_t const* points);

/* The length of the closed outline, in database units; 0 for no point or one. */
KORBASE_API double gu_polygon_periphery(unsigned short count, gu_point_t const* points);

/* The absolute value of the signed area, in square database units; 0 for no point. Coordinates may
 * span the whole range. */
KORBASE_API double gu_polygon_area(unsigned short count, gu_point_t const* points);

/* The smallest rectangle that contains all points. Kept: that of no points is (2147483647,
 * 2147483647, -2147483647, -2147483647). */
KORBASE_API gu_rect_t gu_bounding_box(unsigned short count, gu_point_t const* points);

/* 1 when there are four points that form a rectangle, in any rotation and also one without area,
 * else 0. */
KORBASE_API int gu_is_rectangle(short count, gu_point_t const* points);

#ifdef __cplusplus
}
#endif

#endif
