/* Where things are and who asks: the installation root, the user's home and name, a name from the
 * clock. The functions use the environment and the process-wide password database: one thread at a
 * time. */
#ifndef KORBASE_SYSTEM_USERDIR_H
#define KORBASE_SYSTEM_USERDIR_H

#include <korbase_api.h>

#ifdef __cplusplus
extern "C" {
#endif

/* The installation root: the value of TALDIR, or the first of /opt/tal, /usr/local/tal, /usr/tal
 * and /tal that may be read and searched; "." when there is none. Not to be freed; the value of
 * TALDIR is valid until the environment changes. */
KORBASE_API char const* TalDir(void);

/* Copies as much of the real user's home directory as fits into the `size` bytes at `buf`,
 * terminator included. Returns 0; 2 (ENOENT) and "" for a user without an entry; 22 (EINVAL) for a
 * null `buf` or a size of 0. */
KORBASE_API int GetHomeDir(char* buf, unsigned int size);

/* The login name of the effective user, "" for a user without an entry. Valid until the password
 * database is used again. */
KORBASE_API char const* getusername(void);

/* A name from the local time: year since 1900, day of the year counted from 0, hour, minute and
 * second; 12 digits (kept: 11 before the year 2000). Valid until the next call. */
KORBASE_API char const* getuname(void);

#ifdef __cplusplus
}
#endif

#endif
