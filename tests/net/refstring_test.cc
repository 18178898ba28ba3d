#include "net/refstring.h"

#include "net/hostname.h"
#include "tests/support/test.h"

using SockIO::MakeRefString;
using SockIO::ParseRefString;

TEST(RefString, IsWrittenAsPathOrWithThePort) {
    String_t const own = SockIO::GetHostname(), h252(std::string(252, 'h')), h256 = h252 + "hhhh";
    Rows<char const*, unsigned short, String_t> const rows = {
        {"", 80, own + ":80"}, {nullptr, 0, own + ":0"},  {"::1", 65535, "::1/65535"},
        {"/a:b", 5, "/a:b"},   {h252, 800, h252 + ":80"}, {h256, 1, h252 + "hhh"}};
    for (auto const& [host, port, want] : rows) EXPECT_STREQ(want, MakeRefString(host, port));
}

// A port of -1: not a reference; the host is stored then, unless its bracket is missing.
TEST(RefString, IsReadWithHostsPortsAndServices) {
    String_t const h(std::string(255, 'h')), more = "[h" + h + "]:1";
    Rows<char const*, char const*, int, int> const rows = {
        {"*:ftp", "", 21, 0},           {nullptr, "", 0, 1},     {" /a:1", "/a", 1, 0},
        {"a :00080x", "a ", 80, 0},     {"a:65536", "a", -1, 9}, {"a:ftp ", "a", -1, 9},
        {"[::1", "old", -1, 9},         {more, "old", -1, 9},    {"./a:1", "./a:1", 0, 1},
        {"\n [::1]: 7:8", "::1", 7, 0}, {"host", "host", -1, 9}, {"[[:a]:1]:2", "[:a", 1, 0}};
    for (auto const& [ref, name, number, kind] : rows) {
        String_t host("old");
        unsigned short port = 7;
        int family = 9;
        EXPECT_EQ(number < 0 ? -1 : 0, ParseRefString(ref, host, port, family)) << ref;
        EXPECT_STREQ(name, host) << ref;
        EXPECT_TRUE(port == (number < 0 ? 7 : number) && family == kind) << ref;
    }
}
