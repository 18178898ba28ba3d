#include "net/hostname.h"

#include <unistd.h>

#include <cerrno>

#include "net/addrinfo.h"

namespace SockIO {

namespace {

// The first entry of a family, or null.
addrinfo const* First(addrinfo const* entry, int family) {
    while (entry && entry->ai_family != family) entry = entry->ai_next;
    return entry;
}

}  // namespace

String_t GetHostname() {
    char name[256] = "";
    gethostname(name, sizeof name);
    name[sizeof name - 1] = '\0';  // a longer name may come without
    return String_t(name);
}

int GetIpAddress(String_t& out, char const* host) {
    if (!host) return EINVAL;
    AddrInfo const found(host);
    if (found.Error() != 0 || !found.List()) return found.Error();
    addrinfo const* entry = First(found.List(), AF_INET);
    if (!entry) entry = First(found.List(), AF_INET6);
    if (!entry) return EINVAL;
    out = AddrInfo::ToString(*entry);
    return 0;
}

String_t GetIpAddress() {
    String_t address("");
    GetIpAddress(address, GetHostname());
    return address;
}

int GetCanonicalHostname(String_t& out, char const* host) {
    if (!host) return EINVAL;
    AddrInfo const found(host, AI_CANONNAME, AF_UNSPEC, SOCK_STREAM);
    if (found.Error() != 0) return found.Error();
    if (!found.List() || !found.List()->ai_canonname) return EINVAL;
    out = found.List()->ai_canonname;
    return 0;
}

}  // namespace SockIO
