#include "containers/pool.h"

#include <cstdlib>
#include <cstring>
#include <new>

struct Pool::Element {
    Element* next;
};

struct Pool::Chunk {
    Chunk* next;
    void* memory;
};

namespace {

char const kAlive[] = {'6', '5', '4', '3'};

// Holds the mutex for a scope; goes on without it where it cannot be locked.
class Lock {
public:
    Lock(pthread_mutex_t* mutex, bool alive)
        : held(alive && pthread_mutex_lock(mutex) == 0 ? mutex : nullptr) {}
    ~Lock() {
        if (held) pthread_mutex_unlock(held);
    }
    Lock(Lock const&) = delete;
    Lock& operator=(Lock const&) = delete;

private:
    pthread_mutex_t* held;
};

}  // namespace

Pool::Pool() : freeList(nullptr), chunks(nullptr), tag() {
    if (pthread_mutex_init(&mutex, nullptr) == 0) std::memcpy(tag, kAlive, sizeof tag);
}

Pool::~Pool() {
    if (std::memcmp(tag, kAlive, sizeof tag) != 0) return;
    std::memset(tag, 0, sizeof tag);
    pthread_mutex_destroy(&mutex);
}

void* Pool::Alloc(unsigned elemSize, unsigned chunkBytes) {
    Lock const lock(&mutex, std::memcmp(tag, kAlive, sizeof tag) == 0);
    if (!freeList) {
        std::size_t const size = elemSize < sizeof(Element) ? sizeof(Element) : elemSize;
        std::size_t count = chunkBytes < 8 ? 0 : (chunkBytes - 8) / size;
        if (count == 0) count = 1;
        Chunk* const chunk = new Chunk{chunks, nullptr};
        chunk->memory = std::malloc(count * size);
        if (!chunk->memory) {
            delete chunk;
            throw std::bad_alloc();
        }
        chunks = chunk;
        char* const first = static_cast<char*>(chunk->memory);
        for (std::size_t i = count; i-- > 0;) freeList = new (first + i * size) Element{freeList};
    }
    Element* const element = freeList;
    freeList = element->next;
    return element;
}

void Pool::Free(void* element) {
    if (!element) return;
    Lock const lock(&mutex, std::memcmp(tag, kAlive, sizeof tag) == 0);
    freeList = new (element) Element{freeList};
}

void Pool::Destroy() {
    Lock const lock(&mutex, std::memcmp(tag, kAlive, sizeof tag) == 0);
    while (Chunk* const chunk = chunks) {
        chunks = chunk->next;
        std::free(chunk->memory);
        delete chunk;
    }
    freeList = nullptr;
}

void* Pool::operator new(std::size_t) { std::abort(); }
void Pool::operator delete(void*) { std::abort(); }
