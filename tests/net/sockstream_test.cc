#include "net/sockstream.h"

#include <fcntl.h>
#include <signal.h>
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
    void Say(std::string const& bytes) const {
        ASSERT_EQ(static_cast<ssize_t>(bytes.size()), write(far.Get(), bytes.data(), bytes.size()));
    }
    std::string Hear() const {
        char bytes[64];
        ssize_t const n = recv(far.Get(), bytes, sizeof bytes, MSG_DONTWAIT);
        return std::string(bytes, n > 0 ? n : 0);
    }
    UniqueFd near, far;
};

TEST(OSockStream, SendsOnRequestAndAtTheEnd) {
    SocketPair pair;
    {
        OSockStream out(pair.near.Get());
        out.Writeln("x", "\r\n").RevWrite("abc", 3) << endm << 'y';
        EXPECT_EQ("x\r\ncba", pair.Hear());
        EXPECT_EQ(pair.near.Get(), out.Unbind());  // sends, too
        EXPECT_EQ("y", pair.Hear());
        out.Bind(pair.near.Get());
        out << 2;
        out.Bind(pair.near.Get());  // discards
        out << 'z';
    }
    EXPECT_EQ("z", pair.Hear());
    OSockStream(pair.near.Get()).Write("3", 1).SetFailed();
    EXPECT_EQ("", pair.Hear());
}

TEST(OSockStream, KeepsWhatIsNotSentInTime) {
    int fds[2];
    ASSERT_EQ(0, pipe2(fds, O_NONBLOCK));
    UniqueFd const reader(fds[0]), writer(fds[1]);
    int const room = 4096;
    ASSERT_EQ(room, fcntl(writer.Get(), F_SETPIPE_SZ, room));
    struct : OSockStream {
        std::string Pending() const { return std::string(base, cur); }
    } out;
    std::mt19937 random(1);
    std::string text(8192, ' ');
    std::generate(text.begin(), text.end(), random);
    std::string heard(room, ' ');
    out.Bind(writer.Get());
    out.Timeout(0);
    EXPECT_EQ(room, out.Write(text.data(), 8192).Flush());
    EXPECT_EQ(SockStream::kTimedOut, out.Status());
    EXPECT_EQ(room, read(fds[0], heard.data(), heard.size()));
    EXPECT_EQ(text, heard + out.Pending());
}

TEST(ISockStream, ReadsWhatASlowPeerSendsAndToTheEnd) {
    SocketPair pair;
    ISockStream in(pair.near.Get());
    in.Timeout(0);
    int number = 0;
    pair.Say(std::string("\0\0", 2));
    in >> number;
    EXPECT_TRUE(in.Clear() == SockStream::kTimedOut && in.GCount() == 2);
    pair.Say(std::string("\0\7abc", 5));
    char text[8] = "-------";
    in.Read(text, 1);  // the rest of what was begun is the caller's to sort out
    EXPECT_EQ(0, in.Clear() | text[0]);
    EXPECT_EQ(pair.near.Get(), in.Unbind());
    in.Read(text, 3);  // kept
    EXPECT_EQ("\7ab", std::string(text, 3));
    in.Bind(pair.near.Get());
    in.Timeout(1);
    Interrupts const signals;
    EXPECT_EQ(0, in.Fill());  // "c" was discarded
    EXPECT_EQ(SockStream::kTimedOut, in.Clear());
    shutdown(pair.far.Get(), SHUT_WR);
    in.Read(text, 5);
    EXPECT_TRUE(in.Status() == SockStream::kEof && in.GCount() == 0);
}

TEST(ISockStream, StopsAtTheByteThatCameTooLate) {
    struct : ISockStream {
        int Fill() override {
            cur = base, end = base + 4;
            return SetTimedout(), 4;
        }
    } late;
    int number = 0;
    late >> number;
    EXPECT_EQ(1, late.GCount());
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
    near.Bind(near.Unbind());
    near << "x";
    near.Unbind();
    EXPECT_EQ(2u, pair.Hear().size());
}

TEST(SockStreamFailures, RaiseTheirBitAndThrowWhereAsked) {
    signal(SIGPIPE, SIG_IGN);
    UniqueFd const write_only(open("/dev/null", O_WRONLY));
    int const bad = write_only.Get();
    Rows<unsigned, char const*, char const*, int, char const*> const rows = {
        {1, "", "r", 0, "end of input"},
        {2, "12345678", "r", 0, "protocol error"},
        {4, "", "r", bad, "read/write error, Bad file descriptor"},
        {4, "", "w", 0, "read/write error, Broken pipe"},
        {4, "ab", "ff", 0, "read/write error, Illegal seek"},  // unread bytes
        {4, "", "uw", 0, "read/write error, Bad file descriptor"},
        {8, nullptr, "r", 0, "timed out"}};
    for (auto const& [bits, input, uses, fd, text] : rows) {
        for (bool const loud : {false, true}) {
            SocketPair pair;
            IOSockStream stream(fd == bad ? fd : pair.near.Get());
            stream.Timeout(0);
            if (input) pair.Say(input), pair.far.Reset();
            EXPECT_EQ(0u, stream.Exceptions(loud ? 15 : 0));
            std::string thrown = text;
            try {
                long number;
                for (char const use : std::string(uses)) {
                    if (use == 'r') stream >> number;
                    if (use == 'w') stream << 1 << endm;
                    if (use == 'f') stream.Fill();
                    if (use == 'u') stream.Unbind();
                }
                EXPECT_FALSE(loud) << uses;
            } catch (SockIO::BaseException const& e) {
                thrown = e.ToString();
                EXPECT_EQ(stream.Fd(), e.Code()) << uses;
            }
            EXPECT_TRUE(text == thrown && bits == stream.Status()) << uses << ' ' << thrown;
        }
    }
    SocketPair gone;
    gone.far.Reset();
    OSockStream(gone.near.Get()).Write("1", 1).Exceptions(15);  // nothing leaves the destructor
}

TEST(ISockStream, ReadsLines) {
    // The last column is what the form without a size gives.
    Rows<char const*, char const*, int, char const*, int, unsigned, char const*> const rows = {
        {"ab\ncd", "\n", 10, "ab", 2, 0, "ab"},
        {"aab", "ab", 10, "a", 2, 0, "a"},
        {"ab", "\n", 10, "ab", 2, 1, "ab"},
        {"", "\n", 10, "", 0, 1, ""},
        {"ab\n", nullptr, 10, "ab\n", 3, 1, "ab\n"},
        {"0123456789\n", "\n", 5, "0123", 4, 0, "0123456789"},
        {"ab", "\n", 0, "#", 0, 0, "ab"},
        {"ab", "\n", -3, "", 0, 0, "ab"}};
    for (auto const& [input, term, size, want, gcount, status, whole] : rows) {
        char buf[16] = "#";
        Sink tie;
        Source in(input, 0, 9, &tie), same(input, 0, 9, &tie);
        in.Readln(buf, size, term);
        EXPECT_TRUE(gcount == in.GCount() && status == in.Status()) << input;
        String_t s("#");
        same.Readln(s, term);
        EXPECT_TRUE(std::string(want) == buf && s == whole) << input;
        EXPECT_EQ(0, in.Read(buf, 0).RevRead(buf, -1).GCount());
        EXPECT_EQ(4u, tie.log.size());  // flushed before each
        EXPECT_EQ(*input ? 0u : SockStream::kEof, same.Status()) << input;
        same.SetBad();
        EXPECT_STREQ("", (same.Readln(s, term), s));
        EXPECT_EQ('\0', (same.Readln(buf, 5, term), buf[0]));
    }
    Source loud("ab");
    loud.Exceptions(SockStream::kEof);
    char buf[8] = "#######";
    EXPECT_THROW(loud.Readln(buf, 8, "\n"), SockIO::EndOfInput);
    EXPECT_STREQ("ab", buf);
}

TEST(SockStreamBumps, MoveWhatIsBufferedWithinTheBuffer) {
    Rows<int, std::string, std::string> const rows = {
        {-1, "bcdef", "bcde"},
        {INT_MIN, "", "abcd"},
        {2, std::string("\0\0abcdef", 8), std::string("ef\0\0", 4)}};
    for (auto const& [by, pending, rest] : rows) {
        Sink out;
        out.Write("abcdef", 6).PBump(by);
        EXPECT_EQ(pending, out.Content()) << by;
        Source in("abcdef", 0, 9);
        char ab[2];
        in.Read(ab, 2).GBump(by);
        EXPECT_EQ(rest, in.Rest()) << by;
    }
    Sink out;
    Source in(std::string(8192, 'x'), 0, 8192);
    out.PBump(INT_MAX), in.Fill(), in.GBump(INT_MAX);
    EXPECT_TRUE(out.Pending() == 8192 && in.Rest().size() == 8192);
}

}  // namespace
