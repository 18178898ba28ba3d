#include "text/options.h"

#include <cstdlib>
#include <cstring>

#include "base/saturate.h"
#include "text/str_text.h"

namespace {

// Whether the second character of `text` is `c`.
bool HasLetter(char const* text, char c) { return text[0] != '\0' && text[1] == c; }

// The rest of an option of one letter, null when it is no longer than "-c".
char const* Attached(char const* option) { return std::strlen(option) > 2 ? option + 2 : nullptr; }

// The first option that `matches`, null when there is none, and the text behind it, if any.
struct Option {
    char const *text, *next;
};

template <class Matches>
Option Search(int argc, char** argv, Matches const& matches) {
    for (int i = 1; i < argc && argv[i]; ++i)
        if (matches(argv[i])) return {argv[i], i + 1 < argc ? argv[i + 1] : nullptr};
    return {nullptr, nullptr};
}

Option Search(int argc, char** argv, char c) {
    return Search(argc, argv, [c](char const* arg) { return arg[0] == '-' && HasLetter(arg, c); });
}

Option Search(int argc, char** argv, char const* name) {
    return Search(argc, argv, [name](char const* arg) { return str_cmp(arg, name) == 0; });
}

// The value of an option of one letter, null when there is none.
char const* LetterValue(Option const& option) {
    char const* const attached = Attached(option.text);
    return attached ? attached : option.next;
}

// Reads as much of `text` as is a number; 1 when that is all of it, 0 otherwise and for null,
// which leaves `value` alone.
int ReadNumber(char const* text, int& value) {
    if (!text) return 0;
    char* end = nullptr;
    value = korbase_detail::SaturateToInt32FromLong(std::strtol(text, &end, 10));
    return end != text && *end == '\0' ? 1 : 0;
}

// The argument after the cursor, null when there is none.
char const* Following(int argc, char** argv) { return argc > 1 ? argv[1] : nullptr; }

// Moves the cursor on and returns the argument after it.
char const* Advance(int& argc, char*** argv) {
    --argc;
    ++*argv;
    return Following(argc, *argv);
}

void SetText(String_t& value, char const* text) {
    if (text) value = text;
}

}  // namespace

int GetOpt(int argc, char** argv, char c) { return Search(argc, argv, c).text ? 1 : 0; }

int GetOpt(int argc, char** argv, char c, String_t& value) {
    Option const option = Search(argc, argv, c);
    if (!option.text) return 0;
    SetText(value, LetterValue(option));
    return 1;
}

int GetOpt(int argc, char** argv, char c, int& value) {
    Option const option = Search(argc, argv, c);
    return option.text ? ReadNumber(LetterValue(option), value) : 0;
}

int GetOpt(int argc, char** argv, char const* name) {
    return Search(argc, argv, name).text ? 1 : 0;
}

int GetOpt(int argc, char** argv, char const* name, String_t& value) {
    Option const option = Search(argc, argv, name);
    SetText(value, option.next);
    return option.next ? 1 : 0;
}

int GetOpt(int argc, char** argv, char const* name, int& value) {
    int number = 0;
    if (!ReadNumber(Search(argc, argv, name).next, number)) return 0;
    value = number;
    return 1;
}

int CheckOpt(int& argc, char*** argv, char c, String_t& value) {
    char const* const option = Following(argc, *argv);
    if (!option || !HasLetter(option, c)) return 0;
    char const* const attached = Attached(option);
    SetText(value, attached ? attached : Advance(argc, argv));
    return 1;
}

int CheckOpt(int& argc, char*** argv, char const* name, String_t& value) {
    char const* const option = Following(argc, *argv);
    if (!option || str_cmp(option, name) != 0) return 0;
    SetText(value, Advance(argc, argv));
    return 1;
}

int CheckOpt(int& argc, char*** argv, char c, int& value, int needValue) {
    char const* const option = Following(argc, *argv);
    if (!option || !HasLetter(option, c)) return 0;
    if (needValue == 0) {
        value = 1;
        return 1;
    }
    char const* const attached = Attached(option);
    return ReadNumber(attached ? attached : Advance(argc, argv), value);
}

int CheckOpt(int& argc, char*** argv, char const* name, int& value, int needValue) {
    char const* const option = Following(argc, *argv);
    if (!option || str_cmp(option, name) != 0) return 0;
    if (needValue == 0) {
        value = 1;
        return 1;
    }
    return ReadNumber(Advance(argc, argv), value);
}
