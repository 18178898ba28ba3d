#include "net/hostname.h"

#include <netdb.h>

#include "net/addrinfo.h"
#include "tests/support/test.h"

// Errors of the resolver keep the text before.
TEST(Hostname, IsLookedUp) {
    Rows<char const*, int, char const*> const rows = {
        {"::1", 0, "::1"}, {"::1%none", EAI_NONAME, "old"}, {"localhost", 0, "127.0.0.1"}};
    for (auto const& [host, error, want] : rows) {
        String_t ip("old"), name("old");
        EXPECT_TRUE(error == SockIO::GetIpAddress(ip, host) && ip == want) << host;
        EXPECT_EQ(error, SockIO::GetCanonicalHostname(name, host)) << host;
        EXPECT_STREQ(error ? "old" : host, name);
    }
    String_t ip("");
    SockIO::GetIpAddress(ip, SockIO::GetHostname());
    EXPECT_STREQ(ip, SockIO::GetIpAddress());
}

TEST(AddrInfo, TakesHintsAndNumericAddresses) {
    using SockIO::AddrInfo;
    AddrInfo const ftp("127.0.0.1", "ftp", 0, AF_INET, SOCK_STREAM), any("127.0.0.1", 21);
    EXPECT_TRUE(!ftp.List()->ai_next && any.List()->ai_next);
    EXPECT_EQ(0, std::memcmp(ftp.List()->ai_addr, any.List()->ai_addr, sizeof(sockaddr_in)));
    for (char const* const numeric : {"::1", "1.2.3.4"})
        EXPECT_STREQ(numeric, AddrInfo::ToString(*AddrInfo::ToAddr(numeric).List()));
    EXPECT_TRUE(AddrInfo::ToAddr("1.2.3").Error() == -6 && !AddrInfo::ToAddr("1.2.3").List());
}
