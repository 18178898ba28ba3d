#include "system/sigblock.h"

#include <cstdarg>

SigBlock::SigBlock(int sig) : SigBlock(sig, 0) {}

SigBlock::SigBlock(int sig1, int sig2, ...) {
    sigemptyset(&set);
    if (sig1 > 0) sigaddset(&set, sig1);
    va_list more;
    va_start(more, sig2);
    // NOLINTNEXTLINE(*-valist.*): a false alarm when checked among others
    for (int sig = sig2; sig > 0; sig = va_arg(more, int)) sigaddset(&set, sig);
    va_end(more);
    sigprocmask(SIG_BLOCK, &set, nullptr);
}

SigBlock::~SigBlock() { sigprocmask(SIG_UNBLOCK, &set, nullptr); }

SigHandler_t IgnoreSigPipe() { return signal(SIGPIPE, SIG_IGN); }

SigHandler_t RestoreSigPipe(SigHandler_t handler) { return signal(SIGPIPE, handler); }
