#include "net/addrinfo.h"

#include <gtest/gtest.h>
#include <netinet/in.h>

using SockIO::AddrInfo;

// Without hints there is an entry for each type of socket: not alone.
TEST(AddrInfo, AsksTheResolverOrReadsANumericAddress) {
    char const *const host = "127.0.0.1", *const none = nullptr;
    int const v4 = AF_INET, v6 = AF_INET6, tcp = SOCK_STREAM;
    struct {
        AddrInfo info;
        char const* ip;
        int port, family;
        bool alone;
    } const rows[] = {{{host, "ftp", 0, v4, tcp}, host, 21, v4, true},
                      {{none, 65535, AI_PASSIVE, v4, tcp}, "0.0.0.0", 65535, v4, true},
                      {{host, 80}, host, 80, v4, false},
                      {AddrInfo::ToAddr("0::1"), "::1", 0, v6, true}};
    for (auto const& row : rows) {
        ASSERT_TRUE(row.info.Error() == 0 && row.info.List()) << row.ip;
        addrinfo const& entry = *row.info.List();
        auto const* const address = reinterpret_cast<sockaddr_in const*>(entry.ai_addr);
        EXPECT_TRUE(entry.ai_family == row.family && row.alone == !entry.ai_next) << row.ip;
        EXPECT_TRUE(AddrInfo::ToString(entry) == row.ip && ntohs(address->sin_port) == row.port);
    }
    AddrInfo const bad = AddrInfo::ToAddr("1.2.3");
    EXPECT_TRUE(bad.Error() == -6 && !bad.List());
}
