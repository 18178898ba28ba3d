// OStrBinStream and IStrBinStream: the values of net/sockstream.h in memory instead of a socket.
//
//     OStrBinStream out(256);
//     out << 42 << String_t("layer") << endm;
//     IStrBinStream in(out);
//     in >> number >> text;
//
// The bytes are those that a socket stream would send. Between the operators and the memory stands
// the buffer of the socket streams; values reach the memory when it is full, by endm, Flush or
// Str. The descriptor is -1, also in exceptions. One thread at a time may use a stream.
#ifndef KORBASE_NET_STRBINSTREAM_H
#define KORBASE_NET_STRBINSTREAM_H

#include <korbase_api.h>
#include <net/sockstream.h>
#include <text/bytestring.h>

#include <cstdint>

class KORBASE_API OStrBinStream : public OSockStream {
public:
    // Owned memory of `size` bytes (1 for 0) that doubles as needed.
    explicit OStrBinStream(unsigned size);
    // The `size` bytes at `mem`, which stay the caller's.
    OStrBinStream(void* mem, unsigned size);
    // What is still in the buffer is lost.
    ~OStrBinStream() override;

    // Moves what is in the buffer to the memory, as far as fixed memory has room. Returns the
    // number of bytes; -1 without memory (bad bit) and at the end-of-input bit. Throws
    // std::bad_alloc when the memory would exceed 32 bits; nothing has changed then.
    // Kept: nothing to move, or no room for any of it, raises the end-of-input bit, after which
    // nothing can be written until Clear().
    int Flush() override;

    // Flush, then the memory: Len() bytes, valid until the next flush. Kept: as of Flush, Str of a
    // stream with an empty buffer raises the end-of-input bit.
    char* Str();
    // Bytes that have reached the memory: ask after Str.
    unsigned Len() const { return static_cast<unsigned>(wp - mem); }
    // Bytes of memory.
    unsigned Capacity() const { return capacity; }

private:
    void Grow(std::uint64_t need);

    char* mem;
    char* wp;           // mem to wp: the content
    unsigned capacity;  // bytes
    int external;       // 1: the memory is the caller's
};

// Reads memory that stays where it is and as it is; the stream neither copies nor owns it.
class KORBASE_API IStrBinStream : public ISockStream {
public:
    // The `n` bytes at `p`, none if that is null; the bytes of `bytes`; the content of `out` after
    // out.Str().
    IStrBinStream(void const* p, unsigned n);
    explicit IStrBinStream(ByteString const& bytes);
    explicit IStrBinStream(OStrBinStream& out);
    ~IStrBinStream() override;

    // Copies the next bytes into the buffer. Returns their number, 0 with the end-of-input bit
    // behind the last one, -1 if that bit was set before.
    int Fill() override;

private:
    char const* start;
    char const* rp;    // the next byte
    char const* stop;  // behind the last byte
};

#endif
