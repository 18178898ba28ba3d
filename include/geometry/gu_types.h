/* The records of the planar geometry: coordinates, points, rectangles and trapezoids in database
 * units.
 *
 * A polygon is a contiguous array of points whose last point joins the first; a closing point equal
 * to the first is not needed. Differences of coordinates wrap at 32 bits, products and quotients of
 * them are computed in double, unless a function says otherwise. C11 and C++17. */
#ifndef KORBASE_GEOMETRY_GU_TYPES_H
#define KORBASE_GEOMETRY_GU_TYPES_H

#include <stdint.h>

typedef int32_t gu_coord_t; /* database units */

typedef struct gu_point_t {
    gu_coord_t x, y;
} gu_point_t;

/* An axis-parallel rectangle from (x1, y1), its lowest corner, to (x2, y2), its highest one. */
typedef struct gu_rect_t {
    gu_coord_t x1, y1, x2, y2;
} gu_rect_t;

/* Two horizontal edges at y_b < y_t. The corners (x_bl, y_b), (x_tl, y_t), (x_tr, y_t), (x_br,
 * y_b), bottom left first, go once round it. */
typedef struct gu_trapezoid_t {
    gu_coord_t x_bl, x_tl, x_tr, x_br, y_b, y_t;
} gu_trapezoid_t;

#ifdef __cplusplus
#include <generic/tvarr>

extern template class KORBASE_API TVarr<gu_rect_t>;
extern template class KORBASE_API TVarr<gu_trapezoid_t>;
#endif

#endif
