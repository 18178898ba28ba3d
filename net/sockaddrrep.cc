#include "net/sockaddrrep.h"

#include <arpa/inet.h>
#include <netdb.h>

#include <cstring>

namespace SockIO {

namespace {

String_t LookedUpName(sockaddr const* address, socklen_t size) {
    char host[NI_MAXHOST];
    if (getnameinfo(address, size, host, sizeof host, nullptr, 0, 0) != 0) return String_t();
    return String_t(host);
}

String_t PathText(sockaddr_un const& address) {
    char const* const path = address.sun_path;
    return String_t(std::string_view(path, strnlen(path, sizeof address.sun_path)));
}

}  // namespace

SockAddrRep::~SockAddrRep() = default;
SockAddrIn4::~SockAddrIn4() = default;
SockAddrIn6::~SockAddrIn6() = default;
SockAddrUn::~SockAddrUn() = default;

SockAddrRep* SockAddrIn4::Clone() const { return new SockAddrIn4(*this); }
SockAddrRep* SockAddrIn6::Clone() const { return new SockAddrIn6(*this); }
SockAddrRep* SockAddrUn::Clone() const { return new SockAddrUn(*this); }

sockaddr* SockAddrIn4::Addr() { return reinterpret_cast<sockaddr*>(&addr); }
sockaddr* SockAddrIn6::Addr() { return reinterpret_cast<sockaddr*>(&addr); }
sockaddr* SockAddrUn::Addr() { return reinterpret_cast<sockaddr*>(&addr); }

socklen_t SockAddrIn4::AddrSize() const { return sizeof addr; }
socklen_t SockAddrIn6::AddrSize() const { return sizeof addr; }
socklen_t SockAddrUn::AddrSize() const { return sizeof addr; }

void SockAddrIn4::SetPort(unsigned short port) { addr.sin_port = htons(port); }
void SockAddrIn6::SetPort(unsigned short port) { addr.sin6_port = htons(port); }
void SockAddrUn::SetPort(unsigned short) {}

unsigned short SockAddrIn4::GetPort() const { return ntohs(addr.sin_port); }
unsigned short SockAddrIn6::GetPort() const { return ntohs(addr.sin6_port); }
unsigned short SockAddrUn::GetPort() const { return 0; }

String_t SockAddrIn4::IpAddr() const {
    char text[INET_ADDRSTRLEN];
    return String_t(inet_ntop(AF_INET, &addr.sin_addr, text, sizeof text));
}

String_t SockAddrIn6::IpAddr() const {
    char text[INET6_ADDRSTRLEN];
    return String_t(inet_ntop(AF_INET6, &addr.sin6_addr, text, sizeof text));
}

String_t SockAddrUn::IpAddr() const { return PathText(addr); }

String_t SockAddrIn4::Hostname() const {
    return LookedUpName(reinterpret_cast<sockaddr const*>(&addr), sizeof addr);
}

String_t SockAddrIn6::Hostname() const {
    return LookedUpName(reinterpret_cast<sockaddr const*>(&addr), sizeof addr);
}

String_t SockAddrUn::Hostname() const { return PathText(addr); }

int SockAddrIn4::Family() const { return addr.sin_family; }
int SockAddrIn6::Family() const { return addr.sin6_family; }
int SockAddrUn::Family() const { return addr.sun_family; }

}  // namespace SockIO
