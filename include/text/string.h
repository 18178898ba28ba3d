// String_t: the text value of the library; one pointer to a record that its copies share.
//
// Copying and returning allocate nothing. A change detaches from the copies first, except where a
// member says otherwise. The null string (no text) and "" are different values. There is no stored
// length and no spare room: repeated appending is quadratic, build long texts in a TVarr<char>.
// The share count is a plain integer: a string and its copies belong to one thread at a time;
// unrelated strings may be used on any threads.
#ifndef KORBASE_TEXT_STRING_H
#define KORBASE_TEXT_STRING_H

#include <korbase_api.h>
#include <text/str.h>

#include <cstddef>
#include <cstring>
#include <functional>
#include <iosfwd>
#include <string_view>
#include <utility>

class KORBASE_API String_t {
public:
    // What copies share. Records of exactly this size come from a pool of their own.
    struct KORBASE_API Srep {
        explicit Srep(char* text) noexcept : text(text), count(1) {}
        static void* operator new(std::size_t size);
        static void operator delete(void* record, std::size_t size);

        char* text;      // owned, from new[], ends with a NUL; or null
        unsigned count;  // strings that share the record
    };

    // The null string.
    String_t() noexcept : rep(nullptr) {}
    // A copy of `s`, or the null string for null.
    String_t(char const* s);
    // The first `n` characters of `s`; what is missing in a shorter `s` is NULs in the buffer. The
    // null string when `s` is null or `n` is 0.
    String_t(char const* s, unsigned n);
    // "" in a buffer for `n` characters. The literal 0 could be a null pointer too: write 0u.
    explicit String_t(unsigned n);
    // A copy of `s`: the null string only when its pointer is null.
    explicit String_t(std::string_view s);

    String_t(String_t const& other) : rep(other.Share()) {}
    String_t& operator=(String_t const& other) {
        String_t copy(other);
        std::swap(rep, copy.rep);
        return *this;
    }
    // A moved-from string is the null string.
    String_t(String_t&& other) noexcept : rep(std::exchange(other.rep, nullptr)) {}
    String_t& operator=(String_t&& other) noexcept {
        Srep* const taken = std::exchange(other.rep, nullptr);
        Release();
        rep = taken;
        return *this;
    }
    ~String_t() { Release(); }

    // Becomes a copy of `s`, or the null string for null.
    String_t& operator=(char const* s);
    // The same from a view, which may be a part of this text: the null string only when its pointer
    // is null. Allocates nothing if the old text is not shared and no shorter.
    String_t& Assign(std::string_view s);
    // Puts `s` behind or in front of the text; null changes nothing.
    String_t& operator+=(char const* s);
    String_t& Prepend(char const* s);

    // Replaces the text by "" with room for `n` characters and returns that buffer for the caller
    // to fill; the string keeps owning it. Kept: every copy sees the new text.
    char* Reserve(unsigned n);

    // A new[] copy of the text that the caller deletes, or nullptr for the null string.
    char* Save() const;

    // The text, valid until the string changes; nullptr for the null string.
    operator char const*() const { return Get(); }
    char const* Get() const { return rep ? rep->text : nullptr; }
    // The text as a view, also by std::string_view(s); one with a null pointer for the null string.
    std::string_view View() const { return Get() ? std::string_view(Get()) : std::string_view(); }
    explicit operator std::string_view() const { return View(); }
    // Characters before the terminator, counted anew by each call.
    unsigned Len() const { return Get() ? static_cast<unsigned>(std::strlen(Get())) : 0; }
    bool IsNull() const { return !Get(); }
    bool IsEmpty() const { return !Get() || !*Get(); }

    // Equal texts, or both null: null and "" differ.
    bool operator==(char const* s) const { return str_cmp(Get(), s) == 0; }
    bool operator!=(char const* s) const { return !(*this == s); }

    // Characters `from` to `to`, counted from 0, both included; a `to` past the end is cut there.
    // The null string, never "", when this is null or nothing is left to copy (to + 1 == from).
    // Requires from <= Len() and from <= to + 1.
    String_t SubStr(unsigned from, unsigned to) const;

    // The text without white space (isspace) at both ends, at the left, at the right; the null
    // string when nothing is left. Kept: TrimLeft never drops the last character.
    String_t Trim() const;
    String_t TrimLeft() const;
    String_t TrimRight() const;

    // A copy with each letter converted as the current locale has it.
    String_t Toupper() const;
    String_t Tolower() const;

    // A copy with each `from`, or each character that occurs in `set`, replaced by `to`.
    String_t Subst(char from, char to) const;
    String_t Subst(char const* set, char to) const;

    // Reads up to the text `delim`, which is consumed and not kept, or to the end of input if there
    // is none; a null or empty `delim` reads everything. The end of input behind at least one
    // character is a success and clears the state; behind none, `target` becomes the null string
    // and the stream has failed.
    static std::istream& Getline(std::istream& in, String_t& target, char const* delim);

protected:
    // The text for a derived class to rewrite in place, this string's alone: it leaves its copies
    // first. nullptr for the null string.
    char* Own() {
        if (rep && rep->count > 1) *this = rep->text;
        return rep ? rep->text : nullptr;
    }

private:
    Srep* Share() const;
    void Release() noexcept {
        if (rep && --rep->count == 0) Destroy(rep);
    }
    static void Destroy(Srep* record) noexcept;
    void Install(char* text);
    static String_t Copy(char const* s, std::size_t length);

    // Null stands for the null string until a copy or a buffer is asked for; then the copies need
    // a record to share, and the source gets it too.
    mutable Srep* rep;
};

inline bool operator==(String_t const& a, String_t const& b) { return a == b.Get(); }
inline bool operator!=(String_t const& a, String_t const& b) { return a != b.Get(); }
inline bool operator==(char const* a, String_t const& b) { return b == a; }
inline bool operator!=(char const* a, String_t const& b) { return b != a; }

// The order of str_cmp: null before every text, then by unsigned bytes.
inline bool operator<(String_t const& a, String_t const& b) { return str_cmp(a, b) < 0; }
inline bool operator<(String_t const& a, char const* b) { return str_cmp(a, b) < 0; }
inline bool operator<(char const* a, String_t const& b) { return str_cmp(a, b) < 0; }
inline bool operator<=(String_t const& a, String_t const& b) { return str_cmp(a, b) <= 0; }
inline bool operator<=(String_t const& a, char const* b) { return str_cmp(a, b) <= 0; }
inline bool operator<=(char const* a, String_t const& b) { return str_cmp(a, b) <= 0; }
inline bool operator>(String_t const& a, String_t const& b) { return str_cmp(a, b) > 0; }
inline bool operator>(String_t const& a, char const* b) { return str_cmp(a, b) > 0; }
inline bool operator>(char const* a, String_t const& b) { return str_cmp(a, b) > 0; }
inline bool operator>=(String_t const& a, String_t const& b) { return str_cmp(a, b) >= 0; }
inline bool operator>=(String_t const& a, char const* b) { return str_cmp(a, b) >= 0; }
inline bool operator>=(char const* a, String_t const& b) { return str_cmp(a, b) >= 0; }

// A new text of both; null counts as nothing, two nulls give the null string.
KORBASE_API String_t operator+(String_t const& a, String_t const& b);
KORBASE_API String_t operator+(String_t const& a, char const* b);
KORBASE_API String_t operator+(char const* a, String_t const& b);

// Reads one word: skips white space, then takes everything up to the next white space. The word may
// end with the input, which clears the state. Without a word the stream has failed, `target` is
// unchanged.
KORBASE_API std::istream& operator>>(std::istream& in, String_t& target);
// Writes the text, the null string as nothing.
KORBASE_API std::ostream& operator<<(std::ostream& out, String_t const& s);

// Equal strings have equal hashes: for std::unordered_map and its kin.
template <>
struct std::hash<String_t> {
    std::size_t operator()(String_t const& s) const noexcept {
        return std::hash<std::string_view>()(s.View());
    }
};

#endif
