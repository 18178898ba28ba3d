// StringTok: cuts a text into the pieces between runs of separators.
#ifndef KORBASE_TEXT_STRINGTOK_H
#define KORBASE_TEXT_STRINGTOK_H

#include <korbase_api.h>
#include <text/string.h>

#include <utility>

// It works on a copy of the text of its own and puts terminators into it. Copies of a tokenizer
// share that text and go on from the same place: they belong to one thread at a time.
class KORBASE_API StringTok {
public:
    // A tokenizer for a copy of `text`; null and empty texts have no pieces.
    explicit StringTok(char const* text);
    StringTok(StringTok const& other) = default;
    StringTok& operator=(StringTok const& other) = default;
    // A moved-from tokenizer has no pieces.
    StringTok(StringTok&& other) noexcept
        : text(std::move(other.text)),
          cursor(std::exchange(other.cursor, nullptr)),
          sep(other.sep) {}
    StringTok& operator=(StringTok&& other) noexcept {
        text = std::move(other.text);
        cursor = std::exchange(other.cursor, nullptr);
        sep = other.sep;
        return *this;
    }
    ~StringTok() = default;

    // The next piece, never an empty one: what follows any separators up to the next separator or
    // the end. Null when there is none, and from then on. The piece lives as long as the tokenizer
    // or a copy of it. `separators` may differ from call to call; null is the empty set.
    char const* operator()(char const* separators);

    // The character that ended the last piece; '\0' for the end of the text and before any piece.
    char Sep() const { return sep; }

private:
    String_t text;
    char* cursor;  // into the text; null when exhausted
    char sep;
};

#endif
