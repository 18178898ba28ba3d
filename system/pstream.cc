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

bool pstream_base::Open(std::basic_fdfilebuf<char>& buffer, char const* command, int theirs) {
    CommandWords words(command);
    bool const empty = words.argv.Len() == 0;
    if (!empty) words.argv.App(nullptr);

    // Close-on-exec, so that no program that other threads start meanwhile holds the pipe open.
    if (pipe2(fds, O_CLOEXEC) != 0) return false;
    int &ours = fds[1 - theirs], &other = fds[theirs];
    bool const attached = buffer.attach(ours, theirs == 1 ? std::ios_base::in : std::ios_base::out);
    if (empty) {  // a mistake that only the child dies of
        child = Process::Fork();
        if (child.Pid() == 0) Process::Exec(words.argv);
    } else {
        PipedProgram const program = {words.argv.Get(), ours, other, theirs};
        child = Process(korbase_detail::StartChild(RunPiped, &program), -1);
    }
    if (close(other) == 0) other = -1;
    if (!attached && close(ours) == 0) ours = -1;
    return attached && child.Pid() != -1;
}

int pstream_base::Close() {
    if (fds[0] != -1) {
        close(fds[0]);
        fds[0] = -1;
    }
    return child.WaitFor();
}

void ipstream::open(char const* command, std::ios_base::openmode) {
    if (!Open(*rdbuf(), command, 1)) setstate(std::ios_base::failbit);
}

void ipstream::close() {
    bool const closed = rdbuf()->close() != nullptr;
    // Kept: the read end is closed a second time, by its number.
    if (Close() != 0 || !closed) setstate(std::ios_base::failbit);
}

ipstream::~ipstream() {
    exceptions(std::ios_base::goodbit);
    close();
}

void opstream::open(char const* command, std::ios_base::openmode) {
    if (!Open(*rdbuf(), command, 0)) setstate(std::ios_base::failbit);
}

void opstream::close() {
    bool const closed = rdbuf()->close() != nullptr;
    if (Close() != 0 || !closed) setstate(std::ios_base::failbit);
}

opstream::~opstream() {
    exceptions(std::ios_base::goodbit);
    close();
}
