#include "system/process.h"

#include <signal.h>
#include <sys/wait.h>
#include <unistd.h>

#include <cerrno>

#include "system/sigblock.h"
#include "system/start_child.h"

using korbase_detail::CommandWords;
using korbase_detail::ExecOnPath;
using korbase_detail::StartChild;

namespace {

// Aborts if there are no arguments, before the array is changed.
void EndArguments(TVarr<char*>& argv) {
    (void)argv[0];
    argv.App(nullptr);
}

// The texts as pointers, with room for the null pointer that ends them.
TVarr<char*> Pointers(TVarr<String_t> const& texts) {
    TVarr<char*> pointers(texts.Len() + 1);
    for (String_t const& text : texts) pointers.Ass(const_cast<char*>(text.Get()));
    return pointers;
}

TVarr<char*> Pointers(ProcessArg const* const* args, unsigned count) {
    TVarr<char*> pointers(32);
    for (unsigned i = 0; i < count; ++i) pointers.App(const_cast<char*>(args[i]->Str().Get()));
    return pointers;
}

int RunProgram(void const* argv) {
    Process::CloseFds(3);
    ExecOnPath(static_cast<char* const*>(argv));
    return errno;
}

}  // namespace

Process Process::Self() { return Process(getpid()); }

Process Process::Fork() { return Process(fork(), -1); }

Process Process::Execute(TVarr<char*>& argv) {
    EndArguments(argv);
    return Process(StartChild(RunProgram, argv.Get()), -1);
}

Process Process::Execute(TVarr<String_t>& argv) {
    TVarr<char*> pointers = Pointers(argv);
    return Execute(pointers);
}

Process Process::Execute(char const* cmd) {
    CommandWords words(cmd);
    return Execute(words.argv);
}

Process Process::ExecuteArgs(Arg const* const* args, unsigned count) {
    TVarr<char*> pointers = Pointers(args, count);
    return Execute(pointers);
}

int Process::Exec(TVarr<char*>& argv) {
    EndArguments(argv);
    return ExecOnPath(argv.Get()) == -1 ? -1 : 0;
}

int Process::Exec(TVarr<String_t>& argv) {
    TVarr<char*> pointers = Pointers(argv);
    return Exec(pointers);
}

int Process::Exec(char const* cmd) {
    CommandWords words(cmd);
    return Exec(words.argv);
}

int Process::ExecArgs(Arg const* const* args, unsigned count) {
    TVarr<char*> pointers = Pointers(args, count);
    return Exec(pointers);
}

int Process::Exec(TVarr<char*>& argv, TVarr<String_t>& env) {
    EndArguments(argv);
    TVarr<char*> entries = Pointers(env);
    entries.App(nullptr);
    return execve(argv[0], argv.Get(), entries.Get()) == -1 ? -1 : 0;
}

int Process::Exec(TVarr<String_t>& argv, TVarr<String_t>& env) {
    TVarr<char*> pointers = Pointers(argv);
    return Exec(pointers, env);
}

int Process::Exec(char const* cmd, TVarr<String_t>& env) {
    CommandWords words(cmd);
    return Exec(words.argv, env);
}

int Process::WaitFor() {
    if (pid == -1) return -1;
    SigBlock const block(SIGCHLD, SIGTERM, SIGINT, 0);
    int ended;
    if (waitpid(pid, &ended, 0) != pid) return -1;
    pid = -1;
    status = ended;
    if (WIFEXITED(ended)) return WEXITSTATUS(ended);
    return WIFSIGNALED(ended) ? -WTERMSIG(ended) : ended;
}

int Process::Kill(int sig) { return pid == -1 ? -1 : kill(pid, sig); }
