// SockIO::SockAddr: where a socket listens or connects to; host and port, and once they are looked
// up, the system's address.
//
// Operations return 0, an errno value, or the resolver's own code (negative, as gai_strerror takes
// it); none of them throws anything but std::bad_alloc. Looking up a name may wait for a name
// server. The host is a shared text: one thread at a time for an address and its copies.
#ifndef KORBASE_NET_SOCKADDR_H
#define KORBASE_NET_SOCKADDR_H

#include <korbase_api.h>
#include <net/sockaddrrep.h>
#include <text/string.h>

#include <memory>

namespace SockIO {

// The host is a name, a numeric address, empty for any local address, or the path of a local
// socket. Ports are in host byte order, 0 for local sockets. Families are AF_UNSPEC (0), AF_UNIX
// (1), AF_INET (2) and AF_INET6 (10).
class KORBASE_API SockAddr {
public:
    // An empty host, port 0, any family.
    SockAddr();
    // Nothing is looked up yet.
    SockAddr(unsigned short port, int family);
    SockAddr(String_t const& host, unsigned short port, int family);
    // As ParseRefString reads `ref`. What a text that is no address does not give stays
    // "localhost", port 0 and `family` (0). Kept: where the text is an address, it decides the
    // family.
    explicit SockAddr(char const* ref) : SockAddr(ref, 0) {}
    SockAddr(char const* ref, int family);
    // As Init(address, lookup), whose result is lost: without success there is no Rep().
    SockAddr(sockaddr const& address, int lookup);

    // A copy shares the host's text and has a system address of its own. What was moved from keeps
    // family and port only.
    SockAddr(SockAddr const& other);
    SockAddr& operator=(SockAddr const& other);
    SockAddr(SockAddr&& other) noexcept = default;
    SockAddr& operator=(SockAddr&& other) noexcept = default;
    ~SockAddr();

    // Looks up host and port for stream sockets of the family and takes the first address; an empty
    // host gives the address for listening on every interface. The resolver's errors keep the
    // system address there is. A path of 108 characters or more is EINVAL, a first address that is
    // neither IPv4 nor IPv6 EAFNOSUPPORT: then there is none any more.
    int Init();
    // Takes over a system address, its family included; `address` is the head of a whole structure
    // of its family. The host becomes the numeric address, or if `lookup` is not 0, the name found
    // by reverse lookup (null for none); the path of a local address. A family other than these
    // gives EAFNOSUPPORT: then the host is empty, the port 0, and there is no system address.
    int Init(sockaddr const& address, int lookup);

    // The system's structure, to be passed to system calls, its size in bytes, its family, host
    // name and numeric address as SockAddrRep gives them. Null, 0 or the null string without one.
    sockaddr* Get() { return rep ? rep->Addr() : nullptr; }
    sockaddr const* Get() const { return rep ? rep->Addr() : nullptr; }
    socklen_t Size() const { return rep ? rep->AddrSize() : 0; }
    int Family() const { return rep ? rep->Family() : AF_UNSPEC; }
    String_t GetHostname() const { return rep ? rep->Hostname() : String_t(); }
    String_t IpAddr() const { return rep ? rep->IpAddr() : String_t(); }

    String_t const& Host() const { return host; }
    // Changes the host. An address that was looked up is looked up again, as Init() does; whether
    // that worked is not told.
    void Host(String_t const& new_host);
    unsigned short Port() const { return port; }
    // Changes the port, also that of the system address; returns the old one.
    unsigned short Port(unsigned short new_port);
    // The system address, this object's own; null until it is looked up.
    SockAddrRep* Rep() const { return rep.get(); }

    // Something to connect to or to listen on: looked up, or local, or with a port.
    bool IsValid() const { return rep || family == AF_UNIX || port != 0; }
    // Takes the port from the system address, after the system has chosen one.
    void AdjustPort();
    // As MakeRefString(host, port).
    String_t ToString() const;

private:
    String_t host;
    std::unique_ptr<SockAddrRep> rep;
    int family;
    unsigned short port;
};

}  // namespace SockIO

#endif
