// SockIO::AddrInfo: what the resolver found for a host and a service, and its error code.
//
// The list is never changed; copies share it, and the last one frees it. Copies may be used on
// different threads. The constructors call getaddrinfo, which may wait for a name server.
#ifndef KORBASE_NET_ADDRINFO_H
#define KORBASE_NET_ADDRINFO_H

#include <korbase_api.h>
#include <netdb.h>
#include <text/string.h>

#include <memory>

namespace SockIO {

class KORBASE_API AddrInfo {
public:
    // `node` is a host name, a numeric address, or null for this host; `service` a name or a number
    // in decimal, or null for none. One of the two is needed. `flags` (AI_PASSIVE and others),
    // `family` (AF_UNSPEC for any) and `socktype` (SOCK_STREAM and others, 0 for any) are the
    // hints.
    AddrInfo(char const* node, char const* service, int flags, int family, int socktype);
    AddrInfo(char const* node, unsigned short port, int flags, int family, int socktype);
    AddrInfo(char const* node, int flags, int family, int socktype);
    // Without hints, as getaddrinfo has it then.
    AddrInfo(char const* node, char const* service);
    AddrInfo(char const* node, unsigned short port);
    explicit AddrInfo(char const* node);

    // One entry for a numeric IPv6 or IPv4 address, with port 0 and without any lookup. Another
    // text (or null) gives the error EAI_FAMILY (-6) and no list.
    static AddrInfo ToAddr(char const* numeric);
    // The numeric address of an IPv4 or IPv6 entry, "" for another family.
    static String_t ToString(addrinfo const& entry);

    // 0, or one of the resolver's codes (EAI_NONAME and others, all negative) and then no list.
    int Error() const { return error; }
    // The first entry, linked by ai_next, valid as long as this object or a copy; null for none.
    addrinfo const* List() const { return list.get(); }

private:
    AddrInfo() : error(0) {}
    void Look(char const* node, char const* service, addrinfo const* hints);

    std::shared_ptr<addrinfo const> list;
    int error;
};

}  // namespace SockIO

#endif
