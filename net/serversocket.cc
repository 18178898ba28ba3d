#include "net/serversocket.h"

#include <unistd.h>

#include <cerrno>
#include <cstdint>
#include <cstring>
#include <utility>

#include "base/unique_fd.h"
#include "net/clientsocket.h"
#include "net/closeonexec.h"
#include "net/localaddress.h"
#include "net/waiting.h"

using korbase_detail::NonBlocking;
using korbase_detail::UniqueFd;
using SockIO::SockAddr;

namespace {

constexpr int kBacklog = 1024;  // connections that wait to be accepted
constexpr int kLocalBacklog = 5;

// Hands a caller's address to the caller of the library, in either form.
void Store(sockaddr_storage const& from, SockAddr& to) {
    to.Init(reinterpret_cast<sockaddr const&>(from), 0);
}

template <class Structure>
void Store(sockaddr_storage const& from, Structure& to) {
    std::memcpy(&to, &from, sizeof to);
}

}  // namespace

ServerSocketBase::~ServerSocketBase() { Discard(); }

void ServerSocketBase::Close() { Discard(); }

bool ServerSocketBase::Open(int family) {
    Discard();
    fd = socket(family, SOCK_STREAM, 0);
    return fd >= 0;
}

int ServerSocketBase::Discard() {
    UniqueFd const closed(std::exchange(fd, -1));
    return -1;
}

int ServerSocketBase::setCloseOnExec() { return SockIO::SetCloseOnExec(fd); }

int ServerSocketBase::SetOption(int fd, int level, int name, int value) {
    return setsockopt(fd, level, name, &value, sizeof value);
}

int ServerSocketBase::Accept() { return accept(fd, nullptr, nullptr); }

int ServerSocketBase::Accept(unsigned seconds) { return AcceptWithin(seconds, nullptr); }

int ServerSocketBase::AcceptCaller(sockaddr_storage& caller) {
    caller = {};
    socklen_t size = sizeof caller;
    return accept(fd, reinterpret_cast<sockaddr*>(&caller), &size);
}

int ServerSocketBase::AcceptWithin(unsigned seconds, sockaddr_storage* caller) {
    if (seconds > korbase_detail::kMostSeconds || fd < 0) {
        errno = seconds > korbase_detail::kMostSeconds ? EINVAL : EBADF;
        return -1;
    }
    short const events = caller ? POLLRDNORM | POLLWRNORM : POLLRDNORM;
    pollfd waiting = {fd, events, 0};
    int const ready = korbase_detail::PollSeconds(waiting, seconds);
    if (ready < 0) return -1;
    if (!(waiting.revents & POLLRDNORM)) {
        errno = ready == 0 ? ETIMEDOUT : EINVAL;
        return -1;
    }
    // The connection may be gone by now: accepting must not wait for another one.
    NonBlocking const mode(fd);
    if (!mode) return -1;
    int const accepted = caller ? AcceptCaller(*caller) : accept(fd, nullptr, nullptr);
    if (accepted >= 0 || !caller) mode.Restore();
    // On this system it does not inherit the flag, on others it does.
    if (accepted >= 0) fcntl(accepted, F_SETFL, fcntl(accepted, F_GETFL) & ~O_NONBLOCK);
    return accepted;
}

ServerSocketIn::ServerSocketIn() : last_port(0) {}

ServerSocketIn::ServerSocketIn(int port, String_t const& host)
    : ServerSocketIn(port, port, host, AF_UNSPEC) {}

ServerSocketIn::ServerSocketIn(int port, String_t const& host, int family)
    : ServerSocketIn(port, port, host, family) {}

ServerSocketIn::ServerSocketIn(int port, int last_port, String_t const& host)
    : ServerSocketIn(port, last_port, host, AF_UNSPEC) {}

ServerSocketIn::ServerSocketIn(int port, int last_port, String_t const& host, int family)
    : addr(host, static_cast<unsigned short>(port), family), last_port(last_port) {}

ServerSocketIn::ServerSocketIn(String_t const& ref) : addr(ref.Get()), last_port(addr.Port()) {}

String_t ServerSocketIn::RefString() const { return addr.ToString(); }

int ServerSocketIn::Listen(int close_on_exec) {
    if (int const error = addr.Init()) {
        errno = error;
        return -1;
    }
    SockAddr bound(addr);
    if (!Open(addr.Family()) || SetOption(fd, SOL_SOCKET, SO_REUSEADDR, 1) != 0 ||
        !BindFreePort(bound) || listen(fd, kBacklog) != 0)
        return Discard();
    addr = std::move(bound);
    if (close_on_exec) setCloseOnExec();
    return fd;
}

// Binds the descriptor to the first free port and leaves the address it got in `bound`.
bool ServerSocketIn::BindFreePort(SockAddr& bound) const {
    std::int64_t const first = bound.Port(), span = last_port - first;
    if (span < 0) {
        errno = EINVAL;
        return false;
    }
    // Kept: modulo the span, not the number of ports, so that the last port is never the first try.
    std::int64_t port = span > 0 ? first + getpid() % span : first;
    for (std::int64_t left = span + 1; left > 0; --left) {
        bound.Port(static_cast<unsigned short>(port));
        if (bind(fd, bound.Get(), bound.Size()) == 0) {
            socklen_t size = bound.Size();
            if (getsockname(fd, bound.Get(), &size) != 0) return false;
            bound.AdjustPort();
            return true;
        }
        port = port == last_port ? first : port + 1;
    }
    return false;
}

template <class Caller>
int ServerSocketBase::AcceptInto(Caller& caller) {
    sockaddr_storage from;
    UniqueFd accepted(AcceptCaller(from));
    Store(from, caller);
    return accepted.Release();
}

template <class Caller>
int ServerSocketBase::AcceptInto(Caller& caller, unsigned seconds) {
    sockaddr_storage from;
    UniqueFd accepted(AcceptWithin(seconds, &from));
    if (accepted) Store(from, caller);
    return accepted.Release();
}

int ServerSocketIn::AcceptConnection(SockAddr& caller) { return AcceptInto(caller); }
int ServerSocketIn::AcceptConnection(sockaddr_in& caller) { return AcceptInto(caller); }

int ServerSocketIn::AcceptConnection(SockAddr& caller, unsigned seconds) {
    return AcceptInto(caller, seconds);
}

int ServerSocketIn::AcceptConnection(sockaddr_in& caller, unsigned seconds) {
    return AcceptInto(caller, seconds);
}

unsigned short ServerSocketIn::Port(unsigned short port) {
    return fd < 0 ? addr.Port(port) : static_cast<unsigned short>(0);
}

String_t ServerSocketIn::Hostname(String_t const& host) {
    if (fd >= 0) return String_t("");
    String_t old = addr.Host();
    addr.Host(host);
    return old;
}

int ServerSocketIn::GetSocketName(SockAddr& address) {
    return ClientSocketIn::GetSocketName(fd, address);
}

int ServerSocketIn::GetSocketName(sockaddr_in& address) {
    return ClientSocketIn::GetSocketName(fd, address);
}

int ServerSocketIn::GetCaller(int fd, SockAddr& caller) {
    sockaddr_storage from = {};
    socklen_t size = sizeof from;
    if (getpeername(fd, reinterpret_cast<sockaddr*>(&from), &size) != 0) return -1;
    Store(from, caller);
    return 0;
}

int ServerSocketIn::GetCaller(int fd, String_t& hostname, String_t& ip, unsigned short& port) {
    SockAddr caller;
    int const result = GetCaller(fd, caller);
    return result < 0 ? result : DecodeCaller(caller, hostname, ip, port);
}

int ServerSocketIn::DecodeCaller(SockAddr const& caller, String_t& hostname, String_t& ip,
                                 unsigned short& port) {
    hostname = caller.GetHostname();
    ip = caller.IpAddr();
    port = caller.Port();
    return 0;
}

int ServerSocketIn::DecodeCaller(sockaddr_in const& caller, String_t& hostname, String_t& ip,
                                 unsigned short& port) {
    sockaddr_storage whole = {};  // the beginning of a longer address may be in `caller`
    std::memcpy(&whole, &caller, sizeof caller);
    return DecodeCaller(SockAddr(reinterpret_cast<sockaddr const&>(whole), 0), hostname, ip, port);
}

ServerSocketUn::ServerSocketUn() : ServerSocketUn("") {}

ServerSocketUn::ServerSocketUn(String_t const& path) : path(path), addr() {}

String_t ServerSocketUn::RefString() const { return path; }

int ServerSocketUn::Listen(int close_on_exec) {
    if (!Open(AF_UNIX)) return -1;
    addr = korbase_detail::LocalAddress(path);
    if (bind(fd, reinterpret_cast<sockaddr const*>(&addr), sizeof addr) != 0 ||
        listen(fd, kLocalBacklog) != 0)
        return Discard();
    if (close_on_exec) setCloseOnExec();
    return fd;
}

void ServerSocketUn::Close() {
    Discard();
    if (!path.IsEmpty()) unlink(path);
}

int ServerSocketUn::AcceptConnection(sockaddr_un& caller) { return AcceptInto(caller); }

int ServerSocketUn::AcceptConnection(sockaddr_un& caller, unsigned seconds) {
    return AcceptInto(caller, seconds);
}
