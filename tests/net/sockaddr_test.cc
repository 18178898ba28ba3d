#include "net/sockaddr.h"

#include <gtest/gtest.h>

#include <cerrno>
#include <string>

namespace {

using SockIO::SockAddr;

TEST(SockAddr, LooksUpNumericHostsAndPaths) {
    struct {
        char const* ref;
        int family;
        unsigned size;
        char const* ip;
        int port;
    } const rows[] = {
        {"127.0.0.1:80", AF_INET, 16, "127.0.0.1", 80},
        {"[::1]:65535", AF_INET6, 28, "::1", 65535},
        {"/tmp/sock", AF_UNIX, 110, "/tmp/sock", 0},
    };
    for (auto const& row : rows) {
        SockAddr address(row.ref);
        EXPECT_EQ(nullptr, address.Rep());
        ASSERT_EQ(0, address.Init()) << row.ref;
        EXPECT_TRUE(address.Family() == row.family && address.Size() == row.size) << row.ref;
        EXPECT_TRUE(address.IpAddr() == row.ip && address.Port() == row.port) << row.ref;
    }
}

TEST(SockAddr, RefusesAPathWithoutRoomForItsTerminator) {
    SockAddr fits(String_t(std::string(107, 'a')), 0, AF_UNIX);
    SockAddr longer(String_t(std::string(108, 'a')), 0, AF_UNIX);
    EXPECT_TRUE(fits.Init() == 0 && fits.IpAddr().Len() == 107);
    EXPECT_TRUE(longer.Init() == EINVAL && !longer.Rep() && longer.IsValid());
}

}  // namespace
