#include "net/sockstream.h"

#include <fcntl.h>
#include <gtest/gtest.h>
#include <pthread.h>
#include <signal.h>
#include <sys/ioctl.h>
#include <sys/socket.h>
#include <unistd.h>

#include <algorithm>
#include <atomic>
#include <cerrno>
#include <climits>
#include <functional>
#include <thread>

#include "base/unique_fd.h"
#include "tests/net/scripted_streams.h"

namespace {

using korbase_detail::UniqueFd;

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
    // What comes up to the end or, without waiting, up to what is there.
    std::string Hear(int flags = MSG_DONTWAIT) const {
        std::string all;
        char piece[4096];
        for (ssize_t n; (n = recv(far.Get(), piece, sizeof piece, flags)) > 0;)
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

TEST(OSockStream, KeepsWhatAStoppedPeerDidNotTake) {
    SocketPair pair;
    int const small = 1;
    setsockopt(pair.near.Get(), SOL_SOCKET, SO_SNDBUF, &small, sizeof small);
    fcntl(pair.near.Get(), F_SETFL, O_NONBLOCK);
    std::string const text = Numbers(20000);
    std::string heard;
    OSockStream out(pair.near.Get());
    out.Timeout(0);
    std::size_t put = 0;
    int stops = 0;
    while (put < text.size() && stops < 10000) {
        out.Write(text.data() + put,
                  static_cast<int>(std::min<std::size_t>(text.size() - put, 9000)));
        put += static_cast<std::size_t>(out.PCount());
        if (put == text.size()) out.Flush();
        if (out.Good()) continue;
        ++stops;
        EXPECT_EQ(SockStream::kTimedOut, out.Clear());
        heard += pair.Hear();
    }
    EXPECT_GT(stops, 1);
    while (out.Flush() > 0 || out.Clear()) heard += pair.Hear();
    EXPECT_EQ(text, heard + pair.Hear());
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

TEST(IOSockStream, AsksBeforeItWaits) {
    SocketPair pair;
    IOSockStream near(pair.near.Get()), far(pair.far.Get());
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

// Every way to a status bit, and that the exception mask turns it into an exception.
TEST(SockStreamFailures, RaiseTheirBitAndThrowWhereAsked) {
    signal(SIGPIPE, SIG_IGN);
    struct Case {
        SocketPair pair;
        IOSockStream stream{pair.near.Get()};
        void Peer(std::string const& bytes) {
            pair.Say(bytes);
            pair.far.Reset();
        }
    };
    std::string const zero(3, '\0');
    int number;
    long big;
    String_t s;
    ByteString bytes;
    TOList<String_t> list;
    struct {
        char const* name;
        unsigned bit;
        std::function<void(Case&)> act;
        char const* text;
    } const rows[] = {
        {"closed", 1, [&](Case& c) { c.Peer(""), c.stream >> number; }, "end of input"},
        {"refill after the end", 1,
         [&](Case& c) {
             c.Peer("");
             unsigned const mask = c.stream.Exceptions(0);
             c.stream >> number;
             c.stream.Exceptions(mask);
             c.stream.Fill();
         },
         "end of input"},
        {"inside an int", 1, [&](Case& c) { c.Peer(zero), c.stream >> number; }, "end of input"},
        {"inside a byte string", 1, [&](Case& c) { c.Peer(zero + "\5ab"), c.stream >> bytes; },
         "end of input"},
        {"long", 2, [&](Case& c) { c.Peer(zero + "\1" + zero + "\1"), c.stream >> big; },
         "protocol error"},
        {"string length", 2, [&](Case& c) { c.Peer("\xff" + zero), c.stream >> s; },
         "protocol error"},
        {"string content", 2, [&](Case& c) { c.Peer(zero + "\3a" + zero), c.stream >> s; },
         "protocol error"},
        {"byte string length", 2, [&](Case& c) { c.Peer("\1" + zero), c.stream >> bytes; },
         "protocol error"},
        {"read", 4,
         [&](Case& c) {
             c.stream.Bind(open("/dev/null", O_WRONLY)), c.pair.far.Reset(c.stream.Fd()),
                 c.stream >> number;
         },
         "read/write error, Bad file descriptor"},
        {"write", 4, [&](Case& c) { c.pair.far.Reset(), c.stream << 1 << endm; },
         "read/write error, Broken pipe"},
        {"unread", 4, [&](Case& c) { c.Peer("ab"), c.stream.Fill(), c.stream.Fill(); },
         "read/write error, Illegal seek"},
        {"unbound out", 4, [&](Case& c) { c.stream.Unbind(), c.stream << 1 << endm; },
         "read/write error, Bad file descriptor"},
        {"unbound in", 4, [&](Case& c) { c.stream.Unbind(), c.stream >> number; },
         "read/write error, Bad file descriptor"},
        {"silence", 8, [&](Case& c) { c.stream.Timeout(0), c.stream >> number; }, "timed out"}};
    for (auto const& row : rows) {
        Case quiet, loud;
        row.act(quiet);
        EXPECT_EQ(row.bit, quiet.stream.Status()) << row.name;
        EXPECT_EQ(0u, loud.stream.Exceptions(15));
        try {
            row.act(loud);
            ADD_FAILURE() << row.name;
        } catch (SockIO::BaseException const& e) {
            EXPECT_EQ(row.bit, loud.stream.Status()) << row.name;
            EXPECT_STREQ(row.text, e.ToString()) << row.name;
            EXPECT_EQ(loud.stream.Fd(), e.Code()) << row.name;
        }
    }
    {
        Case gone;
        gone.pair.far.Reset();
        OSockStream doomed(gone.pair.near.Get());
        doomed.Exceptions(15);
        (gone.stream << 1).Exceptions(15);
        doomed << 1;
        EXPECT_EQ(gone.pair.near.Get(), gone.stream.Unbind());
        EXPECT_EQ(SockStream::kBad, gone.stream.Status());
    }  // nothing leaves the destructor either

    Case ended;
    ended.Peer(zero + "\5ab");
    ended.stream >> s;
    EXPECT_EQ(SockStream::kEof | SockStream::kFailed, ended.stream.Status());
    EXPECT_STREQ("", s);
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
                      {"ab", "\n", -3, "#", 0, 0, "ab"}};
    for (auto const& row : rows) {
        char buf[16] = "#";
        Source in(row.input, 0), same(row.input, 0);
        in.Readln(buf, row.size, row.term);
        EXPECT_STREQ(row.want, buf) << row.input;
        EXPECT_EQ(row.gcount, in.GCount()) << row.input;
        EXPECT_EQ(row.status, in.Status()) << row.input;
        String_t s("#");
        same.Readln(s, row.term);
        EXPECT_STREQ(row.whole, s) << row.input;
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

std::atomic<int> interrupts{0};

// Signals this thread until the other side is ready for the end, which comes after 100 of them.
template <class Wait, class End>
void UnderSignals(Wait const& wait, End const& end) {
    struct sigaction action {};
    action.sa_handler = [](int) { ++interrupts; };
    sigaction(SIGUSR1, &action, nullptr);
    interrupts = 0;
    std::atomic<bool> done{false};
    std::thread storm([&, self = pthread_self()] {
        bool ended = false;
        while (!done) {
            pthread_kill(self, SIGUSR1);
            std::this_thread::yield();
            if (!ended && interrupts >= 100) end(), ended = true;
        }
    });
    wait();
    done = true;
    storm.join();
    EXPECT_GE(interrupts, 100);
}

TEST(SockStreamThreads, WaitThroughInterruptions) {
    SocketPair pair;
    IOSockStream stream(pair.near.Get());
    int number = 0;
    UnderSignals([&] { stream >> number; }, [&] { pair.Say(std::string("\0\0\0\5", 4)); });
    EXPECT_EQ(5, number);
    stream.Timeout(1);  // all the waiting counts: the signals do not make it longer
    UnderSignals([&] { stream >> number; }, [] {});
    EXPECT_EQ(SockStream::kTimedOut, stream.Clear());

    stream.Timeout(0);
    std::string const block(8192, 'x');
    std::size_t sent = 0;
    for (; stream.Good(); sent += stream.Good() ? 8192 : 0)
        stream.Write(block.data(), 8192).Flush();
    stream.Clear();
    stream.Timeout(60);
    std::string heard;
    UnderSignals([&] { stream.Flush(); }, [&] { heard = pair.Hear(); });
    EXPECT_TRUE(stream.Good());
    EXPECT_EQ(sent + 8192, heard.size() + pair.Hear().size());
}

TEST(SockStreamThreads, PassValuesThroughASlowPeer) {
    SocketPair pair, relayed;
    std::thread slow([&] {
        char c;
        while (read(pair.far.Get(), &c, 1) == 1 && write(relayed.far.Get(), &c, 1) == 1) continue;
        shutdown(relayed.far.Get(), SHUT_WR);
    });
    std::string const text = Numbers(1800);
    std::thread sender([&] {
        TOList<String_t> list;
        list.Append(String_t(text.c_str()));
        list.Append("");
        OSockStream out(pair.near.Get());
        for (int i = 0; i < 5; ++i) out << i << list << i / 2.0;
        out.Writeln(String_t("done"), "\r\n");
        out << endm;
        shutdown(out.Fd(), SHUT_WR);
    });
    ISockStream in(relayed.near.Get());
    for (int i = 0; i < 5; ++i) {
        int number = -1;
        TOList<String_t> list;
        double half = -1;
        in >> number >> list >> half;
        EXPECT_EQ(i, number);
        ASSERT_TRUE(list.First());
        EXPECT_STREQ(text.c_str(), *list.First());
        EXPECT_STREQ("", *list.Last());
        EXPECT_EQ(i / 2.0, half);
    }
    String_t line;
    in.Readln(line, "\r\n");
    EXPECT_STREQ("done", line);
    EXPECT_TRUE(in.Good());
    sender.join();
    slow.join();
}

}  // namespace
