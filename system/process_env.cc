// The environment for programs to be run: Process::ClearEnv and Process::MinEnv.
#include <unistd.h>

#include <cstdlib>

#include "system/process.h"

namespace {

char* Entry(String_t const& text) { return const_cast<char*>(text.Get()); }

}  // namespace

// The entries are never destroyed: the environment is also read while the process ends.

void Process::ClearEnv() {
    char const* const zone = std::getenv("TZ");
    if (!zone) return;
    static String_t const& kept = *new String_t(String_t("TZ=") + zone);
    environ = new char* [2] { Entry(kept), nullptr };
}

void Process::MinEnv() {
    static String_t const& path = *new String_t("PATH=/usr/bin:/bin");
    char const* const zone = std::getenv("TZ");
    if (!zone) {
        environ = new char* [2] { Entry(path), nullptr };
        return;
    }
    static String_t const& kept = *new String_t(String_t("TZ=") + zone);
    environ = new char* [3] { Entry(path), Entry(kept), nullptr };
}
