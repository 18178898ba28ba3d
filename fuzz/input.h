// The input of a fuzz target, taken apart from the front, and the check of its results.
#ifndef KORBASE_FUZZ_INPUT_H
#define KORBASE_FUZZ_INPUT_H

#include <algorithm>
#include <cstddef>
#include <cstdint>
#include <cstdio>
#include <cstdlib>
#include <cstring>
#include <string>

// Ends the program, so that libFuzzer keeps the input, and says what does not hold on standard
// output: standard error is closed while the library may report bad input there.
#define EXPECT(condition) ((condition) ? void() : Fail(__FILE__, __LINE__, #condition))

[[noreturn]] inline void Fail(char const* file, int line, char const* condition) {
    std::printf("%s:%d: not true: %s\n", file, line, condition);
    std::fflush(stdout);
    std::abort();
}

class Input {
public:
    Input(std::uint8_t const* bytes, std::size_t size) : next(bytes), end(bytes + size) {}

    std::size_t Left() const { return static_cast<std::size_t>(end - next); }

    // A number of the bytes that are left; what is missing is 0.
    template <class Number>
    Number Take() {
        Number number = 0;
        std::size_t const size = std::min(sizeof number, Left());
        if (size > 0) std::memcpy(&number, next, size);
        next += size;
        return number;
    }

    // The next `n` bytes, or as many as are left.
    std::string Bytes(std::size_t n) {
        std::string const bytes(next, next + std::min(n, Left()));
        next += bytes.size();
        return bytes;
    }
    std::string Rest() { return Bytes(Left()); }

private:
    std::uint8_t const* next;
    std::uint8_t const* end;
};

#endif
