// Decomposition into horizontal trapezoids beside Boost.Polygon's; items are the trapezoids
// written.
#include <benchmark/benchmark.h>
#include <geometry/gu_trapezoids.h>

#include <boost/polygon/polygon.hpp>
#include <vector>

#include "shapes.h"

namespace {

using shapes::Points;

class Korbase {
public:
    explicit Korbase(Points const& outline) : points(outline) {}
    unsigned Decompose() {
        auto const count = static_cast<unsigned>(points.size());
        return gu_polygon_to_trapezoids(sizeof(gu_point_t), count, points.data(), out);
    }

private:
    Points points;
    TVarr<gu_trapezoid_t> out;
};

class Boost {
public:
    explicit Boost(Points const& points) {
        std::vector<boost::polygon::point_data<int>> corners;
        for (auto const& p : points) corners.emplace_back(p.x, p.y);
        outline.set(corners.begin(), corners.end());
    }
    unsigned Decompose() {
        boost::polygon::polygon_set_data<int> set;
        set.insert(outline);
        out.clear();
        set.get_trapezoids(out, boost::polygon::HORIZONTAL);
        return static_cast<unsigned>(out.size());
    }

private:
    boost::polygon::polygon_data<int> outline;
    std::vector<boost::polygon::polygon_data<int>> out;
};

template <class Subject>
void Decompose(benchmark::State& state, Points (*shape)(int)) {
    Subject subject(shape(static_cast<int>(state.range(0))));
    unsigned length = 0;
    for (auto _ : state) benchmark::DoNotOptimize(length = subject.Decompose());
    state.SetItemsProcessed(state.iterations() * length);
}

template <class Subject>
void DecomposeLayouts(benchmark::State& state) {
    std::vector<Subject> subjects;
    for (auto const& points : shapes::Layouts()) subjects.emplace_back(points);
    if (subjects.empty()) {
        state.SkipWithError("KORBASE_LAYOUTS does not name a folder with *.lay files");
        return;
    }
    std::int64_t length = 0;
    for (auto _ : state)
        for (auto& subject : subjects) length += subject.Decompose();
    state.SetItemsProcessed(length);
}

void Pair(std::string const& workload, Points (*shape)(int),
          std::vector<std::int64_t> const& sizes) {
    for (auto const size : sizes) {
        benchmark::RegisterBenchmark((workload + "/korbase").c_str(), Decompose<Korbase>, shape)
            ->Arg(size);
        benchmark::RegisterBenchmark((workload + "/Boost.Polygon").c_str(), Decompose<Boost>, shape)
            ->Arg(size);
    }
}

int const registered = [] {
    Pair("trapezoids star", shapes::Star, {10, 1000, 100000});
    Pair("trapezoids spiky star", shapes::Spikes, {10, 100, 1000});
    Pair("trapezoids comb", shapes::Comb, {10, 300});
    Pair("trapezoids staircase", shapes::Staircase, {10, 10000});
    Pair("trapezoids plate", shapes::Plate, {3, 100});
    benchmark::RegisterBenchmark("trapezoids layouts/korbase", DecomposeLayouts<Korbase>);
    benchmark::RegisterBenchmark("trapezoids layouts/Boost.Polygon", DecomposeLayouts<Boost>);
    return 0;
}();

}  // namespace
