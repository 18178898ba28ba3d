#include "system/process.h"

#include <functional>
#include <thread>

#include "tests/system/processes.h"

using P = Process;
using Processes = ProcessTest;
using ProcessThreads = ProcessTest;

static TVarr<String_t> Array(std::vector<char const*> const& texts) {
    TVarr<String_t> array(1);
    for (char const* text : texts) array.App(text);
    return array;
}

static int Wait(Process child) { return child.WaitFor(); }
static int Shell(char const* command) { return Wait(P::Execute("sh", "-c", command)); }

TEST_F(Processes, EveryFormPassesItsArguments) {
    auto strings = Array({"printf", "[%s]", "a", nullptr, "b"});
    auto paths = Array({"/usr/bin/env"}), env = Array({"A=1", "B=2"});
    char command[] = "printf [%s]  a\t\"b  c\"\t ";  // not const: still a command, not an Arg
    P::Arg const hex(255, 2);
    Rows<std::function<int()>, char const*> const rows = {
        {[&] { return Wait(P::Execute(strings)); }, "[a]"},
        {[&] { return Wait(P::Execute(command)); }, "[a][\"b][c\"]"},
        {[&] { return Wait(P::Execute("printf", "%s %s", 'b', hex)); }, "b ff"},
        {[&] { return Wait(P::Execute("ls", "/proc/self/fd")); }, "0\n1\n2\n3\n"},  // 3: folder
        {[&] { return P::Exec("echo", "1", "2", "3", "4", "5", "6", "7"); }, "1 2 3 4 5 6 7\n"},
        {[&] { return P::Exec(paths, env); }, "A=1\nB=2\n"}};
    int const not_for_programs = dup(0);
    for (auto const& [run, want] : rows) {
        EXPECT_EQ(0, InChild([&run = run] { return chdir("/") || run(); })) << want;
        EXPECT_EQ(want, out);
    }
    close(not_for_programs);
}

TEST_F(Processes, FailuresLeaveTheArrayWithItsEnd) {
    TVarr<char*> argv(1);
    argv.App(const_cast<char*>("/none"));
    auto null = Array({nullptr, "x"}), env = Array({"A=1"});
    EXPECT_TRUE(Wait(P::Execute(null)) == EFAULT && P::Exec(null) == -1 && errno == EFAULT);
    // The child shares our memory: nothing of that shows.
    signal(SIGUSR2, [](int) {});
    errno = 77;
    Process child = P::Execute(argv);
    EXPECT_TRUE(errno == 77 && child.WaitFor() == ENOENT);
    sigset_t mask;
    sigprocmask(SIG_BLOCK, nullptr, &mask);
    EXPECT_TRUE(sigisemptyset(&mask) && signal(SIGUSR2, SIG_DFL) != SIG_DFL);
    EXPECT_TRUE(P::Exec(argv, env) == -1 && argv.Len() == 3 && env.Len() == 1);
}

TEST_F(Processes, WaitReturnsHowTheChildEnded) {
    WriteFile("script", "exit 6");  // without an interpreter line: for the shell
    fs::permissions("script", fs::perms::owner_all);
    EXPECT_TRUE(Wait(P::Execute("./script")) == 6 && Wait(P::Execute("/tmp")) == EACCES);
    Process killed = P::Execute("sh", "-c", "kill -KILL $$");
    EXPECT_TRUE(killed.Status() == -1 && killed.WaitFor() == -9);
    Process child = P::Fork(), none;
    if (child.Pid() == 0) _exit(child.Status() == -1 && P::Self().Pid() != getppid() ? 7 : 1);
    EXPECT_TRUE(child.Status() == -1 && child.WaitFor() == 7 && child.ExitValue() == 7);
    EXPECT_TRUE(none.WaitFor() == -1 && none.Kill(0) == -1);  // 0: -1 would mean all processes
}

TEST_F(Processes, WaitIsInterruptedByOtherSignalsOnly) {
    EXPECT_EQ(0, InChild([] {
                  struct sigaction action = {};
                  action.sa_handler = [](int) {};  // and no SA_RESTART
                  for (int sig : {SIGTERM, SIGINT, SIGALRM}) sigaction(sig, &action, nullptr);
                  if (Shell("sleep 0.1; kill -TERM $PPID; kill -INT $PPID; exit 3") != 3) return 1;
                  char const* const often = "while kill -ALRM $PPID; do sleep 0.02; done";
                  Process child = P::Execute("sh", "-c", often);
                  if (child.WaitFor() != -1 || errno != EINTR) return 2;
                  signal(SIGALRM, SIG_IGN);
                  return child.Kill(SIGKILL) != 0 || child.WaitFor() != -SIGKILL ? 3 : 0;
              }));
}

TEST_F(Processes, KeepTheFirstZoneInTheirEnvironment) {
    InChild([] {
        for (char const* zone : {"A", "B", "C"}) {
            setenv("TZ", zone, 1);
            *zone < 'C' ? P::ClearEnv() : P::MinEnv();
            for (char** entry = environ; *entry; ++entry) std::printf("%s ", *entry);
        }
        return 0;
    });
    EXPECT_EQ("TZ=A TZ=A PATH=/usr/bin:/bin TZ=C ", out);
}

TEST(ProcessArg, BecomesText) {
    TOList<String_t> none, three;
    for (char const* text : {"a", "b", "c"}) three.Append(text);
    ProcessArg const args[] = {ProcessArg(), 'c',         '\0',        "text",
                               none,         three,       {255, 0},    {-1, 0},
                               {255, 2},     {-1, 2},     {255, 1},    {-1, 16},
                               {1.5, 3, 2},  {1.5, 4, 2}, {1.5, 0, 2}, {1e9, 2, 3}};
    std::string got;
    for (auto const& arg : args) got += arg.Str().Get() + std::string("|");
    EXPECT_EQ("|c||text||a, b, c|377|37777777777|ff|ffffffff|255|-1|1.50|1.50e+00|1.5|1e+09|", got);
}

TEST_F(Processes, CloseDescriptorsFromTheBoundUpwards) {
    EXPECT_EQ(0, InChild([] {
                  for (int fd = 3; fd < 100; ++fd) dup2(2, fd);
                  P::CloseFds(60);
                  for (int fd = 0; fd < 100; ++fd)
                      if (IsOpen(fd) != (fd < 60)) return 1;
                  return 0;
              }));
}

TEST_F(ProcessThreads, StartProgramsAtOnce) {
    auto const start = [] {
        for (int i = 0; i < 10; ++i)
            EXPECT_TRUE(Shell("exit 9") == 9 && Wait(P::Execute("/none x y")) == ENOENT);
    };
    std::thread first(start), second(start);
    start();
    first.join(), second.join();
}
