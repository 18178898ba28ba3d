#include "text/vars.h"

#include <cctype>
#include <cstring>
#include <string>
#include <string_view>

#include "text/stringtok.h"

namespace {

bool IsNameCharacter(char c) { return std::isalnum(static_cast<unsigned char>(c)) || c == '_'; }

char const* SkipSpace(char const* text) {
    while (std::isspace(static_cast<unsigned char>(*text))) ++text;
    return text;
}

// A reference as it was written, from the marker to its end.
struct Reference {
    std::string_view name, whole;
};

Reference ReadReference(char const* marker) {
    bool const braced = marker[1] == '{';
    char const* const name = marker + (braced ? 2 : 1);
    char const* end = name;
    while (*end != '\0' && (braced ? *end != '}' : IsNameCharacter(*end))) ++end;
    char const* const whole_end = braced && *end == '}' ? end + 1 : end;
    return {{name, static_cast<std::size_t>(end - name)},
            {marker, static_cast<std::size_t>(whole_end - marker)}};
}

void Append(TVarr<char>& out, std::string_view text) {
    out.Cat(static_cast<unsigned>(text.size()), text.data());
}

}  // namespace

void Vars::Add(String_t const& name, String_t const& value) {
    auto const result = vars.Insert(name, value);
    if (!result.second) *result.first = value;
}

void Vars::Add(int n, char const* value) {
    Add(String_t(std::to_string(n).c_str()), String_t(value));
}

void Vars::Add(char const* settings) {
    StringTok next(settings);
    TVarr<char> value;
    for (int number = 1; char const* piece = next(":"); ++number) {
        piece = SkipSpace(piece);
        if (char const* const equals = std::strchr(piece, '=')) {
            std::string_view const name(piece, static_cast<std::size_t>(equals - piece));
            Add(String_t(name), Substitute(value, SkipSpace(equals + 1), 0));
        } else {
            Add(number, Substitute(value, piece, 0));
        }
    }
}

char* Vars::Substitute(TVarr<char>& out, char const* text, int keepUnknown) const {
    out.Reset();
    while (char const* const at = text && marker ? std::strchr(text, marker) : nullptr) {
        Append(out, {text, static_cast<std::size_t>(at - text)});
        Reference const reference = ReadReference(at);
        if (reference.name.empty())
            out.App(marker);
        else if (String_t const* const value = Find(String_t(reference.name)))
            Append(out, value->View());
        else if (keepUnknown != 0)
            Append(out, reference.whole);
        // Kept: behind a name without braces, too.
        text = reference.name.data() + reference.name.size();
        if (*text == '}') ++text;
    }
    if (text) Append(out, text);
    out.App('\0');
    return out.Get();
}
