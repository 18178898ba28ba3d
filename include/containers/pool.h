// Pool: a heap of equally sized elements, for small objects that come and go often.
//
// Elements are carved from chunks and kept on a free list; the element that a thread freed last is
// the next one it gets. Any thread may allocate and free. Most calls take no lock: each thread
// keeps some free elements of a pool at hand, at most about 2,000, and moves them from and to the
// pool in batches of 64; a thread that ends gives them all back. Chunks go back to the system only
// through Destroy().
#ifndef KORBASE_CONTAINERS_POOL_H
#define KORBASE_CONTAINERS_POOL_H

#include <korbase_api.h>
#include <pthread.h>

#include <atomic>
#include <cstddef>
#include <cstdint>

namespace korbase_detail {
class PoolAccess;
class PoolLeases;
struct PoolCache;
}  // namespace korbase_detail

// Pools are static objects. They are ready before the first static initialiser runs, and go on
// working, without their lock, after their destructor.
class KORBASE_API Pool {
public:
    constexpr Pool() noexcept
        : freeList(nullptr),
          chunks(nullptr),
          mutex PTHREAD_MUTEX_INITIALIZER,
          tag{'6', '5', '4', '3'},
          lease(0),
          full(nullptr) {}
    ~Pool();  // does not free the chunks: elements stay valid
    Pool(Pool const&) = delete;
    Pool& operator=(Pool const&) = delete;

    // One element of `elemSize` bytes, aligned for any scalar. When none is free, a new chunk of
    // (chunkBytes - 8) / elemSize elements, at least one, is made and handed out in address order.
    // All calls on one pool pass the same `elemSize`. Throws std::bad_alloc with the pool
    // unchanged.
    void* Alloc(unsigned elemSize, unsigned chunkBytes);

    // Gives `element`, which came from Alloc of this pool, back; null is ignored.
    void Free(void* element);

    // Frees all chunks. Elements still in use become invalid; no other thread uses the pool
    // meanwhile.
    void Destroy();

    // Making a pool on the heap aborts.
    static void* operator new(std::size_t size);
    static void operator delete(void* pool);

private:
    friend class korbase_detail::PoolAccess;
    friend class korbase_detail::PoolLeases;
    class Lock;
    struct Chunk;

    void Close();
    void* AllocSlow(unsigned elemSize, unsigned chunkBytes);
    void FreeSlow(void* element);
    korbase_detail::PoolCache* OpenCache();
    void AddChunk(unsigned elemSize, unsigned chunkBytes);
    void Refill(korbase_detail::PoolCache& cache);
    void Drain(korbase_detail::PoolCache& cache, unsigned keep);
    void TakeBack(korbase_detail::PoolCache& cache);

    void* freeList;  // the first word of a free element points to the next
    Chunk* chunks;
    pthread_mutex_t mutex;
    char tag[4];                       // "6543" while the mutex is alive
    std::atomic<std::uint32_t> lease;  // of a slot in the caches of the threads
    void* full;                        // batches of elements that threads gave back
};

#endif
