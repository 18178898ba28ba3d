// A plug-in: how round a polygon is, from 0 for a line to 1 for a circle. A square has 0.785.
#include <geometry/gu_measure.h>

#include <cmath>

#include "measure.h"

char const* measure_name() { return "compactness"; }

double measure_polygon(unsigned short count, gu_point_t const* points) {
    double const outline = gu_polygon_periphery(count, points);
    double const full_turn = 2 * std::acos(-1.0);
    return outline > 0 ? 2 * full_turn * gu_polygon_area(count, points) / (outline * outline) : 0;
}
