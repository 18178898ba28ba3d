#include "text/string.h"

#include <algorithm>
#include <cctype>
#include <cstdint>
#include <istream>
#include <limits>
#include <memory>
#include <new>
#include <ostream>
#include <utility>

#include "containers/pool_cache.h"
#include "generic/tvarr"

namespace {

constexpr unsigned kCollectRoom = 1024;

Pool records;

// A buffer for `length` characters and a terminator. Lengths end at 32 bits on both targets.
std::unique_ptr<char[]> NewText(std::uint64_t length) {
    if (length >= std::numeric_limits<std::uint32_t>::max()) throw std::bad_alloc();
    return std::unique_ptr<char[]>(new char[static_cast<std::size_t>(length) + 1]);
}

std::unique_ptr<char[]> CopyText(char const* s, std::size_t length) {
    auto text = NewText(length);
    std::memcpy(text.get(), s, length);
    text[length] = '\0';
    return text;
}

// `a` and `b`, of which not both are null, in one new text.
std::unique_ptr<char[]> JoinText(char const* a, char const* b) {
    std::size_t const front = a ? std::strlen(a) : 0;
    std::size_t const back = b ? std::strlen(b) : 0;
    auto text = NewText(std::uint64_t{front} + back);
    if (front) std::memcpy(text.get(), a, front);
    if (back) std::memcpy(text.get() + front, b, back);
    text[front + back] = '\0';
    return text;
}

bool IsSpace(char c) { return std::isspace(static_cast<unsigned char>(c)) != 0; }

// Inline, unlike the exported operators, which call them.
void* TakeRecord(std::size_t size = sizeof(String_t::Srep)) {
    return korbase_detail::PoolAccess::New<String_t::Srep>(records, size);
}

void GiveRecord(void* record, std::size_t size = sizeof(String_t::Srep)) {
    korbase_detail::PoolAccess::Delete<String_t::Srep>(records, record, size);
}

// A record with `text`, or null, for one string. The text is released once there is a record.
String_t::Srep* NewRecord(std::unique_ptr<char[]> text) {
    return ::new (TakeRecord()) String_t::Srep(text.release());
}

// Ends a reading without a delimiter: what was collected is a success that clears the state; if
// there is nothing, the failure stays.
std::istream& Deliver(std::istream& in, String_t& target, TVarr<char>& collected) {
    if (collected.Len() == 0) {
        target = nullptr;
        return in;
    }
    collected.App('\0');
    target = collected.Get();
    in.clear();
    return in;
}

// A copy of `s` in which each character went through `change`.
template <class Change>
String_t Changed(String_t const& s, Change const& change) {
    if (s.IsNull()) return String_t();
    String_t result;
    std::size_t const length = std::strlen(s);
    char* const text = result.Reserve(static_cast<unsigned>(length));
    std::transform(s.Get(), s.Get() + length, text, change);
    text[length] = '\0';
    return result;
}

String_t Joined(char const* a, char const* b) {
    String_t result(a);
    result += b;
    return result;
}

}  // namespace

void* String_t::Srep::operator new(std::size_t size) { return TakeRecord(size); }

void String_t::Srep::operator delete(void* record, std::size_t size) { GiveRecord(record, size); }

String_t::String_t(char const* s) : rep(nullptr) {
    if (s) rep = NewRecord(CopyText(s, std::strlen(s)));
}

String_t::String_t(char const* s, unsigned n) : rep(nullptr) {
    if (!s || n == 0) return;
    auto text = NewText(n);
    std::size_t const given = strnlen(s, n);
    std::memcpy(text.get(), s, given);
    std::memset(text.get() + given, 0, n - given + 1);
    rep = NewRecord(std::move(text));
}

String_t::String_t(unsigned n) : rep(nullptr) { Reserve(n); }

String_t::String_t(std::string_view s) : rep(nullptr) {
    if (s.data()) rep = NewRecord(CopyText(s.data(), s.size()));
}

String_t& String_t::operator=(char const* s) {
    if (s)
        Install(CopyText(s, std::strlen(s)).release());
    else if (rep)
        Install(nullptr);
    return *this;
}

String_t& String_t::Assign(std::string_view s) {
    // A text of this string alone has the room if it is no shorter. `s` may be a part of it.
    bool const alone = rep && rep->count == 1 && rep->text;
    if (!alone || !s.data() || strnlen(rep->text, s.size()) < s.size()) return *this = String_t(s);
    std::memmove(rep->text, s.data(), s.size());
    rep->text[s.size()] = '\0';
    return *this;
}

String_t& String_t::operator+=(char const* s) {
    if (s) Install(JoinText(Get(), s).release());
    return *this;
}

String_t& String_t::Prepend(char const* s) {
    if (s) Install(JoinText(s, Get()).release());
    return *this;
}

char* String_t::Reserve(unsigned n) {
    auto text = NewText(n);
    text[0] = '\0';
    if (!rep) rep = NewRecord(nullptr);
    delete[] rep->text;
    return rep->text = text.release();
}

char* String_t::Save() const {
    return IsNull() ? nullptr : CopyText(Get(), std::strlen(Get())).release();
}

String_t String_t::SubStr(unsigned from, unsigned to) const {
    // Kept: the count is a wrapping difference read as signed: a `to` of UINT_MAX copies nothing.
    auto const wanted = static_cast<std::int32_t>(to + 1 - from);
    if (IsNull() || wanted <= 0) return String_t();
    // Looks no further than the last character wanted.
    std::size_t const seen = strnlen(Get(), std::size_t{from} + static_cast<unsigned>(wanted));
    return seen > from ? Copy(Get() + from, seen - from) : String_t();
}

String_t String_t::Trim() const {
    if (IsEmpty()) return String_t();
    char const* start = Get();
    char const* last = start + std::strlen(start) - 1;
    while (start < last && IsSpace(*start)) ++start;
    while (last > start && IsSpace(*last)) --last;
    return IsSpace(*last) ? String_t() : Copy(start, static_cast<std::size_t>(last - start) + 1);
}

String_t String_t::TrimLeft() const {
    if (IsEmpty()) return String_t();
    char const* start = Get();
    char const* const last = start + std::strlen(start) - 1;
    while (start < last && IsSpace(*start)) ++start;
    return Copy(start, static_cast<std::size_t>(last - start) + 1);
}

String_t String_t::TrimRight() const {
    if (IsNull()) return String_t();
    std::size_t length = std::strlen(Get());
    while (length > 0 && IsSpace(Get()[length - 1])) --length;
    return length > 0 ? Copy(Get(), length) : String_t();
}

String_t String_t::Toupper() const {
    return Changed(*this, [](char c) {
        return static_cast<char>(std::toupper(static_cast<unsigned char>(c)));
    });
}

String_t String_t::Tolower() const {
    return Changed(*this, [](char c) {
        return static_cast<char>(std::tolower(static_cast<unsigned char>(c)));
    });
}

String_t String_t::Subst(char from, char to) const {
    return Changed(*this, [=](char c) { return c == from ? to : c; });
}

String_t String_t::Subst(char const* set, char to) const {
    return Changed(*this, [=](char c) { return set && std::strchr(set, c) ? to : c; });
}

std::istream& String_t::Getline(std::istream& in, String_t& target, char const* delim) {
    unsigned const n = delim ? static_cast<unsigned>(std::strlen(delim)) : 0;
    TVarr<char> collected(kCollectRoom, VARR_DOUBLE);
    for (char c; in.get(c);) {
        collected.App(c);
        unsigned const length = collected.Len();
        if (n == 0 || length < n || std::memcmp(collected.end() - n, delim, n) != 0) continue;
        *collected.Adjust(length - n) = '\0';
        target = collected.Get();
        return in;
    }
    return Deliver(in, target, collected);
}

// One more string for the record.
String_t::Srep* String_t::Share() const {
    if (!rep) rep = NewRecord(nullptr);
    ++rep->count;
    return rep;
}

void String_t::Destroy(Srep* record) noexcept {
    delete[] record->text;
    GiveRecord(record);
}

// Makes `text`, from new[] or null, the text of this string alone.
void String_t::Install(char* text) {
    std::unique_ptr<char[]> owned(text);
    if (rep && rep->count < 2) {
        delete[] rep->text;
        rep->text = owned.release();
        return;
    }
    Srep* const fresh = NewRecord(std::move(owned));
    if (rep) --rep->count;
    rep = fresh;
}

String_t String_t::Copy(char const* s, std::size_t length) {
    String_t result;
    result.rep = NewRecord(CopyText(s, length));
    return result;
}

String_t operator+(String_t const& a, String_t const& b) { return Joined(a, b); }
String_t operator+(String_t const& a, char const* b) { return Joined(a, b); }
String_t operator+(char const* a, String_t const& b) { return Joined(a, b); }

std::istream& operator>>(std::istream& in, String_t& target) {
    char c = ' ';
    while (in.get(c) && IsSpace(c)) {
    }
    if (!in) return in;
    in.putback(c);
    TVarr<char> collected(kCollectRoom, VARR_DOUBLE);
    while (in.get(c)) {
        if (IsSpace(c)) {
            in.putback(c);
            break;
        }
        collected.App(c);
    }
    return Deliver(in, target, collected);
}

std::ostream& operator<<(std::ostream& out, String_t const& s) {
    if (!s.IsNull()) out << s.Get();
    return out;
}
