// ByteString: a buffer of bytes with a length; one pointer to a record that its copies share.
//
// Copying and returning allocate nothing. Append and Prepend detach from the copies first; Reserve,
// Redefine and Erase work on the shared bytes, so that every copy sees them. Bytes are not
// terminated. The share count is a plain integer: a byte string and its copies belong to one thread
// at a time; unrelated ones may be used on any threads. Lengths beyond 32 bits throw
// std::bad_alloc.
#ifndef KORBASE_TEXT_BYTESTRING_H
#define KORBASE_TEXT_BYTESTRING_H

#include <korbase_api.h>

#include <cstddef>
#include <functional>
#include <string_view>
#include <utility>

class KORBASE_API ByteString {
public:
    // What copies share. Records of exactly this size come from a pool of their own.
    struct KORBASE_API Srep {
        Srep(char* data, unsigned length) noexcept : data(data), length(length), count(1) {}
        static void* operator new(std::size_t size);
        static void operator delete(void* record, std::size_t size);

        char* data;       // owned, from new[]; null when there are no bytes
        unsigned length;  // bytes
        unsigned count;   // byte strings that share the record
    };

    // `n` bytes: not initialised, or each `c`. No bytes for 0.
    explicit ByteString(unsigned n = 0);
    ByteString(unsigned n, char c);
    // A copy of the `n` bytes at `p`; no bytes when `p` is null.
    ByteString(void const* p, unsigned n);
    explicit ByteString(std::string_view bytes);
    // `n` bytes: the first min(m, n) from `p` unless it is null, the rest `c`.
    ByteString(unsigned n, void const* p, unsigned m, char c);

    ByteString(ByteString const& other) : rep(other.Share()) {}
    ByteString& operator=(ByteString const& other) {
        ByteString copy(other);
        std::swap(rep, copy.rep);
        return *this;
    }
    // A moved-from byte string is empty.
    ByteString(ByteString&& other) noexcept : rep(std::exchange(other.rep, nullptr)) {}
    ByteString& operator=(ByteString&& other) noexcept {
        Srep* const taken = std::exchange(other.rep, nullptr);
        Release();
        rep = taken;
        return *this;
    }
    ~ByteString() { Release(); }

    // Puts `n` bytes behind or in front of the old ones: those at `p`, which may be bytes of this
    // one (a null `p` changes nothing), or `n` times `c`.
    ByteString& Append(void const* p, unsigned n);
    ByteString& Append(char c, unsigned n);
    ByteString& Prepend(void const* p, unsigned n);
    ByteString& Prepend(char c, unsigned n);

    // Releases the bytes and adopts the `n` at `p`, which comes from new char[]. Every copy sees
    // them.
    void Redefine(void* p, unsigned n);
    // Releases the bytes and returns `n` new, uninitialised ones, which the byte string owns. Every
    // copy sees them. Null for n = 0.
    char* Reserve(unsigned n);
    // Overwrites every byte by `c`, in every copy too.
    void Erase(char c);

    // A new[] copy of the bytes that the caller deletes; null when there are none.
    char* Save() const;

    // The bytes, valid until the byte string changes; null when there are none.
    char const* Get() const { return rep ? rep->data : nullptr; }
    unsigned Len() const { return rep ? rep->length : 0; }
    // The same as a view, also by std::string_view(b).
    std::string_view View() const noexcept {
        return rep && rep->data ? std::string_view(rep->data, rep->length) : std::string_view();
    }
    explicit operator std::string_view() const noexcept { return View(); }

    // Bytes `from` to `to`, counted from 0, both included, cut at the end; no bytes for to < from.
    // Kept: none either for the whole unsigned range, 0 to 0xFFFFFFFF, whose count wraps to 0.
    ByteString SubStr(unsigned from, unsigned to) const;

    // A copy with each `from`, or each byte that occurs among the `n` of `set`, replaced by `to`.
    // Kept: bytes behind the first zero byte are never replaced.
    ByteString Subst(char from, char to) const;
    ByteString Subst(void const* set, unsigned n, char to) const;

private:
    Srep* Share() const;
    void Release() noexcept {
        if (rep && --rep->count == 0) Destroy(rep);
    }
    static void Destroy(Srep* record) noexcept;
    Srep& Record();
    void Install(char* data, unsigned length);

    // Null stands for no bytes until a copy or a buffer is asked for.
    mutable Srep* rep;
};

// Both without bytes, or both with and equal over the shorter length.
// Kept: "ab" equals "abc", so this is not an equivalence.
KORBASE_API bool operator==(ByteString const& a, ByteString const& b);
inline bool operator!=(ByteString const& a, ByteString const& b) { return !(a == b); }

// The same bytes and the same number of them.
struct SameBytes {
    bool operator()(ByteString const& a, ByteString const& b) const noexcept {
        return a.View() == b.View();
    }
};

// Hashes all bytes. Since == tells no equivalence, hash containers need SameBytes beside it:
// std::unordered_set<ByteString, std::hash<ByteString>, SameBytes>.
template <>
struct std::hash<ByteString> {
    std::size_t operator()(ByteString const& b) const noexcept {
        return std::hash<std::string_view>()(b.View());
    }
};

#endif
