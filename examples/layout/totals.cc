#include "layout/totals.h"

#include <text/str.h>
#include <text/strfmt.h>

#include <algorithm>
#include <vector>

namespace layout {
namespace {

void PrintRow(std::ostream& out, int name_width, char const* name, Totals const& totals,
              double unit_um) {
    StrFmt(out, "%-*s %7u %7u %7u %7u %8u %10u", name_width, name, totals.shapes, totals.angles[0],
           totals.angles[1], totals.angles[2], totals.points, totals.pieces);
    StrFmt(out, " %16.4f %14.3f %10.3f %7u\n", totals.area * unit_um * unit_um,
           totals.perimeter * unit_um, totals.seconds * 1e3, totals.differ);
}

}  // namespace

void Totals::Add(Totals const& other) {
    shapes += other.shapes;
    labels += other.labels;
    points += other.points;
    removed += other.removed;
    flat += other.flat;
    vanished += other.vanished;
    pieces += other.pieces;
    differ += other.differ;
    for (int i = 0; i < 3; ++i) angles[i] += other.angles[i];
    area += other.area;
    perimeter += other.perimeter;
    seconds += other.seconds;
    GrowBox(box, other.box);
    if (first_differ.IsNull()) first_differ = other.first_differ;
}

void Totals::Add(Shape const& shape, double shape_seconds) {
    ++shapes;
    ++angles[shape.measures.angles];
    points += shape.points;
    removed += shape.removed;
    flat += shape.flat;
    vanished += shape.vanished;
    pieces += shape.pieces.Len();
    area += shape.measures.area;
    perimeter += shape.measures.perimeter;
    seconds += shape_seconds;
    GrowBox(box, shape.measures.box);
}

void PrintTotals(std::ostream& out, LayerTable const& layers, double unit) {
    double const um = unit * 1e6;
    unsigned name_width = str_len("layer");
    Totals all;
    std::vector<LayerTotals const*> rows;
    for (LayerTotals const& layer : layers) {
        name_width = std::max(name_width, layer.layer.Len());
        rows.push_back(&layer);
    }
    std::sort(rows.begin(), rows.end(),
              [](auto const* a, auto const* b) { return a->layer < b->layer; });

    int const width = static_cast<int>(name_width);
    StrFmt(out,
           "%-*s  shapes   ortho  45 deg   other   points     pieces         area um2   perimeter "
           "um    time ms  differ\n",
           width, "layer");
    for (auto const* row : rows) {
        PrintRow(out, width, row->layer, row->totals, um);
        all.Add(row->totals);
    }
    PrintRow(out, width, "total", all, um);

    if (all.box.x1 <= all.box.x2)
        StrFmt(out, "bounding box (%.3f, %.3f) to (%.3f, %.3f) um\n", all.box.x1 * um,
               all.box.y1 * um, all.box.x2 * um, all.box.y2 * um);
    if (all.labels > 0) StrFmt(out, "labels: %u\n", all.labels);
    if (all.removed > 0) StrFmt(out, "points taken away that say nothing: %u\n", all.removed);
    if (all.flat > 0) StrFmt(out, "outlines that enclose nothing: %u\n", all.flat);
    if (all.vanished > 0) StrFmt(out, "shapes that sizing leaves nothing of: %u\n", all.vanished);
    if (all.differ > 0)
        StrFmt(out,
               "outlines that cross or overlap themselves, so that area and pieces differ: %u, "
               "first at %s\n",
               all.differ, all.first_differ.Get());
}

}  // namespace layout
