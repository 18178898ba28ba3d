#include "net/hostname.h"

#include <gtest/gtest.h>
#include <unistd.h>

#include <cerrno>

TEST(Hostname, NamesAndAddressesOfHosts) {
    char own[256];
    ASSERT_EQ(0, gethostname(own, sizeof own));
    EXPECT_STREQ(own, SockIO::GetHostname());
    char const* const rows[][2] = {{"127.0.0.1", "127.0.0.1"},
                                   {"::1", "::1"},
                                   {"localhost", "127.0.0.1"},
                                   {"", nullptr},
                                   {nullptr, nullptr}};
    for (auto const& [host, want] : rows) {
        String_t ip("old"), name("old");
        int const error = SockIO::GetIpAddress(ip, host);
        EXPECT_TRUE(!error == !!want && ip == (want ? want : "old")) << error << ip;
        EXPECT_EQ(!error, SockIO::GetCanonicalHostname(name, host) == 0 && name != "old");
        EXPECT_EQ(host == nullptr, error == EINVAL);
    }
    String_t ip("");
    SockIO::GetIpAddress(ip, own);
    EXPECT_STREQ(ip, SockIO::GetIpAddress());
}
