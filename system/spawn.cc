#include "system/spawn.h"

#include <signal.h>
#include <sys/uio.h>
#include <sys/wait.h>

#include <cerrno>
#include <cstdio>
#include <cstdlib>
#include <cstring>

#include "system/start_child.h"

namespace {

constexpr int kMaxArguments = 255;

iovec Piece(char const* text) { return {const_cast<char*>(text), std::strlen(text)}; }

// What perror prints in the C locale, without its locks and allocations.
void PrintError(char const* program, int error) {
    char const* const reason = strerrordesc_np(error);
    bool const named = program && *program;
    iovec const line[] = {Piece(named ? program : ""), Piece(named ? ": " : ""),
                          Piece(reason ? reason : "Unknown error"), Piece("\n")};
    (void)!writev(2, line, 4);
}

int RunOrExplain(void const* context) {
    auto const argv = static_cast<char* const*>(context);
    korbase_detail::ExecOnPath(argv);
    int const error = errno;
    PrintError(argv[0], error);
    return error;
}

}  // namespace

int spawn(int* argc, char* args) {
    if (*argc > kMaxArguments) {
        std::fprintf(stderr, "argument buffer overflow, %d\n", *argc);
        return EINVAL;
    }
    char* argv[kMaxArguments + 1] = {};
    for (int i = 0; i < *argc; ++i) {
        argv[i] = args;
        args += std::strlen(args) + 1;
    }
    pid_t const pid = korbase_detail::StartChild(RunOrExplain, argv);
    signal(SIGINT, SIG_IGN);
    signal(SIGQUIT, SIG_IGN);
    int status = 0;
    pid_t ended;
    do {
        ended = wait(&status);
    } while (ended != pid && ended != -1);  // without a child, pid is -1: waits for all others
    signal(SIGINT, SIG_DFL);
    signal(SIGQUIT, SIG_DFL);
    return (status >> 8) & 0xff;
}

int spawn_(int* argc, char* args) { return spawn(argc, args); }

int shcmd(char const* command) { return (std::system(command) >> 8) & 0xff; }

int shcmd_(char const* command) { return shcmd(command); }
