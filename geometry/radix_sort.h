// Sorting by a 32-bit signed key in linear time: least-significant-digit radix sort, one byte at a
// time that the keys do not share. Few elements are sorted by comparisons, which cost less than
// counting digits.
#ifndef KORBASE_GEOMETRY_RADIX_SORT_H
#define KORBASE_GEOMETRY_RADIX_SORT_H

#include <algorithm>
#include <cstdint>
#include <utility>

namespace korbase_detail {

// Sorts a[0] to a[n - 1] ascending by key(a[i]); elements of equal keys come in any order. `spare`
// has room for `n` elements, too.
template <class T, class Key>
void RadixSort(T* a, T* spare, unsigned n, Key key) {
    std::uint32_t differ = 0;  // the bits in which any two keys differ
    bool sorted = true;
    for (unsigned i = 1; i < n; ++i) {
        differ |= static_cast<std::uint32_t>(key(a[i]) ^ key(a[i - 1]));
        sorted &= key(a[i - 1]) <= key(a[i]);
    }
    if (sorted) return;
    if (n <= 64) {
        std::sort(a, a + n, [key](T const& x, T const& y) { return key(x) < key(y); });
        return;
    }
    T* from = a;
    T* to = spare;
    for (int shift = 0; shift < 32; shift += 8) {
        if ((differ >> shift & 0xFFU) == 0) continue;
        auto const digit = [key, shift](T const& t) {
            return (static_cast<std::uint32_t>(key(t)) ^ 0x80000000U) >> shift & 0xFFU;
        };
        unsigned place[256] = {};
        for (unsigned i = 0; i < n; ++i) ++place[digit(from[i])];

        unsigned before = 0;
        for (unsigned& p : place) before += std::exchange(p, before);
        for (unsigned i = 0; i < n; ++i) to[place[digit(from[i])]++] = from[i];
        std::swap(from, to);
    }
    if (from != a) std::copy(from, from + n, a);
}

}  // namespace korbase_detail

#endif
