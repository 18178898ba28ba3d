// What a process that was killed by abort() leaves on standard error.
#ifndef KORBASE_TESTS_SUPPORT_ABORT_TEXT_H
#define KORBASE_TESTS_SUPPORT_ABORT_TEXT_H

#include <string>

// A pattern for `text` and nothing else; an emulator may add its own line about the signal.
inline std::string AbortText(std::string const& text) { return "^" + text + "(qemu: .*\n)?$"; }

#endif
