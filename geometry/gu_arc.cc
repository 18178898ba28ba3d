// Sines and cosines are those of the platform's double precision; what is kept in single precision
// decides which coordinates come out, so every narrowing stands where the value is made.
#include "geometry/gu_arc.h"

#include <algorithm>
#include <cmath>

#include "base/saturate.h"
#include "geometry/wrap.h"
#include "text/numeric.h"

using korbase_detail::SaturateToInt32;

namespace {

constexpr double kFullTurn = 6.283185307179586;

// Brings a sweep within a full turn. Ends also where a turn is lost in the size of the value.
float ReduceSweep(float sweep) {
    while (std::fabs(static_cast<double>(sweep)) > kFullTurn) {
        auto const reduced = static_cast<float>(sweep - std::copysign(kFullTurn, sweep));
        if (reduced == sweep) break;
        sweep = reduced;
    }
    return sweep;
}

// The point at `angle` on the ellipse with the radii `rx` and `ry`, cut toward zero.
gu_point_t PointAt(gu_point_t const& centre, double rx, double ry, float angle) {
    double const radians = angle;
    return {SaturateToInt32(centre.x + rx * std::cos(radians)),
            SaturateToInt32(centre.y + ry * std::sin(radians))};
}

// The number of segments for a reduced sweep; with its two ends the arc fits `max_points`.
int SegmentsOf(float sweep, short segments, short max_points) {
    double const share = static_cast<float>(segments) * sweep / kFullTurn;
    auto const wanted = static_cast<short>(SaturateToInt32(std::fabs(share)));
    return std::min(std::max<int>(wanted, 1), max_points - 2);
}

}  // namespace

void gu_circle2polygon(unsigned short* out_count, gu_point_t* out, gu_point_t const* centre,
                       int width, int height, short segments) {
    *out_count = static_cast<unsigned short>(segments);
    if (segments <= 0) return;

    double const step = kFullTurn / segments;
    double angle = step / 2;
    double const c = std::cos(angle);
    double const rx = width * 0.5 / c;
    double const ry = height * 0.5 / c;
    gu_point_t const middle = *centre;
    for (int i = 0; i < segments; ++i) {
        out[i] = {mth_round(middle.x + rx * std::cos(angle)),
                  mth_round(middle.y + ry * std::sin(angle))};
        angle += step;
    }
}

void gu_arc2a2polygon(unsigned short* out_count, gu_point_t* out, gu_point_t const* centre,
                      int width, int height, short segments, short max_points, float start,
                      float sweep) {
    *out_count = 0;
    if (max_points < 2) return;

    sweep = ReduceSweep(sweep);
    gu_point_t const middle = *centre;
    int const half_width = width / 2;
    int const half_height = height / 2;
    int const inner = SegmentsOf(sweep, segments, max_points);
    out[0] = PointAt(middle, half_width, half_height, start);
    if (inner > 0) {
        float const step = sweep / static_cast<float>(inner);
        double const c = std::cos(step * 0.5);
        auto const rx = static_cast<float>(half_width / c);
        auto const ry = static_cast<float>(half_height / c);
        auto angle = static_cast<float>(start + step * 0.5);
        for (int i = 1; i <= inner; ++i) {
            out[i] = PointAt(middle, rx, ry, angle);
            angle += step;
        }
    }
    out[inner + 1] = PointAt(middle, half_width, half_height, start + sweep);
    *out_count = static_cast<unsigned short>(inner + 2);
}

void gu_arcpa2polygon(unsigned short* out_count, gu_point_t* out, gu_point_t const* centre,
                      gu_point_t const* start, int width, int height, short segments,
                      short max_points, float sweep) {
    auto const ray = korbase_detail::Between(*centre, *start);
    gu_arc2a2polygon(out_count, out, centre, width, height, segments, max_points,
                     static_cast<float>(std::atan2(ray.y, ray.x)), sweep);
}
