#include "generic/tvarr"

#include <cstdlib>

#include "text/string.h"

// qsort takes no context; this is the same sort, by its re-entrant name.
void korbase_detail::SortBytes(void* base, std::size_t count, std::size_t size,
                               int (*cmp)(void const*, void const*, void*), void* context) {
    qsort_r(base, count, size, cmp, context);
}

template void ArrCpy<char>(char*, char const*, unsigned);
template void ArrSet<char>(char*, char const&, unsigned);
template class TVarr<char>;
template class TVarr<int>;
template class TVarr<float>;
template class TVarr<double>;
template class TVarr<char*>;
template class TVarr<String_t>;
