// ServerSocketIn, ServerSocketUn: listen for connections, over TCP and on local sockets.
//
// The object owns the listening descriptor; each accept makes a descriptor that is the caller's,
// blocking and not close-on-exec. Failures are -1 with errno; a failed Listen() leaves no
// descriptor open. Nothing throws but std::bad_alloc. One thread at a time.
//
// A timed accept waits up to `seconds`, at most 2147483 (more is EINVAL, 22), without limit for 0;
// no connection in time is ETIMEDOUT (110). A connection that is gone when it is to be accepted is
// a failure too, it is not waited for another one. Kept: a signal handler that interrupts the wait
// ends it (EINTR). Accepting without listening is EBADF at once.
#ifndef KORBASE_NET_SERVERSOCKET_H
#define KORBASE_NET_SERVERSOCKET_H

#include <korbase_api.h>
#include <net/sockaddr.h>
#include <netinet/in.h>
#include <sys/socket.h>
#include <sys/un.h>
#include <text/string.h>

class KORBASE_API ServerSocketBase {
public:
    ServerSocketBase(ServerSocketBase const&) = delete;
    ServerSocketBase& operator=(ServerSocketBase const&) = delete;

    // The address as a reference string.
    virtual String_t RefString() const = 0;
    // Binds and listens with a new descriptor, which it returns and keeps; one from before is
    // closed first. Sets close-on-exec if `close_on_exec` is not 0. Kept: it is not told if that
    // fails.
    virtual int Listen(int close_on_exec) = 0;
    // The descriptor of the next connection. Waits for it, and a signal handler may interrupt that.
    virtual int Accept();
    // The same within `seconds`.
    virtual int Accept(unsigned seconds);
    // Ends listening, if this listens.
    virtual void Close();
    // Closes the descriptor; nothing else.
    virtual ~ServerSocketBase();

    // The listening descriptor, -1 for none.
    int Fd() const { return fd; }

    // As SockIO::SetCloseOnExec for the listening descriptor.
    int setCloseOnExec();
    // setsockopt for options that are an int. Returns 0, or -1 with errno.
    static int SetOption(int fd, int level, int name, int value);

protected:
    ServerSocketBase() : fd(-1) {}
    // A new stream socket in place of the one that is held, if any. False with errno.
    bool Open(int family);
    // Closes the descriptor and keeps errno; returns -1.
    int Discard();
    // Accept() and Accept(seconds) that store the address of the caller. Defined for those of the
    // classes below.
    template <class Caller>
    int AcceptInto(Caller& caller);
    template <class Caller>
    int AcceptInto(Caller& caller, unsigned seconds);

    int fd;

private:
    int AcceptCaller(sockaddr_storage& caller);
    int AcceptWithin(unsigned seconds, sockaddr_storage* caller);
};

// Over TCP, on the first free port of a range; or on the local socket that a reference string
// names.
class KORBASE_API ServerSocketIn : public ServerSocketBase {
public:
    // Any port of this host.
    ServerSocketIn();
    // `port`, or the first free one of `port` to `last_port`, at an address of `host`: empty or
    // null is every interface. Port 0 is one that the system chooses. Of a `port`, 16 bits count.
    ServerSocketIn(int port, String_t const& host);
    ServerSocketIn(int port, String_t const& host, int family);
    ServerSocketIn(int port, int last_port, String_t const& host);
    ServerSocketIn(int port, int last_port, String_t const& host, int family);
    // As SockIO::SockAddr reads it.
    explicit ServerSocketIn(String_t const& ref);

    // Host and port; while this listens, the port that is bound.
    String_t RefString() const override;
    // Looks the host up, then tries the ports upward from one that the process id chooses, and from
    // the last port goes on at the first, until each was tried once: processes with the same range
    // spread over it. The search never starts at the last port itself. Then the port is the one
    // that is bound; nothing else changes, and a failure changes nothing.
    //
    // An error of the resolver is its negative code in errno, and a descriptor from before stays. A
    // last port below the first is EINVAL. Kept: that is so also after Port() has set a higher one,
    // and for listening again after the system has chosen the port: Port(0) first.
    int Listen(int close_on_exec) override;

    // Accept() and Accept(seconds) that also tell the address of the caller, in numbers. Kept: the
    // forms without time-out store an address even when they fail, one of zeros or without a system
    // address; the timed ones leave `caller` alone then, but if it was the accept that failed, they
    // leave the listening descriptor non-blocking. Kept: the sockaddr_in is the beginning of an
    // address of any family.
    int AcceptConnection(SockIO::SockAddr& caller);
    int AcceptConnection(sockaddr_in& caller);
    int AcceptConnection(SockIO::SockAddr& caller, unsigned seconds);
    int AcceptConnection(sockaddr_in& caller, unsigned seconds);

    // Change the first port or the host and return what it was. While this listens they change
    // nothing and return 0 or "".
    unsigned short Port(unsigned short port);
    String_t Hostname(String_t const& host);

    // Not null, or false, exactly when there is an address: SockAddr::IsValid().
    operator void const*() const { return addr.IsValid() ? this : nullptr; }
    bool operator!() const { return !addr.IsValid(); }

    // The address that this listens on, as ClientSocketIn::GetSocketName.
    int GetSocketName(SockIO::SockAddr& address);
    int GetSocketName(sockaddr_in& address);

    // The address of the other end of a connection, in numbers. Returns 0, or -1 with errno and
    // `caller` unchanged.
    static int GetCaller(int fd, SockIO::SockAddr& caller);
    // The same in parts, and the host's name by reverse lookup, which may wait for a name server.
    static int GetCaller(int fd, String_t& hostname, String_t& ip, unsigned short& port);
    // The parts of an address that was looked up or accepted. Returns 0.
    static int DecodeCaller(SockIO::SockAddr const& caller, String_t& hostname, String_t& ip,
                            unsigned short& port);
    static int DecodeCaller(sockaddr_in const& caller, String_t& hostname, String_t& ip,
                            unsigned short& port);

private:
    bool BindFreePort(SockIO::SockAddr& bound) const;

    SockIO::SockAddr addr;
    int last_port;
};

// On a local socket. Kept: of the path, 107 characters count for listening; no path is the local
// address that consists of zeros.
class KORBASE_API ServerSocketUn : public ServerSocketBase {
public:
    ServerSocketUn();
    explicit ServerSocketUn(String_t const& path);

    // The path.
    String_t RefString() const override;
    // Makes the socket's file. One that is there, even from a server that is gone, is EADDRINUSE.
    int Listen(int close_on_exec) override;
    // Ends listening and removes the file. Kept: it removes the file, whatever it is, also when
    // this does not listen. The destructor leaves it.
    void Close() override;

    // As those of ServerSocketIn. A caller without a path of its own has an empty one.
    int AcceptConnection(sockaddr_un& caller);
    int AcceptConnection(sockaddr_un& caller, unsigned seconds);

private:
    String_t path;
    sockaddr_un addr;
};

#endif
