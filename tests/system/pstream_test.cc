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
    EXPECT_EQ(1, InChild([] {
                  close(0);  // the read end becomes 0, and is closed as such
                  opstream to("cat");
                  return to.close(), to.fail();
              }));
}

TEST_F(PipeStream, FailsWhenClosedOrOpenedTwice) {
    opstream twice("cat");
    twice.open("cat");
    EXPECT_TRUE(twice.fail());
    twice.close();
    EXPECT_GT(waitpid(-1, nullptr, 0), 0);  // the first command has been forgotten
    ipstream in("false");
    in.exceptions(std::ios_base::failbit);  // not from the destructor
    int const number = in.rdbuf()->fd();
    EXPECT_EQ(FD_CLOEXEC, fcntl(number, F_GETFD));  // not for programs of other threads
    in.basic_ifdstream::close();
    ASSERT_EQ(number, dup2(0, number));
    EXPECT_THROW(in.close(), std::ios_base::failure);
    EXPECT_FALSE(IsOpen(number)) << "the number is closed twice";
}
