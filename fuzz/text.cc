// What people type: numbers, dates, sets, paths, addresses, lists of variables, formats and their
// arguments. The first byte says which.
#include <korbase.h>

#include <sstream>

#include "input.h"

namespace {

void Numbers(std::string const& text) {
    int const size = static_cast<int>(std::strlen(text.c_str()));
    double value = 0;
    float narrow = 0;
    int whole = 0;
    for (int const used : {str_todouble(text.c_str(), &value), str_ctodouble(text.c_str(), &value),
                           str_tofloat(text.c_str(), &narrow), str_toint(text.c_str(), &whole)})
        EXPECT(0 <= used && used <= size);
    for (auto const read : {GetDouble, GetCDouble}) {
        std::istringstream in(text);
        while (read(in, value)) {
        }
    }
    char buffer[8];
    str_tosc_r(buffer, value);
}

void Dates(std::string const& text) {
    DateTime const time(text.c_str());
    time.Format(text.c_str(), 1);
}

// Whether there is a number of more than five digits.
bool HasLongNumber(std::string const& text) {
    int digits = 0;
    for (char const c : text) {
        digits = c >= '0' && c <= '9' ? digits + 1 : 0;
        if (digits > 5) return true;
    }
    return false;
}

void Sets(std::string const& text) {
    if (HasLongNumber(text)) return;  // members take memory
    Set const set(text.c_str());
    EXPECT(set.size() <= set.max());
    EXPECT(set.max() <= 32 * set.num_words());
}

void Paths(std::string const& text) {
    Pathname path(text.c_str());
    path.SetExt(".o").ChExt(".c").Append(path).Transform();
    Pathname once(text.c_str());
    if (once.IsAbs() && *once.Get() == '~') return;  // asks for users
    once.Collapse();
    EXPECT(once.Len() <= std::strlen(text.c_str()));
    if (once.IsAbs() && *once.Get() == '~') return;
    Pathname twice(once);
    EXPECT(twice.Collapse() == once);
    std::size_t const half = text.size() / 2;
    fname_match(text.substr(0, half).c_str(), text.substr(half).c_str());
}

void Addresses(std::string const& text) {
    String_t host;
    unsigned short port = 0;
    int family = 0;
    bool const good = SockIO::ParseRefString(text.c_str(), host, port, family) == 0;
    EXPECT(!good || family == 1 /* a path */ || host.Len() <= 255);
    char buffer[16];
    RpcDecomposeHostName(text.c_str(), buffer, sizeof buffer, &port);
    EXPECT(std::strlen(buffer) < sizeof buffer);
}

void Pieces(std::string const& text) {
    Vars vars;
    vars.Add(text.c_str());
    TVarr<char> out(16, VARR_DOUBLE);
    vars.Substitute(out, text.c_str(), 1);
    EXPECT(UrlDecode(UrlEncode(text.c_str())) == text.c_str());
    UrlDecode(text.c_str());
    std::size_t length = 0;
    for (StringSplitter pieces(text.c_str(), ",;", " \t"); !pieces.Done(); pieces.Next())
        length += std::strlen(pieces.Get());
    EXPECT(length <= text.size());
    String_t const whole(text.c_str());
    EXPECT(String_t(whole).Trim().Len() <= whole.Len());
    ByteString const bytes(text.data(), static_cast<unsigned>(text.size()));
    EXPECT(bytes.SubStr(0, 0xFFFFFFFE) == bytes);
}

// A format of conversions that there are; other ones abort.
void Formats(Input& input) {
    char const* const parts[] = {"%", "-", "+", " ", "#", "0",  "*",     "7",   "12", ".",  ".*",
                                 "h", "l", "L", "d", "i", "o",  "u",     "x",   "X",  "f",  "e",
                                 "E", "g", "G", "s", "c", "\\", "\\x41", "\\0", "%%", "%b", "a"};
    std::string format;
    for (auto n = input.Take<std::uint8_t>() % 12U; n > 0; --n) {
        format += '%';
        for (int const first : {1, 6, 9, 11}) {  // flag, width, precision, length
            auto const choice = input.Take<std::uint8_t>();
            if (choice % 4 == 0) format += parts[first + choice / 4 % 2];
        }
        format += parts[14 + input.Take<std::uint8_t>() % 13];
        format += parts[26 + input.Take<std::uint8_t>() % 7];
    }
    std::string words[4];
    char* argv[5] = {};
    for (int i = 0; i < 4; ++i) {
        words[i] = input.Bytes(input.Take<std::uint8_t>() % 16U);
        // So do widths.
        if (HasLongNumber(words[i]) && format.find('*') != std::string::npos) words[i].clear();
        argv[i] = words[i].data();
    }
    std::ostringstream out;
    int const used = StrFormat(out, format.c_str(), 4, argv);
    EXPECT(0 <= used && used <= 4);
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(std::uint8_t const* bytes, std::size_t size) {
    Input input(bytes, size);
    auto const kind = input.Take<std::uint8_t>() % 7;
    if (kind == 6) {
        Formats(input);
        return 0;
    }
    void (*const functions[])(std::string const&) = {Numbers, Dates,     Sets,
                                                     Paths,   Addresses, Pieces};
    functions[kind](input.Rest());
    return 0;
}
