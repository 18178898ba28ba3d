// Maps from text to int: short numbered names, and long ones that share more than any node
// remembers of them. Keys are made beforehand and come in random order; each operation is timed
// over the whole map. Stored strings outlive their map: they end in the order in which they were
// made, so that later benchmarks do not find their strings scattered over the memory.
#include <benchmark/benchmark.h>

#include <algorithm>
#include <cstdint>
#include <map>
#include <optional>
#include <random>
#include <string>
#include <vector>

#include "generic/tmap"

namespace {

struct Korbase {
    using Key = String_t;
    using Map = TMap<String_t, int, GStringCmp>;
    static void Insert(Map& map, Key const& key, int value) { map.Insert(key, value); }
    static int Find(Map const& map, Key const& key) { return *map.Find(key); }
    static void Remove(Map& map, Key const& key) { map.Remove(key); }
    static int Sum(Map const& map) {
        int sum = 0;
        for (auto const& entry : map) sum += entry.value;
        return sum;
    }
};

struct Std {
    using Key = std::string;
    using Map = std::map<std::string, int>;
    static void Insert(Map& map, Key const& key, int value) { map.emplace(key, value); }
    static int Find(Map const& map, Key const& key) { return map.find(key)->second; }
    static void Remove(Map& map, Key const& key) { map.erase(key); }
    static int Sum(Map const& map) {
        int sum = 0;
        for (auto const& entry : map) sum += entry.second;
        return sum;
    }
};

// `count` numbered names in random order; another seed gives another order.
template <class Subject>
std::vector<typename Subject::Key> Names(char const* stem, int count, unsigned seed) {
    std::vector<int> numbers(static_cast<std::size_t>(count));
    for (int i = 0; i < count; ++i) numbers[static_cast<std::size_t>(i)] = i;
    std::shuffle(numbers.begin(), numbers.end(), std::mt19937(seed));
    std::vector<typename Subject::Key> names;
    names.reserve(numbers.size());
    for (int const number : numbers) names.emplace_back((stem + std::to_string(number)).c_str());
    return names;
}

template <class Subject>
void Fill(typename Subject::Map& map, std::vector<typename Subject::Key> const& names) {
    int value = 0;
    for (auto const& name : names) Subject::Insert(map, name, value++);
}

template <class Subject>
struct Filled {
    Filled(char const* stem, std::int64_t count)
        : names(Names<Subject>(stem, static_cast<int>(count), 1)) {
        Fill<Subject>(map, names);
    }
    std::vector<typename Subject::Key> names;
    typename Subject::Map map;
};

template <class Subject>
void Insert(benchmark::State& state, char const* stem) {
    auto const names = Names<Subject>(stem, static_cast<int>(state.range(0)), 1);
    std::optional<typename Subject::Map> map;
    for (auto _ : state) {
        state.PauseTiming();
        map.emplace();
        state.ResumeTiming();
        Fill<Subject>(*map, names);
    }
    state.SetItemsProcessed(state.iterations() * state.range(0));
}

template <class Subject>
void Find(benchmark::State& state, char const* stem) {
    Filled<Subject> const filled(stem, state.range(0));
    auto const names = Names<Subject>(stem, static_cast<int>(state.range(0)), 2);
    for (auto _ : state)
        for (auto const& name : names) benchmark::DoNotOptimize(Subject::Find(filled.map, name));
    state.SetItemsProcessed(state.iterations() * state.range(0));
}

template <class Subject>
void Remove(benchmark::State& state, char const* stem) {
    auto const names = Names<Subject>(stem, static_cast<int>(state.range(0)), 1);
    auto const order = Names<Subject>(stem, static_cast<int>(state.range(0)), 2);
    typename Subject::Map map;
    for (auto _ : state) {
        state.PauseTiming();
        Fill<Subject>(map, names);
        state.ResumeTiming();
        for (auto const& name : order) Subject::Remove(map, name);
    }
    state.SetItemsProcessed(state.iterations() * state.range(0));
}

template <class Subject>
void Walk(benchmark::State& state, char const* stem) {
    Filled<Subject> const filled(stem, state.range(0));
    for (auto _ : state) benchmark::DoNotOptimize(Subject::Sum(filled.map));
    state.SetItemsProcessed(state.iterations() * state.range(0));
}

constexpr char kShort[] = "signal_";
constexpr char kLong[] = "chip/core0/alu/adder/signal_";

void Add(std::string const& workload, char const* stem,
         void (*korbase)(benchmark::State&, char const*),
         void (*peer)(benchmark::State&, char const*)) {
    for (int const count : {1000, 100000}) {
        benchmark::RegisterBenchmark((workload + "/korbase").c_str(), korbase, stem)->Arg(count);
        benchmark::RegisterBenchmark((workload + "/std::map").c_str(), peer, stem)->Arg(count);
    }
}

[[maybe_unused]] bool const registered = [] {
    Add("map insert", kShort, Insert<Korbase>, Insert<Std>);
    Add("map find", kShort, Find<Korbase>, Find<Std>);
    Add("map remove", kShort, Remove<Korbase>, Remove<Std>);
    Add("map walk", kShort, Walk<Korbase>, Walk<Std>);
    Add("map insert long names", kLong, Insert<Korbase>, Insert<Std>);
    Add("map find long names", kLong, Find<Korbase>, Find<Std>);
    return true;
}();

}  // namespace
