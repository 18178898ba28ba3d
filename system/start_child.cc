#include "system/start_child.h"

#include <pthread.h>
#include <signal.h>
#include <unistd.h>

#include <cerrno>
#include <cstring>

namespace korbase_detail {

namespace {

// Handlers must not run in the child, where they would work on the parent's memory. The kernel does
// the same when the program starts.
void DropHandlers() {
    for (int sig = 1; sig < NSIG; ++sig) {
        struct sigaction action;
        if (sigaction(sig, nullptr, &action) != 0) continue;
        if (action.sa_handler == SIG_DFL || action.sa_handler == SIG_IGN) continue;
        action.sa_flags = 0;
        action.sa_handler = SIG_DFL;
        sigaction(sig, &action, nullptr);
    }
}

[[noreturn]] void RunChild(sigset_t const* mask, int (*body)(void const*), void const* context) {
    DropHandlers();
    pthread_sigmask(SIG_SETMASK, mask, nullptr);
    _exit(body(context));
}

// Apart, so that the frame that the two processes share holds next to nothing.
__attribute__((noinline)) pid_t Vfork(sigset_t const* mask, int (*body)(void const*),
                                      void const* context) {
    // The child keeps to what StartChild demands, which is more than the rules of vfork.
    pid_t const pid = vfork();                    // NOLINT(clang-analyzer-*)
    if (pid == 0) RunChild(mask, body, context);  // NOLINT(clang-analyzer-*)
    return pid;
}

}  // namespace

// The signals of this thread, and its cancellation, stay out while its memory is shared.
pid_t StartChild(int (*body)(void const*), void const* context) {
    int const error = errno;
    int cancellation;
    sigset_t all, mask;
    sigfillset(&all);
    pthread_setcancelstate(PTHREAD_CANCEL_DISABLE, &cancellation);
    pthread_sigmask(SIG_SETMASK, &all, &mask);
    pid_t const pid = Vfork(&mask, body, context);
    if (pid != -1) errno = error;  // the child has used it, too
    pthread_sigmask(SIG_SETMASK, &mask, nullptr);
    pthread_setcancelstate(cancellation, nullptr);
    return pid;
}

int ExecOnPath(char* const* argv) {
    if (argv[0]) return execvp(argv[0], argv);
    errno = EFAULT;
    return -1;
}

CommandWords::CommandWords(char const* command) : argv(32), text(command ? command : "") {
    char* rest = nullptr;
    for (char* word = strtok_r(text.data(), " \t", &rest); word;
         word = strtok_r(nullptr, " \t", &rest))
        argv.App(word);
}

}  // namespace korbase_detail
