// Typed streams against an end that shares no code with them: examples/peer.py, which also tells
// what its messages are; and the page about the format.
#include <net/serversocket.h>
#include <net/strbinstream.h>
#include <system/pstream.h>

#include <regex>

#include "base/unique_fd.h"
#include "tests/net/typed_values.h"
#include "tests/support/fresh_folder.h"

constexpr int kMessages = 1000;

// The peer as a process that connects to us.
struct Peer {
    Peer(std::string const& command, std::string const& seed) {
        EXPECT_LE(0, server.Listen(1));
        std::string const place = server.RefString().Get(), count = std::to_string(kMessages);
        process = popen(("python3 " PEER_SCRIPT " " + command + place + seed + count).c_str(), "r");
    }
    ~Peer() { EXPECT_EQ(0, pclose(process)); }
    korbase_detail::UniqueFd Accept() {
        korbase_detail::UniqueFd connection(server.Accept(60));
        if (!connection) throw std::runtime_error("nobody connects");
        return connection;
    }

    ServerSocketIn server{0, "127.0.0.1"};
    FILE* process;
};

TEST(PeerScript, GetsItsValuesBack) {
    Peer peer("send ", " 7 ");
    auto const connection = peer.Accept();
    IOSockStream io(connection.Get());
    String_t types;
    while (io >> types, types.Len() != 0) {
        std::vector<Value> values;
        TOList<String_t> texts, backwards;
        for (char const letter : types.View()) values.push_back(take.at(letter)(io));
        io >> texts;
        ASSERT_TRUE(io.Good() && texts.Len() == static_cast<int>(values.size())) << types;
        for (String_t const& text : texts) backwards.Insert(text);
        io << String_t(std::string(types.View().rbegin(), types.View().rend()));
        for (auto value = values.rbegin(); value != values.rend(); ++value) value->send(io);
        io << backwards;
    }
    io << endm;
}

TEST(PeerScript, DamagesTheLastValueOfMessages) {
    Peer peer("damage ", " 8 ");
    for (int i = 0; i < kMessages; ++i) {
        auto const connection = peer.Accept();
        ISockStream in(connection.Get(), nullptr);
        unsigned status = 0;
        String_t types;
        TOList<String_t> texts;
        in >> status >> types >> texts;
        for (char const letter : types.View()) {
            ASSERT_TRUE(in.Good()) << i << types;
            take.at(letter)(in);
        }
        EXPECT_EQ(status, in.Status()) << i << types;
    }
}

// The examples of the page, in C++ and, all in one go, in Python.
TEST(WireFormatPage, TellsTheBytes) {
    std::regex const row(R"re(\| `(.)` \| ?(.*?) ?\| `([0-9A-F ]+)` \|)re");
    std::string const page = ReadFile(WIRE_FORMAT_PAGE);
    std::string types, all_hex, expected;
    for (std::sregex_iterator cell(page.begin(), page.end(), row), none; cell != none; ++cell) {
        std::string const letter = cell->str(1), text = cell->str(2);
        std::istringstream hex(cell->str(3));
        std::string bytes;
        for (unsigned byte; hex >> std::hex >> byte;) bytes += static_cast<char>(byte);
        IStrBinStream in(bytes.data(), static_cast<unsigned>(bytes.size()));
        OStrBinStream out(1);
        Value const value = take.at(letter[0])(in);
        EXPECT_EQ(text, value.shown);
        value.send(out);
        char const* const sent = out.Str();
        EXPECT_EQ(bytes, std::string(sent, out.Len())) << text;
        types += letter;
        all_hex += ' ' + cell->str(3);
        expected += letter + ' ' + text + '\n';
    }
    EXPECT_LE(20u, types.size());
    ipstream peer(("python3 " PEER_SCRIPT " decode " + types + all_hex).c_str());
    EXPECT_EQ(expected, std::string(std::istreambuf_iterator<char>(peer), {}));
}
