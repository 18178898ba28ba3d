// Least-significant-digit radix sort by a 32-bit signed key, one byte at a time.
#ifndef KORBASE_GEOMETRY_RADIX_SORT_H
#define KORBASE_GEOMETRY_RADIX_SORT_H

#include <algorithm>
#include <cstdint>

namespace korbase_detail {

// Sorts a[0] to a[n - 1] ascending by key(a[i]); `spare` has room for `n` as well. Stable, linear,
// and without work for bytes that all keys share. Requires n > 0.
template <class T, class Key>
void RadixSort(T* a, T* spare, unsigned n, Key key) {
    auto const digit = [key](T const& t, int pass) {
        std::uint32_t const ascending = static_cast<std::uint32_t>(key(t)) ^ 0x80000000U;
        return ascending >> (8 * pass) & 0xFFU;
    };
    unsigned place[4][256] = {};
    for (unsigned i = 0; i < n; ++i)
        for (int pass = 0; pass < 4; ++pass) ++place[pass][digit(a[i], pass)];

    T* from = a;
    T* to = spare;
    for (int pass = 0; pass < 4; ++pass) {
        if (place[pass][digit(a[0], pass)] == n) continue;
        unsigned before = 0;
        for (unsigned& p : place[pass]) {
            unsigned const here = p;
            p = before;
            before += here;
        }
        for (unsigned i = 0; i < n; ++i) to[place[pass][digit(from[i], pass)]++] = from[i];
        std::swap(from, to);
    }
    if (from != a) std::copy(from, from + n, a);
}

}  // namespace korbase_detail

#endif
