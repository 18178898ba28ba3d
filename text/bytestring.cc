#include "text/bytestring.h"

#include <algorithm>
#include <cstdint>
#include <cstring>
#include <limits>
#include <memory>
#include <new>

#include "containers/pool_cache.h"

namespace {

Pool records;

// `length` bytes, null for 0. Lengths end at 32 bits on both targets.
std::unique_ptr<char[]> NewBytes(std::uint64_t length) {
    if (length == 0) return nullptr;
    if (length > std::numeric_limits<std::uint32_t>::max()) throw std::bad_alloc();
    return std::unique_ptr<char[]>(new char[static_cast<std::size_t>(length)]);
}

std::unique_ptr<char[]> CopyBytes(void const* p, unsigned n) {
    auto data = NewBytes(p ? n : 0);
    if (data) std::memcpy(data.get(), p, n);
    return data;
}

// The bytes of `old` with room for `front` and `back` more around them.
std::unique_ptr<char[]> Widened(ByteString const& old, unsigned front, unsigned back) {
    auto data = NewBytes(std::uint64_t{front} + old.Len() + back);
    if (old.Get()) std::memcpy(data.get() + front, old.Get(), old.Len());
    return data;
}

// A copy of `bytes` in which those before the first zero byte for which `wanted` holds are `to`.
template <class Wanted>
ByteString Replaced(ByteString const& bytes, Wanted const& wanted, char to) {
    ByteString copy(bytes.Get(), bytes.Len());
    if (!copy.Get()) return copy;
    void const* const zero = std::memchr(bytes.Get(), 0, bytes.Len());
    char const* const end = zero ? static_cast<char const*>(zero) : bytes.Get() + bytes.Len();
    char* const data = const_cast<char*>(copy.Get());
    std::replace_if(data, data + (end - bytes.Get()), wanted, to);
    return copy;
}

}  // namespace

void* ByteString::Srep::operator new(std::size_t size) {
    return korbase_detail::PoolAccess::New<Srep>(records, size);
}

void ByteString::Srep::operator delete(void* record, std::size_t size) {
    korbase_detail::PoolAccess::Delete<Srep>(records, record, size);
}

ByteString::ByteString(unsigned n) : rep(nullptr) {
    if (n > 0) Install(NewBytes(n).release(), n);
}

ByteString::ByteString(unsigned n, char c) : ByteString(n) { Erase(c); }

ByteString::ByteString(void const* p, unsigned n) : rep(nullptr) {
    if (p && n > 0) Install(CopyBytes(p, n).release(), n);
}

ByteString::ByteString(std::string_view bytes) : rep(nullptr) {
    auto data = NewBytes(bytes.size());
    if (!data) return;
    std::memcpy(data.get(), bytes.data(), bytes.size());
    Install(data.release(), static_cast<unsigned>(bytes.size()));
}

ByteString::ByteString(unsigned n, void const* p, unsigned m, char c) : ByteString(n) {
    if (n == 0) return;
    unsigned const copied = p ? std::min(m, n) : 0;
    if (copied > 0) std::memcpy(rep->data, p, copied);
    std::memset(rep->data + copied, c, n - copied);
}

ByteString& ByteString::Append(void const* p, unsigned n) {
    if (!p) return *this;
    auto data = Widened(*this, 0, n);
    if (n > 0) std::memcpy(data.get() + Len(), p, n);
    Install(data.release(), Len() + n);
    return *this;
}

ByteString& ByteString::Prepend(void const* p, unsigned n) {
    if (!p) return *this;
    auto data = Widened(*this, n, 0);
    if (n > 0) std::memcpy(data.get(), p, n);
    Install(data.release(), Len() + n);
    return *this;
}

ByteString& ByteString::Append(char c, unsigned n) {
    auto data = Widened(*this, 0, n);
    if (n > 0) std::memset(data.get() + Len(), c, n);
    Install(data.release(), Len() + n);
    return *this;
}

ByteString& ByteString::Prepend(char c, unsigned n) {
    auto data = Widened(*this, n, 0);
    if (n > 0) std::memset(data.get(), c, n);
    Install(data.release(), Len() + n);
    return *this;
}

void ByteString::Redefine(void* p, unsigned n) {
    Srep& record = Record();
    char* const data = static_cast<char*>(p);
    if (data != record.data) delete[] record.data;
    record.data = data;
    record.length = data ? n : 0;
}

char* ByteString::Reserve(unsigned n) {
    auto data = NewBytes(n);
    Redefine(data.get(), n);
    return data.release();
}

void ByteString::Erase(char c) {
    if (Get()) std::memset(rep->data, c, rep->length);
}

char* ByteString::Save() const { return CopyBytes(Get(), Len()).release(); }

ByteString ByteString::SubStr(unsigned from, unsigned to) const {
    if (!Get() || to < from || from > Len()) return ByteString();
    return ByteString(Get() + from, std::min(Len() - from, to - from + 1));
}

ByteString ByteString::Subst(char from, char to) const {
    return Replaced(
        *this, [=](char c) { return c == from; }, to);
}

ByteString ByteString::Subst(void const* set, unsigned n, char to) const {
    return Replaced(
        *this, [=](char c) { return set && std::memchr(set, c, n); }, to);
}

bool operator==(ByteString const& a, ByteString const& b) {
    if (!a.Get() || !b.Get()) return a.Get() == b.Get();
    return std::memcmp(a.Get(), b.Get(), std::min(a.Len(), b.Len())) == 0;
}

// One more byte string for the record.
ByteString::Srep* ByteString::Share() const {
    if (!rep) rep = new Srep(nullptr, 0);
    ++rep->count;
    return rep;
}

void ByteString::Destroy(Srep* record) noexcept {
    delete[] record->data;
    delete record;
}

ByteString::Srep& ByteString::Record() {
    if (!rep) rep = new Srep(nullptr, 0);
    return *rep;
}

// Makes `data`, from new[] or null, the bytes of this byte string alone.
void ByteString::Install(char* data, unsigned length) {
    std::unique_ptr<char[]> owned(data);
    if (rep && rep->count < 2) {
        delete[] rep->data;
        rep->data = owned.release();
        rep->length = length;
        return;
    }
    auto* const fresh = new Srep(owned.get(), length);
    owned.release();
    if (rep) --rep->count;
    rep = fresh;
}
