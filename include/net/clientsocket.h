// ClientSocketIn, ClientSocketUn: connectors, over TCP and to local sockets.
//
// A connect makes a descriptor and hands it to the caller, who closes it: it is blocking and not
// close-on-exec. The object keeps nothing and can connect again. Failures are -1 with errno, or
// with the code in `error` where there is such an argument, and leave no descriptor open; nothing
// throws but std::bad_alloc. One thread at a time.
//
// A timed connect waits up to `seconds`, at most 2147483 (more is EINVAL, 22), without limit for 0.
// Its `error` is 0, the resolver's code (negative), ETIMEDOUT (110), what the system reports for
// the connection, or EINVAL for any other outcome of the wait. Kept: a signal handler that
// interrupts the wait is such an outcome, the wait is not begun again.
#ifndef KORBASE_NET_CLIENTSOCKET_H
#define KORBASE_NET_CLIENTSOCKET_H

#include <korbase_api.h>
#include <net/sockaddr.h>
#include <netinet/in.h>
#include <sys/socket.h>
#include <sys/un.h>
#include <text/string.h>

class KORBASE_API ClientSocketBase {
public:
    ClientSocketBase(ClientSocketBase const&) = delete;
    ClientSocketBase& operator=(ClientSocketBase const&) = delete;

    // The address as a reference string.
    virtual String_t RefString() const = 0;
    // A new connected descriptor, the caller's from here on, or -1 with errno. Waits as long as the
    // system does; a signal handler may interrupt it (EINTR).
    virtual int Connect() = 0;
    virtual ~ClientSocketBase();

    // The descriptor during a connect, else -1.
    int Fd() const { return fd; }

protected:
    ClientSocketBase() : fd(-1) {}
    // A new stream socket in place of the one that is held, if any. False with errno.
    bool Open(int family);
    // Closes the descriptor and keeps errno; returns -1.
    int Discard();
    // Connects it and hands it over, or discards it; the second waits up to `seconds`.
    int Finish(sockaddr const* address, socklen_t size);
    int Finish(sockaddr const* address, socklen_t size, unsigned seconds, int& error);

    int fd;
};

// Over TCP, or to the local socket that a reference string names.
class KORBASE_API ClientSocketIn : public ClientSocketBase {
public:
    // Connects to `port` of `host`; null or empty is this host. Where a local host and port are
    // given and the port is not 0, the connection comes from there.
    ClientSocketIn(unsigned short port, char const* host);
    ClientSocketIn(unsigned short port, int family, char const* host);
    ClientSocketIn(unsigned short port, unsigned short local_port, char const* host,
                   char const* local_host);
    ClientSocketIn(unsigned short port, unsigned short local_port, int family, char const* host,
                   char const* local_host);
    // As SockIO::SockAddr reads it.
    explicit ClientSocketIn(char const* ref);
    ClientSocketIn(char const* ref, int family);

    String_t RefString() const override;
    // Each connect looks the host up again. Kept: an error of the resolver is its negative code in
    // errno; a local address that cannot be looked up is not used.
    int Connect() override;
    int Connect(unsigned seconds, int& error);

    // Change the remote port or host and return what it was.
    unsigned short Port(unsigned short port);
    String_t Hostname(String_t const& host);

    // Not null, or false, exactly when there is something to connect to: SockAddr::IsValid().
    operator void const*() const { return remote.IsValid() ? this : nullptr; }
    bool operator!() const { return !remote.IsValid(); }

    // Binds the descriptor of a connect to the local address, if that has been looked up. Returns
    // 0, or -1 with errno.
    int BindLocal();

    // The address that a socket is bound to, in numbers. Returns 0, or -1 with errno and `address`
    // unchanged. Kept: the sockaddr_in is the beginning of an address of any family.
    static int GetSocketName(int fd, SockIO::SockAddr& address);
    static int GetSocketName(int fd, sockaddr_in& address);

private:
    int Prepare();

    SockIO::SockAddr remote;
    SockIO::SockAddr local;
};

// To a local socket. Kept: of the path, 107 characters count; no path is the local address that
// consists of zeros.
class KORBASE_API ClientSocketUn : public ClientSocketBase {
public:
    ClientSocketUn();
    explicit ClientSocketUn(String_t const& path);

    // The path.
    String_t RefString() const override;
    int Connect() override;
    // A server that has no room for the connection is EAGAIN at once.
    int Connect(unsigned seconds, int& error);

private:
    String_t path;
    sockaddr_un addr;
};

#endif
