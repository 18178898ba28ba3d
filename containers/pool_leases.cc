#include "containers/pool_leases.h"

#include "containers/pool_cache.h"

namespace korbase_detail {

__thread PoolThread pool_thread = {{{kPoolClosed, 0, nullptr, nullptr, 0}}, false, false};

namespace {

// Constant-initialised, never destroyed. Who holds the mutex may lock a pool's mutex, not the other
// way round.
pthread_mutex_t mutex = PTHREAD_MUTEX_INITIALIZER;
Pool* owners[kPoolSlots + 1];  // of each slot; 0 stays free
std::uint32_t serial;

// Its destructors run after those of all thread_local objects.
pthread_key_t thread_key;
enum { kNoKey, kKeyReady, kKeyGone } key_state;

// When the library is unloaded, threads that live on must not call into it at their end.
struct KeyOwner {
    ~KeyOwner() {
        pthread_mutex_lock(&mutex);
        if (key_state == kKeyReady) pthread_key_delete(thread_key);
        key_state = kKeyGone;
        pthread_mutex_unlock(&mutex);
    }
} key_owner;

}  // namespace

class PoolLeases::Lock {
public:
    Lock() { pthread_mutex_lock(&mutex); }
    ~Lock() { pthread_mutex_unlock(&mutex); }
    Lock(Lock const&) = delete;
    Lock& operator=(Lock const&) = delete;
};

std::uint32_t PoolLeases::Take(Pool& pool) {
    Lock const lock;
    std::uint32_t lease = pool.lease.load(std::memory_order_relaxed);
    if (lease != kPoolUnleased) return lease;  // another thread was faster
    std::uint32_t slot = 1;
    while (slot <= kPoolSlots && owners[slot]) ++slot;
    lease = kPoolNoLease;
    if (slot <= kPoolSlots) {
        owners[slot] = &pool;
        serial += kPoolSlotMask + 1;
        lease = serial | slot;
    }
    pool.lease.store(lease, std::memory_order_relaxed);
    return lease;
}

std::uint32_t PoolLeases::End(Pool& pool, std::uint32_t lease) {
    Lock const lock;
    std::uint32_t const old = pool.lease.load(std::memory_order_relaxed);
    if (old == kPoolNoLease) return old;
    if (old != kPoolUnleased) owners[old & kPoolSlotMask] = nullptr;
    pool.lease.store(lease, std::memory_order_relaxed);
    return old;
}

bool PoolLeases::EnrollThread() {
    PoolThread& thread = pool_thread;
    if (thread.enrolled || thread.finished) return thread.enrolled;
    Lock const lock;
    if (key_state == kNoKey && pthread_key_create(&thread_key, ThreadEnds) == 0) {
        key_state = kKeyReady;
        pthread_atfork(BeforeFork, AfterFork, AfterFork);
    }
    thread.enrolled = key_state == kKeyReady && pthread_setspecific(thread_key, &thread) == 0;
    return thread.enrolled;
}

void PoolLeases::ThreadEnds(void* /*thread*/) {
    Lock const lock;
    for (std::uint32_t slot = 1; slot <= kPoolSlots; ++slot) {
        PoolCache& cache = pool_thread.caches[slot];
        Pool* const pool = owners[slot];
        if (pool && pool->lease.load(std::memory_order_relaxed) == cache.lease)
            pool->TakeBack(cache);
        cache = PoolCache();
    }
    pool_thread.enrolled = false;
    pool_thread.finished = true;
}

// A child process has only the thread that forked: no other may hold a lock at that moment. What
// other threads have cached is lost to the child.
void PoolLeases::BeforeFork() {
    pthread_mutex_lock(&mutex);
    for (Pool* const pool : owners)
        if (pool) pthread_mutex_lock(&pool->mutex);
}

void PoolLeases::AfterFork() {
    for (Pool* const pool : owners)
        if (pool) pthread_mutex_unlock(&pool->mutex);
    pthread_mutex_unlock(&mutex);
}

}  // namespace korbase_detail
