#include "geometry/gu_measure.h"

#include <algorithm>
#include <cmath>

#include "geometry/wrap.h"

using korbase_detail::Between;
using korbase_detail::WrapSub;

namespace {

constexpr gu_coord_t kHighest = 2147483647;

int Next(int i, int count) { return i + 1 < count ? i + 1 : 0; }

double EdgeLength(gu_point_t const& from, gu_point_t const& to) {
    auto const d = Between(from, to);
    return std::hypot(d.x, d.y);
}

// Twice the area between an edge and the x axis; each coordinate is converted before it is added.
double AreaBelow(gu_point_t const& from, gu_point_t const& to) {
    return (static_cast<double>(to.y) + from.y) * (static_cast<double>(to.x) - from.x);
}

}  // namespace

// The corner at a leftmost point tells the orientation. The walk starts at a rightmost point, so
// that it enters the left side from outside and the corner is a convex one.
int gu_polygon_orientationi(int count, gu_point_t const* points) {
    if (count < 3) return 1;

    gu_coord_t lowest = points[0].x;
    int at = 0;
    for (int i = 1; i < count; ++i) {
        lowest = std::min(lowest, points[i].x);
        if (points[i].x > points[at].x) at = i;
    }
    while (points[Next(at, count)].x > lowest) at = Next(at, count);

    gu_point_t const& a = points[at];
    gu_point_t const& b = points[Next(at, count)];
    gu_point_t const& c = points[Next(Next(at, count), count)];
    double const ax = a.x, ay = a.y, bx = b.x, by = b.y, cx = c.x, cy = c.y;
    return ax * (cy - by) + bx * (ay - cy) + cx * (by - ay) > 0 ? -1 : 1;
}

int gu_polygon_orientation(int count, gu_point_t const* points) {
    return gu_polygon_orientationi(count, points);
}

int gu_ortho_polygon_orientationi(int count, gu_point_t const* points) {
    if (count < 3) return 1;

    int at = 0;
    for (int i = 1; i < count; ++i)
        if (points[i].x < points[at].x ||
            (points[i].x == points[at].x && points[i].y < points[at].y))
            at = i;
    return WrapSub(points[Next(at, count)].y, points[at].y) > 0 ? -1 : 1;
}

int gu_ortho_polygon_orientation(int count, gu_point_t const* points) {
    return gu_ortho_polygon_orientationi(count, points);
}

double gu_polygon_periphery(unsigned short count, gu_point_t const* points) {
    if (count == 0) return 0;

    double sum = 0;
    for (int i = 1; i < count; ++i) sum += EdgeLength(points[i - 1], points[i]);
    return sum + EdgeLength(points[count - 1], points[0]);
}

double gu_polygon_area(unsigned short count, gu_point_t const* points) {
    if (count == 0) return 0;

    double sum = 0;
    for (int i = 1; i < count; ++i) sum += AreaBelow(points[i - 1], points[i]);
    return std::fabs((sum + AreaBelow(points[count - 1], points[0])) * 0.5);
}

gu_rect_t gu_bounding_box(unsigned short count, gu_point_t const* points) {
    if (count == 0) return {kHighest, kHighest, -kHighest, -kHighest};

    gu_rect_t box = {points[0].x, points[0].y, points[0].x, points[0].y};
    for (int i = 1; i < count; ++i) {
        box.x1 = std::min(box.x1, points[i].x);
        box.y1 = std::min(box.y1, points[i].y);
        box.x2 = std::max(box.x2, points[i].x);
        box.y2 = std::max(box.y2, points[i].y);
    }
    return box;
}

int gu_is_rectangle(short count, gu_point_t const* points) {
    if (count != 4) return 0;

    auto const top = Between(points[3], points[2]);
    auto const bottom = Between(points[0], points[1]);
    if (top.x != bottom.x || top.y != bottom.y) return 0;
    auto const side = Between(points[1], points[2]);
    return top.x * side.x + side.y * top.y == 0;
}
