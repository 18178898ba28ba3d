#include "geometry/gu_outline.h"

#include <algorithm>
#include <cmath>

#include "geometry/wrap.h"

using korbase_detail::Between;
using korbase_detail::WrapAdd;
using korbase_detail::WrapSub;

int const m2b[4] = {0, 1, 2, 3};

namespace {

// Not the true tangents of 22.5 and 67.5 degrees: these digits decide.
constexpr double kFlat = 0.414213562373095;
constexpr double kSteep = 2.41421356237309;

bool Same(gu_point_t const& a, gu_point_t const& b) { return a.x == b.x && a.y == b.y; }

// 0 axis-parallel or null, 1 at 45 degrees, 2 anything else.
int AngleClass(gu_point_t const& from, gu_point_t const& to) {
    gu_coord_t const dx = WrapSub(to.x, from.x);
    gu_coord_t const dy = WrapSub(to.y, from.y);
    if (dx == 0 || dy == 0) return 0;
    return dx == dy || WrapAdd(dx, dy) == 0 ? 1 : 2;
}

// Whether `point` lies on the line through its neighbours.
bool Redundant(gu_point_t const& before, gu_point_t const& point, gu_point_t const& after) {
    auto const in = Between(before, point);
    auto const out = Between(point, after);
    return in.x * out.y - out.x * in.y == 0;
}

std::uint64_t Pack(gu_point_t const& p) {
    return static_cast<std::uint64_t>(static_cast<std::uint32_t>(p.x)) << 32 |
           static_cast<std::uint32_t>(p.y);
}

// Turns a segment that is nearer to a diagonal than to an axis; `slope` is dy / dx.
void SnapDiagonal(gu_point_t* point, gu_point_t* reference, double slope) {
    gu_coord_t const dx = WrapSub(reference->x, point->x);
    gu_coord_t const dy = WrapSub(reference->y, point->y);
    switch (m2b[2 * (slope > 0) + (slope > 1.0)]) {
        case 0: reference->y = point->y = WrapSub(point->y, dx); break;
        case 1: reference->x = point->x = WrapSub(point->x, dy); break;
        case 2: reference->y = point->y = WrapAdd(point->y, dx); break;
        default: reference->x = point->x = WrapAdd(point->x, dy); break;
    }
}

}  // namespace

int gu_check_orthoi(int count, gu_point_t const* points, int closed) {
    int worst = 0;
    for (int i = 1; i < count; ++i) worst = std::max(worst, AngleClass(points[i - 1], points[i]));
    if (closed && count > 0) worst = std::max(worst, AngleClass(points[count - 1], points[0]));
    return worst;
}

int gu_check_ortho(int count, gu_point_t const* points, int closed) {
    return gu_check_orthoi(count, points, closed);
}

std::uint64_t gu_snap_ortho(gu_point_t point, gu_point_t* reference, int mode) {
    auto const d = Between(point, *reference);
    if (d.x == 0 || d.y == 0) return Pack(point);

    double const slope = d.y / d.x;
    double const steepness = std::fabs(slope);
    if (mode == 0) {
        if (steepness <= 1.0)
            reference->y = point.y;
        else
            reference->x = point.x;
    } else if (mode == 1 && steepness != 1.0) {
        if (steepness <= kFlat)
            reference->y = point.y;
        else if (steepness >= kSteep)
            reference->x = point.x;
        else
            SnapDiagonal(&point, reference, slope);
    }
    return Pack(point);
}

int gu_delete_multiple_pointsi(int count, gu_point_t const* points, gu_point_t* out) {
    out[0] = points[0];
    int written = 1;
    for (int i = 1; i < count; ++i)
        if (!Same(points[i], points[i - 1])) out[written++] = points[i];
    return written;
}

short gu_delete_multiple_points(short count, gu_point_t const* points, gu_point_t* out) {
    return static_cast<short>(gu_delete_multiple_pointsi(count, points, out));
}

int gu_delete_redundant_pointsi(int count, gu_point_t* points, int closed) {
    if (count < 2) return count;

    int kept = 1;  // points[0] to points[kept - 1] stay
    for (int i = 1; i < count - 1; ++i)
        if (!Redundant(points[kept - 1], points[i], points[i + 1])) points[kept++] = points[i];
    points[kept++] = points[count - 1];

    if (!closed) return Same(points[kept - 1], points[kept - 2]) ? kept - 1 : kept;
    if (Redundant(points[kept - 1], points[0], points[1])) {
        std::copy(points + 1, points + kept, points);
        if (--kept < 2) return kept;
    }
    return Redundant(points[kept - 2], points[kept - 1], points[0]) ? kept - 1 : kept;
}

short gu_delete_redundant_points(short count, gu_point_t* points, int closed) {
    return static_cast<short>(gu_delete_redundant_pointsi(count, points, closed));
}
