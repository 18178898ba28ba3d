// Runs server and clients as processes, and talks to both as somebody who does not keep the rules.
#include <net/clientsocket.h>
#include <net/serversocket.h>
#include <net/strbinstream.h>
#include <signal.h>
#include <sys/socket.h>
#include <unistd.h>

#include <deque>
#include <regex>

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

TEST_F(Exchange, ClientsTellWhatFractureTells) {
    std::ostringstream big;
    big << "polygon d";  // the answer fills a socket while the comb behind it is to be sent
    for (int i = 0; i < 600; ++i) big << ' ' << i << ' ' << i % 2 * 20000 + i * 7 % 10000;
    big << "\npolygon c 0 0";
    for (int i = 0; i < 64000; ++i) big << ' ' << 5 * i << ' ' << (i % 2 ? 300 : 100);
    WriteFile("big.lay", big.str() + " 320000 0\n");
    WriteFile("bad.lay",
              "circle m 9 0 0 500\npath a 8 1 5 5\npath m 2 0 0 0 9 0 5 0\npolygon m 0 0\n");
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
    Raw const other(address);
    auto const converse = [&](std::string const& bytes, std::string const& complaint) {
        Raw const client(address);
        client.Send(bytes);
        if (complaint == "end of input") shutdown(client.fd, SHUT_WR);
        EXPECT_EQ(client.Name() + complaint, Line());
        EXPECT_EQ("", client.Receive(1000)) << bytes;
        other.IsServed();
    };
    other.Send(Head(1, 2, 0, 0, 2) + Bytes(0, 0, 9, 5));
    std::string const slanted = Bytes(Byte{1}, String_t("slanted path"));
    EXPECT_EQ(slanted, other.Receive(slanted.size()));
    Rows<int, int, int, int, int> const wrong_heads = {
        {'G', 0, 0, 0, 3}, {0, 0, 1, 0, 3}, {1, 2, 2, 0, 3}, {2, 2, 2, 0, 1}, {0, 0, 0, 0, 65536}};
    for (auto const& head : wrong_heads) converse(std::apply(Head, head), "protocol error");
    converse(Head(0, 0, 0, 0, 65535) + Bytes(1, 2, 3), "end of input");
}

TEST_F(Exchange, EndsWithAllItsChildren) {
    for (bool const asked : {false, true}) {
        StartServer("-l s");
        Raw const idle(address), busy(address);
        idle.IsServed();
        busy.Send(Square(1).substr(0, 30));
        EXPECT_EQ("0", asked ? Answer(FRACTURE_CLIENT_COMMAND " --stop " + address) : "0");
        EXPECT_EQ("0", asked ? Wait() : EndServer(SIGINT));
        EXPECT_EQ("", idle.Receive(1) + busy.Receive(1));
        EXPECT_EQ(0, std::distance(fs::directory_iterator("."), {}));
    }
}

TEST_F(Exchange, ClientsNameWhatTheServerDoesWrong) {
    ServerSocketIn server(0, "127.0.0.1");
    ASSERT_LE(0, server.Listen(1));
    address = server.RefString().Get();
    WriteFile("a.lay", "polygon m 0 0 10 0 10 10 0 10\n");
    Byte const no{0}, yes{1};
    Pairs answers = {{SquareAnswer(0).substr(0, 50), "end of input"}, {"", "timed out"}};
    for (auto const& answer :
         {Bytes(Byte{'H'}, 0, no, 0, no, 0), Bytes(no, 0, no, 65536, no, 0),
          Bytes(no, 0, no, 0, yes, (1 << 24) + 1), Bytes(yes, String_t("\033[2J"))})
        answers.emplace_back(answer, "protocol error");
    for (auto const& [answer, message] : answers) {
        std::string const limit = answer.empty() ? " -t 1 " : " -t 60 ";
        Start(FRACTURE_CLIENT_COMMAND + limit + address + " a.lay");
        Raw const client(server.Accept(60));
        EXPECT_EQ(Square(0), client.Receive(Square(0).size()));
        client.Send(answer);
        if (!answer.empty()) shutdown(client.fd, SHUT_WR);
        EXPECT_EQ("fracture_client: " + address + ": " + message + "\n1", Wait()) << answer;
    }
}

TEST_F(Exchange, TheDemoLeavesAPicture) {
    std::string const programs =
        "\"" FRACTURE_SERVER_COMMAND "\" \"" FRACTURE_CLIENT_COMMAND " -q\"";
    std::string const bare = std::regex_replace(programs, std::regex("'"), "");
    ASSERT_EQ(0, Run(EXCHANGE_DEMO_COMMAND " " + bare + " p.svg " + samples)) << err;
    EXPECT_NE(std::string::npos, out.find("The server has ended.\nThe picture is p.svg: "));
}

}  // namespace
