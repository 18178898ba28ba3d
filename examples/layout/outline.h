// What the programs do with one outline: clean it, size it, measure it, cut it and check the cut.
//
// Outlines come from a layout reader: at most 65535 points, coordinates within +-kMaxCoordinate.
// Any thread may call these functions.
#ifndef KORBASE_EXAMPLES_LAYOUT_OUTLINE_H
#define KORBASE_EXAMPLES_LAYOUT_OUTLINE_H

#include <geometry/gu_measure.h>
#include <geometry/gu_outline.h>
#include <geometry/gu_rects.h>
#include <geometry/gu_sizing.h>
#include <geometry/gu_trapezoids.h>

#include <generic/tvarr>

namespace layout {

using Outline = TVarr<gu_point_t>;
using Trapezoids = TVarr<gu_trapezoid_t>;

// Removes repeated points, spikes and points on straight lines. Fewer than 3 points are left of an
// outline that encloses nothing.
void CleanOutline(Outline& outline);

// Moves every edge of a cleaned outline outward by `distance`, inward when it is negative. False
// when nothing is left: the outline has turned inside out. One that does so only in places, at a
// notch or a neck, crosses itself there.
bool SizeOutline(Outline& outline, gu_coord_t distance);

struct Measures {
    // The worst edge: axis-parallel, 45 degrees, other.
    enum Angles { kOrthogonal, kDiagonal, kSlanted };

    Angles angles = kOrthogonal;
    double area = 0;       // square database units, overlaps counted as often as they are wound
    double perimeter = 0;  // database units
    gu_rect_t box = {};
};

// All of it for a cleaned outline; without area, perimeter and angles if it has fewer than 3
// points.
Measures MeasureOutline(Outline const& outline);

// Puts the pieces of the cleaned outline into `pieces`: rectangles if all its edges are
// axis-parallel, else trapezoids; even-odd, so that what an outline winds twice is not covered.
void CutOutline(Outline const& outline, Measures::Angles angles, Trapezoids& pieces);

// How many pieces the cut of a cleaned outline has, or a few more.
double CountPieces(Outline const& outline);

// Puts rectangles into `pieces`, in place of what was there.
void TakeRects(TVarr<gu_rect_t> const& rects, Trapezoids& pieces);

// The sum of the areas of the pieces, in square units.
double PiecesArea(Trapezoids const& pieces);

// How far the area of the trapezoids may lie from the area of a sound outline, in square units.
double CutTolerance(Outline const& outline);

// Makes `box` contain `other`; gu_bounding_box of no points is the box to begin with.
void GrowBox(gu_rect_t& box, gu_rect_t const& other);

}  // namespace layout

#endif
