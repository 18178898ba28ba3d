// Plane sweep with an active edge list. The edges wait in one array, sorted by their lower ends;
// the front of that array, which the sweep has consumed, holds the active ones: those that cross
// the current slab, in x order. Going up one slab cuts each active edge at the slab's top, repairs
// the order by insertion (neighbours rarely swap), writes the pairs, and drops the edges that end
// there.
//
// The result is that of cutting every edge at every height first and sorting all pieces afterwards
// by slab, lower x and upper x: an edge enters a slab where its cut left the slab below, so the
// truncated cuts form the same chain, and pieces that compare equal are equal.
#include "geometry/gu_trapezoids.h"

#include <algorithm>
#include <cmath>
#include <cstdint>
#include <cstring>
#include <memory>
#include <new>

#include "base/saturate.h"
#include "geometry/radix_sort.h"
#include "geometry/wrap.h"

using korbase_detail::RadixSort;
using korbase_detail::SaturateToInt32;
using korbase_detail::WrapSub;

namespace {

unsigned const kFew = 64;  // edges that are kept on the stack

struct SweepEdge {
    gu_coord_t x;             // where the edge enters the slab; waiting: its lower end
    gu_coord_t at;            // where it leaves the slab; waiting: the y of its lower end
    gu_coord_t x_end, y_end;  // its upper end
};

bool BeforeInSlab(SweepEdge const& a, SweepEdge const& b) {
    return a.x != b.x ? a.x < b.x : a.at < b.at;
}

// `n` records that live on the stack while they are few.
template <class T, unsigned Few>
class Scratch {
public:
    explicit Scratch(std::size_t n) : many(n > Few ? new T[n] : nullptr) {}
    T* Get() { return many ? many.get() : few; }

private:
    T few[Few];
    std::unique_ptr<T[]> many;
};

class Outline {
public:
    Outline(unsigned stride, unsigned count, void const* points)
        : bytes(static_cast<char const*>(points)), step(stride), length(count) {}

    // Calls visit(lower, upper) for each edge that is not horizontal.
    template <class Visit>
    void ForEachEdge(Visit visit) const {
        if (length == 0) return;
        gu_point_t from = Point(length - 1);
        for (unsigned i = 0; i < length; ++i) {
            gu_point_t const to = Point(i);
            if (from.y < to.y)
                visit(from, to);
            else if (to.y < from.y)
                visit(to, from);
            from = to;
        }
    }

private:
    gu_point_t Point(unsigned i) const {
        gu_point_t p;
        std::memcpy(&p, bytes + static_cast<std::size_t>(i) * step, sizeof p);
        return p;
    }

    char const* bytes;
    std::size_t step;
    unsigned length;
};

// What must be known before the edges are stored.
struct Extent {
    unsigned edges = 0;
    gu_coord_t x_min = INT32_MAX, x_max = INT32_MIN, y_min = INT32_MAX, y_max = INT32_MIN;

    void Add(gu_point_t const& lower, gu_point_t const& upper) {
        ++edges;
        x_min = std::min({x_min, lower.x, upper.x});
        x_max = std::max({x_max, lower.x, upper.x});
        y_min = std::min(y_min, lower.y);
        y_max = std::max(y_max, upper.y);
    }
    // Whether no difference of two coordinates wraps.
    bool Narrow() const {
        return std::int64_t{x_max} - x_min <= INT32_MAX && std::int64_t{y_max} - y_min <= INT32_MAX;
    }
};

void SortByLowerEnd(SweepEdge* edges, unsigned count) {
    if (count <= kFew) {
        std::sort(edges, edges + count,
                  [](SweepEdge const& a, SweepEdge const& b) { return a.at < b.at; });
        return;
    }
    std::unique_ptr<SweepEdge[]> const spare(new SweepEdge[count]);
    RadixSort(edges, spare.get(), count, [](SweepEdge const& e) { return e.at; });
}

// The number of trapezoids of edges that are sorted by their lower ends: half the sum, over all
// slabs, of the edges that cross the slab.
std::uint64_t CountTrapezoids(SweepEdge const* edges, unsigned count) {
    Scratch<gu_coord_t, 2 * kFew> scratch(std::size_t{2} * count);
    gu_coord_t* const ends = scratch.Get();
    for (unsigned i = 0; i < count; ++i) ends[i] = edges[i].y_end;
    if (count <= kFew)
        std::sort(ends, ends + count);
    else
        RadixSort(ends, ends + count, count, [](gu_coord_t y) { return y; });

    std::uint64_t pieces = 0;
    unsigned begun = 0;
    for (unsigned ended = 0; ended < count;) {
        gu_coord_t y = ends[ended];
        if (begun < count) y = std::min(y, edges[begun].at);
        while (begun < count && edges[begun].at == y) ++begun;
        while (ended < count && ends[ended] == y) ++ended;
        pieces += begun - ended;
    }
    return pieces / 2;
}

// The x of an edge at height `top`, strictly inside it, from the x where it crosses `bottom`: lower
// end plus quotient times rise as one fused multiply-add, truncated toward zero.
struct WideCut {
    static gu_coord_t At(SweepEdge const& e, gu_coord_t bottom, gu_coord_t top) {
        double const slope = static_cast<double>(WrapSub(e.x_end, e.x)) /
                             static_cast<double>(WrapSub(e.y_end, bottom));
        double const rise = WrapSub(top, bottom);
        return SaturateToInt32(std::fma(slope, rise, static_cast<double>(e.x)));
    }
};

// The same where no difference wraps: the x then lies between the ends of the edge. Product and sum
// are below 2^32, so rounding each of them moves the x by less than 2^-19, and the fused operation,
// a library call on many machines, can truncate to another integer only this close to one.
struct NarrowCut {
    static gu_coord_t At(SweepEdge const& e, gu_coord_t bottom, gu_coord_t top) {
        if (e.x == e.x_end) return e.x;
        double const slope =
            static_cast<double>(e.x_end - e.x) / static_cast<double>(e.y_end - bottom);
        double const rise = top - bottom;
        double const x = e.x + slope * rise;
        auto const cut = static_cast<gu_coord_t>(x);
        double const rest = std::fabs(x - cut);
        double const slack = 1.0 / (1 << 19);
        if (rest > slack && rest < 1 - slack) return cut;
        return static_cast<gu_coord_t>(std::fma(slope, rise, static_cast<double>(e.x)));
    }
};

template <class Cut>
class Sweep {
public:
    Sweep(SweepEdge* sorted, unsigned n) : edges(sorted), count(n) {}

    void Run(gu_trapezoid_t* out) {
        bottom = edges[0].at;
        while (Admit()) {
            CutAndSort();
            out = WriteSlab(out);
        }
    }

private:
    // Makes the waiting edges that begin at `bottom` active and finds the top of the slab. Returns
    // whether there is a slab.
    bool Admit() {
        unsigned const first = active;
        while (next < count && edges[next].at == bottom) {
            edges[active] = edges[next++];
            lowest_end = std::min(lowest_end, edges[active++].y_end);
        }
        // Outlines often run from right to left.
        if (active > first + 1 && edges[first].x > edges[active - 1].x)
            std::reverse(edges + first, edges + active);
        top = next < count ? std::min(lowest_end, edges[next].at) : lowest_end;
        return active > 0;
    }

    // Insertion sort, until it proves to be the wrong one for this slab.
    void CutAndSort() {
        std::uint64_t moves_left = std::uint64_t{8} * active;
        for (unsigned i = 0; i < active; ++i) {
            SweepEdge e = edges[i];
            e.at = Leave(e);
            unsigned j = i;
            for (; j > 0 && BeforeInSlab(e, edges[j - 1]); --j) edges[j] = edges[j - 1];
            edges[j] = e;
            if (i - j > moves_left) {
                while (++i < active) edges[i].at = Leave(edges[i]);
                std::sort(edges, edges + active, BeforeInSlab);
                return;
            }
            moves_left -= i - j;
        }
    }

    gu_coord_t Leave(SweepEdge const& e) const {
        return e.y_end == top ? e.x_end : Cut::At(e, bottom, top);
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
    gu_coord_t bottom = 0, top = 0;
    gu_coord_t lowest_end = INT32_MAX;  // the lowest upper end of an active edge
};

}  // namespace

unsigned gu_polygon_to_trapezoids(unsigned stride, unsigned count, void const* points,
                                  TVarr<gu_trapezoid_t>& out) {
    Outline const outline(stride, count, points);
    Extent extent;
    outline.ForEachEdge([&](auto const& lower, auto const& upper) { extent.Add(lower, upper); });
    if (extent.edges == 0) {
        out.Reset();
        return 0;
    }

    Scratch<SweepEdge, kFew> scratch(extent.edges);
    SweepEdge* const edges = scratch.Get();
    SweepEdge* end = edges;
    outline.ForEachEdge([&](auto const& lower, auto const& upper) {
        *end++ = {lower.x, lower.y, upper.x, upper.y};
    });
    SortByLowerEnd(edges, extent.edges);

    std::uint64_t const total = CountTrapezoids(edges, extent.edges);
    if (total > UINT32_MAX) throw std::bad_array_new_length();
    auto const length = static_cast<unsigned>(total);
    out.Reset();
    out.Extend(length);
    out.Adjust(length);
    if (extent.Narrow())
        Sweep<NarrowCut>(edges, extent.edges).Run(out.Get());
    else
        Sweep<WideCut>(edges, extent.edges).Run(out.Get());
    return length;
}
