#include "system/process.h"

#include <atomic>
#include <functional>
#include <thread>
#include <vector>

#include "processes.h"
#include "system/sigblock.h"

using Arg = Process::Arg;
using ProcessStart = ProcessTest;
using ProcessWait = ProcessTest;
using ProcessThreads = ProcessTest;

template <class T, class... Values>
static TVarr<T> Array(Values... values) {
    TVarr<T> array(1);
    (array.App(T(values)), ...);
    return array;
}

static char* Text(char const* text) { return const_cast<char*>(text); }

TEST_F(ProcessStart, EveryFormPassesItsArguments) {
    TOList<String_t> list;
    for (char const* text : {"x", "y"}) list.Append(text);
    auto pointers = Array<char*>(Text("printf"), Text("[%s]"), Text("a b"));
    auto strings = Array<String_t>("printf", "[%s]", "a b");
    auto cut = Array<String_t>("printf", "[%s]", "a", nullptr, "b");
    auto paths = Array<String_t>("/usr/bin/env");
    auto env = Array<String_t>("A=1", "B=2"), none = TVarr<String_t>(1);
    char command[] = "printf [%s]  a\t\"b  c\"\t ";  // not const: still a command, not an Arg
    using P = Process;
    std::pair<std::function<int()>, char const*> const rows[] = {
        {[&] { return P::Execute(pointers).WaitFor(); }, "[a b]"},
        {[&] { return P::Execute(strings).WaitFor(); }, "[a b]"},
        {[&] { return P::Execute(cut).WaitFor(); }, "[a]"},
        {[&] { return P::Execute(command).WaitFor(); }, "[a][\"b][c\"]"},
        {[&] { return P::Execute(Arg("pwd")).WaitFor(); }, "/\n"},
        {[&] { return P::Execute("ls", "/proc/self/fd").WaitFor(); }, "0\n1\n2\n3\n"},  // 3: folder
        {[&] {
             return P::Execute("printf", "%s %s ", "a", 'b', {255, 0}, {255, 2}, {1.5, 3, 2}, list,
                               String_t("s"), Arg())
                 .WaitFor();
         },
         "a b 377 ff 1.50 x, y s  "},
        {[&] { return P::Exec(pointers); }, "[a b]"},
        {[&] { return P::Exec(strings); }, "[a b]"},
        {[&] { return P::Exec("printf [%s] a b"); }, "[a][b]"},
        {[&] { return P::Exec("echo", "1", "2", "3", "4", "5", "6", "7", "8", "9"); },
         "1 2 3 4 5 6 7 8 9\n"},
        {[&] { return P::Exec(paths, env); }, "A=1\nB=2\n"},
        {[&] { return P::Exec("/usr/bin/env", none); }, ""}};
    int const not_for_programs = dup(0);
    for (auto const& [run, want] : rows) {
        SCOPED_TRACE(want);
        EXPECT_EQ(0, InChild([&run = run] { return chdir("/") || run(); }));
        EXPECT_EQ(want, out);
    }
    close(not_for_programs);
}

TEST_F(ProcessStart, FailuresLeaveTheArrayWithItsEnd) {
    auto argv = Array<char*>(Text("/none"), Text("x"));
    auto null = Array<String_t>(nullptr, "x"), env = Array<String_t>("A=1");
    EXPECT_EQ(EFAULT, Process::Execute(null).WaitFor());
    // The child shares our memory: nothing of that shows.
    signal(SIGUSR2, [](int) {});
    errno = 77;
    Process child = Process::Execute(argv);
    EXPECT_EQ(77, errno);
    EXPECT_EQ(ENOENT, child.WaitFor());
    sigset_t mask;
    sigprocmask(SIG_BLOCK, nullptr, &mask);
    EXPECT_TRUE(sigisemptyset(&mask));
    EXPECT_NE(SIG_DFL, signal(SIGUSR2, SIG_DFL));
    ASSERT_EQ(3u, argv.Len());
    EXPECT_EQ(nullptr, argv[2]);

    auto const error = [](int result) { return result == -1 ? errno : 0; };
    EXPECT_EQ(ENOENT, error(Process::Exec(argv, env)));
    EXPECT_EQ(ENOENT, error(Process::Exec("true", env)));  // no search
    EXPECT_EQ(EACCES, error(Process::Exec("/tmp x")));
    EXPECT_EQ(EFAULT, error(Process::Exec(null)));
    EXPECT_EQ(4u, argv.Len());
    EXPECT_EQ(1u, env.Len());
}

#ifndef __arm__  // the emulator keeps masks to itself
TEST_F(ProcessStart, TheProgramInheritsMaskAndIgnoredSignalsNotHandlers) {
    int const code = InChild([&] {
        signal(SIGUSR1, [](int) {});
        signal(SIGUSR2, SIG_IGN);
        SigBlock const blocked(SIGHUP);
        char const* const kill_itself = "kill -HUP $$; kill -USR2 $$; kill -USR1 $$";
        return -Process::Execute("sh", "-c", kill_itself).WaitFor();
    });
    EXPECT_EQ(SIGUSR1, code);
}
#endif

TEST_F(ProcessWait, ReturnsHowTheChildEnded) {
    std::ofstream(path) << "exit 6";  // without an interpreter line: for the shell
    std::filesystem::permissions(path, std::filesystem::perms::owner_all);
    struct {
        Arg command;
        int want, value;
    } const rows[] = {{"exit 0", 0, 0}, {"exit 255", 255, 255}, {"kill -KILL $$", -9, 0}};
    for (auto const& row : rows) {
        Process child = Process::Execute("sh", "-c", row.command);
        EXPECT_EQ(-1, child.Status());
        for (int want : {row.want, -1}) {
            EXPECT_EQ(want, child.WaitFor()) << row.command.Str();
            EXPECT_EQ(row.value, child.ExitValue()) << row.command.Str();
            EXPECT_EQ(-1, child.Pid());
        }
    }
    for (auto const& [command, want] :
         {std::pair{path.c_str(), 6}, {"no-such-program", ENOENT}, {"/tmp", EACCES}})
        EXPECT_EQ(want, Process::Execute(command).WaitFor()) << command;
    Process child = Process::Fork();
    if (child.Pid() == 0) _exit(child.Status() == -1 && Process::Self().Pid() != getppid() ? 7 : 1);
    EXPECT_EQ(-1, child.Status());
    EXPECT_EQ(7, child.WaitFor());
}

TEST_F(ProcessWait, FailuresKeepTheHandle) {
    Process none, init(1);
    EXPECT_EQ(-1, none.WaitFor());
    EXPECT_EQ(-1, none.Kill(SIGKILL));
    EXPECT_EQ(-1, init.WaitFor());  // not ours
    EXPECT_EQ(1, init.Pid());
    EXPECT_EQ(0, init.Status());
}

TEST_F(ProcessWait, IsInterruptedByOtherSignalsOnly) {
    EXPECT_EQ(0, InChild([] {
                  struct sigaction action = {};
                  action.sa_handler = [](int) {};  // and no SA_RESTART
                  for (int sig : {SIGTERM, SIGINT, SIGALRM}) sigaction(sig, &action, nullptr);
                  char const* const once = "sleep 0.1; kill -TERM $PPID; kill -INT $PPID; exit 3";
                  if (Process::Execute("sh", "-c", once).WaitFor() != 3) return 1;
                  char const* const often = "while kill -ALRM $PPID; do sleep 0.02; done";
                  Process child = Process::Execute("sh", "-c", often);
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
                String_t const text = String_t("exit ") + std::to_string(code).c_str();
                if (Process::Execute("sh", "-c", text).WaitFor() != code) ++wrong;
                if (Process::Execute("/none x y").WaitFor() != ENOENT) ++wrong;
                if (close(open("/dev/null", O_RDONLY)) != 0) ++wrong;
            }
        });
    for (auto& thread : threads) thread.join();
    EXPECT_EQ(0, wrong);
}

TEST(ProcessDeathTest, ArgumentsAreNeeded) {
    char const* const message = R"(generic/tvarr:[0-9]+:.*i < \(arrp-arr\))";
    TVarr<char*> none;
    EXPECT_DEATH(Process::Execute(none), message);
    EXPECT_DEATH(Process::Execute(" \t"), message);
    EXPECT_DEATH(Process::Exec(static_cast<char const*>(nullptr)), message);
}
