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
        std::vector<int> results;
        for (char const& c : text) results.push_back(PutByte(&c));
        return Joined(results);
    }
    std::ptrdiff_t most = 2;
    std::string sent;
};

struct In : InputBuffer<char> {
    using InputBuffer<char>::InputBuffer;
    int Fill() override {
        cur = base;
        std::fill(base, end = base + std::min(left, size), 'x');
        return static_cast<int>(std::exchange(left, 0u)) - 1;
    }
    std::string Get(int n) {
        std::vector<int> results;
        for (char c = '-'; n > 0; --n) results.push_back(GetByte(&c));
        return Joined(results);
    }
    unsigned left = 3;
};

TEST(Buffers, AskAtTheirEnds) {
    char storage[4] = "###";
    Out out(3u), none(0u);
    EXPECT_EQ("0 0 0 2 0 2", out.Put("abcdef"));
    EXPECT_EQ("0 1 1", none.Put("abc"));  // room for one
    out.most = 0;
    EXPECT_EQ("0 0", out.Put("gh"));  // h finds none
    out.most = 9;
    EXPECT_EQ("3 0", out.Put("ij"));
    EXPECT_EQ("abcdefg", out.sent.substr(0, 7));
    out.Set(storage, 3);
    EXPECT_EQ("0 0 0 3", out.Put("klmn"));
    EXPECT_STREQ("nlm", storage);
    EXPECT_EQ(0, Out(storage, 0).PutByte("o"));

    In in(8), fixed(storage, 3);
    EXPECT_EQ("1 1 1 -1 -1", in.Get(5));
    fixed.Set(storage, 2), fixed.left = 2;
    EXPECT_EQ("1 1 -1", fixed.Get(3));
    EXPECT_STREQ("xxm", storage);
}

}  // namespace
