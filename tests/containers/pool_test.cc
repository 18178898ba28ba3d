#include "containers/pool.h"

#include <malloc.h>
#include <sys/wait.h>
#include <unistd.h>

#include <atomic>
#include <cstddef>
#include <deque>
#include <future>
#include <optional>
#include <thread>

#include "tests/support/test.h"

namespace {

using Elements = std::vector<void*>;

// More elements than a thread keeps: what it frees goes to the pool in several portions.
constexpr unsigned kChunk = 3500, kChunkBytes = 16 * kChunk + 8;

Elements Take(Pool& pool) {
    Elements elements(kChunk);
    for (void*& element : elements) element = pool.Alloc(16, kChunkBytes);
    return elements;
}

void Give(Pool& pool, Elements const& elements, std::size_t from, std::size_t to) {
    for (; from < to; ++from) pool.Free(elements[from]);
}

// Whether the next elements are those of one chunk: none was lost.
bool AreAChunk(Pool& pool) {
    Elements elements = Take(pool);
    Give(pool, elements, 0, kChunk);
    std::sort(elements.begin(), elements.end());
    std::size_t i = 1;
    while (i < kChunk && static_cast<char*>(elements[i - 1]) + 16 == elements[i]) ++i;
    return i == kChunk;
}

// A pool that gives its memory back.
struct TestPool : Pool {
    ~TestPool() { Destroy(); }
};

}  // namespace

// The room of an aligned element each; 119 bytes are nine of 12; at least one.
TEST(Pool, CarvesChunksInAddressOrder) {
    unsigned const align = alignof(std::max_align_t);
    Rows<unsigned, unsigned, unsigned> const rows = {{48, 16384, 341}, {12, 127, 9}, {0, 8192, 1}};
    for (auto const& [size, chunk_bytes, count] : rows) {
        unsigned const stride = (std::max(size, 1U) + align - 1) / align * align;
        TestPool pool;
        for (int chunk = 0; chunk < 2; ++chunk) {
            char* const first = static_cast<char*>(pool.Alloc(size, chunk_bytes));
            EXPECT_EQ(count, malloc_usable_size(first) / stride) << "size " << size;
            for (unsigned i = 1; i < count; ++i)
                ASSERT_EQ(first + i * stride, pool.Alloc(size, chunk_bytes)) << i;
        }
    }
}

TEST(Pool, IsOneStackWhateverTheDepthThatForgetsAllWhenDestroyed) {
    std::mt19937 random(23);
    std::deque<TestPool> pools(30);  // more than threads cache
    for (TestPool& pool : pools) {
        Elements held, freed;
        for (int part = 0; part < 20; ++part) {
            bool const alloc = random() % 2 == 0;
            pool.Free(nullptr);
            for (unsigned n = random() % (part % 3 == 0 ? 6000 : 150); n > 0; --n) {
                if (alloc) {
                    held.push_back(pool.Alloc(16, kChunkBytes));
                    for (unsigned i = freed.empty() ? kChunk : 0; i-- > 0;)  // a new chunk
                        freed.push_back(static_cast<char*>(held.back()) + i * 16);
                    ASSERT_EQ(freed.back(), held.back()) << "part " << part;
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
        ASSERT_TRUE(AreAChunk(pool));
    }
}

TEST(PoolThreads, NoElementHasTwoOwners) {
    TestPool pool;
    std::atomic<void*> shared(nullptr);  // filled by one thread, freed by another
    auto const work = [&](char mark) {
        std::string const content(32, mark);
        for (int round = 0; round < 20; ++round) {
            Elements held(kChunk);
            for (void*& each : held) each = std::memset(pool.Alloc(32, 4096), mark, 32);
            for (void* const each : held) {
                ASSERT_EQ(0, std::memcmp(each, content.data(), 32));
                pool.Free(shared.exchange(each));
            }
        }
    };
    std::vector<std::thread> threads;
    for (char const mark : {1, 2, 3, 4}) threads.emplace_back(work, mark);
    for (std::thread& thread : threads) thread.join();
}

// Pools may end before the threads that used them.
TEST(PoolThreads, WhatAThreadFreedIsThereWhenItHasEnded) {
    std::promise<void> used, ended;
    TestPool pool;
    std::optional<TestPool> ending(std::in_place);
    Elements elements;
    std::thread thread([&] {
        Give(*ending, elements = Take(*ending), 0, kChunk);
        used.set_value();
        ended.get_future().wait();
        TestPool successor;  // takes over the slot of the one that ended
        EXPECT_TRUE(AreAChunk(successor));
        elements = Take(pool);
        Give(pool, elements, 90, kChunk);
    });
    used.get_future().wait();  // the thread did not keep them all
    EXPECT_EQ(1, std::count(elements.begin(), elements.end(), ending->Alloc(16, kChunkBytes)));
    ending.reset();
    ended.set_value();
    thread.join();
    Give(pool, elements, 0, 90);
    EXPECT_TRUE(AreAChunk(pool));
}

TEST(PoolThreads, AChildOfAThreadedProcessCanUseThePools) {
    TestPool pool;
    Elements const elements = Take(pool);
    std::atomic<bool> stop(false);
    std::thread thread([&] {  // holds the lock: a chunk for each element, up to a limit
        for (int i = 0; i < 500000 && !stop; ++i) pool.Alloc(16, 0);
    });
    for (int i = 0; i < 30; ++i) {
        pid_t const child = fork();
        if (child == 0) {
            alarm(20);  // a lock that nobody will open ends the child
            Give(pool, elements, 0, kChunk);
            for (unsigned n = 1; n < kChunk; ++n) pool.Alloc(16, 0);
            _exit(pool.Alloc(16, 0) != elements[0]);
        }
        int status = -1;
        ASSERT_EQ(child, waitpid(child, &status, 0));
        EXPECT_EQ(0, status) << "child " << i;
    }
    stop = true;
    thread.join();
}
