#include "system/sreadwrite.h"

#include <thread>

#include "tests/system/processes.h"

using SReadWriteThreads = ProcessTest;

TEST_F(SReadWriteThreads, PutPiecesTogetherUpToTheEndOrAnError) {
    std::string const sent(1000000, 'x');
    std::string got(sent.size() + 8, '.');
    int ends[2];
    ASSERT_EQ(0, pipe(ends));
    EXPECT_EQ(0, sread(-1, got.data(), 0) + swrite(-1, got.data(), 0));
    EXPECT_EQ(-1, sread(ends[1], got.data(), 1));
    EXPECT_EQ(-1, swrite(ends[0], got.data(), 1));
    std::thread writer([&] { EXPECT_EQ(1000000, swrite(ends[1], sent.data(), 1000000)); });
    EXPECT_EQ(1000000, sread(ends[0], got.data(), 1000000));
    writer.join();
    EXPECT_EQ(3, swrite(ends[1], "def", 3));
    close(ends[1]);
    EXPECT_EQ(3, sread(ends[0], &got[sent.size()], 8));
    EXPECT_EQ(sent + "def.....", got);
    close(ends[0]);
}
