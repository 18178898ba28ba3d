// Cuts shapes for clients that send them, any number of them at once:
//
//   fracture_server [-p FIRST[-LAST]] [-H HOST] [-t SECONDS]
//   fracture_server -l PATH [-t SECONDS]
//
// Listens on the first free port of the range, on any port for 0 or without -p, at the address of
// HOST: 127.0.0.1 when not given, so that only programs on this computer can connect; "*" is every
// address. Or listens on a local socket, which must not exist. Prints its address on a line, for
// fracture_client. A client that sends nothing for SECONDS (60) when it should is left alone.
//
// Ends with exit status 0 when a client says stop, and on SIGTERM and SIGINT. Everybody who can
// connect can do that: the server is for people and networks that are trusted.
#include <text/str.h>

#include <cstdio>
#include <cstring>
#include <iostream>
#include <new>
#include <string>

#include "exchange/connection.h"
#include "exchange/server.h"
#include "layout/command_line.h"

namespace {

char const kUsage[] =
    "usage: fracture_server [-p FIRST[-LAST]] [-H HOST] [-t SECONDS]\n"
    "       fracture_server -l PATH [-t SECONDS]\n"
    "       HOST is 127.0.0.1 if not given, * for every address of this computer\n";

// The longest path of a local socket.
constexpr unsigned kLongestPath = 107;

struct Ports {
    int first = 0, last = 0;
};

bool ReadPorts(char const* text, Ports& ports) {
    char const* const dash = std::strchr(text, '-');
    std::string const first(text, dash != nullptr ? dash : text + std::strlen(text));
    if (!layout::ReadNumber(first.c_str(), 0, 65535, ports.first)) return false;
    ports.last = ports.first;
    return dash == nullptr ||
           (ports.first > 0 && layout::ReadNumber(dash + 1, ports.first, 65535, ports.last));
}

// A path that is one to all who read the address.
String_t MarkedPath(String_t const& path) {
    return path[0] == '/' || path[0] == '.' ? path : "./" + path;
}

int Run(char** argv) {
    layout::CommandLine const line("fracture_server", kUsage);
    String_t ports_text, host, path, seconds_text("60");
    char** const rest =
        line.Take(argv, {{'p', &ports_text}, {'H', &host}, {'l', &path}, {'t', &seconds_text}});
    if (rest == nullptr) return 1;
    if (*rest != nullptr) return line.Complain("not expected: ", *rest);

    Ports ports;
    int seconds = 0;
    if (!layout::ReadNumber(seconds_text, 1, exchange::kMaxSeconds, seconds))
        return line.Complain("not a number of seconds: ", seconds_text);
    if (!ports_text.IsNull() && !ReadPorts(ports_text, ports))
        return line.Complain("not a range of ports: ", ports_text);
    if (!path.IsNull() && !(ports_text.IsNull() && host.IsNull()))
        return line.Complain("either ports or a local socket", "");
    if (!path.IsNull() && (path.IsEmpty() || MarkedPath(path).Len() > kLongestPath))
        return line.Complain("not a path for a local socket: ", path);
    if (host.IsNull()) host = "127.0.0.1";
    if (host == "*") host = "";

    exchange::Server server(line.Program(), static_cast<unsigned>(seconds));
    bool const listening = path.IsNull() ? server.ListenIn(host, ports.first, ports.last)
                                         : server.ListenUn(MarkedPath(path));
    if (!listening) return 1;
    std::cout << server.RefString().Get() << std::endl;
    server.Run();
    return 0;
}

}  // namespace

int main(int argc, char* argv[]) {
    try {
        return argc > 0 ? Run(argv) : 1;
    } catch (std::bad_alloc const&) {
        std::fputs("fracture_server: out of memory\n", stderr);
        return 1;
    }
}
