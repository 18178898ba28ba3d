/* Checked allocation: these functions never return a null pointer.
 *
 * Where the platform has no memory left they print "out of memory" (no line end) to standard error
 * and abort; below this is called exhaustion. Blocks are given back with free(). Sizes are bytes.
 * As thread-safe as the platform's allocator. */
#ifndef KORBASE_TEXT_MEMORY_H
#define KORBASE_TEXT_MEMORY_H

#include <korbase_api.h>

#ifdef __cplusplus
extern "C" {
#endif

/* A new block of `size` bytes, not initialised. */
KORBASE_API void* SMalloc(unsigned size);

/* A new block for `count` elements of `size` bytes each, all zero. */
KORBASE_API void* SCalloc(unsigned count, unsigned size);

/* The block `ptr` (null: a new one) with `size` bytes; the old pointer is void afterwards.
 * Kept: a size of 0 for an existing block is exhaustion where the platform's realloc answers it
 * with null. */
KORBASE_API void* SRealloc(void* ptr, unsigned size);

/* The block `ptr` (null: a new one) with room for `count` elements of `size` bytes. A product
 * beyond 32 bits is exhaustion. Kept: so is an element size of 0 with a count above 0. */
KORBASE_API void* SArealloc(void* ptr, unsigned count, unsigned size);

/* Makes room for `needed` elements of `size` bytes in the block `ptr` (null for an empty one),
 * whose capacity in elements is `*capacity`. Returns `ptr` when they fit; otherwise stores the next
 * multiple of 256 strictly above `needed` in `*capacity` and returns the grown block, which
 * replaces the caller's pointer. A capacity or a size in bytes beyond 32 bits is exhaustion. */
KORBASE_API void* SBalloc(unsigned* capacity, void* ptr, unsigned needed, unsigned size);

#ifdef __cplusplus
}
#endif

#endif
