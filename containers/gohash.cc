#include "generic/gohash"

#include <limits>
#include <new>

unsigned GHash(char const* s) {
    std::uint32_t h = 0;
    for (; s && *s; ++s) {
        h = (h << 4) + static_cast<unsigned char>(*s);
        h = (h & 0xFFFFFFU) ^ (h >> 24);
    }
    return h;
}

unsigned korbase_detail::HashTableSize(unsigned card) {
    if (card < 88) return 100;
    std::uint64_t size = 200;
    while (size - size / 8 <= card) size *= 2;
    if (size > std::numeric_limits<std::uint32_t>::max()) throw std::bad_array_new_length();
    return static_cast<unsigned>(size);
}

template class OHashTable<String_t, StrCnt>;
template class OHashTable<String_t, StrStrMap>;
template class OHashTable<String_t, TabStr>;
template class OHashIterator<String_t, StrCnt>;
template class OHashIterator<String_t, StrStrMap>;
template class OHashIterator<String_t, TabStr>;
