// A picture of layouts cut into pieces, as SVG: a panel for each layout, a colour for each layer,
// labels in the stroke font on top.
//
// Panels stand in rows, y points up in them, and each is scaled to fit. Layers are drawn in the
// order in which they first come up in the panel; the colours go by the order over all panels, so
// that a layer looks the same everywhere. The outlines, pieces and labels are kept until Write.
// Writing sets the text attributes of the stroke font: one thread at a time.
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

    // Adds a label to the last panel: its baseline starts at `start`, its capitals are `height`
    // high.
    void AddLabel(String_t const& layer, String_t const& text, gu_point_t const& start,
                  gu_coord_t height);

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
    struct Label {
        String_t text;
        int colour = 0;
        gu_point_t start = {};
        gu_coord_t height = 0;
    };
    struct Panel {
        String_t title;
        gu_rect_t box = {};   // of all shapes
        gu_rect_t view = {};  // of the labels, too
        std::vector<Layer> layers;
        std::vector<Label> labels;
    };

    Layer& LayerOf(Panel& panel, String_t const& name);
    int ColumnCount() const;
    int RowCount() const;
    void WriteStyle(std::ostream& out) const;
    void WritePanel(std::ostream& out, Panel const& panel) const;
    static void WriteLayer(std::ostream& out, Layer const& layer, gu_rect_t const& view,
                           double scale);
    static void WriteLabels(std::ostream& out, Panel const& panel);
    void WriteLegend(std::ostream& out, int index) const;

    double unit;
    std::vector<Panel> panels;
    std::vector<String_t> layer_names;  // by colour
    TMap<String_t, int, GStringCmp> colours;
};

}  // namespace layout

#endif
