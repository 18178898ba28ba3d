#include "net/sockaddr.h"

#include <cerrno>
#include <cstring>

#include "net/addrinfo.h"
#include "net/localaddress.h"
#include "net/refstring.h"

namespace SockIO {

namespace {

// The whole structure that `address` is the head of.
template <class Structure>
Structure Whole(sockaddr const& address) {
    Structure copy;
    std::memcpy(&copy, &address, sizeof copy);
    return copy;
}

sa_family_t FamilyOf(sockaddr const& address) {
    sa_family_t family;
    std::memcpy(&family, &address, sizeof family);  // whatever structure it really is
    return family;
}

// Null for a family that has no class.
std::unique_ptr<SockAddrRep> MakeRep(sockaddr const& address) {
    switch (FamilyOf(address)) {
        case AF_INET: return std::make_unique<SockAddrIn4>(Whole<sockaddr_in>(address));
        case AF_INET6: return std::make_unique<SockAddrIn6>(Whole<sockaddr_in6>(address));
        case AF_UNIX: return std::make_unique<SockAddrUn>(Whole<sockaddr_un>(address));
        default: return nullptr;
    }
}

// Null for a path that leaves no room for its terminator.
std::unique_ptr<SockAddrRep> MakeLocalRep(String_t const& path) {
    if (path.Len() >= sizeof sockaddr_un::sun_path) return nullptr;
    return std::make_unique<SockAddrUn>(korbase_detail::LocalAddress(path));
}

}  // namespace

SockAddr::SockAddr() : SockAddr("", 0, AF_UNSPEC) {}

SockAddr::SockAddr(unsigned short port, int family) : SockAddr("", port, family) {}

SockAddr::SockAddr(String_t const& host, unsigned short port, int family)
    : host(host), family(family), port(port) {}

SockAddr::SockAddr(char const* ref, int family) : SockAddr("localhost", 0, family) {
    ParseRefString(ref, host, port, this->family);
}

SockAddr::SockAddr(sockaddr const& address, int lookup) : SockAddr() { Init(address, lookup); }

SockAddr::SockAddr(SockAddr const& other)
    : host(other.host),
      rep(other.rep ? other.rep->Clone() : nullptr),
      family(other.family),
      port(other.port) {}

SockAddr& SockAddr::operator=(SockAddr const& other) {
    if (this != &other) *this = SockAddr(other);
    return *this;
}

SockAddr::~SockAddr() = default;

int SockAddr::Init() {
    if (family == AF_UNIX) {
        rep = MakeLocalRep(host);
        return rep ? 0 : EINVAL;
    }
    bool const any = host.IsEmpty();
    AddrInfo const found(any ? nullptr : host.Get(), port, any ? AI_PASSIVE : 0, family,
                         SOCK_STREAM);
    if (found.Error() != 0 || !found.List()) return found.Error();
    rep = MakeRep(*found.List()->ai_addr);
    return rep ? 0 : EAFNOSUPPORT;
}

int SockAddr::Init(sockaddr const& address, int lookup) {
    auto made = MakeRep(address);
    String_t text("");
    if (made) text = lookup ? made->Hostname() : made->IpAddr();
    host = std::move(text);
    port = made ? made->GetPort() : 0;
    rep = std::move(made);
    if (!rep) return EAFNOSUPPORT;
    family = rep->Family();
    return 0;
}

void SockAddr::Host(String_t const& new_host) {
    host = new_host;
    if (rep) Init();
}

unsigned short SockAddr::Port(unsigned short new_port) {
    if (rep) rep->SetPort(new_port);
    return std::exchange(port, new_port);
}

void SockAddr::AdjustPort() {
    if (rep) port = rep->GetPort();
}

String_t SockAddr::ToString() const { return MakeRefString(host, port); }

}  // namespace SockIO
