#include "containers/pool.h"

#include <malloc.h>
#include <pthread.h>
#include <sys/resource.h>
#include <sys/wait.h>
#include <unistd.h>

#include <atomic>
#include <cstddef>
#include <deque>
#include <future>
#include <mutex>
#include <new>
#include <optional>
#include <thread>

#include "tests/support/test.h"

namespace {

using Elements = std::vector<void*>;

std::size_t Stride(unsigned size) {
    std::size_t const align = alignof(std::max_align_t);
    return (std::max(size, 1U) + align - 1) / align * align;
}

// Most tests use elements of 16 bytes in chunks of kChunk.
constexpr unsigned kChunk = 500, kChunkBytes = 16 * kChunk + 8;

Elements Take(Pool& pool, unsigned count = kChunk) {
    Elements elements(count);
    for (void*& element : elements) element = pool.Alloc(16, kChunkBytes);
    return elements;
}

void Give(Pool& pool, Elements const& elements) {
    for (void* const element : elements) pool.Free(element);
}

// The elements of a chunk as they are handed out at first.
Elements ChunkFrom(void* first) {
    Elements elements(kChunk, first);
    for (std::size_t i = 0; i < kChunk; ++i) elements[i] = static_cast<char*>(first) + i * 16;
    return elements;
}
bool IsNewChunk(Elements const& elements) { return elements == ChunkFrom(elements[0]); }

// Whether the next elements are these, in any order: all of them were free again.
bool AreFreeAgain(Pool& pool, Elements elements) {
    Elements again = Take(pool);
    Give(pool, again);
    std::sort(elements.begin(), elements.end());
    std::sort(again.begin(), again.end());
    return elements == again;
}

// A pool that gives its memory back.
struct TestPool : Pool {
    ~TestPool() { Destroy(); }
};

// Uses `late` before main() begins and, since it is constructed first, after `late` is destroyed.
extern Pool late;
bool report_late_use = false;
struct EarlyAndLate {
    EarlyAndLate() : elements(Take(late)) {  // leaves one in the open magazine, three full ones
        Give(late, {elements.begin(), elements.begin() + 193});
    }
    ~EarlyAndLate() {
        Give(late, {elements.begin() + 193, elements.end()});
        bool const same = AreFreeAgain(late, elements);
        late.Destroy();
        if (report_late_use) std::fputs(same ? "as it was" : "other elements", stderr);
    }
    Elements elements;
} early_and_late;
Pool late;

Pool* key_pool;
void FreeInKeyDestructor(void* element) { key_pool->Free(element); }

}  // namespace

// The room of an aligned element each; 120 bytes are ten of 12; at least one.
TEST(Pool, CarvesChunksInAddressOrder) {
    Rows<unsigned, unsigned, unsigned> const rows = {
        {48, 16384, 341}, {12, 128, 10}, {12, 127, 9}, {100, 0, 1}, {0, 8192, 1}};
    for (auto const& [size, chunk_bytes, count] : rows) {
        TestPool pool;
        for (int chunk = 0; chunk < 2; ++chunk) {
            char* const first = static_cast<char*>(pool.Alloc(size, chunk_bytes));
            EXPECT_EQ(count, malloc_usable_size(first) / Stride(size)) << "size " << size;
            for (unsigned i = 1; i < count; ++i)
                ASSERT_EQ(first + i * Stride(size), pool.Alloc(size, chunk_bytes)) << i;
        }
    }
}

TEST(Pool, IsOneStackWhateverTheDepthThatForgetsAllWhenDestroyed) {
    std::mt19937 random(23);
    std::deque<TestPool> pools(30);  // more than threads cache
    for (int round = 0; round < 30; ++round) {
        TestPool& pool = pools[round];
        Elements held, freed;
        for (int part = 0; part < 20; ++part) {
            bool const alloc = random() % 2 == 0;
            pool.Free(nullptr);
            for (unsigned n = random() % (part % 10 == 0 ? 6000 : 150); n > 0; --n) {
                if (alloc) {
                    held.push_back(pool.Alloc(16, kChunkBytes));
                    if (freed.empty()) {  // a new chunk, from its lowest address up
                        freed = ChunkFrom(held.back());
                        std::reverse(freed.begin(), freed.end());
                    }
                    ASSERT_EQ(freed.back(), held.back()) << "pool " << round;
                    freed.pop_back();
                } else if (!held.empty()) {
                    std::swap(held[random() % held.size()], held.back());
                    pool.Free(held.back());
                    freed.push_back(held.back());
                    held.pop_back();
                }
            }
        }
        pool.Destroy();
        ASSERT_TRUE(IsNewChunk(Take(pool))) << "pool " << round;
    }
}

TEST(Pool, IsUnchangedWhenAnAllocationFails) {
#if defined(__SANITIZE_ADDRESS__) || defined(__SANITIZE_THREAD__)
    GTEST_SKIP() << "sanitizers reserve the address space that this test limits";
#endif
    auto const fail = [] {
        rlimit const limit = {256U << 20, 256U << 20};
        EXPECT_EQ(0, setrlimit(RLIMIT_AS, &limit));
        TestPool pool;
        void* const first = pool.Alloc(16, 24);
        EXPECT_THROW(pool.Alloc(1, 0xF0000000), std::bad_alloc);
        pool.Free(first);
        EXPECT_EQ(first, pool.Alloc(16, 24));
        std::_Exit(testing::Test::HasFailure());
    };
    EXPECT_EXIT(fail(), testing::ExitedWithCode(0), "");
}

TEST(PoolDeathTest, ServesStaticObjectsBeforeMainAndAfterItsEndButNoneOnTheHeap) {
    EXPECT_EXIT(std::exit(!(report_late_use = true)), testing::ExitedWithCode(0), "as it was");
    EXPECT_DEATH(new Pool, "");
}

TEST(PoolThreads, NoElementHasTwoOwners) {
    TestPool pool;
    std::mutex mutex;
    Elements shared;  // made by one thread, freed by any
    auto const work = [&](int mark) {
        std::mt19937 random(static_cast<unsigned>(mark));
        std::string const content(32, static_cast<char>(mark));
        auto const fill = [&](void* element) { std::memcpy(element, content.data(), 32); };
        Elements held;
        for (int step = 0; step < 30000; ++step) {
            if (random() % 100 == 0) {
                std::lock_guard<std::mutex> const lock(mutex);
                held.swap(shared);
                std::for_each(held.begin(), held.end(), fill);
            } else if (held.size() < 300 && random() % 2 == 0) {
                held.push_back(pool.Alloc(32, 4096));
                fill(held.back());
            } else if (!held.empty()) {
                ASSERT_EQ(0, std::memcmp(held.back(), content.data(), 32)) << "step " << step;
                pool.Free(held.back());
                held.pop_back();
            }
        }
        Give(pool, held);
    };
    std::vector<std::thread> threads;
    for (int mark = 1; mark <= 4; ++mark) threads.emplace_back(work, mark);
    for (std::thread& thread : threads) thread.join();
}

TEST(PoolThreads, WhatAThreadFreedIsThereWhenItHasEnded) {
    TestPool pool;
    Elements elements;
    std::thread([&] {
        elements = Take(pool, 100);  // and some that it has at hand
        Give(pool, {elements.begin() + 90, elements.end()});
    }).join();
    Give(pool, {elements.begin(), elements.begin() + 90});
    elements = ChunkFrom(elements[0]);
    EXPECT_TRUE(AreFreeAgain(pool, elements));

    pthread_key_t key;  // made after the library's, so its destructor runs later
    ASSERT_EQ(0, pthread_key_create(&key, FreeInKeyDestructor));
    key_pool = &pool;
    std::thread([&] {
        Elements own = Take(pool);
        pthread_setspecific(key, own.back());
        Give(pool, {own.begin(), own.end() - 1});
    }).join();
    pthread_key_delete(key);
    EXPECT_TRUE(AreFreeAgain(pool, elements)) << "freed by a key's destructor";
}

TEST(PoolThreads, PoolsMayEndBeforeTheThreadsThatUsedThem) {
    std::promise<void> used, ended;
    Elements elements;
    TestPool emptied;
    std::optional<TestPool> ending(std::in_place);
    std::thread thread([&] {
        for (Pool* const pool : {&*ending, &emptied}) Give(*pool, Take(*pool));
        used.set_value();
        ended.get_future().wait();
        TestPool successor;  // takes over the slot of the one that ended
        EXPECT_TRUE(IsNewChunk(Take(successor)));
        EXPECT_TRUE(IsNewChunk(elements = Take(emptied)));
        Give(emptied, elements);
    });
    used.get_future().wait();
    emptied.Destroy();
    ending.reset();
    ended.set_value();
    thread.join();
    EXPECT_TRUE(AreFreeAgain(emptied, elements));
}

TEST(PoolThreads, AChildOfAThreadedProcessCanUseThePools) {
    TestPool pool;
    Elements const elements = Take(pool, 2500);  // more than a thread keeps
    std::atomic<bool> stop(false);
    auto const hold_the_lock = [&] {  // a chunk for each element, up to a limit
        for (int i = 0; i < 500000 && !stop; ++i) pool.Alloc(16, 0);
    };
    std::thread thread(hold_the_lock);
    for (int i = 0; i < 30; ++i) {
        pid_t const child = fork();
        if (child == 0) {
            alarm(20);  // a lock that nobody will open ends the child
            Give(pool, elements);
            for (std::size_t n = 1; n < elements.size(); ++n) pool.Alloc(16, 0);
            _exit(pool.Alloc(16, 0) != elements[0]);
        }
        int status = -1;
        ASSERT_EQ(child, waitpid(child, &status, 0));
        EXPECT_EQ(0, status) << "child " << i;
    }
    stop = true;
    thread.join();
}
