// Formatting onto a stream, beside the C library's formatting into a buffer that is then written.
#include <benchmark/benchmark.h>

#include <cstdio>
#include <cstdlib>
#include <ostream>
#include <streambuf>

#include "text/format.h"
#include "text/strfmt.h"

namespace {

// Keeps the last few characters, so that the output costs next to nothing.
class Ring : public std::streambuf {
    char buffer[256];

    int overflow(int c) override {
        setp(buffer, buffer + sizeof buffer);
        return sputc(static_cast<char>(c));
    }
};

struct Korbase {
    static void Print(std::ostream& out, int number, char const* text, double real) {
        StrFmt(out, "%5d %-8s %.3f", number, text, real);
    }
    static void PrintTexts(std::ostream& out, char** texts) {
        StrFormat(out, "%5d %-8s %.3f", 3, texts);
    }
};

struct Classic {
    static void Print(std::ostream& out, int number, char const* text, double real) {
        char buffer[128];
        out.write(buffer,
                  std::snprintf(buffer, sizeof buffer, "%5d %-8s %.3f", number, text, real));
    }
    static void PrintTexts(std::ostream& out, char** texts) {
        Print(out, static_cast<int>(std::strtol(texts[0], nullptr, 10)), texts[1],
              std::strtod(texts[2], nullptr));
    }
};

template <class Subject>
void BM_Values(benchmark::State& state) {
    Ring ring;
    std::ostream out(&ring);
    int number = 0;
    for (auto _ : state) {
        ++number;
        Subject::Print(out, number & 0xFFFF, "metal1", (number & 0xFFF) * 0.37);
    }
    state.SetItemsProcessed(state.iterations());
}
BENCHMARK_TEMPLATE(BM_Values, Korbase)->Name("format values/korbase");
BENCHMARK_TEMPLATE(BM_Values, Classic)->Name("format values/snprintf");

template <class Subject>
void BM_Texts(benchmark::State& state) {
    Ring ring;
    std::ostream out(&ring);
    char number[] = "1234", text[] = "metal1", real[] = "456.789";
    char* texts[] = {number, text, real};
    for (auto _ : state) Subject::PrintTexts(out, texts);
    state.SetItemsProcessed(state.iterations());
}
BENCHMARK_TEMPLATE(BM_Texts, Korbase)->Name("format texts/korbase");
BENCHMARK_TEMPLATE(BM_Texts, Classic)->Name("format texts/snprintf");

}  // namespace
