#include "net/sockstream.h"

#include <signal.h>
#include <sys/socket.h>

#include <thread>

#include "tests/net/scripted_streams.h"
#include "tests/net/sockets.h"

namespace {

// What `fd` has to read now.
std::string Hear(UniqueFd const& fd) {
    char bytes[8192];
    fcntl(fd.Get(), F_SETFL, O_NONBLOCK);
    ssize_t const count = read(fd.Get(), bytes, sizeof bytes);
    return std::string(bytes, count > 0 ? static_cast<std::size_t>(count) : 0);
}

struct SocketPair {
    SocketPair() {
        int fds[2];
        EXPECT_EQ(0, socketpair(AF_UNIX, SOCK_STREAM, 0, fds));
        near.Reset(fds[0]);
        far.Reset(fds[1]);
    }
    void Say(std::string const& bytes) const {
        ASSERT_EQ(static_cast<ssize_t>(bytes.size()), write(far.Get(), bytes.data(), bytes.size()));
    }
    UniqueFd near, far;
};

TEST(OSockStream, SendsOnRequestAndAtTheEnd) {
    SocketPair pair;
    {
        OSockStream out(pair.near.Get());
        out.Writeln("x", "\r\n").RevWrite("abc", 3) << endm << 'y';
        EXPECT_EQ("x\r\ncba", Hear(pair.far));
        EXPECT_EQ(pair.near.Get(), out.Unbind());  // sends, too
        EXPECT_EQ("y", Hear(pair.far));
        out.Bind(pair.near.Get());
        out << 'z';
    }
    EXPECT_EQ("z", Hear(pair.far));
}

TEST(OSockStream, KeepsWhatIsNotSentInTime) {
    int fds[2];
    ASSERT_EQ(0, pipe2(fds, O_NONBLOCK));
    UniqueFd const reader(fds[0]), writer(fds[1]);
    std::string const first(4096, '1'), then(4095, '2');
    ASSERT_EQ(4096, fcntl(fds[1], F_SETPIPE_SZ, 4096));
    OSockStream out(fds[1]);
    out.Timeout(0);
    EXPECT_EQ(4096, out.Write((first + then).data(), 8191).Flush());
    EXPECT_EQ(SockStream::kTimedOut, out.Clear());
    EXPECT_EQ(first, Hear(reader));
    EXPECT_EQ(4095, out.Flush());
    EXPECT_EQ(then, Hear(reader));
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
    in.RevRead(text, 4).RevRead(text, -1);  // what was begun is the caller's to sort out
    EXPECT_EQ(std::string("ba\7\0", 4), std::string(text, 4));
    in.Bind(pair.near.Get());
    in.Timeout(1);
    signal(SIGALRM, [](int) {});
    ualarm(5000, 0);          // a signal while it waits
    EXPECT_EQ(0, in.Fill());  // "c" was discarded
    EXPECT_EQ(SockStream::kTimedOut, in.Clear());
    pair.far.Reset();
    in.Read(text, 5);
    EXPECT_TRUE(in.Status() == SockStream::kEof && in.GCount() == 0);
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
}

// The peer sends `input` and goes, or stays without; then the stream is used to 'b'ind another
// descriptor, 'r'ead and 'w'rite.
TEST(SockStreamFailures, RaiseTheirBitAndThrow) {
    signal(SIGPIPE, SIG_IGN);
    UniqueFd const write_only(open("/dev/null", O_WRONLY));
    Rows<unsigned, char const*, std::string, std::string> const rows = {
        {1, "", "r", "end of input"},
        {2, "12345678", "r", "protocol error"},
        {4, "", "br", "read/write error, Bad file descriptor"},
        {4, "", "w", "read/write error, Broken pipe"},
        {8, nullptr, "r", "timed out"}};
    for (auto const& [bits, input, uses, text] : rows) {
        SocketPair pair;
        IOSockStream stream(pair.near.Get());
        stream.Timeout(0);
        if (input) pair.Say(input), pair.far.Reset();
        EXPECT_EQ(0u, stream.Exceptions(15));
        std::string const thrown = Thrown([&stream, &uses = uses, &write_only] {
            long number;
            for (char const use : uses) {
                if (use == 'b') stream.Bind(write_only.Get());
                if (use == 'r') stream >> number;
                if (use == 'w') stream << 1 << endm;
            }
        });
        EXPECT_EQ(text + ' ' + std::to_string(stream.Fd()), thrown);
        EXPECT_EQ(bits, stream.Status()) << thrown;
    }
}

TEST(ISockStream, ReadsLines) {
    // The last column is what the form without a size gives.
    Rows<char const*, char const*, int, char const*, int, unsigned, char const*> const rows = {
        {"aab\ncd", "ab\n", 10, "a", 3, 0, "a"},
        {"", "\n", 10, "", 0, 1, ""},
        {"ab\n", nullptr, 10, "ab\n", 3, 1, "ab\n"},
        {"0123456789\n", "\n", 5, "0123", 4, 0, "0123456789"},
        {"ab", "\n", 0, "#", 0, 0, "ab"},
        {"ab", "\n", -3, "", 0, 0, "ab"}};
    for (auto const& [input, term, size, want, gcount, status, whole] : rows) {
        char buf[16] = "#";
        String_t s("#");
        Source in(input), same(input);
        in.Readln(buf, size, term);
        EXPECT_TRUE(gcount == in.GCount() && status == in.Status()) << input;
        same.Readln(s, term);
        EXPECT_TRUE(std::string(want) == buf && s == whole) << input;
        EXPECT_EQ(*input ? 0u : SockStream::kEof, same.Status()) << input;
    }
}

TEST(SockStreamBumps, StayWithinTheBuffer) {
    Sink out;
    out.Write("abcdef", 6).PBump(INT_MAX);
    EXPECT_EQ(std::string(8186, '\0') + "abcdef", out.Content());
    Source in("abcdef");
    char ab[2];
    in.Read(ab, 2).GBump(-1);
    EXPECT_EQ("bcde", in.Rest());
}

}  // namespace
