// Hash tables from text to int, of random names and of numbered ones, which the table's hash puts
// into long runs of neighbouring slots. Keys are made beforehand; those that are looked up are
// other strings than those stored, and come in another order. Stored strings outlive their table:
// they end in the order in which they were made, not in that of its slots, which would scatter the
// strings of all later benchmarks over the memory.
#include <benchmark/benchmark.h>

#include <algorithm>
#include <cstdint>
#include <optional>
#include <random>
#include <string>
#include <unordered_map>
#include <vector>

#include "generic/gohash"

namespace {

struct Korbase {
    using Key = String_t;
    using Table = OHashTable<String_t, StrCnt>;
    static void Add(Table& table, Key const& key) { table.Add(key); }
    static bool Has(Table const& table, Key const& key) { return table.Find(key) != nullptr; }
    static void Del(Table& table, Key const& key) { table.Del(key); }
};

struct Std {
    using Key = std::string;
    using Table = std::unordered_map<std::string, int>;
    static void Add(Table& table, Key const& key) { table.emplace(key, 0); }
    static bool Has(Table const& table, Key const& key) { return table.find(key) != table.end(); }
    static void Del(Table& table, Key const& key) { table.erase(key); }
};

// 4 to 12 letters.
std::string RandomName(unsigned number) {
    std::uint64_t random = (number + 1) * 0x9E3779B97F4A7C15U;
    random = (random ^ random >> 29) * 0xBF58476D1CE4E5B9U;
    std::string name(4 + random % 9, 'a');
    for (char& c : name) {
        random = (random ^ random >> 32) * 0x94D049BB133111EBU;
        c = static_cast<char>('a' + (random >> 40) % 26);
    }
    return name;
}

std::string NumberedName(unsigned number) { return "net" + std::to_string(number); }

// Names of the numbers from `first` on, in random order unless `seed` is 0.
template <class Subject>
std::vector<typename Subject::Key> Names(std::string (*name)(unsigned), unsigned first,
                                         std::int64_t count, unsigned seed) {
    std::vector<unsigned> numbers(static_cast<std::size_t>(count));
    for (auto& number : numbers) number = first++;
    if (seed) std::shuffle(numbers.begin(), numbers.end(), std::mt19937(seed));
    std::vector<typename Subject::Key> names;
    names.reserve(numbers.size());
    for (unsigned const number : numbers) names.emplace_back(name(number).c_str());
    return names;
}

template <class Subject>
void Insert(benchmark::State& state, std::string (*name)(unsigned)) {
    auto const names = Names<Subject>(name, 0, state.range(0), 0);
    std::optional<typename Subject::Table> table;
    for (auto _ : state) {
        state.PauseTiming();
        table.emplace();
        state.ResumeTiming();
        for (auto const& key : names) Subject::Add(*table, key);
    }
    state.SetItemsProcessed(state.iterations() * state.range(0));
}

template <class Subject>
struct Filled {
    Filled(std::string (*name)(unsigned), std::int64_t count)
        : keys(Names<Subject>(name, 0, count, 0)) {
        for (auto const& key : keys) Subject::Add(table, key);
    }
    std::vector<typename Subject::Key> keys;
    typename Subject::Table table;
};

template <class Subject>
void Find(benchmark::State& state, std::string (*name)(unsigned), bool present) {
    auto const count = state.range(0);
    Filled<Subject> const filled(name, count);
    auto const names = Names<Subject>(name, present ? 0 : static_cast<unsigned>(count), count, 1);
    for (auto _ : state)
        for (auto const& key : names) benchmark::DoNotOptimize(Subject::Has(filled.table, key));
    state.SetItemsProcessed(state.iterations() * count);
}

template <class Subject>
void Hit(benchmark::State& state, std::string (*name)(unsigned)) {
    Find<Subject>(state, name, true);
}

template <class Subject>
void Miss(benchmark::State& state, std::string (*name)(unsigned)) {
    Find<Subject>(state, name, false);
}

// Takes each key out and puts it back.
template <class Subject>
void DelAdd(benchmark::State& state, std::string (*name)(unsigned)) {
    auto const names = Names<Subject>(name, 0, state.range(0), 1);
    Filled<Subject> filled(name, state.range(0));
    for (auto _ : state)
        for (auto const& key : names) {
            Subject::Del(filled.table, key);
            Subject::Add(filled.table, key);
        }
    state.SetItemsProcessed(state.iterations() * state.range(0));
}

using Bench = void(benchmark::State&, std::string (*)(unsigned));

void Pair(std::string const& workload, Bench* korbase, Bench* peer) {
    struct {
        char const* title;
        std::string (*name)(unsigned);
    } const kinds[] = {{" random names", RandomName}, {" numbered names", NumberedName}};
    for (auto const& kind : kinds)
        for (int const count : {1000, 100000, 1000000}) {
            std::string const title = workload + kind.title;
            benchmark::RegisterBenchmark((title + "/korbase").c_str(), korbase, kind.name)
                ->Arg(count);
            benchmark::RegisterBenchmark((title + "/std::unordered_map").c_str(), peer, kind.name)
                ->Arg(count);
        }
}

[[maybe_unused]] bool const registered = [] {
    Pair("hash insert", Insert<Korbase>, Insert<Std>);
    Pair("hash hit", Hit<Korbase>, Hit<Std>);
    Pair("hash miss", Miss<Korbase>, Miss<Std>);
    Pair("hash delete and add", DelAdd<Korbase>, DelAdd<Std>);
    return true;
}();

}  // namespace
