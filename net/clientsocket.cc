#include "net/clientsocket.h"

#include <unistd.h>

#include <cerrno>
#include <cstring>
#include <utility>

#include "base/unique_fd.h"
#include "net/localaddress.h"
#include "net/waiting.h"

using korbase_detail::kMostSeconds;
using korbase_detail::NonBlocking;
using korbase_detail::UniqueFd;

namespace {

// Connects without waiting longer than `seconds`; 0 or the error, and then the descriptor is left
// non-blocking.
int ConnectWithin(unsigned seconds, int fd, sockaddr const* address, socklen_t size) {
    NonBlocking const mode(fd);
    if (!mode) return errno;
    if (connect(fd, address, size) != 0) {
        if (errno != EINPROGRESS) return errno;
        pollfd waiting = {fd, POLLRDNORM | POLLWRNORM, 0};
        int const ready = korbase_detail::PollSeconds(waiting, seconds);
        if (ready == 0) return ETIMEDOUT;
        if (ready < 0 || !(waiting.revents & (POLLRDNORM | POLLWRNORM | POLLERR))) return EINVAL;
        int error = 0;
        socklen_t error_size = sizeof error;
        if (getsockopt(fd, SOL_SOCKET, SO_ERROR, &error, &error_size) != 0) return errno;
        if (error != 0) return error;
    }
    return mode.Restore() ? 0 : errno;
}

}  // namespace

ClientSocketBase::~ClientSocketBase() { Discard(); }

bool ClientSocketBase::Open(int family) {
    Discard();
    fd = socket(family, SOCK_STREAM, 0);
    return fd >= 0;
}

int ClientSocketBase::Discard() {
    UniqueFd const closed(std::exchange(fd, -1));
    return -1;
}

int ClientSocketBase::Finish(sockaddr const* address, socklen_t size) {
    if (connect(fd, address, size) != 0) return Discard();
    return std::exchange(fd, -1);
}

int ClientSocketBase::Finish(sockaddr const* address, socklen_t size, unsigned seconds,
                             int& error) {
    error = ConnectWithin(seconds, fd, address, size);
    return error == 0 ? std::exchange(fd, -1) : Discard();
}

ClientSocketIn::ClientSocketIn(unsigned short port, char const* host)
    : remote(host, port, AF_UNSPEC) {}

ClientSocketIn::ClientSocketIn(unsigned short port, int family, char const* host)
    : remote(host, port, family) {}

ClientSocketIn::ClientSocketIn(unsigned short port, unsigned short local_port, char const* host,
                               char const* local_host)
    : remote(host, port, AF_UNSPEC), local(local_host, local_port, AF_UNSPEC) {}

ClientSocketIn::ClientSocketIn(unsigned short port, unsigned short local_port, int family,
                               char const* host, char const* local_host)
    : remote(host, port, family), local(local_host, local_port, AF_UNSPEC) {}

ClientSocketIn::ClientSocketIn(char const* ref) : remote(ref) {}

ClientSocketIn::ClientSocketIn(char const* ref, int family) : remote(ref, family) {}

String_t ClientSocketIn::RefString() const { return remote.ToString(); }

// Looks the addresses up and makes a bound descriptor; 0, or the resolver's code or errno.
int ClientSocketIn::Prepare() {
    if (int const error = remote.Init()) return error;
    if (local.Port() != 0) local.Init();
    if (!Open(remote.Family())) return errno;
    if (BindLocal() == 0) return 0;
    Discard();
    return errno;
}

int ClientSocketIn::Connect() {
    if (int const error = Prepare()) {
        errno = error;
        return -1;
    }
    return Finish(remote.Get(), remote.Size());
}

int ClientSocketIn::Connect(unsigned seconds, int& error) {
    error = seconds > kMostSeconds ? EINVAL : Prepare();
    return error == 0 ? Finish(remote.Get(), remote.Size(), seconds, error) : -1;
}

unsigned short ClientSocketIn::Port(unsigned short port) { return remote.Port(port); }

String_t ClientSocketIn::Hostname(String_t const& host) {
    String_t old = remote.Host();
    remote.Host(host);
    return old;
}

int ClientSocketIn::BindLocal() { return local.Rep() ? bind(fd, local.Get(), local.Size()) : 0; }

int ClientSocketIn::GetSocketName(int fd, SockIO::SockAddr& address) {
    sockaddr_storage name = {};
    socklen_t size = sizeof name;
    auto* const head = reinterpret_cast<sockaddr*>(&name);
    if (getsockname(fd, head, &size) != 0) return -1;
    address.Init(*head, 0);
    return 0;
}

int ClientSocketIn::GetSocketName(int fd, sockaddr_in& address) {
    sockaddr_storage name = {};
    socklen_t size = sizeof name;
    if (getsockname(fd, reinterpret_cast<sockaddr*>(&name), &size) != 0) return -1;
    std::memcpy(&address, &name, sizeof address);
    return 0;
}

ClientSocketUn::ClientSocketUn() : ClientSocketUn("") {}

ClientSocketUn::ClientSocketUn(String_t const& path) : path(path), addr() {}

String_t ClientSocketUn::RefString() const { return path; }

int ClientSocketUn::Connect() {
    if (!Open(AF_UNIX)) return -1;
    addr = korbase_detail::LocalAddress(path);
    return Finish(reinterpret_cast<sockaddr const*>(&addr), sizeof addr);
}

int ClientSocketUn::Connect(unsigned seconds, int& error) {
    if (seconds > kMostSeconds) {
        error = EINVAL;
        return -1;
    }
    if (!Open(AF_UNIX)) {
        error = errno;
        return -1;
    }
    addr = korbase_detail::LocalAddress(path);
    return Finish(reinterpret_cast<sockaddr const*>(&addr), sizeof addr, seconds, error);
}
