// Dynamic arrays against std::vector: appending and sorting.
#include "generic/tvarr"

#include <benchmark/benchmark.h>

#include <cstdint>
#include <cstdlib>
#include <random>
#include <string>
#include <vector>

#include "text/string.h"

namespace {

struct KorbaseInts {
    void Add(int i) { array.App(i); }
    int* Data() { return array.Get(); }
    TVarr<int> array{16, VARR_DOUBLE};
};
struct StdInts {
    StdInts() { array.reserve(16); }
    void Add(int i) { array.push_back(i); }
    int* Data() { return array.data(); }
    std::vector<int> array;
};
struct KorbaseStrings {
    void Add(int) { array.App(text); }
    String_t* Data() { return array.Get(); }
    String_t text{"a layer name of some length"};
    TVarr<String_t> array{16, VARR_DOUBLE};
};
struct StdStrings {
    StdStrings() { array.reserve(16); }
    void Add(int) { array.push_back(text); }
    std::string* Data() { return array.data(); }
    std::string text{"a layer name of some length"};
    std::vector<std::string> array;
};

// A freed block of this size raises the allocator's thresholds once, for all that follow alike.
[[maybe_unused]] bool const warm = [] {
    void* block = std::malloc(8 << 20);
    benchmark::DoNotOptimize(block);
    std::free(block);
    return true;
}();

template <class Array>
void BM_Append(benchmark::State& state) {
    int const count = static_cast<int>(state.range(0));
    for (auto _ : state) {
        Array array;
        for (int i = 0; i < count; ++i) array.Add(i);
        benchmark::DoNotOptimize(array.Data());
        benchmark::ClobberMemory();
    }
    state.SetItemsProcessed(state.iterations() * count);
}
BENCHMARK_TEMPLATE(BM_Append, KorbaseInts)->Name("append ints/korbase")->Range(256, 1 << 16);
BENCHMARK_TEMPLATE(BM_Append, StdInts)->Name("append ints/std::vector")->Range(256, 1 << 16);
BENCHMARK_TEMPLATE(BM_Append, KorbaseStrings)->Name("append strings/korbase")->Range(256, 1 << 12);
BENCHMARK_TEMPLATE(BM_Append, StdStrings)->Name("append strings/std::vector")->Range(256, 1 << 12);

int CompareInts(int const* a, int const* b) { return *a < *b ? -1 : *a > *b; }

std::vector<int> RandomInts(std::int64_t count) {
    std::mt19937 random(1);
    std::vector<int> values(static_cast<std::size_t>(count));
    for (int& value : values) value = static_cast<int>(random());
    return values;
}

// Both copy the input first; qsort with a callback is what a C program would call.
void BM_SortKorbase(benchmark::State& state) {
    std::vector<int> const values = RandomInts(state.range(0));
    TVarr<int> array(static_cast<unsigned>(values.size()), VARR_DOUBLE);
    for (auto _ : state) {
        array.Cpy(static_cast<unsigned>(values.size()), values.data());
        array.Sort(CompareInts);
        benchmark::DoNotOptimize(array.Get());
    }
    state.SetItemsProcessed(state.iterations() * state.range(0));
}
void BM_SortC(benchmark::State& state) {
    std::vector<int> const values = RandomInts(state.range(0));
    for (auto _ : state) {
        std::vector<int> array(values);
        std::qsort(array.data(), array.size(), sizeof(int), [](void const* a, void const* b) {
            return CompareInts(static_cast<int const*>(a), static_cast<int const*>(b));
        });
        benchmark::DoNotOptimize(array.data());
    }
    state.SetItemsProcessed(state.iterations() * state.range(0));
}
BENCHMARK(BM_SortKorbase)->Name("sort ints/korbase")->Arg(1 << 12);
BENCHMARK(BM_SortC)->Name("sort ints/qsort")->Arg(1 << 12);

}  // namespace
