// What a layout has on each of its layers, added up shape by shape, and the table of it.
#ifndef KORBASE_EXAMPLES_LAYOUT_TOTALS_H
#define KORBASE_EXAMPLES_LAYOUT_TOTALS_H

#include <geometry/gu_measure.h>
#include <text/string.h>

#include <generic/gohash>
#include <ostream>

#include "layout/shape.h"

namespace layout {

struct Totals {
    unsigned shapes = 0, labels = 0;
    unsigned points = 0, removed = 0;  // as read; of them taken away by cleaning
    unsigned flat = 0, vanished = 0;   // shapes that enclose nothing, that sizing left nothing of
    unsigned pieces = 0;
    unsigned differ = 0;             // shapes whose pieces cover another area
    unsigned angles[3] = {};         // shapes by Measures::Angles
    double area = 0, perimeter = 0;  // database units
    double seconds = 0;              // cleaning, sizing, measuring, cutting
    gu_rect_t box = gu_bounding_box(0, nullptr);
    String_t first_differ;  // FILE:LINE

    void Add(Totals const& other);
    void Add(Shape const& shape, double shape_seconds);
};

struct LayerTotals {
    String_t layer;
    Totals totals;
};

// The totals of all layers; a layer that has none yet is taken in by Add({layer, {}}).
using LayerTable = OHashTable<String_t, LayerTotals>;

// A row for each layer, in the order of their names, a row of totals, and lines for what else is
// worth knowing. `unit` is the database unit in metres; the table is in micrometres.
void PrintTotals(std::ostream& out, LayerTable const& layers, double unit);

}  // namespace layout

#endif
