// Names and addresses of hosts, this one among them.
//
// Any thread may call these functions. Those that take a host ask the resolver, which may wait for
// a name server. Errors are errno values, or the resolver's own codes (negative, as gai_strerror
// takes them); `out` is unchanged then.
#ifndef KORBASE_NET_HOSTNAME_H
#define KORBASE_NET_HOSTNAME_H

#include <korbase_api.h>
#include <text/string.h>

namespace SockIO {

// The name of this host, 255 characters of it at most.
KORBASE_API String_t GetHostname();

// The numeric address of a host: its first IPv4 address, or if it has none, its first IPv6 address.
// Returns 0 or an error; EINVAL (22) for null or a host without such an address.
KORBASE_API int GetIpAddress(String_t& out, char const* host);
// The same of this host; "" for an error.
KORBASE_API String_t GetIpAddress();

// The canonical name of a host, as the resolver reports it: that of an alias is what the alias
// stands for. Returns 0 or an error; EINVAL (22) for null or a host for which none is reported.
KORBASE_API int GetCanonicalHostname(String_t& out, char const* host);

}  // namespace SockIO

#endif
