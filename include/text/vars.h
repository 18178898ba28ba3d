// Vars: a table of named texts, and their substitution in text.
#ifndef KORBASE_TEXT_VARS_H
#define KORBASE_TEXT_VARS_H

#include <korbase_api.h>
#include <text/string.h>

#include <generic/tmap>
#include <generic/tvarr>

// A reference is the marker and a name of letters, digits and '_', or the marker and any name in
// braces: $name, ${name}. Positional variables have the decimal text of their number as name. A
// table belongs to one thread at a time.
class KORBASE_API Vars {
public:
    // A table without variables. '\0' marks nothing.
    explicit Vars(char marker = '$') : marker(marker) {}

    // Sets a variable, new or not; the value may be null.
    void Add(String_t const& name, String_t const& value);
    // Sets the positional variable `n`.
    void Add(int n, char const* value);

    // Sets the variables of a list such as "a=1:b=$a:text". Its pieces, between colons and not
    // empty, are numbered from 1. NAME=VALUE sets NAME; a piece without "=" sets the positional
    // variable of its number. White space before a piece or a VALUE is dropped. References in
    // values see the variables set before; unknown ones vanish. Nothing for null.
    void Add(char const* settings);

    // The value of a variable, valid until the table goes; null when there is none.
    String_t const* Find(String_t const& name) const { return vars.Find(name); }

    // Puts `text`, which is not in `out`, with its references replaced and a terminator into `out`
    // in place of what was there. Returns the buffer of `out`. Values are not substituted again.
    //
    // A reference to an unknown name vanishes, or stays as it was written if `keepUnknown` is not
    // 0. A marker without a name stays, so "${}" gives "$"; a name that is not closed ends with the
    // text. Kept: a '}' behind a name without braces is dropped.
    char* Substitute(TVarr<char>& out, char const* text, int keepUnknown) const;

private:
    TMap<String_t, String_t, GStringCmp> vars;
    char marker;
};

#endif
