/* Programs and shell commands run to their end, for callers in any language.
 *
 * The names with an underscore are the same functions for languages that append one. */
#ifndef KORBASE_SYSTEM_SPAWN_H
#define KORBASE_SYSTEM_SPAWN_H

#include <korbase_api.h>

#ifdef __cplusplus
extern "C" {
#endif

/* Runs a program, searched for on PATH, with this process's descriptors, and waits for its end.
 * `args` holds *argc terminated texts one behind the other, the program first; below 1 counts as 0.
 *
 * Returns the exit code, 0 for a program that was killed by a signal. A program that cannot be run
 * writes its name and the reason to standard error and gives the errno value. More than 255
 * arguments write a message to standard error and give 22 (EINVAL).
 *
 * Other children that end meanwhile are discarded. SIGINT and SIGQUIT are ignored in this process
 * while it waits, so one thread at a time may call this. Kept: afterwards they have the default
 * action, whatever they had before. Kept: a signal handler that interrupts the wait ends it; the
 * program is left running and the result means nothing, as when no process can be made. */
KORBASE_API int spawn(int* argc, char* args);
KORBASE_API int spawn_(int* argc, char* args);

/* Runs a command in the shell, by system(). Returns its exit code, 255 if there was no shell. */
KORBASE_API int shcmd(char const* command);
KORBASE_API int shcmd_(char const* command);

#ifdef __cplusplus
}
#endif

#endif
