// A line of text drawn by the library, and the same points added up by hand from ready outlines.
#include <benchmark/benchmark.h>
#include <geometry/stroke.h>

#include <string>
#include <vector>

namespace {

int const kCharacters = 95;
float const kHeight = 0.01F;

struct Sum {
    float x = 0.0F, y = 0.0F;
};

int AddPoints(int count, float const* xy, void* user) {
    auto& sum = *static_cast<Sum*>(user);
    sum.x += xy[0];
    sum.y += xy[2 * count - 1];
    return 0;
}

std::string Line(std::int64_t length) {
    std::string line;
    for (int i = 0; i < static_cast<int>(length); ++i)
        line += static_cast<char>(' ' + i * 7 % kCharacters);
    return line;
}

void BM_Plot(benchmark::State& state) {
    auto const line = Line(state.range(0));
    auto const count = static_cast<int>(line.size());
    for (auto _ : state) {
        Sum sum;
        stroke_plot_string(line.data(), count, AddPoints, &sum, 1.0F, 2.0F);
        benchmark::DoNotOptimize(sum);
    }
    state.SetItemsProcessed(state.iterations() * count);
}
BENCHMARK(BM_Plot)->Name("plot/korbase")->Arg(1000);

using Polyline = std::vector<float>;
using Outline = std::vector<Polyline>;

int KeepStroke(int count, float const* xy, void* user) {
    static_cast<Outline*>(user)->emplace_back(xy, xy + 2 * count);
    return 0;
}

void BM_AddByHand(benchmark::State& state) {
    std::vector<Outline> outlines(kCharacters);
    for (int i = 0; i < kCharacters; ++i) {
        auto const character = static_cast<char>(' ' + i);
        stroke_plot_string(&character, 1, KeepStroke, &outlines[static_cast<std::size_t>(i)], 0.0F,
                           0.0F);
    }

    auto const line = Line(state.range(0));
    stroke_draw_t draw = AddPoints;
    benchmark::DoNotOptimize(draw);  // called through a pointer, as the library does
    for (auto _ : state) {
        Sum sum;
        float x = 1.0F;
        float const y = 2.0F;
        float buffer[520];
        for (char const c : line) {
            for (auto const& stroke : outlines[static_cast<std::size_t>(c - ' ')]) {
                for (std::size_t k = 0; k < stroke.size(); k += 2) {
                    buffer[k] = stroke[k] + x;
                    buffer[k + 1] = stroke[k + 1] + y;
                }
                draw(static_cast<int>(stroke.size() / 2), buffer, &sum);
            }
            x += kHeight;
        }
        benchmark::DoNotOptimize(sum);
    }
    state.SetItemsProcessed(state.iterations() * static_cast<std::int64_t>(line.size()));
}
BENCHMARK(BM_AddByHand)->Name("plot/by hand")->Arg(1000);

}  // namespace
