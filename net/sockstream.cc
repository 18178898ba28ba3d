// Buffers and waiting: whole pieces move by block copy; the byte that meets a full or an empty
// buffer goes through PutByte or GetByte, so that overriding classes see the same calls as if every
// byte did.
#include "net/sockstream.h"

#include <poll.h>
#include <unistd.h>

#include <algorithm>
#include <cerrno>
#include <chrono>
#include <cstdint>
#include <cstring>
#include <memory>
#include <string_view>
#include <utility>

#include "generic/tvarr"
#include "net/waiting.h"

namespace {

// Waits until `fd` is ready, at most `seconds` in all however often a signal interrupts. Returns
// what poll does: positive when ready, 0 after the time, negative for a failure, which having no
// descriptor is, too.
int Wait(int fd, short events, unsigned seconds) {
    if (fd < 0) {
        errno = EBADF;
        return -1;
    }
    using std::chrono::milliseconds;
    milliseconds const limit(std::int64_t{std::min(seconds, korbase_detail::kMostSeconds)} * 1000);
    auto const deadline = std::chrono::steady_clock::now() + limit;
    milliseconds left = limit;
    for (;;) {
        pollfd entry{fd, events, 0};
        int const ready = poll(&entry, 1, static_cast<int>(left.count()));
        if (ready >= 0 || errno != EINTR) return ready;
        left = std::chrono::ceil<milliseconds>(deadline - std::chrono::steady_clock::now());
        left = std::max(left, milliseconds(0));
    }
}

bool IsPassing(int error) { return error == EAGAIN || error == EINTR; }

unsigned Length(char const* text) { return text ? static_cast<unsigned>(std::strlen(text)) : 0; }

}  // namespace

// ---- SockStream

unsigned SockStream::exceptions = 0;

SockStream::SockStream(int fd) : status(0), mask(exceptions), timeout(60), fd(fd) {}

SockStream::~SockStream() = default;

void SockStream::Bind(int next) { fd = next; }

int SockStream::Unbind() { return std::exchange(fd, -1); }

void SockStream::SetEof() {
    status |= kEof;
    if (mask & kEof) throw SockIO::EndOfInput(fd);
}

void SockStream::SetFailed() {
    status |= kFailed;
    if (mask & kFailed) throw SockIO::ProtocolError(fd);
}

void SockStream::SetBad() {
    status |= kBad;
    if (mask & kBad) throw SockIO::IOError(errno, fd);
}

void SockStream::SetTimedout() {
    status |= kTimedOut;
    if (mask & kTimedOut) throw SockIO::TimedOut(fd);
}

unsigned SockStream::SetStatus(unsigned bits) {
    unsigned const old = status;
    if (bits & kEof) SetEof();
    if (bits & kFailed) SetFailed();
    if (bits & kBad) SetBad();
    if (bits & kTimedOut) SetTimedout();
    return old;
}

unsigned SockStream::Clear() { return std::exchange(status, 0); }

unsigned SockStream::Exceptions(unsigned bits) { return std::exchange(mask, bits); }

unsigned SockStream::Timeout(unsigned seconds) { return std::exchange(timeout, seconds); }

// ---- OSockStream

OSockStream::OSockStream(int fd)
    : SockStream(fd), OutputBuffer<char>(data, sizeof data), pcount(0) {
    if (fd != -1) SockStream::Bind(fd);
}

OSockStream::~OSockStream() {
    if (Fd() == -1 || !Good()) return;
    try {
        OSockStream::Flush();
    } catch (SockIO::BaseException const&) {
        // Nobody is left to be told.
    }
}

bool OSockStream::Put(char const* p, unsigned n) {
    while (n != 0) {
        if (cur == end) {
            int const result = PutByte(p);
            bool const stored = cur != end || result > 0;
            pcount += stored ? 1 : 0;
            ++p;
            --n;
            if (result < 0 || !Good()) return false;
            continue;
        }
        unsigned const count = std::min(n, static_cast<unsigned>(end - cur));
        std::memcpy(cur, p, count);
        cur += count;
        pcount += static_cast<int>(count);
        p += count;
        n -= count;
    }
    return true;
}

OSockStream& OSockStream::Write(char const* p, int n) {
    pcount = 0;
    if (n > 0 && Good()) Put(p, static_cast<unsigned>(n));
    return *this;
}

OSockStream& OSockStream::RevWrite(char const* p, int n) {
    pcount = 0;
    if (!Good()) return *this;
    char piece[64];
    while (n > 0) {
        int const count = std::min(n, static_cast<int>(sizeof piece));
        n -= count;
        std::reverse_copy(p + n, p + n + count, piece);
        if (!Put(piece, static_cast<unsigned>(count))) break;
    }
    return *this;
}

OSockStream& OSockStream::Writeln(char const* p, int n, char const* term) {
    Write(p, n);
    if (term && Good()) Put(term, Length(term));
    return *this;
}

OSockStream& OSockStream::Writeln(String_t const& s, char const* term) {
    return Writeln(s.Get(), static_cast<int>(s.Len()), term);
}

void OSockStream::Drop(std::ptrdiff_t n) {
    std::memmove(base, base + n, static_cast<std::size_t>(cur - base - n));
    cur -= n;
}

int OSockStream::Flush() {
    std::ptrdiff_t sent = 0;
    while (base + sent != cur) {
        int const ready = Wait(Fd(), POLLWRNORM, Timeout());
        if (ready == 0) {
            Drop(sent);
            SetTimedout();
            return static_cast<int>(sent);
        }
        ssize_t const count =
            ready < 0 ? -1 : write(Fd(), base + sent, static_cast<std::size_t>(cur - base - sent));
        if (count < 0 && (ready < 0 || !IsPassing(errno))) {
            Drop(sent);
            SetBad();
            return -1;
        }
        sent += std::max<ssize_t>(count, 0);
    }
    cur = base;
    return static_cast<int>(sent);
}

void OSockStream::PBump(int n) {
    std::ptrdiff_t const pending = cur - base;
    std::ptrdiff_t const by = std::clamp<std::ptrdiff_t>(n, -pending, end - cur);
    if (by < 0) {
        Drop(-by);
    } else {
        std::memmove(base + by, base, static_cast<std::size_t>(pending));
        std::memset(base, 0, static_cast<std::size_t>(by));
        cur += by;
    }
}

void OSockStream::Bind(int fd) {
    SockStream::Bind(fd);
    cur = base;
}

int OSockStream::Unbind() {
    if (Fd() != -1 && Good()) {
        try {
            Flush();
        } catch (SockIO::BaseException const&) {
            // The status tells.
        }
    }
    return SockStream::Unbind();
}

OSockStream& endm(OSockStream& out) {
    out.Flush();
    return out;
}

// ---- ISockStream

ISockStream::ISockStream(int fd, OSockStream* tie)
    : SockStream(fd), InputBuffer<char>(data, sizeof data), tie(tie), gcount(0) {
    if (fd != -1) SockStream::Bind(fd);
}

ISockStream::~ISockStream() = default;

template <class Sink>
bool ISockStream::Take(unsigned n, Sink const& sink) {
    while (n != 0) {
        if (cur == end) {
            char c;
            if (GetByte(&c) < 1) return false;
            sink(&c, 1u);
            --n;
            if (!Good()) return n == 0;
            continue;
        }
        unsigned const count = std::min(n, static_cast<unsigned>(end - cur));
        sink(cur, count);
        cur += count;
        n -= count;
    }
    return true;
}

bool ISockStream::TakeForward(char* p, unsigned n) {
    return Take(n, [this, p](char const* piece, unsigned count) {
        std::memcpy(p + gcount, piece, count);
        gcount += static_cast<int>(count);
    });
}

bool ISockStream::TakeReversed(char* p, unsigned n) {
    char* const behind = p + n;
    return Take(n, [this, behind](char const* piece, unsigned count) {
        gcount += static_cast<int>(count);
        std::reverse_copy(piece, piece + count, behind - gcount);
    });
}

ISockStream& ISockStream::Read(char* p, int n) {
    if (BeginRead() && n > 0) TakeForward(p, static_cast<unsigned>(n));
    return *this;
}

ISockStream& ISockStream::RevRead(char* p, int n) {
    if (BeginRead() && n > 0) TakeReversed(p, static_cast<unsigned>(n));
    return *this;
}

namespace {

// Whether the `length` bytes at `line` end with the `n` of `term`; never for n = 0.
bool EndsWith(char const* line, unsigned length, char const* term, unsigned n) {
    return n != 0 && length >= n && line[length - 1] == term[n - 1] &&
           std::memcmp(line + length - n, term, n) == 0;
}

}  // namespace

ISockStream& ISockStream::Readln(char* buf, int size, char const* term) {
    bool const good = BeginRead();
    if (size == 0) return *this;
    buf[0] = '\0';
    if (size < 2 || !good) return *this;

    unsigned const n = Length(term);
    unsigned length = 0;
    while (length < static_cast<unsigned>(size) - 1) {
        char c;
        buf[length] = '\0';  // for a refill that throws, too
        if (cur != end)
            c = *cur++;
        else if (GetByte(&c) < 1)
            return *this;
        buf[length++] = c;
        if (EndsWith(buf, length, term, n)) {
            buf[length - n] = '\0';
            return *this;
        }
        ++gcount;
    }
    buf[length] = '\0';
    Clear();
    return *this;
}

ISockStream& ISockStream::Readln(String_t& s, char const* term) {
    TVarr<char> line(1024, VARR_DOUBLE);
    unsigned const n = Length(term);
    BeginRead();
    while (Good()) {
        char c;
        if (cur != end)
            c = *cur++;
        else if (GetByte(&c) < 1)
            break;
        line.App(c);
        if (EndsWith(line.Get(), line.Len(), term, n)) {
            s = String_t(std::string_view(line.Get(), line.Len() - n));
            return *this;
        }
        ++gcount;
    }
    s = String_t(std::string_view(line.Get(), line.Len()));
    if (line.Len() != 0) Clear();
    return *this;
}

int ISockStream::Fill() {
    if (Status() & kEof) {
        if (Exceptions() & kEof) throw SockIO::EndOfInput(Fd());
        return -1;
    }
    if (cur != end) {
        errno = ESPIPE;
        SetBad();
        return -1;
    }
    int const ready = Wait(Fd(), POLLRDNORM, Timeout());
    if (ready <= 0) {
        SetStatus(ready == 0 ? kTimedOut : kBad);
        return 0;
    }
    ssize_t const count = read(Fd(), base, size);
    if (count > 0) {
        cur = base;
        end = base + count;
        return static_cast<int>(count);
    }
    if (count < 0 && IsPassing(errno)) return 0;
    SetStatus(count == 0 ? kEof : kBad);
    return count < 0 ? -1 : 0;
}

void ISockStream::GBump(int n) {
    std::ptrdiff_t const read = cur - base;
    std::ptrdiff_t const by =
        std::clamp<std::ptrdiff_t>(n, -read, static_cast<std::ptrdiff_t>(size) - (end - base));
    if (by < 0) {
        std::memmove(base, base - by, static_cast<std::size_t>(read + by));
    } else {
        std::memset(end, 0, static_cast<std::size_t>(by));
        std::memmove(base + by, base, static_cast<std::size_t>(read));
    }
    cur += by;
    end += by;
}

void ISockStream::Bind(int fd) {
    SockStream::Bind(fd);
    cur = end;
}

int ISockStream::Unbind() { return SockStream::Unbind(); }

// ---- IOSockStream

IOSockStream::IOSockStream(int fd) : SockStream(fd), ISockStream(fd, this), OSockStream(fd) {}

IOSockStream::~IOSockStream() = default;

void IOSockStream::Bind(int fd) {
    OSockStream::Bind(fd);
    ISockStream::Bind(fd);
}

int IOSockStream::Unbind() {
    int const fd = OSockStream::Unbind();
    ISockStream::Unbind();
    return fd;
}
