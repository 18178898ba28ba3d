#include "net/buffer.h"

#include "tests/support/test.h"

// An output buffer with storage of its own; streams bring theirs.
struct Out : OutputBuffer<char> {
    using OutputBuffer<char>::OutputBuffer;
    int Flush() override {
        sent.append(base, cur);
        return static_cast<int>(std::exchange(cur, base) - base);
    }
    std::string sent;
};

TEST(OutputBuffer, FlushesWhenItIsFull) {
    Out out(3u);
    std::string results;
    for (char const& c : std::string("abcdefg")) results += std::to_string(out.PutByte(&c));
    EXPECT_EQ("0003003abcdef", results + out.sent);
}
