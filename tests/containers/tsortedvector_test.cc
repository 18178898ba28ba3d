#include "generic/tsortedvector"

#include <gtest/gtest.h>

#include <algorithm>
#include <cstdint>
#include <random>
#include <set>
#include <string>
#include <vector>

#include "text/string.h"

namespace {

struct ByText {
    int operator()(String_t const& a, String_t const& b) const { return str_cmp(a, b); }
};
struct ByValue {
    int operator()(int a, int b) const { return a < b ? -1 : a > b; }
};
using Names = TSortedVector<String_t, ByText>;
using Numbers = TSortedVector<int, ByValue>;

TEST(TSortedVector, FollowsAStdSetThroughRandomSteps) {
    std::mt19937 random(21);
    Names names(1);
    std::set<std::string> model;
    for (int step = 0; step < 5000; ++step) {
        std::string const key = std::to_string(random() % 60);
        String_t const name(key.c_str());
        if (random() % 2) {
            unsigned const size = names.Len();
            TResult<String_t> const at = names.Insert(name);
            ASSERT_EQ(model.insert(key).second ? 1 : 0, at.found) << step;
            ASSERT_EQ(key, at.ptr->Get());
            ASSERT_EQ(size + static_cast<unsigned>(at.found), names.Len());
        } else {
            ASSERT_EQ(model.erase(key) == 1, names.Remove(name)) << step;
        }
        Names const& seen = names;
        ASSERT_EQ(model.size(), seen.Len()) << step;
        ASSERT_EQ(model, std::set<std::string>(seen.begin(), seen.end())) << step;
        ASSERT_TRUE(std::is_sorted(seen.begin(), seen.end())) << step;
        ASSERT_EQ(model.count(key) == 1, seen.Contains(name));
        ASSERT_EQ(seen.Find(name), names.Find(name));
    }
}

TEST(TSortedVector, InsertsItsOwnElementsAndCopies) {
    Numbers v(1);
    for (int const value : {5, 1, 3}) EXPECT_EQ(1, v.Insert(value).found);
    EXPECT_EQ(std::vector<int>({1, 3, 5}), std::vector<int>(v.begin(), v.end()));
    v.Insert(7);
    TResult<int> const same = v.Insert(v[1]);  // full: the buffer moves
    EXPECT_EQ(0, same.found);
    EXPECT_EQ(&v[1], same.ptr);
    EXPECT_EQ(8u, v.Size());
    Numbers const copy(v);
    EXPECT_TRUE(v.Remove(v[0]));
    EXPECT_EQ(4u, copy.Len());
    EXPECT_EQ(128u, Numbers().Size());
}

TEST(TSortedVectorDeathTest, RefusesNegativeIndexes) {
    Numbers v;
    v.Insert(1);
    Numbers const& c = v;
    EXPECT_TRUE(v[0] == 1 && v[0u] == 1 && c[0L] == 1);
    char const* const text = R"(include/generic/tvarr:[0-9]+:.*i < \(arrp-arr\))";
    EXPECT_DEATH(v[0xFFFFFFFFu], text);
    EXPECT_DEATH(v[-1], text);
    EXPECT_DEATH(c[std::uint64_t{1} << 32], text);
    v.Clear();
    EXPECT_DEATH(v[0], text);
    EXPECT_EQ(0, v.Get()[0]);  // overwritten
}

}  // namespace
