#include "system/process.h"
#include "tests/system/processes.h"

using ProcessEnv = ProcessTest;

TEST_F(ProcessEnv, KeepsTheFirstZone) {
    // c: ClearEnv, m: MinEnv, -: unset TZ, anything else: set TZ to that.
    std::string const path = "PATH=/usr/bin:/bin ";
    Rows<char const*, std::string> const rows = {
        {"c", "OLD= "}, {"AcBc", "TZ=A "}, {"mAmBm", path + "TZ=A "}, {"Am-m", path}};
    for (auto const& [steps, want] : rows) {
        InChild([steps = steps] {
            clearenv();
            setenv("OLD", "", 1);
            for (char const step : std::string(steps)) {
                if (step == 'c') Process::ClearEnv();
                if (step == 'm') Process::MinEnv();
                if (step == '-') unsetenv("TZ");
                if (step < 'c' && step != '-') setenv("TZ", std::string(1, step).c_str(), 1);
            }
            for (char** entry = environ; *entry; ++entry) std::printf("%s ", *entry);
            return 0;
        });
        EXPECT_EQ(want, out) << steps;
    }
}
