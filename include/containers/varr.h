/* A growable array of elements of any byte size, for callers that use plain functions and malloc.
 *
 * Elements are copied byte by byte. Pointers into the array are void after a call that may grow it.
 * Exhausted memory ends the process as in SMalloc. An array belongs to one thread at a time.
 * C11 and C++17. */
#ifndef KORBASE_CONTAINERS_VARR_H
#define KORBASE_CONTAINERS_VARR_H

#include <korbase_api.h>
#include <stdint.h>

#ifdef __cplusplus
extern "C" {
#endif

typedef struct varr_t {
    int32_t type;     /* how it grows: 0 by `incr`, 1 by doubling */
    int32_t elemSize; /* bytes of an element */
    int32_t capacity; /* elements that the buffer holds */
    int32_t incr;     /* initial capacity and increment, elements */
    char* wp;         /* behind the last element */
    char* base;       /* the buffer, from malloc */
} varr_t;

/* A new, empty array of elements of `elemSize` bytes with room for `initial` of them, for the
 * caller to give to varr_delete. Negative sizes count as 0. Kept: an append that needs room does
 * not return for another `type` than 0 or 1, nor when growing would add nothing. */
KORBASE_API varr_t* varr_create(int elemSize, int initial, int type);

/* Frees the array and its buffer. */
KORBASE_API void varr_delete(varr_t* v);

/* Forgets all elements, keeping the buffer. */
KORBASE_API void varr_reset(varr_t* v);

/* Append one element, or elems[0] to elems[n - 1]; they may lie in this array. They return the
 * place of the last element of the array, null if there is none. A negative `n` counts as 0. */
KORBASE_API void* varr_app(varr_t* v, void const* elem);
KORBASE_API void* varr_cat(varr_t* v, int n, void const* elems);

/* The same after varr_reset: the array holds exactly what is given. */
KORBASE_API void* varr_ass(varr_t* v, void const* elem);
KORBASE_API void* varr_cpy(varr_t* v, int n, void const* elems);

/* Adopts `mem`, a block from malloc, as a full buffer of `n` elements; the old buffer is not freed:
 * it is the caller's. Returns the place of the last element, null if there is none. */
KORBASE_API void* varr_override(varr_t* v, int n, void* mem);

/* Hands the buffer to the caller, who frees it, and starts with a fresh one of `incr` elements. */
KORBASE_API void* varr_retrieve(varr_t* v);

/* A copy of the elements for the caller to free, never null. Kept: the array is empty afterwards.
 */
KORBASE_API void* varr_save(varr_t* v);

/* The buffer, and the place of element `i` in it, counted from 0 and not checked. */
KORBASE_API void* varr_get(varr_t const* v);
KORBASE_API void* varr_get_by_index(varr_t const* v, int i);

/* The number of elements; 0 when their size is 0. */
KORBASE_API int varr_len(varr_t const* v);

/* The first element for which `cmp` gives 0, or null. */
KORBASE_API void* varr_find(varr_t const* v, int (*cmp)(void const* elem, void const* key),
                            void const* key);

/* Drops the last element and returns its place, where it stays; null when there is none. */
KORBASE_API void* varr_pop(varr_t* v);

/* Sorts by the standard library's qsort. */
KORBASE_API void varr_sort(varr_t* v, int (*cmp)(void const* a, void const* b));

/* Drops each element that equals (cmp gives 0) its left neighbour of before the call. */
KORBASE_API void varr_uniq(varr_t* v, int (*cmp)(void const* elem, void const* left));

#ifdef __cplusplus
}
#endif

#endif
