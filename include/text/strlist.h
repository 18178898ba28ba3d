// Lists of strings: cutting a text into one, joining it, comparing its values.
//
// The functions keep no state; a list belongs to one thread at a time.
#ifndef KORBASE_TEXT_STRLIST_H
#define KORBASE_TEXT_STRLIST_H

#include <korbase_api.h>
#include <text/string.h>

#include <generic/tolist>

extern "C" {

// Appends the pieces of `text` between single characters of `separators` to `list` and returns
// their number, one more than there are separators: empty pieces count, also behind the last
// separator. A null text has no pieces, null separators are none. The list is unchanged if an
// allocation throws.
KORBASE_API int Split(char const* text, TOList<String_t>& list, char const* separators);

// str_cmp and str_icmp of the link's value and `key`, for searches in lists.
KORBASE_API int StrListCmp(TOLink<String_t> const* link, String_t const* key);
KORBASE_API int StrListCaseCmp(TOLink<String_t> const* link, String_t const* key);
}

// A new text of `a`, `separator` and `b`; null counts as nothing, three nulls give the null string.
KORBASE_API String_t Concat(String_t const& a, String_t const& b, char const* separator);

// The values of the list with `separator` between neighbours; null values count as "". The null
// string for an empty list.
KORBASE_API String_t Concat(TOList<String_t> const& list, char separator);

#endif
