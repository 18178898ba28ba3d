// A fracture server: a process that listens, and a child of it for every client.
//
// The parent never reads what a client sends, so that none of them can keep it from its work, and
// whatever a client does to its child harms nobody else.
#ifndef KORBASE_EXAMPLES_EXCHANGE_SERVER_H
#define KORBASE_EXAMPLES_EXCHANGE_SERVER_H

#include <net/serversocket.h>
#include <sys/types.h>
#include <text/string.h>

#include <map>
#include <memory>

namespace exchange {

class Server {
public:
    // `program` begins complaints; each wait for a client may last `seconds`.
    Server(char const* program, unsigned seconds) : program(program), seconds(seconds) {}

    // Listens on the first free port of a range, at an address of `host`, or on a new local socket.
    // False after a complaint. The signals that end the server are caught from here on.
    bool ListenIn(String_t const& host, int first_port, int last_port);
    bool ListenUn(String_t const& path);
    String_t RefString() const { return listener->RefString(); }

    // Serves clients until one of them says stop, or SIGTERM or SIGINT comes; then ends what
    // children there are, closes and removes the socket. Takes over the handling of SIGCHLD, too.
    void Run();

private:
    bool Listen(std::unique_ptr<ServerSocketBase> socket, String_t const& where);
    bool Wait(bool for_clients);
    bool AcceptClient();
    bool StartChild(int fd);
    [[noreturn]] void RunChild(int fd, String_t const& client);
    void Reap();
    void End();
    void Complain(String_t const& what) const;

    char const* program;
    unsigned seconds;
    std::unique_ptr<ServerSocketBase> listener;
    std::map<pid_t, String_t> children;  // whom they serve
    bool stopped = false;
};

}  // namespace exchange

#endif
