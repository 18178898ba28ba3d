#include "system/regexp.h"

Regexp::Regexp(char const* pattern, int flags)
    : compiled(),
      compileError(regcomp(&compiled, pattern ? pattern : "", flags)),
      error(compileError) {}

Regexp::~Regexp() {
    if (compileError == 0) regfree(&compiled);
}

int Regexp::Match(char const* text, regmatch_t* whole, int flags) {
    if (compileError == 0)
        error = regexec(&compiled, text ? text : "", whole ? 1 : 0, whole, flags);
    return error;
}

String_t Regexp::ErrorString() const {
    char text[1024];
    regerror(error, &compiled, text, sizeof text);
    return String_t(text);
}
