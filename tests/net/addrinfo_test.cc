#include "net/addrinfo.h"

#include <gtest/gtest.h>
#include <netinet/in.h>

using SockIO::AddrInfo;

// Without hints there is an entry for each type of socket: not alone.
TEST(AddrInfo, AsksTheResolverOrReadsANumericAddress) {
    char const *const host = "127.0.0.1", *const any = "0.0.0.0";
    int const v4 = AF_INET, v6 = AF_INET6, tcp = SOCK_STREAM;
    auto const numeric = AddrInfo::ToAddr;
    struct {
        AddrInfo info;
        char const* ip;  // null for the error in `port`
        int port, family;
        bool alone;
    } const rows[] = {{{host, "ftp", 0, v4, tcp}, host, 21, v4, true},
                      {{host, 65535, 0, v4, SOCK_DGRAM}, host, 65535, v4, true},
                      {{host, 0, v4, tcp}, host, 0, v4, true},
                      {{nullptr, 9, AI_PASSIVE, v4, tcp}, any, 9, v4, true},
                      {{host, 9, 0, v6, tcp}, nullptr, EAI_ADDRFAMILY, 0, true},
                      {{host, "80"}, host, 80, v4, false},
                      {{host, 80}, host, 80, v4, false},
                      {AddrInfo(host), host, 0, v4, false},
                      {numeric(host), host, 0, v4, true},
                      {numeric("0::1"), "::1", 0, v6, true},
                      {numeric("1.2.3"), nullptr, -6, 0, true},
                      {numeric(nullptr), nullptr, -6, 0, true}};
    for (auto const& row : rows) {
        AddrInfo copy = AddrInfo::ToAddr("::");
        copy = AddrInfo(row.info);
        EXPECT_EQ(row.ip ? 0 : row.port, copy.Error());
        ASSERT_EQ(row.ip != nullptr, copy.List() != nullptr) << row.port;
        if (!row.ip) continue;
        addrinfo const& entry = *copy.List();
        auto const* const address = reinterpret_cast<sockaddr_in const*>(entry.ai_addr);
        EXPECT_TRUE(entry.ai_family == row.family && address->sin_family == row.family) << row.ip;
        EXPECT_TRUE(AddrInfo::ToString(entry) == row.ip && ntohs(address->sin_port) == row.port);
        EXPECT_EQ(row.family == v4 ? 16u : 28u, entry.ai_addrlen);
        EXPECT_EQ(row.alone, !entry.ai_next) << row.ip << row.port;
    }
    addrinfo other = {};
    other.ai_family = AF_UNIX;
    EXPECT_STREQ("", AddrInfo::ToString(other));
}
