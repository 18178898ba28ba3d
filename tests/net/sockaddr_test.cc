#include "net/sockaddr.h"

#include <gtest/gtest.h>
#include <netdb.h>

#include <cerrno>
#include <cstring>
#include <string>
#include <utility>

namespace {

using SockIO::SockAddr;

TEST(SockAddr, ReadsReferencesAndLooksThemUp) {
    std::string const longest = '/' + std::string(106, 'a');
    struct {
        char const* ref;
        int given;         // family
        char const* host;  // as it is read
        int port, error, family;
        unsigned size;
        char const* ip;
        bool valid;  // before it is looked up
    } const rows[] = {{"127.0.0.1:80", 0, "127.0.0.1", 80, 0, 2, 16, "127.0.0.1", true},
                      {"127.0.0.1:0", 1, "127.0.0.1", 0, 0, 2, 16, "127.0.0.1", false},
                      {"[::1]:65535", 0, "::1", 65535, 0, 10, 28, "::1", true},
                      {longest.c_str(), 0, longest.c_str(), 0, 0, 1, 110, longest.c_str(), true},
                      {nullptr, 0, "", 0, 0, 1, 110, "", true},
                      // no references: what was read stays, with the family that was given
                      {"127.0.0.1", 2, "127.0.0.1", 0, 0, 2, 16, "127.0.0.1", false},
                      {"[::1", 2, "localhost", 0, 0, 2, 16, "127.0.0.1", false},
                      {"127.0.0.1:x!", 10, "127.0.0.1", 0, EAI_ADDRFAMILY, 0, 0, nullptr, false}};
    for (auto const& row : rows) {
        SCOPED_TRACE(row.ref ? row.ref : "null");
        SockAddr address(row.ref, row.given);
        EXPECT_TRUE(!address.Rep() && address.Host() == row.host && address.Port() == row.port);
        EXPECT_TRUE(address.IsValid() == row.valid && address.Init() == row.error);
        EXPECT_TRUE(address.Family() == row.family && address.Size() == row.size);
        EXPECT_TRUE(address.IpAddr() == row.ip && !address.Get() == !row.size);
    }
    SockAddr four(80, AF_INET), six(80, AF_INET6);  // any address
    EXPECT_TRUE(four.Init() == 0 && four.IpAddr() == "0.0.0.0");
    EXPECT_TRUE(six.Init() == 0 && six.IpAddr() == "::" && !SockAddr().IsValid());
}

TEST(SockAddr, AFailedLookUpKeepsTheAddressAndALongPathDropsIt) {
    SockAddr address("::1", 7, AF_INET6), local("/a", 0, AF_UNIX);
    ASSERT_TRUE(address.Init() == 0 && local.Init() == 0);
    address.Host("127.0.0.1");
    EXPECT_TRUE(address.Host() == "127.0.0.1" && address.IpAddr() == "::1");
    address.Host("::2");
    EXPECT_STREQ("::2", address.IpAddr());
    local.Host(String_t(std::string(108, 'a')));
    EXPECT_TRUE(!local.Rep() && local.Init() == EINVAL && !local.Rep() && local.IsValid());
}

TEST(SockAddr, TakesOverSystemAddresses) {
    std::string const path(108, 'p');  // not terminated
    sockaddr_in four = {};
    sockaddr_in6 six = {};
    sockaddr_un local = {};
    four.sin_family = AF_INET;
    six.sin6_family = AF_INET6;
    local.sun_family = AF_UNIX;
    four.sin_port = six.sin6_port = htons(258);
    four.sin_addr.s_addr = htonl(INADDR_LOOPBACK);
    six.sin6_addr = in6addr_loopback;
    std::memcpy(local.sun_path, path.data(), path.size());
    auto* const head = reinterpret_cast<sockaddr*>(&four);
    struct {
        void const* from;
        int lookup, family, port;
        char const* host;
    } const rows[] = {{&four, 0, AF_INET, 258, "127.0.0.1"},
                      {&six, 0, AF_INET6, 258, "::1"},
                      {&local, 1, AF_UNIX, 0, path.c_str()}};
    SockAddr address;
    for (auto const& row : rows) {
        ASSERT_EQ(0, address.Init(*static_cast<sockaddr const*>(row.from), row.lookup));
        EXPECT_TRUE(address.Host() == row.host && address.Port() == row.port) << row.host;
        EXPECT_TRUE(address.Family() == row.family && address.IpAddr() == row.host) << row.host;
        EXPECT_EQ(0, std::memcmp(address.Get(), row.from, address.Size())) << row.host;
    }
    address.Host("/x");
    EXPECT_STREQ("/x", address.IpAddr()) << "by the family that was found";
    char name[NI_MAXHOST];
    ASSERT_EQ(0, getnameinfo(head, sizeof four, name, sizeof name, nullptr, 0, 0));
    EXPECT_STREQ(name, SockAddr(*head, 1).Host());
    four.sin_family = AF_PACKET;
    EXPECT_TRUE(address.Init(*head, 1) == EAFNOSUPPORT && !address.Rep() && !address.Port());
    EXPECT_TRUE(address.Host() == "" && address.GetHostname().IsNull());
}

TEST(SockAddr, CopiesHaveAnAddressOfTheirOwn) {
    for (char const* ref : {"127.0.0.1:1", "[::1]:1", "./a"}) {
        SCOPED_TRACE(ref);
        SockAddr source(ref), assigned(9, 0);
        ASSERT_EQ(0, source.Init());
        bool const in = *ref != '.';
        SockAddr copy(source);
        assigned = copy;
        assigned = *&assigned;
        EXPECT_TRUE(assigned.Port(2) == in && assigned.Rep()->GetPort() == (in ? 2 : 0));
        EXPECT_TRUE(copy.Rep()->GetPort() == in && assigned.Family() == source.Family());
        copy.Rep()->SetPort(3);
        EXPECT_EQ(in, copy.Port());
        copy.AdjustPort();
        source = std::move(copy);
        EXPECT_TRUE(source.Port() == (in ? 3 : 0) && source.Port(5) == (in ? 3 : 0));
    }
}

}  // namespace
