#include "generic/tshsort"

#include "tests/support/test.h"

namespace {

TEST(TShSort, SortsEveryLength) {
    std::mt19937 random(2);
    for (unsigned n = 0; n < 150; ++n) {
        std::vector<int> a;
        for (unsigned i = 0; i < n; ++i) a.push_back(static_cast<int>(random() % 20));
        std::vector<int> model = a;
        TShSort<int>(a.data(), n, [](int const* x, int const* y) { return *x - *y; });
        std::sort(model.begin(), model.end());
        ASSERT_EQ(model, a) << n;
    }
}

}  // namespace
