#include "exchange/server.h"

#include <fcntl.h>
#include <net/pollfd.h>
#include <netdb.h>
#include <signal.h>
#include <sys/wait.h>
#include <system/process.h>
#include <system/sigblock.h>
#include <text/str.h>
#include <unistd.h>

#include <cerrno>
#include <cstring>
#include <generic/tsortedvector>
#include <iostream>
#include <new>
#include <string>
#include <utility>

#include "exchange/connection.h"
#include "exchange/messages.h"

namespace exchange {
namespace {

// How children exit.
enum : int { kServed = 0, kFailed = 1, kToldToStop = 2 };

// The pipe that signals write to, so that poll sees them.
int wake_fds[2] = {-1, -1};
volatile sig_atomic_t end_signal = 0;

extern "C" void Wake(int signal_number) {
    int const reason = errno;
    if (signal_number != SIGCHLD) end_signal = signal_number;
    char const byte = 0;
    // A pipe that is full wakes as well.
    [[maybe_unused]] ssize_t const written = write(wake_fds[1], &byte, 1);
    errno = reason;
}

constexpr int kSignals[] = {SIGCHLD, SIGTERM, SIGINT};

void SetHandlers(void (*handler)(int)) {
    struct sigaction action = {};
    action.sa_handler = handler;
    action.sa_flags = SA_RESTART | SA_NOCLDSTOP;
    for (int const signal_number : kSignals) sigaction(signal_number, &action, nullptr);
}

bool CatchSignals() {
    if (wake_fds[0] < 0 && pipe2(wake_fds, O_CLOEXEC | O_NONBLOCK) != 0) return false;
    // Whoever started us may have blocked them: the end of the scope lets them through.
    SigBlock const block(SIGCHLD, SIGTERM, SIGINT, 0);
    SetHandlers(Wake);
    IgnoreSigPipe();
    return true;
}

// An errno value, or a code of the resolver.
char const* ErrorText(int error) { return error < 0 ? gai_strerror(error) : str_error(error); }

// The other end: an address, or of a local socket, the process.
String_t NameOf(int fd) {
    SockIO::SockAddr address;
    if (ServerSocketIn::GetCaller(fd, address) == 0 && address.Family() != AF_UNIX)
        return address.ToString();
    ucred process = {};
    socklen_t size = sizeof process;
    if (getsockopt(fd, SOL_SOCKET, SO_PEERCRED, &process, &size) != 0) return "a client";
    return ("process " + std::to_string(process.pid)).c_str();
}

// Answers the requests that come over `fd` until the client closes. Whether it has asked the server
// to end. Throws a SockIO exception if the client is too slow, vanishes inside a request or breaks
// the rules.
bool Serve(int fd, unsigned seconds) {
    Connection client(fd, seconds);
    layout::Record record;
    layout::Shape shape;
    gu_coord_t distance = 0;
    Request request;
    while ((request = ReadRequest(client.In(), record, distance)) == Request::kCut)
        WriteAnswer(client.Out(), shape, shape.Make(record, distance));
    if (request == Request::kStop) WriteStop(client.Out());
    return request == Request::kStop;
}

}  // namespace

bool Server::ListenIn(String_t const& host, int first_port, int last_port) {
    std::string where = (host.IsEmpty() ? "*" : host.Get());
    where += (first_port == last_port ? " port " : " ports ") + std::to_string(first_port);
    if (first_port != last_port) where += "-" + std::to_string(last_port);
    return Listen(std::make_unique<ServerSocketIn>(first_port, last_port, host), where.c_str());
}

bool Server::ListenUn(String_t const& path) {
    return Listen(std::make_unique<ServerSocketUn>(path), path);
}

bool Server::Listen(std::unique_ptr<ServerSocketBase> socket, String_t const& where) {
    // A local socket would let only a few clients wait until they are accepted, and refuse others.
    if (!CatchSignals() || socket->Listen(1) < 0 || listen(socket->Fd(), SOMAXCONN) != 0) {
        Complain("cannot listen on " + where + ": " + ErrorText(errno));
        return false;
    }
    listener = std::move(socket);
    return true;
}

// In one piece, since children complain at the same time.
void Server::Complain(String_t const& what) const {
    std::cerr << (String_t(program) + ": " + what + "\n").Get();
}

void Server::Run() {
    bool can_accept = true;
    while (end_signal == 0 && !stopped) {
        // What keeps us from accepting may last: not at once again.
        bool const waiting = Wait(can_accept);
        Reap();
        can_accept = !waiting || stopped || AcceptClient();
    }
    End();
}

// Until a signal comes, or a client if they are waited for (a second otherwise). Whether there is
// a client.
bool Server::Wait(bool for_clients) {
    TSortedVector<SockIO::PollFd, SockIO::PollFd::Compare> fds(2);
    fds.Insert(SockIO::PollFd(wake_fds[0], POLLIN));
    if (for_clients) fds.Insert(SockIO::PollFd(listener->Fd(), POLLIN));
    if (poll(fds.Get(), fds.Len(), for_clients ? -1 : 1000) <= 0) return false;
    char bytes[256];
    while (read(wake_fds[0], bytes, sizeof bytes) > 0) continue;
    SockIO::PollFd const* const socket = fds.Find(SockIO::PollFd(listener->Fd()));
    return socket != nullptr && socket->revents != 0;
}

// False if the system lacks what it takes.
bool Server::AcceptClient() {
    int const fd = listener->Accept(1);
    if (fd < 0) {
        bool const gone = errno == ECONNABORTED || errno == ETIMEDOUT || errno == EAGAIN ||
                          errno == EINTR || errno == EPROTO;
        if (!gone) Complain(String_t("cannot accept: ") + str_error(errno));
        return gone;
    }
    bool const started = StartChild(fd);
    close(fd);
    return started;
}

bool Server::StartChild(int fd) {
    String_t const client = NameOf(fd);
    // Until the child has put its handlers back, a signal to it would be one to us.
    SigBlock const block(SIGCHLD, SIGTERM, SIGINT, 0);
    Process const child = Process::Fork();
    if (child.Pid() == 0) {
        SetHandlers(SIG_DFL);
        sigset_t none;
        sigemptyset(&none);
        sigprocmask(SIG_SETMASK, &none, nullptr);
        RunChild(fd, client);
    }
    if (child.Pid() < 0) {
        Complain(client + ": no process: " + str_error(errno));
        return false;
    }
    children[child.Pid()] = client;
    return true;
}

// Nothing of the parent is undone here: the socket's file is still in use.
void Server::RunChild(int fd, String_t const& client) {
    close(listener->Fd());
    int result = kFailed;
    try {
        result = Serve(fd, seconds) ? kToldToStop : kServed;
    } catch (SockIO::BaseException const& error) {
        Complain(client + ": " + error.ToString());
    } catch (std::bad_alloc const&) {
        Complain(client + ": out of memory");
    }
    _exit(result);
}

void Server::Reap() {
    int status = 0;
    for (pid_t pid; (pid = waitpid(-1, &status, WNOHANG)) > 0;) {
        auto const child = children.find(pid);
        if (child == children.end()) continue;  // not one of ours
        if (WIFSIGNALED(status))
            Complain(child->second + ": ended by signal " +
                     std::to_string(WTERMSIG(status)).c_str());
        else if (WEXITSTATUS(status) == kToldToStop)
            stopped = true;
        children.erase(child);
    }
}

void Server::End() {
    listener->Close();
    for (auto const& child : children) Process(child.first).Kill(SIGTERM);
    for (auto const& child : children) Process(child.first).WaitFor();
    children.clear();
}

}  // namespace exchange
