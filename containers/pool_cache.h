// What each thread keeps of the pools, and the inline way to it for the element classes of the
// library.
//
// In front of a pool's free list every thread has a cache, a stack of free elements that needs no
// lock: an open magazine, and below it full ones. A magazine is a chain of elements; a full one has
// a batch of them, and the second word of its first element points to the full magazine below. A
// cache without elements takes a magazine from the pool, one with too many gives its lower half to
// the pool, whose own full magazines lie on top of its free list: together they are one stack, last
// in, first out.
//
// A pool gets its slot in all threads' caches by a lease, a serial number with the slot in its low
// bits. A pool that ends or is emptied gives its lease up; what a thread has cached under an old
// lease is forgotten when it is met, since the memory may be gone.
#ifndef KORBASE_CONTAINERS_POOL_CACHE_H
#define KORBASE_CONTAINERS_POOL_CACHE_H

#include <cstdint>
#include <cstring>

#include "containers/pool.h"

namespace korbase_detail {

constexpr unsigned kPoolBatch = 64;
constexpr unsigned kPoolMagazines = 32;   // the most full ones that a cache keeps
constexpr std::uint32_t kPoolSlots = 12;  // slots 1 to 12; further pools have no caches
constexpr std::uint32_t kPoolSlotMask = 15;

// Leases without a slot; they lead to slot 0, which is closed.
constexpr std::uint32_t kPoolUnleased = 0;  // until the first use
constexpr std::uint32_t kPoolNoLease = kPoolSlotMask + 1;
constexpr std::uint32_t kPoolClosed = ~std::uint32_t{0};

// The first word of a free element points to the next, the second is free for its magazine. They
// are read and written as bytes, since they lie in storage that had and will have other types.
inline void* pool_word(void const* element, unsigned i) {
    void* word;
    std::memcpy(&word, static_cast<char const*>(element) + i * sizeof word, sizeof word);
    return word;
}
inline void pool_set_word(void* element, unsigned i, void* word) {
    std::memcpy(static_cast<char*>(element) + i * sizeof word, &word, sizeof word);
}

struct PoolCache {
    void* Pop() {
        void* const element = first;
        first = pool_word(element, 0);
        --count;
        return element;
    }
    void Push(void* element) {
        pool_set_word(element, 0, first);
        first = element;
        ++count;
    }

    std::uint32_t lease;
    unsigned count;      // elements of the open magazine
    void* first;         // the open magazine, its last element points nowhere
    void* full;          // the topmost full magazine
    unsigned magazines;  // how many full ones there are
};

struct PoolThread {
    PoolCache caches[kPoolSlots + 1];
    bool enrolled;  // this thread's end will be noticed
    bool finished;  // it was: nothing is cached from here on
};

// __thread, not thread_local: no initialiser, so no call to see whether it has run.
extern __thread PoolThread pool_thread
    __attribute__((tls_model("initial-exec"), visibility("hidden")));

class PoolAccess {
public:
    static void* Alloc(Pool& pool, unsigned elemSize, unsigned chunkBytes) {
        std::uint32_t const lease = pool.lease.load(std::memory_order_relaxed);
        PoolCache& cache = pool_thread.caches[lease & kPoolSlotMask];
        if (cache.lease == lease && cache.count > 0) return cache.Pop();
        return pool.AllocSlow(elemSize, chunkBytes);
    }

    static void Free(Pool& pool, void* element) {
        std::uint32_t const lease = pool.lease.load(std::memory_order_relaxed);
        PoolCache& cache = pool_thread.caches[lease & kPoolSlotMask];
        if (cache.lease != lease || cache.count == kPoolBatch || !element)
            return pool.FreeSlow(element);
        cache.Push(element);
    }
};

}  // namespace korbase_detail

#endif
