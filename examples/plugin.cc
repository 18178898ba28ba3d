// Measures a polygon with a plug-in, a shared library as plugins/measure.h describes it:
//
//   plugin [-p PATH] LIBRARY X Y X Y X Y...
//
// LIBRARY is looked for by the system's loader, then in the folders of PATH, which are separated by
// ":" or ","; without -p, in the folder by which this program was called. The coordinates are
// database units. Prints the name and the value of the measure; the exit status is 1 after a
// complaint.
#include <system/pathname.h>
#include <system/shlhandle.h>
#include <text/str.h>

#include <charconv>
#include <climits>
#include <cstring>
#include <generic/tvarr>
#include <iostream>

#include "plugins/measure.h"

namespace {

int Complain(char const* about, char const* what) {
    std::cerr << "plugin: " << about << ": " << what << '\n';
    return 1;
}

int Usage() {
    std::cerr << "usage: plugin [-p PATH] LIBRARY X Y X Y X Y...\n";
    return 1;
}

bool ReadCoordinate(char const* text, gu_coord_t& coordinate) {
    char const* const end = text + std::strlen(text);
    auto const result = std::from_chars(text, end, coordinate);
    return result.ec == std::errc() && result.ptr == end;
}

// Measures with the loaded plug-in and prints the result. 0, or 1 after a complaint.
int Measure(ShlHandle const& shl, char const* library, TVarr<gu_point_t> const& points) {
    auto const name = reinterpret_cast<measure_name_t>(shl.FindSym("measure_name"));
    auto const polygon = reinterpret_cast<measure_polygon_t>(shl.FindSym("measure_polygon"));
    if (!name || !polygon) return Complain(library, "is no plug-in of this program");
    double const value = polygon(static_cast<unsigned short>(points.Len()), points.Get());
    std::cout << name() << ' ' << value << '\n';
    return std::cout.flush() ? 0 : Complain("standard output", "cannot write");
}

}  // namespace

int main(int argc, char* argv[]) {
    String_t path = argc > 0 ? Pathname(argv[0]).Dir() : String_t();
    char** arg = argc > 0 ? argv + 1 : argv;
    if (str_cmp(*arg, "-p") == 0) {
        if (!arg[1]) return Usage();
        path = arg[1];
        arg += 2;
    }
    auto const numbers = argv + argc - arg - 1;
    if (numbers < 6 || numbers % 2 != 0 || numbers / 2 > USHRT_MAX) return Usage();
    char const* const library = *arg++;

    TVarr<gu_point_t> points;
    for (; *arg; arg += 2) {
        gu_point_t point;
        if (!ReadCoordinate(arg[0], point.x)) return Complain(arg[0], "is no coordinate");
        if (!ReadCoordinate(arg[1], point.y)) return Complain(arg[1], "is no coordinate");
        points.App(point);
    }

    ShlHandle shl;
    if (shl.Load(library, path) != 0) return Complain(library, "cannot be loaded");
    return Measure(shl, library, points);
}
