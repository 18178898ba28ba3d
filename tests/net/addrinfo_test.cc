#include "net/addrinfo.h"

#include <gtest/gtest.h>
#include <netinet/in.h>

using SockIO::AddrInfo;

TEST(AddrInfo, AsksTheResolverOrReadsANumericAddress) {
    char const* const host = "127.0.0.1";
    struct {
        AddrInfo info;
        int error;
        char const* ip;
        int port, family;
        bool alone;  // without hints there is an entry for each type of socket
    } const rows[] = {
        {{host, "ftp", 0, AF_INET, SOCK_STREAM}, 0, host, 21, AF_INET, true},
        {{host, 65535, 0, AF_INET, SOCK_DGRAM}, 0, host, 65535, AF_INET, true},
        {{host, 0, AF_INET, SOCK_STREAM}, 0, host, 0, AF_INET, true},
        {{nullptr, 9, AI_PASSIVE, AF_INET, SOCK_STREAM}, 0, "0.0.0.0", 9, AF_INET, true},
        {{host, 9, 0, AF_INET6, SOCK_STREAM}, EAI_ADDRFAMILY, "", 0, 0, true},
        {{host, "80"}, 0, host, 80, AF_INET, false},
        {{host, 80}, 0, host, 80, AF_INET, false},
        {AddrInfo(host), 0, host, 0, AF_INET, false},
        {AddrInfo::ToAddr(host), 0, host, 0, AF_INET, true},
        {AddrInfo::ToAddr("0::1.2.3.4"), 0, "::1.2.3.4", 0, AF_INET6, true},
        {AddrInfo::ToAddr("1.2.3"), -6, "", 0, 0, true},
        {AddrInfo::ToAddr(nullptr), -6, "", 0, 0, true}};
    for (auto const& row : rows) {
        AddrInfo copy = AddrInfo::ToAddr("::");
        copy = AddrInfo(row.info);
        EXPECT_EQ(row.error, copy.Error()) << row.ip << row.port;
        ASSERT_EQ(row.error == 0, copy.List() != nullptr) << row.ip << row.port;
        if (row.error != 0) continue;
        addrinfo const& entry = *copy.List();
        auto const* const address = reinterpret_cast<sockaddr_in const*>(entry.ai_addr);
        EXPECT_TRUE(entry.ai_family == row.family && address->sin_family == row.family) << row.ip;
        EXPECT_TRUE(AddrInfo::ToString(entry) == row.ip && ntohs(address->sin_port) == row.port);
        EXPECT_EQ(row.family == AF_INET ? 16u : 28u, entry.ai_addrlen);
        EXPECT_EQ(row.alone, !entry.ai_next) << row.ip << row.port;
    }
    addrinfo other = {};
    other.ai_family = AF_UNIX;
    EXPECT_STREQ("", AddrInfo::ToString(other));
}
