#include "generic/tsortedvector"

#include <set>

#include "tests/support/test.h"

namespace {

struct ByValue {
    int operator()(int a, int b) const { return a < b ? -1 : a > b; }
};
using Numbers = TSortedVector<int, ByValue>;

TEST(TSortedVector, FollowsAStdSetThroughRandomSteps) {
    std::mt19937 random(21);
    Numbers v(1);
    std::set<int> model;
    for (int step = 0; step < 5000; ++step) {
        int const key = static_cast<int>(random() % 60);
        if (random() % 2) {
            TResult<int> const at = v.Insert(key);
            ASSERT_TRUE(at.found == model.insert(key).second && *at.ptr == key) << step;
        } else {
            ASSERT_EQ(model.erase(key) == 1, v.Remove(key)) << step;
        }
        ASSERT_EQ(Joined(model), Joined(v)) << step;
        ASSERT_EQ(model.count(key) == 1, v.Contains(key));
        ASSERT_EQ(std::as_const(v).Find(key), v.Find(key));
    }
}

TEST(TSortedVector, InsertsAndRemovesItsOwnElements) {
    Numbers v(1);
    for (int const value : {5, 1, 3, 7}) v.Insert(value);
    TResult<int> const same = v.Insert(v[1]);  // full: the buffer moves
    EXPECT_TRUE(same.found == 0 && same.ptr == &v[1] && v.Size() == 8);
    EXPECT_TRUE(v.Remove(v[0]));
    EXPECT_EQ("3 5 7", Joined(v));
}

TEST(TSortedVectorDeathTest, RefusesNegativeIndexes) {
    Numbers v;
    v.Insert(1);
    char const* const text = R"(include/generic/tvarr:[0-9]+:.*i < \(arrp-arr\))";
    EXPECT_DEATH(v[-1], text);
    EXPECT_DEATH(std::as_const(v)[std::uint64_t{1} << 32], text);
    v.Clear();
    EXPECT_EQ(0, v.Get()[0]);  // overwritten
}

}  // namespace
