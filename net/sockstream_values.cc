// The encoding of texts, byte strings and lists; numbers are inline in the header.
#include "net/sockstream_values.h"

#include <algorithm>
#include <climits>
#include <string_view>

namespace {

constexpr std::uint32_t kMaxString = 8190;
constexpr std::uint32_t kMaxBytes = 32785;
constexpr unsigned kMaxLength = INT_MAX;  // as a length of Write, with a terminator
constexpr int kEndMark = -1;

}  // namespace

namespace korbase_detail {

OSockStream& Wire::Refuse(OSockStream& out) {
    out.pcount = 0;
    if (out.Good()) out.SetFailed();
    return out;
}

void Wire::PutText(OSockStream& out, char const* s) {
    char c;
    do {
        c = s ? *s++ : '\0';
        if (out.cur != out.end) {
            *out.cur++ = c;
            continue;
        }
        int const result = out.PutByte(&c);
        if (result < 0 || (result == 0 && out.cur == out.end)) return;
    } while (c != '\0');
}

OSockStream& Wire::PutString(OSockStream& out, char const* s, std::size_t length) {
    if (length >= kMaxLength) return Refuse(out);
    std::uint32_t const wire = Swapped(static_cast<std::uint32_t>(length));
    auto const room = static_cast<std::size_t>(out.end - out.cur);
    if (length == 0 || room <= length + sizeof wire || !out.Good()) {
        Put(out, static_cast<std::uint32_t>(length));
        return length ? out.Write(s, static_cast<int>(length + 1)) : out;
    }
    char* const to = out.cur;
    out.cur += sizeof wire + length + 1;
    out.pcount = static_cast<int>(length + 1);
    std::memcpy(to, &wire, sizeof wire);
    std::memcpy(to + sizeof wire, s, length + 1);
    return out;
}

void Wire::GetText(ISockStream& in, char* s) {
    if (in.tie) in.tie->Flush();
    char c;
    do {
        if (in.cur != in.end)
            c = *in.cur++;
        else if (in.GetByte(&c) < 1)
            return;
        *s++ = c;
    } while (c != '\0');
}

// The `length` bytes of a string and the one behind them. Fails at a 0 byte among the former, which
// is consumed, and when no more come.
bool Wire::TakeString(ISockStream& in, char* text, unsigned length) {
    unsigned taken = 0;
    while (taken <= length) {
        char c;
        if (in.cur == in.end) {
            if (in.GetByte(&c) < 1) return false;
            if (taken < length && c == '\0') return false;
            text[taken++] = c;
            continue;
        }
        unsigned const count = std::min(length + 1 - taken, static_cast<unsigned>(in.end - in.cur));
        std::size_t const text_bytes = std::min(count, length - taken);
        if (void* const zero = std::memchr(in.cur, '\0', text_bytes)) {
            in.cur = static_cast<char*>(zero) + 1;
            return false;
        }
        std::memcpy(text + taken, in.cur, count);
        in.cur += count;
        taken += count;
    }
    return true;
}

// Whether a string was delivered. Most are whole in the buffer.
bool Wire::GetString(ISockStream& in, String_t& s) {
    std::uint32_t length = 0;
    if (!Get(in, length)) return false;
    bool const whole = in.end - in.cur > static_cast<std::ptrdiff_t>(length);
    if (!whole || length == 0 || length > kMaxString || std::memchr(in.cur, '\0', length))
        return GetOddString(in, s, length);
    s.Assign(std::string_view(in.cur, length));
    in.cur += length + 1;
    return true;
}

// What follows the length of an empty, a cut or a wrong string.
bool Wire::GetOddString(ISockStream& in, String_t& s, unsigned length) {
    s.Assign("");
    if (length == 0) return true;
    char text[kMaxString + 1];
    if (length > kMaxString || !TakeString(in, text, length)) in.SetFailed();
    if (in.Good()) s.Assign(std::string_view(text, length));
    return in.Good();
}

void Wire::GetBytes(ISockStream& in, ByteString& bytes) {
    std::uint32_t length = 0;
    if (!Get(in, length)) return;
    bytes = ByteString();
    if (length > kMaxBytes) in.SetFailed();
    if (length == 0 || !in.Good()) return;
    char* const to = bytes.Reserve(length);
    if (in.end - in.cur < static_cast<std::ptrdiff_t>(length)) std::memset(to, 0, length);
    in.Read(to, static_cast<int>(length));
}

void Wire::GetList(ISockStream& in, TOList<String_t>& list) {
    list.Clear();
    String_t element;
    while (GetString(in, element)) list.Append(element);
    in.status &= ~SockStream::kFailed;
}

}  // namespace korbase_detail

using korbase_detail::Wire;

OSockStream& operator<<(OSockStream& out, char const* s) {
    Wire::PutText(out, s);
    return out;
}

OSockStream& operator<<(OSockStream& out, String_t const& s) {
    char const* const text = s.Get();
    return Wire::PutString(out, text, text ? std::strlen(text) : 0);
}

OSockStream& operator<<(OSockStream& out, ByteString const& bytes) {
    unsigned const length = bytes.Len();
    if (length >= kMaxLength) return Wire::Refuse(out);
    Wire::Put(out, length);
    return length ? out.Write(bytes.Get(), static_cast<int>(length)) : out;
}

OSockStream& operator<<(OSockStream& out, TOList<String_t> const& list) {
    for (String_t const& element : list) out << element;
    return out << kEndMark;
}

ISockStream& operator>>(ISockStream& in, char* s) {
    Wire::GetText(in, s);
    return in;
}

ISockStream& operator>>(ISockStream& in, String_t& s) {
    Wire::GetString(in, s);
    return in;
}

ISockStream& operator>>(ISockStream& in, ByteString& bytes) {
    Wire::GetBytes(in, bytes);
    return in;
}

ISockStream& operator>>(ISockStream& in, TOList<String_t>& list) {
    Wire::GetList(in, list);
    return in;
}
