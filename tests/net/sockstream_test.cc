#include "net/sockstream.h"

#include <fcntl.h>
#include <poll.h>
#include <signal.h>
#include <sys/ioctl.h>
#include <sys/socket.h>

#include <thread>

#include "tests/net/scripted_streams.h"
#include "tests/net/sockets.h"
#include "tests/support/test.h"

namespace {

struct SocketPair {
    SocketPair() {
        int fds[2];
        if (socketpair(AF_UNIX, SOCK_STREAM, 0, fds) != 0) abort();
        near.Reset(fds[0]);
        far.Reset(fds[1]);
    }
    int Waiting() const {
        int count = -1;
        ioctl(far.Get(), FIONREAD, &count);
        return count;
    }
    void Say(std::string const& bytes) const {
        ASSERT_EQ(static_cast<ssize_t>(bytes.size()), write(far.Get(), bytes.data(), bytes.size()));
    }
    // What is there.
    std::string Hear() const {
        std::string all;
        char piece[4096];
        for (ssize_t n; (n = recv(far.Get(), piece, sizeof piece, MSG_DONTWAIT)) > 0;)
            all.append(piece, static_cast<std::size_t>(n));
        return all;
    }
    UniqueFd near, far;
};

std::string Numbers(int n) {
    std::string text;
    for (int i = 0; i < n; ++i) text += std::to_string(i) + ' ';
    return text;
}

TEST(OSockStream, SendsWhenFullAndOnRequest) {
    SocketPair pair;
    std::string const text = Numbers(4000).substr(0, 8192);
    {
        OSockStream out(pair.near.Get());
        out.Write(text.data(), 8192);
        EXPECT_EQ(0, pair.Waiting());
        out << 'x';
        EXPECT_EQ(text, pair.Hear());
        out << endm << 1 << endm;
        EXPECT_EQ(5, pair.Waiting());
        EXPECT_EQ(0, out.Flush());
        out << 'y';
        EXPECT_EQ(pair.near.Get(), out.Unbind());  // sends, too
        EXPECT_EQ(6, pair.Waiting());
        out.Bind(pair.near.Get());
        out << 2;
        out.Bind(pair.near.Get());  // discards
        out << 'z';
    }
    EXPECT_EQ(std::string("x\0\0\0\1yz", 7), pair.Hear());
    {
        OSockStream failed(pair.near.Get());
        failed << 3;
        failed.SetFailed();
    }
    EXPECT_EQ(0, pair.Waiting());
}

TEST(SockStreamThreads, FlushesInPieces) {
    signal(SIGPIPE, SIG_IGN);
    int fds[2];
    ASSERT_EQ(0, pipe2(fds, O_NONBLOCK));
    UniqueFd const writer(fds[1]);
    int const room = fcntl(writer.Get(), F_SETPIPE_SZ, 4096);
    ASSERT_EQ(4096, room);
    struct : OSockStream {
        std::string Pending() const { return std::string(base, cur); }
    } out;
    std::string const text = Numbers(4000);
    std::string heard(room, ' ');
    out.Bind(writer.Get());
    out.Timeout(0);
    EXPECT_EQ(room, out.Write(text.data(), 8192).Flush());
    EXPECT_EQ(SockStream::kTimedOut, out.Status());
    EXPECT_EQ(0, out.Flush());
    EXPECT_EQ(room, read(fds[0], heard.data(), heard.size()));
    EXPECT_EQ(text.substr(0, 8192), heard + out.Pending());

    out.Clear(), out.Exceptions(SockStream::kTimedOut);
    EXPECT_THROW(out.Write(text.data(), room).Flush(), SockIO::TimedOut);
    EXPECT_EQ(text.substr(0, 4096), out.Pending());

    out.Clear(), out.Timeout(60);
    EXPECT_EQ(room, read(fds[0], heard.data(), heard.size()));
    out.Write(text.data(), room);
    std::thread reader([end = fds[0]] {
        pollfd data{end, POLLIN, 0};
        poll(&data, 1, -1);
        close(end);
    });
    EXPECT_EQ(-1, out.Flush());
    EXPECT_EQ(EPIPE, errno);
    reader.join();
    EXPECT_EQ(SockStream::kBad, out.Status());
    EXPECT_EQ(text.substr(0, 4096), out.Pending());  // without the part that was sent
}

TEST(ISockStream, ReadsWhatASlowPeerSendsAndToTheEnd) {
    SocketPair pair;
    ISockStream in(pair.near.Get());
    in.Timeout(0);
    int number = 0;
    pair.Say(std::string("\0\0", 2));
    in >> number;
    EXPECT_EQ(SockStream::kTimedOut, in.Clear());
    EXPECT_EQ(2, in.GCount());
    pair.Say(std::string("\0\7abc", 5));
    char text[8] = "-------";
    in.Read(text, 1);  // the rest of what was begun is the caller's to sort out
    EXPECT_EQ(0, in.Clear() | text[0]);
    EXPECT_EQ(-1, in.Fill());
    EXPECT_EQ(ESPIPE, errno);
    EXPECT_EQ(SockStream::kBad, in.Clear());
    EXPECT_EQ(pair.near.Get(), in.Unbind());
    in.Read(text, 3);  // kept
    EXPECT_EQ("\7ab", std::string(text, 3));
    in.Bind(pair.near.Get());
    shutdown(pair.far.Get(), SHUT_WR);
    in.Read(text, 5);  // "c" was discarded
    EXPECT_EQ(0, in.GCount());
    EXPECT_EQ(SockStream::kEof, in.Status());
    EXPECT_EQ(-1, in.Fill());
    OSockStream out(pair.near.Get());
    out << "still" << endm;
    EXPECT_EQ(std::string("still", 6), pair.Hear());
}

TEST(ISockStream, CountsAllItsWaitingThroughSignals) {
    SocketPair pair;
    ISockStream in(pair.near.Get());
    in.Timeout(1);
    Interrupts signals;
    EXPECT_EQ(0, in.Fill());
    EXPECT_EQ(SockStream::kTimedOut, in.Status());
}

TEST(SockStreamThreads, AskBeforeTheyWait) {
    SocketPair pair;
    IOSockStream near(pair.near.Get()), far(pair.far.Get());
    near.Timeout(1u << 29);  // a multiple of 2^32 milliseconds
    std::thread peer([&far] {
        int question = 0;
        far >> question;
        far << question + 1 << endm;
    });
    int answer = 0;
    near << 41;
    near >> answer;
    peer.join();
    EXPECT_EQ(42, answer);
    EXPECT_EQ(pair.near.Get(), near.Unbind());
    near << 1;
    near.Bind(pair.near.Get());
    near << "x";
    near.Unbind();
    EXPECT_EQ(2, pair.Waiting());
}

// One use of a stream, by its letter.
void Use(IOSockStream& stream, char how) {
    int number;
    long big;
    unsigned const mask = stream.Exceptions();
    switch (how) {
        case 'i': stream >> number; break;
        case 'l': stream >> big; break;
        case 'w': stream << 1 << endm; break;
        case 'f': stream.Fill(); break;
        case 'u': stream.Unbind(); break;
        default: stream.Exceptions(0), stream.Fill(), stream.Exceptions(mask);
    }
}

// What has a status bit and, where the exception mask asks for it, an exception.
TEST(SockStreamFailures, RaiseTheirBitAndThrowWhereAsked) {
    signal(SIGPIPE, SIG_IGN);
    UniqueFd const write_only(open("/dev/null", O_WRONLY));
    int const bad = write_only.Get();
    Rows<unsigned, char const*, char const*, int, char const*> const rows = {
        {1, "", "i", 0, "end of input"},
        {1, "", "qf", 0, "end of input"},  // a refill after the end
        {2, "12345678", "l", 0, "protocol error"},
        {4, "", "i", bad, "read/write error, Bad file descriptor"},
        {4, "", "w", 0, "read/write error, Broken pipe"},
        {4, "ab", "ff", 0, "read/write error, Illegal seek"},  // unread bytes
        {4, "", "uw", 0, "read/write error, Bad file descriptor"},
        {4, "", "ui", 0, "read/write error, Bad file descriptor"},
        {8, nullptr, "i", 0, "timed out"}};
    for (auto const& [bits, input, uses, fd, text] : rows) {
        for (bool const loud : {false, true}) {
            SocketPair pair;
            IOSockStream stream(fd == bad ? fd : pair.near.Get());
            stream.Timeout(0);
            if (input) pair.Say(input), pair.far.Reset();
            EXPECT_EQ(0u, stream.Exceptions(loud ? 15 : 0));
            std::string thrown = text;
            try {
                for (char const* use = uses; *use; ++use) Use(stream, *use);
                EXPECT_FALSE(loud) << uses;
            } catch (SockIO::BaseException const& e) {
                thrown = e.ToString();
                EXPECT_EQ(stream.Fd(), e.Code()) << uses;
            }
            EXPECT_EQ(text, thrown) << uses;
            EXPECT_EQ(bits, stream.Status()) << uses;
        }
    }
    {
        SocketPair gone;
        gone.far.Reset();
        OSockStream doomed(gone.near.Get()), left(gone.near.Get());
        (doomed << 1).Exceptions(15);
        (left << 1).Exceptions(15);
        EXPECT_EQ(gone.near.Get(), left.Unbind());
        EXPECT_EQ(SockStream::kBad, left.Status());
    }  // nothing leaves the destructor either

    OSockStream out(-1);
    EXPECT_EQ(0u, out.SetStatus(10));
    EXPECT_EQ(10u, out.SetStatus(5));
    EXPECT_EQ(15u, out.Clear());
    SockStream::exceptions = SockStream::kTimedOut;
    EXPECT_EQ(8u, OSockStream().Exceptions());
    SockStream::exceptions = 0;
}

TEST(ISockStream, ReadsLines) {
    struct {
        char const *input, *term;
        int size;
        char const* want;
        int gcount;
        unsigned status;
        char const* whole;  // by the form without a size
    } const rows[] = {{"ab\ncd", "\n", 10, "ab", 2, 0, "ab"},
                      {"\n", "\n", 10, "", 0, 0, ""},
                      {"ab\r\n", "\r\n", 10, "ab", 3, 0, "ab"},
                      {"a\r\r\nb", "\r\n", 10, "a\r", 3, 0, "a\r"},
                      {"aab", "ab", 10, "a", 2, 0, "a"},
                      {"ab", "\n", 10, "ab", 2, 1, "ab"},
                      {"", "\n", 10, "", 0, 1, ""},
                      {"ab\n", "", 10, "ab\n", 3, 1, "ab\n"},
                      {"ab\n", nullptr, 10, "ab\n", 3, 1, "ab\n"},
                      {"0123456789\n", "\n", 5, "0123", 4, 0, "0123456789"},
                      {"012\n", "\n", 5, "012", 3, 0, "012"},
                      {"ab", "\n", 1, "", 0, 0, "ab"},
                      {"ab", "\n", 0, "#", 0, 0, "ab"},
                      {"ab", "\n", -3, "", 0, 0, "ab"}};
    for (auto const& row : rows) {
        char buf[16] = "#";
        Sink tie;
        Source in(row.input, 0, &tie), same(row.input, 0, &tie);
        in.Readln(buf, row.size, row.term);
        EXPECT_STREQ(row.want, buf) << row.input;
        EXPECT_EQ(row.gcount, in.GCount()) << row.input;
        EXPECT_EQ(row.status, in.Status()) << row.input;
        String_t s("#");
        same.Readln(s, row.term);
        EXPECT_STREQ(row.whole, s) << row.input;
        EXPECT_EQ(0, in.Read(buf, 0).RevRead(buf, -1).GCount());
        EXPECT_EQ(4u, tie.log.size());  // flushed before each
        EXPECT_EQ(*row.input ? 0u : SockStream::kEof, same.Status()) << row.input;
        same.SetBad();
        EXPECT_STREQ("", (same.Readln(s, row.term), s));
        EXPECT_EQ('\0', (same.Readln(buf, 5, row.term), buf[0]));
    }
    Source loud("ab", 0);
    loud.Exceptions(SockStream::kEof);
    char buf[8] = "#######";
    EXPECT_THROW(loud.Readln(buf, 8, "\n"), SockIO::EndOfInput);
    EXPECT_STREQ("ab", buf);
}

TEST(SockStreamBumps, MoveWhatIsBufferedWithinTheBuffer) {
    struct {
        int by;
        std::string pending, rest;  // of "abcdef", and of "cdef" behind "ab"
    } const rows[] = {
        {0, "abcdef", "cdef"}, {-1, "bcdef", "bcde"},
        {-2, "cdef", "abcd"},  {-6, "", "abcd"},
        {INT_MIN, "", "abcd"}, {2, std::string("\0\0abcdef", 8), std::string("ef\0\0", 4)}};
    for (auto const& row : rows) {
        Sink out;
        out.Write("abcdef", 6).PBump(row.by);
        EXPECT_EQ(row.pending, out.Content()) << row.by;
        Source in("abcdef", 0);
        char ab[2];
        in.Read(ab, 2).GBump(row.by);
        EXPECT_EQ(row.rest, in.Rest()) << row.by;
    }
    Sink out;
    out.PBump(INT_MAX);
    EXPECT_EQ(8192u, out.Pending());
    Source in(std::string(8192, 'x'), 0);
    in.Fill(), in.GBump(INT_MAX);
    EXPECT_EQ(8192u, in.Unread());
}

}  // namespace
