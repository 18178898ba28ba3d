#include "system/sreadwrite.h"

#include <thread>

#include "tests/system/processes.h"

using SReadWriteThreads = ProcessTest;

TEST_F(SReadWriteThreads, PutPiecesTogetherUpToTheEndOrAnError) {
    std::string const sent(1000000, 'x');
    std::string got(sent.size() + 8, '.');
    int ends[2];
    ASSERT_EQ(0, pipe(ends));
    EXPECT_TRUE(sread(ends[1], got.data(), 1) == -1 && swrite(ends[0], got.data(), 1) == -1);
    std::thread writer([&] {
        EXPECT_EQ(1000000, swrite(ends[1], sent.data(), 1000000));
        close(ends[1]);
    });
    EXPECT_EQ(999990, sread(ends[0], got.data(), 999990));
    EXPECT_EQ(10, sread(ends[0], &got[999990], 18));
    writer.join();
    EXPECT_EQ(sent + "........", got);
    close(ends[0]);
}
