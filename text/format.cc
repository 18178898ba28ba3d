#include "text/format.h"

#include <korbase_assert.h>

#include <cerrno>
#include <cstdlib>
#include <ostream>

#include "base/saturate.h"
#include "text/directive.h"

using korbase_detail::Directive;

namespace {

// What strtol and its like make of `text`, after a diagnostic when it is not a number.
template <class Convert>
auto Number(char const* text, Convert const& convert) {
    char* end = nullptr;
    errno = 0;
    auto const value = convert(text, &end);
    korbase_detail::CheckNumber(text, end);
    return value;
}

long Signed(char const* text) {
    return Number(text, [](char const* s, char** end) { return std::strtol(s, end, 10); });
}

unsigned long Unsigned(char const* text) {
    return Number(text, [](char const* s, char** end) { return std::strtoul(s, end, 10); });
}

class TextArguments final : public korbase_detail::FormatArguments {
public:
    TextArguments(std::ostream& out, int argc, char** argv)
        : out(out), next(argv), left(argc > 0 ? argc : 0) {}

    int Left() const { return left; }
    char const* Text() override { return left > 0 ? Take() : nullptr; }

    // Kept: read without a sign, so that "-1" is what -1 wraps to, a width that is not given.
    int Star() override {
        auto const value = static_cast<long>(Unsigned(OrEmpty(Text())));
        return korbase_detail::SaturateToInt32FromLong(value);
    }

    void print_direc(Directive const& directive) override {
        char const* const text = left > 0 ? Take() : "";
        switch (directive.conversion) {
            case 'd':
            case 'i':
            case 'o':
            case 'u':
            case 'x':
            case 'X': print_int_arg(directive, OrEmpty(text)); break;
            case 'f':
            case 'e':
            case 'E':
            case 'g':
            case 'G': print_float(directive, OrEmpty(text)); break;
            case 'c':
                if (*OrEmpty(text) != '\0') out.put(*text);
                break;
            case 's': PrintText(out, directive, text ? text : "(nil)"); break;
            default: KORBASE_ASSERT(0);
        }
    }

private:
    static char const* OrEmpty(char const* text) { return text ? text : ""; }

    char const* Take() {
        --left;
        return *next++;
    }

    void print_int_arg(Directive const& directive, char const* text) {
        switch (directive.conversion) {
            case 'd':
            case 'i':
            case 'o': PrintInteger(out, directive, Signed(text)); break;
            default: PrintInteger(out, directive, Unsigned(text)); break;
        }
    }

    void print_float(Directive const& directive, char const* text) {
        PrintFloat(out, directive, Number(text, std::strtod));
    }

    std::ostream& out;
    char** next;
    int left;
};

}  // namespace

int StrFormat(std::ostream& out, char const* format, int argc, char** argv) {
    if (!format) return -1;
    TextArguments arguments(out, argc, argv);
    int const given = arguments.Left();
    korbase_detail::PrintFormat(out, format, arguments);
    return given - arguments.Left();
}
