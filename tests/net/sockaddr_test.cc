#include "net/sockaddr.h"

#include <netdb.h>

#include "tests/support/test.h"

using SockIO::SockAddr;

// Of a text that is no reference stays what was read, with the family that was given.
TEST(SockAddr, ReadsReferencesAndTakesOverAddresses) {
    String_t const longest("/" + String_t(std::string(106, 'a'))), here("127.0.0.1");
    Rows<String_t, int, int, int, unsigned, String_t, String_t> const rows = {
        {here + ":0", 1, 0, 2, 16, here, here},
        {"[0::1]:65535", 0, 65535, 10, 28, "0::1", "::1"},
        {longest, 0, 0, 1, 110, longest, longest},
        {"[::1", 2, 0, 2, 16, "localhost", here}};
    for (auto const& [ref, given, port, family, size, host, ip] : rows) {
        SCOPED_TRACE(ref);
        SockAddr address(ref, given);
        EXPECT_TRUE(!address.Rep() && address.Host() == host && address.Port() == port);
        EXPECT_TRUE(address.Init() == 0 && address.Family() == family && address.Size() == size);
        SockAddr const taken(*address.Get(), 0);
        EXPECT_TRUE(taken.Host() == ip && taken.Port() == port);
        EXPECT_EQ(0, std::memcmp(address.Get(), taken.Get(), taken.Size()));
        address = taken;
        address.Rep()->SetPort(3);
        address.AdjustPort();
        EXPECT_TRUE(address.Port() == (family != AF_UNIX ? 3 : 0) && address.Host() == ip);
        EXPECT_EQ(port, taken.Rep()->GetPort());
    }
}

TEST(SockAddr, KeepsOrDropsItsAddressWhenAnotherIsNotFound) {
    SockAddr address("::1", 7, AF_INET6), local("/a", 0, AF_UNIX);
    ASSERT_TRUE(address.Init() == 0 && local.Init() == 0);
    address.Host("127.0.0.1");
    EXPECT_TRUE(address.IpAddr() == "::1" && address.Init() == EAI_ADDRFAMILY);
    local.Host(String_t(std::string(108, 'a')));
    EXPECT_TRUE(!local.Rep() && local.Init() == EINVAL && !local.Rep() && !local.Get());
    sockaddr const other = {AF_PACKET, {}};
    EXPECT_TRUE(address.Init(other, 1) == EAFNOSUPPORT && !address.Rep() && address.Host() == "");
}
