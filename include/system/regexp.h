// Regexp: a compiled regular expression of the platform, with the text of its last error.
//
// Not synchronised: matching stores its result.
#ifndef KORBASE_SYSTEM_REGEXP_H
#define KORBASE_SYSTEM_REGEXP_H

#include <korbase_api.h>
#include <regex.h>
#include <text/string.h>

class KORBASE_API Regexp {
public:
    // Compiles `pattern`, null as "", with the flags of regcomp; 0 is a basic expression.
    explicit Regexp(char const* pattern, int flags = 0);
    ~Regexp();
    Regexp(Regexp const&) = delete;
    Regexp& operator=(Regexp const&) = delete;

    // Searches `text`, null as "", with the flags of regexec. Returns 0 when it matches, else the
    // code of regexec (REG_NOMATCH), or that of a compilation that failed. A match stores the
    // byte offsets of its ends in `whole`, if given, unless compiled with REG_NOSUB.
    int Match(char const* text, regmatch_t* whole = nullptr, int flags = 0);

    // The code of the compilation or of the last match; 0 is success.
    int Error() const { return error; }
    // The platform's text for it, at most 1023 characters.
    String_t ErrorString() const;

private:
    regex_t compiled;
    int compileError;
    int error;
};

#endif
