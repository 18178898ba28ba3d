#include "net/closeonexec.h"

#include "tests/net/sockets.h"

TEST(SetCloseOnExec, SetsTheFlagAndReturnsTheError) {
    for (auto* set : {SockIO::SetCloseOnExec, SockIO::setCloseOnExec}) {
        UniqueFd const fd(socket(AF_UNIX, SOCK_STREAM | SOCK_NONBLOCK, 0));
        EXPECT_TRUE(set(fd.Get()) == 0 && fcntl(fd.Get(), F_GETFD) == FD_CLOEXEC);
        EXPECT_TRUE((fcntl(fd.Get(), F_GETFL) & O_NONBLOCK) && set(-1) == EBADF);
    }
}
