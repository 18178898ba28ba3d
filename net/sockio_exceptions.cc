#include "net/sockio_exceptions.h"

#include "text/str_text.h"

namespace SockIO {

BaseException::BaseException() : code(-1) {}

BaseException::BaseException(char const* message, int code) : Except(message), code(code) {}

BaseException::BaseException(char const* message, String_t const& detail, int code)
    : Except(message, detail), code(code) {}

BaseException::BaseException(char const* message, String_t const& first, char const* second)
    : BaseException(message, first + ", " + second, -1) {}

TimedOut::TimedOut(int code) : BaseException("timed out", code) {}

IOError::IOError(String_t const& detail, int code)
    : BaseException("read/write error", detail, code) {}

IOError::IOError(int error, int code) : IOError(String_t(str_error(error)), code) {}

ConnectError::ConnectError(String_t const& address, int error)
    : BaseException("connect error", address, str_error(error)) {}

ProtocolError::ProtocolError(int code) : BaseException("protocol error", code) {}

EndOfInput::EndOfInput(int code) : BaseException("end of input", code) {}

}  // namespace SockIO
