#include "text/numeric.h"

#include <numeric>

#include "tests/support/abort_text.h"
#include "tests/support/test.h"

namespace {

TEST(MthRound, RoundsHalvesAwayFromZeroAndSaturates) {
    std::pair<double, int> const rows[] = {
        {-0.5, -1},          {-0.49, 0},         {2.5, 3},         {0.49999999999999994, 1},
        {HUGE_VAL, INT_MAX}, {-1e300, -INT_MAX}, {std::nan(""), 0}};
    for (auto const& [x, want] : rows) EXPECT_EQ(want, mth_round(x)) << x;
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
