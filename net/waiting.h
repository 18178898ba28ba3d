// Waiting for a socket, and calls on it that must not wait.
#ifndef KORBASE_NET_WAITING_H
#define KORBASE_NET_WAITING_H

#include <fcntl.h>
#include <poll.h>

namespace korbase_detail {

// The longest time-out in seconds: in milliseconds it still fits an int.
constexpr unsigned kMostSeconds = 2147483;

// poll() of one descriptor; 0 seconds wait without limit, more than kMostSeconds are not allowed.
// Kept: a signal handler ends the wait, it is not begun again.
inline int PollSeconds(pollfd& waiting, unsigned seconds) {
    return poll(&waiting, 1, seconds == 0 ? -1 : static_cast<int>(seconds * 1000));
}

// Turns waiting off for a descriptor until Restore() brings its status flags back; without that it
// stays off.
class NonBlocking {
public:
    explicit NonBlocking(int fd) : fd(fd), flags(fcntl(fd, F_GETFL)) {
        if (flags != -1 && fcntl(fd, F_SETFL, flags | O_NONBLOCK) == -1) flags = -1;
    }
    // False with errno if that failed.
    explicit operator bool() const { return flags != -1; }
    bool Restore() const { return fcntl(fd, F_SETFL, flags) != -1; }

private:
    int fd;
    int flags;
};

}  // namespace korbase_detail

#endif
