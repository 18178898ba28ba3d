// Sizing by moving corners: a corner stays on the bisector of its two edges, where the two moved
// edges meet. With both edges brought to the same length, the bisector's normal is their sum.
#include "geometry/gu_sizing.h"

#include <cmath>
#include <cstdlib>
#include <memory>

#include "geometry/gu_measure.h"
#include "geometry/gu_outline.h"
#include "geometry/wrap.h"
#include "text/memory.h"
#include "text/numeric.h"

using korbase_detail::Between;
using korbase_detail::Vector;
using korbase_detail::WrapAdd;
using korbase_detail::WrapSub;

namespace {

struct Free {
    void operator()(gu_point_t* points) const { std::free(points); }
};

// A copy of an outline without consecutive duplicates, with its first two points again behind the
// last one, so that every corner and the corner after it follow each other in memory.
class Outline {
public:
    Outline(int source_count, gu_point_t const* source)
        : points(static_cast<gu_point_t*>(
              SCalloc(static_cast<unsigned>(source_count) + 2, sizeof(gu_point_t)))),
          count(gu_delete_multiple_pointsi(source_count, source, points.get())) {
        points[count] = points[0];
        points[count + 1] = points[1];
    }

    int Count() const { return count; }
    gu_point_t const* Points() const { return points.get(); }

    // The index of the caller's point for corner `k`, 1 to Count().
    int Home(int k) const { return k < count ? k : 0; }

private:
    std::unique_ptr<gu_point_t[], Free> points;
    int count;
};

struct Edge {
    Edge(gu_point_t const& from, gu_point_t const& to)
        : vector(Between(from, to)), length(std::hypot(vector.x, vector.y)) {}

    Vector vector;
    double length;
};

// Moves the corner between the edges `in` and `out`, both longer than 0, by `distance` to the right
// of them. False when `out` runs back over `in`.
bool MoveCorner(gu_point_t const& corner, Edge const& in, Edge const& out, double distance,
                gu_point_t* moved) {
    Vector const sum = {in.vector.x + out.vector.x * in.length / out.length,
                        in.vector.y + out.vector.y * in.length / out.length};
    double const square = std::fma(sum.x, sum.x, sum.y * sum.y);
    if (square == 0) return false;

    double const factor = 2 * in.length * distance / square;
    moved->x = mth_round(corner.x + sum.y * factor);
    moved->y = mth_round(corner.y - sum.x * factor);
    return true;
}

}  // namespace

int gu_size_polygon(int count, gu_point_t* points, int distance) {
    if (count < 2) return -1;

    Outline const outline(count, points);
    int const corners = outline.Count();
    gu_point_t const* const at = outline.Points();
    if (corners == 1) {
        points[0] = {0, 0};  // Kept: an edge of length 0 has no direction.
        return 1;
    }
    // A closing point that repeats the first makes an edge without length, and so no corner.
    if (at[corners - 1].x == at[0].x && at[corners - 1].y == at[0].y) return -1;

    bool const left_turning = gu_polygon_orientation(corners, at) > 0;
    double const right = left_turning ? distance : -static_cast<double>(distance);
    Edge in(at[0], at[1]);
    for (int k = 1; k <= corners; ++k) {
        Edge const out(at[k], at[k + 1]);
        if (!MoveCorner(at[k], in, out, right, &points[outline.Home(k)])) return -1;
        in = out;
    }
    return corners;
}

int gu_size_ortho_polygoni(int count, gu_point_t* points, int distance) {
    if (count < 2) return -1;

    Outline const outline(count, points);
    int const corners = outline.Count();
    gu_point_t const* const at = outline.Points();
    bool const left_turning = gu_ortho_polygon_orientation(static_cast<short>(corners), at) == 1;
    gu_coord_t const right = left_turning ? distance : WrapSub(0, distance);
    gu_coord_t const left = WrapSub(0, right);

    gu_coord_t in_x = WrapSub(at[1].x, at[0].x);
    gu_coord_t in_y = WrapSub(at[1].y, at[0].y);
    for (int k = 1; k <= corners; ++k) {
        gu_coord_t const out_x = WrapSub(at[k + 1].x, at[k].x);
        gu_coord_t const out_y = WrapSub(at[k + 1].y, at[k].y);
        bool const in_is_vertical = in_y != 0;
        gu_coord_t const along_y = in_is_vertical ? in_y : out_y;
        gu_coord_t const along_x = in_is_vertical ? out_x : in_x;
        points[outline.Home(k)] = {WrapAdd(at[k].x, along_y > 0 ? right : left),
                                   WrapAdd(at[k].y, along_x <= 0 ? right : left)};
        in_x = out_x;
        in_y = out_y;
    }
    return corners;
}

short gu_size_ortho_polygon(short count, gu_point_t* points, int distance) {
    return static_cast<short>(gu_size_ortho_polygoni(count, points, distance));
}
