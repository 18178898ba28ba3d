// What a layout has on each of its layers, added up shape by shape, and the table of it.
#ifndef KORBASE_EXAMPLES_LAYOUT_TOTALS_H
#define KORBASE_EXAMPLES_LAYOUT_TOTALS_H

#include <geometry/gu_measure.h>
#include <text/string.h>

#include <generic/tmap>
#include <ostream>

namespace layout {

struct Totals {
    unsigned shapes = 0, paths = 0;
    unsigned points = 0, removed = 0;  // as read; of them taken away by cleaning
    unsigned flat = 0;                 // shapes that enclose nothing
    unsigned trapezoids = 0;
    unsigned differ = 0;             // shapes whose trapezoids cover another area
    unsigned angles[3] = {};         // shapes by Measures::Angles
    double area = 0, perimeter = 0;  // database units
    double seconds = 0;              // cleaning, measuring and cutting
    gu_rect_t box = gu_bounding_box(0, nullptr);
    String_t first_differ;  // FILE:LINE

    void Add(Totals const& other);
};

using LayerTotals = TMap<String_t, Totals, GStringCmp>;

// A row for each layer, in the order of their names, a row of totals, and lines for what else is
// worth knowing. `unit` is the database unit in metres; the table is in micrometres.
void PrintTotals(std::ostream& out, LayerTotals const& layers, double unit);

}  // namespace layout

#endif
