// A connection between a fracture server and one of its clients.
#ifndef KORBASE_EXAMPLES_EXCHANGE_CONNECTION_H
#define KORBASE_EXAMPLES_EXCHANGE_CONNECTION_H

#include <net/sockstream.h>
#include <text/string.h>

namespace exchange {

// Most bytes that a client sends before it reads the answers to them.
constexpr unsigned kMaxUnanswered = 32 * 1024;

// The longest time-out.
constexpr int kMaxSeconds = 2147483;

// Connects to a reference string within `seconds`, 1 to kMaxSeconds. Returns the descriptor. Throws
// SockIO::BaseException with a code below 0.
int Connect(String_t const& address, unsigned seconds);

// Closes a descriptor at the end of its scope.
struct Descriptor {
    explicit Descriptor(int fd) : fd(fd) {}
    ~Descriptor();
    Descriptor(Descriptor const&) = delete;
    Descriptor& operator=(Descriptor const&) = delete;

    int const fd;
};

// A stream for each direction. What is written goes out when the buffer is full, at endm, and
// before waiting for input; not before every read as with an IOSockStream, so that messages that
// come together are answered together.
class Connection {
public:
    // Takes a connected socket over. Each wait for the other end may last `seconds`.
    Connection(int fd, unsigned seconds);

    // All their errors throw.
    OSockStream& Out() { return out; }
    ISockStream& In() { return in; }

private:
    struct Input : ISockStream {
        Input(int fd, OSockStream& out) : ISockStream(fd), out(out) {}
        // Not 0 for a descriptor that was not ready after all: that would cut a value short.
        int Fill() override {
            out.Flush();
            int count;
            while ((count = ISockStream::Fill()) == 0 && Good()) continue;
            return count;
        }
        OSockStream& out;
    };

    char room[2][32 * 1024];  // instead of the buffers that streams have: fewer waits
    Descriptor const socket;  // closed after the streams have gone
    OSockStream out;
    Input in;
};

}  // namespace exchange

#endif
