// The records of the library's own hash tables (generic/gohash): texts that are counted, mapped to
// texts, or collected as a set. The key comes first.
#ifndef KORBASE_CONTAINERS_HASH_RECORDS_H
#define KORBASE_CONTAINERS_HASH_RECORDS_H

#include <text/string.h>

#include <cstdint>

// A text and a number that the caller counts with.
struct StrCnt {
    String_t str;
    std::int32_t cnt;

    StrCnt() : cnt(0) {}
    StrCnt(String_t const& s) : str(s), cnt(0) {}
};

// A text and the text it stands for.
struct StrStrMap {
    String_t key;
    String_t value;

    StrStrMap() = default;
    StrStrMap(String_t const& k, String_t const& v) : key(k), value(v) {}
};

// A text in a set of texts.
struct TabStr {
    String_t str;

    TabStr() = default;
    TabStr(String_t const& s) : str(s) {}
};

#endif
