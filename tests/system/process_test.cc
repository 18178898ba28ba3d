#include "system/process.h"

#include <atomic>
#include <functional>
#include <thread>

#include "system/sigblock.h"
#include "tests/system/processes.h"

using P = Process;
using ProcessStart = ProcessTest;
using ProcessWait = ProcessTest;
using ProcessThreads = ProcessTest;

template <class T>
static TVarr<T> Array(std::vector<char const*> const& texts) {
    TVarr<T> array(1);
    for (char const* text : texts) array.App(const_cast<char*>(text));
    return array;
}

static int Wait(Process child) { return child.WaitFor(); }

static int Shell(char const* command) { return Wait(P::Execute("sh", "-c", command)); }

TEST_F(ProcessStart, EveryFormPassesItsArguments) {
    auto strings = Array<String_t>({"printf", "[%s]", "a", nullptr, "b"});
    auto paths = Array<String_t>({"/usr/bin/env"}), env = Array<String_t>({"A=1", "B=2"});
    char command[] = "printf [%s]  a\t\"b  c\"\t ";  // not const: still a command, not an Arg
    std::pair<std::function<int()>, char const*> const rows[] = {
        {[&] { return Wait(P::Execute(strings)); }, "[a]"},
        {[&] { return Wait(P::Execute(command)); }, "[a][\"b][c\"]"},
        {[&] { return Wait(P::Execute("ls", "/proc/self/fd")); }, "0\n1\n2\n3\n"},  // 3: folder
        {[&] {
             return Wait(P::Execute("printf", "%s %s", 'b', {255, 2}));
         },
         "b ff"},
        {[&] { return P::Exec(strings); }, "[a]"},
        {[&] { return P::Exec("printf [%s] a b"); }, "[a][b]"},
        {[&] { return P::Exec("echo", "1", "2", "3", "4", "5", "6", "7", "8", "9"); },
         "1 2 3 4 5 6 7 8 9\n"},
        {[&] { return P::Exec(paths, env); }, "A=1\nB=2\n"}};
    int const not_for_programs = dup(0);
    for (auto const& [run, want] : rows) {
        EXPECT_EQ(0, InChild([&run = run] { return chdir("/") || run(); })) << want;
        EXPECT_EQ(want, out);
    }
    close(not_for_programs);
}

TEST_F(ProcessStart, FailuresLeaveTheArrayWithItsEnd) {
    auto argv = Array<char*>({"/none", "x"});
    auto null = Array<String_t>({nullptr, "x"}), env = Array<String_t>({"A=1"});
    EXPECT_EQ(EFAULT, Wait(P::Execute(null)));
    // The child shares our memory: nothing of that shows.
    signal(SIGUSR2, [](int) {});
    errno = 77;
    Process child = P::Execute(argv);
    EXPECT_EQ(77, errno);
    EXPECT_EQ(ENOENT, child.WaitFor());
    sigset_t mask;
    sigprocmask(SIG_BLOCK, nullptr, &mask);
    EXPECT_TRUE(sigisemptyset(&mask));
    EXPECT_NE(SIG_DFL, signal(SIGUSR2, SIG_DFL));
    EXPECT_TRUE(argv.Len() == 3 && !argv[2]);
    EXPECT_TRUE(P::Exec(argv, env) == -1 && errno == ENOENT);
    EXPECT_TRUE(P::Exec("false", env) == -1 && errno == ENOENT) << "no search";
    EXPECT_TRUE(P::Exec("/tmp x") == -1 && errno == EACCES);
    EXPECT_TRUE(P::Exec(null) == -1 && errno == EFAULT);
    EXPECT_TRUE(argv.Len() == 4 && env.Len() == 1);
}

#ifndef __arm__  // the emulator keeps masks to itself
TEST_F(ProcessStart, TheProgramInheritsMaskAndIgnoredSignalsNotHandlers) {
    EXPECT_EQ(SIGUSR1, InChild([] {
                  signal(SIGUSR1, [](int) {});
                  signal(SIGUSR2, SIG_IGN);
                  SigBlock const blocked(SIGHUP);
                  return -Shell("kill -HUP $$; kill -USR2 $$; kill -USR1 $$");
              }));
}
#endif

TEST_F(ProcessWait, ReturnsHowTheChildEnded) {
    WriteFile("script", "exit 6");  // without an interpreter line: for the shell
    fs::permissions("script", fs::perms::owner_all);
    for (auto const& [command, want] :
         {std::pair("./script", 6), {"no-such-program", ENOENT}, {"/tmp", EACCES}})
        EXPECT_EQ(want, Wait(P::Execute(command))) << command;
    Rows<char const*, int, int> const rows = {{"exit 255", 255, 255}, {"kill -KILL $$", -9, 0}};
    for (auto const& [command, ended, value] : rows) {
        Process child = P::Execute("sh", "-c", command);
        EXPECT_EQ(-1, child.Status());
        EXPECT_EQ(ended, child.WaitFor()) << command;
        EXPECT_TRUE(child.ExitValue() == value && child.Pid() == -1 && child.WaitFor() == -1);
    }
    Process child = P::Fork(), none, init(1);
    if (child.Pid() == 0) _exit(child.Status() == -1 && P::Self().Pid() != getppid() ? 7 : 1);
    EXPECT_TRUE(child.Status() == -1 && child.WaitFor() == 7);
    EXPECT_TRUE(none.WaitFor() == -1 && none.Kill(SIGKILL) == -1);
    EXPECT_TRUE(init.WaitFor() == -1 && init.Pid() == 1 && init.Status() == 0) << "not ours";
}

TEST_F(ProcessWait, IsInterruptedByOtherSignalsOnly) {
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

TEST_F(ProcessThreads, StartProgramsAtOnce) {
    std::atomic<int> wrong(0);
    std::vector<std::thread> threads;
    for (int t = 0; t < 3; ++t)
        threads.emplace_back([&, t] {
            for (int code = 10 * t; code < 10 * t + 10; ++code) {
                if (Shell(("exit " + std::to_string(code)).c_str()) != code) ++wrong;
                if (Wait(P::Execute("/none x y")) != ENOENT) ++wrong;
                if (close(open("/dev/null", O_RDONLY)) != 0) ++wrong;
            }
        });
    for (auto& thread : threads) thread.join();
    EXPECT_EQ(0, wrong);
}

TEST(ProcessDeathTest, ArgumentsAreNeeded) {
    char const* const message = R"(generic/tvarr:[0-9]+:.*i < \(arrp-arr\))";
    EXPECT_DEATH(P::Execute(" \t"), message);
}
