/* Listing the elements of an array in columns. */
#ifndef KORBASE_TEXT_STR_COLUMNS_H
#define KORBASE_TEXT_STR_COLUMNS_H

#include <korbase_api.h>

#ifdef __cplusplus
extern "C" {
#endif

/* Lists the `count` elements of `size` bytes each at `base` in `columns` columns, column by column:
 * 5 elements in 2 columns come as the rows (0, 3), (1, 4), (2). `print` is called with each element
 * of a row, `end_row` behind it. With `cmp` (null: as they are) the elements are sorted first, as
 * by qsort. Nothing is listed for 0 columns. Kept: negative columns are not refused; their number
 * of rows is (count + columns - 1) / columns too. */
KORBASE_API void str_fmt_mul_cols(void* base, int count, int size,
                                  int (*cmp)(void const* a, void const* b), int columns,
                                  void (*print)(void* element), void (*end_row)(void));

#ifdef __cplusplus
}
#endif

#endif
