// StringSplitter: goes through the pieces between single separators, trimmed if wanted.
#ifndef KORBASE_TEXT_STRINGSPLITTER_H
#define KORBASE_TEXT_STRINGSPLITTER_H

#include <korbase_api.h>
#include <text/string.h>

#include <utility>

// Adjacent separators have an empty piece between them, and a leading one has an empty piece before
// it. Kept: a trailing separator has none behind it: "a," is only "a", and "" has no piece at all.
//
// Pieces are terminated in place. Copies of a splitter share the text and go on from the same
// place: they belong to one thread at a time. Kept: where one of them has cut, a piece of the
// others ends, too, so that "b ,c" trimmed by one has an empty piece before "c" for the others.
class KORBASE_API StringSplitter {
public:
    // Takes copies and goes to the first piece. A null text has no pieces, a null set is empty.
    // Characters of `trim` are removed from both ends of each piece, but (kept) where nothing else
    // is left before a separator, there is an empty piece, and where nothing else is left at the
    // end of the text, there is none.
    StringSplitter(char const* text, char const* separators, char const* trim = nullptr);
    StringSplitter(StringSplitter const& other) = default;
    StringSplitter& operator=(StringSplitter const& other) = default;
    // A moved-from splitter is exhausted.
    StringSplitter(StringSplitter&& other) noexcept
        : text(std::move(other.text)),
          separators(std::move(other.separators)),
          trim(std::move(other.trim)),
          start(std::exchange(other.start, nullptr)),
          end(std::exchange(other.end, nullptr)),
          step(std::exchange(other.step, 0)) {}
    StringSplitter& operator=(StringSplitter&& other) noexcept {
        text = std::move(other.text);
        separators = std::move(other.separators);
        trim = std::move(other.trim);
        start = std::exchange(other.start, nullptr);
        end = std::exchange(other.end, nullptr);
        step = std::exchange(other.step, 0);
        return *this;
    }
    ~StringSplitter() = default;

    // Goes to the first piece of another text. Kept: its record is shared, so that the caller's
    // string is cut, too; it is not to be given another buffer (Reserve) meanwhile.
    void Bind(String_t const& text);

    // Goes to the next piece; nothing when exhausted.
    void Next();

    // The current piece, valid while the text is; null when exhausted.
    char const* Get() const { return step ? start : nullptr; }
    // Whether there is no current piece.
    bool Done() const { return step == 0; }

private:
    String_t text, separators, trim;
    char* start;    // of the current piece
    char* end;      // of the text
    unsigned step;  // from this piece to the next one; 0 when exhausted
};

#endif
