#include "layout/command_line.h"

#include <text/options.h>
#include <text/str.h>
#include <text/strfmt.h>

#include <cctype>
#include <cstdlib>
#include <iostream>

#include "layout/reader.h"
#include "layout/shape.h"

namespace layout {
namespace {

// A length of at most a millimetre, so that a forgotten scale letter does not pass.
bool ParseUnit(char const* text, double& unit) {
    int const used = str_ctodouble(text, &unit);
    return used > 0 && text[used] == '\0' && unit >= 1e-15 && unit <= 1e-3;
}

bool ParseDistance(char const* text, double unit, gu_coord_t& distance) {
    return ReadLength(text, unit, distance) == nullptr && std::abs(distance) <= kMaxDistance;
}

bool IsFlag(Option const& option, char const* argument) {
    return (argument[1] == option.letter && argument[2] == '\0') ||
           (option.name != nullptr && str_cmp(argument, option.name) == 0);
}

// The option behind the cursor, and its value if it takes one; null when it is none of these.
Option const* TakeOption(int& argc, char**& argv, std::initializer_list<Option> options,
                         String_t& value) {
    for (Option const& option : options) {
        bool const here = option.value == nullptr
                              ? IsFlag(option, argv[1])
                              : CheckOpt(argc, &argv, option.letter, value) != 0;
        if (here) return &option;
    }
    return nullptr;
}

}  // namespace

int CommandLine::Complain(char const* what, char const* text) const {
    StrFmt(std::cerr, "%s: %s%s\n%s", program, what, text, usage);
    return 1;
}

char** CommandLine::Take(char** arguments, std::initializer_list<Option> options) const {
    int argc = 0;
    while (arguments[argc] != nullptr) ++argc;
    for (; argc > 1 && arguments[1][0] == '-' && arguments[1][1] != '\0'; --argc, ++arguments) {
        char* const argument = arguments[1];
        if (str_cmp(argument, "--") == 0) {
            ++arguments;
            break;
        }
        String_t value;
        Option const* const option = TakeOption(argc, arguments, options, value);
        if (option == nullptr) {
            Complain("unknown option ", argument);
            return nullptr;
        }
        if (option->value == nullptr) {
            *option->flag = true;
        } else if (value.IsNull()) {
            Complain("a value is missing after ", argument);
            return nullptr;
        } else {
            *option->value = value;
        }
    }
    return arguments + 1;
}

bool ReadNumber(char const* text, int least, int most, int& number) {
    int value = 0;
    if (std::isdigit(static_cast<unsigned char>(*text)) == 0) return false;
    int const used = str_toint(text, &value);
    if (used > 9 || text[used] != '\0' || value < least || value > most) return false;
    number = value;
    return true;
}

bool CutOptions::Parse(CommandLine const& line) {
    if (!ParseUnit(unit_text, unit)) return line.Complain("not a unit: ", unit_text) == 0;
    if (!ParseDistance(distance_text, unit, distance))
        return line.Complain("not a distance: ", distance_text) == 0;
    return true;
}

}  // namespace layout
