// Reference strings: the addresses of sockets as text.
//
// A text that begins with "/" or "." is the path of a local socket; others are HOST:PORT. They are
// written HOST/PORT when the host itself contains ":" (IPv6), and read as [HOST]:PORT then.
#ifndef KORBASE_NET_REFSTRING_H
#define KORBASE_NET_REFSTRING_H

#include <korbase_api.h>
#include <text/string.h>

namespace SockIO {

// The text for a host and a port, 255 characters at most: what does not fit is cut off. A path has
// no port. An empty or null host is written as this host's name. Kept: ParseRefString does not read
// the "/" form. Any thread may call it.
KORBASE_API String_t MakeRefString(char const* host, unsigned short port);

// Reads a reference string: a path (also an empty or null `ref`) gives port 0 and family AF_UNIX
// (1); HOST:PORT and [HOST]:PORT give family AF_UNSPEC (0). Blanks may stand before the host and
// before the port. The host "*", or nothing, gives an empty host: any local address. The port is a
// decimal number up to 65535 without sign, and what follows it is ignored; or the rest of the line
// is the name of a TCP service. Hosts have 255 characters at most.
//
// Returns 0, or -1 for a text without port, or with a number or service that is none. Kept: `host`
// is changed already when only the port is wrong; `port` and `family` are not.
KORBASE_API int ParseRefString(char const* ref, String_t& host, unsigned short& port, int& family);
KORBASE_API int ParseRefString(char const* ref, String_t& host, unsigned short& port);

}  // namespace SockIO

#endif
