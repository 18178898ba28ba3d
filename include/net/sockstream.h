// Typed values over a connected socket: OSockStream writes them, ISockStream reads them,
// IOSockStream does both on one descriptor.
//
//     IOSockStream peer(fd);
//     peer << 42 << String_t("layer") << endm;
//     peer >> answer;
//     if (!peer.Good()) ...
//
// Each direction has a buffer of 8,192 bytes inside the object; nothing is allocated. Bytes leave
// when the buffer is full, by endm or Flush, and before an IOSockStream reads. Values are put big
// end first, without types or padding: both sides have to agree on their order (the operators
// below say how each type is sent).
//
// Errors are status bits that stay until Clear(); while one is set, reading and writing does
// nothing, but for the members that say otherwise. A bit that is also in the exception mask throws
// when it is raised (net/sockio_exceptions.h).
//
// Streams never open or close the descriptor, and it may be of any kind that poll, read and write
// take. Bytes are sent by write: if the other end is closed that raises SIGPIPE, which ends the
// process unless it is ignored (IgnoreSigPipe); then it is the bad bit with EPIPE. Since a blocking
// write waits until all is taken, only a non-blocking descriptor is sure to keep to the time-out.
// One thread at a time may use a stream.
#ifndef KORBASE_NET_SOCKSTREAM_H
#define KORBASE_NET_SOCKSTREAM_H

#include <korbase_api.h>
#include <net/buffer.h>
#include <net/sockio_exceptions.h>
#include <text/string.h>

#include <cstddef>

namespace korbase_detail {
struct Wire;
}

// Status, exception mask, time-out and descriptor: what the two directions of a stream share.
class KORBASE_API SockStream {
public:
    // Status bits.
    enum : unsigned {
        kEof = 1,       // the other end has closed, or a refill was asked for after that
        kFailed = 2,    // what came is not what the protocol allows
        kBad = 4,       // poll, read or write failed, or there is no descriptor
        kTimedOut = 8,  // the descriptor did not become ready in time
    };

    // The mask that new streams start with; 0 at first. Not synchronised.
    static unsigned exceptions;

    // Good, unbound or on `fd`, with a time-out of 60 seconds.
    SockStream() : SockStream(-1) {}
    explicit SockStream(int fd);
    SockStream(SockStream const&) = delete;
    SockStream& operator=(SockStream const&) = delete;

    // Uses `fd`, which stays the caller's. Unbind returns the descriptor, -1 if there is none.
    virtual void Bind(int fd);
    virtual int Unbind();
    virtual ~SockStream();

    // Raise a bit; if it is in the mask, throw SockIO::EndOfInput, ProtocolError, IOError (with
    // errno) or TimedOut.
    void SetEof();
    void SetFailed();
    void SetBad();
    void SetTimedout();
    // Raises the given bits in the order of their values. Returns the status of before.
    unsigned SetStatus(unsigned bits);
    // Resets the status. Returns the old one.
    unsigned Clear();

    unsigned Status() const { return status; }
    bool Good() const { return status == 0; }
    int Fd() const { return fd; }

    // The bits that throw when they are raised; setting returns the old mask.
    unsigned Exceptions() const { return mask; }
    unsigned Exceptions(unsigned bits);
    // Seconds that one wait for readiness may last, 0 for not at all; above 2147483 it is that.
    // Setting returns the old value.
    unsigned Timeout() const { return timeout; }
    unsigned Timeout(unsigned seconds);

private:
    friend struct korbase_detail::Wire;

    unsigned status;
    unsigned mask;
    unsigned timeout;
    int fd;
};

class KORBASE_API OSockStream : public OutputBuffer<char>, public virtual SockStream {
public:
    OSockStream() : OSockStream(-1) {}
    // For a derived class, too: it need not name the virtual base.
    explicit OSockStream(int fd);
    // Flushes as Unbind does.
    ~OSockStream() override;

    // Writes p[0] to p[n - 1], or the same bytes from the last to the first. Stops early when a
    // flush fails or raises a status bit. Nothing for n <= 0.
    OSockStream& Write(char const* p, int n);
    OSockStream& RevWrite(char const* p, int n);
    // Write, then the text `term` unless it is null. Of `s` what stands before the first NUL.
    OSockStream& Writeln(char const* p, int n, char const* term = "\n");
    OSockStream& Writeln(String_t const& s, char const* term = "\n");
    // Bytes that the last Write, RevWrite or Writeln, also by a value operator, put into the
    // buffer.
    int PCount() const { return pcount; }

    // Sends what is pending, whatever the status, waiting as often as needed, each time up to the
    // time-out. Returns the number of bytes sent, less than all after a time-out, or -1 with the
    // bad bit. What has been sent is no longer pending in either case.
    int Flush() override;

    // Moves the pending bytes and their end by `n`, as far as the buffer allows: a negative `n`
    // drops the first -n ones, a positive one puts n zero bytes in front.
    void PBump(int n);

    // Discards what is pending.
    void Bind(int fd) override;
    // Flushes first if there is a descriptor and the status is good; the exceptions of that are
    // swallowed.
    int Unbind() override;

private:
    friend struct korbase_detail::Wire;
    // Puts n bytes into the buffer and counts them. Whether nothing stopped it early.
    bool Put(char const* p, unsigned n);
    // Forgets the first `n` pending bytes.
    void Drop(std::ptrdiff_t n);

    char data[8192];
    int pcount;
};

// Ends a message: flushes through the virtual member. For `stream << endm`, too.
KORBASE_API OSockStream& endm(OSockStream& out);

class KORBASE_API ISockStream : public InputBuffer<char>, public virtual SockStream {
public:
    // `tie`, which may be null, is flushed before every read operation and has to outlive that.
    explicit ISockStream(OSockStream* tie = nullptr) : ISockStream(-1, tie) {}
    // For a derived class, too: it need not name the virtual base.
    explicit ISockStream(int fd, OSockStream* tie = nullptr);
    ~ISockStream() override;

    // Reads n bytes to p[0] to p[n - 1], or from the last place to the first. Stops early, with the
    // bytes so far stored, when a refill yields nothing or raises a status bit. Nothing for n < 1.
    // Kept: a read of an interrupted or would-block descriptor ends short without a status bit.
    ISockStream& Read(char* p, int n);
    ISockStream& RevRead(char* p, int n);

    // Reads a line up to `term`, which is consumed and not stored; with a null or empty one all
    // there is.
    // Into `buf`, at most size - 1 bytes and always a NUL, but for size 0. At the end of input the
    // bytes so far are stored and the status stays. Kept: a line that is cut by `size` clears the
    // status.
    ISockStream& Readln(char* buf, int size, char const* term = "\n");
    // Into `s`, of any length. The end of input behind at least one byte ends the last line and
    // clears the status; with none, `s` is "" and the status stays.
    ISockStream& Readln(String_t& s, char const* term = "\n");
    // Bytes that the last Read, RevRead or Readln, also by a value operator, delivered. Kept: the
    // last byte of a terminator does not count.
    int GCount() const { return gcount; }

    // Refills the empty buffer, waiting up to the time-out. Returns the number of bytes, 0 or -1
    // for none; unread bytes are the bad bit with ESPIPE.
    int Fill() override;

    // Moves the read position and the end of the data by `n`, and with them the bytes that were
    // read already, as far as the buffer allows. Kept: unread bytes stay where they are, so that
    // GBump(-n) reads the last n bytes again and loses the last n unread ones. Positive: skips n
    // bytes; behind the old end there are zero bytes.
    void GBump(int n);

    // Discards what is unread.
    void Bind(int fd) override;
    // Keeps what is unread.
    int Unbind() override;

private:
    friend struct korbase_detail::Wire;
    // What every read operation starts with; tells whether it may go on.
    bool BeginRead() {
        if (tie) tie->Flush();
        gcount = 0;
        return Good();
    }
    // Sends n bytes, piece by piece as they stand in the buffer, to sink(piece, count). Stops at a
    // refill that yields nothing or raises a status bit. Whether there were n.
    template <class Sink>
    bool Take(unsigned n, Sink const& sink);
    bool TakeForward(char* p, unsigned n);
    bool TakeReversed(char* p, unsigned n);

    char data[8192];
    OSockStream* tie;
    int gcount;
};

// Both directions of one descriptor; reading sends what is pending first.
class KORBASE_API IOSockStream : public ISockStream, public OSockStream {
public:
    IOSockStream() : IOSockStream(-1) {}
    explicit IOSockStream(int fd);
    ~IOSockStream() override;

    // As in OSockStream, then as in ISockStream.
    void Bind(int fd) override;
    int Unbind() override;
};

#include <net/sockstream_values.h>

#endif
