// What the programs do with one outline: clean it, measure it, cut it and check the cut.
//
// Outlines come from a layout reader: at most 65535 points, coordinates within +-kMaxCoordinate.
// The cutting works on lists of the whole process: one thread at a time.
#ifndef KORBASE_EXAMPLES_LAYOUT_OUTLINE_H
#define KORBASE_EXAMPLES_LAYOUT_OUTLINE_H

#include <geometry/gu_measure.h>
#include <geometry/gu_outline.h>
#include <geometry/gu_trapezoids.h>

#include <generic/tvarr>

namespace layout {

using Outline = TVarr<gu_point_t>;
using Trapezoids = TVarr<gu_trapezoid_t>;

// Removes repeated points, spikes and points on straight lines. Fewer than 3 points are left of an
// outline that encloses nothing.
void CleanOutline(Outline& outline);

struct Measures {
    enum Angles {
        kOrthogonal,
        kDiagonal,
        kSlanted
    };  // the worst edge: axis-parallel, 45 degrees, other

    Angles angles = kOrthogonal;
    double area = 0;       // square database units, overlaps counted as often as they are wound
    double perimeter = 0;  // database units
    gu_rect_t box;
};

// All of it for a cleaned outline; without area, perimeter and angles if it has fewer than 3
// points.
Measures MeasureOutline(Outline const& outline);

// The cleaned outline as trapezoids, in square units what they cover: even-odd, so that what an
// outline winds twice is not covered.
double CutOutline(Outline const& outline, Trapezoids& trapezoids);

// How far the area of the trapezoids may lie from the area of a sound outline, in square units.
double CutTolerance(Outline const& outline);

// Makes `box` contain `other`; gu_bounding_box of no points is the box to begin with.
void GrowBox(gu_rect_t& box, gu_rect_t const& other);

}  // namespace layout

#endif
