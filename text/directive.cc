#include "text/directive.h"

#include <algorithm>
#include <cerrno>
#include <cstdint>
#include <cstdio>
#include <cstdlib>
#include <cstring>
#include <iostream>
#include <string>

#include "base/saturate.h"

namespace korbase_detail {

namespace {

// The streams of the runtime build a number with its padding on the stack: more is not asked of
// them. Fields of numbers and their precisions end here; those of texts do not.
constexpr int kWidestNumber = 1 << 20;

constexpr char kBlanks[] = "                                ";

void Complain(std::string const& line) { std::cerr << line + '\n' << std::flush; }

// Complains about what follows a '%' or a backslash: `letter`, or the end of the text.
void Complain(char mark, char letter, char const* problem) {
    std::string line(1, mark);
    if (letter != '\0') line += letter;
    Complain(line + problem);
}

int DigitValue(char c) {
    if (c >= '0' && c <= '9') return c - '0';
    if (c >= 'a' && c <= 'f') return c - 'a' + 10;
    if (c >= 'A' && c <= 'F') return c - 'A' + 10;
    return 16;
}

// Prints the value of up to three digits. Kept: as a number, not as the character it stands for.
char const* PrintCode(std::ostream& out, char const* digits, int base) {
    int value = 0;
    char const* f = digits;
    for (; f < digits + 3 && DigitValue(*f) < base; ++f) value = value * base + DigitValue(*f);
    if (base == 16 && f == digits) Complain("missing hexadecimal number in escape");
    out << value;
    return f;
}

// Prints the escape whose backslash stands before `f`; returns where the text goes on.
char const* PrintEscape(std::ostream& out, char const* f) {
    static constexpr char kLetters[] = "abfnrtv\\\"c";
    static constexpr char kMeanings[] = "\a\b\f\n\r\t\v\\\"c";
    if (*f == '0') return PrintCode(out, f + 1, 8);
    if (*f == 'x') return PrintCode(out, f + 1, 16);
    char const* const known = *f == '\0' ? nullptr : std::strchr(kLetters, *f);
    if (!known) Complain('\\', *f, ": invalid escape");
    if (*f == '\0') return f;
    out.put(known ? kMeanings[known - kLetters] : *f);
    return f + 1;
}

// Writes text up to one of the `stops`, backslash among them, with escapes; returns where it ends.
char const* PrintEscaped(std::ostream& out, char const* text, char const* stops) {
    for (;;) {
        std::size_t const plain = std::strcspn(text, stops);
        out.write(text, static_cast<std::streamsize>(plain));
        text += plain;
        if (*text != '\\') return text;
        text = PrintEscape(out, text + 1);
    }
}

// Reads a width or a precision: digits, '*', or nothing, which leaves `field` alone.
char const* ReadField(char const* f, FormatArguments& arguments, int& field) {
    if (*f == '*') {
        field = arguments.Star();
        return f + 1;
    }
    std::string const digits(f, std::strspn(f, "0123456789"));
    if (digits.empty()) return f;
    errno = 0;
    char* end = nullptr;
    field = SaturateToInt32FromLong(std::strtol(digits.c_str(), &end, 10));
    CheckNumber(digits.c_str(), end);
    return f + digits.size();
}

// Prints the directive whose '%' stands before `f`; returns where the format goes on.
char const* PrintDirective(std::ostream& out, char const* f, FormatArguments& arguments) {
    if (*f == '%') {
        out.put('%');
        return f + 1;
    }
    if (*f == 'b') {
        if (char const* const text = arguments.Text()) PrintEscaped(out, text, "\\");
        return f + 1;
    }
    // Kept: of the flags, only '-' means anything.
    Directive directive = {*f == '-', -1, -1, '\0'};
    if (*f == '-' || *f == '+' || *f == ' ' || *f == '#') ++f;
    f = ReadField(f, arguments, directive.width);
    if (*f == '.') {
        directive.precision = 0;
        f = ReadField(f + 1, arguments, directive.precision);
    }
    if (*f == 'h' || *f == 'l' || *f == 'L') ++f;
    directive.conversion = *f;
    if (*f == '\0' || !std::strchr("diouxXfeEgGcs", *f)) Complain('%', *f, ": invalid directive");
    arguments.print_direc(directive);
    return f + 1;
}

void SetWidth(std::ostream& out, int width) { out.width(std::min(width, kWidestNumber)); }

void Adjust(std::ostream& out, Directive const& directive) {
    out.setf(directive.left ? std::ios::left : std::ios::right, std::ios::adjustfield);
}

void WriteBlanks(std::ostream& out, std::int64_t count) {
    constexpr std::int64_t kAtOnce = sizeof kBlanks - 1;
    for (; count > 0 && out; count -= kAtOnce)
        out.write(kBlanks, static_cast<std::streamsize>(std::min(count, kAtOnce)));
}

// Kept: 'd', 'i' and 'u' print in the base that the stream has.
void SetBase(std::ostream& out, char conversion) {
    switch (conversion) {
        case 'o': out.setf(std::ios::oct, std::ios::basefield); break;
        case 'x':
            out.setf(std::ios::hex, std::ios::basefield);
            out.unsetf(std::ios::uppercase);
            break;
        case 'X':
            out.setf(std::ios::hex | std::ios::uppercase,
                     std::ios::basefield | std::ios::uppercase);
            break;
        default: break;
    }
}

template <class Integer>
void InsertInteger(std::ostream& out, Directive const& directive, Integer value) {
    SetBase(out, directive.conversion);
    if (directive.precision < 0) {
        if (directive.width >= 0) {
            Adjust(out, directive);
            out.fill(' ');
        }
        SetWidth(out, std::max(directive.width, 0));
        out << value;
        return;
    }
    // Kept: the blanks make up for the precision, however many characters the number has, and the
    // zeros stand where the stream's adjustment puts them.
    std::int64_t const blanks =
        directive.width < 0 ? 0 : std::int64_t{directive.width} - directive.precision;
    if (!directive.left) WriteBlanks(out, blanks);
    out.fill('0');
    SetWidth(out, directive.precision);
    out << value;
    if (directive.left) WriteBlanks(out, blanks);
}

// Kept: lower case is not restored by 'e', 'f' and 'g'.
void SetNotation(std::ostream& out, char conversion) {
    if (conversion == 'E' || conversion == 'G') out.setf(std::ios::uppercase);
    switch (conversion) {
        case 'e':
        case 'E': out.setf(std::ios::scientific, std::ios::floatfield); break;
        case 'f': out.setf(std::ios::fixed, std::ios::floatfield); break;
        default: out.unsetf(std::ios::floatfield); break;
    }
}

}  // namespace

int PrintFormat(std::ostream& out, char const* format, FormatArguments& arguments) {
    int directives = 0;
    for (;;) {
        format = PrintEscaped(out, format, "%\\");
        if (*format == '\0') return directives;
        format = PrintDirective(out, format + 1, arguments);
        ++directives;
    }
}

void PrintInteger(std::ostream& out, Directive const& directive, long value) {
    InsertInteger(out, directive, value);
}

void PrintInteger(std::ostream& out, Directive const& directive, unsigned long value) {
    InsertInteger(out, directive, value);
}

void PrintFloat(std::ostream& out, Directive const& directive, double value) {
    Adjust(out, directive);
    if (directive.width >= 0) SetWidth(out, directive.width);
    if (directive.precision >= 0) out.precision(std::min(directive.precision, kWidestNumber));
    SetNotation(out, directive.conversion);
    out << value;
}

void PrintText(std::ostream& out, Directive const& directive, char const* text) {
    std::size_t const length = directive.precision < 0
                                   ? std::strlen(text)
                                   : strnlen(text, static_cast<unsigned>(directive.precision));
    std::int64_t const blanks = std::int64_t{directive.width} - static_cast<std::int64_t>(length);
    if (!directive.left) WriteBlanks(out, blanks);
    out.write(text, static_cast<std::streamsize>(length));
    if (directive.left) WriteBlanks(out, blanks);
}

void CheckNumber(char const* text, char const* end) {
    if (errno != 0) {
        std::perror(text);
        std::fflush(stderr);
    } else if (end == text && *text != '\0') {
        Complain(std::string(text) + ": expected a numeric value");
    }
}

}  // namespace korbase_detail
