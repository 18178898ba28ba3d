#include "containers/pool.h"

#include <algorithm>
#include <cstddef>
#include <cstdlib>
#include <cstring>
#include <memory>
#include <new>

#include "containers/pool_cache.h"
#include "containers/pool_leases.h"

using namespace korbase_detail;

struct Pool::Chunk {
    Chunk* next;
    void* memory;
};

namespace {

constexpr char kAlive[] = {'6', '5', '4', '3'};

// What a chunk record counts as, on every target.
constexpr unsigned kChunkRecord = 8;

}  // namespace

// Holds the mutex for a scope; goes on without it where it cannot be locked.
class Pool::Lock {
public:
    explicit Lock(Pool& pool) : held(nullptr) {
        if (std::memcmp(pool.tag, kAlive, sizeof pool.tag) != 0) return;
        if (pthread_mutex_lock(&pool.mutex) == 0) held = &pool.mutex;
    }
    ~Lock() {
        if (held) pthread_mutex_unlock(held);
    }
    Lock(Lock const&) = delete;
    Lock& operator=(Lock const&) = delete;

private:
    pthread_mutex_t* held;
};

Pool::~Pool() { Close(); }

// Not inlined: the pool is used after its destructor, so the compiler must not see that what is
// stored here is never read during its lifetime.
__attribute__((noinline)) void Pool::Close() {
    PoolCache& cache = pool_thread.caches[lease.load(std::memory_order_relaxed) & kPoolSlotMask];
    if (cache.lease == PoolLeases::End(*this, kPoolNoLease)) TakeBack(cache);
    if (std::memcmp(tag, kAlive, sizeof tag) != 0) return;
    std::memset(tag, 0, sizeof tag);
    pthread_mutex_destroy(&mutex);
}

void* Pool::Alloc(unsigned elemSize, unsigned chunkBytes) {
    return PoolAccess::Alloc(*this, elemSize, chunkBytes);
}

void Pool::Free(void* element) { PoolAccess::Free(*this, element); }

void* Pool::AllocSlow(unsigned elemSize, unsigned chunkBytes) {
    PoolCache* const cache = OpenCache();
    if (cache && cache->full) {
        cache->OpenMagazine();
        return cache->Pop();
    }
    Lock const lock(*this);
    if (!full && !freeList) AddChunk(elemSize, chunkBytes);
    if (cache) {
        Refill(*cache);
        return cache->Pop();
    }
    if (!freeList) freeList = PopMagazine(full);
    void* const element = freeList;
    freeList = PoolWord(element, 0);
    return element;
}

void Pool::FreeSlow(void* element) {
    if (!element) return;
    PoolCache* const cache = OpenCache();
    if (!cache) {
        Lock const lock(*this);
        SetPoolWord(element, 0, freeList);
        freeList = element;
        return;
    }
    if (cache->count == kPoolBatch) {
        if (cache->magazines == kPoolMagazines) Drain(*cache, kPoolMagazines / 2);
        cache->CloseMagazine();
    }
    cache->Push(element);
}

// This thread's cache of the pool; null if there is none.
PoolCache* Pool::OpenCache() {
    std::uint32_t current = lease.load(std::memory_order_relaxed);
    if (current == kPoolUnleased) current = PoolLeases::Take(*this);
    if (current == kPoolNoLease) return nullptr;
    PoolCache& cache = pool_thread.caches[current & kPoolSlotMask];
    if (cache.lease != current) {
        if (!PoolLeases::EnrollThread()) return nullptr;
        cache = PoolCache();
        cache.lease = current;
    }
    return &cache;
}

// Makes a chunk and threads its elements, in address order, into the empty free list.
void Pool::AddChunk(unsigned elemSize, unsigned chunkBytes) {
    std::size_t const align = std::max(alignof(std::max_align_t), 2 * sizeof(void*));
    std::size_t const wanted = std::max(elemSize, 1U);
    std::size_t const stride = (wanted + align - 1) & ~(align - 1);
    std::size_t const room = chunkBytes < kChunkRecord ? 0 : chunkBytes - kChunkRecord;
    std::size_t const count = elemSize == 0 || room < elemSize ? 1 : room / elemSize;
    if (stride < wanted || count > SIZE_MAX / stride) throw std::bad_alloc();

    auto chunk = std::make_unique<Chunk>();
    chunk->memory = ::operator new(count* stride);
    chunk->next = chunks;
    chunks = chunk.release();

    char* const first = static_cast<char*>(chunks->memory);
    for (std::size_t i = count; i-- > 0;) {
        SetPoolWord(first + i * stride, 0, freeList);
        freeList = first + i * stride;
    }
}

// Moves a magazine or, without one, a batch from the free list into a cache that has no elements.
// The pool has some.
void Pool::Refill(PoolCache& cache) {
    if (full) {
        cache.first = PopMagazine(full);
        cache.count = kPoolBatch;
        return;
    }
    void* end = freeList;
    cache.first = end;
    for (cache.count = 1; cache.count < kPoolBatch && PoolWord(end, 0); ++cache.count)
        end = PoolWord(end, 0);
    freeList = PoolWord(end, 0);
    SetPoolWord(end, 0, nullptr);
}

// Moves the full magazines of a cache, but for the `keep` topmost ones, to the pool.
void Pool::Drain(PoolCache& cache, unsigned keep) {
    if (cache.magazines <= keep) return;
    void* kept = nullptr;
    void* given = cache.full;
    for (unsigned i = 0; i < keep; ++i) given = PoolWord(kept = given, 1);
    void* bottom = given;
    while (void* const below = PoolWord(bottom, 1)) bottom = below;
    if (kept)
        SetPoolWord(kept, 1, nullptr);
    else
        cache.full = nullptr;
    cache.magazines = keep;

    Lock const lock(*this);
    SetPoolWord(bottom, 1, full);
    full = given;
}

// Takes over all that a cache holds; its elements outside full magazines go to the free list.
void Pool::TakeBack(PoolCache& cache) {
    Drain(cache, 0);
    if (cache.count == 0) return;
    void* end = cache.first;
    while (void* const next = PoolWord(end, 0)) end = next;

    Lock const lock(*this);
    SetPoolWord(end, 0, freeList);
    freeList = cache.first;
    cache.first = nullptr;
    cache.count = 0;
}

void Pool::Destroy() {
    PoolLeases::End(*this, kPoolUnleased);
    Lock const lock(*this);
    while (Chunk* const chunk = chunks) {
        chunks = chunk->next;
        ::operator delete(chunk->memory);
        delete chunk;
    }
    freeList = nullptr;
    full = nullptr;
}

void* Pool::operator new(std::size_t) { std::abort(); }
void Pool::operator delete(void*) { std::abort(); }
