// Numbers from and to text, beside the standard conversions. A peer that knows no scale letters
// parses the digits and looks its factor up in a table.
#include <benchmark/benchmark.h>

#include <charconv>
#include <cmath>
#include <cstdio>
#include <cstdlib>
#include <cstring>
#include <random>
#include <string>
#include <vector>

#include "text/str.h"

namespace {

char const* const kNumbers[] = {"-123.456", "4.7K", "460n", "-0.123456789012345678"};

double LetterFactor(char c) {
    switch (c) {
        case 'K': return 1e3;
        case 'n': return 1e-9;
        default: return 1;
    }
}

struct Korbase {
    static double Parse(char const* text) {
        double value = 0;
        str_todouble(text, &value);
        return value;
    }
    static char const* Print(char* buffer, unsigned size, int value) {
        return str_int2str10(buffer, size, value, 0, '\0');
    }
    static char const* PrintHex(char* buffer, unsigned size, int value) {
        return str_int2strradix(buffer, size, static_cast<unsigned>(value), 8, '0', 16);
    }
};

struct KorbaseExactCase {
    static double Parse(char const* text) {
        double value = 0;
        str_ctodouble(text, &value);
        return value;
    }
};

struct Classic {  // strtod and snprintf
    static double Parse(char const* text) {
        char* end = nullptr;
        double const value = std::strtod(text, &end);
        return value * LetterFactor(*end);
    }
    static char const* Print(char* buffer, unsigned size, int value) {
        std::snprintf(buffer, size, "%d", value);
        return buffer;
    }
    static char const* PrintHex(char* buffer, unsigned size, int value) {
        std::snprintf(buffer, size, "0x%08x", static_cast<unsigned>(value));
        return buffer;
    }
};

struct Charconv {  // std::from_chars and std::to_chars
    static double Parse(char const* text) {
        double value = 0;
        auto const result = std::from_chars(text, text + std::strlen(text), value);
        return value * LetterFactor(*result.ptr);
    }
    static char const* Print(char* buffer, unsigned size, int value) {
        *std::to_chars(buffer, buffer + size, value).ptr = '\0';
        return buffer;
    }
};

template <class Subject>
void BM_Parse(benchmark::State& state) {
    char const* text = kNumbers[state.range(0)];
    state.SetLabel(text);
    for (auto _ : state) {
        benchmark::DoNotOptimize(text);
        benchmark::DoNotOptimize(Subject::Parse(text));
    }
}
BENCHMARK_TEMPLATE(BM_Parse, Korbase)->Name("parse number/korbase")->DenseRange(0, 3);
BENCHMARK_TEMPLATE(BM_Parse, Classic)->Name("parse number/strtod")->DenseRange(0, 3);
BENCHMARK_TEMPLATE(BM_Parse, Charconv)->Name("parse number/std::from_chars")->DenseRange(0, 3);
BENCHMARK_TEMPLATE(BM_Parse, KorbaseExactCase)
    ->Name("parse number by case/korbase")
    ->DenseRange(0, 3);
BENCHMARK_TEMPLATE(BM_Parse, Classic)->Name("parse number by case/strtod")->DenseRange(0, 3);

// 1,024 values of all lengths, so that no branch learns the number of digits.
std::vector<int> Values() {
    std::mt19937 random(9);
    std::vector<int> values(1024);
    for (int& value : values) value = static_cast<int>(random()) >> (random() % 31);
    return values;
}

template <char const* (*print)(char*, unsigned, int)>
void BM_Print(benchmark::State& state) {
    std::vector<int> const values = Values();
    char buffer[16];
    for (auto _ : state)
        for (int const value : values) {
            benchmark::DoNotOptimize(print(buffer, sizeof buffer, value));
            benchmark::ClobberMemory();
        }
    state.SetItemsProcessed(state.iterations() * static_cast<int>(values.size()));
}
BENCHMARK_TEMPLATE(BM_Print, Korbase::Print)->Name("print int/korbase");
BENCHMARK_TEMPLATE(BM_Print, Classic::Print)->Name("print int/snprintf");
BENCHMARK_TEMPLATE(BM_Print, Charconv::Print)->Name("print int/std::to_chars");
BENCHMARK_TEMPLATE(BM_Print, Korbase::PrintHex)->Name("print hex/korbase");
BENCHMARK_TEMPLATE(BM_Print, Classic::PrintHex)->Name("print hex/snprintf");

struct EngineeringClassic {
    static void Print(char* buffer, double x) { std::snprintf(buffer, 16, "%.2e", x); }
};
struct EngineeringCharconv {
    static void Print(char* buffer, double x) {
        *std::to_chars(buffer, buffer + 15, x, std::chars_format::scientific, 2).ptr = '\0';
    }
};
struct EngineeringKorbase {
    static void Print(char* buffer, double x) { str_tosc_r(buffer, x); }
};

template <class Subject>
void BM_Engineering(benchmark::State& state) {
    std::mt19937 random(9);
    std::uniform_real_distribution<double> exponent(-17.9, 12.9);
    std::vector<double> values(1024);
    for (double& value : values) value = std::pow(10.0, exponent(random));
    char buffer[16];
    for (auto _ : state)
        for (double const value : values) {
            Subject::Print(buffer, value);
            benchmark::ClobberMemory();
        }
    state.SetItemsProcessed(state.iterations() * static_cast<int>(values.size()));
}
BENCHMARK_TEMPLATE(BM_Engineering, EngineeringKorbase)->Name("three-digit text/korbase");
BENCHMARK_TEMPLATE(BM_Engineering, EngineeringClassic)->Name("three-digit text/snprintf");
BENCHMARK_TEMPLATE(BM_Engineering, EngineeringCharconv)->Name("three-digit text/std::to_chars");

}  // namespace
