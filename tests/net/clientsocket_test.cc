#include "net/clientsocket.h"

#include <chrono>

#include "tests/net/sockets.h"
#include "tests/support/fresh_folder.h"

namespace {

// A port of the own host where nobody listens.
unsigned short FreePort() {
    ServerSocketIn server(0, OwnHost());
    EXPECT_GE(server.Listen(0), 0);
    return PortOf(server);
}

using ClientSocket = SocketTest;

// Connects with and without a time-out, which have to agree. Returns 0 or the error.
template <class Client>
int ConnectError(Client&& client) {
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
    ServerSocketIn four(0, OwnHost()), six(0, "::1");
    ServerSocketUn local("./sock"), longer(std::string(150, 'p').c_str());
    ASSERT_TRUE(four.Listen(0) >= 0 && local.Listen(0) >= 0 && longer.Listen(0) >= 0);
    EXPECT_TRUE(ConnectError(ClientSocketIn(four.RefString())) == 0 &&
                ConnectError(ClientSocketIn("./sock")) == 0 &&
                ConnectError(ClientSocketUn("./sock")) == 0 &&
                ConnectError(ClientSocketUn(std::string(107, 'p').c_str())) == 0);
    SockIO::SockAddr name;
    bool const has_six = six.Listen(0) >= 0 && six.GetSocketName(name) == 0;
    EXPECT_EQ(0, has_six ? ConnectError(ClientSocketIn(name.Port(), "::1"))
                         : errno - EADDRNOTAVAIL);  // not every machine has IPv6
}

TEST_F(ClientSocket, ReportsEachFailureAndClosesTheDescriptor) {
    FreshFolder const folder;
    ServerSocketIn server(0, OwnHost());
    unsigned short const port = FreePort();
    String_t const host = OwnHost(), foreign("192.0.2.77"), longer(std::string(108, '/').c_str());
    EXPECT_EQ(ECONNREFUSED, ConnectError(ClientSocketIn(port, host)));
    EXPECT_EQ(EAI_ADDRFAMILY, ConnectError(ClientSocketIn(port, AF_INET6, host)));
    ASSERT_GE(server.Listen(0), 0);
    EXPECT_EQ(EADDRINUSE, ConnectError(ClientSocketIn(port, PortOf(server), host, host)));
    EXPECT_EQ(EADDRNOTAVAIL, ConnectError(ClientSocketIn(port, port, AF_INET, host, foreign)));
    // A local address that is not found is not used, and without a port not looked up.
    EXPECT_EQ(ECONNREFUSED, ConnectError(ClientSocketIn(port, port, host, "::1%none")));
    EXPECT_EQ(ECONNREFUSED, ConnectError(ClientSocketIn(port, 0, host, foreign)));
    EXPECT_EQ(EINVAL, ConnectError(ClientSocketIn(longer, 9)));
    EXPECT_EQ(ENOENT, ConnectError(ClientSocketUn("./none")));
    int error = 0;
    EXPECT_TRUE(ClientSocketUn().Connect(2147484, error) == -1 && error == EINVAL);
    NoDescriptors const limit;
    EXPECT_EQ(EMFILE, ConnectError(ClientSocketUn("./none")));
}

// Connecting to a server that has no room for another connection does not end.
TEST_F(ClientSocket, WaitsForAFullServerUntilASignalOrTheTimeOut) {
    ServerSocketIn full(0, OwnHost());
    ASSERT_TRUE(full.Listen(0) >= 0 && listen(full.Fd(), 0) == 0);
    UniqueFd const only(ClientSocketIn(full.RefString()).Connect());
    ClientSocketIn client(full.RefString());
    int error = 0;
    {
        Interrupts const signals;
        EXPECT_TRUE(client.Connect(0, error) == -1 && error == EINVAL);
        EXPECT_TRUE(client.Connect() == -1 && errno == EINTR && client.Fd() == -1);
    }
    auto const start = std::chrono::steady_clock::now();
    EXPECT_TRUE(client.Connect(1, error) == -1 && error == ETIMEDOUT && client.Fd() == -1);
    EXPECT_GE(std::chrono::steady_clock::now() - start, std::chrono::milliseconds(990));
}

TEST_F(ClientSocket, ComesFromItsLocalPortAndChangesItsAddress) {
    ServerSocketIn server(0, OwnHost());
    ASSERT_GE(server.Listen(0), 0);
    SockIO::SockAddr name;
    sockaddr_in four = {};
    unsigned short const port = FreePort();
    ClientSocketIn client(1, port, "127.0.0.1", OwnHost());
    EXPECT_TRUE(client.Port(PortOf(server)) == 1 && client.Hostname(OwnHost()) == "127.0.0.1");
    EXPECT_TRUE(client.RefString() == server.RefString() && client.BindLocal() == 0);
    UniqueFd const fd(client.Connect());
    EXPECT_TRUE(client.GetSocketName(fd.Get(), name) == 0 && name.Port() == port);
    EXPECT_TRUE(client.GetSocketName(fd.Get(), four) == 0 && ntohs(four.sin_port) == port);
}

}  // namespace
