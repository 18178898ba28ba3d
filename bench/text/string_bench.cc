// Strings against the standard ones: sharing, making, cutting.
#include "text/string.h"

#include <benchmark/benchmark.h>

#include <memory>
#include <string>

namespace {

std::string const kText(4096, 'x');

struct KorbaseShared {
    String_t text{kText.c_str()};
    auto Copy() const { return text; }
};
struct StdShared {
    std::shared_ptr<std::string const> text = std::make_shared<std::string const>(kText);
    auto Copy() const { return text; }
};

template <class Shared>
void BM_Copy(benchmark::State& state) {
    Shared const source;
    for (auto _ : state) {
        auto copy = source.Copy();
        benchmark::DoNotOptimize(copy);
    }
}
BENCHMARK_TEMPLATE(BM_Copy, KorbaseShared)->Name("copy a shared string/korbase");
BENCHMARK_TEMPLATE(BM_Copy, StdShared)->Name("copy a shared string/std::shared_ptr");

// A batch of strings of `kLength` characters made, then dropped.
template <class String, int kLength>
void BM_Make(benchmark::State& state) {
    constexpr int kBatch = 64;
    std::string const text(kLength, 'x');
    for (auto _ : state) {
        String strings[kBatch];
        for (auto& s : strings) s = String(text.c_str());
        benchmark::DoNotOptimize(strings);
    }
    state.SetItemsProcessed(state.iterations() * kBatch);
}
#define MAKE_STRINGS(name, length)                \
    BENCHMARK_TEMPLATE(BM_Make, String_t, length) \
        ->Name(name "/korbase")                   \
        ->ThreadRange(1, 2)                       \
        ->UseRealTime();                          \
    BENCHMARK_TEMPLATE(BM_Make, std::string, 64)  \
        ->Name(name "/std::string of 64")         \
        ->ThreadRange(1, 2)                       \
        ->UseRealTime()
MAKE_STRINGS("make a string of 16", 16);
MAKE_STRINGS("make a string of 64", 64);

// Eight characters out of a long text.
void BM_SubStrKorbase(benchmark::State& state) {
    String_t const text(kText.c_str());
    for (auto _ : state) {
        String_t piece = text.SubStr(100, 107);
        benchmark::DoNotOptimize(piece);
    }
}
void BM_SubStrStd(benchmark::State& state) {
    for (auto _ : state) {
        std::string piece = kText.substr(100, 8);
        benchmark::DoNotOptimize(piece);
    }
}
BENCHMARK(BM_SubStrKorbase)->Name("cut 8 of 4096 characters/korbase");
BENCHMARK(BM_SubStrStd)->Name("cut 8 of 4096 characters/std::string");

}  // namespace
