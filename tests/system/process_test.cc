#include "system/process.h"

#include <fcntl.h>
#include <signal.h>
#include <sys/time.h>

#include <atomic>
#include <functional>
#include <thread>
#include <vector>

#include "processes.h"

namespace {

using Arg = Process::Arg;

class ProcessStart : public ProcessTest {};
class ProcessWait : public ProcessTest {};
class ProcessThreads : public ProcessTest {};

template <class T, class... Values>
TVarr<T> Array(Values... values) {
    TVarr<T> array(1);
    (array.App(T(values)), ...);
    return array;
}

char* Text(char const* text) { return const_cast<char*>(text); }

template <class Indexes, class = void>
constexpr bool kCallable = false;
template <std::size_t... i>
constexpr bool kCallable<std::index_sequence<i...>,
                         std::void_t<decltype(Process::Execute((void(i), Arg())...),
                                              Process::Exec((void(i), Arg())...))>> = true;
static_assert(!kCallable<std::make_index_sequence<0>> && kCallable<std::make_index_sequence<1>> &&
              kCallable<std::make_index_sequence<10>> && !kCallable<std::make_index_sequence<11>>);

TEST_F(ProcessStart, EveryFormPassesItsArguments) {
    TOList<String_t> list;
    for (char const* text : {"x", "y"}) list.Append(text);
    auto pointers = Array<char*>(Text("printf"), Text("[%s]"), Text("a b"));
    auto strings = Array<String_t>("printf", "[%s]", "a b");
    auto cut = Array<String_t>("printf", "[%s]", "a", nullptr, "b");
    auto path = Array<char*>(Text("/usr/bin/env"));
    auto paths = Array<String_t>("/usr/bin/env");
    auto env = Array<String_t>("A=1", "B=2"), none = TVarr<String_t>(1);
    char command[] = "printf [%s]  a\t\"b  c\"\t ";  // not const: still a command, not an Arg
    struct {
        std::function<int()> run;
        char const* want;
    } const rows[] = {
        {[&] { return Process::Execute(pointers).WaitFor(); }, "[a b]"},
        {[&] { return Process::Execute(strings).WaitFor(); }, "[a b]"},
        {[&] { return Process::Execute(cut).WaitFor(); }, "[a]"},
        {[&] { return Process::Execute(command).WaitFor(); }, "[a][\"b][c\"]"},
        {[&] { return Process::Execute(Arg("pwd")).WaitFor(); }, "/\n"},
        {[&] {
             return Process::Execute("printf", "%s %s ", "a", 'b', {255, 0}, {255, 2}, {1.5, 3, 2},
                                     list, String_t("s"), Arg())
                 .WaitFor();
         },
         "a b 377 ff 1.50 x, y s  "},
        {[&] { return Process::Exec(pointers); }, "[a b]"},
        {[&] { return Process::Exec(strings); }, "[a b]"},
        {[&] { return Process::Exec("printf [%s] a b"); }, "[a][b]"},
        {[&] { return Process::Exec(Arg("pwd")); }, "/\n"},
        {[&] { return Process::Exec("echo", "1", "2", "3", "4", "5", "6", "7", "8", "9"); },
         "1 2 3 4 5 6 7 8 9\n"},
        {[&] { return Process::Exec(path, env); }, "A=1\nB=2\n"},
        {[&] { return Process::Exec(paths, env); }, "A=1\nB=2\n"},
        {[&] { return Process::Exec("/usr/bin/env", none); }, ""}};
    for (auto const& row : rows) {
        EXPECT_EQ(0, InChild([&] { return chdir("/") || row.run(); })) << "row " << &row - rows;
        EXPECT_EQ(row.want, out) << "row " << &row - rows;
    }
}

TEST_F(ProcessStart, FailuresLeaveTheArrayWithItsEnd) {
    auto argv = Array<char*>(Text("/none"), Text("x"));
    auto null = Array<String_t>(nullptr, "x"), env = Array<String_t>("A=1");
    EXPECT_EQ(ENOENT, Process::Execute(argv).WaitFor());
    EXPECT_EQ(EFAULT, Process::Execute(null).WaitFor());
    ASSERT_EQ(3u, argv.Len());
    EXPECT_EQ(nullptr, argv[2]);
    std::pair<std::function<int()>, int> const rows[] = {
        {[&] { return Process::Exec(argv, env); }, ENOENT},
        {[&] { return Process::Exec("true", env); }, ENOENT},  // no search
        {[&] { return Process::Exec("/tmp x"); }, EACCES},
        {[&] { return Process::Exec(null); }, EFAULT}};
    for (auto const& [exec, error] : rows) {
        EXPECT_EQ(-1, exec());
        EXPECT_EQ(error, errno);
    }
    EXPECT_EQ(4u, argv.Len());
    EXPECT_EQ(1u, env.Len());
}

// The child has shared our memory: nothing of that may show.
TEST_F(ProcessStart, KeepsErrnoMaskAndHandlersOfTheParent) {
    signal(SIGUSR2, [](int) {});
    errno = 77;
    Process child = Process::Execute("/none");
    EXPECT_EQ(77, errno);
    EXPECT_EQ(ENOENT, child.WaitFor());
    sigset_t mask;
    sigprocmask(SIG_BLOCK, nullptr, &mask);
    EXPECT_TRUE(sigisemptyset(&mask));
    EXPECT_NE(SIG_DFL, signal(SIGUSR2, SIG_DFL));
}

#ifndef __arm__  // the emulator keeps masks to itself
TEST_F(ProcessStart, TheProgramInheritsMaskAndIgnoredSignalsNotHandlers) {
    int const code = InChild([&] {
        signal(SIGUSR1, [](int) {});
        signal(SIGUSR2, SIG_IGN);
        sigset_t set;
        sigemptyset(&set);
        sigaddset(&set, SIGHUP);
        sigprocmask(SIG_BLOCK, &set, nullptr);
        return -Process::Execute("sh", "-c", "kill -HUP $$; kill -USR2 $$; kill -USR1 $$")
                    .WaitFor();
    });
    EXPECT_EQ(SIGUSR1, code);
}
#endif

TEST_F(ProcessWait, ReturnsHowTheChildEnded) {
    auto const script = folder + "/script";  // without an interpreter line: for the shell
    std::ofstream(script) << "exit 6";
    std::filesystem::permissions(script, std::filesystem::perms::owner_all);
    struct {
        Arg command;
        int want, value;
    } const rows[] = {{"exit 0", 0, 0},
                      {"exit 3", 3, 3},
                      {"exit 255", 255, 255},
                      {"kill -KILL $$", -9, 0},
                      {"kill -TERM $$", -15, 0}};
    for (auto const& row : rows) {
        Process child = Process::Execute("sh", "-c", row.command);
        EXPECT_GT(child.Pid(), 0);
        EXPECT_EQ(-1, child.Status());
        for (int want : {row.want, -1}) {
            EXPECT_EQ(want, child.WaitFor()) << row.command.Str();
            EXPECT_EQ(row.value, child.ExitValue()) << row.command.Str();
            EXPECT_EQ(-1, child.Pid());
        }
    }
    for (auto const& [command, want] : {std::pair{script.c_str(), 6},
                                        {"no-such-program", ENOENT},
                                        {"/tmp", EACCES},
                                        {"/dev/null/x", ENOTDIR}})
        EXPECT_EQ(want, Process::Execute(command).WaitFor()) << command;
    Process child = Process::Fork();
    if (child.Pid() == 0) _exit(child.Status() == -1 && Process::Self().Pid() != getppid() ? 7 : 1);
    EXPECT_EQ(-1, child.Status());
    EXPECT_EQ(7, child.WaitFor());
}

TEST_F(ProcessWait, FailuresKeepTheHandle) {
    Process none, init(1);
    errno = 77;
    EXPECT_EQ(-1, none.WaitFor());
    EXPECT_EQ(-1, none.Kill(SIGKILL));
    EXPECT_EQ(77, errno);
    EXPECT_EQ(-1, init.WaitFor());  // not ours
    EXPECT_EQ(1, init.Pid());
    EXPECT_EQ(0, init.Status());

    Process child = Process::Execute("sleep 60");
    struct sigaction action = {}, old;
    action.sa_handler = [](int) {};  // and no SA_RESTART
    sigaction(SIGALRM, &action, &old);
    itimerval const often = {{0, 20000}, {0, 20000}}, never = {};
    setitimer(ITIMER_REAL, &often, nullptr);
    EXPECT_EQ(-1, child.WaitFor());
    EXPECT_EQ(EINTR, errno);
    setitimer(ITIMER_REAL, &never, nullptr);
    sigaction(SIGALRM, &old, nullptr);
    EXPECT_EQ(0, child.Kill(SIGTERM));
    EXPECT_EQ(-SIGTERM, child.WaitFor());
}

// Programs started at once by threads while others allocate, take locks and open files.
TEST_F(ProcessThreads, StartProgramsAtOnce) {
    std::atomic<int> running(3), wrong(0);
    std::vector<std::thread> threads;
    for (int t = 0; t < 3; ++t)
        threads.emplace_back([&, t] {
            for (int code = 10 * t; code < 10 * t + 10; ++code) {
                std::string const text = "exit " + std::to_string(code);
                if (Process::Execute("sh", "-c", text.c_str()).WaitFor() != code) ++wrong;
                if (Process::Execute("/none x y").WaitFor() != ENOENT) ++wrong;
            }
            --running;
        });
    for (int t = 0; t < 2; ++t)
        threads.emplace_back([&] {
            while (running > 0) {
                std::vector<String_t> texts(100, String_t("text"));
                for (auto& text : texts) text += "s";
                if (close(open("/dev/null", O_RDONLY)) != 0) ++wrong;
            }
        });
    for (auto& thread : threads) thread.join();
    EXPECT_EQ(0, wrong);
}

TEST(ProcessDeathTest, ArgumentsAreNeeded) {
    char const* const message = R"(generic/tvarr:[0-9]+:.*i < \(arrp-arr\))";
    TVarr<char*> none;
    TVarr<String_t> env;
    EXPECT_DEATH(Process::Execute(none), message);
    EXPECT_DEATH(Process::Exec(none, env), message);
    EXPECT_DEATH(Process::Execute(" \t"), message);
    EXPECT_DEATH(Process::Exec(static_cast<char const*>(nullptr)), message);
}

}  // namespace
