#include "net/refstring.h"

#include <netdb.h>
#include <netinet/in.h>
#include <sys/socket.h>

#include <algorithm>
#include <cctype>
#include <charconv>
#include <cstdio>
#include <cstring>
#include <string>
#include <string_view>

#include "net/hostname.h"
#include "text/str_text.h"

namespace SockIO {

namespace {

constexpr std::size_t kLongest = 255;  // characters of a text, of a host, of a service

bool IsPath(char const* text) { return *text == '/' || *text == '.'; }

std::string_view SkipBlanks(std::string_view text) {
    auto const blank = [](unsigned char c) { return std::isspace(c) != 0; };
    auto const start = std::find_if_not(text.begin(), text.end(), blank);
    return text.substr(static_cast<std::size_t>(start - text.begin()));
}

// Takes what stands before `end`, or the first 255 characters of it, off the front of `text`.
std::string_view TakeUpTo(char end, std::string_view& text) {
    std::string_view const taken = text.substr(0, std::min(text.find(end), kLongest));
    text.remove_prefix(taken.size());
    return taken;
}

bool Take(char wanted, std::string_view& text) {
    if (text.empty() || text.front() != wanted) return false;
    text.remove_prefix(1);
    return true;
}

// The port of a TCP service in host byte order, -1 if there is none of this name.
int ServicePort(std::string const& name) {
    servent entry;
    servent* found = nullptr;
    char work[8192];
    if (getservbyname_r(name.c_str(), "tcp", &entry, work, sizeof work, &found) != 0 || !found)
        return -1;
    return ntohs(static_cast<unsigned short>(found->s_port));
}

// A number or a service; -1 for neither.
int PortOf(std::string_view text) {
    text = SkipBlanks(text);
    unsigned short number;
    auto const [end, error] = std::from_chars(text.data(), text.data() + text.size(), number);
    if (error == std::errc()) return number;
    return ServicePort(std::string(TakeUpTo('\n', text)));
}

}  // namespace

String_t MakeRefString(char const* host, unsigned short port) {
    char text[kLongest + 1] = "";
    str_lcpy(text, host && *host ? host : GetHostname().Get(), sizeof text);
    if (*text && !IsPath(text)) {
        std::size_t const length = std::strlen(text);
        char const separator = std::strchr(text, ':') ? '/' : ':';
        std::snprintf(text + length, sizeof text - length, "%c%u", separator, unsigned{port});
    }
    return String_t(text);
}

int ParseRefString(char const* ref, String_t& host, unsigned short& port, int& family) {
    if (!ref) ref = "";
    if (!*ref || IsPath(ref)) {
        host = ref;
        port = 0;
        family = AF_UNIX;
        return 0;
    }
    std::string_view rest = SkipBlanks(ref);
    bool const bracketed = Take('[', rest);
    std::string_view const name = TakeUpTo(bracketed ? ']' : ':', rest);
    if (bracketed && !Take(']', rest)) return -1;
    int const number = Take(':', rest) ? PortOf(rest) : -1;
    host = name.empty() || name == "*" ? String_t("") : String_t(name);  // `ref` may be its text
    if (number < 0) return -1;
    port = static_cast<unsigned short>(number);
    family = AF_UNSPEC;
    return 0;
}

int ParseRefString(char const* ref, String_t& host, unsigned short& port) {
    int family;
    return ParseRefString(ref, host, port, family);
}

}  // namespace SockIO
