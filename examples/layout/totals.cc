#include "layout/totals.h"

#include <text/str.h>

#include <algorithm>
#include <iomanip>

#include "layout/outline.h"

namespace layout {
namespace {

void PrintRow(std::ostream& out, int name_width, char const* name, Totals const& totals,
              double unit_um) {
    out << std::left << std::setw(name_width) << name << std::right << std::fixed;
    auto const column = [&out](int width, auto value) { out << ' ' << std::setw(width) << value; };
    column(7, totals.shapes);
    for (unsigned const count : totals.angles) column(7, count);
    column(8, totals.points);
    column(10, totals.trapezoids);
    out << std::setprecision(4);
    column(16, totals.area * unit_um * unit_um);
    out << std::setprecision(3);
    column(14, totals.perimeter * unit_um);
    column(10, totals.seconds * 1e3);
    column(7, totals.differ);
    out << '\n';
}

}  // namespace

void Totals::Add(Totals const& other) {
    shapes += other.shapes;
    paths += other.paths;
    points += other.points;
    removed += other.removed;
    flat += other.flat;
    trapezoids += other.trapezoids;
    differ += other.differ;
    for (int i = 0; i < 3; ++i) angles[i] += other.angles[i];
    area += other.area;
    perimeter += other.perimeter;
    seconds += other.seconds;
    GrowBox(box, other.box);
    if (first_differ.IsNull()) first_differ = other.first_differ;
}

void PrintTotals(std::ostream& out, LayerTotals const& layers, double unit) {
    double const um = unit * 1e6;
    unsigned name_width = str_len("layer");
    Totals all;
    for (auto const& layer : layers) {
        name_width = std::max(name_width, layer.key.Len());
        all.Add(layer.value);
    }
    int const width = static_cast<int>(name_width);
    out << std::left << std::setw(width) << "layer"
        << "  shapes   ortho  45 deg   other   points trapezoids         area um2   perimeter um"
           "    time ms  differ\n";
    for (auto const& layer : layers) PrintRow(out, width, layer.key, layer.value, um);
    PrintRow(out, width, "total", all, um);

    if (all.shapes > 0)
        out << std::setprecision(3) << "bounding box (" << all.box.x1 * um << ", "
            << all.box.y1 * um << ") to (" << all.box.x2 * um << ", " << all.box.y2 * um
            << ") um\n";
    if (all.removed > 0) out << "points taken away that say nothing: " << all.removed << '\n';
    if (all.flat > 0) out << "outlines that enclose nothing: " << all.flat << '\n';
    if (all.paths > 0) out << "paths skipped: " << all.paths << '\n';
    if (all.differ > 0)
        out << "outlines that cross or overlap themselves, so that area and trapezoids differ: "
            << all.differ << ", first at " << all.first_differ << '\n';
}

}  // namespace layout
