#include "text/numeric.h"

#include <numeric>

#include "tests/support/abort_text.h"
#include "tests/support/test.h"

namespace {

TEST(MthRound, RoundsHalvesAwayFromZeroAndSaturates) {
    std::pair<double, int> const near[] = {{0.5, 1}, {-0.5, -1}, {-0.49, 0}, {2.5, 3}, {-2.5, -3}};
    for (auto const& [x, want] : near) EXPECT_EQ(want, mth_round(x)) << x;
    EXPECT_EQ(1, mth_round(0.49999999999999994));  // the sum with 0.5 rounds up to 1
    for (double x : {2147483646.5, 1e300, HUGE_VAL}) EXPECT_EQ(2147483647, mth_round(x)) << x;
    EXPECT_EQ(-2147483647, mth_round(-1e300));  // the negation of the upper end
    EXPECT_EQ(0, mth_round(std::nan("")));
}

TEST(Gcd, AgreesWithEuclidAndReturnsBForNonPositiveA) {
    for (int a = -3; a < 80; ++a)
        for (int b = 1; b < 80; ++b)
            ASSERT_EQ(a > 0 ? std::gcd(a, b) : b, gcd(a, b)) << a << ", " << b;
}

TEST(HaltDeathTest, EndsTheProcessSilently) {
    EXPECT_EXIT(halt(), testing::KilledBySignal(SIGABRT), AbortText(""));
}

}  // namespace
