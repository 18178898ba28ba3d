// The addresses of local sockets, as connecting and listening build them.
#ifndef KORBASE_NET_LOCALADDRESS_H
#define KORBASE_NET_LOCALADDRESS_H

#include <sys/socket.h>
#include <sys/un.h>

#include "text/str_text.h"

namespace korbase_detail {

// The address of `path` (or null), cut to what leaves room for a terminator.
inline sockaddr_un LocalAddress(char const* path) {
    sockaddr_un address = {};
    address.sun_family = AF_UNIX;
    str_lcpy(address.sun_path, path, sizeof address.sun_path);
    return address;
}

}  // namespace korbase_detail

#endif
