#include "system/spawn.h"

#include "tests/system/processes.h"

using Spawn = ProcessTest;
using namespace std::string_literals;

TEST_F(Spawn, RunsToTheEnd) {
    for (auto [argc, args, want, text] :
         {std::tuple(2, "echo\0a b"s, 0, "a b\n"),
          {1, "no-such\0x"s, ENOENT, "no-such: No such file or directory\n"},
          {-5, "echo"s, EFAULT, "Bad address\n"},
          {255, "true" + std::string(254, '\0'), 0, ""},
          {256, "true"s, EINVAL, "argument buffer overflow, 256\n"}}) {
        EXPECT_EQ(want, InChild([&n = argc, &a = args] { return spawn_(&n, a.data()); }));
        EXPECT_EQ(text, out) << args;
    }
    EXPECT_EQ(3, shcmd_("exit 3"));
}

TEST_F(Spawn, LeavesDefaultActionsAndNoOtherChild) {
    EXPECT_EQ(0, InChild([] {
                  for (int sig : {SIGINT, SIGQUIT}) signal(sig, [](int) { _exit(3); });
                  if (fork() == 0) _exit(1);  // ends, and is discarded, while the program runs
                  int argc = 3;
                  char args[] = "sh\0-c\0sleep 0.1; kill -INT $PPID; kill -QUIT $PPID; exit 4";
                  if (spawn(&argc, args) != 4 || waitpid(-1, nullptr, WNOHANG) != -1) return 1;
                  return signal(SIGINT, SIG_IGN) || signal(SIGQUIT, SIG_IGN) ? 2 : 0;  // SIG_DFL
              }));
}
