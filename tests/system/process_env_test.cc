#include <cstdlib>

#include "processes.h"
#include "system/process.h"

using ProcessEnv = ProcessTest;

TEST_F(ProcessEnv, KeepsTheFirstZone) {
    // c: ClearEnv, m: MinEnv, -: unset TZ, anything else: set TZ to that.
    std::pair<char const*, char const*> const rows[] = {{"c", "OLD= "},
                                                        {"AcBc", "TZ=A "},
                                                        {"cAc", "TZ=A "},
                                                        {"Ac-c", ""},
                                                        {"m", "PATH=/usr/bin:/bin "},
                                                        {"mAmBm", "PATH=/usr/bin:/bin TZ=A "},
                                                        {"Am-m", "PATH=/usr/bin:/bin "},
                                                        {"AcBm", "PATH=/usr/bin:/bin TZ=B "}};
    for (auto const& [steps, want] : rows) {
        InChild([steps = steps] {
            clearenv();
            setenv("OLD", "", 1);
            for (char const* step = steps; *step; ++step) {
                char const zone[] = {*step, '\0'};
                switch (*step) {
                    case 'c': Process::ClearEnv(); break;
                    case 'm': Process::MinEnv(); break;
                    case '-': unsetenv("TZ"); break;
                    default: setenv("TZ", zone, 1);
                }
            }
            for (char** entry = environ; *entry; ++entry) std::printf("%s ", *entry);
            return 0;
        });
        EXPECT_EQ(want, out) << steps;
    }
}
