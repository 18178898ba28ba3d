/* Whole buffers through a descriptor. An interrupted call is not repeated. */
#ifndef KORBASE_SYSTEM_SREADWRITE_H
#define KORBASE_SYSTEM_SREADWRITE_H

#include <korbase_api.h>

#ifdef __cplusplus
extern "C" {
#endif

/* Reads until there are `n` bytes or the input ends. Returns the number read; on an error -1 with
 * errno, whatever was read before. */
KORBASE_API int sread(int fd, void* buf, unsigned int n);

/* Writes `n` bytes. Returns n; on an error -1 with errno, whatever was written before. */
KORBASE_API int swrite(int fd, void const* buf, unsigned int n);

#ifdef __cplusplus
}
#endif

#endif
