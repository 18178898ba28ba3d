#include "generic/tshsort"

#include "tests/support/test.h"

namespace {

// The gap 1 alone keeps equal elements, here those of one thousand, in order.
TEST(TShSort, SortsEveryLength) {
    std::mt19937 random(2);
    for (unsigned n = 0; n < 150; ++n) {
        std::vector<int> a;
        for (unsigned i = 0; i < n; ++i) a.push_back(static_cast<int>(random() % 20 * 1000 + i));
        std::vector<int> model = a;
        auto const by_thousand = [](int const* x, int const* y) { return *x / 1000 - *y / 1000; };
        auto const by_value = [](int const* x, int const* y) { return *x - *y; };
        TShSort<int>(a.data(), n, n < 9 ? +by_thousand : +by_value);
        std::sort(model.begin(), model.end());
        ASSERT_EQ(model, a) << n;
    }
}

}  // namespace
