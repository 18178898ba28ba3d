#include "net/buffer.h"

#include "tests/support/test.h"

namespace {

struct Out : OutputBuffer<char> {
    using OutputBuffer<char>::OutputBuffer;
    int Flush() override {
        auto const count = std::min(most, cur - base);
        sent.append(base, static_cast<std::size_t>(count));
        std::copy(base + count, cur, base);
        cur -= count;
        return static_cast<int>(count);
    }
    std::string Put(std::string const& text) {
        std::string results;
        for (char const& c : text) results += std::to_string(PutByte(&c));
        return results;
    }
    std::ptrdiff_t most = 2;
    std::string sent;
};

struct In : InputBuffer<char> {
    using InputBuffer<char>::InputBuffer;
    int Fill() override {
        std::fill(cur = base, end = base + left, 'x');
        return static_cast<int>(std::exchange(left, 0u)) - 1;
    }
    unsigned left = 2;
};

TEST(Buffers, AskAtTheirEnds) {
    Out out(3u), none(0u);
    EXPECT_EQ("000202", out.Put("abcdef"));
    EXPECT_EQ("011", none.Put("abc"));  // room for one
    out.most = 0;
    EXPECT_EQ("00", out.Put("gh"));  // h finds none
    out.most = 9;
    EXPECT_EQ("30", out.Put("ij"));
    EXPECT_EQ("abcdefg", out.sent);

    char storage[4] = "###", c = '-';
    In in(storage, 2);
    EXPECT_TRUE(in.GetByte(&c) == 1 && in.GetByte(&c) == 1 && in.GetByte(&c) == -1 && c == 'x');
    EXPECT_STREQ("xx#", storage);
}

}  // namespace
