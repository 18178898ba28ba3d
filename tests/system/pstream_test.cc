#include "system/pstream.h"

#include "tests/system/processes.h"

using PipeStream = ProcessTest;

TEST_F(PipeStream, ReadsTheOutputAndReportsTheEnd) {
    int const not_for_commands = dup(0);
    char const* const rows[][2] = {{"echo  'a\tb' ", "'a b'\n"},
                                   {"none", ""},
                                   {" ", ""},
                                   {"ls /proc/self/fd", "0\n1\n2\n3\n"}};
    for (auto const& [command, want] : rows) {
        ipstream in(command);
        std::string const text(std::istreambuf_iterator<char>(in), {});
        in.close();
        EXPECT_TRUE(text == want && in.fail() == text.empty()) << command;
    }
    close(not_for_commands);
}

TEST_F(PipeStream, WritesTheInputAndWaits) {
    std::string const big(300000, 'x');
    WriteFile("script", "cat >early; sleep 0.1; mv early late; exit $1");
    opstream to("sh script 5"), other("cat");  // does not hold the first's pipe
    to << big;
    to.close();
    EXPECT_TRUE(to.fail() && big == ReadFile("late"));
    opstream("sh script 0") << "short";  // the destructor waits, too
    EXPECT_EQ("short", ReadFile("late"));
}
