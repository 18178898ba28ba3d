/* Shared libraries by the platform's loader, behind an older calling convention; ShlHandle is the
 * safe way. Different threads may call these functions. The loader's messages are not reported. */
#ifndef KORBASE_SYSTEM_SHL_H
#define KORBASE_SYSTEM_SHL_H

#include <korbase_api.h>

#ifdef __cplusplus
extern "C" {
#endif

typedef void* shl_t; /* the loader's handle */

/* Loads a library, by its path if that has a "/" in it, else as the loader finds it; null is the
 * program itself. Functions are bound when they are called first. `flags` is ignored. Returns null
 * when that fails, else a handle for shl_unload; each load of the same library counts. */
KORBASE_API shl_t shl_load(char const* path, int flags);

/* Stores the address of a symbol of the library *handle, or of those it depends on, into *value.
 * Kept: the result is 0 also when there is none; the value is null then. `type` is ignored. */
KORBASE_API int shl_findsym(shl_t* handle, char const* symbol, short type, void** value);

/* Gives back a handle that is not null; with its last one, the library and its addresses go.
 * Returns 0, or what the loader says. */
KORBASE_API int shl_unload(shl_t handle);

#ifdef __cplusplus
}
#endif

#endif
