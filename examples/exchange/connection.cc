#include "exchange/connection.h"

#include <fcntl.h>
#include <net/clientsocket.h>
#include <net/serversocket.h>
#include <netdb.h>
#include <netinet/in.h>
#include <netinet/tcp.h>
#include <unistd.h>

#include <cstring>

#include "exchange/messages.h"
#include "layout/command_line.h"

namespace exchange {
namespace {

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

int ConnectOrThrow(String_t const& address, unsigned seconds) {
    int error = 0;
    int const fd = Connect(address, seconds, error);
    if (fd >= 0) return fd;
    if (error < 0) throw SockIO::BaseException("connect error", address, gai_strerror(error));
    throw SockIO::ConnectError(address, error);
}

}  // namespace

Descriptor::~Descriptor() { close(fd); }

void PrepareSocket(int fd) {
    fcntl(fd, F_SETFL, fcntl(fd, F_GETFL) | O_NONBLOCK);
    ServerSocketBase::SetOption(fd, IPPROTO_TCP, TCP_NODELAY, 1);  // fails for a local socket
}

Connection::Connection(String_t const& address, unsigned seconds)
    : socket(ConnectOrThrow(address, seconds)), out(socket.Get()), in(socket.Get()) {
    PrepareSocket(socket.Get());
    // The system counts its own records in, and calls a local socket full at a quarter.
    ServerSocketBase::SetOption(socket.Get(), SOL_SOCKET, SO_SNDBUF, 8 * kMaxUnanswered);
    for (SockStream* stream : {static_cast<SockStream*>(&out), static_cast<SockStream*>(&in)}) {
        stream->Exceptions(kAllErrors);
        stream->Timeout(seconds);
    }
}

void Connection::Stop() {
    out << kStop << endm;
    int answer = -1;
    in >> answer;
    if (answer != kStop) in.SetFailed();
}

}  // namespace exchange
