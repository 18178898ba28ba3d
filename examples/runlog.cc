// Runs a command and copies what it prints, with the time in front of each line:
//
//   runlog [-t SECONDS] [-o FILE] COMMAND [ARGUMENT...]
//
// Standard output and standard error of the command go to FILE, or to standard output without one.
// After SECONDS (2.5, 500m) the command is sent SIGTERM, and SIGKILL two seconds later.
//
// Ends with the exit code of the command, 128 + N if signal N ended it, 127 if it cannot be run,
// 125 if runlog itself fails. Output of processes that the command leaves behind is not waited for.
#include <fcntl.h>
#include <poll.h>
#include <signal.h>
#include <sys/wait.h>
#include <system/fdstream.h>
#include <system/filedescriptor.h>
#include <system/process.h>
#include <text/str.h>
#include <unistd.h>

#include <algorithm>
#include <cerrno>
#include <chrono>
#include <cmath>
#include <cstdio>
#include <ctime>
#include <iostream>

namespace {

using Clock = std::chrono::steady_clock;

constexpr int kOwnFailure = 125, kNotRun = 127;
constexpr std::chrono::milliseconds kLook(100);  // how often a silent command is looked at

struct Options {
    double seconds = 0;  // 0: no limit
    char const* file = nullptr;
    char** command = nullptr;
};

int Complain(char const* what, char const* text = "") {
    std::cerr << "runlog: " << what << text << '\n'
              << "usage: runlog [-t SECONDS] [-o FILE] COMMAND [ARGUMENT...]\n";
    return kOwnFailure;
}

int Fail(char const* what, char const* name = "") {
    std::cerr << "runlog: " << what << name << ": " << str_error(errno) << '\n';
    return kOwnFailure;
}

// 0, or the exit code after a complaint. Options end at the first other argument, or at "--".
int ParseOptions(char** arg, Options& options) {
    for (; *arg && **arg == '-'; ++arg) {
        char const* const option = *arg;
        if (str_cmp(option, "--") == 0) {
            ++arg;
            break;
        }
        if (option[1] != 't' && option[1] != 'o') return Complain("unknown option ", option);
        char const* const value = option[2] ? option + 2 : *++arg;
        if (!value) return Complain("a value is missing after ", option);
        if (option[1] == 'o') {
            options.file = value;
            continue;
        }
        int const used = str_ctodouble(value, &options.seconds);
        if (used <= 0 || value[used] || !(options.seconds > 0 && options.seconds <= 1e6))
            return Complain("not a time limit: ", value);
    }
    options.command = arg;
    return *arg ? 0 : Complain("no command given");
}

// In the child: becomes the command, with `output` in the place of what it prints to.
[[noreturn]] void Run(char** command, int output) {
    int const complaints = fcntl(2, F_DUPFD_CLOEXEC, 3);
    TVarr<char*> argv;
    for (char** arg = command; *arg; ++arg) argv.App(*arg);
    if (FileDescriptor::Redirect(1, output) == 1 && FileDescriptor::Redirect(2, output) == 2)
        Process::Exec(argv);
    dprintf(complaints, "runlog: cannot run %s: %s\n", *command, str_error(errno));
    _exit(kNotRun);
}

// Copies text, with the time at which each line began.
class Stamper {
public:
    explicit Stamper(std::ostream& out) : out(out) {}
    void Copy(char const* text, std::size_t count) {
        for (char const *end = text + count, *line; text != end; text = line) {
            if (at_start) Stamp();
            line = std::find(text, end, '\n');
            at_start = line != end;
            if (at_start) ++line;
            out.write(text, line - text);
        }
        out.flush();
    }
    void End() {
        if (!at_start) out << std::endl;
    }

private:
    void Stamp() {
        auto const now = std::chrono::system_clock::now();
        std::time_t const seconds = std::chrono::system_clock::to_time_t(now);
        auto const since = now - std::chrono::system_clock::from_time_t(seconds);
        auto const ms = std::chrono::duration_cast<std::chrono::milliseconds>(since).count();
        std::tm parts;
        char text[40], fraction[8];
        std::strftime(text, sizeof text, "%Y-%m-%d %H:%M:%S", localtime_r(&seconds, &parts));
        std::snprintf(fraction, sizeof fraction, ".%03d  ", static_cast<int>(ms % 1000));
        out << text << fraction;
    }

    std::ostream& out;
    bool at_start = true;
};

// The signals to come, each at its time.
class Limit {
public:
    explicit Limit(double seconds) {
        if (seconds > 0) at = Clock::now() + std::chrono::milliseconds(std::llround(seconds * 1e3));
    }
    // Sends what is due, and returns how many milliseconds to wait for anything else.
    int Enforce(Process& child) {
        auto const now = Clock::now();
        if (now >= at) {
            child.Kill(next);
            at = next == SIGTERM ? now + std::chrono::seconds(2) : Clock::time_point::max();
            next = SIGKILL;
        }
        auto const left = std::chrono::ceil<std::chrono::milliseconds>(at - now);
        return static_cast<int>(std::min(left, kLook).count());
    }

private:
    Clock::time_point at = Clock::time_point::max();
    int next = SIGTERM;
};

bool HasEnded(Process const& child) {
    siginfo_t info = {};
    return waitid(P_PID, static_cast<id_t>(child.Pid()), &info, WEXITED | WNOHANG | WNOWAIT) == 0 &&
           info.si_pid != 0;
}

// Until the command has closed its output, or has ended and there is no more to read.
void CopyOutput(int input, Process& child, double seconds, std::ostream& out) {
    Limit limit(seconds);
    Stamper stamper(out);
    char text[8192];
    while (out) {
        bool const ended = HasEnded(child);
        pollfd ready = {input, POLLIN, 0};
        int const events = poll(&ready, 1, ended ? 0 : limit.Enforce(child));
        if (events == 0 && ended) break;
        if (events <= 0) continue;
        ssize_t const count = read(input, text, sizeof text);
        if (count <= 0) break;
        stamper.Copy(text, static_cast<std::size_t>(count));
    }
    stamper.End();
    while (out && !HasEnded(child)) poll(nullptr, 0, limit.Enforce(child));
}

}  // namespace

int main(int argc, char* argv[]) {
    Options options;
    if (int const bad = ParseOptions(argv + (argc > 0), options)) return bad;

    std::ofdstream out;
    if (options.file)
        out.open(options.file, std::ios_base::trunc);
    else
        out.attach(fcntl(1, F_DUPFD_CLOEXEC, 3));
    if (!out) return Fail("cannot write ", options.file ? options.file : "standard output");

    signal(SIGCHLD, SIG_DFL);  // if ignored by whoever started us, there is no exit code
    int ends[2];
    if (pipe2(ends, O_CLOEXEC) != 0) return Fail("no pipe");
    Process child = Process::Fork();
    if (child.Pid() == 0) Run(options.command, ends[1]);
    if (child.Pid() == -1) return Fail("no process");
    close(ends[1]);

    CopyOutput(ends[0], child, options.seconds, out);
    close(ends[0]);
    if (!out) child.Kill(SIGKILL);
    out.close();
    int const result = child.WaitFor();
    if (!out) return Fail("cannot write ", options.file ? options.file : "standard output");
    return result < 0 ? 128 - result : result;
}
