#include "text/numeric.h"

#include <gtest/gtest.h>

#include <cmath>
#include <limits>
#include <numeric>
#include <random>

#include "tests/support/abort_text.h"

namespace {

TEST(MthRound, RoundsHalvesAwayFromZeroAndSaturates) {
    struct {
        double x;
        int want;
    } const rows[] = {
        {0.5, 1},
        {-0.5, -1},
        {-0.49, 0},
        {2.5, 3},
        {-2.5, -3},
        {0.49999999999999994, 1},  // the sum with 0.5 rounds up to 1 before it is cut
        {2147483646.5, 2147483647},
        {1e300, 2147483647},
        {-1e300, -2147483647},  // the negation of the upper end
        {std::numeric_limits<double>::infinity(), 2147483647},
        {std::nan(""), 0},
    };
    for (auto const& row : rows) EXPECT_EQ(row.want, mth_round(row.x)) << row.x;
}

TEST(Gcd, AgreesWithEuclidAndReturnsBForNonPositiveA) {
    std::mt19937 random(7);
    for (int i = 0; i < 2000; ++i) {
        int const a = 1 + static_cast<int>(random() % 5000);
        int const b = 1 + static_cast<int>(random() % 5000);
        ASSERT_EQ(std::gcd(a, b), gcd(a, b)) << a << ", " << b;
    }
    EXPECT_EQ(7, gcd(0, 7));
    EXPECT_EQ(7, gcd(-3, 7));
    EXPECT_EQ(-7, gcd(-3, -7));
}

TEST(HaltDeathTest, EndsTheProcessSilently) {
    EXPECT_EXIT(halt(), testing::KilledBySignal(SIGABRT), AbortText(""));
}

}  // namespace
