#include "net/strbinstream.h"

#include <algorithm>
#include <cerrno>
#include <cstdint>
#include <cstring>
#include <limits>
#include <new>

OStrBinStream::OStrBinStream(unsigned size)
    : mem(new char[size ? size : 1]), wp(mem), capacity(size ? size : 1), external(0) {}

OStrBinStream::OStrBinStream(void* mem, unsigned size)
    : mem(static_cast<char*>(mem)), wp(this->mem), capacity(size), external(1) {}

OStrBinStream::~OStrBinStream() {
    if (!external) delete[] mem;
}

int OStrBinStream::Flush() {
    if (!mem) {
        errno = EFAULT;
        SetBad();
        return -1;
    }
    if (Status() & kEof) {
        if (Exceptions() & kEof) throw SockIO::EndOfInput(Fd());
        return -1;
    }
    std::uint64_t const need = std::uint64_t{Len()} + static_cast<unsigned>(cur - base);
    if (!external && need > capacity) Grow(need);
    unsigned const count = static_cast<unsigned>(std::min<std::uint64_t>(need, capacity)) - Len();
    if (count == 0) {
        SetEof();
        return 0;
    }
    std::memcpy(wp, base, count);
    wp += count;
    PBump(-static_cast<int>(count));
    return static_cast<int>(count);
}

// Makes room for more than `need` bytes by doubling.
void OStrBinStream::Grow(std::uint64_t need) {
    std::uint64_t larger = capacity;
    do larger *= 2;
    while (larger <= need);
    if (larger > std::numeric_limits<std::uint32_t>::max()) throw std::bad_alloc();
    char* const fresh = new char[static_cast<std::size_t>(larger)];
    unsigned const used = Len();
    std::memcpy(fresh, mem, used);
    delete[] mem;
    mem = fresh;
    wp = fresh + used;
    capacity = static_cast<unsigned>(larger);
}

char* OStrBinStream::Str() {
    Flush();
    return mem;
}

namespace {

char const* Behind(char const* start, unsigned n) { return start ? start + n : start; }

}  // namespace

IStrBinStream::IStrBinStream(void const* p, unsigned n)
    : start(static_cast<char const*>(p)), rp(start), stop(Behind(start, n)) {}

IStrBinStream::IStrBinStream(ByteString const& bytes) : IStrBinStream(bytes.Get(), bytes.Len()) {}

// The content is complete, and its place final, after Str.
IStrBinStream::IStrBinStream(OStrBinStream& out)
    : start(out.Str()), rp(start), stop(Behind(start, out.Len())) {}

IStrBinStream::~IStrBinStream() = default;

int IStrBinStream::Fill() {
    if (Status() & kEof) {
        if (Exceptions() & kEof) throw SockIO::EndOfInput(Fd());
        return -1;
    }
    unsigned const count = static_cast<unsigned>(std::min<std::ptrdiff_t>(stop - rp, size));
    if (count == 0) {
        SetEof();
        return 0;
    }
    std::memcpy(base, rp, count);
    rp += count;
    cur = base;
    end = base + count;
    return static_cast<int>(count);
}
