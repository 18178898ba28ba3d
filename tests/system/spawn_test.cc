#include "system/spawn.h"

#include "tests/system/processes.h"

using Spawn = ProcessTest;
using namespace std::string_literals;

TEST_F(Spawn, RunsToTheEnd) {
    for (auto [argc, args, want, text] :
         {std::tuple(2, "echo\0a b"s, 0, "a b\n"),
          {1, "no-such\0x"s, ENOENT, "no-such: No such file or directory\n"},
          {256, "true"s, EINVAL, "argument buffer overflow, 256\n"}}) {
        EXPECT_EQ(want, InChild([&n = argc, &a = args] { return spawn_(&n, a.data()); }));
        EXPECT_EQ(text, out) << args;
    }
    EXPECT_EQ(3, shcmd_("exit 3"));
}
