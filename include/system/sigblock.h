// Signals that should not get in the way: a scoped blocker, and SIGPIPE ignored and restored.
#ifndef KORBASE_SYSTEM_SIGBLOCK_H
#define KORBASE_SYSTEM_SIGBLOCK_H

#include <korbase_api.h>
#include <signal.h>

// Blocks signals in the calling thread's mask while it lives, and belongs to that thread.
// Kept: the end of the scope unblocks them all, also those that were blocked before.
class KORBASE_API SigBlock {
public:
    explicit SigBlock(int sig);
    // Any number of signals, ended by a value of 0 or less: SigBlock(SIGINT, SIGTERM, SIGHUP, 0).
    // A `sig2` of 0 or less ends the list, too.
    SigBlock(int sig1, int sig2, ...);
    ~SigBlock();
    SigBlock(SigBlock const&) = delete;
    SigBlock& operator=(SigBlock const&) = delete;

private:
    sigset_t set;
};

extern "C" {

typedef void (*SigHandler_t)(int);

// Ignores SIGPIPE in the whole process; returns the handler before the call, SIG_ERR on failure.
KORBASE_API SigHandler_t IgnoreSigPipe(void);
// Makes `handler` that of SIGPIPE; returns the one it replaces, SIG_ERR on failure.
KORBASE_API SigHandler_t RestoreSigPipe(SigHandler_t handler);
}

#endif
