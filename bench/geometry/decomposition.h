// What the benchmarks of the decompositions of outlines have in common. A subject is made from an
// outline, and its Decompose() cuts that and returns how many pieces came out.
#ifndef KORBASE_BENCH_GEOMETRY_DECOMPOSITION_H
#define KORBASE_BENCH_GEOMETRY_DECOMPOSITION_H

#include <benchmark/benchmark.h>

#include <boost/polygon/polygon.hpp>
#include <generic/tvarr>
#include <string>
#include <vector>

#include "shapes.h"

namespace decomposition {

using shapes::Points;

template <class Piece, unsigned (*Function)(unsigned, unsigned, void const*, TVarr<Piece>&)>
class Korbase {
public:
    explicit Korbase(Points const& outline) : points(outline) {}
    unsigned Decompose() {
        auto const count = static_cast<unsigned>(points.size());
        return Function(sizeof(gu_point_t), count, points.data(), out);
    }

private:
    Points points;
    TVarr<Piece> out;
};

// As one of Boost's kinds of outline.
template <class Outline>
Outline BoostOutline(Points const& points) {
    std::vector<boost::polygon::point_data<int>> corners;
    for (auto const& p : points) corners.emplace_back(p.x, p.y);
    Outline outline;
    outline.set(corners.begin(), corners.end());
    return outline;
}

template <class Subject>
void Run(benchmark::State& state, Points (*shape)(int)) {
    Subject subject(shape(static_cast<int>(state.range(0))));
    unsigned length = 0;
    for (auto _ : state) benchmark::DoNotOptimize(length = subject.Decompose());
    state.SetItemsProcessed(state.iterations() * length);
}

// Registers the library and its peer on `shape` in all sizes.
template <class Library, class Boost>
void Pair(std::string const& workload, Points (*shape)(int),
          std::vector<std::int64_t> const& sizes) {
    for (auto const size : sizes) {
        benchmark::RegisterBenchmark((workload + "/korbase").c_str(), Run<Library>, shape)
            ->Arg(size);
        benchmark::RegisterBenchmark((workload + "/Boost.Polygon").c_str(), Run<Boost>, shape)
            ->Arg(size);
    }
}

}  // namespace decomposition

#endif
