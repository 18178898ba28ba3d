// A client's connection to a fracture server.
#ifndef KORBASE_EXAMPLES_EXCHANGE_CONNECTION_H
#define KORBASE_EXAMPLES_EXCHANGE_CONNECTION_H

#include <net/sockstream.h>
#include <text/string.h>

namespace exchange {

// Most bytes of requests without an answer.
constexpr unsigned kMaxUnanswered = 32 * 1024;

// A descriptor that is closed at the end of its scope.
class Descriptor {
public:
    explicit Descriptor(int fd) : fd(fd) {}
    ~Descriptor();
    Descriptor(Descriptor const&) = delete;
    Descriptor& operator=(Descriptor const&) = delete;
    int Get() const { return fd; }

private:
    int fd;
};

// Makes a connected socket ready for streams: it never waits outside of poll, so that time-outs
// hold, and sends small messages at once.
void PrepareSocket(int fd);

class Connection {
public:
    // Connects to a reference string within `seconds`, which are also what each wait for the server
    // may last later; 1 to kMaxSeconds. Throws SockIO::ConnectError.
    Connection(String_t const& address, unsigned seconds);

    // All their errors throw.
    OSockStream& Out() { return out; }
    ISockStream& In() { return in; }

    // Asks the server to end.
    void Stop();

private:
    Descriptor socket;  // closed after the streams have gone
    OSockStream out;
    ISockStream in;
};

constexpr int kMaxSeconds = 2147483;

}  // namespace exchange

#endif
