// What a record draws: the outline, sized, and the pieces that it is cut into.
#ifndef KORBASE_EXAMPLES_LAYOUT_SHAPE_H
#define KORBASE_EXAMPLES_LAYOUT_SHAPE_H

#include "layout/outline.h"
#include "layout/reader.h"

namespace layout {

// Largest distance to size by, either sign.
constexpr gu_coord_t kMaxDistance = kMaxCoordinate / 4;

// Most pieces of a shape. Only outlines of more than 8192 points can have more: a comb of 65535
// would be a thousand million, which no memory holds.
constexpr int kMaxPieces = 1 << 24;

struct Shape {
    unsigned points = 0;    // of the polygon, the circle or the centre line, as the record has them
    unsigned removed = 0;   // of them, those taken away because they say nothing
    bool flat = false;      // encloses nothing; is not sized
    bool vanished = false;  // sizing left nothing of it: no outline, no pieces
    Outline outline{64, VARR_DOUBLE};
    Measures measures;  // of the outline
    Trapezoids pieces{256, VARR_DOUBLE};

    // Makes this the shape of a polygon, a path or a circle; the points of the record are used up.
    // Null, or what is wrong with the record: a path that cannot be cut, a shape out of the range
    // of coordinates or of too many pieces. A path that is not sized is cut into the rectangles of
    // its segments, anything else as an outline.
    char const* Make(Record& record, gu_coord_t distance);

private:
    char const* Draw(Record& record);
    char const* DrawPath(Record& record);
    char const* Cut();
};

}  // namespace layout

#endif
