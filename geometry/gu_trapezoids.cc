// Plane sweep with an active edge list. The edges wait in one array, sorted by their lower ends;
// the front of that array, which the sweep has consumed, holds the active ones: those that cross
// the current slab. Each slab cuts its active edges at its top, puts them in x order, writes the
// pairs, and drops the edges that end there.
//
// The result is that of cutting every edge at every height first and sorting all pieces afterwards
// by slab, lower x and upper x: an edge enters a slab where its cut left the slab below, so the
// truncated cuts form the same chain, and pieces that compare equal are equal.
#include "geometry/gu_trapezoids.h"

#include <algorithm>
#include <cmath>
#include <cstdint>

#include "base/saturate.h"
#include "geometry/radix_sort.h"
#include "geometry/slabs.h"
#include "geometry/wrap.h"

using korbase_detail::CountPairs;
using korbase_detail::ForEachEdge;
using korbase_detail::RadixSort;
using korbase_detail::SaturateToInt32;
using korbase_detail::Scratch;
using korbase_detail::WrapSub;

namespace {

struct SweepEdge {
    gu_coord_t x;             // where the edge enters the slab; waiting: its lower end
    gu_coord_t at;            // where it leaves the slab; waiting: the y of its lower end
    gu_coord_t x_end, y_end;  // its upper end
};

bool BeforeInSlab(SweepEdge const& a, SweepEdge const& b) {
    return a.x != b.x ? a.x < b.x : a.at < b.at;
}

void SortByLowerEnd(SweepEdge* edges, unsigned count) {
    Scratch<SweepEdge> spare(count);
    RadixSort(edges, spare.Get(), count, [](SweepEdge const& e) { return e.at; });
}

class Sweep {
public:
    Sweep(SweepEdge* sorted, unsigned n) : edges(sorted), count(n), bottom(sorted[0].at) {}

    // Writes all trapezoids.
    void Run(gu_trapezoid_t* out) {
        while (Admit()) {
            CutAndSort();
            out = WriteSlab(out);
        }
    }

private:
    // Makes the waiting edges that begin at `bottom` active and finds the top of the slab. Returns
    // whether there is a slab.
    bool Admit() {
        while (next < count && edges[next].at == bottom) {
            edges[active] = edges[next++];
            lowest_end = std::min(lowest_end, edges[active++].y_end);
        }
        top = next < count ? std::min(lowest_end, edges[next].at) : lowest_end;
        return active > 0;
    }

    void CutAndSort() {
        for (unsigned i = 0; i < active; ++i) edges[i].at = XAtTop(edges[i]);
        if (!std::is_sorted(edges, edges + active, BeforeInSlab))
            std::sort(edges, edges + active, BeforeInSlab);
    }

    // The upper end, or the cut: lower end plus quotient times rise as one fused multiply-add,
    // which a vertical edge does not need, truncated toward zero.
    gu_coord_t XAtTop(SweepEdge const& e) const {
        if (e.y_end == top || e.x == e.x_end) return e.x_end;
        double const slope = static_cast<double>(WrapSub(e.x_end, e.x)) /
                             static_cast<double>(WrapSub(e.y_end, bottom));
        double const rise = WrapSub(top, bottom);
        return SaturateToInt32(std::fma(slope, rise, static_cast<double>(e.x)));
    }

    // Writes the pairs, and goes up to the next slab with the edges that do not end here.
    gu_trapezoid_t* WriteSlab(gu_trapezoid_t* out) {
        unsigned const pieces = active;
        active = 0;
        lowest_end = INT32_MAX;
        for (unsigned i = 0; i + 1 < pieces; i += 2) {
            SweepEdge const left = edges[i], right = edges[i + 1];
            *out++ = {left.x, left.at, right.at, right.x, bottom, top};
            KeepAbove(left);
            KeepAbove(right);
        }
        bottom = top;
        return out;
    }

    void KeepAbove(SweepEdge const& e) {
        if (e.y_end == top) return;
        edges[active++] = {e.at, e.at, e.x_end, e.y_end};
        lowest_end = std::min(lowest_end, e.y_end);
    }

    SweepEdge* edges;  // the active ones, a gap, and from `next` to `count` the waiting ones
    unsigned count;
    unsigned active = 0, next = 0;
    gu_coord_t bottom, top = 0;
    gu_coord_t lowest_end = INT32_MAX;  // the lowest upper end of an active edge
};

}  // namespace

unsigned gu_polygon_to_trapezoids(unsigned stride, unsigned count, void const* points,
                                  TVarr<gu_trapezoid_t>& out) {
    unsigned edge_count = 0;
    ForEachEdge(stride, count, points, [&](auto const&, auto const&) { ++edge_count; });
    if (edge_count == 0) {
        out.Reset();
        return 0;
    }

    Scratch<SweepEdge> scratch(edge_count);
    SweepEdge* const edges = scratch.Get();
    SweepEdge* end = edges;
    ForEachEdge(stride, count, points, [&](gu_point_t const& from, gu_point_t const& to) {
        auto const& [lower, upper] =
            std::minmax(from, to, [](auto const& a, auto const& b) { return a.y < b.y; });
        *end++ = {lower.x, lower.y, upper.x, upper.y};
    });
    SortByLowerEnd(edges, edge_count);

    unsigned const length = CountPairs(
        edges, edge_count, [](SweepEdge const& e) { return e.at; },
        [](SweepEdge const& e) { return e.y_end; });
    out.Reset();
    out.Extend(length);
    out.Adjust(length);
    Sweep(edges, edge_count).Run(out.Get());
    return length;
}
