// Puts the process into a time zone for a scope.
#ifndef KORBASE_TESTS_SYSTEM_TIME_ZONE_H
#define KORBASE_TESTS_SYSTEM_TIME_ZONE_H

#include <stdlib.h>
#include <time.h>

#include <string>

class TimeZone {
public:
    explicit TimeZone(std::string const& rules) {
        char const* const old = getenv("TZ");
        if ((was_set = old)) before = old;
        setenv("TZ", rules.c_str(), 1);
    }
    ~TimeZone() {
        was_set ? setenv("TZ", before.c_str(), 1) : unsetenv("TZ");
        tzset();
    }

private:
    bool was_set;
    std::string before;
};

#endif
