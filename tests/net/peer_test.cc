// Typed streams against an end that shares no code with them: examples/peer.py, which also tells
// what its messages are.
#include <net/serversocket.h>
#include <net/sockstream.h>
#include <net/strbinstream.h>
#include <system/process.h>
#include <system/pstream.h>

#include <signal.h>
#include <sys/socket.h>

#include <fstream>
#include <functional>
#include <iterator>
#include <regex>

#include "base/unique_fd.h"
#include "tests/support/test.h"

namespace {

using korbase_detail::UniqueFd;

constexpr int kMessages = 1000;

// A value of any type: what it is, and how to send it.
struct Value {
    std::string told;
    std::function<void(OSockStream&)> send;
};

template <class... Numbers>
std::string Print(char const* format, Numbers... numbers) {
    char text[64];
    std::snprintf(text, sizeof text, format, numbers...);
    return text;
}

std::string Summary(std::string_view text) {
    unsigned a = 1, b = 0;  // Adler-32
    for (unsigned char const c : text) a = (a + c) % 65521, b = (b + a) % 65521;
    return std::to_string(text.size()) + Print(":%08x", b << 16 | a);
}

template <class T>
std::string Told(T const& value) {
    if constexpr (std::is_floating_point_v<T>) {
        return Print("%.17g", static_cast<double>(value));
    } else if constexpr (std::is_same_v<T, char>) {
        return std::to_string(static_cast<signed char>(value));
    } else if constexpr (std::is_integral_v<T>) {
        return std::to_string(value);
    } else if constexpr (std::is_same_v<T, TOList<String_t>>) {
        std::vector<std::string> all{""};
        for (String_t const& text : value) all.push_back(Summary(text.View()));
        return std::to_string(all.size() - 1) + Joined(all);
    } else {
        return Summary(value.View());
    }
}

template <class T>
Value Take(ISockStream& in) {
    T value{};
    in >> value;
    return {Told(value), [value](OSockStream& out) { out << value; }};
}

Value TakeChars(ISockStream& in) {
    char raw[40000] = "";
    in >> raw;
    return {Summary(raw), [text = std::string(raw)](OSockStream& out) { out << text.c_str(); }};
}

Value Take(ISockStream& in, char letter) {
    switch (letter) {
        case 'c': return Take<char>(in);
        case 'C': return Take<unsigned char>(in);
        case 'h': return Take<short>(in);
        case 'H': return Take<unsigned short>(in);
        case 'i': return Take<int>(in);
        case 'I': return Take<unsigned>(in);
        case 'l': return Take<long>(in);
        case 'L': return Take<unsigned long>(in);
        case 'q': return Take<long long>(in);
        case 'Q': return Take<unsigned long long>(in);
        case 'f': return Take<float>(in);
        case 'd': return Take<double>(in);
        case 's': return Take<String_t>(in);
        case 'b': return Take<ByteString>(in);
        case 'S': return Take<TOList<String_t>>(in);
        default: return TakeChars(in);
    }
}

// The peer as a process that connects to us.
class PeerScript : public testing::Test {
protected:
    void TearDown() override {
        if (HasFailure() && peer.Pid() > 0) peer.Kill(SIGKILL), peer.WaitFor();
    }
    void Start(char const* command, char const* seed) {
        ASSERT_LE(0, server.Listen(1));
        String_t const place = server.RefString();
        TVarr<String_t> argv(8, VARR_DOUBLE);
        for (char const* const word : {"python3", PEER_SCRIPT, command, place.Get(), seed})
            if (word) argv.App(word);
        argv.App(std::to_string(kMessages).c_str());
        peer = Process::Execute(argv);
        ASSERT_LT(0, peer.Pid());
    }
    UniqueFd Accept() { return UniqueFd(server.Accept(60)); }

    ServerSocketIn server{0, "127.0.0.1"};
    Process peer;
};

TEST_F(PeerScript, UnderstandsAndIsUnderstood) {
    Start("send", "7");
    UniqueFd const connection = Accept();
    ASSERT_TRUE(connection) << errno;
    IOSockStream io(connection.Get());
    String_t types;
    while (io >> types, types.Len() != 0) {
        std::vector<Value> values;
        TOList<String_t> texts, backwards;
        for (char const letter : types.View()) values.push_back(Take(io, letter));
        io >> texts;
        ASSERT_TRUE(io.Good() && texts.Len() == static_cast<int>(values.size())) << types;
        auto value = values.cbegin();
        for (String_t const& text : texts) ASSERT_EQ(text.Get(), (value++)->told) << types;
        io << String_t(std::string(types.View().rbegin(), types.View().rend()));
        for (; value != values.cbegin(); backwards.Append(value->told.c_str())) (--value)->send(io);
        io << backwards;
    }
    io << endm;
    EXPECT_EQ(0, peer.WaitFor());
}

TEST_F(PeerScript, DamagesTheLastValueOfMessages) {
    Start("damage", "8");
    for (int i = 0; i < kMessages; ++i) {
        UniqueFd const connection = Accept();
        ASSERT_TRUE(connection) << errno;
        ISockStream in(connection.Get(), nullptr);
        unsigned status = 0;
        String_t types;
        TOList<String_t> texts;
        in >> status >> types >> texts;
        auto letter = types.View().begin();
        for (String_t const& text : texts) {
            ASSERT_TRUE(in.Good()) << i;
            std::string const told = Take(in, *letter++).told;
            EXPECT_TRUE(text == told.c_str() || letter == types.View().end()) << i << types;
        }
        EXPECT_EQ(status, in.Status()) << i << types;
    }
    EXPECT_EQ(0, peer.WaitFor());
}

TEST_F(PeerScript, JudgesCutMessages) {
    Start("judge", nullptr);
    for (int i = 0; i < kMessages; ++i) {
        OStrBinStream memory(1);
        TOList<String_t> texts;
        for (std::string const& text : {Told(i), Told(0.5), Summary("net"), Told(texts)})
            texts.Append(text.c_str());
        memory << String_t("idsS") << i << 0.5 << String_t("net") << TOList<String_t>() << texts;
        char const* const bytes = memory.Str();
        int const whole = static_cast<int>(memory.Len()), length = i % (whole + 1);
        UniqueFd const connection = Accept();
        ASSERT_TRUE(connection) << errno;
        IOSockStream io(connection.Get());
        io.Write(bytes, length) << endm;
        shutdown(connection.Get(), SHUT_WR);
        String_t verdict;
        io >> verdict;
        EXPECT_TRUE((verdict == "good") == (length == whole) && verdict.Len() > 3) << verdict;
    }
    EXPECT_EQ(0, peer.WaitFor());
}

// The examples of the page, in C++ and, all in one go, in Python.
TEST(WireFormatPage, TellsTheBytes) {
    std::regex const row(R"re(\| `(.)` \| ?(.*?) ?\| `([0-9A-F ]+)` \|)re");
    std::ifstream page(WIRE_FORMAT_PAGE);
    std::string types, all_bytes, expected, line;
    std::smatch cell;
    while (std::getline(page, line)) {
        if (!std::regex_match(line, cell, row)) continue;
        char const letter = cell[1].str()[0];
        std::string const text = cell[2], hex = cell[3];
        std::string bytes, told = std::strchr("zsb", letter) ? Summary(text) : text;
        if (letter == 'S') {
            std::istringstream words(text);
            TOList<String_t> list;
            for (std::string word; words >> word;) list.Append(word.c_str());
            told = Told(list);
        }
        std::istringstream digits(hex);
        for (std::string pair; digits >> pair;)
            bytes += static_cast<char>(std::stoi(pair, nullptr, 16));
        IStrBinStream in(bytes.data(), static_cast<unsigned>(bytes.size()));
        Value const value = Take(in, letter);
        EXPECT_EQ(told, value.told) << line;
        OStrBinStream out(1);
        value.send(out);
        char const* const sent = out.Str();
        EXPECT_EQ(bytes, std::string(sent, out.Len())) << line;
        types += letter;
        all_bytes += " " + hex;
        expected += letter + std::string(" ") + text + '\n';
    }
    EXPECT_LE(20u, types.size());
    ipstream peer(("python3 " PEER_SCRIPT " decode " + types + all_bytes).c_str());
    std::string const printed(std::istreambuf_iterator<char>(peer), {});
    EXPECT_EQ(expected, printed);
}

}  // namespace
