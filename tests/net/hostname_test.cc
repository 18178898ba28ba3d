#include "net/hostname.h"

#include <dlfcn.h>
#include <netdb.h>

#include "net/sockaddr.h"
#include "tests/support/test.h"

// In this program "46x.test" has an IPv4 and an IPv6 address and one of another family, in this
// order; names of other hosts go to the system.
extern "C" int getaddrinfo(char const* host, char const* service, addrinfo const* hints,
                           addrinfo** list) {
    static auto const system =
        reinterpret_cast<decltype(&getaddrinfo)>(dlsym(RTLD_NEXT, "getaddrinfo"));
    std::string_view const name(host ? host : "");
    std::size_t const end = name.find(".test");
    if (end == name.npos) return system(host, service, hints, list);
    *list = nullptr;
    for (char letter : name.substr(0, end))
        for (system(letter == '6' ? "::1" : "127.0.0.1", service, nullptr, list); *list;
             list = &(*list)->ai_next)
            if (letter == 'x') (*list)->ai_family = (*list)->ai_addr->sa_family = AF_PACKET;
    return 0;
}

// The address of a host is its first IPv4 one; that of a socket is the first of all, and errors of
// the resolver keep the one before.
TEST(Hostname, ChoosesAmongTheAddressesOfHosts) {
    char const *const four = "127.0.0.1", *const bad = "::1%none";
    Rows<char const*, int, int, int, char const*, char const*> const rows = {
        {"64.test", 0, EINVAL, 0, four, "::1"},
        {"x6.test", 0, EINVAL, EAFNOSUPPORT, "::1", nullptr},
        {"x.test", EINVAL, EINVAL, EAFNOSUPPORT, "old", nullptr},
        {".test", 0, EINVAL, 0, "old", "127.0.0.9"},
        {bad, EAI_NONAME, EAI_NONAME, EAI_NONAME, "old", "127.0.0.9"},
        {"localhost", 0, 0, 0, four, four}};
    for (auto const& [host, error, name_error, init_error, want, socket_ip] : rows) {
        String_t ip("old"), name("old");
        EXPECT_EQ(error, SockIO::GetIpAddress(ip, host)) << host;
        EXPECT_EQ(name_error, SockIO::GetCanonicalHostname(name, host)) << host;
        EXPECT_TRUE(ip == want && name == (name_error ? "old" : host)) << host;
        SockIO::SockAddr address("127.0.0.9:1");
        EXPECT_EQ(0, address.Init());
        address.Host(host);
        EXPECT_STREQ(socket_ip, address.IpAddr()) << host;
        EXPECT_EQ(init_error, address.Init()) << host;
    }
    String_t ip("");
    SockIO::GetIpAddress(ip, SockIO::GetHostname());
    EXPECT_STREQ(ip, SockIO::GetIpAddress());
    EXPECT_EQ(EINVAL, SockIO::GetIpAddress(ip, nullptr));
}
