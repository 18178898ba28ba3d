// Puts the process into a time zone for a scope. Calls no tzset: the code under test has to.
#ifndef KORBASE_TESTS_SYSTEM_TIME_ZONE_H
#define KORBASE_TESTS_SYSTEM_TIME_ZONE_H

#include <stdlib.h>

#include <string>

class TimeZone {
public:
    explicit TimeZone(std::string const& rules) {
        if (char const* const old = getenv("TZ")) before = old;
        setenv("TZ", rules.c_str(), 1);
    }
    ~TimeZone() { before.empty() ? unsetenv("TZ") : setenv("TZ", before.c_str(), 1); }

private:
    std::string before;
};

#endif
