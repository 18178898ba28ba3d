// Real sockets on a loopback address of this test process alone.
#ifndef KORBASE_TESTS_NET_SOCKETS_H
#define KORBASE_TESTS_NET_SOCKETS_H

#include <arpa/inet.h>
#include <fcntl.h>

#include <filesystem>

#include "base/unique_fd.h"
#include "net/serversocket.h"
#include "tests/support/test.h"

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
    return inet_ntoa({htonl(0x7f010000u + static_cast<unsigned>(getpid()))});
}

inline unsigned short PortOf(ServerSocketIn const& server) {
    return SockIO::SockAddr(server.RefString()).Port();
}

#endif
