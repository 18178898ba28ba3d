#include "net/hostname.h"

#include <dlfcn.h>
#include <netdb.h>

#include "net/addrinfo.h"
#include "net/sockaddr.h"
#include "tests/support/test.h"

// In this program "both.test" has an IPv6 address, and behind it an IPv4 one.
extern "C" int getaddrinfo(char const* host, char const* service, addrinfo const* hints,
                           addrinfo** list) {
    static auto const system =
        reinterpret_cast<decltype(&getaddrinfo)>(dlsym(RTLD_NEXT, "getaddrinfo"));
    if (!host || std::strcmp(host, "both.test") != 0) return system(host, service, hints, list);
    system("::1", service, nullptr, list);
    while (*list) list = &(*list)->ai_next;
    return system("127.0.0.1", service, nullptr, list);
}

// The address of a host is its first IPv4 one; that of a socket is the first of all, and errors of
// the resolver keep the one before.
TEST(Hostname, ChoosesAmongTheAddressesOfHosts) {
    char const *const four = "127.0.0.1", *const bad = "::1%none";
    Rows<char const*, int, int, int, char const*, char const*> const rows = {
        {"both.test", 0, EINVAL, 0, four, "::1"},
        {"::1", 0, 0, 0, "::1", "::1"},
        {bad, EAI_NONAME, EAI_NONAME, EAI_NONAME, "old", "127.0.0.9"},
        {"localhost", 0, 0, 0, four, four}};
    for (auto const& [host, error, name_error, init_error, want, socket_ip] : rows) {
        String_t ip("old"), name("old");
        EXPECT_TRUE(error == SockIO::GetIpAddress(ip, host) && ip == want) << host;
        EXPECT_EQ(name_error, SockIO::GetCanonicalHostname(name, host)) << host;
        EXPECT_STREQ(name_error ? "old" : host, name);
        SockIO::SockAddr address("127.0.0.9:1");
        address.Init();
        address.Host(host);
        EXPECT_STREQ(socket_ip, address.IpAddr()) << host;
        EXPECT_EQ(init_error, address.Init()) << host;
    }
    String_t ip("");
    EXPECT_EQ(EINVAL, SockIO::GetIpAddress(ip, nullptr));
    SockIO::GetIpAddress(ip, SockIO::GetHostname());
    EXPECT_STREQ(ip, SockIO::GetIpAddress());
}

TEST(AddrInfo, TakesHintsAndNumericAddresses) {
    using SockIO::AddrInfo;
    char const* const four = "127.0.0.1";
    AddrInfo const ftp(four, "ftp", 0, AF_INET, SOCK_STREAM), any(four, 21);
    auto const port = [](AddrInfo const& info) {
        return ntohs(reinterpret_cast<sockaddr_in const*>(info.List()->ai_addr)->sin_port);
    };
    EXPECT_TRUE(port(ftp) == 21 && port(any) == 21 && !ftp.List()->ai_next && any.List()->ai_next);
    for (char const* const numeric : {"::1", "1.2.3.4"})
        EXPECT_STREQ(numeric, AddrInfo::ToString(*AddrInfo::ToAddr(numeric).List()));
    EXPECT_TRUE(AddrInfo::ToAddr("1.2.3").Error() == -6 && !AddrInfo::ToAddr("1.2.3").List());
}
