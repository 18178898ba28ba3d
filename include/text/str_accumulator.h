/* A text that grows at its end. An accumulator belongs to one thread at a time. */
#ifndef KORBASE_TEXT_STR_ACCUMULATOR_H
#define KORBASE_TEXT_STR_ACCUMULATOR_H

#include <korbase_api.h>
#include <stdint.h>

#ifdef __cplusplus
extern "C" {
#endif

typedef struct str_arr_t {
    char* buffer;     /* the text, terminated; owned, from malloc; null before the first use */
    char* end;        /* the terminator of the text in `buffer` */
    int32_t capacity; /* bytes allocated, a multiple of 128; 0 before the first use */
} str_arr_t;

/* Makes the accumulator empty without looking at its former contents. */
KORBASE_API void str_arr_init(str_arr_t* acc);

/* Appends `text`, which may be part of the accumulator, and returns the buffer. A null text appends
 * nothing, yet the first use allocates. Without memory, or beyond 2 GiB: "out of memory" and abort.
 */
KORBASE_API char* str_arr_cat(str_arr_t* acc, char const* text);

/* Replaces the accumulated text by `text` (null: by "") and returns the buffer. Errors as
 * str_arr_cat. */
KORBASE_API char* str_arr_cpy(str_arr_t* acc, char const* text);

/* The text so far, valid until the next change; null before the first use. */
KORBASE_API char* str_arr_str(str_arr_t const* acc);

/* Frees the buffer. Kept: the fields are not reset; str_arr_init makes the accumulator usable
 * again. */
KORBASE_API void str_arr_delete(str_arr_t* acc);

#ifdef __cplusplus
}
#endif

#endif
