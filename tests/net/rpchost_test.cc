#include "net/rpchost.h"

#include "tests/support/test.h"

// A `host` with "#" is what was there; ports are the same whatever the size of a long.
TEST(RpcDecomposeHostName, SplitsAndCuts) {
    Rows<char const*, unsigned, char const*, unsigned short> const rows = {
        {"host:7000", 5, "host", 7000}, {"a:70000", 9, "a", 4464},
        {"host", 4, "hos", 0},          {":7000", 10, "localhost", 7000},
        {"a: +12x", 9, "a", 12},        {"a:4294967296", 9, "a", 65535},
        {"h:1", 0, "##########", 1},    {"a:b:5", 9, "a", 0}};
    for (auto const& [text, size, want, number] : rows) {
        char host[] = "##########";
        unsigned short port = 9;
        EXPECT_EQ(host, RpcDecomposeHostName(text, host, size, &port));
        EXPECT_STREQ(want, host);
        EXPECT_EQ(number, port) << want;
        EXPECT_STREQ(&"##########"[size], host + size) << want;
    }
}
