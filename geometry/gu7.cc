// Rectangles of an outline: a plane sweep. Vertical edges never change places, so the edges that
// cross a slab stay in x order from slab to slab: each slab merges in those that begin at its
// bottom, writes the pairs, and drops those that end at its top.
//
// Rectangles of a path: each one goes from a start corner to a far corner, where the next one
// starts.
#include "geometry/gu_rects.h"

#include <korbase_assert.h>

#include <algorithm>
#include <cstdint>
#include <utility>

#include "geometry/radix_sort.h"
#include "geometry/slabs.h"
#include "geometry/wrap.h"

using korbase_detail::CountPairs;
using korbase_detail::ForEachEdge;
using korbase_detail::PointAt;
using korbase_detail::RadixSort;
using korbase_detail::Scratch;
using korbase_detail::WrapAdd;
using korbase_detail::WrapSub;

namespace {

// By lower end, then by x.
void SortEdges(OEdge_t* edges, unsigned count) {
    Scratch<OEdge_t> spare(count);
    RadixSort(edges, spare.Get(), count, [](OEdge_t const& e) { return e.y0; });
    auto const by_x = [](OEdge_t const& a, OEdge_t const& b) { return a.x < b.x; };
    OEdge_t* const end = edges + count;
    for (OEdge_t *low = edges, *high; low < end; low = high) {
        high = std::find_if(low, end, [low](OEdge_t const& e) { return e.y0 != low->y0; });
        if (!std::is_sorted(low, high, by_x)) std::sort(low, high, by_x);
    }
}

struct ActiveEdge {
    gu_coord_t x, y_end;
};

class Sweep {
public:
    // `room` is for `n` edges.
    Sweep(OEdge_t const* sorted, unsigned n, ActiveEdge* room)
        : next(sorted), end(sorted + n), edges(room), bottom(sorted->y0) {}

    // Writes all rectangles.
    void Run(gu_rect_t* out) {
        while (Admit()) out = WriteSlab(out);
    }

private:
    // Merges the edges that begin at `bottom` in, from the right, and finds the top of the slab.
    // Returns whether there is a slab.
    bool Admit() {
        OEdge_t const* const first = next;
        for (; next < end && next->y0 == bottom; ++next)
            lowest_end = std::min(lowest_end, next->y1);
        ActiveEdge* old = edges + active;
        active += static_cast<unsigned>(next - first);
        ActiveEdge* to = edges + active;
        for (OEdge_t const* e = next; e > first; --e) {
            while (old > edges && old[-1].x > e[-1].x) *--to = *--old;
            *--to = {e[-1].x, e[-1].y1};
        }
        top = next < end ? std::min(lowest_end, next->y0) : lowest_end;
        return active > 0;
    }

    // Writes the pairs, and goes up to the next slab with the edges that do not end here.
    gu_rect_t* WriteSlab(gu_rect_t* out) {
        for (unsigned i = 0; i + 1 < active; i += 2)
            *out++ = {edges[i].x, bottom, edges[i + 1].x, top};
        if (lowest_end == top) DropEnded();
        bottom = top;
        return out;
    }

    void DropEnded() {
        lowest_end = INT32_MAX;
        unsigned kept = 0;
        for (unsigned i = 0; i < active; ++i) {
            ActiveEdge const e = edges[i];
            edges[kept] = e;
            bool const stays = e.y_end != top;
            kept += stays;
            lowest_end = std::min(lowest_end, stays ? e.y_end : INT32_MAX);
        }
        active = kept;
    }

    OEdge_t const* next;  // the first edge that waits
    OEdge_t const* end;
    ActiveEdge* edges;  // those that cross the slab, by x
    unsigned active = 0;
    gu_coord_t bottom, top = 0;
    gu_coord_t lowest_end = INT32_MAX;  // of an active edge
};

}  // namespace

unsigned gu_polygon_to_rects(unsigned stride, unsigned count, void const* points,
                             TVarr<gu_rect_t>& out) {
    Scratch<OEdge_t> scratch(count);
    OEdge_t* const edges = scratch.Get();
    OEdge_t* end = edges;
    ForEachEdge(stride, count, points, [&](gu_point_t const& from, gu_point_t const& to) {
        *end++ = {std::min(from.y, to.y), std::max(from.y, to.y), from.x};
    });
    auto const edge_count = static_cast<unsigned>(end - edges);
    if (edge_count == 0) {
        out.Reset();
        return 0;
    }
    SortEdges(edges, edge_count);

    unsigned const length = CountPairs(
        edges, edge_count, [](OEdge_t const& e) { return e.y0; },
        [](OEdge_t const& e) { return e.y1; });
    Scratch<ActiveEdge> active(edge_count);
    out.Reset();
    out.Extend(length);
    out.Adjust(length);
    Sweep(edges, edge_count, active.Get()).Run(out.Get());
    return length;
}

namespace {

class Path {
public:
    Path(unsigned stride, void const* points, gu_coord_t width, gu_PathType_t ends)
        : stride(stride), points(points), half(width / 2), ends(ends) {}

    gu_point_t Point(unsigned i) const { return PointAt(stride, points, i); }

    gu_rect_t Square() const {
        gu_point_t const p = Point(0);
        return {WrapSub(p.x, half), WrapSub(p.y, half), WrapAdd(p.x, half), WrapAdd(p.y, half)};
    }

    // The start corner of the first rectangle.
    gu_point_t Start() const {
        gu_point_t const p = Point(0), q = Point(1);
        if (p.y == q.y) {
            gu_coord_t const d = Half(p.x < q.x);
            return {WrapSub(p.x, Beyond(d)), WrapSub(p.y, d)};
        }
        gu_coord_t const d = Half(p.y < q.y);
        return {WrapAdd(p.x, d), WrapSub(p.y, Beyond(d))};
    }

    // The far corner of the rectangle that started at `start` and bends at point `i`.
    gu_point_t Bend(gu_point_t const& start, unsigned i) const {
        gu_point_t const before = Point(i - 1), at = Point(i), after = Point(i + 1);
        if (before.y == at.y)
            return {WrapAdd(at.x, Half(after.y >= before.y)), Mirror(start.y, at.y)};
        return {Mirror(start.x, at.x), WrapSub(at.y, Half(after.x >= at.x))};
    }

    // The far corner of the last rectangle, which ends at point `i`.
    gu_point_t Finish(gu_point_t const& start, unsigned i) const {
        gu_point_t const before = Point(i - 1), at = Point(i);
        if (before.y == at.y)
            return {WrapAdd(at.x, Beyond(Half(before.x < at.x))), Mirror(start.y, at.y)};
        return {Mirror(start.x, at.x), WrapAdd(at.y, Beyond(Half(before.y < at.y)))};
    }

private:
    gu_coord_t Half(bool forward) const { return forward ? half : WrapSub(0, half); }

    // How far an end reaches beyond its point in the direction of `d`.
    gu_coord_t Beyond(gu_coord_t d) const {
        switch (ends) {
            case 0: return 0;
            case 1: return d;
            default: KORBASE_ASSERT(0);
        }
    }

    static gu_coord_t Mirror(gu_coord_t x, gu_coord_t centre) {
        return WrapSub(WrapAdd(centre, centre), x);
    }

    unsigned stride;
    void const* points;
    gu_coord_t half;
    gu_PathType_t ends;
};

gu_rect_t Between(gu_point_t const& a, gu_point_t const& b) {
    return {std::min(a.x, b.x), std::min(a.y, b.y), std::max(a.x, b.x), std::max(a.y, b.y)};
}

}  // namespace

unsigned gu_path_to_rects(unsigned stride, unsigned count, void const* points, gu_coord_t width,
                          gu_PathType_t ends, TVarr<gu_rect_t>& out) {
    out.Reset();
    if (count == 0) return 0;
    Path const path(stride, points, width, ends);
    if (count == 1) {
        out.App(path.Square());
        return 1;
    }
    out.Extend(count - 1);
    gu_point_t start = path.Start();
    for (unsigned i = 1; i < count; ++i) {
        gu_point_t const far = i + 1 < count ? path.Bend(start, i) : path.Finish(start, i);
        out.Ass(Between(start, far));
        start = far;
    }
    return count - 1;
}
