#include "net/serversocket.h"

#include <chrono>
#include <thread>

#include "net/clientsocket.h"
#include "tests/net/sockets.h"
#include "tests/support/fresh_folder.h"

namespace {

using ServerSocket = SocketTest;
using ServerSocketThreads = SocketTest;
using SockIO::SockAddr;

constexpr unsigned short kFirst = 20100;  // on a host of our own

// Every pattern of ports in use, for ranges of 1 to 4 ports.
TEST_F(ServerSocket, SearchesItsRangeFromAStartThatDependsOnTheProcess) {
    for (int span = 0; span <= 3; ++span)
        for (unsigned taken = 0; taken < 2u << span; ++taken) {
            std::vector<BoundSocket> others;
            int port = span ? getpid() % span : 0, tries = 0;
            for (; taken >> port & 1 && tries <= span; ++tries) port = (port + 1) % (span + 1);
            for (unsigned i = 0; i < 4; ++i)
                if (taken >> i & 1) others.emplace_back(static_cast<unsigned short>(kFirst + i));
            bool const want = tries <= span;
            ServerSocketIn server(kFirst, kFirst + span, OwnHost());
            int const fd = server.Listen(0), error = errno;
            EXPECT_TRUE(want ? IsPlain(fd) : fd == -1 && error == EADDRINUSE) << taken;
            EXPECT_EQ(fd, server.Fd());
            EXPECT_EQ(kFirst + (want ? port : 0), SockAddr(server.RefString()).Port()) << taken;
        }
}

TEST_F(ServerSocket, ChangesItsAddressOnlyWhileItDoesNotListen) {
    String_t const host = OwnHost();
    ServerSocketIn server(0, "127.0.0.1"), fixed(kFirst, host), parsed(host + ":x");
    SockAddr bound;
    EXPECT_TRUE(server.Hostname(host) == "127.0.0.1" && !server && server.Port(0) == 0);
    ASSERT_TRUE(server.Listen(1) >= 0 && server.GetSocketName(bound) == 0 && bound.Port() != 0);
    EXPECT_TRUE(server.Port(1) == 0 && server.Hostname("other") == "" && server);
    EXPECT_STREQ(bound.ToString(), server.RefString());
    EXPECT_EQ(FD_CLOEXEC, fcntl(server.Fd(), F_GETFD));
    server.Close();
    EXPECT_TRUE(server.Fd() == -1 && before == OpenDescriptors());
    EXPECT_TRUE(server.Listen(0) == -1 && errno == EINVAL) << "the last port is below the first";
    EXPECT_TRUE(server.Port(0) == bound.Port() && server.Listen(0) >= 0);

    auto const fails = [this](ServerSocketIn&& socket, int error) {
        EXPECT_TRUE(socket.Listen(0) == -1 && errno == error && socket.Fd() == -1) << error;
        EXPECT_EQ(before + 1, OpenDescriptors()) << error;
    };
    fails(ServerSocketIn(0, host, AF_INET6), EAI_ADDRFAMILY);
    fails(ServerSocketIn(0, "192.0.2.77"), EADDRNOTAVAIL);
    fails(ServerSocketIn(kFirst, kFirst - 1, host), EINVAL);
    {
        NoDescriptors const limit;
        EXPECT_TRUE(fixed.Listen(0) == -1 && errno == EMFILE);
    }
    ASSERT_TRUE(fixed.Listen(0) >= 0 && fixed.Listen(0) >= 0) << "in place of the first";
    EXPECT_TRUE(fixed.setCloseOnExec() == 0 && !IsPlain(fixed.Fd()));
    EXPECT_TRUE(before + 2 == OpenDescriptors() && parsed.Listen(0) >= 0 && ServerSocketIn("/a"));
}

// Each way to accept gives the same connection, and those with a caller its address.
TEST_F(ServerSocket, AcceptsAndTellsTheCaller) {
    FreshFolder const folder;
    for (String_t const& ref : {OwnHost() + ":0", String_t("./sock")}) {
        ServerSocketIn server(ref);
        ASSERT_GE(server.Listen(0), 0);
        for (int form = 0; form < 6; ++form) {
            SockAddr caller(7, 0), own;
            sockaddr_in four = {};
            UniqueFd const fd(ClientSocketIn(server.RefString()).Connect());
            UniqueFd const accepted(form == 0   ? server.Accept()
                                    : form == 1 ? server.Accept(1)
                                    : form == 2 ? server.AcceptConnection(caller)
                                    : form == 3 ? server.AcceptConnection(caller, 2147483)
                                    : form == 4 ? server.AcceptConnection(four)
                                                : server.AcceptConnection(four, 1));
            ASSERT_TRUE(fd && accepted && IsPlain(accepted.Get()) && IsPlain(server.Fd())) << form;
            ASSERT_EQ(0, ClientSocketIn::GetSocketName(fd.Get(), own));
            EXPECT_EQ(form == 2 || form == 3, caller.Rep() && caller.ToString() == own.ToString());
            String_t name, ip, name_of_four, ip_of_four;
            unsigned short port = 9, port_of_four = 9;
            EXPECT_EQ(0, server.GetCaller(accepted.Get(), name, ip, port));
            EXPECT_TRUE(ip == own.Host() && port == own.Port() && name == own.GetHostname());
            server.DecodeCaller(four, name_of_four, ip_of_four, port_of_four);
            EXPECT_EQ(form > 3, name_of_four == name && ip_of_four == ip && port_of_four == port);
        }
    }
}

TEST_F(ServerSocket, ReportsWhyNothingWasAccepted) {
    ServerSocketIn server(0, OwnHost());
    SockAddr caller(7, 0);
    sockaddr_in four = {};
    four.sin_port = 7;
    EXPECT_TRUE(server.Accept() == -1 && errno == EBADF);
    EXPECT_TRUE(server.Accept(0) == -1 && errno == EBADF);
    EXPECT_TRUE(server.AcceptConnection(four, 0) == -1 && errno == EBADF && four.sin_port == 7);
    EXPECT_TRUE(server.AcceptConnection(four) == -1 && errno == EBADF && four.sin_port == 0);
    int const listening = server.Listen(0);
    EXPECT_TRUE(server.Accept(2147484) == -1 && errno == EINVAL);
    EXPECT_TRUE(server.AcceptConnection(caller, 4294967295) == -1 && errno == EINVAL);
    {
        Interrupts const signals;
        EXPECT_TRUE(server.Accept() == -1 && errno == EINTR);
        EXPECT_TRUE(server.Accept(0) == -1 && errno == EINTR);
        EXPECT_TRUE(server.AcceptConnection(caller, 0) == -1 && errno == EINTR);
    }
    UniqueFd client(ClientSocketIn(server.RefString()).Connect());
    {
        NoDescriptors const limit;
        EXPECT_TRUE(server.Accept(1) == -1 && errno == EMFILE && IsPlain(listening));
        EXPECT_TRUE(server.AcceptConnection(caller, 1) == -1 && errno == EMFILE);
        EXPECT_TRUE(!IsPlain(listening) && caller.Port() == 7) << "left non-blocking";
        EXPECT_TRUE(server.AcceptConnection(caller) == -1 && caller.Port() == 0 && !caller.Rep());
    }
    linger const reset = {1, 0};  // the caller is gone, nobody else is waited for
    setsockopt(client.Get(), SOL_SOCKET, SO_LINGER, &reset, sizeof reset);
    client.Reset();
    UniqueFd const accepted(server.AcceptConnection(caller, 1));
    EXPECT_TRUE(IsPlain(accepted.Get()) && server.Accept() == -1 && errno == EAGAIN);
    String_t name("n"), ip;
    unsigned short port = caller.Port(), kept = port;
    EXPECT_TRUE(server.GetCaller(accepted.Get(), caller) == -1 && caller.Port() == kept);
    EXPECT_TRUE(server.GetCaller(accepted.Get(), name, ip, port) == -1 && name == "n");

    int ends[2];  // in place of the listener something that is ready for all but reading
    ASSERT_TRUE(pipe(ends) == 0 && dup2(ends[1], listening) == listening && close(ends[1]) == 0);
    EXPECT_TRUE(server.AcceptConnection(caller, 1) == -1 && errno == EINVAL);
    close(ends[0]);
    EXPECT_TRUE(server.Accept(1) == -1 && errno == EINVAL);
}

TEST_F(ServerSocket, MakesAndRemovesTheFileOfALocalSocket) {
    FreshFolder const folder;
    auto const exists = [] { return std::filesystem::exists("sock"); };
    {
        ServerSocketUn server("sock");
        ASSERT_TRUE(server.Listen(1) >= 0 && fcntl(server.Fd(), F_GETFD) == FD_CLOEXEC);
        SockAddr to("sock", 0, AF_UNIX), from("client", 0, AF_UNIX);
        ASSERT_TRUE(to.Init() == 0 && from.Init() == 0);
        UniqueFd const bound(socket(AF_UNIX, SOCK_STREAM, 0)),
            other(ClientSocketUn("sock").Connect());
        ASSERT_EQ(0, bind(bound.Get(), from.Get(), from.Size()));
        ASSERT_EQ(0, connect(bound.Get(), to.Get(), to.Size()));
        sockaddr_un first, second;
        UniqueFd const plain(server.AcceptConnection(first)),
            timed(server.AcceptConnection(second, 1));
        EXPECT_TRUE(IsPlain(plain.Get()) && IsPlain(timed.Get()) && first.sun_family == AF_UNIX);
        EXPECT_TRUE(String_t("") == first.sun_path && String_t("client") == second.sun_path);
    }
    ServerSocketUn stale("sock");
    EXPECT_TRUE(exists() && stale.Listen(0) == -1 && errno == EADDRINUSE && stale.Fd() == -1);
    EXPECT_EQ(before, OpenDescriptors());
    stale.Close();
    EXPECT_TRUE(!exists() && stale.Listen(0) >= 0 && exists() && stale.RefString() == "sock");
    static_cast<ServerSocketBase&>(stale).Close();
    EXPECT_TRUE(!exists() && before == OpenDescriptors());
}

// All that takes its full second, at the same time.
TEST_F(ServerSocketThreads, TimeOutsEndAfterTheirSeconds) {
    FullListener const full;
    ClientSocketIn client(full.address.Port(), full.address.Host());
    ServerSocketIn plain(0, OwnHost()), told(0, OwnHost());
    ASSERT_TRUE(plain.Listen(0) >= 0 && told.Listen(0) >= 0);
    SockAddr caller;
    std::vector<std::thread> threads;
    for (int call = 0; call < 3; ++call)
        threads.emplace_back([&, call] {
            auto const start = std::chrono::steady_clock::now();
            int error = 0;
            EXPECT_EQ(-1, call == 0   ? client.Connect(1, error)
                          : call == 1 ? plain.Accept(1)
                                      : told.AcceptConnection(caller, 1));
            EXPECT_EQ(ETIMEDOUT, error ? error : errno);
            EXPECT_GE(std::chrono::steady_clock::now() - start, std::chrono::milliseconds(990));
        });
    for (std::thread& thread : threads) thread.join();
}

}  // namespace
