// What starting programs has in common: the child that shares its parent's memory, and arguments.
#ifndef KORBASE_SYSTEM_START_CHILD_H
#define KORBASE_SYSTEM_START_CHILD_H

#include <sys/types.h>

#include <string>

#include "generic/tvarr"

namespace korbase_detail {

// Starts a child that calls `body(context)` and, should that return, exits with its result. Returns
// the child's pid once it runs a program or has ended; -1 with errno if it could not be made.
//
// `body` runs in the memory of the parent, whose other threads go on: it may call only what is safe
// in a signal handler, and change only errno and locals of its own.
pid_t StartChild(int (*body)(void const* context), void const* context);

// execvp(argv[0], argv), which fails with EFAULT if there is no program. May be called by `body`.
int ExecOnPath(char* const* argv);

// The words of a command, cut at blanks and tabs.
class CommandWords {
public:
    explicit CommandWords(char const* command);
    TVarr<char*> argv;  // pointers into the text

private:
    std::string text;
};

}  // namespace korbase_detail

#endif
