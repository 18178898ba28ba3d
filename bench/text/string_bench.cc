// Strings against the standard ones: sharing, making, cutting.
#include "text/string.h"

#include <benchmark/benchmark.h>

#include <memory>
#include <string>
#include <utility>

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
[[maybe_unused]] bool const registered = [] {
    for (auto const& [name, korbase] : {std::pair("make a string of 16", BM_Make<String_t, 16>),
                                        std::pair("make a string of 64", BM_Make<String_t, 64>)})
        for (auto* const one :
             {benchmark::RegisterBenchmark((std::string(name) + "/korbase").c_str(), korbase),
              benchmark::RegisterBenchmark((std::string(name) + "/std::string of 64").c_str(),
                                           BM_Make<std::string, 64>)})
            one->ThreadRange(1, 2)->UseRealTime();
    return true;
}();

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
