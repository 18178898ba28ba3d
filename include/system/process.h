// Process: a handle on a process, and the ways to start, replace, signal and wait for one.
//
// A handle is two numbers; destroying it neither waits for the process nor kills it. Whoever starts
// a child has to wait for it, or it stays a zombie.
//
// Children may be started from any thread of a process with many, whatever the others do: the
// arguments are ready before the child exists, and the child shares the memory of its parent until
// it becomes the program, so that a big parent starts one as fast as a small one. Signals that
// the parent handles have their default action in the child, from the start.
#ifndef KORBASE_SYSTEM_PROCESS_H
#define KORBASE_SYSTEM_PROCESS_H

#include <korbase_api.h>
#include <system/process_arg.h>
#include <text/string.h>

#include <cstddef>
#include <utility>

#include <generic/tvarr>

class Process;

namespace korbase_detail {

template <std::size_t>
struct ProcessArgAt {
    using Type = ProcessArg const&;
};

// The overloads of Execute and Exec for one argument up to as many as `Indexes` has.
template <class Indexes>
class ProcessArities;

template <>
class ProcessArities<std::index_sequence<>> {
public:
    static void Execute() = delete;
    static void Exec() = delete;
};

template <std::size_t first, std::size_t... rest>
class ProcessArities<std::index_sequence<first, rest...>>
    : public ProcessArities<std::make_index_sequence<sizeof...(rest)>> {
    using Fewer = ProcessArities<std::make_index_sequence<sizeof...(rest)>>;

public:
    using Fewer::Exec;
    using Fewer::Execute;
    static Process Execute(ProcessArg const& program, typename ProcessArgAt<rest>::Type... args);
    static int Exec(ProcessArg const& program, typename ProcessArgAt<rest>::Type... args);
};

using ProcessStart = ProcessArities<std::make_index_sequence<10>>;

}  // namespace korbase_detail

class KORBASE_API Process : public korbase_detail::ProcessStart {
public:
    using Arg = ProcessArg;

    // A handle that names no process.
    Process() : pid(-1), status(-1) {}
    // A handle on process `pid`; WaitFor() works only for a child of ours.
    Process(int pid) : pid(pid), status(0) {}

    // This process.
    static Process Self();
    // Forks, running the handlers of pthread_atfork: pid 0 in the child, the child's in the parent,
    // -1 with errno on failure.
    static Process Fork();

    // Execute starts a program, searched for on PATH, in a child that keeps descriptors 0 to 2 and
    // closes all others. The handle has pid -1, and errno is set, if there is no child. A program
    // that cannot be run shows only when it is waited for: the child exits with the errno value.

    // An array of arguments, the program first; it grows by the null pointer that ends it. Null
    // ends the arguments early. Aborts if the array is empty.
    static Process Execute(TVarr<char*>& argv);
    static Process Execute(TVarr<String_t>& argv);
    // A text of words between blanks and tabs; there is no quoting. Aborts if it has no word.
    static Process Execute(char const* cmd);
    // One to ten arguments, from whatever makes an Arg: Execute("cc", "-o", name, "-c").
    using korbase_detail::ProcessStart::Execute;

    // Exec is the same without a child: the program replaces this process, which keeps its
    // descriptors. Returns only on failure: -1 with errno.
    static int Exec(TVarr<char*>& argv);
    static int Exec(TVarr<String_t>& argv);
    static int Exec(char const* cmd);
    using korbase_detail::ProcessStart::Exec;
    // With exactly the environment `env`, entries NAME=value; the first argument is the path of the
    // program, PATH is not searched.
    static int Exec(TVarr<char*>& argv, TVarr<String_t>& env);
    static int Exec(TVarr<String_t>& argv, TVarr<String_t>& env);
    static int Exec(char const* cmd, TVarr<String_t>& env);

    // Waits for the child to end, with SIGCHLD, SIGTERM and SIGINT blocked in this thread, and
    // makes this a handle of no process. Returns the exit code, minus the number of the signal that
    // killed it, or for a child that neither exited nor was killed, its raw status. Returns -1 if
    // there is no process to wait for; an interrupted wait is not repeated.
    int WaitFor();
    // The exit code of the child that was waited for. Kept: how it ended is not checked.
    int ExitValue() const { return (status >> 8) & 0xff; }
    // Sends a signal; returns 0, or -1 with errno. -1 for a handle of no process.
    int Kill(int sig);

    int Pid() const { return pid; }        // -1: no process
    int Status() const { return status; }  // as waitpid gave it

    // Closes all open descriptors numbered `from` or above. Safe between fork and exec.
    static void CloseFds(unsigned int from);

    // Replace the environment, for a program to be run; no other thread may use it meanwhile. Each
    // call allocates an array that is never freed. A TZ is kept with the value it had at the first
    // call that found one.

    // Only TZ stays. Kept: without TZ nothing is changed.
    static void ClearEnv();
    // PATH is /usr/bin:/bin, and TZ stays if there is one.
    static void MinEnv();

private:
    template <class Indexes>
    friend class korbase_detail::ProcessArities;
    friend class pstream_base;

    Process(int pid, int status) : pid(pid), status(status) {}
    static Process ExecuteArgs(Arg const* const* args, unsigned count);
    static int ExecArgs(Arg const* const* args, unsigned count);

    int pid;
    int status;
};

namespace korbase_detail {

template <std::size_t first, std::size_t... rest>
Process ProcessArities<std::index_sequence<first, rest...>>::Execute(
    ProcessArg const& program, typename ProcessArgAt<rest>::Type... args) {
    ProcessArg const* const all[] = {&program, &args...};
    return Process::ExecuteArgs(all, 1 + sizeof...(rest));
}

template <std::size_t first, std::size_t... rest>
int ProcessArities<std::index_sequence<first, rest...>>::Exec(
    ProcessArg const& program, typename ProcessArgAt<rest>::Type... args) {
    ProcessArg const* const all[] = {&program, &args...};
    return Process::ExecArgs(all, 1 + sizeof...(rest));
}

}  // namespace korbase_detail

#endif
