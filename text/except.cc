#include "text/except.h"

#include <string>
#include <utility>

Except::Except() : Except("unknown") {}

Except::Except(char const* kind) : kind(kind), line(-1) {}

Except::Except(char const* kind, String_t const& message)
    : kind(kind), message(message), line(-1) {}

Except::Except(char const* kind, char const* file, int line) : kind(kind), file(file), line(line) {}

Except::Except(char const* kind, String_t const& message, char const* file, int line)
    : kind(kind), message(message), file(file), line(line) {}

Except::Except(Except const&) = default;
Except::Except(Except&&) noexcept = default;
Except& Except::operator=(Except&&) noexcept = default;

Except& Except::operator=(Except const& other) {
    if (this == &other) return *this;
    // Copies first: sharing a null string may allocate.
    Except copy(other);
    *this = std::move(copy);
    return *this;
}

Except::~Except() {
    kind = nullptr;
    line = -1;
}

String_t Except::ToString() const {
    if (!kind) return String_t();
    std::string text(kind);
    if (!message.IsEmpty()) text.append(", ").append(message);
    if (!file.IsEmpty() && line >= 0)
        text.append(", thrown in ").append(file).append(":").append(std::to_string(line));
    return text.empty() ? String_t() : String_t(std::string_view(text));
}
