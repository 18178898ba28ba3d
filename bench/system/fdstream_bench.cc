// Reading a file line by line through a descriptor, beside the standard file stream.
#include "system/fdstream.h"

#include <benchmark/benchmark.h>
#include <unistd.h>

#include <cstdlib>
#include <string>

namespace {

constexpr int kLines = 20000;

// A file of lines of 40 to 79 characters, removed at exit.
struct SampleFile {
    SampleFile() {
        close(mkstemp(path));
        std::ofstream out(path);
        for (int i = 0; i < kLines; ++i) out << std::string(40 + i % 40u, 'x') << '\n';
    }
    ~SampleFile() { unlink(path); }
    char path[32] = "/tmp/fdstream_bench.XXXXXX";
};

template <class Stream>
void BM_ReadLines(benchmark::State& state) {
    static SampleFile const file;
    std::string line;
    for (auto _ : state) {
        Stream in(file.path);
        int lines = 0;
        while (std::getline(in, line)) ++lines;
        if (lines != kLines) return state.SkipWithError("not read");
    }
    state.SetItemsProcessed(state.iterations() * kLines);
}
BENCHMARK_TEMPLATE(BM_ReadLines, std::ifdstream)->Name("read a file by lines/korbase");
BENCHMARK_TEMPLATE(BM_ReadLines, std::ifstream)->Name("read a file by lines/std::ifstream");

}  // namespace
