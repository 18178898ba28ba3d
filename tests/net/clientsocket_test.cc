#include "net/clientsocket.h"

#include <fstream>

#include "net/serversocket.h"
#include "tests/net/sockets.h"
#include "tests/support/fresh_folder.h"

namespace {

using ClientSocket = SocketTest;

// Connects with and without a time-out, which have to agree. Returns 0 or the error.
template <class Client>
int ConnectError(Client& client) {
    int error = -99;
    UniqueFd const plain(client.Connect());
    int const plain_error = plain ? 0 : errno;
    UniqueFd const timed(client.Connect(2147483, error));
    EXPECT_EQ(plain_error, error) << client.RefString();
    EXPECT_TRUE(!timed == (error != 0) && client.Fd() == -1) << client.RefString();
    EXPECT_TRUE(!timed || (IsPlain(plain.Get()) && IsPlain(timed.Get()))) << client.RefString();
    return error;
}

TEST_F(ClientSocket, HandsOverConnectionsAndCanConnectAgain) {
    FreshFolder const folder;
    ServerSocketIn four(0, OwnHost()), six(0, "::1", AF_INET6);
    ServerSocketUn local("./sock"), longer(std::string(150, 'p').c_str());
    ASSERT_TRUE(four.Listen(0) >= 0 && local.Listen(0) >= 0 && longer.Listen(0) >= 0);
    ClientSocketIn in(four.RefString()), in_local("./sock");
    ClientSocketUn un("./sock"), cut(std::string(107, 'p').c_str());
    EXPECT_TRUE(ConnectError(in) == 0 && ConnectError(in_local) == 0 && ConnectError(un) == 0);
    EXPECT_TRUE(ConnectError(cut) == 0 && un.RefString() == "./sock");

    if (std::ifstream("/proc/net/if_inet6").peek() == EOF) GTEST_SKIP() << "no IPv6 here";
    SockIO::SockAddr bound;
    ASSERT_TRUE(six.Listen(0) >= 0 && six.GetSocketName(bound) == 0);
    ClientSocketIn in_six(bound.Port(), "::1");
    EXPECT_EQ(0, ConnectError(in_six));
}

TEST_F(ClientSocket, ReportsEachFailureAndClosesTheDescriptor) {
    FreshFolder const folder;
    std::ofstream("file");
    BoundSocket const unheard(0);
    unsigned short const port = unheard.address.Port();
    char const *const host = unheard.address.Host(), *const foreign = "192.0.2.77";
    auto const fails = [](auto&& client, int error) {
        auto const before = OpenDescriptors();
        EXPECT_EQ(error, ConnectError(client)) << client.RefString();
        EXPECT_EQ(before, OpenDescriptors()) << client.RefString();
    };
    fails(ClientSocketIn(port, host), ECONNREFUSED);
    fails(ClientSocketIn(port, AF_INET6, host), EAI_ADDRFAMILY);
    fails(ClientSocketIn(port, port, host, host), EADDRINUSE);
    fails(ClientSocketIn(port, port, AF_INET, host, foreign), EADDRNOTAVAIL);
    // A local address that is not found is not used, and without a port not looked up.
    fails(ClientSocketIn(port, port, host, "::1%none"), ECONNREFUSED);
    fails(ClientSocketIn(port, 0, host, foreign), ECONNREFUSED);
    fails(ClientSocketIn(("/" + std::string(107, 'a')).c_str(), 9), EINVAL);
    fails(ClientSocketIn("./none"), ENOENT);
    fails(ClientSocketUn("./none"), ENOENT);
    fails(ClientSocketUn("./file"), ECONNREFUSED);
    fails(ClientSocketUn(), ECONNREFUSED);
    int error = 0;
    EXPECT_TRUE(ClientSocketUn().Connect(2147484, error) == -1 && error == EINVAL);
    EXPECT_TRUE(ClientSocketIn(host).Connect(4294967295, error = 0) == -1 && error == EINVAL);
    NoDescriptors const limit;
    ClientSocketUn local("./none");
    ClientSocketIn client(port, host);
    EXPECT_TRUE(ConnectError(local) == EMFILE && ConnectError(client) == EMFILE);
}

TEST_F(ClientSocket, WaitsForAFullServerUntilASignal) {
    FreshFolder const folder;
    FullListener const full;
    ClientSocketIn client(full.address.Port(), full.address.Host());
    ServerSocketUn server("./sock");
    ASSERT_GE(server.Listen(0), 0);
    int error = 0;
    Interrupts const signals;
    EXPECT_TRUE(client.Connect(0, error) == -1 && error == EINVAL);
    EXPECT_TRUE(client.Connect() == -1 && errno == EINTR && client.Fd() == -1);

    std::vector<UniqueFd> waiting;
    ClientSocketUn local("./sock");
    do waiting.emplace_back(local.Connect(0, error));
    while (error == 0);
    EXPECT_TRUE(error == EAGAIN && waiting.size() == 7) << "a backlog of 5 takes 6";
    EXPECT_TRUE(local.Connect() == -1 && errno == EINTR && local.Fd() == -1);
}

TEST_F(ClientSocket, ComesFromItsLocalPortAndChangesItsAddress) {
    ServerSocketIn server(0, OwnHost());
    ASSERT_GE(server.Listen(0), 0);
    SockIO::SockAddr name;
    sockaddr_in four = {};
    ASSERT_EQ(0, server.GetSocketName(name));
    unsigned short const port = BoundSocket(0).address.Port();  // which is free again
    ClientSocketIn client(1, port, "127.0.0.1", OwnHost());
    EXPECT_TRUE(client.Port(name.Port()) == 1 && client.Hostname(OwnHost()) == "127.0.0.1");
    EXPECT_TRUE(client.RefString() == server.RefString() && client.BindLocal() == 0);
    UniqueFd const fd(client.Connect());
    EXPECT_TRUE(client.GetSocketName(fd.Get(), name) == 0 && name.Port() == port);
    EXPECT_TRUE(client.GetSocketName(fd.Get(), four) == 0 && ntohs(four.sin_port) == port);
    EXPECT_TRUE(client.GetSocketName(-1, name) == -1 && name.Host() == OwnHost());
    EXPECT_TRUE(client.GetSocketName(-1, four) == -1 && client.BindLocal() == -1);
    EXPECT_TRUE(client && !!client && ClientSocketIn("/a") && !ClientSocketIn(0, "h"));
}

}  // namespace
