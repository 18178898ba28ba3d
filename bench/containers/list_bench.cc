// Lists of pointers and the pools below them, on one thread and on two.
#include <benchmark/benchmark.h>

#include <list>
#include <new>
#include <string>
#include <vector>

#include "containers/dplist.h"
#include "containers/pool.h"
#include "containers/slist.h"

namespace {

struct Single {
    void Add(void* data) { list.append(data); }
    void Clear() { list.clear(); }
    void Sort(int (*cmp)(void*, void const*)) { list.Sort(cmp); }
    slist_t list;
};

struct Double {
    void Add(void* data) { list.Append(data); }
    void Clear() { list.Clear(); }
    DPList list;
};

struct StdList {
    void Add(void* data) { list.push_back(data); }
    void Clear() { list.clear(); }
    void Sort(int (*cmp)(void*, void const*)) {
        list.sort([cmp](void* a, void* b) { return cmp(a, b) < 0; });
    }
    std::list<void*> list;
};

template <class List, bool kWalk>
void BM_AppendClear(benchmark::State& state) {
    int value = 0;
    for (auto _ : state) {
        List list;
        for (int i = 0; i < state.range(0); ++i) list.Add(&value);
        if constexpr (kWalk)
            for (void* const data : list.list) benchmark::DoNotOptimize(data);
        benchmark::DoNotOptimize(list);
        list.Clear();
    }
    state.SetItemsProcessed(state.iterations() * state.range(0));
}

int ByValue(void* a, void const* b) {
    int const x = *static_cast<int*>(a), y = *static_cast<int const*>(b);
    return x < y ? -1 : x > y;
}

template <class List>
void BM_Sort(benchmark::State& state) {
    std::vector<int> values(static_cast<std::size_t>(state.range(0)));
    unsigned seed = 1;
    for (int& value : values) value = static_cast<int>((seed = seed * 1664525 + 1013904223) >> 8);
    for (auto _ : state) {
        List list;
        for (int& value : values) list.Add(&value);
        list.Sort(ByValue);
        benchmark::DoNotOptimize(list);
    }
    state.SetItemsProcessed(state.iterations() * state.range(0));
}

constexpr std::size_t kRecordSize = 16;
Pool record_pool;

struct PoolRecords {
    static void* Make() { return record_pool.Alloc(kRecordSize, 8192); }
    static void Drop(void* record) { record_pool.Free(record); }
};

struct NewRecords {
    static void* Make() { return ::operator new(kRecordSize); }
    static void Drop(void* record) { ::operator delete(record); }
};

// Batches of records, made and dropped in the order in which they were made.
template <class Records>
void BM_Records(benchmark::State& state) {
    std::vector<void*> records(static_cast<std::size_t>(state.range(0)));
    for (auto _ : state) {
        for (void*& record : records) benchmark::DoNotOptimize(record = Records::Make());
        for (void* const record : records) Records::Drop(record);
    }
    state.SetItemsProcessed(state.iterations() * state.range(0));
}

using Bench = void(benchmark::State&);

void Pair(std::string const& workload, Bench* korbase, std::string const& peer_name, Bench* peer) {
    benchmark::internal::Benchmark* const both[] = {
        benchmark::RegisterBenchmark((workload + "/korbase").c_str(), korbase),
        benchmark::RegisterBenchmark((workload + "/" + peer_name).c_str(), peer)};
    for (auto* const one : both) one->Arg(10)->Arg(1000)->Threads(1)->Threads(2)->UseRealTime();
}

[[maybe_unused]] bool const registered = [] {
    Bench* const peer = BM_AppendClear<StdList, false>;
    Pair("append and clear list nodes", BM_AppendClear<Single, false>, "std::list", peer);
    Pair("append, walk, clear a list", BM_AppendClear<Single, true>, "std::list",
         BM_AppendClear<StdList, true>);
    Pair("append and clear two-way list nodes", BM_AppendClear<Double, false>, "std::list", peer);
    Pair("make and drop pooled records", BM_Records<PoolRecords>, "operator new",
         BM_Records<NewRecords>);
    return true;
}();

BENCHMARK_TEMPLATE(BM_Sort, Single)->Name("sort a list/korbase")->Arg(1000);
BENCHMARK_TEMPLATE(BM_Sort, StdList)->Name("sort a list/std::list")->Arg(1000);

}  // namespace
