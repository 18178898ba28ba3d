// The leases of the pools: which pool owns which slot of the threads' caches.
//
// A pool that finds all slots taken works on its free list alone, under its mutex; a child process
// can use it only if no other thread did so at the moment of the fork.
#ifndef KORBASE_CONTAINERS_POOL_LEASES_H
#define KORBASE_CONTAINERS_POOL_LEASES_H

#include <cstdint>

#include "containers/pool.h"

namespace korbase_detail {

class PoolLeases {
public:
    // The lease of `pool`, taken now if it has none yet; kPoolNoLease if it can have none.
    static std::uint32_t Take(Pool& pool);

    // Ends the lease of `pool` and returns it. `lease` takes its place: kPoolUnleased lets the pool
    // take another one later, unless it had kPoolNoLease.
    static std::uint32_t End(Pool& pool, std::uint32_t lease);

    // Sees to it that this thread's caches go back to the stores when it ends. False if that cannot
    // be, or if the thread has come to its end.
    static bool EnrollThread();

private:
    class Lock;
    static void ThreadEnds(void* thread);
    static void BeforeFork();
    static void AfterFork();
};

}  // namespace korbase_detail

#endif
