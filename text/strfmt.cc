#include "text/strfmt.h"

#include <korbase_assert.h>

#include <cstdarg>
#include <ostream>

#include "text/directive.h"

using korbase_detail::Directive;

namespace {

class VariableArguments final : public korbase_detail::FormatArguments {
public:
    VariableArguments(std::ostream& out, std::va_list& args) : out(out), args(args) {}

    int Star() override { return Next<int>(); }
    char const* Text() override { return Next<char const*>(); }

    void print_direc(Directive const& directive) override {
        switch (directive.conversion) {
            case 'd':
            case 'i':
            case 'o':
            case 'u':
            case 'x':
            case 'X': print_int_arg(directive, Next<int>()); break;
            case 'f':
            case 'e':
            case 'E':
            case 'g':
            case 'G': PrintFloat(out, directive, Next<double>()); break;
            case 'c': out.put(static_cast<char>(Next<int>())); break;
            case 's': print_text(directive, Next<char const*>()); break;
            default: KORBASE_ASSERT(0);
        }
    }

private:
    template <class T>
    T Next() {
        return va_arg(args, T);  // NOLINT(clang-analyzer-valist.Uninitialized): StrFmt started it
    }

    void print_int_arg(Directive const& directive, long value) {
        switch (directive.conversion) {
            case 'd':
            case 'i': PrintInteger(out, directive, value); break;
            default: {
                unsigned long const bits = static_cast<unsigned>(value);
                PrintInteger(out, directive, bits);
            }
        }
    }

    void print_text(Directive const& directive, char const* text) {
        KORBASE_ASSERT(text != nullptr);
        PrintText(out, directive, text);
    }

    std::ostream& out;
    std::va_list& args;
};

}  // namespace

int StrFmt(std::ostream& out, char const* format, ...) {
    if (!format) return -1;
    std::va_list args;
    va_start(args, format);
    VariableArguments arguments(out, args);
    int const directives = korbase_detail::PrintFormat(out, format, arguments);
    va_end(args);
    return directives;
}
