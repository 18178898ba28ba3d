#include "generic/tshsort"

#include "tests/support/test.h"

namespace {

using Pair = std::pair<int, int>;
int CompareFirst(Pair const* a, Pair const* b) {
    return a->first < b->first ? -1 : a->first > b->first;
}

TEST(TShSort, SortsEveryLength) {
    std::mt19937 random(2);
    for (unsigned n = 0; n < 150; ++n) {
        std::vector<Pair> a(n);
        for (unsigned i = 0; i < n; ++i)
            a[i] = {static_cast<int>(random() % 20), static_cast<int>(i)};
        std::vector<Pair> model = a;
        TShSort(a.data(), n, CompareFirst);
        std::sort(model.begin(), model.end());
        if (n >= 9) {  // the gap 1 alone keeps equal elements in order
            for (unsigned i = 1; i < n; ++i) ASSERT_LE(a[i - 1].first, a[i].first) << n;
            std::sort(a.begin(), a.end());
        }
        ASSERT_EQ(model, a) << n;
    }
}

}  // namespace
