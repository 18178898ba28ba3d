// SockAddrRep: one system address (IPv4, IPv6 or local) behind a common interface.
//
// Values in their own right, copied by Clone(). One thread at a time, except that const members may
// be called together.
#ifndef KORBASE_NET_SOCKADDRREP_H
#define KORBASE_NET_SOCKADDRREP_H

#include <korbase_api.h>
#include <netinet/in.h>
#include <sys/socket.h>
#include <sys/un.h>
#include <text/string.h>

namespace SockIO {

class KORBASE_API SockAddrRep {
public:
    virtual ~SockAddrRep();

    // A new copy of the same class, which the caller deletes.
    virtual SockAddrRep* Clone() const = 0;
    // The system's structure inside this object, for calls that take an address, and its bytes.
    virtual sockaddr* Addr() = 0;
    virtual socklen_t AddrSize() const = 0;
    // The port in host byte order. A local address has none: 0, and setting it does nothing.
    virtual void SetPort(unsigned short port) = 0;
    virtual unsigned short GetPort() const = 0;
    // The address in numbers, or the path; null if the system cannot write it.
    virtual String_t IpAddr() const = 0;
    // The name of the host, by reverse lookup (which may wait for a name server); the numeric
    // address if it has no name, null if the lookup fails. The path of a local address.
    virtual String_t Hostname() const = 0;
    // AF_INET (2), AF_INET6 (10) or AF_UNIX (1), as it stands in the structure.
    virtual int Family() const = 0;

protected:
    SockAddrRep() = default;
    SockAddrRep(SockAddrRep const&) = default;
    SockAddrRep& operator=(SockAddrRep const&) = default;
};

class KORBASE_API SockAddrIn4 : public SockAddrRep {
public:
    explicit SockAddrIn4(sockaddr_in const& address) : addr(address) {}
    ~SockAddrIn4() override;

    SockAddrRep* Clone() const override;
    sockaddr* Addr() override;
    socklen_t AddrSize() const override;
    void SetPort(unsigned short port) override;
    unsigned short GetPort() const override;
    String_t IpAddr() const override;
    String_t Hostname() const override;
    int Family() const override;

private:
    sockaddr_in addr;
};

class KORBASE_API SockAddrIn6 : public SockAddrRep {
public:
    explicit SockAddrIn6(sockaddr_in6 const& address) : addr(address) {}
    ~SockAddrIn6() override;

    SockAddrRep* Clone() const override;
    sockaddr* Addr() override;
    socklen_t AddrSize() const override;
    void SetPort(unsigned short port) override;
    unsigned short GetPort() const override;
    String_t IpAddr() const override;
    String_t Hostname() const override;
    int Family() const override;

private:
    sockaddr_in6 addr;
};

// The path need not be terminated: its text is 108 characters at most.
class KORBASE_API SockAddrUn : public SockAddrRep {
public:
    explicit SockAddrUn(sockaddr_un const& address) : addr(address) {}
    ~SockAddrUn() override;

    SockAddrRep* Clone() const override;
    sockaddr* Addr() override;
    socklen_t AddrSize() const override;
    void SetPort(unsigned short port) override;
    unsigned short GetPort() const override;
    String_t IpAddr() const override;
    String_t Hostname() const override;
    int Family() const override;

private:
    sockaddr_un addr;
};

}  // namespace SockIO

#endif
