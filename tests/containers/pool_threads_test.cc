#include <containers/pool.h>
#include <containers/slist.h>
#include <gtest/gtest.h>
#include <pthread.h>
#include <sys/wait.h>
#include <unistd.h>

#include <algorithm>
#include <atomic>
#include <condition_variable>
#include <cstring>
#include <mutex>
#include <random>
#include <thread>
#include <vector>

namespace {

unsigned const kSize = 32;
unsigned const kCount = 1000;
unsigned const kChunkBytes = kSize * kCount + 8;  // a chunk has kCount elements

std::vector<void*> take_all(Pool& pool) {
    std::vector<void*> elements(kCount);
    for (void*& element : elements) element = pool.Alloc(kSize, kChunkBytes);
    return elements;
}

void give(Pool& pool, std::vector<void*> const& elements) {
    for (void* const element : elements) pool.Free(element);
}

// Whether kCount more elements are the same ones, in any order: no new chunk was needed.
bool are_free_again(Pool& pool, std::vector<void*> elements) {
    std::vector<void*> again = take_all(pool);
    give(pool, again);
    std::sort(elements.begin(), elements.end());
    std::sort(again.begin(), again.end());
    return elements == again;
}

// A gate that one thread waits at until another opens it.
class Gate {
public:
    void Open() {
        std::lock_guard<std::mutex> const lock(mutex);
        open = true;
        changed.notify_all();
    }
    void Wait() {
        std::unique_lock<std::mutex> lock(mutex);
        changed.wait(lock, [this] { return open; });
    }

private:
    std::mutex mutex;
    std::condition_variable changed;
    bool open = false;
};

// Frees its elements when the thread that owns it ends.
struct FreesAtThreadEnd {
    ~FreesAtThreadEnd() {
        if (pool) give(*pool, elements);
    }
    Pool* pool = nullptr;
    std::vector<void*> elements;
};
thread_local FreesAtThreadEnd thread_elements;

Pool* key_pool;
void free_in_key_destructor(void* element) { key_pool->Free(element); }

}  // namespace

TEST(PoolThreads, NoElementHasTwoOwners) {
    Pool pool;
    std::mutex mutex;
    std::vector<unsigned char*> shared;  // made by one thread, freed by any
    auto const work = [&](unsigned char mark) {
        std::mt19937 random(mark);
        std::vector<unsigned char*> held;
        for (int step = 0; step < 30000; ++step) {
            if (random() % 100 == 0) {
                std::lock_guard<std::mutex> const lock(mutex);
                held.swap(shared);
                for (unsigned char* const element : held) std::memset(element, mark, kSize);
            } else if (held.size() < 300 && random() % 2 == 0) {
                held.push_back(static_cast<unsigned char*>(pool.Alloc(kSize, 4096)));
                std::memset(held.back(), mark, kSize);
            } else if (!held.empty()) {
                unsigned char* const element = held.back();
                held.pop_back();
                ASSERT_EQ(kSize, std::count(element, element + kSize, mark)) << "step " << step;
                pool.Free(element);
            }
        }
        for (unsigned char* const element : held) pool.Free(element);
    };
    std::vector<std::thread> threads;
    for (unsigned char mark = 1; mark <= 4; ++mark) threads.emplace_back(work, mark);
    for (std::thread& thread : threads) thread.join();
    pool.Destroy();
}

TEST(PoolThreads, WhatAThreadFreedIsThereWhenItHasEnded) {
    Pool pool;
    key_pool = &pool;
    pthread_key_t key;  // made after the library's, so its destructor runs later
    std::vector<void*> elements;
    std::thread([&] { give(pool, elements = take_all(pool)); }).join();
    EXPECT_TRUE(are_free_again(pool, elements));

    std::thread([&] {
        thread_elements.pool = &pool;
        thread_elements.elements = take_all(pool);
    }).join();
    EXPECT_TRUE(are_free_again(pool, elements)) << "freed by a thread_local object";

    ASSERT_EQ(0, pthread_key_create(&key, free_in_key_destructor));
    std::thread([&] {
        std::vector<void*> own = take_all(pool);
        ASSERT_EQ(0, pthread_setspecific(key, own.back()));
        own.pop_back();
        give(pool, own);
    }).join();
    pthread_key_delete(key);
    EXPECT_TRUE(are_free_again(pool, elements)) << "freed by a key's destructor";
    pool.Destroy();
}

TEST(PoolThreads, PoolsMayEndBeforeTheThreadsThatUsedThem) {
    Gate used, ended;
    std::vector<void*> elements;
    Pool emptied;
    std::thread thread;
    {
        Pool ending;
        thread = std::thread([&] {
            give(ending, take_all(ending));
            give(emptied, take_all(emptied));
            used.Open();
            ended.Wait();
            Pool successor;  // takes over the slot of the one that ended
            elements = take_all(successor);
            for (std::size_t i = 1; i < elements.size(); ++i)
                EXPECT_EQ(static_cast<char*>(elements[i - 1]) + kSize, elements[i]);
            successor.Destroy();
            elements = take_all(emptied);
            for (std::size_t i = 1; i < elements.size(); ++i)
                EXPECT_EQ(static_cast<char*>(elements[i - 1]) + kSize, elements[i]);
            give(emptied, elements);
        });
        used.Wait();
        ending.Destroy();
        emptied.Destroy();
    }
    ended.Open();
    thread.join();
    EXPECT_TRUE(are_free_again(emptied, elements));
    emptied.Destroy();
}

TEST(PoolThreads, AChildOfAThreadedProcessCanUseThePools) {
    std::atomic<bool> stop(false);
    auto const churn = [&stop] {
        while (!stop) {
            slist_t list;
            for (int i = 0; i < 5000; ++i) list.append(nullptr);  // more than a thread caches
        }
    };
    std::thread one(churn), two(churn);
    for (int i = 0; i < 30; ++i) {
        pid_t const child = fork();
        if (child == 0) {
            alarm(20);  // a lock that nobody will open ends the child
            slist_t list;
            for (int n = 0; n < 5000; ++n) list.append(nullptr);
            _exit(list.Len() == 5000 ? 0 : 1);
        }
        int status = -1;
        ASSERT_EQ(child, waitpid(child, &status, 0));
        EXPECT_EQ(0, status) << "child " << i;
    }
    stop = true;
    one.join();
    two.join();
}
