// Starting a program and waiting for its end, in small and big processes, beside posix_spawn.
#include "system/process.h"

#include <benchmark/benchmark.h>
#include <fcntl.h>
#include <spawn.h>
#include <sys/mman.h>
#include <sys/wait.h>
#include <unistd.h>

#include <cstring>

namespace {

bool StartKorbase() { return Process::Execute("/bin/true").WaitFor() == 0; }

bool StartPosix() {
    char name[] = "/bin/true";
    char* const argv[] = {name, nullptr};
    pid_t pid;
    int status;
    return posix_spawnp(&pid, name, nullptr, nullptr, argv, environ) == 0 &&
           waitpid(pid, &status, 0) == pid && status == 0;
}

// With range(0) MiB of resident memory.
template <bool (*start)()>
void BM_Memory(benchmark::State& state) {
    auto const bytes = static_cast<std::size_t>(state.range(0)) << 20;
    void* const memory = bytes == 0 ? nullptr
                                    : mmap(nullptr, bytes, PROT_READ | PROT_WRITE,
                                           MAP_PRIVATE | MAP_ANONYMOUS, -1, 0);
    if (memory == MAP_FAILED) return state.SkipWithError("no memory");
    madvise(memory, bytes, MADV_NOHUGEPAGE);  // a page table entry for each 4 KiB
    if (memory) std::memset(memory, 1, bytes);
    for (auto _ : state)
        if (!start()) return state.SkipWithError("not started");
    if (memory) munmap(memory, bytes);
}
BENCHMARK_TEMPLATE(BM_Memory, StartKorbase)
    ->Name("start a program, MiB resident/korbase")
    ->Arg(0)
    ->Arg(1024)
    ->UseRealTime();
BENCHMARK_TEMPLATE(BM_Memory, StartPosix)
    ->Name("start a program, MiB resident/posix_spawn")
    ->Arg(0)
    ->Arg(1024)
    ->UseRealTime();

// With range(0) descriptors open, which we close in the child and posix_spawn leaves to it.
template <bool (*start)()>
void BM_Descriptors(benchmark::State& state) {
    int const first = dup(0);
    for (int fd = first + 1; fd < first + state.range(0); ++fd)
        if (dup2(0, fd) != fd) return state.SkipWithError("too many descriptors");
    for (auto _ : state)
        if (!start()) return state.SkipWithError("not started");
    for (int fd = first; fd < first + state.range(0); ++fd) close(fd);
}
BENCHMARK_TEMPLATE(BM_Descriptors, StartKorbase)
    ->Name("start a program, descriptors open/korbase")
    ->Arg(1000)
    ->UseRealTime();
BENCHMARK_TEMPLATE(BM_Descriptors, StartPosix)
    ->Name("start a program, descriptors open/posix_spawn")
    ->Arg(1000)
    ->UseRealTime();

}  // namespace
