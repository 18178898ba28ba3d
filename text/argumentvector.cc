#include "text/argumentvector.h"

#include <algorithm>
#include <cstddef>
#include <cstring>
#include <new>

namespace {

// What the 32-bit target can address, so that both targets refuse the same counts.
constexpr int kMaxCount = 536870909;

// A vector of null pointers for `count` texts and the end.
char** NewVector(int count) {
    if (count > kMaxCount) throw std::bad_array_new_length();
    return new char*[static_cast<std::size_t>(count) + 1]();
}

char* CopyText(char const* text) {
    if (!text) return nullptr;
    std::size_t const size = std::strlen(text) + 1;
    return static_cast<char*>(std::memcpy(new char[size], text, size));
}

}  // namespace

ArgumentVector::ArgumentVector() : argc(0), argv(NewVector(0)) {}

// Starts with none, so that the destructor frees the copies made when one fails.
ArgumentVector::ArgumentVector(int count, char** texts) : ArgumentVector() {
    count = std::max(count, 0);
    Reset(0, NewVector(count));
    for (; argc < count; ++argc) argv[argc] = CopyText(texts[argc]);
}

ArgumentVector::ArgumentVector(ArgumentVector const& other)
    : ArgumentVector(other.argc, other.argv) {}

ArgumentVector& ArgumentVector::operator=(ArgumentVector const& other) {
    if (this != &other) *this = ArgumentVector(other);
    return *this;
}

void ArgumentVector::Reset(int count, char** texts) {
    std::for_each(argv, argv + argc, [](char* text) { delete[] text; });
    delete[] argv;
    argc = std::max(count, 0);
    argv = texts;
}
