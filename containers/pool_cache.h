// What each thread keeps of the pools, and the inline way to it for the element classes of the
// library.
//
// The free elements of a pool are one stack, last in, first out, most of it in magazines: chains of
// kPoolBatch elements. From the top down it consists of
//     the thread's open magazine   all fast calls push and pop here, without a lock
//     the thread's full magazines  up to kPoolMagazines
//     the pool's full magazines    from here on shared by the threads, under the pool's mutex
//     the pool's free list         new chunks start here
// A thread without elements takes one magazine, or a batch of the free list; a thread with too many
// magazines gives the lower half to the pool, and one that ends all it has. An element's first word
// points to the next one of its chain; where that is the first of a full magazine, its second word
// points to the magazine below.
//
// Where a thread finds its cache of a pool is the pool's lease: a slot, which all threads use for
// it, below a serial number. A pool that is emptied or ends gives its lease up. What a thread still
// has under an old lease is forgotten when it is met, since the memory may be gone.
#ifndef KORBASE_CONTAINERS_POOL_CACHE_H
#define KORBASE_CONTAINERS_POOL_CACHE_H

#include <cstddef>
#include <cstdint>
#include <cstring>
#include <new>

#include "containers/pool.h"

namespace korbase_detail {

constexpr unsigned kPoolBatch = 64;
constexpr unsigned kPoolMagazines = 32;   // the most full ones that a cache keeps
constexpr std::uint32_t kPoolSlots = 12;  // slots 1 to 12; see the leases on further pools
constexpr std::uint32_t kPoolSlotMask = 15;

// Leases without a slot; they lead to slot 0, which is closed.
constexpr std::uint32_t kPoolUnleased = 0;  // until the first use
constexpr std::uint32_t kPoolNoLease = kPoolSlotMask + 1;
constexpr std::uint32_t kPoolClosed = ~std::uint32_t{0};

// The first word of a free element points to the next, the second is free for its magazine. They
// are read and written as bytes, since they lie in storage that had and will have other types.
inline void* PoolWord(void const* element, unsigned i) {
    void* word;
    std::memcpy(&word, static_cast<char const*>(element) + i * sizeof word, sizeof word);
    return word;
}
inline void SetPoolWord(void* element, unsigned i, void* word) {
    std::memcpy(static_cast<char*>(element) + i * sizeof word, &word, sizeof word);
}

// Takes the topmost magazine off a stack of full ones that is not empty.
inline void* PopMagazine(void*& full) {
    void* const magazine = full;
    full = PoolWord(magazine, 1);
    return magazine;
}

struct PoolCache {
    void* Pop() {
        void* const element = first;
        first = PoolWord(element, 0);
        --count;
        return element;
    }
    void Push(void* element) {
        SetPoolWord(element, 0, first);
        first = element;
        ++count;
    }

    // The topmost full magazine becomes the open one, which was empty.
    void OpenMagazine() {
        first = PopMagazine(full);
        count = kPoolBatch;
        --magazines;
    }

    // The open magazine, which is full, goes on top of the full ones; an empty one is opened.
    void CloseMagazine() {
        SetPoolWord(first, 1, full);
        full = first;
        ++magazines;
        first = nullptr;
        count = 0;
    }

    std::uint32_t lease;
    unsigned count;      // elements of the open magazine
    void* first;         // the open magazine, null when it is empty
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

    // What operator new and delete of an element class do: elements of exactly its size come from
    // `pool`, others (of derived classes) from the general heap.
    template <class Element>
    static void* New(Pool& pool, std::size_t size) {
        constexpr unsigned kChunkBytes = 8192;
        return size == sizeof(Element) ? Alloc(pool, sizeof(Element), kChunkBytes)
                                       : ::operator new(size);
    }
    template <class Element>
    static void Delete(Pool& pool, void* element, std::size_t size) {
        if (size == sizeof(Element))
            Free(pool, element);
        else
            ::operator delete(element);
    }
};

}  // namespace korbase_detail

#endif
