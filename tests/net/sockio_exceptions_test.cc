#include "net/sockio_exceptions.h"

#include <cerrno>

#include "tests/support/test.h"

TEST(SockIOExceptions, ShowMessageDetailAndCode) {
    using namespace SockIO;
    std::string const refused = std::strerror(ECONNREFUSED), broken = std::strerror(EPIPE);
    Rows<BaseException, std::string, int> const rows = {
        {IOError("lost", 5), "read/write error, lost", 5},
        {IOError(EPIPE, 6), "read/write error, " + broken, 6},
        {ConnectError("host:7", ECONNREFUSED), "connect error, host:7, " + refused, -1},
        {BaseException("m", String_t(), "second"), "m, , second", -1}};
    for (auto const& [got, text, code] : rows)
        EXPECT_TRUE(text == got.ToString().Get() && code == got.Code()) << text;
    EXPECT_THROW(throw EndOfInput(1), Except);
}
