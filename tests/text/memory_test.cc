#include "text/memory.h"

#include <numeric>

#include "tests/support/abort_text.h"
#include "tests/support/test.h"
#include "text/numeric.h"

TEST(CheckedAllocation, KeepsContentsAndGrowsToTheNextMultipleOf256) {
    void* block = SRealloc(nullptr, 400);
    std::memset(block, 'x', 400);
    block = SArealloc(block, 1000, 100);
    EXPECT_EQ(0, std::memcmp(block, std::string(400, 'x').data(), 400));
    std::free(SRealloc(block, 400));
    block = SCalloc(100, 4);  // likely the block that was given back
    EXPECT_EQ(0, std::memcmp(block, std::string(400, 0).data(), 400));
    for (void* const each : {block, SMalloc(0), SArealloc(nullptr, 0, 0)}) std::free(each);
    for (unsigned const needed : {1, 256, 257, 512}) {
        unsigned grown = 0, fits = needed;
        std::free(SBalloc(&grown, SMalloc(8), needed, 8));
        EXPECT_TRUE(grown == needed / 256 * 256 + 256 && SBalloc(&fits, &fits, needed, 8) == &fits);
    }
}

TEST(OutOfMemoryDeathTest, PrintsItsTextWithoutALineEndAndAborts) {
    static unsigned capacity = 0;
    for (auto* const call :
         {+[] { SArealloc(nullptr, 1, 0); },                      // element size 0
          +[] { SBalloc(&capacity, nullptr, 0x1FFFFFFFu, 8); }})  // so many bytes
        EXPECT_EXIT(call(), testing::KilledBySignal(SIGABRT), AbortText("out of memory"));
    EXPECT_EXIT(halt(), testing::KilledBySignal(SIGABRT), AbortText(""));
}

TEST(Numeric, RoundsHalvesAwayFromZeroAndDividesLikeEuclid) {
    double const values[] = {-0.5, -0.49, 2.5, 0.49999999999999994, HUGE_VAL, -1e300, std::nan("")};
    std::string rounded;
    for (double const x : values) rounded += std::to_string(mth_round(x)) + ' ';
    EXPECT_EQ("-1 0 3 1 2147483647 -2147483647 0 ", rounded);
    for (int a = -3; a < 80; ++a)
        for (int b = 1; b < 80; ++b)
            ASSERT_EQ(a > 0 ? std::gcd(a, b) : b, gcd(a, b)) << a << ", " << b;
}
