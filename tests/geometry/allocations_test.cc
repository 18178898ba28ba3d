#include "tests/geometry/allocations.h"

#include <gtest/gtest.h>
#include <malloc.h>

#include <algorithm>
#include <cstdlib>
#include <memory>
#include <new>

Allocations& HeapUse() {
    thread_local Allocations use;
    return use;
}

namespace {

// Not inlined, since the compiler then takes a replaced operator and malloc for a mismatched pair.
[[gnu::noinline]] void* Take(std::size_t size) {
    if (++HeapUse().calls == HeapUse().fail_at) throw std::bad_alloc();
    void* const p = std::malloc(size);
    if (!p) throw std::bad_alloc();
    Allocations& use = HeapUse();
    use.bytes += malloc_usable_size(p);
    // What was freed since the Reset, but allocated before, has made the difference negative.
    if (static_cast<std::ptrdiff_t>(use.bytes) > 0) use.peak = std::max(use.peak, use.bytes);
    return p;
}

[[gnu::noinline]] void Give(void* p) {
    if (p) HeapUse().bytes -= malloc_usable_size(p);
    std::free(p);
}

}  // namespace

void* operator new(std::size_t size) { return Take(size); }
void* operator new[](std::size_t size) { return Take(size); }
void operator delete(void* p) noexcept { Give(p); }
void operator delete(void* p, std::size_t) noexcept { Give(p); }
void operator delete[](void* p) noexcept { Give(p); }
void operator delete[](void* p, std::size_t) noexcept { Give(p); }

namespace {

TEST(Allocations, CountsThePeak) {
    HeapUse().Reset();
    for (int i = 0; i < 3; ++i) std::make_unique<char[]>(1000)[0] = 1;
    EXPECT_EQ(3U, HeapUse().calls);
    EXPECT_EQ(0U, HeapUse().bytes);
    EXPECT_GE(HeapUse().peak, 1000U);
    EXPECT_LT(HeapUse().peak, 1100U);
}

}  // namespace
