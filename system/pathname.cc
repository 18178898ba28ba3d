#include "system/pathname.h"

#include <glob.h>
#include <sys/stat.h>

#include <algorithm>
#include <cctype>
#include <cerrno>
#include <cstddef>
#include <cstring>
#include <string>
#include <string_view>

#include "text/strlist.h"

namespace {

constexpr auto kNone = std::string_view::npos;

bool IsAlpha(char c) { return std::isalpha(static_cast<unsigned char>(c)) != 0; }

bool BeginsWithDrive(std::string_view path) {
    return path.size() >= 2 && IsAlpha(path[0]) && path[1] == ':';
}

bool EndsWith(std::string_view text, std::string_view end) {
    return text.size() >= end.size() && text.substr(text.size() - end.size()) == end;
}

// A new text without `suffix`, which may be null; null for a null view.
String_t Without(std::string_view text, char const* suffix) {
    if (suffix && EndsWith(text, suffix)) text.remove_suffix(std::strlen(suffix));
    return String_t(text);
}

// Where the extension begins, kNone without one.
std::size_t ExtensionOf(std::string_view path) {
    std::size_t const at = path.find_last_of("./");
    return at != kNone && at > 0 && path[at] == '.' ? at : kNone;
}

// What glob found, given back at the end of the scope.
struct Found : glob_t {
    Found() : glob_t() {}
    ~Found() { globfree(this); }
    Found(Found const&) = delete;
    Found& operator=(Found const&) = delete;
};

}  // namespace

Pathname::Pathname(char const* name, char const* ext) : String_t(name) { ChExtOpt(ext); }

Pathname& Pathname::operator=(String_t const& name) {
    String_t::operator=(name);
    return *this;
}

Pathname& Pathname::operator=(char const* name) {
    String_t::operator=(name);
    return *this;
}

int Pathname::IsAbs() const { return !IsEmpty() && (Get()[0] == '/' || Get()[0] == '~'); }

int Pathname::HasExt(char const* ext) const {
    return ext && View() != ext && EndsWith(View(), ext);
}

String_t Pathname::Dir() const {
    std::size_t const slash = View().rfind('/');
    return slash == kNone ? String_t(".") : String_t(View().substr(0, slash));
}

String_t Pathname::Leaf(char const* suffix) const {
    std::size_t const slash = View().rfind('/');
    return Without(slash == kNone ? View() : View().substr(slash + 1), suffix);
}

String_t Pathname::Base(char const* suffix) const { return Without(View(), suffix); }

Pathname& Pathname::SetExt(char const* ext) {
    if (!IsNull() && ext && !EndsWith(View(), ext)) *this += ext;
    return *this;
}

Pathname& Pathname::ChExt(char const* ext) {
    if (IsNull() || !ext) return *this;
    std::size_t const at = ExtensionOf(View());
    if (at != kNone && View().substr(at) == ext) return *this;
    std::string changed(View().substr(0, at));
    return *this = (changed += ext).c_str();
}

Pathname& Pathname::ChExtOpt(char const* ext) {
    if (!IsNull() && ExtensionOf(View()) == kNone) *this += ext;
    return *this;
}

Pathname& Pathname::Append(char const* name) {
    if (!name) return *this;
    if (IsEmpty()) return *this = name;
    return *this = Concat(*this, name, View() == "/" ? nullptr : "/");
}

Pathname& Pathname::Insert(char const* name) {
    if (!name) return *this;
    return *this = Concat(name, *this, IsEmpty() ? nullptr : "/");
}

Pathname& Pathname::Transform() {
    if (!BeginsWithDrive(View()) && View().find('\\') == kNone) return *this;
    char* const text = const_cast<char*>(Get());  // the record's own buffer
    std::transform(text, text + Len(), text, [](char c) {
        return c == '\\' ? '/' : static_cast<char>(std::tolower(static_cast<unsigned char>(c)));
    });
    if (!BeginsWithDrive(View())) return *this;
    std::string rebuilt = "/";
    rebuilt += View().substr(0, 2);
    if (text[2] != '/') rebuilt += '/';
    rebuilt += View().substr(2);
    return *this = rebuilt.c_str();
}

int Pathname::Glob(Pathname const& pattern, int flags, TOList<String_t>& out) {
    Found found;
    int const result = glob(pattern.IsNull() ? "" : pattern.Get(), flags, nullptr, &found);
    if (result != 0) return -result;
    TOList<String_t> paths;
    for (std::size_t i = 0; i < found.gl_pathc; ++i)
        paths.Append(String_t(found.gl_pathv[found.gl_offs + i]));
    out.append(paths);
    return static_cast<int>(found.gl_pathc);
}

int Pathname::Mkdir(Pathname path, unsigned int mode) {
    if (path.IsEmpty()) return -EINVAL;
    if (path == "." || path == "..") return 0;
    path.Collapse();
    TOList<String_t> components;
    Split(path, components, "/");
    Pathname directory(path.IsAbs() ? "/" : nullptr);
    for (String_t const& component : components) {
        if (component.IsEmpty()) continue;
        directory.Append(component);
        if (mkdir(directory, mode) != 0 && errno != EEXIST && errno != ENOSYS) return -errno;
    }
    return 0;
}

// By value, as documented. NOLINTNEXTLINE(performance-unnecessary-value-param)
int Pathname::MkLeadingDirs(Pathname path, unsigned int mode) {
    return Mkdir(Pathname(path.Dir()), mode);
}
