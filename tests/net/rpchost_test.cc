#include "net/rpchost.h"

#include <gtest/gtest.h>

// A `host` with "#" is what was there; ports are the same whatever the size of a long.
TEST(RpcDecomposeHostName, SplitsAndCuts) {
    struct {
        char const* text;
        unsigned size;
        char const* host;
        unsigned short port;
    } const rows[] = {
        {"host:7000", 5, "host", 7000},   {"a:70000", 9, "a", 4464},   {"host", 4, "hos", 0},
        {":7000", 10, "localhost", 7000}, {"a: +12x", 9, "a", 12},     {"a:b:5", 9, "a", 0},
        {nullptr, 10, "localhost", 0},    {"a:-1", 9, "a", 65535},     {":", 6, "local", 0},
        {"a:4294967296", 9, "a", 65535},  {"h:1", 0, "##########", 1}, {"h:1", 1, "", 1},
        {"", 10, "localhost", 0}};
    for (auto const& row : rows) {
        char host[] = "##########";
        unsigned short port = 9;
        EXPECT_EQ(host, RpcDecomposeHostName(row.text, host, row.size, &port));
        EXPECT_STREQ(row.host, host);
        EXPECT_EQ(row.port, port) << row.host;
        EXPECT_STREQ(&"##########"[row.size], host + row.size) << row.host;
    }
}
