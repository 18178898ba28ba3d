#include "net/pollfd.h"

#include <limits>

#include "tests/net/sockets.h"

TEST(PollFd, MakesSortedSetsThatPollTakes) {
    int const most = std::numeric_limits<int>::max(), least = std::numeric_limits<int>::min();
    TSortedVector<SockIO::PollFd, SockIO::PollFd::Compare> set(1);
    for (int fd : {most, 0, -1, least, 5, most}) set.Insert(SockIO::PollFd(fd, POLLIN));
    ASSERT_EQ(5u, set.Len());
    int i = 0;
    for (int fd : {least, -1, 0, 5, most}) EXPECT_EQ(fd, set[i++].fd);
    set.Clear();
    EXPECT_TRUE(set.Get()->fd == -1 && set.Get()->events == 0 && set.Get()->revents == 0);

    UniqueFd const fd(socket(AF_UNIX, SOCK_DGRAM, 0));
    set.Insert(SockIO::PollFd(fd.Get(), POLLOUT));
    set.Insert(SockIO::PollFd());
    EXPECT_EQ(1, poll(set.Get(), static_cast<nfds_t>(set.Len()), 0));
    EXPECT_EQ(POLLOUT, set.Find(SockIO::PollFd(fd.Get()))->revents);
}
