// A picture of layouts cut into trapezoids, as SVG: a panel for each layout, a colour for each
// layer.
//
// Panels stand in rows, y points up in them, and each is scaled to fit. Layers are drawn in the
// order in which they first come up in the panel; the colours go by the order over all panels, so
// that a layer looks the same everywhere. The outlines and trapezoids are kept until Write.
#ifndef KORBASE_EXAMPLES_LAYOUT_SVG_H
#define KORBASE_EXAMPLES_LAYOUT_SVG_H

#include <text/string.h>
#include <generic/tmap>

#include <ostream>
#include <vector>

#include "layout/outline.h"

namespace layout {

class SvgPicture {
public:
    // `unit` is the database unit in metres.
    explicit SvgPicture(double unit) : unit(unit) {}

    // What is added from here on belongs to a new panel with this title.
    void StartPanel(String_t const& title);

    // Adds one shape to the last panel, which there must be.
    void Add(String_t const& layer, Outline const& outline, Trapezoids const& trapezoids);

    void Write(std::ostream& out) const;

private:
    // All shapes of a layer in one panel; the outlines one behind the other, with the end of each.
    struct Layer {
        String_t name;
        int colour = 0;
        Trapezoids trapezoids{64, VARR_DOUBLE};
        Outline points{64, VARR_DOUBLE};
        TVarr<int> ends{16, VARR_DOUBLE};
    };
    struct Panel {
        String_t title;
        gu_rect_t box = {};  // of all shapes
        std::vector<Layer> layers;
    };

    Layer& LayerOf(Panel& panel, String_t const& name);
    int ColumnCount() const;
    int RowCount() const;
    void WriteStyle(std::ostream& out) const;
    void WritePanel(std::ostream& out, Panel const& panel) const;
    void WriteLegend(std::ostream& out, int index) const;

    double unit;
    std::vector<Panel> panels;
    std::vector<String_t> layer_names;  // by colour
    TMap<String_t, int, GStringCmp> colours;
};

}  // namespace layout

#endif
