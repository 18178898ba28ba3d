#include "text/memory.h"

#include <gtest/gtest.h>

#include <climits>
#include <cstdlib>
#include <cstring>

#include "tests/support/abort_text.h"

namespace {

TEST(CheckedAllocation, KeepsContentsAndServesNull) {
    auto* block = static_cast<char*>(SRealloc(nullptr, 4));
    std::memcpy(block, "abc", 4);
    block = static_cast<char*>(SArealloc(block, 1000, 100));
    EXPECT_STREQ("abc", block);
    std::free(block);
    auto* zeros = static_cast<int*>(SCalloc(100, sizeof(int)));
    for (int i = 0; i < 100; ++i) ASSERT_EQ(0, zeros[i]);
    std::free(zeros);
    std::free(SMalloc(0));
    std::free(SArealloc(nullptr, 0, 0));
}

TEST(SBalloc, GrowsToTheNextMultipleOf256AboveTheNeed) {
    struct {
        unsigned capacity, needed, want;
    } const rows[] = {{0, 1, 256}, {0, 255, 256}, {0, 256, 512}, {256, 257, 512}, {0, 512, 768}};
    for (auto const& row : rows) {
        unsigned capacity = row.capacity;
        std::free(SBalloc(&capacity, SMalloc(8), row.needed, 8));
        EXPECT_EQ(row.want, capacity) << "needed " << row.needed;
    }
    unsigned capacity = 300;
    char block[1];
    EXPECT_EQ(block, SBalloc(&capacity, block, 300, 8));
    EXPECT_EQ(nullptr, SBalloc(&capacity, nullptr, 0, 0));
    EXPECT_EQ(300u, capacity);
}

TEST(OutOfMemoryDeathTest, PrintsItsTextWithoutALineEndAndAborts) {
    auto const killed = testing::KilledBySignal(SIGABRT);
    auto const text = AbortText("out of memory");
    void* const block = SMalloc(1);
    unsigned capacity = 0;
    EXPECT_EXIT(SArealloc(block, 1, 0), killed, text);  // element size 0
    EXPECT_EXIT(SArealloc(block, 2147483648u, 2), killed, text);
    EXPECT_EXIT(SArealloc(nullptr, UINT_MAX / 8 + 1, 8), killed, text);
    EXPECT_EXIT(SBalloc(&capacity, nullptr, UINT_MAX - 255, 1), killed, text);
    EXPECT_EXIT(SBalloc(&capacity, nullptr, UINT_MAX / 8, 8), killed, text);
    EXPECT_EXIT(SRealloc(block, 0), killed, text);  // the platform's realloc frees and answers null
    std::free(block);
}

}  // namespace
