// Typed streams against an end that shares no code with them: examples/peer.py, which also tells
// what its messages are.
#include <gtest/gtest.h>
#include <net/serversocket.h>
#include <net/sockstream.h>
#include <net/strbinstream.h>
#include <system/process.h>
#include <system/pstream.h>

#include <signal.h>
#include <sys/socket.h>

#include <algorithm>
#include <cctype>
#include <cstdio>
#include <cstdlib>
#include <fstream>
#include <iterator>
#include <random>
#include <regex>
#include <sstream>
#include <string>
#include <type_traits>
#include <vector>

#include "base/unique_fd.h"

namespace {

using korbase_detail::UniqueFd;

constexpr int kMessages = 1000;

// A value of any type: a number, a text, or the texts of a list.
struct Value {
    char letter = 'i';
    unsigned long long whole = 0;  // sign-extended
    double real = 0;
    std::vector<std::string> texts;
};

struct NumberType {
    char letter;
    void (*send)(OSockStream&, Value const&);
    void (*take)(ISockStream&, Value&);
};

template <class T>
constexpr NumberType Number(char letter) {
    return {letter,
            [](OSockStream& out, Value const& value) {
                if constexpr (std::is_floating_point_v<T>)
                    out << static_cast<T>(value.real);
                else
                    out << static_cast<T>(value.whole);
            },
            [](ISockStream& in, Value& value) {
                T number{};
                in >> number;
                if constexpr (std::is_floating_point_v<T>)
                    value.real = number;
                else if (std::islower(value.letter))
                    value.whole =
                        static_cast<unsigned long long>(static_cast<std::make_signed_t<T>>(number));
                else
                    value.whole = number;
            }};
}

constexpr NumberType kNumbers[] = {
    Number<char>('c'),  Number<unsigned char>('C'),      Number<short>('h'),
    Number<int>('i'),   Number<unsigned short>('H'),     Number<unsigned>('I'),
    Number<long>('l'),  Number<unsigned long>('L'),      Number<long long>('q'),
    Number<float>('f'), Number<unsigned long long>('Q'), Number<double>('d')};

NumberType const* FindNumber(char letter) {
    for (NumberType const& type : kNumbers)
        if (type.letter == letter) return &type;
    return nullptr;
}

void Send(OSockStream& out, Value const& value) {
    if (NumberType const* const number = FindNumber(value.letter)) return number->send(out, value);
    TOList<String_t> list;
    for (std::string const& text : value.texts) list.Append(String_t(text.c_str()));
    std::string const text = value.texts.empty() ? "" : value.texts[0];
    switch (value.letter) {
        case 'z': out << text.c_str(); break;
        case 's': out << String_t(text.c_str()); break;
        case 'b': out << ByteString(text.data(), static_cast<unsigned>(text.size())); break;
        default: out << list;
    }
}

Value Take(ISockStream& in, char letter) {
    Value value{letter, 0, 0, {}};
    if (NumberType const* const number = FindNumber(letter)) {
        number->take(in, value);
        return value;
    }
    TOList<String_t> list;
    String_t text;
    ByteString bytes;
    char raw[40000] = "";
    switch (letter) {
        case 'z': in >> raw, value.texts = {raw}; break;
        case 's': in >> text, value.texts = {std::string(text.View())}; break;
        case 'b': in >> bytes, value.texts = {std::string(bytes.View())}; break;
        default: in >> list;
    }
    for (String_t const& element : list) value.texts.push_back(element.Get());
    return value;
}

std::string Print(char const* format, unsigned long long a, unsigned long long b = 0) {
    char text[64];
    std::snprintf(text, sizeof text, format, a, b);
    return text;
}

std::string Summary(std::string const& text) {
    unsigned a = 1, b = 0;  // Adler-32
    for (unsigned char const c : text) a = (a + c) % 65521, b = (b + a) % 65521;
    return Print("%llu:%08llx", text.size(), b << 16 | a);
}

std::string Describe(Value const& value) {
    char real[64];
    std::snprintf(real, sizeof real, "%.17g", value.real);
    if (value.letter == 'f' || value.letter == 'd') return real;
    if (FindNumber(value.letter))
        return Print(std::islower(value.letter) ? "%lld" : "%llu", value.whole);
    if (value.letter != 'S') return Summary(value.texts[0]);
    std::string all = std::to_string(value.texts.size());
    for (std::string const& text : value.texts) all += " " + Summary(text);
    return all;
}

std::string Hex(char const* bytes, unsigned n) {
    std::string hex;
    for (unsigned i = 0; i < n; ++i)
        hex += Print(i == 0 ? "%02llX" : " %02llX", static_cast<unsigned char>(bytes[i]));
    return hex;
}

struct Message {
    std::string types;
    std::vector<Value> values;
    std::vector<std::string> texts;  // what the values are, as their sender says

    std::vector<std::string> Described() const {
        std::vector<std::string> all;
        for (Value const& value : values) all.push_back(Describe(value));
        return all;
    }
};

void Send(OSockStream& out, Message const& message) {
    Send(out, Value{'s', 0, 0, {message.types}});
    for (Value const& value : message.values) Send(out, value);
    if (!message.types.empty()) Send(out, Value{'S', 0, 0, message.Described()});
}

Message TakeMessage(ISockStream& in) {
    Message message;
    message.types = Take(in, 's').texts[0];
    for (char const letter : message.types) message.values.push_back(Take(in, letter));
    if (!message.types.empty()) message.texts = Take(in, 'S').texts;
    return message;
}

// A described message as text, for messages of failures.
std::string Told(Message const& message) {
    std::string all = message.types;
    for (std::string const& text : message.texts) all += " " + text;
    return all.substr(0, 2000);
}

// The peer as a process that connects to us.
class PeerScript : public testing::Test {
protected:
    void TearDown() override {
        if (HasFailure() && peer.Pid() > 0) peer.Kill(SIGKILL), peer.WaitFor();
    }
    void Start(char const* command, char const* seed, int count) {
        ASSERT_LE(0, server.Listen(1));
        String_t const place = server.RefString();
        TVarr<String_t> argv(8, VARR_DOUBLE);
        for (char const* const word : {"python3", PEER_SCRIPT, command, place.Get(), seed})
            if (word) argv.App(word);
        argv.App(std::to_string(count).c_str());
        peer = Process::Execute(argv);
        ASSERT_LT(0, peer.Pid());
    }
    UniqueFd Accept() { return UniqueFd(server.Accept(60)); }

    ServerSocketIn server{0, "127.0.0.1"};
    Process peer;
};

TEST_F(PeerScript, UnderstandsAndIsUnderstood) {
    Start("send", "7", kMessages);
    UniqueFd const connection = Accept();
    ASSERT_TRUE(connection) << errno;
    IOSockStream io(connection.Get());
    for (int i = 0;; ++i) {
        Message message = TakeMessage(io);
        ASSERT_TRUE(io.Good()) << i;
        if (message.types.empty()) break;
        ASSERT_EQ(message.texts, message.Described()) << message.types;
        std::reverse(message.types.begin(), message.types.end());
        std::reverse(message.values.begin(), message.values.end());
        Send(io, message);
    }
    io << endm;
    EXPECT_EQ(0, peer.WaitFor());
}

TEST_F(PeerScript, DamagesMessages) {
    Start("damage", "8", kMessages);
    for (int i = 0; i < kMessages; ++i) {
        UniqueFd const connection = Accept();
        ASSERT_TRUE(connection) << errno;
        ISockStream in(connection.Get(), nullptr);
        unsigned status = 0;
        in >> status;
        Message message;
        message.types = Take(in, 's').texts[0];
        message.texts = Take(in, 'S').texts;
        ASSERT_TRUE(in.Good());
        for (char const letter : message.types) {
            ASSERT_TRUE(in.Good()) << Told(message);
            message.values.push_back(Take(in, letter));
        }
        EXPECT_EQ(status, in.Status()) << Told(message);
        message.texts.pop_back();
        message.values.pop_back();
        EXPECT_EQ(message.texts, message.Described());
    }
    EXPECT_EQ(0, peer.WaitFor());
}

TEST_F(PeerScript, SeesCutMessages) {
    Start("judge", nullptr, kMessages);
    std::mt19937 chance(9);
    for (int i = 0; i < kMessages; ++i) {
        OStrBinStream memory(1);
        Message message;
        for (auto n = chance() % 9 + 1; n > 0; --n) {
            NumberType const& type = kNumbers[chance() % std::size(kNumbers)];
            message.types += type.letter;
            message.values.push_back({type.letter, chance() % 100, 2.5, {}});
        }
        Send(memory, message);
        char const* const bytes = memory.Str();
        int const whole = static_cast<int>(memory.Len());
        int const sent = i % 2 == 0 ? whole : static_cast<int>(chance() % memory.Len());
        UniqueFd const connection = Accept();
        ASSERT_TRUE(connection) << errno;
        IOSockStream io(connection.Get());
        io.Write(bytes, sent);
        io << endm;
        shutdown(connection.Get(), SHUT_WR);
        String_t verdict;
        io >> verdict;
        EXPECT_EQ(sent == whole, verdict == "good") << verdict.Get();
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
        std::string const told = cell[2], hex = cell[3];
        Value value{cell[1].str()[0], 0, 0, {}};
        if (FindNumber(value.letter)) {
            value.real = std::strtod(told.c_str(), nullptr);
            value.whole = told[0] == '-' ? static_cast<unsigned long long>(std::stoll(told))
                                         : std::stoull(told);
        } else if (value.letter == 'S') {
            std::istringstream words(told);
            value.texts.assign(std::istream_iterator<std::string>(words), {});
        } else {
            value.texts = {told};
        }
        OStrBinStream out(1);
        Send(out, value);
        char const* const bytes = out.Str();
        EXPECT_EQ(hex, Hex(bytes, out.Len())) << line;
        IStrBinStream in(out);
        EXPECT_EQ(Describe(value), Describe(Take(in, value.letter))) << line;
        types += value.letter;
        all_bytes += " " + hex;
        expected += value.letter + std::string(" ") + told + '\n';
    }
    EXPECT_LE(20u, types.size());
    ipstream peer(("python3 " PEER_SCRIPT " decode " + types + all_bytes).c_str());
    std::string const printed(std::istreambuf_iterator<char>(peer), {});
    EXPECT_EQ(expected, printed);
}

}  // namespace
