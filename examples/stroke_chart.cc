// Writes a chart of the stroke font and its markers to standard output, as an SVG picture:
//
//   stroke_chart >stroke-font.svg
#include <geometry/stroke.h>

#include <cmath>
#include <iostream>
#include <string>

namespace {

int const kCell = 14;  // the font's own grid: every coordinate of a cell of 14 units is whole

// Adds a polyline to the path data in `user`: one absolute point, then steps.
int AddToPath(int count, float const* xy, void* user) {
    auto& path = *static_cast<std::string*>(user);
    long last_x = std::lround(xy[0]);
    long last_y = std::lround(xy[1]);
    path += 'M' + std::to_string(last_x) + ' ' + std::to_string(last_y) + 'l';
    for (int i = 1; i < count; ++i) {
        long const x = std::lround(xy[2 * i]);
        long const y = std::lround(xy[2 * i + 1]);
        if (i > 1) path += ' ';
        path += std::to_string(x - last_x) + ' ' + std::to_string(y - last_y);
        last_x = x;
        last_y = y;
    }
    if (count == 1) path += "0 0";  // with its round ends, a dot
    return 0;
}

void WritePath(std::string const& path) {
    if (!path.empty()) std::cout << "<path d=\"" << path << "\"/>\n";
}

// One path for each character, with the baseline starting at (x, y).
void WriteText(std::string const& text, int height, int x, int y) {
    // y points down: up is (0, -1), and the negative expansion turns the characters back.
    stroke_set_text_attributes(0, 0.0F, -1.0F, static_cast<float>(height), -1.0F, 0.0F);
    for (char const c : text) {
        std::string path;
        stroke_plot_string(&c, 1, AddToPath, &path, static_cast<float>(x), static_cast<float>(y));
        WritePath(path);
        x += height;
    }
}

void WriteMarker(int kind, int size, int x, int y) {
    std::string path;
    stroke_set_marker_attributes(kind, static_cast<float>(size));
    stroke_plot_marker(AddToPath, &path, static_cast<float>(x), static_cast<float>(y));
    WritePath(path);
}

}  // namespace

int main(int argc, char*[]) {
    if (argc > 1) {
        std::cerr << "usage: stroke_chart >FILE.svg\n";
        return 1;
    }
    std::string all;
    for (char c = ' '; c <= '~'; ++c) all += c;

    std::cout << "<svg xmlns=\"http://www.w3.org/2000/svg\" viewBox=\"0 0 830 605\">\n"
                 "<title>Stroke font</title>\n"
                 "<path fill=\"#fff\" d=\"M0 0h830v605H0z\"/>\n"
                 "<g fill=\"none\" stroke=\"#000\" stroke-linecap=\"round\""
                 " stroke-linejoin=\"round\" stroke-width=\"2\">\n";
    int y = 62;
    for (std::size_t i = 0; i < all.size(); i += 19, y += 76)
        WriteText(all.substr(i, 19), 3 * kCell, 22, y);
    for (int kind = 0; kind <= 12; ++kind) WriteMarker(kind, 2 * kCell, 40 + 62 * kind, y);

    std::cout << "</g>\n<g fill=\"none\" stroke=\"#000\" stroke-linecap=\"round\">\n";
    y += 40;
    for (int kind = 0; kind <= 12; ++kind) {
        auto const name = std::to_string(kind);
        WriteText(name, kCell, 35 + 62 * kind - 7 * (kind > 9), y);
    }
    y += 45;
    for (auto const& line : {all.substr(0, 48), all.substr(48),
                             std::string("0O 1lI| 5S 2Z 8B 6b 9gq uv vw rnm ,.'` R17=4.7k")}) {
        WriteText(line, kCell, 70, y);
        y += 28;
    }
    std::cout << "</g>\n</svg>\n";
    if (std::cout.flush()) return 0;
    std::cerr << "stroke_chart: cannot write standard output\n";
    return 1;
}
