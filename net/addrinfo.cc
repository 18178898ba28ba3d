#include "net/addrinfo.h"

#include <arpa/inet.h>
#include <netinet/in.h>

#include <string>

namespace SockIO {

namespace {

addrinfo Hints(int flags, int family, int socktype) {
    addrinfo hints = {};
    hints.ai_flags = flags;
    hints.ai_family = family;
    hints.ai_socktype = socktype;
    return hints;
}

// An entry with its address behind it.
template <class Structure>
struct Entry {
    addrinfo info = {};
    Structure address = {};

    explicit Entry(int family) {
        info.ai_family = family;
        info.ai_addrlen = sizeof address;
        info.ai_addr = reinterpret_cast<sockaddr*>(&address);
    }
};

}  // namespace

AddrInfo::AddrInfo(char const* node, char const* service, int flags, int family, int socktype) {
    addrinfo const hints = Hints(flags, family, socktype);
    Look(node, service, &hints);
}

AddrInfo::AddrInfo(char const* node, unsigned short port, int flags, int family, int socktype)
    : AddrInfo(node, std::to_string(port).c_str(), flags, family, socktype) {}

AddrInfo::AddrInfo(char const* node, int flags, int family, int socktype)
    : AddrInfo(node, nullptr, flags, family, socktype) {}

AddrInfo::AddrInfo(char const* node, char const* service) { Look(node, service, nullptr); }

AddrInfo::AddrInfo(char const* node, unsigned short port)
    : AddrInfo(node, std::to_string(port).c_str()) {}

AddrInfo::AddrInfo(char const* node) { Look(node, nullptr, nullptr); }

void AddrInfo::Look(char const* node, char const* service, addrinfo const* hints) {
    addrinfo* found = nullptr;
    error = getaddrinfo(node, service, hints, &found);
    if (error == 0 && found) list.reset(found, freeaddrinfo);
}

AddrInfo AddrInfo::ToAddr(char const* numeric) {
    AddrInfo result;
    auto const six = std::make_shared<Entry<sockaddr_in6>>(AF_INET6);
    auto const four = std::make_shared<Entry<sockaddr_in>>(AF_INET);
    six->address.sin6_family = AF_INET6;
    four->address.sin_family = AF_INET;
    if (numeric && inet_pton(AF_INET6, numeric, &six->address.sin6_addr) == 1)
        result.list = {six, &six->info};
    else if (numeric && inet_pton(AF_INET, numeric, &four->address.sin_addr) == 1)
        result.list = {four, &four->info};
    else
        result.error = EAI_FAMILY;
    return result;
}

String_t AddrInfo::ToString(addrinfo const& entry) {
    char text[INET6_ADDRSTRLEN];
    void const* address;
    if (entry.ai_family == AF_INET)
        address = &reinterpret_cast<sockaddr_in const*>(entry.ai_addr)->sin_addr;
    else if (entry.ai_family == AF_INET6)
        address = &reinterpret_cast<sockaddr_in6 const*>(entry.ai_addr)->sin6_addr;
    else
        return String_t("");
    return String_t(inet_ntop(entry.ai_family, address, text, sizeof text));
}

}  // namespace SockIO
