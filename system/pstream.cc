#include "system/pstream.h"

#include <fcntl.h>
#include <unistd.h>

#include <cerrno>

#include "system/start_child.h"

using korbase_detail::CommandWords;

namespace {

struct PipedProgram {
    char* const* argv;
    int ours, theirs;  // ends of the pipe
    int standard;      // what theirs is to become
};

int RunPiped(void const* context) {
    auto const& program = *static_cast<PipedProgram const*>(context);
    // dup takes the lowest free number, the one just closed
    if (close(program.ours) == 0 && close(program.standard) == 0 && dup(program.theirs) != -1 &&
        close(program.theirs) == 0) {
        Process::CloseFds(3);
        korbase_detail::ExecOnPath(program.argv);
    }
    return -errno;
}

}  // namespace

// Close-on-exec, so that no program that other threads start meanwhile holds the pipe open.
bool pstream_base::MakePipe() { return pipe2(fds, O_CLOEXEC) == 0; }

bool pstream_base::Start(char const* command, int theirs, bool attached) {
    CommandWords words(command);
    if (words.argv.Len() == 0) {  // a mistake that only the child dies of
        child = Process::Fork();
        if (child.Pid() == 0) Process::Exec(words.argv);
    } else {
        words.argv.App(nullptr);
        PipedProgram const program = {words.argv.Get(), fds[1 - theirs], fds[theirs], theirs};
        child = Process(korbase_detail::StartChild(RunPiped, &program), -1);
    }
    int const error = errno;
    if (close(fds[theirs]) == 0) fds[theirs] = -1;
    if (!attached && close(fds[1 - theirs]) == 0) fds[1 - theirs] = -1;
    errno = error;
    return child.Pid() != -1;
}

int pstream_base::Close() {
    if (fds[0] != -1) {
        close(fds[0]);
        fds[0] = -1;
    }
    return child.WaitFor();
}

void ipstream::open(char const* command, std::ios_base::openmode) {
    bool ok = MakePipe();
    if (ok) {
        bool const attached = rdbuf()->attach(fds[0], std::ios_base::in) != nullptr;
        ok = Start(command, 1, attached) && attached;
    }
    if (!ok) setstate(std::ios_base::failbit);
}

void ipstream::close() {
    basic_ifdstream::close();
    // Kept: the read end is closed a second time, by its number.
    if (Close() != 0) setstate(std::ios_base::failbit);
}

void opstream::open(char const* command, std::ios_base::openmode) {
    bool ok = MakePipe();
    if (ok) {
        bool const attached = rdbuf()->attach(fds[1], std::ios_base::out) != nullptr;
        ok = Start(command, 0, attached) && attached;
    }
    if (!ok) setstate(std::ios_base::failbit);
}

void opstream::close() {
    basic_ofdstream::close();
    if (Close() != 0) setstate(std::ios_base::failbit);
}
