#include "text/memory.h"

#include "tests/support/abort_text.h"
#include "tests/support/test.h"

namespace {

TEST(CheckedAllocation, KeepsContentsAndServesNull) {
    void* block = SRealloc(nullptr, 400);
    std::memset(block, 'x', 400);
    block = SArealloc(block, 1000, 100);
    EXPECT_EQ(0, std::memcmp(block, std::string(400, 'x').data(), 400));
    std::free(SRealloc(block, 400));
    block = SCalloc(100, 4);  // likely the block that was given back
    EXPECT_EQ(0, std::memcmp(block, std::string(400, '\0').data(), 400));
    for (void* const each : {block, SMalloc(0), SArealloc(nullptr, 0, 0)}) std::free(each);
}

TEST(SBalloc, GrowsToTheNextMultipleOf256AboveTheNeed) {
    unsigned const rows[][3] = {{0, 1, 256}, {0, 256, 512}, {256, 257, 512}, {0, 512, 768}};
    for (auto const& [before, needed, want] : rows) {
        unsigned grown = before;
        std::free(SBalloc(&grown, SMalloc(8), needed, 8));
        EXPECT_EQ(want, grown) << "needed " << needed;
    }
    unsigned fits = 300;
    EXPECT_EQ(&fits, SBalloc(&fits, &fits, 300, 8));
}

TEST(OutOfMemoryDeathTest, PrintsItsTextWithoutALineEndAndAborts) {
    static unsigned capacity = 0;
    void (*const calls[])() = {
        [] { SArealloc(nullptr, 1, 0); },  // element size 0
        [] { SArealloc(SMalloc(1), 2147483648u, 2); },
        [] { SBalloc(&capacity, nullptr, 0xFFFFFF00u, 1); },  // a capacity of 2^32
        [] { SBalloc(&capacity, nullptr, 0x1FFFFFFFu, 8); },  // so many bytes
        [] { SRealloc(SMalloc(1), 0); }};  // the platform's realloc frees and answers null
    for (auto* const call : calls)
        EXPECT_EXIT(call(), testing::KilledBySignal(SIGABRT), AbortText("out of memory"));
}

}  // namespace
