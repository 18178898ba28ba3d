#include "containers/varr.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <cstdlib>
#include <functional>
#include <memory>
#include <random>
#include <vector>

namespace {

using Ints = std::vector<int>;

struct Delete {
    void operator()(varr_t* v) const { varr_delete(v); }
};
using Array = std::unique_ptr<varr_t, Delete>;

Array IntArray(int initial, int type, Ints const& elements = {}) {
    Array v(varr_create(sizeof(int), initial, type));
    varr_cat(v.get(), static_cast<int>(elements.size()), elements.data());
    return v;
}

Ints Elements(Array const& v) {
    auto const* const first = static_cast<int const*>(varr_get(v.get()));
    return Ints(first, first + varr_len(v.get()));
}

int CompareInts(void const* a, void const* b) {
    int const x = *static_cast<int const*>(a), y = *static_cast<int const*>(b);
    return x < y ? -1 : x > y;
}

TEST(Varr, GrowsByItsIncrementOrByDoubling) {
    for (auto const& row : {Ints{0, 6}, Ints{1, 8}}) {
        Array const v = IntArray(2, row[0]);
        for (int i = 1; i <= 5; ++i) EXPECT_EQ(i, *static_cast<int*>(varr_app(v.get(), &i)));
        EXPECT_EQ(row[1], v->capacity);
        EXPECT_EQ((Ints{1, 2, 3, 4, 5}), Elements(v));
    }
}

TEST(Varr, AppendsItsOwnElementsWhileTheBufferMoves) {
    Array const v = IntArray(3, 1, {1, 2, 3});
    auto* const last = static_cast<int*>(varr_cat(v.get(), 2, varr_get_by_index(v.get(), 1)));
    EXPECT_EQ(3, *last);
    for (int i = 0; i < 100; ++i) varr_app(v.get(), varr_get(v.get()));
    Ints want = {1, 2, 3, 2, 3};
    want.insert(want.end(), 100, 1);
    EXPECT_EQ(want, Elements(v));

    varr_cpy(v.get(), 4, varr_get_by_index(v.get(), 1));
    EXPECT_EQ((Ints{2, 3, 2, 3}), Elements(v));
    varr_ass(v.get(), varr_get_by_index(v.get(), 3));
    EXPECT_EQ((Ints{3}), Elements(v));
    EXPECT_EQ(varr_get(v.get()), varr_cat(v.get(), -2, nullptr));
    EXPECT_EQ(nullptr, varr_cpy(v.get(), 0, nullptr));
}

TEST(Varr, HandsBuffersOverAndTakesThemBack) {
    Array const v = IntArray(2, 1, {1, 2, 3});
    int* const saved = static_cast<int*>(varr_save(v.get()));
    EXPECT_EQ((Ints{1, 2, 3}), Ints(saved, saved + 3));
    EXPECT_EQ(0, varr_len(v.get()));  // saving empties the array
    EXPECT_EQ(nullptr, varr_pop(v.get()));
    std::free(varr_save(v.get()));

    std::free(varr_retrieve(v.get()));
    EXPECT_EQ(2, v->capacity);
    std::free(varr_get(v.get()));
    EXPECT_EQ(saved + 2, varr_override(v.get(), 3, saved));
    EXPECT_EQ(3, v->capacity);
    EXPECT_EQ(saved + 2, varr_pop(v.get()));
    EXPECT_EQ(3, saved[2]);
    EXPECT_EQ((Ints{1, 2}), Elements(v));
}

TEST(Varr, SortsFindsAndDropsDuplicates) {
    std::mt19937 random(41);
    for (int round = 0; round < 300; ++round) {
        Ints model(random() % 40);
        for (int& i : model) i = static_cast<int>(random() % 20) - 10;
        Array const v = IntArray(1, 1, model);
        if (round % 2) {
            varr_sort(v.get(), CompareInts);
            std::sort(model.begin(), model.end());
        }
        auto const wanted = std::find(model.begin(), model.end(), 3);
        int const key = 3;
        void* const found = varr_find(v.get(), CompareInts, &key);
        EXPECT_EQ(wanted == model.end()
                      ? nullptr
                      : varr_get_by_index(v.get(), static_cast<int>(wanted - model.begin())),
                  found);
        varr_uniq(v.get(), CompareInts);
        model.erase(std::unique(model.begin(), model.end()), model.end());
        ASSERT_EQ(model, Elements(v)) << round;
    }
}

TEST(Varr, UniqComparesWithTheNeighbourOfBefore) {
    Array const v = IntArray(8, 1, {1, 2, 3, 9});
    varr_uniq(v.get(), [](void const* elem, void const* left) {
        return *static_cast<int const*>(elem) - *static_cast<int const*>(left) == 1 ? 0 : 1;
    });
    EXPECT_EQ((Ints{1, 9}), Elements(v));  // 3 is next to 2, though 2 has gone
}

TEST(Varr, ElementsWithoutSizeAreNotCounted) {
    Array const v(varr_create(0, 0, 0));
    EXPECT_EQ(0, varr_len(v.get()));
    EXPECT_EQ(nullptr, varr_find(v.get(), CompareInts, nullptr));
    varr_sort(v.get(), CompareInts);
    varr_uniq(v.get(), CompareInts);
    std::free(varr_save(v.get()));
}

TEST(VarrDeathTest, ASizeBeyond32BitsIsExhaustion) {
    EXPECT_DEATH(varr_create(4096, 1 << 20, 0), "^out of memory");
}

}  // namespace
