#include "net/buffer.h"

#include "tests/support/test.h"

// An output buffer with storage of its own; streams bring theirs.
struct Out : OutputBuffer<char> {
    using OutputBuffer<char>::OutputBuffer;
    int Flush() override {
        sent.append(base, cur);
        return static_cast<int>(std::exchange(cur, base) - base);
    }
    std::string Put(std::string const& text) {
        std::string results;
        for (char const& c : text) results += std::to_string(PutByte(&c));
        return results + sent;
    }
    std::string sent;
};

TEST(Buffers, AskAtTheirEnds) {
    EXPECT_EQ("0003003abcdef", Out(3u).Put("abcdefg"));
    EXPECT_EQ("011ab", Out(0u).Put("abc"));  // room for one
}
