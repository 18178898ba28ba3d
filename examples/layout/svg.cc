#include "layout/svg.h"

#include <geometry/stroke.h>

#include <algorithm>
#include <cmath>
#include <sstream>

#include "layout/reader.h"

namespace layout {
namespace {

constexpr int kPanelSize = 420, kMargin = 24, kCaption = 26;  // pixels
constexpr int kPitch = kPanelSize + kMargin;
constexpr int kInset = 12;  // between the frame of a panel and what it shows
constexpr int kLegendLine = 22, kLegendSwatch = 14, kLetter = 8;

// In the order in which a process usually lists its layers: well, diffusions, gates, contacts,
// metals.
char const* const kPalette[] = {"#b59b3c", "#2f9e44", "#d9822b", "#d6336c", "#343a40", "#1c7ed6",
                                "#7048e8", "#0ca678", "#e8590c", "#ae3ec9", "#5c940d", "#1098ad",
                                "#a61e4d", "#364fc7", "#846358", "#748ffc"};
constexpr int kColours = sizeof kPalette / sizeof *kPalette;

// Text between tags: the characters that mark-up needs are written by name, and control characters,
// which it does not allow, as '?'.
void WriteText(std::ostream& out, char const* text) {
    for (; text != nullptr && *text != '\0'; ++text) {
        auto const c = static_cast<unsigned char>(*text);
        if (c == '&')
            out << "&amp;";
        else if (c == '<')
            out << "&lt;";
        else if (c == '>')
            out << "&gt;";
        else
            out << (c < ' ' || c == 0x7f ? '?' : *text);
    }
}

// Path data; relative to the lower left corner of the view, since viewers compute in single
// precision.
void WriteTrapezoids(std::ostream& out, Trapezoids const& trapezoids, gu_rect_t const& view) {
    for (gu_trapezoid_t const& t : trapezoids)
        out << 'M' << t.x_bl - view.x1 << ' ' << t.y_b - view.y1  //
            << 'L' << t.x_tl - view.x1 << ' ' << t.y_t - view.y1  //
            << 'H' << t.x_tr - view.x1                            //
            << 'L' << t.x_br - view.x1 << ' ' << t.y_b - view.y1 << 'Z';
}

void WriteOutlines(std::ostream& out, Outline const& points, TVarr<int> const& ends,
                   gu_rect_t const& view) {
    int i = 0;
    for (int const end : ends) {
        for (char command = 'M'; i < end; ++i, command = 'L')
            out << command << points[i].x - view.x1 << ' ' << points[i].y - view.y1;
        out << 'Z';
    }
}

double Width(gu_rect_t const& box) { return double(box.x2) - box.x1; }
double Height(gu_rect_t const& box) { return double(box.y2) - box.y1; }

// Path data of one stroke of a label, as the stroke font hands it over.
int WriteStroke(int count, float const* xy, void* user) {
    std::ostream& out = *static_cast<std::ostream*>(user);
    for (int i = 0; i < count; ++i)
        out << (i == 0 ? 'M' : 'L') << xy[2 * i] << ' ' << xy[2 * i + 1];
    return 0;
}

void SetTextHeight(gu_coord_t height) {
    stroke_set_text_attributes(0, 0.0F, 1.0F, static_cast<float>(height), 1.0F, 0.0F);
}

// A coordinate at `offset` from another one, cut at the ends of their range.
gu_coord_t Offset(gu_coord_t from, float offset) {
    double const limit = kMaxCoordinate;
    return static_cast<gu_coord_t>(std::clamp(std::round(from + double(offset)), -limit, limit));
}

}  // namespace

void SvgPicture::StartPanel(String_t const& title) {
    panels.emplace_back();
    panels.back().title = title;
    panels.back().box = panels.back().view = gu_bounding_box(0, nullptr);
}

void SvgPicture::Add(String_t const& layer, Outline const& outline, Trapezoids const& trapezoids) {
    Panel& panel = panels.back();
    Layer& shapes = LayerOf(panel, layer);
    shapes.trapezoids.Cat(trapezoids.Len(), trapezoids.Get());
    shapes.points.Cat(outline.Len(), outline.Get());
    shapes.ends.App(static_cast<int>(shapes.points.Len()));
    auto const box = gu_bounding_box(static_cast<unsigned short>(outline.Len()), outline.Get());
    GrowBox(panel.box, box);
    GrowBox(panel.view, box);
}

void SvgPicture::AddLabel(String_t const& layer, String_t const& text, gu_point_t const& start,
                          gu_coord_t height) {
    Panel& panel = panels.back();
    panel.labels.push_back({text, LayerOf(panel, layer).colour, start, height});
    SetTextHeight(height);
    float corners[8];
    stroke_inq_textstring_extent(text, static_cast<int>(text.Len()), corners, 0.0F, 0.0F);
    GrowBox(panel.view, {Offset(start.x, corners[0]), Offset(start.y, corners[1]),
                         Offset(start.x, corners[4]), Offset(start.y, corners[5])});
}

// The layer of the panel, made if need be, and its colour with it.
SvgPicture::Layer& SvgPicture::LayerOf(Panel& panel, String_t const& name) {
    auto const colour = colours.Insert(name, static_cast<int>(layer_names.size()));
    if (colour.second != 0) layer_names.push_back(name);
    for (Layer& layer : panel.layers)
        if (layer.colour == *colour.first) return layer;
    panel.layers.emplace_back();
    panel.layers.back().name = name;
    panel.layers.back().colour = *colour.first;
    return panel.layers.back();
}

int SvgPicture::ColumnCount() const {
    return std::max(1, static_cast<int>(std::ceil(std::sqrt(double(panels.size())))));
}

int SvgPicture::RowCount() const {
    return (static_cast<int>(panels.size()) + ColumnCount() - 1) / ColumnCount();
}

void SvgPicture::Write(std::ostream& out) const {
    int const rows = std::max(1, RowCount());
    int const height = kMargin + rows * (kPitch + kCaption);
    int const legend_x = kMargin + ColumnCount() * kPitch;
    unsigned longest = 0;
    for (String_t const& name : layer_names) longest = std::max(longest, name.Len());
    int const entry = kLegendSwatch + 8 + kLetter * static_cast<int>(longest) + kMargin;
    int const lines = std::max(1, (height - 2 * kMargin) / kLegendLine);
    int const width =
        legend_x + entry * ((static_cast<int>(layer_names.size()) + lines - 1) / lines);

    out << "<?xml version=\"1.0\" encoding=\"UTF-8\"?>\n"
        << "<svg xmlns=\"http://www.w3.org/2000/svg\" width=\"" << width << "\" height=\"" << height
        << "\" viewBox=\"0 0 " << width << ' ' << height << "\">\n";
    WriteStyle(out);
    out << "<rect width=\"100%\" height=\"100%\" fill=\"#fff\"/>\n";
    for (int i = 0; i < static_cast<int>(panels.size()); ++i) {
        out << "<g transform=\"translate(" << kMargin + i % ColumnCount() * kPitch << ' '
            << kMargin + i / ColumnCount() * (kPitch + kCaption) << ")\">\n";
        WritePanel(out, panels[static_cast<unsigned>(i)]);
        out << "</g>\n";
    }
    for (int i = 0; i < static_cast<int>(layer_names.size()); ++i) {
        out << "<g transform=\"translate(" << legend_x + i / lines * entry << ' '
            << kMargin + i % lines * kLegendLine << ")\">";
        WriteLegend(out, i);
        out << "</g>\n";
    }
    out << "</svg>\n";
}

void SvgPicture::WriteStyle(std::ostream& out) const {
    out << "<style>\n"
           "text{font:13px sans-serif;fill:#343a40}\n"
           ".frame{fill:#f8f9fa;stroke:#dee2e6}\n"
           ".shape{stroke-linejoin:round}\n"
           ".cut{fill-opacity:.32;stroke-opacity:.75}\n"
           ".edge{fill:none;stroke-opacity:.9}\n"
           ".label path{fill:none;stroke-linecap:round;stroke-linejoin:round}\n"
           ".halo{stroke:#fff;stroke-opacity:.8}\n";
    int const used = std::min(kColours, static_cast<int>(layer_names.size()));
    for (int i = 0; i < used; ++i)
        out << ".c" << i << "{fill:" << kPalette[i] << ";stroke:" << kPalette[i] << "}\n";
    out << "</style>\n";
}

void SvgPicture::WritePanel(std::ostream& out, Panel const& panel) const {
    out << "<rect class=\"frame\" width=\"" << kPanelSize << "\" height=\"" << kPanelSize
        << "\" rx=\"6\"/>\n<text y=\"" << kPanelSize + 18 << "\">";
    WriteText(out, panel.title);
    if (panel.view.x1 > panel.view.x2) {
        out << ": no shapes</text>\n";
        return;
    }
    if (panel.box.x1 <= panel.box.x2)
        out << ": " << Width(panel.box) * unit * 1e6 << " x " << Height(panel.box) * unit * 1e6
            << " um";
    out << "</text>\n";

    double const width = Width(panel.view), height = Height(panel.view);
    double const inside = kPanelSize - 2 * kInset;
    double const scale = inside / std::max({width, height, 1.0});
    out << "<g class=\"shape\" transform=\"matrix(" << scale << " 0 0 " << -scale << ' '
        << kInset + (inside - width * scale) / 2 << ' ' << kInset + (inside + height * scale) / 2
        << ")\">\n";
    for (Layer const& layer : panel.layers) WriteLayer(out, layer, panel.view, scale);
    WriteLabels(out, panel);
    out << "</g>\n";
}

// Thin lines where the cuts are, stronger ones along the outlines.
void SvgPicture::WriteLayer(std::ostream& out, Layer const& layer, gu_rect_t const& view,
                            double scale) {
    out << "<g class=\"c" << layer.colour % kColours << "\"><title>";
    WriteText(out, layer.name);
    out << "</title>\n<path class=\"cut\" stroke-width=\"" << 0.6 / scale << "\" d=\"";
    WriteTrapezoids(out, layer.trapezoids, view);
    out << "\"/>\n<path class=\"edge\" stroke-width=\"" << 1.2 / scale << "\" d=\"";
    WriteOutlines(out, layer.points, layer.ends, view);
    out << "\"/></g>\n";
}

// Each label twice: a light, wide line behind the one in the colour of the layer.
void SvgPicture::WriteLabels(std::ostream& out, Panel const& panel) {
    for (Label const& label : panel.labels) {
        SetTextHeight(label.height);
        std::ostringstream strokes;
        stroke_plot_string(label.text, static_cast<int>(label.text.Len()), WriteStroke,
                           static_cast<std::ostream*>(&strokes),
                           static_cast<float>(label.start.x - panel.view.x1),
                           static_cast<float>(label.start.y - panel.view.y1));
        out << "<g class=\"label c" << label.colour % kColours << "\"><title>";
        WriteText(out, label.text);
        out << "</title>\n<path class=\"halo\" stroke-width=\"" << 0.34 * label.height << "\" d=\""
            << strokes.str() << "\"/><path class=\"ink\" stroke-width=\"" << 0.12 * label.height
            << "\" d=\"" << strokes.str() << "\"/></g>\n";
    }
}

void SvgPicture::WriteLegend(std::ostream& out, int index) const {
    out << "<g class=\"c" << index % kColours << "\"><rect class=\"cut\" width=\"" << kLegendSwatch
        << "\" height=\"" << kLegendSwatch << "\"/></g><text x=\"" << kLegendSwatch + 8
        << "\" y=\"12\">";
    WriteText(out, layer_names[static_cast<unsigned>(index)]);
    out << "</text>";
}

}  // namespace layout
