// Collapsing paths, from a text to a result of one's own.
#include <benchmark/benchmark.h>
#include <glib.h>

#include <string>

#include "system/pathname.h"

namespace {

// `components` components of 3 to 12 characters, every fourth followed by something to take out.
std::string Path(int components) {
    std::string path;
    for (int i = 0; i < components; ++i) {
        path += '/' + std::string(static_cast<std::size_t>(3 + i * 7 % 10), 'a');
        if (i % 4 == 3) path += i % 3 == 0 ? "/.." : i % 3 == 1 ? "/." : "/";
    }
    return path;
}

void BM_CollapseKorbase(benchmark::State& state) {
    std::string const text = Path(static_cast<int>(state.range(0)));
    for (auto _ : state) {
        Pathname path(text.c_str());
        path.Collapse();
        benchmark::DoNotOptimize(path.Get());
    }
    state.SetItemsProcessed(state.iterations());
}
void BM_CollapseGlib(benchmark::State& state) {
    std::string const text = Path(static_cast<int>(state.range(0)));
    for (auto _ : state) {
        char* const path = g_canonicalize_filename(text.c_str(), "/");
        benchmark::DoNotOptimize(path);
        g_free(path);
    }
    state.SetItemsProcessed(state.iterations());
}
BENCHMARK(BM_CollapseKorbase)->Name("collapse a path/korbase")->Arg(4)->Arg(32)->Arg(1024);
BENCHMARK(BM_CollapseGlib)->Name("collapse a path/GLib")->Arg(4)->Arg(32)->Arg(1024);

}  // namespace
