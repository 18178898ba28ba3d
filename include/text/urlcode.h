// Texts in the percent notation of URLs.
#ifndef KORBASE_TEXT_URLCODE_H
#define KORBASE_TEXT_URLCODE_H

#include <korbase_api.h>
#include <text/string.h>

// ASCII letters, digits and "*-._" as they are, every other byte as '%' and two lower-case
// hexadecimal digits: "a b/c" gives "a%20b%2fc". The null string for null.
KORBASE_API String_t UrlEncode(char const* text);

// Puts the byte for each '%' and two characters, which are read as scanf reads "%x": "%4g" is byte
// 4. A '%' stays where no number can be read or fewer than two characters follow. A byte 0 ends the
// text that callers see. The null string for null.
KORBASE_API String_t UrlDecode(char const* text);

#endif
