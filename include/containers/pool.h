// Pool: a heap of equally sized elements, for small objects that come and go often.
//
// Elements are carved from chunks and kept on a free list; a freed element is the next one handed out.
// Any thread may allocate and free. Chunks go back to the system only through Destroy().
#ifndef KORBASE_CONTAINERS_POOL_H
#define KORBASE_CONTAINERS_POOL_H

#include <korbase_api.h>
#include <pthread.h>

#include <cstddef>

class KORBASE_API Pool {
public:
    Pool();
    // Does not free the chunks: elements stay valid, and the pool goes on working without its lock.
    ~Pool();
    Pool(Pool const&) = delete;
    Pool& operator=(Pool const&) = delete;

    // One element of `elemSize` bytes, aligned for any scalar. When none is free, a new chunk of
    // (chunkBytes - 8) / elemSize elements, at least one, is made and handed out in address order.
    // All calls on one pool pass the same sizes. Throws std::bad_alloc with the pool unchanged.
    void* Alloc(unsigned elemSize, unsigned chunkBytes);

    // Gives `element`, which came from Alloc of this pool, back; null is ignored.
    void Free(void* element);

    // Frees all chunks. Elements still in use become invalid.
    void Destroy();

    // Pools are static objects: making one on the heap aborts.
    static void* operator new(std::size_t size);
    static void operator delete(void* pool);

private:
    struct Element;
    struct Chunk;

    Element* freeList;
    Chunk* chunks;
    pthread_mutex_t mutex;
    char tag[4];  // "6543" while the mutex is alive
};

#endif
