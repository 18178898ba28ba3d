// Growing a wavy outline with mitred corners.
#include <benchmark/benchmark.h>

#include <cmath>
#include <polyclipping/clipper.hpp>
#include <vector>

#include "geometry/gu_sizing.h"

namespace {

int const kDistance = 100;

// A circle whose radius swings 20 times; in database units of a large layout.
gu_point_t WavyPoint(int i, int count) {
    double const angle = 6.283185307179586 * i / count;
    double const radius = 1e6 * (1 + 0.2 * std::sin(20 * angle));
    return {static_cast<gu_coord_t>(std::lround(radius * std::cos(angle))),
            static_cast<gu_coord_t>(std::lround(radius * std::sin(angle)))};
}

class Korbase {
public:
    explicit Korbase(int count) {
        for (int i = 0; i < count; ++i) outline.push_back(WavyPoint(i, count));
    }
    void Size() {
        sized = outline;
        int const count = gu_size_polygon(static_cast<int>(sized.size()), sized.data(), kDistance);
        benchmark::DoNotOptimize(count);
    }

private:
    std::vector<gu_point_t> outline, sized;
};

class Polyclipping {
public:
    explicit Polyclipping(int count) {
        for (int i = 0; i < count; ++i) {
            gu_point_t const p = WavyPoint(i, count);
            outline.emplace_back(p.x, p.y);
        }
    }
    void Size() {
        ClipperLib::ClipperOffset offset(1000 /* mitre limit, out of reach */);
        offset.AddPath(outline, ClipperLib::jtMiter, ClipperLib::etClosedPolygon);
        offset.Execute(sized, kDistance);
        benchmark::DoNotOptimize(sized.data());
    }

private:
    ClipperLib::Path outline;
    ClipperLib::Paths sized;
};

template <class Subject>
void BM_Size(benchmark::State& state) {
    Subject subject(static_cast<int>(state.range(0)));
    for (auto _ : state) subject.Size();
    state.SetItemsProcessed(state.iterations() * state.range(0));
}
BENCHMARK_TEMPLATE(BM_Size, Korbase)->Name("size an outline/korbase")->Arg(100)->Arg(10000);
BENCHMARK_TEMPLATE(BM_Size, Polyclipping)
    ->Name("size an outline/polyclipping")
    ->Arg(100)
    ->Arg(10000);

}  // namespace
