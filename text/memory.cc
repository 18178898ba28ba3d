#include "text/memory.h"

#include <cstdio>
#include <cstdlib>
#include <limits>

#include "text/out_of_memory.h"

using korbase_detail::OutOfMemory;

void korbase_detail::OutOfMemory() {
    std::fputs("out of memory", stderr);
    std::abort();
}

namespace {

constexpr unsigned kBlockStep = 256;  // elements

void* Checked(void* block) {
    if (!block) OutOfMemory();
    return block;
}

}  // namespace

void* SMalloc(unsigned size) { return Checked(std::malloc(size)); }

void* SCalloc(unsigned count, unsigned size) { return Checked(std::calloc(count, size)); }

void* SRealloc(void* ptr, unsigned size) {
    // A size of 0 is the platform's affair.
    // NOLINTNEXTLINE(clang-analyzer-optin.portability.UnixAPI)
    return Checked(ptr ? std::realloc(ptr, size) : std::malloc(size));
}

void* SArealloc(void* ptr, unsigned count, unsigned size) {
    unsigned const most = size ? std::numeric_limits<unsigned>::max() / size : 0;
    if (most < count) OutOfMemory();
    return SRealloc(ptr, count * size);
}

void* SBalloc(unsigned* capacity, void* ptr, unsigned needed, unsigned size) {
    if (*capacity >= needed) return ptr;
    unsigned const steps = needed / kBlockStep + 1;
    if (steps > std::numeric_limits<unsigned>::max() / kBlockStep) OutOfMemory();
    unsigned const grown = steps * kBlockStep;
    void* const block = SArealloc(ptr, grown, size);
    *capacity = grown;
    return block;
}
