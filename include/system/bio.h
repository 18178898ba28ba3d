/* Thin functions over the FILE streams of the platform, for callers in other languages.
 *
 * The caller closes what it opened, by the function of the same kind. */
#ifndef KORBASE_SYSTEM_BIO_H
#define KORBASE_SYSTEM_BIO_H

#include <korbase_api.h>
#include <stdio.h>

#ifdef __cplusplus
extern "C" {
#endif

/* Opens a file for reading and writing, created if it is missing. The name is the first len - 1
 * characters of `name`, at most 255. Null with errno on failure. */
KORBASE_API FILE* bio_open(char const* name, int len);
/* Flushes and closes; returns what fclose returns. */
KORBASE_API int bio_close(FILE* file);

/* Starts a shell command whose output can be read (flag 0) or whose input can be written (flag 1);
 * any other flag aborts. Null with errno on failure. */
KORBASE_API FILE* bio_popen(char const* command, int flag);
/* Waits for the command's end; returns what pclose returns. */
KORBASE_API int bio_pclose(FILE* file);

/* Goes back to the start. */
KORBASE_API void bio_reset(FILE* file);
/* Goes back to the start and empties the file; returns 0, or -1 with errno. */
KORBASE_API int bio_rewrite(FILE* file);
/* 1 at the end of the file, 0 before it. Looks one character ahead, so it may wait for input. */
KORBASE_API int bio_eof(FILE* file);

/* Writes `n` bytes; nothing if n < 1. */
KORBASE_API void bio_put(FILE* file, char const* data, int n);
/* Reads up to `n` bytes, fewer only at the end of the file; returns how many. */
KORBASE_API int bio_get(FILE* file, char* data, int n);

#ifdef __cplusplus
}
#endif

#endif
