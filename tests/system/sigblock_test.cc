#include "system/sigblock.h"

#include "tests/support/test.h"

static std::string Blocked() {
    std::string blocked;
    sigset_t mask;
    sigprocmask(SIG_BLOCK, nullptr, &mask);
    for (int sig = 1; sig < 32; ++sig)
        if (sigismember(&mask, sig) == 1) blocked += sigabbrev_np(sig) + std::string(" ");
    return blocked;
}

TEST(SigBlock, BlocksForItsScope) {
    errno = 77;
    {
        SigBlock const one(SIGUSR1), two(SIGHUP, SIGUSR2, -1, SIGINT);  // -1 ends the list
        {
            SigBlock const again(SIGUSR1, 0), many(SIGINT, SIGALRM, SIGTERM, 0);
            EXPECT_EQ("HUP INT USR1 USR2 ALRM TERM ", Blocked());
        }
        EXPECT_EQ("HUP USR2 ", Blocked());  // SIGUSR1 went with the inner one
    }
    EXPECT_TRUE(Blocked().empty() && errno == 77);
    EXPECT_TRUE(IgnoreSigPipe() == SIG_DFL && RestoreSigPipe(SIG_DFL) == SIG_IGN);
}
