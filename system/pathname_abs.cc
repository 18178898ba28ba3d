// Absolute and collapsed paths, and their rewriting by rules.
//
// Collapsing reads the text once and writes the result over it. The write position never passes the
// read position: what is written is components that were read, with one "/" between two of them.
#include <endian.h>
#include <pwd.h>
#include <unistd.h>

#include <cstddef>
#include <cstdint>
#include <cstring>
#include <iostream>
#include <string>
#include <string_view>

#include "system/pathname.h"
#include "system/regexp.h"

namespace {

constexpr std::size_t kCwdRoom = 4096;

// Closes the password database at the end of the scope.
struct UserDatabase {
    UserDatabase() = default;
    ~UserDatabase() { endpwent(); }
    UserDatabase(UserDatabase const&) = delete;
    UserDatabase& operator=(UserDatabase const&) = delete;
};

// The dots that the component at `in` consists of: 1 or 2, or 0 for any other.
unsigned Dots(char const* in) {
    unsigned const dots = in[0] != '.' ? 0 : in[1] != '.' ? 1 : 2;
    return in[dots] == '/' || in[dots] == '\0' ? dots : 0;
}

// The high bits of the bytes of `word` that are `c`. The lowest one is exact; above it there may be
// some of bytes that differ from `c` in the last bit only.
std::uint64_t BytesEqual(std::uint64_t word, char c) {
    std::uint64_t const ones = ~std::uint64_t{0} / 255;
    std::uint64_t const differ = word ^ ones * static_cast<unsigned char>(c);
    return (differ - ones) & ~differ & ones * 128;
}

// The first "/" from `in` on with "/", "." or nothing behind it; `end` if there is none. All that
// is in front of it stays in a collapsed path. Looks at eight characters at a time, with one that
// is looked at twice. A false bit needs a "." right behind a "/", or a "/" right behind a ".": it
// stands above the bit of the former, and changes nothing in the latter.
char const* EndOfRun(char const* in, char const* end) {
    for (std::uint64_t word; end - in >= 8; in += sizeof word - 1) {
        std::memcpy(&word, in, sizeof word);
        word = le64toh(word);
        std::uint64_t const slash = BytesEqual(word, '/');
        std::uint64_t const hit = slash << 8 & (slash | BytesEqual(word, '.'));
        if (hit) return in + __builtin_ctzll(hit) / 8 - 1;
    }
    for (; in < end; ++in)
        if (*in == '/' && (in[1] == '/' || in[1] == '.' || in[1] == '\0')) break;
    return in;
}

Pathname HomeOf(passwd const* user) { return Pathname(user ? user->pw_dir : nullptr); }

}  // namespace

Pathname Pathname::Cwd() {
    char directory[kCwdRoom];
    return Pathname(getcwd(directory, sizeof directory));
}

Pathname Pathname::Cwd(char const* name) { return Cwd().Append(name); }

Pathname Pathname::Home() {
    UserDatabase const open;
    return HomeOf(getpwuid(getuid()));
}

Pathname Pathname::Home(char const* name) { return Home().Append(name); }

Pathname& Pathname::Collapse() {
    return !IsEmpty() && *Get() == '~' ? Abs() : CollapseComponents();
}

Pathname& Pathname::CollapseComponents() {
    char* const text = Own();
    if (IsEmpty() || (text[0] == '.' && text[1] == '\0')) return *this;
    char const* const end = text + std::strlen(text);
    bool const rooted = *text == '/';
    char* const start = text + (rooted ? 1 : 0);
    char* floor = start;  // ".." does not remove what is in front of this: the root, other ".."
    char* out = start;
    for (char const* in = start; in < end;) {
        unsigned const dots = Dots(in);
        bool const up = dots == 2;
        if (*in == '/') {
            ++in;
        } else if (dots == 1) {
            in += 1;
        } else if (up && (rooted || out > floor)) {
            while (out > floor && *--out != '/') {
            }
            in += 2;
        } else {
            if (out > start) *out++ = '/';
            char const* const stop = up ? in + 2 : EndOfRun(in, end);
            auto const count = static_cast<std::size_t>(stop - in);
            if (out != in) std::memmove(out, in, count);
            out += count;
            in = stop;
            if (up) floor = out;
        }
    }
    if (out == text) return *this = nullptr;
    *out = '\0';
    return *this;
}

Pathname& Pathname::Abs() {
    if (IsEmpty()) return *this;
    if (*Get() == '~') {
        std::string_view const user = View().substr(1, View().find('/') - 1);
        Pathname home;
        if (user.empty()) {
            home = Home();
        } else {
            passwd const* const entry = getpwnam(std::string(user).c_str());
            if (!entry) return *this;
            UserDatabase const open;
            home = HomeOf(entry);
        }
        *this = home + (Get() + 1 + user.size());
    } else if (*Get() != '/') {
        Pathname const cwd = Cwd();
        if (!cwd.IsNull()) Prepend("/").Prepend(cwd);
    }
    return CollapseComponents();
}

Pathname& Pathname::Abs(TOList<String_t> const& substs) {
    if (IsEmpty()) return *this;
    Abs();
    for (String_t const& subst : substs)
        if (ApplySubst(subst) == 0) break;
    return *this;
}

// By value, as documented. NOLINTNEXTLINE(performance-unnecessary-value-param)
int Pathname::ApplySubst(String_t subst) {
    if (subst.IsEmpty()) return REG_NOMATCH;
    char const delimiter = *subst.Get();
    std::string_view const rule = subst.View().substr(1);
    std::size_t const cut = rule.find(delimiter);
    std::string_view replacement;
    if (cut != std::string_view::npos) {
        replacement = rule.substr(cut + 1);
        replacement = replacement.substr(0, replacement.find(delimiter));
    }

    Regexp pattern(std::string(rule.substr(0, cut)).c_str(), 0);
    if (pattern.Error() != 0) {
        std::cerr << pattern.ErrorString() << std::endl;
        return 0;
    }
    if (IsNull()) return REG_NOMATCH;
    regmatch_t match;
    int const result = pattern.Match(*this, &match, REG_NOTBOL | REG_NOTEOL);
    if (result == 0) *this = (std::string(replacement) + (Get() + match.rm_eo)).c_str();
    return result;
}
