// Outlines for the benchmarks of the geometry.
#ifndef KORBASE_BENCH_GEOMETRY_SHAPES_H
#define KORBASE_BENCH_GEOMETRY_SHAPES_H

#include <geometry/gu_types.h>

#include <cmath>
#include <cstdlib>
#include <filesystem>
#include <fstream>
#include <sstream>
#include <string>
#include <vector>

namespace shapes {

using Points = std::vector<gu_point_t>;

// `count` corners around the origin; radius(i) in database units.
template <class Radius>
Points Around(int count, Radius radius) {
    Points points;
    for (int i = 0; i < count; ++i) {
        double const angle = 6.283185307179586 * (i + 0.25) / count;
        points.push_back({static_cast<gu_coord_t>(std::lround(radius(i) * std::cos(angle))),
                          static_cast<gu_coord_t>(std::lround(radius(i) * std::sin(angle)))});
    }
    return points;
}

// Five soft lobes: few edges cross a slab, whatever the count.
inline Points Star(int count) {
    return Around(count,
                  [count](int i) { return 1e8 * (1 + 0.2 * std::sin(31.4159265 * i / count)); });
}

// Every second corner near the centre: a third of the edges cross a slab.
inline Points Spikes(int count) {
    return Around(count, [](int i) { return i % 2 ? 1e8 : 2e7; });
}

// Teeth of different heights on a bar.
inline Points Comb(int teeth) {
    Points points = {{40 * teeth, 0}, {0, 0}};
    for (int i = 0; i < teeth; ++i) {
        int const top = 1000 + i * 7919 % teeth * 10;
        points.insert(points.end(),
                      {{40 * i, 500}, {40 * i, top}, {40 * i + 20, top}, {40 * i + 20, 500}});
    }
    return points;
}

inline Points Staircase(int steps) {
    Points points = {{0, 0}};
    for (int i = 0; i < steps; ++i)
        points.insert(points.end(), {{30 * (steps - i), 20 * i}, {30 * (steps - i), 20 * (i + 1)}});
    points.push_back({0, 20 * steps});
    return points;
}

// side * side square holes; the holes of a row hang on one horizontal slit from the left border.
inline Points Plate(int side) {
    int const pitch = 200, end = pitch * side + 100;
    Points points = {{end, 0}, {end, end}, {0, end}};
    for (int row = side - 1; row >= 0; --row) {
        int const low = 100 + pitch * row, high = low + 100;
        points.push_back({0, low});
        for (int column = 0; column < side; ++column) {
            int const left = 100 + pitch * column, right = left + 100;
            points.insert(points.end(), {{left, low}, {left, high}, {right, high}, {right, low}});
        }
        points.push_back({0, low});
    }
    points.push_back({0, 0});
    return points;
}

// The records `polygon LAYER x y x y ...` of the *.lay files in the folder that the environment
// variable KORBASE_LAYOUTS names; none where it is not set.
inline std::vector<Points> Layouts() {
    std::vector<Points> polygons;
    char const* const folder = std::getenv("KORBASE_LAYOUTS");
    if (!folder) return polygons;
    for (auto const& file : std::filesystem::directory_iterator(folder)) {
        if (file.path().extension() != ".lay") continue;
        std::ifstream in(file.path());
        for (std::string line; std::getline(in, line);) {
            std::istringstream words(line);
            std::string kind, layer;
            if (!(words >> kind >> layer) || kind != "polygon") continue;
            Points points;
            for (gu_point_t p; words >> p.x >> p.y;) points.push_back(p);
            polygons.push_back(points);
        }
    }
    return polygons;
}

}  // namespace shapes

#endif
