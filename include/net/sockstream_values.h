// How the streams of net/sockstream.h send each type. Numbers go big end first, signed ones in
// two's complement, floats and doubles as IEEE 754:
//
//     char, unsigned char          1 byte
//     short, unsigned short        2 bytes
//     int, unsigned int, float     4 bytes
//     long, unsigned long          4 zero bytes, then the value in 4 bytes
//     long long and its unsigned, double   8 bytes
//     char const*                  the bytes and one 0 byte; null as ""
//     String_t                     the length as an int; unless it is 0 the bytes and one 0 byte
//     ByteString                   the length as an int, then the bytes
//     TOList<String_t>             each element, then the int -1
#ifndef KORBASE_NET_SOCKSTREAM_VALUES_H
#define KORBASE_NET_SOCKSTREAM_VALUES_H

#include <korbase_api.h>
#include <net/sockstream.h>
#include <text/bytestring.h>
#include <text/string.h>
#include <generic/tolist>

#include <cstddef>
#include <cstdint>
#include <cstring>

namespace korbase_detail {

static_assert(__BYTE_ORDER__ == __ORDER_LITTLE_ENDIAN__, "RevWrite and RevRead turn bytes round");

inline std::uint16_t Swapped(std::uint16_t bits) { return __builtin_bswap16(bits); }
inline std::uint32_t Swapped(std::uint32_t bits) { return __builtin_bswap32(bits); }
inline std::uint64_t Swapped(std::uint64_t bits) { return __builtin_bswap64(bits); }

template <std::size_t size>
struct BitsOfSize;
template <>
struct BitsOfSize<2> {
    using Type = std::uint16_t;
};
template <>
struct BitsOfSize<4> {
    using Type = std::uint32_t;
};
template <>
struct BitsOfSize<8> {
    using Type = std::uint64_t;
};

// Numbers in the buffers: a value that fits is swapped and copied at once, any other one goes the
// way of RevWrite or RevRead.
struct Wire {
    template <class Number>
    static OSockStream& Put(OSockStream& out, Number value) {
        typename BitsOfSize<sizeof value>::Type bits;
        std::memcpy(&bits, &value, sizeof bits);
        if (!out.Good() || out.end - out.cur < static_cast<std::ptrdiff_t>(sizeof bits))
            return out.RevWrite(reinterpret_cast<char const*>(&value), sizeof value);
        bits = Swapped(bits);
        std::memcpy(out.cur, &bits, sizeof bits);
        out.cur += sizeof bits;
        out.pcount = sizeof bits;
        return out;
    }
    // Without a look at the status, and not counted.
    template <class Char>
    static OSockStream& PutChar(OSockStream& out, Char value) {
        char const c = static_cast<char>(value);
        if (out.cur != out.end)
            *out.cur++ = c;
        else
            out.PutByte(&c);
        return out;
    }
    // Half: the 32-bit type that a long travels as.
    template <class Half, class Long>
    static OSockStream& PutLong(OSockStream& out, Long value) {
        auto const half = static_cast<Half>(value);
        if (static_cast<Long>(half) != value) return Refuse(out);
        return Put(out, std::uint64_t{static_cast<std::uint32_t>(half)});
    }

    // Whether the value is complete and the status good; if not, its first bytes may be stored.
    template <class Number>
    static bool Get(ISockStream& in, Number& value) {
        if (!in.BeginRead()) return false;
        typename BitsOfSize<sizeof value>::Type bits;
        if (in.end - in.cur < static_cast<std::ptrdiff_t>(sizeof bits))
            return in.TakeReversed(reinterpret_cast<char*>(&value), sizeof value) && in.Good();
        std::memcpy(&bits, in.cur, sizeof bits);
        bits = Swapped(bits);
        std::memcpy(&value, &bits, sizeof bits);
        in.cur += sizeof bits;
        in.gcount = sizeof bits;
        return true;
    }
    template <class Char>
    static void GetChar(ISockStream& in, Char& value) {
        if (!in.BeginRead()) return;
        if (in.cur == in.end) {
            in.TakeForward(reinterpret_cast<char*>(&value), 1);
            return;
        }
        value = static_cast<Char>(*in.cur++);
        in.gcount = 1;
    }
    // Kept: a short that is cut short by a would-block read is swapped as it stands.
    template <class Short>
    static void GetShort(ISockStream& in, Short& value) {
        if (in.end - in.cur >= static_cast<std::ptrdiff_t>(sizeof value)) {
            Get(in, value);
            return;
        }
        in.Read(reinterpret_cast<char*>(&value), sizeof value);
        if (in.Good()) value = static_cast<Short>(Swapped(static_cast<std::uint16_t>(value)));
    }
    template <class Half, class Long>
    static void GetLong(ISockStream& in, Long& value) {
        std::uint64_t bits = 0;
        if (!Get(in, bits)) return;
        value = static_cast<Long>(static_cast<Half>(static_cast<std::uint32_t>(bits)));
        if (bits >> 32) in.SetStatus(SockStream::kFailed);
    }

    KORBASE_API static OSockStream& Refuse(OSockStream& out);
    // For the library itself.
    static void PutText(OSockStream& out, char const* s);
    static OSockStream& PutString(OSockStream& out, char const* s, std::size_t length);
    static void GetText(ISockStream& in, char* s);
    static bool TakeString(ISockStream& in, char* text, unsigned length);
    static bool GetString(ISockStream& in, String_t& s);
    static bool GetOddString(ISockStream& in, String_t& s, unsigned length);
    static void GetBytes(ISockStream& in, ByteString& bytes);
    static void GetList(ISockStream& in, TOList<String_t>& list);
};

}  // namespace korbase_detail

// The operators for single characters and char const* write whatever the status.
inline OSockStream& operator<<(OSockStream& out, char value) {
    return korbase_detail::Wire::PutChar(out, value);
}
inline OSockStream& operator<<(OSockStream& out, unsigned char value) {
    return korbase_detail::Wire::PutChar(out, value);
}
inline OSockStream& operator<<(OSockStream& out, short value) {
    return korbase_detail::Wire::Put(out, value);
}
inline OSockStream& operator<<(OSockStream& out, unsigned short value) {
    return korbase_detail::Wire::Put(out, value);
}
inline OSockStream& operator<<(OSockStream& out, int value) {
    return korbase_detail::Wire::Put(out, value);
}
inline OSockStream& operator<<(OSockStream& out, unsigned int value) {
    return korbase_detail::Wire::Put(out, value);
}
inline OSockStream& operator<<(OSockStream& out, long long value) {
    return korbase_detail::Wire::Put(out, value);
}
inline OSockStream& operator<<(OSockStream& out, unsigned long long value) {
    return korbase_detail::Wire::Put(out, value);
}
inline OSockStream& operator<<(OSockStream& out, float value) {
    return korbase_detail::Wire::Put(out, value);
}
inline OSockStream& operator<<(OSockStream& out, double value) {
    return korbase_detail::Wire::Put(out, value);
}
// A value that does not fit 32 bits is not sent; it raises the failed bit.
inline OSockStream& operator<<(OSockStream& out, long value) {
    return korbase_detail::Wire::PutLong<std::int32_t>(out, value);
}
inline OSockStream& operator<<(OSockStream& out, unsigned long value) {
    return korbase_detail::Wire::PutLong<std::uint32_t>(out, value);
}

// Stops at the first byte that finds no room.
KORBASE_API OSockStream& operator<<(OSockStream& out, char const* s);
// The text up to its first NUL. ISockStream takes no more than 8,190 bytes of a string and 32,785
// of a byte string. Lengths of 2^31 - 1 and more are not sent; they raise the failed bit.
KORBASE_API OSockStream& operator<<(OSockStream& out, String_t const& s);
KORBASE_API OSockStream& operator<<(OSockStream& out, ByteString const& bytes);
KORBASE_API OSockStream& operator<<(OSockStream& out, TOList<String_t> const& list);
// stream << endm
inline OSockStream& operator<<(OSockStream& out, OSockStream& (*manipulator)(OSockStream&)) {
    return manipulator(out);
}

// A number whose bytes do not all come keeps the rest of its old bytes.
inline ISockStream& operator>>(ISockStream& in, char& value) {
    korbase_detail::Wire::GetChar(in, value);
    return in;
}
inline ISockStream& operator>>(ISockStream& in, unsigned char& value) {
    korbase_detail::Wire::GetChar(in, value);
    return in;
}
inline ISockStream& operator>>(ISockStream& in, short& value) {
    korbase_detail::Wire::GetShort(in, value);
    return in;
}
inline ISockStream& operator>>(ISockStream& in, unsigned short& value) {
    korbase_detail::Wire::GetShort(in, value);
    return in;
}
inline ISockStream& operator>>(ISockStream& in, int& value) {
    korbase_detail::Wire::Get(in, value);
    return in;
}
inline ISockStream& operator>>(ISockStream& in, unsigned int& value) {
    korbase_detail::Wire::Get(in, value);
    return in;
}
inline ISockStream& operator>>(ISockStream& in, long long& value) {
    korbase_detail::Wire::Get(in, value);
    return in;
}
inline ISockStream& operator>>(ISockStream& in, unsigned long long& value) {
    korbase_detail::Wire::Get(in, value);
    return in;
}
inline ISockStream& operator>>(ISockStream& in, float& value) {
    korbase_detail::Wire::Get(in, value);
    return in;
}
inline ISockStream& operator>>(ISockStream& in, double& value) {
    korbase_detail::Wire::Get(in, value);
    return in;
}
// The low 32 bits, sign-extended into a long, zero-extended into an unsigned long; unchanged if the
// bytes do not all come. Anything in the high 32 raises the failed bit.
inline ISockStream& operator>>(ISockStream& in, long& value) {
    korbase_detail::Wire::GetLong<std::int32_t>(in, value);
    return in;
}
inline ISockStream& operator>>(ISockStream& in, unsigned long& value) {
    korbase_detail::Wire::GetLong<std::uint32_t>(in, value);
    return in;
}

// Stores bytes up to and with the first 0 byte, whatever the status; none if the input ends before.
// Kept: there is no bound, so this is for peers that are known to send less than `s` has room for.
KORBASE_API ISockStream& operator>>(ISockStream& in, char* s);
// Unchanged if no length comes; "" with the failed bit if the length is above 8190 (or negative),
// the text holds a 0 byte or the input ends inside it. The byte behind the text is not looked at.
KORBASE_API ISockStream& operator>>(ISockStream& in, String_t& s);
// Unchanged if no length comes; empty with the failed bit if it is above 32785 (or negative). Has
// the full length also when the input ends before; the missing bytes are 0.
KORBASE_API ISockStream& operator>>(ISockStream& in, ByteString& bytes);
// Reads strings up to one that fails and clears the failed bit: that is how the end mark ends the
// list. Keep that bit out of the mask, where it would throw SockIO::ProtocolError.
KORBASE_API ISockStream& operator>>(ISockStream& in, TOList<String_t>& list);

#endif
