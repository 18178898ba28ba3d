#include "net/clientsocket.h"

#include <netdb.h>

#include <chrono>

#include "tests/net/sockets.h"
#include "tests/support/fresh_folder.h"

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

TEST_F(ClientSocket, ConnectsOrReportsEachFailure) {
    FreshFolder const folder;
    String_t const host = OwnHost(), longest("./" + String_t(std::string(105, 'p').c_str()));
    ServerSocketIn server(0, host), gone(0, host);
    ServerSocketUn local(longest + "cut off");
    ASSERT_TRUE(server.Listen(0) >= 0 && gone.Listen(0) >= 0 && local.Listen(0) >= 0);
    gone.Close();
    unsigned short const port = PortOf(gone);
    EXPECT_EQ(ECONNREFUSED, ConnectError(ClientSocketIn(port, host)));
    EXPECT_EQ(0, ConnectError(ClientSocketIn(server.RefString())));
    EXPECT_EQ(0, ConnectError(ClientSocketIn(longest)));
    EXPECT_EQ(0, ConnectError(ClientSocketUn(longest)));
    EXPECT_EQ(EAI_ADDRFAMILY, ConnectError(ClientSocketIn(port, AF_INET6, host)));
    EXPECT_EQ(EADDRINUSE, ConnectError(ClientSocketIn(port, PortOf(server), host, host)));
    EXPECT_EQ(ENOENT, ConnectError(ClientSocketUn("./none")));
}

// A server that has no room for another connection does not answer.
TEST_F(ClientSocket, WaitsForAFullServerUntilTheTimeOut) {
    ServerSocketIn full(0, OwnHost());
    ASSERT_TRUE(full.Listen(0) >= 0 && listen(full.Fd(), 0) == 0);
    UniqueFd const only(ClientSocketIn(full.RefString()).Connect());
    ClientSocketIn client(full.RefString());
    int error = 0;
    EXPECT_TRUE(client.Connect(2147484, error) == -1 && std::exchange(error, 0) == EINVAL);
    EXPECT_TRUE(ClientSocketUn().Connect(2147484, error) == -1 && error == EINVAL);
    auto const start = std::chrono::steady_clock::now();
    EXPECT_TRUE(client.Connect(1, error) == -1 && error == ETIMEDOUT && client.Fd() == -1);
    EXPECT_GE(std::chrono::steady_clock::now() - start, std::chrono::milliseconds(990));
}
