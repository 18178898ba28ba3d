#include <containers/pool.h>
#include <containers/slist.h>
#include <gtest/gtest.h>
#include <malloc.h>
#include <pthread.h>
#include <sys/resource.h>
#include <sys/wait.h>
#include <unistd.h>

#include <algorithm>
#include <atomic>
#include <cstddef>
#include <cstdint>
#include <cstdio>
#include <cstdlib>
#include <cstring>
#include <deque>
#include <future>
#include <mutex>
#include <new>
#include <random>
#include <thread>
#include <utility>
#include <vector>

namespace {

using Elements = std::vector<void*>;

std::size_t stride(unsigned size) {
    std::size_t const align = alignof(std::max_align_t);
    return (std::max(size, 1U) + align - 1) / align * align;
}

// Where the `n`th element behind `element` lies in its chunk.
void* behind(void* element, unsigned size, std::size_t n = 1) {
    return static_cast<char*>(element) + n * stride(size);
}

// Most tests use elements of 16 bytes in chunks of kChunk.
unsigned const kChunk = 500, kChunkBytes = 16 * kChunk + 8;

Elements take(Pool& pool, unsigned count = kChunk) {
    Elements elements(count);
    for (void*& element : elements) element = pool.Alloc(16, kChunkBytes);
    return elements;
}

void give(Pool& pool, Elements const& elements) {
    for (void* const element : elements) pool.Free(element);
}

// Whether a chunk's number of elements is a chunk as it was made.
bool is_new_chunk(Elements const& elements) {
    for (std::size_t i = 0; i < kChunk; ++i)
        if (elements[i] != behind(elements[0], 16, i)) return false;
    return true;
}

// Whether the next elements are these, in any order: all of them were free again.
bool are_free_again(Pool& pool, Elements elements) {
    Elements again = take(pool);
    give(pool, again);
    std::sort(elements.begin(), elements.end());
    std::sort(again.begin(), again.end());
    return elements == again;
}

// A pool that gives its memory back.
struct TestPool : Pool {
    ~TestPool() { Destroy(); }
};

// Uses `late` before main() begins and, since it is constructed first, after `late` is destroyed.
bool report_late_use = false;
struct EarlyAndLate {
    EarlyAndLate();
    ~EarlyAndLate();
    Elements elements, held;
    slist_t* const list = new slist_t;
} early_and_late;
Pool late;

// Leaves one free element in the thread's open magazine and three full ones below it.
EarlyAndLate::EarlyAndLate() : elements(take(late)), held(elements.begin() + 193, elements.end()) {
    for (void* const element : elements) list->append(element);
    for (std::size_t i = 0; i < 193; ++i) late.Free(elements[i]);
}

EarlyAndLate::~EarlyAndLate() {
    give(late, held);
    bool same = list->Len() == static_cast<int>(kChunk);
    for (std::size_t i = held.size(); i-- > 0;) same = same && late.Alloc(16, 0) == held[i];
    give(late, held);
    same = same && are_free_again(late, elements);
    delete list;
    late.Destroy();
    if (report_late_use) std::fputs(same ? "as it was" : "other elements", stderr);
}

Pool* key_pool;
void free_in_key_destructor(void* element) { key_pool->Free(element); }

}  // namespace

TEST(Pool, CarvesChunksInAddressOrder) {
    struct {
        unsigned size, chunk_bytes, count;
    } const rows[] = {
        {sizeof(slink_t), 8192, (8192 - 8) / sizeof(slink_t)},  // the pool of slist_t
        {48, 16384, (16384 - 8) / 48},
        {1, 72, 64},    // small elements take the room of an aligned one
        {12, 128, 10},  // 120 bytes are exactly ten
        {12, 127, 9},
        {100, 107, 1},  // at least one, however little was asked for
        {100, 0, 1},
        {0, 8192, 1},
    };
    for (auto const& row : rows) {
        TestPool pool;
        void* before = nullptr;
        for (unsigned i = 0; i < 3 * row.count; ++i) {
            void* const element = pool.Alloc(row.size, row.chunk_bytes);
            std::memset(element, 0xA5, row.size);
            ASSERT_EQ(0U, reinterpret_cast<std::uintptr_t>(element) % alignof(std::max_align_t));
            if (i % row.count != 0) {
                ASSERT_EQ(behind(before, row.size), element) << "size " << row.size << ", " << i;
            } else {  // memory of its own, with room for so many
                ASSERT_EQ(row.count, malloc_usable_size(element) / stride(row.size));
            }
            before = element;
        }
    }
}

TEST(Pool, IsOneStackWhateverTheDepth) {
    std::mt19937 random(23);
    TestPool pool;
    Elements held, freed;
    int chunks = 0;
    for (int round = 0; round < 400; ++round) {
        bool const alloc = random() % 2 == 0;
        for (unsigned n = random() % (round % 10 == 0 ? 6000 : 150); n > 0; --n) {
            if (alloc) {
                held.push_back(pool.Alloc(16, kChunkBytes));
                if (freed.empty()) {  // a new chunk, from its lowest address up
                    ++chunks;
                    for (std::size_t i = kChunk; i-- > 0;)
                        freed.push_back(behind(held.back(), 16, i));
                }
                ASSERT_EQ(freed.back(), held.back()) << "round " << round;
                freed.pop_back();
            } else if (!held.empty()) {
                std::swap(held[random() % held.size()], held.back());
                pool.Free(held.back());
                freed.push_back(held.back());
                held.pop_back();
            }
        }
    }
    EXPECT_LT(10, chunks);
}

TEST(Pool, IgnoresNullAndForgetsAllWhenDestroyed) {
    TestPool pool;
    pool.Free(nullptr);
    void* const first = pool.Alloc(16, kChunkBytes);
    pool.Free(first);
    pool.Free(nullptr);
    EXPECT_EQ(first, pool.Alloc(16, kChunkBytes));
    for (int round = 0; round < 100; ++round) {
        give(pool, take(pool, 300));
        pool.Destroy();
        ASSERT_TRUE(is_new_chunk(take(pool))) << "round " << round;
    }
}

TEST(Pool, WorksWhenThereAreMoreThanThreadsCache) {
    std::deque<TestPool> pools(30);
    for (TestPool& pool : pools) {
        Elements const elements = take(pool, 600);
        give(pool, elements);
        for (std::size_t i = elements.size(); i-- > 0;)
            ASSERT_EQ(elements[i], pool.Alloc(16, kChunkBytes)) << i;
    }
}

TEST(Pool, IsUnchangedWhenAnAllocationFails) {
#if defined(__SANITIZE_ADDRESS__) || defined(__SANITIZE_THREAD__)
    GTEST_SKIP() << "sanitizers reserve the address space that this test limits";
#endif
    auto const fail = [] {
        rlimit const limit = {256U << 20, 256U << 20};
        if (setrlimit(RLIMIT_AS, &limit) != 0) std::_Exit(2);
        TestPool pool;
        void* const first = pool.Alloc(16, 40);
        void* const second = pool.Alloc(16, 40);
        try {
            pool.Alloc(1, 0xF0000000);
            std::_Exit(3);
        } catch (std::bad_alloc const&) {
        }
        pool.Free(first);
        std::_Exit(pool.Alloc(16, 40) == first && second != first ? 0 : 4);
    };
    EXPECT_EXIT(fail(), testing::ExitedWithCode(0), "");
}

TEST(PoolDeathTest, ServesStaticObjectsBeforeMainAndAfterItsEnd) {
    auto const leave = [] {
        report_late_use = true;
        std::exit(0);
    };
    EXPECT_EXIT(leave(), testing::ExitedWithCode(0), "as it was");
}

TEST(PoolDeathTest, OnTheHeapAborts) {
    EXPECT_DEATH(new Pool, "");
    EXPECT_DEATH(Pool::operator delete(nullptr), "");
}

TEST(PoolThreads, NoElementHasTwoOwners) {
    unsigned const size = 32;
    TestPool pool;
    std::mutex mutex;
    std::vector<unsigned char*> shared;  // made by one thread, freed by any
    auto const work = [&](unsigned char mark) {
        std::mt19937 random(mark);
        std::vector<unsigned char*> held;
        for (int step = 0; step < 30000; ++step) {
            if (random() % 100 == 0) {
                std::lock_guard<std::mutex> const lock(mutex);
                held.swap(shared);
                for (unsigned char* const element : held) std::memset(element, mark, size);
            } else if (held.size() < 300 && random() % 2 == 0) {
                held.push_back(static_cast<unsigned char*>(pool.Alloc(size, 4096)));
                std::memset(held.back(), mark, size);
            } else if (!held.empty()) {
                unsigned char* const element = held.back();
                held.pop_back();
                ASSERT_EQ(size, std::count(element, element + size, mark)) << "step " << step;
                pool.Free(element);
            }
        }
        for (unsigned char* const element : held) pool.Free(element);
    };
    std::vector<std::thread> threads;
    for (unsigned char mark = 1; mark <= 4; ++mark) threads.emplace_back(work, mark);
    for (std::thread& thread : threads) thread.join();
}

TEST(PoolThreads, WhatAThreadFreedIsThereWhenItHasEnded) {
    TestPool pool;
    Elements elements;
    std::promise<void> taken, go;
    std::thread thread([&] {
        Elements const most = take(pool, 90), more = take(pool, 10);
        elements = most;
        taken.set_value();
        go.get_future().wait();
        give(pool, more);
    });
    taken.get_future().wait();
    Elements const others = take(pool, 300);  // from behind those that the thread has at hand
    for (void* const element : others) std::memset(element, 0xFF, 16);
    go.set_value();
    thread.join();
    give(pool, elements);
    give(pool, others);
    for (std::size_t i = elements.size(); i < kChunk; ++i)
        elements.push_back(behind(elements[0], 16, i));
    EXPECT_TRUE(are_free_again(pool, elements));

    pthread_key_t key;  // made after the library's, so its destructor runs later
    ASSERT_EQ(0, pthread_key_create(&key, free_in_key_destructor));
    key_pool = &pool;
    std::thread([&] {
        Elements own = take(pool);
        ASSERT_EQ(0, pthread_setspecific(key, own.back()));
        own.pop_back();
        give(pool, own);
    }).join();
    pthread_key_delete(key);
    EXPECT_TRUE(are_free_again(pool, elements)) << "freed by a key's destructor";
}

TEST(PoolThreads, PoolsMayEndBeforeTheThreadsThatUsedThem) {
    std::promise<void> used, ended;
    Elements elements;
    TestPool emptied;
    std::thread thread;
    {
        TestPool ending;
        thread = std::thread([&] {
            give(ending, take(ending));
            give(emptied, take(emptied));
            used.set_value();
            ended.get_future().wait();
            TestPool successor;  // takes over the slot of the one that ended
            EXPECT_TRUE(is_new_chunk(take(successor)));
            EXPECT_TRUE(is_new_chunk(elements = take(emptied)));
            give(emptied, elements);
        });
        used.get_future().wait();
        emptied.Destroy();
    }
    ended.set_value();
    thread.join();
    EXPECT_TRUE(are_free_again(emptied, elements));
}

TEST(PoolThreads, AChildOfAThreadedProcessCanUseThePools) {
    TestPool pool;
    Elements const elements = take(pool, 2500);  // more than a thread keeps
    std::atomic<bool> stop(false);
    auto const hold_the_lock = [&] {  // a chunk for each element, up to a limit
        for (int i = 0; i < 500000 && !stop; ++i) pool.Alloc(16, 0);
    };
    std::thread one(hold_the_lock), two(hold_the_lock);
    for (int i = 0; i < 30; ++i) {
        pid_t const child = fork();
        if (child == 0) {
            alarm(20);  // a lock that nobody will open ends the child
            void* element = nullptr;
            give(pool, elements);
            for (std::size_t n = 0; n < elements.size(); ++n) element = pool.Alloc(16, 0);
            _exit(element == elements[0] ? 0 : 1);
        }
        int status = -1;
        ASSERT_EQ(child, waitpid(child, &status, 0));
        EXPECT_EQ(0, status) << "child " << i;
    }
    stop = true;
    one.join();
    two.join();
}
