#include "system/pstream.h"

#include "tests/system/processes.h"

using PipeStream = ProcessTest;

// A stream that also tells what its command ended with.
template <class Stream>
struct Telling : Stream {
    using Stream::Stream;
    int Finish() {
        this->rdbuf()->close();
        this->fds[0] = -1;
        return this->child.WaitFor();
    }
};

TEST_F(PipeStream, ReadsTheOutputAndReportsTheEnd) {
    int const not_for_commands = dup(0);
    Rows<char const*, std::string, int> const rows = {{"echo  'a\tb' ", "'a b'\n", 0},
                                                      {"ls /proc/self/fd", "0\n1\n2\n3\n", 0},
                                                      {"no-such-program", "", 256 - ENOENT},
                                                      {" \t", "", -SIGABRT}};
    for (auto const& [command, want, code] : rows) {
        std::ostringstream text;
        Telling<ipstream> in(command);
        text << in.rdbuf();
        EXPECT_EQ(want, text.str());
        EXPECT_EQ(code, in.Finish()) << command;
    }
    close(not_for_commands);
}

TEST_F(PipeStream, WritesTheInputAndWaits) {
    std::string const big(300000, 'x');
    WriteFile("script", "cat >early; sleep 0.1; mv early late; exit $1");
    for (std::string const code : {"0", "5"}) {
        opstream to(("sh script " + code).c_str()), other("cat");  // does not hold the first's pipe
        to << big << code;
        to.close();
        EXPECT_EQ(code != "0", to.fail());
        EXPECT_EQ(big + code, ReadFile("late"));
    }
    opstream("sh script 0") << "short";  // the destructor waits, too
    EXPECT_EQ("short", ReadFile("late"));
    EXPECT_EQ(256 - EBADF, InChild([] {
                  close(0);  // the read end becomes 0, and is closed as such
                  return Telling<opstream>("cat").Finish();
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
