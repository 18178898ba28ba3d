#include "system/userdir.h"

#include <pwd.h>
#include <unistd.h>

#include <cerrno>
#include <cstdio>
#include <cstdlib>
#include <ctime>
#include <initializer_list>

#include "text/str_text.h"

namespace {

bool IsUsable(char const* directory) { return access(directory, R_OK | X_OK) == 0; }

}  // namespace

char const* TalDir() {
    char const* const chosen = std::getenv("TALDIR");
    if (chosen && IsUsable(chosen)) return chosen;
    for (char const* directory : {"/opt/tal", "/usr/local/tal", "/usr/tal", "/tal"})
        if (IsUsable(directory)) return directory;
    return ".";
}

int GetHomeDir(char* buf, unsigned int size) {
    if (!buf || size == 0) return EINVAL;
    *buf = '\0';
    passwd const* const user = getpwuid(getuid());
    if (user) str_lcpy(buf, user->pw_dir, size);
    endpwent();
    return user ? 0 : ENOENT;
}

char const* getusername() {
    passwd const* const user = getpwuid(geteuid());
    return user && user->pw_name ? user->pw_name : "";
}

char const* getuname() {
    static char name[64];
    std::time_t const now = std::time(nullptr);
    if (std::tm const* const t = std::localtime(&now))
        std::snprintf(name, sizeof name, "%2.2d%3.3d%2.2d%2.2d%2.2d", t->tm_year, t->tm_yday,
                      t->tm_hour, t->tm_min, t->tm_sec);
    return name;
}
