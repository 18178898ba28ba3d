#include "containers/varr.h"

#include "tests/support/test.h"

namespace {

using Array = std::unique_ptr<varr_t, void (*)(varr_t*)>;

Array IntArray(int initial, int type, std::vector<int> const& elements) {
    Array v(varr_create(sizeof(int), initial, type), varr_delete);
    varr_cat(v.get(), static_cast<int>(elements.size()), elements.data());
    return v;
}

// "1 2 of 8": the elements and the capacity.
std::string Shown(Array const& v) {
    auto const* const first = static_cast<int const*>(varr_get(v.get()));
    return Joined(std::vector<int>(first, first + varr_len(v.get()))) + " of " +
           std::to_string(v->capacity);
}

int Subtract(void const* a, void const* b) {
    return *static_cast<int const*>(a) - *static_cast<int const*>(b);
}

TEST(Varr, GrowsByItsIncrementOrByDoubling) {
    EXPECT_EQ("1 2 3 4 5 of 6", Shown(IntArray(2, 0, {1, 2, 3, 4, 5})));
    Array const v = IntArray(3, 1, {1, 2, 3});
    EXPECT_EQ(3, *static_cast<int*>(varr_cat(v.get(), 2, varr_get_by_index(v.get(), 1))));
    while (v->capacity == 6) varr_app(v.get(), varr_get(v.get()));  // its own, while it moves
    EXPECT_EQ("1 2 3 2 3 1 1 of 12", Shown(v));
    varr_cpy(v.get(), 4, varr_get_by_index(v.get(), 1));
    EXPECT_EQ("2 3 2 3 of 12", Shown(v));
}

TEST(Varr, HandsBuffersOverAndTakesThemBack) {
    Array const v = IntArray(2, 1, {1, 2, 3});
    int* const saved = static_cast<int*>(varr_save(v.get()));
    EXPECT_EQ(nullptr, varr_pop(v.get()));  // saving empties the array
    std::free(varr_retrieve(v.get()));
    EXPECT_EQ(" of 2", Shown(v));
    std::free(varr_get(v.get()));
    EXPECT_EQ(saved + 2, varr_override(v.get(), 3, saved));
    EXPECT_EQ(saved + 2, varr_pop(v.get()));
    EXPECT_EQ("1 2 of 3, 3", Shown(v) + ", " + std::to_string(saved[2]));
}

TEST(Varr, SortsFindsAndDropsDuplicates) {
    Array const v = IntArray(8, 1, {9, -2, 3, 9, 1, 2, 3});
    int const key = 3;
    EXPECT_EQ(varr_get_by_index(v.get(), 2), varr_find(v.get(), Subtract, &key));
    varr_sort(v.get(), Subtract);
    varr_uniq(v.get(), Subtract);
    EXPECT_EQ("-2 1 2 3 9 of 8", Shown(v));
    varr_uniq(v.get(), [](void const* elem, void const* left) { return Subtract(elem, left) - 1; });
    EXPECT_EQ("-2 1 9 of 8", Shown(v));  // 3 was next to 2, though 2 has gone
}

}  // namespace
