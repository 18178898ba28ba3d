#include "net/serversocket.h"

#include <list>

#include "net/clientsocket.h"
#include "tests/net/sockets.h"
#include "tests/support/fresh_folder.h"

namespace {

using ServerSocket = SocketTest;
using SockIO::SockAddr;

constexpr int kFirst = 20100;  // on a host of our own

void SearchAmong(int span, unsigned taken) {
    std::list<ServerSocketIn> others;
    for (int i = 0; i < 4; ++i)
        if (taken >> i & 1) others.emplace_back(kFirst + i, OwnHost()).Listen(0);
    int port = span ? getpid() % span : 0, tries = 0;
    for (; taken >> port & 1 && tries <= span; ++tries) port = (port + 1) % (span + 1);
    ServerSocketIn server(kFirst, kFirst + span, OwnHost());
    int const fd = server.Listen(0), error = errno;
    EXPECT_TRUE(tries <= span ? IsPlain(fd) : fd == -1 && error == EADDRINUSE) << taken;
    EXPECT_EQ(kFirst + (tries <= span ? port : 0), PortOf(server)) << taken;
}

// Every pattern of ports in use, for ranges of 1 to 4 ports.
TEST_F(ServerSocket, SearchesItsRangeFromAStartThatDependsOnTheProcess) {
    for (int span = 0; span <= 3; ++span)
        for (unsigned taken = 0; taken < 2u << span; ++taken) SearchAmong(span, taken);
}

TEST_F(ServerSocket, ChangesItsAddressOnlyWhileItDoesNotListen) {
    String_t const host = OwnHost();
    ServerSocketIn server(0, "127.0.0.1"), fixed(kFirst, host);
    SockAddr bound;
    EXPECT_TRUE(server.Hostname(host) == "127.0.0.1" && !server && server.Port(0) == 0);
    ASSERT_TRUE(server.Listen(1) >= 0 && server.GetSocketName(bound) == 0 && bound.Port() != 0);
    EXPECT_TRUE(server.Port(1) == 0 && server.Hostname("other") == "" && server);
    EXPECT_STREQ(bound.ToString(), server.RefString());
    server.Close();
    EXPECT_TRUE(server.Port(0) == bound.Port() && server.Listen(0) >= 0);
    ASSERT_TRUE(fixed.Listen(0) >= 0 && fixed.Listen(0) >= 0) << "in place of the first";
    EXPECT_TRUE(ServerSocketIn(0, "192.0.2.77").Listen(0) == -1 && errno == EADDRNOTAVAIL);
    EXPECT_EQ(before + 2, OpenDescriptors());
}

// Each way gives the same connection, and those with a caller its address.
TEST_F(ServerSocket, AcceptsAndTellsTheCaller) {
    FreshFolder const folder;
    for (String_t const& ref : {OwnHost() + ":0", String_t("./sock")}) {
        ServerSocketIn to(ref);
        ASSERT_GE(to.Listen(0), 0);
        for (int way = 0; way < 4; ++way) {
            SockAddr own, caller;
            sockaddr_in four = {};
            UniqueFd const fd(ClientSocketIn(to.RefString()).Connect());
            UniqueFd const accepted(way == 0   ? to.Accept()
                                    : way == 1 ? to.Accept(2147483)
                                    : way == 2 ? to.AcceptConnection(caller)
                                               : to.AcceptConnection(four, 1));
            ASSERT_TRUE(fd && IsPlain(accepted.Get()) && IsPlain(to.Fd())) << way;
            ASSERT_EQ(0, ClientSocketIn::GetSocketName(fd.Get(), own));
            EXPECT_EQ(way == 2, caller.Rep() && caller.ToString() == own.ToString());
            String_t name, ip;
            unsigned short port = 9;
            EXPECT_EQ(0, way < 3 ? to.GetCaller(accepted.Get(), name, ip, port)
                                 : to.DecodeCaller(four, name, ip, port));
            EXPECT_TRUE(ip == own.Host() && port == own.Port() && name == own.GetHostname());
        }
    }
}

TEST_F(ServerSocket, ReportsWhyNothingWasAccepted) {
    ServerSocketIn to(0, OwnHost());
    SockAddr caller(7, 0);
    EXPECT_TRUE(to.AcceptConnection(caller, 0) == -1 && errno == EBADF && caller.Port() == 7);
    EXPECT_TRUE(to.AcceptConnection(caller) == -1 && errno == EBADF && caller.Port() == 0);
    EXPECT_TRUE(to.Listen(0) >= 0 && to.Accept(2147484) == -1 && errno == EINVAL);
    EXPECT_TRUE(to.AcceptConnection(caller, 1) == -1 && errno == ETIMEDOUT);
}

TEST_F(ServerSocket, MakesAndRemovesTheFileOfALocalSocket) {
    FreshFolder const folder;
    auto const exists = [] { return std::filesystem::exists("sock"); };
    {
        ServerSocketUn server("sock");
        ASSERT_TRUE(server.Listen(1) >= 0 && fcntl(server.Fd(), F_GETFD) == FD_CLOEXEC);
        sockaddr_un caller = {};
        UniqueFd const client(ClientSocketUn("sock").Connect());
        UniqueFd const accepted(server.AcceptConnection(caller, 1));
        EXPECT_TRUE(IsPlain(accepted.Get()) && caller.sun_family == AF_UNIX);
    }
    ServerSocketUn stale("sock");
    EXPECT_TRUE(exists() && stale.Listen(0) == -1 && errno == EADDRINUSE);
    static_cast<ServerSocketBase&>(stale).Close();
    EXPECT_TRUE(!exists() && stale.Listen(0) >= 0 && exists() && stale.RefString() == "sock");
}

}  // namespace
