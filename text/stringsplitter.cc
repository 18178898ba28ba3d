#include "text/stringsplitter.h"

#include <cstring>

StringSplitter::StringSplitter(char const* text, char const* separators, char const* trim)
    : separators(separators), trim(trim), start(nullptr), end(nullptr), step(0) {
    Bind(String_t(text));
}

void StringSplitter::Bind(String_t const& new_text) {
    text = new_text;
    // A string's buffer comes from new char[]: it may be written to.
    start = const_cast<char*>(text.Get());
    end = start + text.Len();
    step = 0;
    Next();
}

void StringSplitter::Next() {
    if (!start) return;
    start += step;
    step = 0;
    if (start >= end) return;

    bool const trimming = !trim.IsEmpty();
    if (trimming) start += std::strspn(start, trim);
    if (start >= end) return;

    std::size_t length = std::strcspn(start, separators.IsNull() ? "" : separators.Get());
    step = static_cast<unsigned>(length) + 1;
    // Kept: the first character of a piece is never trimmed at its end.
    while (trimming && length > 1 && std::strchr(trim, start[length - 1])) --length;
    start[length] = '\0';
}
