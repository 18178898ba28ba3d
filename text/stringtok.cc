#include "text/stringtok.h"

#include <cstring>

StringTok::StringTok(char const* s) : text(s), cursor(nullptr), sep('\0') {
    // A string's buffer comes from new char[]: it may be written to.
    if (!text.IsEmpty()) cursor = const_cast<char*>(text.Get());
}

char const* StringTok::operator()(char const* separators) {
    if (!cursor) return nullptr;
    if (!separators) separators = "";
    char* const piece = cursor + std::strspn(cursor, separators);
    cursor = nullptr;
    if (*piece == '\0') return nullptr;

    char* const end = piece + std::strcspn(piece, separators);
    sep = *end;
    *end = '\0';
    if (sep != '\0') cursor = end + 1;
    return piece;
}
