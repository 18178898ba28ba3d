#include "tests/geometry/allocations.h"

#include <gtest/gtest.h>
#include <malloc.h>

#include <algorithm>
#include <cstdlib>
#include <memory>
#include <new>

thread_local Allocations allocations;

void* operator new(std::size_t size) {
    if (++allocations.calls == allocations.fail_at) throw std::bad_alloc();
    void* const p = std::malloc(size);
    if (!p) throw std::bad_alloc();
    allocations.bytes += malloc_usable_size(p);
    // What was freed since the Reset, but allocated before, has made the difference negative.
    if (static_cast<std::ptrdiff_t>(allocations.bytes) > 0)
        allocations.peak = std::max(allocations.peak, allocations.bytes);
    return p;
}

void* operator new[](std::size_t size) { return ::operator new(size); }

void operator delete(void* p) noexcept {
    if (p) allocations.bytes -= malloc_usable_size(p);
    std::free(p);
}

void operator delete(void* p, std::size_t) noexcept { ::operator delete(p); }
void operator delete[](void* p) noexcept { ::operator delete(p); }
void operator delete[](void* p, std::size_t) noexcept { ::operator delete(p); }

namespace {

TEST(Allocations, CountsThePeak) {
    allocations.Reset();
    for (int i = 0; i < 3; ++i) std::make_unique<char[]>(1000)[0] = 1;
    EXPECT_EQ(3U, allocations.calls);
    EXPECT_EQ(0U, allocations.bytes);
    EXPECT_GE(allocations.peak, 1000U);
    EXPECT_LT(allocations.peak, 1100U);
}

}  // namespace
