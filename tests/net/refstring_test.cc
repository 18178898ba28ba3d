#include "net/refstring.h"

#include <gtest/gtest.h>

#include <random>
#include <regex>
#include <string>

#include "net/hostname.h"

namespace {

using SockIO::MakeRefString;
using SockIO::ParseRefString;

TEST(RefString, IsWrittenAsPathOrWithThePort) {
    std::string const own = SockIO::GetHostname().Get(), h252(252, 'h'), h300(300, 'h');
    struct {
        char const* host;
        unsigned short port;
        std::string want;
    } const rows[] = {{"", 80, own + ":80"},
                      {nullptr, 0, own + ":0"},
                      {"a b", 65535, "a b:65535"},
                      {"::1", 80, "::1/80"},
                      {"/tmp/sock", 5, "/tmp/sock"},
                      {".:", 5, ".:"},
                      // 255 characters at most
                      {h252.c_str(), 80, h252 + ":80"},
                      {h252.c_str(), 800, h252 + ":80"},
                      {h300.c_str(), 1, h300.substr(0, 255)}};
    for (auto const& row : rows) EXPECT_EQ(row.want, MakeRefString(row.host, row.port).Get());
}

TEST(RefString, IsReadWithHostsPortsAndServices) {
    std::string const h255(255, 'h'), most = '[' + h255 + "]:1", more = "[h" + h255 + "]:1";
    struct {
        char const* ref;
        char const* host;
        int port, family;  // port -1: not a reference
    } const rows[] = {{"*:ftp", "", 21, 0},
                      {":\t ftp\nx", "", 21, 0},
                      {nullptr, "", 0, 1},
                      {"a[b]:1", "a[b]", 1, 0},
                      {" \t/a:1", "/a", 1, 0},  // only the very first character makes a path
                      {"[]:1", "", 1, 0},
                      {"a :00080x", "a ", 80, 0},
                      {"a:0x50", "a", 0, 0},
                      {"*a:65535", "*a", 65535, 0},
                      // the host is stored, unless its bracket is missing
                      {"host", "host", -1, 9},
                      {"a:65536", "a", -1, 9},
                      {"a:-1", "a", -1, 9},
                      {"a:+1", "a", -1, 9},
                      {"a:ftp ", "a", -1, 9},
                      {"[::1] :1", "::1", -1, 9},
                      {"[::1", "old", -1, 9},
                      {most.c_str(), h255.c_str(), 1, 0},
                      {most.c_str() + 1, h255.c_str(), -1, 9},
                      {more.c_str(), "old", -1, 9}};
    for (auto const& row : rows) {
        String_t host("old");
        unsigned short port = 7;
        int family = 9;
        EXPECT_EQ(row.port < 0 ? -1 : 0, ParseRefString(row.ref, host, port, family)) << row.ref;
        EXPECT_STREQ(row.host, host) << row.ref;
        EXPECT_TRUE(port == (row.port < 0 ? 7 : row.port) && family == row.family) << row.ref;
    }
    String_t both("there:80");
    unsigned short port = 0;
    EXPECT_TRUE(ParseRefString(both, both, port) == 0 && both == "there" && port == 80);
}

TEST(RefString, IsReadAsAPatternSaysAndAsItWasWritten) {
    std::regex const pattern(R"(\s*(?!\s)(?:\[([^\]]*)\]|(?!\[)([^:]*)):\s*(\d+)[^]*)");
    std::mt19937 random(41);
    std::string const letters = "  :::[]*/.q09\n";
    for (int i = 0; i < 2000; ++i) {
        std::string text;
        for (auto n = random() % 9; n > 0; --n) text += letters[random() % letters.size()];
        if (random() % 2) text += ":7";
        std::smatch part;
        bool const path = text.empty() || text[0] == '/' || text[0] == '.';
        bool const match = !path && std::regex_match(text, part, pattern);
        bool const want = path || (match && std::stod(part[3]) <= 65535);
        String_t host;
        unsigned short port = 7;
        int family = 9;
        ASSERT_EQ(want ? 0 : -1, ParseRefString(text.c_str(), host, port, family)) << text;
        if (!want) continue;
        std::string const name = path ? text : part[1].str() + part[2].str();
        EXPECT_EQ(name == "*" ? "" : name, host.Get()) << text;
        EXPECT_TRUE(port == (path ? 0 : std::stoi(part[3])) && family == path) << text;
        if (name.empty() || name.find_first_of(": \n*") != name.npos || name[0] == '[') continue;
        ASSERT_EQ(0, ParseRefString(MakeRefString(name.c_str(), port), host, port)) << text;
        EXPECT_EQ(name, host.Get()) << "written and read again";
    }
}

}  // namespace
