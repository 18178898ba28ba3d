#include "net/rpchost.h"

#include <algorithm>
#include <cstdlib>
#include <cstring>
#include <string_view>

#include "base/saturate.h"

char* RpcDecomposeHostName(char const* text, char* host, unsigned int size, unsigned short* port) {
    std::string_view name(text ? text : "");
    std::size_t const colon = name.find(':');
    *port = 0;
    if (colon != name.npos) {
        long const number = std::strtol(name.data() + colon + 1, nullptr, 10);
        *port = static_cast<unsigned short>(korbase_detail::SaturateToInt32FromLong(number));
        name = name.substr(0, colon);
    }
    if (name.empty()) name = "localhost";
    if (size == 0) return host;
    std::size_t const length = std::min<std::size_t>(name.size(), size - 1);
    std::memcpy(host, name.data(), length);
    host[length] = '\0';
    return host;
}
