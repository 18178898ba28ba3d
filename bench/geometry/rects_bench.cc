// Decomposition into rectangles beside Boost.Polygon's; items are the rectangles written.
#include <benchmark/benchmark.h>
#include <geometry/gu_rects.h>

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
        return gu_polygon_to_rects(sizeof(gu_point_t), count, points.data(), out);
    }

private:
    Points points;
    TVarr<gu_rect_t> out;
};

class Boost {
public:
    explicit Boost(Points const& points) {
        std::vector<boost::polygon::point_data<int>> corners;
        for (auto const& p : points) corners.emplace_back(p.x, p.y);
        outline.set(corners.begin(), corners.end());
    }
    unsigned Decompose() {
        out.clear();
        boost::polygon::get_rectangles(out, outline, boost::polygon::HORIZONTAL);
        return static_cast<unsigned>(out.size());
    }

private:
    boost::polygon::polygon_90_data<int> outline;
    std::vector<boost::polygon::rectangle_data<int>> out;
};

template <class Subject>
void Decompose(benchmark::State& state, Points (*shape)(int)) {
    Subject subject(shape(static_cast<int>(state.range(0))));
    unsigned length = 0;
    for (auto _ : state) benchmark::DoNotOptimize(length = subject.Decompose());
    state.SetItemsProcessed(state.iterations() * length);
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
    Pair("rectangles plate", shapes::Plate, {3, 100});
    Pair("rectangles staircase", shapes::Staircase, {10, 10000});
    Pair("rectangles comb", shapes::Comb, {10, 300, 3000});
    return 0;
}();

}  // namespace
