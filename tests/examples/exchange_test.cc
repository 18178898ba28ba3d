// Runs server and clients as processes, and talks to both as somebody who does not keep the rules.
#include <net/clientsocket.h>
#include <net/serversocket.h>
#include <net/strbinstream.h>
#include <signal.h>
#include <sys/socket.h>
#include <unistd.h>

#include <deque>
#include <regex>
#include <set>

#include "program.h"

namespace {

using Byte = unsigned char;
using Pairs = Rows<std::string, std::string>;

// The bytes of values, one behind the other, as streams send them.
template <class... Values>
std::string Bytes(Values... values) {
    OStrBinStream out(64);
    (out << ... << values);
    char const* const text = out.Str();
    return {text, out.Len()};
}

// A record, and the answer to it.
std::string Square(int x) {
    return Bytes(Byte{0}, 0, short{0}, 0, 4, x, 0, x + 10, 0, x + 10, 10, x, 10);
}
std::string SquareAnswer(int x) {
    return Bytes(Byte{0}, 0, Byte{0}, 4, x, 0, x + 10, 0, x + 10, 10, x, 10, Byte{0}, 1, x, 0,
                 x + 10, 10);
}
// A record without its points.
std::string Head(int kind, int size, int detail, int distance, int count) {
    return Bytes(static_cast<Byte>(kind), size, static_cast<short>(detail), distance, count);
}
// Half of its edges cross a slab: the answer has some 13 MB.
std::string Zigzag() {
    std::string record = Head(0, 0, 0, 0, 1500);
    for (int i = 0; i < 1500; ++i) record += Bytes(i, i % 2 * 20000 + i * 7 % 10000);
    return record;
}

// The end of a connection that the test itself has.
struct Raw {
    explicit Raw(int fd) : fd(fd) { EXPECT_LE(0, fd); }
    explicit Raw(std::string const& address, int error = 0)
        : Raw(ClientSocketIn(address.c_str()).Connect(60, error)) {}
    ~Raw() { close(fd); }

    void Send(std::string const& bytes) const {
        EXPECT_EQ(ssize_t(bytes.size()), send(fd, bytes.data(), bytes.size(), MSG_NOSIGNAL));
    }
    // What comes next, up to `most` bytes or the end.
    std::string Receive(std::size_t most) const {
        std::string bytes(most, '\0');
        ssize_t const got = recv(fd, bytes.data(), most, MSG_WAITALL);
        return bytes.substr(0, got < 0 ? 0 : std::size_t(got));
    }
    void IsServed() const {
        Send(Square(1));
        EXPECT_EQ(SquareAnswer(1), Receive(SquareAnswer(1).size()));
    }
    // How the server names it in front of what it says.
    std::string Name() const {
        SockIO::SockAddr own;
        ClientSocketIn::GetSocketName(fd, own);
        return std::string("fracture_server: ") + own.ToString().Get() + ": ";
    }

    int fd;
};

struct Exchange : Program {
    void TearDown() override {
        if (output != nullptr) EndServer(SIGTERM);
    }

    void Start(std::string const& command) {
        output = popen(("echo $$ && exec 2>&1 " + command).c_str(), "r");
        ASSERT_NE(nullptr, output);
        pid = std::stoi(Line());
    }
    void StartServer(std::string const& arguments) {
        Start(FRACTURE_SERVER_COMMAND " " + arguments);
        address = Line();
    }
    std::string Line() {
        char line[1000] = "";
        if (std::fgets(line, sizeof line, output) == nullptr) return "";
        return std::string(line, std::strcspn(line, "\n"));
    }
    std::string Wait() {
        std::string rest;
        for (std::string line; !(line = Line()).empty();) rest += line + '\n';
        int const status = pclose(std::exchange(output, nullptr));
        return rest + std::to_string(WIFEXITED(status) ? WEXITSTATUS(status) : -1);
    }
    std::string EndServer(int signal_number) {
        kill(pid, signal_number);
        return Wait();
    }
    static auto Files() { return std::distance(fs::directory_iterator("."), {}); }
    // The picture and the outputs of a program, without the times and its name.
    std::string Printed(std::string const& command) {
        int const status = Run(command);
        std::string text = std::regex_replace(out, std::regex(" +"), " ");
        text = std::regex_replace(text, std::regex("(\n(\\S+ ){9})\\S+ "), "$1time ");
        text += std::regex_replace(err, std::regex("(^|\n)fracture(_client)?:"), "$1:");
        text += std::to_string(status) + ReadFile("p.svg");
        fs::remove("p.svg");
        return text;
    }

    FILE* output = nullptr;
    pid_t pid = 0;
    std::string address;
    std::string const samples = "'" EXAMPLE_DATA "'/*.lay";
};

// Outlines of so many points that neither record nor answer fit what sockets hold.
std::string BigLayout() {
    std::ostringstream text;
    text << "polygon d";  // the answer fills a socket while the comb behind it is to be sent
    for (int i = 0; i < 600; ++i) text << ' ' << i << ' ' << i % 2 * 20000 + i * 7 % 10000;
    text << "\npolygon c 0 0";
    for (int i = 0; i < 64000; ++i) text << ' ' << 5 * i << ' ' << (i % 2 ? 300 : 100);
    text << " 320000 0\n";
    for (int i = 0; i < 3000; ++i) text << "polygon e 0 0 " << i << " 9 5 " << i << '\n';
    return text.str();
}

TEST_F(Exchange, ClientsTellWhatFractureTells) {
    WriteFile("big.lay", BigLayout());
    WriteFile("bad.lay",
              "path m 2 0 0 0 9 5\ncircle m 9 0 0 500\npath a 8 1 5 5\npath m 2 0 0 0 9 0 5 0\n"
              "polygon m 0 0\npolygon m 0 0 99 9 5 50 20 20\npath a 100 0 0 0 0 90 30 90\n");
    for (std::string const options : {"", "-l s"}) {
        StartServer(options);
        Pairs const rows = {{" -o p.svg -u 5n -s -0.04u ", samples},
                            {" -o p.svg ", "big.lay bad.lay none.lay"}};
        for (auto const& [how, files] : rows)
            EXPECT_EQ(Printed(FRACTURE_COMMAND + how + files),
                      Printed(FRACTURE_CLIENT_COMMAND + how + address + ' ' + files));
        EXPECT_EQ("0", Answer(FRACTURE_CLIENT_COMMAND " -x " + address));
        EXPECT_EQ("0", Wait());
    }
}

TEST_F(Exchange, OthersSpeakTheProtocol) {
    StartServer("-l s");
    WriteFile("a.lay", "polygon m 0 0 9 0 9 9 5 9 5 5 0 5\npolygon m 0 0 9 5 9 9\n");
    ASSERT_EQ(0, Run("python3 " PEER " cut ./s a.lay")) << err;
    EXPECT_EQ("a.lay: 2 polygons, 4 pieces\n", out);
    ASSERT_EQ(0, Run("python3 " PEER " stop ./s")) << err;
    EXPECT_EQ("0", Wait());
}

TEST_F(Exchange, ServesManyClientsAtOnce) {
    StartServer("");
    kill(pid, SIGSTOP);  // so that they all wait to be accepted
    std::deque<Raw> clients;
    for (int i = 0; i < 64; ++i) clients.emplace_back(address).Send(Square(i).substr(0, 20));
    kill(pid, SIGCONT);
    for (int i = 64; i-- > 0;) {
        Raw const& client = clients[std::size_t(i)];
        for (char const c : Square(i).substr(20)) client.Send({c});
        client.Send(Square(i + 1));
        std::string const want = SquareAnswer(i) + SquareAnswer(i + 1);
        EXPECT_EQ(want, client.Receive(want.size())) << i;
    }
}

TEST_F(Exchange, AnswersEveryClientAndNamesBadOnes) {
    StartServer("");
    constexpr int kFar = 1073741824;
    Raw const other(address);
    auto const converse = [&](std::string const& bytes, std::string const& answer,
                              std::string const& complaint) {
        Raw const client(address);
        client.Send(bytes);
        if (complaint != "protocol error") shutdown(client.fd, SHUT_WR);
        std::string const line = complaint.empty() ? "" : client.Name() + complaint;
        EXPECT_EQ(line, complaint.empty() ? "" : Line());
        EXPECT_EQ(answer, client.Receive(1000)) << bytes;
        other.IsServed();
    };
    converse("", "", "");
    converse(Head(1, 2, 0, 0, 2) + Bytes(0, 0, 9, 5) + Square(3),
             Bytes(Byte{1}, String_t("slanted path")) + SquareAnswer(3), "");
    Rows<int, int, int, int, int> const wrong_heads = {
        {'G', 0, 0, 0, 3},   {0, 1, 0, 0, 3}, {0, 0, 1, 0, 3},        {1, kFar, 0, 0, 3},
        {1, 2, 2, 0, 3},     {2, 2, 2, 0, 1}, {0, 0, 0, kFar / 4, 3}, {0, 0, 0, 0, 2},
        {0, 0, 0, 0, 65536}, {1, 2, 0, 0, 0}, {1, 2, 0, 0, 32768},    {2, 2, 3, 0, 2}};
    for (auto const& head : wrong_heads) converse(std::apply(Head, head), "", "protocol error");
    converse(Head(0, 0, 0, 0, 3) + Bytes(0, -kFar, 0, 0, 0, 0), "", "protocol error");
    converse(Head(0, 0, 0, 0, 65535) + Bytes(1, 2, 3), "", "end of input");
    auto client = std::make_unique<Raw>(address);  // vanishes inside the answer
    client->Send(Zigzag());
    EXPECT_EQ(100u, client->Receive(100).size());
    std::string const complaint = client->Name() + "read/write error, ";
    client.reset();
    EXPECT_EQ(0u, Line().find(complaint));
    other.IsServed();
}

TEST_F(Exchange, SlowClientsAreLeftAlone) {
    StartServer("-t 1");
    Raw const silent(address), stuck(address), deaf(address);
    stuck.Send(Square(1).substr(0, 30));
    deaf.Send(Zigzag());
    std::set<std::string> want, complaints;
    for (auto const* client : {&silent, &stuck, &deaf}) {
        want.insert(client->Name() + "timed out");
        complaints.insert(Line());
    }
    EXPECT_EQ(want, complaints);
}

TEST_F(Exchange, EndsWithAllItsChildren) {
    for (int const end : {SIGTERM, SIGINT, 0}) {
        StartServer("-l s");
        Raw const idle(address), busy(address);
        idle.IsServed();
        busy.Send(Zigzag());
        EXPECT_EQ(100u, busy.Receive(100).size());
        EXPECT_EQ("0", end == 0 ? Answer(FRACTURE_CLIENT_COMMAND " --stop " + address) : "0");
        EXPECT_EQ("0", end == 0 ? Wait() : EndServer(end));
        EXPECT_EQ("", idle.Receive(1));
        EXPECT_GT(1u << 24, busy.Receive(1u << 24).size());
        EXPECT_EQ(0, Files());
    }
}

TEST_F(Exchange, ListensWhereItIsTold) {
    ServerSocketIn own(0, "127.0.0.1");
    ASSERT_LE(0, own.Listen(1));
    std::string const port = std::string(own.RefString().Get()).substr(10);
    std::string const path(106, 'x'), our = "fracture_server: ";
    Answers(FRACTURE_SERVER_COMMAND,
            {{"-p " + port,
              our + "cannot listen on 127.0.0.1 port " + port + ": Address already in use\n1"},
             {"-l " + path, our + "not a path for a local socket: " + path + "\n1"},
             {"-l s -p 0", our + "either ports or a local socket\n1"},
             {"-p 1-65536", our + "not a range of ports: 1-65536\n1"},
             {"-t 2147484", our + "not a number of seconds: 2147484\n1"}});
    EXPECT_EQ(0, Files());
    StartServer("-p " + port + "-65535");
    EXPECT_EQ(0u, address.find("127.0.0.1:"));
}

TEST_F(Exchange, ClientsNameWhatTheServerDoesWrong) {
    ServerSocketIn server(0, "127.0.0.1");
    ASSERT_LE(0, server.Listen(1));
    address = server.RefString().Get();
    WriteFile("a.lay", "polygon m 0 0 10 0 10 10 0 10\n");
    WriteFile("p.svg", "old");
    Byte const no{0}, yes{1};
    Pairs answers = {{SquareAnswer(0).substr(0, 50), "end of input"}, {"", "timed out"}};
    for (auto const& answer :
         {Bytes(Byte{'H'}, 0, no, 0, no, 0), Bytes(no, 5, no, 0, no, 0),
          Bytes(no, 0, Byte{3}, 0, no, 0), Bytes(no, 0, no, 65536, no, 0),
          Bytes(no, 0, no, 0, Byte{2}, 0), Bytes(no, 0, no, 0, yes, (1 << 24) + 1),
          Bytes(yes, String_t("\033[2J")), Bytes(no, 0, no, 1, 1 << 30, 0)})
        answers.emplace_back(answer, "protocol error");
    for (auto const& [answer, message] : answers) {
        Start(FRACTURE_CLIENT_COMMAND " -t 1 -o p.svg " + address + " a.lay");
        Raw const client(server.Accept(60));
        EXPECT_EQ(Square(0), client.Receive(Square(0).size()));
        client.Send(answer);
        if (!answer.empty()) shutdown(client.fd, SHUT_WR);
        EXPECT_EQ("fracture_client: " + address + ": " + message + "\n1", Wait()) << answer;
        EXPECT_EQ("old", ReadFile("p.svg"));
    }
    server.Close();
    std::string const refused = "connect error, " + address + ", Connection refused";
    Answers(FRACTURE_CLIENT_COMMAND, {{address + " a.lay", "fracture_client: " + refused + "\n1"}});
}

TEST_F(Exchange, TheDemoLeavesAPicture) {
    std::string const programs =
        "\"" FRACTURE_SERVER_COMMAND "\" \"" FRACTURE_CLIENT_COMMAND " -q\"";
    std::string const bare = std::regex_replace(programs, std::regex("'"), "");
    ASSERT_EQ(0, Run(EXCHANGE_DEMO_COMMAND " " + bare + " p.svg " + samples)) << err;
    EXPECT_NE(std::string::npos, out.find("The server has ended.\nThe picture is p.svg: "));
}

}  // namespace
