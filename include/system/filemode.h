/* What the calling user may do with an open file, by its permission bits alone.
 *
 * The functions keep no state: any thread may call them. */
#ifndef KORBASE_SYSTEM_FILEMODE_H
#define KORBASE_SYSTEM_FILEMODE_H

#include <korbase_api.h>

#ifdef __cplusplus
extern "C" {
#endif

/* 1 if the file is the real user's and its owner bit is set, or of the real group and its group bit
 * is set, or the bit for others is set; else 0, or minus errno for a bad descriptor (-EBADF).
 * Kept: a user without the owner bit still has the others', supplementary groups do not count, and
 * the superuser has no privilege. How the file was opened does not matter. */
KORBASE_API int FileIsReadable(int fd);
KORBASE_API int FileIsWritable(int fd);
KORBASE_API int FileIsExecutable(int fd);

#ifdef __cplusplus
}
#endif

#endif
