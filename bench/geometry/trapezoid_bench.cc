// Decomposition into horizontal trapezoids beside Boost.Polygon's; items are the trapezoids
// written.
#include <geometry/gu_trapezoids.h>

#include "decomposition.h"

namespace {

using shapes::Points;
using Korbase = decomposition::Korbase<gu_trapezoid_t, gu_polygon_to_trapezoids>;

class Boost {
    using Outline = boost::polygon::polygon_data<int>;

public:
    explicit Boost(Points const& points) : outline(decomposition::BoostOutline<Outline>(points)) {}
    unsigned Decompose() {
        boost::polygon::polygon_set_data<int> set;
        set.insert(outline);
        out.clear();
        set.get_trapezoids(out, boost::polygon::HORIZONTAL);
        return static_cast<unsigned>(out.size());
    }

private:
    Outline outline;
    std::vector<boost::polygon::polygon_data<int>> out;
};

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

int const registered = [] {
    auto const pair = decomposition::Pair<Korbase, Boost>;
    pair("trapezoids star", shapes::Star, {10, 1000, 100000});
    pair("trapezoids spiky star", shapes::Spikes, {10, 100, 1000});
    pair("trapezoids comb", shapes::Comb, {10, 300});
    pair("trapezoids staircase", shapes::Staircase, {10, 10000});
    pair("trapezoids plate", shapes::Plate, {3, 100});
    benchmark::RegisterBenchmark("trapezoids layouts/korbase", DecomposeLayouts<Korbase>);
    benchmark::RegisterBenchmark("trapezoids layouts/Boost.Polygon", DecomposeLayouts<Boost>);
    return 0;
}();

}  // namespace
