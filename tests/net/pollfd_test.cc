#include "net/pollfd.h"

#include <climits>

#include "tests/net/sockets.h"

TEST(PollFd, MakesSortedSetsThatPollTakes) {
    TSortedVector<SockIO::PollFd, SockIO::PollFd::Compare> set(1);
    UniqueFd const fd(socket(AF_UNIX, SOCK_DGRAM, 0));
    int const sorted[] = {INT_MIN, -1, fd.Get(), INT_MAX};
    for (int i : {3, 2, 0, 3, 1}) set.Insert(SockIO::PollFd(sorted[i], POLLOUT));
    for (int i = 0; i < 4; ++i) EXPECT_EQ(sorted[i], set[i].fd);
    EXPECT_TRUE(poll(set.Get(), 3, 0) == 1 && set[2].revents == POLLOUT);
}
