#include "system/process.h"
#include "tests/system/processes.h"

using ProcessEnv = ProcessTest;

TEST_F(ProcessEnv, KeepsTheFirstZone) {
    // c: ClearEnv, m: MinEnv, -: unset TZ, anything else: set TZ to that.
    std::string const path = "PATH=/usr/bin:/bin ";
    std::pair<char const*, std::string> const rows[] = {{"c", "OLD= "},
                                                        {"AcBc", "TZ=A "},
                                                        {"cAc", "TZ=A "},
                                                        {"mAmBm", path + "TZ=A "},
                                                        {"Am-m", path}};
    for (auto const& [steps, want] : rows) {
        InChild([steps = steps] {
            clearenv();
            setenv("OLD", "", 1);
            for (char const* step = steps; *step; ++step) {
                char const zone[] = {*step, '\0'};
                *step == 'c'   ? Process::ClearEnv()
                : *step == 'm' ? Process::MinEnv()
                               : void(*step == '-' ? unsetenv("TZ") : setenv("TZ", zone, 1));
            }
            for (char** entry = environ; *entry; ++entry) std::printf("%s ", *entry);
            return 0;
        });
        EXPECT_EQ(want, out) << steps;
    }
}
