// SockIO::PollFd: the system's pollfd as an element of sorted sets of descriptors.
//
//     TSortedVector<SockIO::PollFd, SockIO::PollFd::Compare> set;
//     set.Insert(SockIO::PollFd(fd, POLLIN));
//     poll(set.Get(), set.Len(), timeout_ms);
//
// A plain value of the size of its base, so that an array of them is one of pollfd.
#ifndef KORBASE_NET_POLLFD_H
#define KORBASE_NET_POLLFD_H

#include <korbase_api.h>
#include <poll.h>

#include <generic/tsortedvector>
#include <generic/tvarr>

namespace SockIO {

struct PollFd : pollfd {
    // Descriptor -1, which poll() skips, and no events.
    PollFd() : PollFd(-1) {}
    explicit PollFd(int fd, short events = 0) : pollfd{fd, events, 0} {}

    // Ascending descriptor numbers, negative ones first; events do not matter.
    struct Compare {
        int operator()(PollFd const& a, PollFd const& b) const {
            return static_cast<int>(a.fd > b.fd) - static_cast<int>(a.fd < b.fd);
        }
    };
};
static_assert(sizeof(PollFd) == sizeof(pollfd), "poll() takes arrays of them");

}  // namespace SockIO

extern template class KORBASE_API TVarr<SockIO::PollFd>;
extern template class KORBASE_API TSortedVector<SockIO::PollFd, SockIO::PollFd::Compare>;

#endif
