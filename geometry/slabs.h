// What the decompositions of outlines into trapezoids and into rectangles have in common.
#ifndef KORBASE_GEOMETRY_SLABS_H
#define KORBASE_GEOMETRY_SLABS_H

#include <geometry/gu_types.h>

#include <algorithm>
#include <cstddef>
#include <cstdint>
#include <cstring>
#include <memory>
#include <new>

#include "geometry/radix_sort.h"

namespace korbase_detail {

// `n` records without a value, on the stack while they are few.
template <class T>
class Scratch {
public:
    explicit Scratch(std::size_t n) : many(n > kFew ? new T[n] : nullptr) {}
    T* Get() { return many ? many.get() : few; }

private:
    static constexpr std::size_t kFew = 128;
    T few[kFew];
    std::unique_ptr<T[]> many;
};

// Point `i` of records of `stride` bytes, of any alignment.
inline gu_point_t PointAt(unsigned stride, void const* points, unsigned i) {
    gu_point_t p;
    std::memcpy(&p, static_cast<char const*>(points) + std::size_t{i} * stride, sizeof p);
    return p;
}

// Calls visit(from, to) for each edge that is not horizontal, the one that closes the outline
// first.
template <class Visit>
void ForEachEdge(unsigned stride, unsigned count, void const* points, Visit visit) {
    if (count == 0) return;
    gu_point_t from = PointAt(stride, points, count - 1);
    for (unsigned i = 0; i < count; ++i) {
        gu_point_t const to = PointAt(stride, points, i);
        if (from.y != to.y) visit(from, to);
        from = to;
    }
}

// How many pairs the edges of all slabs make: half the sum, over the slabs, of the edges that cross
// the slab. low(edge) and high(edge) are the heights of its ends; the edges are sorted by the
// lower. Throws std::bad_array_new_length beyond 32 bits.
template <class Edge, class Low, class High>
unsigned CountPairs(Edge const* edges, unsigned count, Low low, High high) {
    Scratch<gu_coord_t> scratch(std::size_t{2} * count);
    gu_coord_t* const ends = scratch.Get();
    for (unsigned i = 0; i < count; ++i) ends[i] = high(edges[i]);
    RadixSort(ends, ends + count, count, [](gu_coord_t y) { return y; });

    std::uint64_t pieces = 0;
    unsigned begun = 0;
    for (unsigned ended = 0; ended < count;) {
        gu_coord_t y = ends[ended];
        if (begun < count) y = std::min(y, low(edges[begun]));
        while (begun < count && low(edges[begun]) == y) ++begun;
        while (ended < count && ends[ended] == y) ++ended;
        pieces += begun - ended;
    }
    if (pieces / 2 > UINT32_MAX) throw std::bad_array_new_length();
    return static_cast<unsigned>(pieces / 2);
}

}  // namespace korbase_detail

#endif
