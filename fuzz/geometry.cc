// Outlines: the input is what to do and the coordinates of the points. The pieces of the
// decompositions are looked at; sizing, cleaning and arcs have only to stay within their bounds.
#include <korbase.h>

#include <vector>

#include "input.h"

namespace {

using Points = std::vector<gu_point_t>;

unsigned const kStride = sizeof(gu_point_t);

Points TakePoints(Input& input, bool wide) {
    Points points;
    while (input.Left() > 0 && points.size() < 600) {
        if (wide)
            points.push_back({input.Take<std::int32_t>(), input.Take<std::int32_t>()});
        else
            points.push_back({input.Take<std::int8_t>(), input.Take<std::int8_t>()});
    }
    return points;
}

void Decompose(Points const& points) {
    auto const count = static_cast<unsigned>(points.size());
    auto const box = gu_bounding_box(static_cast<unsigned short>(count), points.data());
    TVarr<gu_trapezoid_t> trapezoids(4, VARR_DOUBLE);
    EXPECT(gu_polygon_to_trapezoids(kStride, count, points.data(), trapezoids) == trapezoids.Len());
    gu_coord_t bottom = box.y1;
    for (gu_trapezoid_t const& t : trapezoids) {
        EXPECT(bottom <= t.y_b && t.y_b < t.y_t && t.y_t <= box.y2);
        EXPECT(t.x_bl <= t.x_br);
        bottom = t.y_b;
    }
    TVarr<gu_rect_t> rects(4, VARR_DOUBLE);
    EXPECT(gu_polygon_to_rects(kStride, count, points.data(), rects) == rects.Len());
    for (gu_rect_t const& r : rects) {
        EXPECT(box.x1 <= r.x1 && r.x1 <= r.x2 && r.x2 <= box.x2);
        EXPECT(box.y1 <= r.y1 && r.y1 < r.y2 && r.y2 <= box.y2);
    }
}

void Edit(Points points, int distance) {
    auto const count = static_cast<int>(points.size());
    Points sized = points, distinct = points;
    EXPECT(gu_size_polygon(count, sized.data(), distance) <= count);
    sized = points;
    EXPECT(gu_size_ortho_polygoni(count, sized.data(), distance) <= count);
    if (count > 0)
        EXPECT(gu_delete_multiple_pointsi(count, points.data(), distinct.data()) <= count);
    for (int const closed : {0, 1}) {
        Points cleaned = points;
        EXPECT(gu_delete_redundant_pointsi(count, cleaned.data(), closed) <= count);
        EXPECT(gu_check_orthoi(count, points.data(), closed) <= 2);
    }
    TVarr<gu_rect_t> rects(4, VARR_DOUBLE);
    gu_path_to_rects(kStride, static_cast<unsigned>(count), points.data(), distance,
                     static_cast<gu_PathType_t>(distance & 1), rects);
}

void Measure(Points const& points) {
    auto const count = static_cast<unsigned short>(points.size());
    EXPECT(gu_polygon_area(count, points.data()) >= 0);
    EXPECT(gu_polygon_periphery(count, points.data()) >= 0);
    EXPECT(gu_polygon_orientationi(count, points.data()) != 0);
    for (std::size_t i = 3; i < points.size(); ++i) {
        gu_point_t at;
        gu_point_t reference = points[i];
        gu_intersection(&points[i - 3], &points[i - 2], &points[i - 1], &points[i], &at);
        gu_snap_ortho(points[i - 1], &reference, static_cast<int>(i % 3));
    }
}

void Arc(Input& input) {
    gu_point_t const centre = {input.Take<std::int32_t>(), input.Take<std::int32_t>()};
    int const width = input.Take<std::int32_t>(), height = input.Take<std::int32_t>();
    short const segments = input.Take<std::int16_t>();
    auto const room = static_cast<short>(input.Take<std::uint16_t>() % 512);
    auto const start = input.Take<float>(), sweep = input.Take<float>();
    Points out(512);
    unsigned short count = 0;
    gu_arc2a2polygon(&count, out.data(), &centre, width, height, segments, room, start, sweep);
    EXPECT(count <= room);
    out.resize(segments > 0 ? static_cast<std::size_t>(segments) : 0);
    gu_circle2polygon(&count, out.data(), &centre, width, height, segments);
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(std::uint8_t const* bytes, std::size_t size) {
    Input input(bytes, size);
    auto const what = input.Take<std::uint8_t>();
    if (what % 8 == 7) {
        Arc(input);
        return 0;
    }
    int const distance = what & 64 ? input.Take<std::int32_t>() : input.Take<std::int8_t>();
    Points const points = TakePoints(input, what & 128);
    switch (what % 8) {
        case 0: Edit(points, distance); break;
        case 1: Measure(points); break;
        default: Decompose(points);
    }
    return 0;
}
