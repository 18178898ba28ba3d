#include <cstdlib>

#include "processes.h"
#include "system/process.h"

namespace {

class ProcessEnv : public ProcessTest {};

// c: ClearEnv, m: MinEnv, -: unset TZ, anything else: set TZ to that.
void Step(char step) {
    char const zone[] = {step, '\0'};
    switch (step) {
        case 'c': Process::ClearEnv(); break;
        case 'm': Process::MinEnv(); break;
        case '-': unsetenv("TZ"); break;
        default: setenv("TZ", zone, 1);
    }
}

TEST_F(ProcessEnv, KeepsTheFirstZone) {
    std::pair<char const*, char const*> const rows[] = {
        {"c", "OLD="},
        {"Ac", "TZ=A"},
        {"AcBc", "TZ=A"},
        {"cAc", "TZ=A"},
        {"Ac-c", ""},
        {"m", "PATH=/usr/bin:/bin"},
        {"Am", "PATH=/usr/bin:/bin TZ=A"},
        {"mAmBm", "PATH=/usr/bin:/bin TZ=A"},
        {"Am-m", "PATH=/usr/bin:/bin"},
        {"AcBm", "PATH=/usr/bin:/bin TZ=B"}};  // each remembers its own
    for (auto const& [steps, want] : rows) {
        InChild([steps = steps] {
            clearenv();
            setenv("OLD", "", 1);
            for (char const* step = steps; *step; ++step) Step(*step);
            for (char** entry = environ; *entry; ++entry)
                std::printf("%s%s", entry == environ ? "" : " ", *entry);
            return std::fflush(stdout);
        });
        EXPECT_EQ(want, out) << steps;
    }
}

}  // namespace
