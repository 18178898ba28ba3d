#include "net/sockio_exceptions.h"

#include <cerrno>

#include "tests/support/test.h"

namespace {

TEST(SockIOExceptions, ShowMessageDetailAndCode) {
    using namespace SockIO;
    std::string const refused = std::strerror(ECONNREFUSED), broken = std::strerror(EPIPE);
    Rows<BaseException, std::string, int> const rows = {
        {TimedOut(4), "timed out", 4},
        {IOError("lost", 5), "read/write error, lost", 5},
        {IOError(EPIPE, 6), "read/write error, " + broken, 6},
        {ConnectError("host:7", ECONNREFUSED), "connect error, host:7, " + refused, -1},
        {ProtocolError(7), "protocol error", 7},
        {EndOfInput(0), "end of input", 0},
        {BaseException(), "unknown", -1},
        {BaseException("m", String_t(), "second"), "m, , second", -1}};
    for (auto const& [got, text, code] : rows) {
        BaseException copy;
        copy = got;
        EXPECT_EQ(text, copy.ToString().Get());
        EXPECT_EQ(code, copy.Code()) << text;
    }
    EXPECT_THROW(throw EndOfInput(1), Except);
}

}  // namespace
