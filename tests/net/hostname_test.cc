#include "net/hostname.h"

#include <gtest/gtest.h>
#include <unistd.h>

#include <cerrno>

namespace {

TEST(Hostname, NamesAndAddressesOfHosts) {
    char own[256];
    ASSERT_EQ(0, gethostname(own, sizeof own));
    EXPECT_STREQ(own, SockIO::GetHostname());
    struct {
        char const* host;
        char const* ip;  // null: an error
    } const rows[] = {{"127.0.0.1", "127.0.0.1"},
                      {"::1", "::1"},
                      {"localhost", "127.0.0.1"},
                      {"", nullptr},
                      {nullptr, nullptr}};
    for (auto const& row : rows) {
        String_t ip("old"), name("old");
        int const error = SockIO::GetIpAddress(ip, row.host);
        EXPECT_TRUE(!error == !!row.ip && ip == (row.ip ? row.ip : "old")) << error << ip;
        EXPECT_EQ(!error, SockIO::GetCanonicalHostname(name, row.host) == 0 && name != "old");
        EXPECT_EQ(row.host == nullptr, error == EINVAL);
    }
    String_t ip("");
    SockIO::GetIpAddress(ip, own);
    EXPECT_STREQ(ip, SockIO::GetIpAddress());
}

}  // namespace
