// Real sockets on a loopback address of this test process alone, and ways to make calls fail.
#ifndef KORBASE_TESTS_NET_SOCKETS_H
#define KORBASE_TESTS_NET_SOCKETS_H

#include <fcntl.h>
#include <gtest/gtest.h>
#include <netdb.h>
#include <signal.h>
#include <sys/resource.h>
#include <sys/time.h>
#include <unistd.h>

#include <cerrno>
#include <filesystem>
#include <string>
#include <vector>

#include "base/unique_fd.h"
#include "net/sockaddr.h"

using korbase_detail::UniqueFd;

inline std::ptrdiff_t OpenDescriptors() {
    return std::distance(std::filesystem::directory_iterator("/proc/self/fd"), {});
}

// Tests that leave no descriptor open.
struct SocketTest : testing::Test {
    std::ptrdiff_t const before = OpenDescriptors();
    ~SocketTest() override { EXPECT_EQ(before, OpenDescriptors()); }
};

// Blocking, and open in programs that are started: as a connection is handed out.
inline bool IsPlain(int fd) {
    return !(fcntl(fd, F_GETFL) & O_NONBLOCK) && fcntl(fd, F_GETFD) == 0;
}

inline String_t OwnHost() {
    int const id = getpid();
    std::string const high = std::to_string(id >> 14 & 127), mid = std::to_string(id >> 7 & 127);
    return ("127." + high + '.' + mid + '.' + std::to_string((id & 127) + 1)).c_str();
}

// A socket bound to a port of the own host, 0 for any, and its address; nobody listens there.
struct BoundSocket {
    SockIO::SockAddr address;
    UniqueFd fd;

    explicit BoundSocket(unsigned short port)
        : address(OwnHost(), port, AF_INET), fd(socket(AF_INET, SOCK_STREAM, 0)) {
        socklen_t size = sizeof(sockaddr_in);
        EXPECT_TRUE(address.Init() == 0 && bind(fd.Get(), address.Get(), size) == 0);
        EXPECT_EQ(0, getsockname(fd.Get(), address.Get(), &size));
        address.AdjustPort();
    }
};

// A listener without room for another connection: connecting to it does not end.
struct FullListener : BoundSocket {
    std::vector<UniqueFd> clients;

    FullListener() : BoundSocket(0) {
        for (listen(fd.Get(), 0); clients.size() < 3;) {
            clients.emplace_back(socket(AF_INET, SOCK_STREAM | SOCK_NONBLOCK, 0));
            connect(clients.back().Get(), address.Get(), address.Size());
        }
    }
};

// No further descriptor can be opened.
struct NoDescriptors {
    rlimit before, lowest;

    NoDescriptors() {
        getrlimit(RLIMIT_NOFILE, &before);
        lowest = {static_cast<rlim_t>(UniqueFd(dup(0)).Get()), before.rlim_max};
        setrlimit(RLIMIT_NOFILE, &lowest);
    }
    ~NoDescriptors() { setrlimit(RLIMIT_NOFILE, &before); }
};

// A signal with a handler every 5 milliseconds: one that comes too early does no harm.
struct Interrupts {
    Interrupts() {
        struct sigaction action = {};
        action.sa_handler = [](int) {};
        sigaction(SIGALRM, &action, nullptr);
        Every(5000);
    }
    ~Interrupts() { Every(0); }
    static void Every(int microseconds) {
        itimerval const timer = {{0, microseconds}, {0, microseconds}};
        setitimer(ITIMER_REAL, &timer, nullptr);
    }
};

#endif
