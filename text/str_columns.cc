#include "text/str_columns.h"

#include <cstddef>
#include <cstdint>
#include <cstdlib>

void str_fmt_mul_cols(void* base, int count, int size, int (*cmp)(void const* a, void const* b),
                      int columns, void (*print)(void* element), void (*end_row)(void)) {
    if (cmp && count > 1 && size > 0)
        std::qsort(base, static_cast<std::size_t>(count), static_cast<std::size_t>(size), cmp);
    // In 64 bits, where neither the sum nor the last step of a row leaves the range.
    std::int64_t const rows = columns ? (std::int64_t{count} + columns - 1) / columns : 0;
    for (std::int64_t row = 0; row < rows; ++row) {
        for (std::int64_t i = row; i < count; i += rows)
            print(static_cast<char*>(base) + static_cast<std::ptrdiff_t>(i) * size);
        end_row();
    }
}
