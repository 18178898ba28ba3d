#include "generic/tsortedvector"

#include <set>

#include "tests/support/test.h"

namespace {

struct ByValue {
    int operator()(int a, int b) const { return a < b ? -1 : a > b; }
};
using Numbers = TSortedVector<int, ByValue>;

TEST(TSortedVector, FollowsAStdSetAlsoWithItsOwnElements) {
    std::mt19937 random(21);
    Numbers v(1);
    std::set<int> model;
    for (int step = 0; step < 5000; ++step) {
        if (step % 100 == 0) v = Numbers(1), model.clear();
        bool const own = v.Len() > 0 && random() % 4 == 0;
        unsigned const at = own ? random() % v.Len() : 0;
        int const key = own ? v[at] : static_cast<int>(random() % 60);
        if (random() % 3) {
            TResult<int> const place = v.Insert(own ? v[at] : key);
            ASSERT_TRUE(place.found == model.insert(key).second && *place.ptr == key) << step;
        } else {
            ASSERT_EQ(model.erase(key) == 1, v.Remove(own ? v[at] : key)) << step;
        }
        ASSERT_EQ(Joined(model), Joined(v)) << step;
        ASSERT_EQ(model.count(key) == 1, v.Contains(key));
    }
}

}  // namespace
