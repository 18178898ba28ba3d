#include "system/sigblock.h"

#include <cstdarg>

SigBlock::SigBlock(int sig) : SigBlock(sig, 0) {}

SigBlock::SigBlock(int sig1, int sig2, ...) {
    sigemptyset(&set);
    sigaddset(&set, sig1);
    sigaddset(&set, sig2);
    va_list more;
    va_start(more, sig2);
    for (int sig = sig2; sig > 0;) {
        sig = va_arg(more, int);  // NOLINT(*-valist.*): a false alarm when checked among others
        if (sig > 0) sigaddset(&set, sig);
    }
    va_end(more);
    sigprocmask(SIG_BLOCK, &set, nullptr);
}

SigBlock::~SigBlock() { sigprocmask(SIG_UNBLOCK, &set, nullptr); }

SigHandler_t IgnoreSigPipe() { return signal(SIGPIPE, SIG_IGN); }

SigHandler_t RestoreSigPipe(SigHandler_t handler) { return signal(SIGPIPE, handler); }
