// The exceptions of socket operations: each has a fixed message, a detail and a code.
//
// The message is Except's kind, the detail Except's message. Values, as Except is.
#ifndef KORBASE_NET_SOCKIO_EXCEPTIONS_H
#define KORBASE_NET_SOCKIO_EXCEPTIONS_H

#include <korbase_api.h>
#include <text/except.h>
#include <text/string.h>

namespace SockIO {

class KORBASE_API BaseException : public Except {
public:
    // `message` is not copied. Without one it is that of Except(), the code is -1.
    BaseException();
    BaseException(char const* message, int code);
    BaseException(char const* message, String_t const& detail, int code);
    // The detail is "FIRST, SECOND" (null counts as nothing), the code -1.
    BaseException(char const* message, String_t const& first, char const* second);

    // The descriptor of the socket, which may be closed by now; -1 where there is none.
    int Code() const { return code; }

private:
    int code;
};

// "timed out": no readiness within the time-out.
class KORBASE_API TimedOut : public BaseException {
public:
    explicit TimedOut(int code);
};

// "read/write error", with a text or the system's text for `error`, an errno value.
class KORBASE_API IOError : public BaseException {
public:
    IOError(String_t const& detail, int code);
    IOError(int error, int code);
};

// "connect error", with the address and the system's text for `error`.
class KORBASE_API ConnectError : public BaseException {
public:
    ConnectError(String_t const& address, int error);
};

// "protocol error": what came is not what the protocol allows.
class KORBASE_API ProtocolError : public BaseException {
public:
    explicit ProtocolError(int code);
};

// "end of input": the other end has closed the connection.
class KORBASE_API EndOfInput : public BaseException {
public:
    explicit EndOfInput(int code);
};

}  // namespace SockIO

#endif
