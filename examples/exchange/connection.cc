#include "exchange/connection.h"

#include <fcntl.h>
#include <net/clientsocket.h>
#include <net/serversocket.h>
#include <netdb.h>
#include <netinet/in.h>
#include <netinet/tcp.h>
#include <unistd.h>

#include <cstring>

#include "layout/command_line.h"

namespace exchange {
namespace {

constexpr unsigned kAllErrors =
    SockStream::kEof | SockStream::kFailed | SockStream::kBad | SockStream::kTimedOut;

// A reference string is written HOST/PORT for an IPv6 address, but not read in that form.
int Connect(String_t const& address, unsigned seconds, int& error) {
    char const* const slash = std::strrchr(address, '/');
    int port = 0;
    if (slash != nullptr && std::strchr("/.", address[0]) == nullptr &&
        layout::ReadNumber(slash + 1, 1, 65535, port)) {
        String_t const host(address, static_cast<unsigned>(slash - address.Get()));
        return ClientSocketIn(static_cast<unsigned short>(port), host).Connect(seconds, error);
    }
    ClientSocketIn client(address);
    if (client) return client.Connect(seconds, error);
    error = EINVAL;
    return -1;
}

}  // namespace

int Connect(String_t const& address, unsigned seconds) {
    int error = 0;
    int const fd = Connect(address, seconds, error);
    if (fd >= 0) return fd;
    if (error < 0) throw SockIO::BaseException("connect error", address, gai_strerror(error));
    throw SockIO::ConnectError(address, error);
}

Descriptor::~Descriptor() { close(fd); }

Connection::Connection(int fd, unsigned seconds) : socket(fd), out(fd), in(fd, out) {
    out.Set(room[0], sizeof room[0]);
    in.Set(room[1], sizeof room[1]);
    // Only poll waits, so that time-outs hold; small messages go at once (not known to a local
    // socket, which does so anyway).
    fcntl(fd, F_SETFL, fcntl(fd, F_GETFL) | O_NONBLOCK);
    ServerSocketBase::SetOption(fd, IPPROTO_TCP, TCP_NODELAY, 1);
    // The system counts its own records in, and calls a local socket full at a quarter.
    ServerSocketBase::SetOption(fd, SOL_SOCKET, SO_SNDBUF, 8 * kMaxUnanswered);
    for (SockStream* stream : {static_cast<SockStream*>(&out), static_cast<SockStream*>(&in)}) {
        stream->Exceptions(kAllErrors);
        stream->Timeout(seconds);
    }
}

}  // namespace exchange
