#include <containers/pool.h>
#include <containers/slist.h>
#include <gtest/gtest.h>
#include <sys/resource.h>

#include <cstddef>
#include <cstdint>
#include <cstdlib>
#include <cstring>
#include <memory>
#include <new>
#include <random>
#include <set>
#include <vector>

namespace {

std::size_t stride(unsigned size) {
    std::size_t const align = alignof(std::max_align_t);
    return (size + align - 1) / align * align;
}

std::vector<void*> take(Pool& pool, unsigned size, unsigned chunk_bytes, unsigned count) {
    std::vector<void*> elements;
    while (count-- > 0) elements.push_back(pool.Alloc(size, chunk_bytes));
    return elements;
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
    std::vector<void*> elements;
    slist_t* const list = new slist_t;
} early_and_late;
Pool late;

EarlyAndLate::EarlyAndLate() : elements(take(late, 16, 1024, 200)) {
    for (void* const element : elements) list->append(element);
}

// The pool goes on as the one stack that it was: what was freed last comes first.
EarlyAndLate::~EarlyAndLate() {
    for (void* const element : elements) late.Free(element);
    bool same = true;
    while (!elements.empty()) {
        same = same && late.Alloc(16, 1024) == elements.back();
        elements.pop_back();
    }
    same = same && list->Len() == 200;
    delete list;
    late.Destroy();
    if (report_late_use) std::fputs(same ? "as it was" : "other elements", stderr);
}

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
        std::vector<void*> const elements =
            take(pool, row.size, row.chunk_bytes, row.count * 2 + 1);
        std::size_t breaks = 0;
        for (std::size_t i = 0; i < elements.size(); ++i) {
            EXPECT_EQ(0U,
                      reinterpret_cast<std::uintptr_t>(elements[i]) % alignof(std::max_align_t));
            std::memset(elements[i], 0xA5, row.size);
            if (i == 0) continue;
            bool const next = static_cast<char*>(elements[i - 1]) + stride(row.size) == elements[i];
            if (next) continue;
            ++breaks;
            EXPECT_EQ(0U, i % row.count) << "size " << row.size << ", element " << i;
        }
        EXPECT_EQ(2U, breaks) << "size " << row.size;
    }
}

TEST(Pool, IsOneStackWhateverTheDepth) {
    std::mt19937 random(23);
    TestPool pool;
    std::vector<void*> held, freed;
    std::set<void*> known;  // the first elements of the chunks
    for (int round = 0; round < 400; ++round) {
        bool const alloc = random() % 2 == 0;
        for (unsigned n = random() % (round % 10 == 0 ? 6000 : 150); n > 0; --n) {
            if (alloc) {
                void* const element = pool.Alloc(16, 4096);
                if (freed.empty()) {
                    // A new chunk, from its lowest address up, only when nothing is free.
                    ASSERT_TRUE(known.insert(element).second) << "round " << round;
                    for (std::size_t i = (4096 - 8) / 16; --i > 0;)
                        freed.push_back(static_cast<char*>(element) + i * stride(16));
                } else {
                    ASSERT_EQ(freed.back(), element) << "round " << round;
                    freed.pop_back();
                }
                held.push_back(element);
            } else if (!held.empty()) {
                std::swap(held[random() % held.size()], held.back());
                pool.Free(held.back());
                freed.push_back(held.back());
                held.pop_back();
            }
        }
    }
    EXPECT_LT(1U, known.size());
}

TEST(Pool, IgnoresNullAndForgetsAllWhenDestroyed) {
    TestPool pool;
    pool.Free(nullptr);
    void* const first = pool.Alloc(16, 1024);
    pool.Free(first);
    pool.Free(nullptr);
    EXPECT_EQ(first, pool.Alloc(16, 1024));
    for (int round = 0; round < 100; ++round) {
        std::vector<void*> const elements = take(pool, 16, 1024, 300);
        for (void* const element : elements) pool.Free(element);
        pool.Destroy();
        // A whole chunk again, in order: nothing is left of the old ones.
        std::vector<void*> const fresh = take(pool, 16, 1024, 63);
        for (std::size_t i = 1; i < fresh.size(); ++i)
            ASSERT_EQ(static_cast<char*>(fresh[i - 1]) + 16, fresh[i]) << "round " << round;
    }
}

TEST(Pool, WorksWhenThereAreMoreThanThreadsCache) {
    std::vector<std::unique_ptr<TestPool, void (*)(TestPool*)>> pools;
    for (int i = 0; i < 30; ++i)
        pools.emplace_back(::new TestPool, [](TestPool* pool) {
            pool->~TestPool();
            ::operator delete(pool);
        });
    std::vector<std::vector<void*>> elements;
    for (auto const& pool : pools) elements.push_back(take(*pool, 16, 1024, 200));
    for (std::size_t i = 0; i < pools.size(); ++i) {
        for (void* const element : elements[i]) pools[i]->Free(element);
        for (std::size_t n = elements[i].size(); n-- > 0;)
            EXPECT_EQ(elements[i][n], pools[i]->Alloc(16, 1024)) << "pool " << i;
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
