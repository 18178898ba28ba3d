// Runs server and clients as processes, and talks to both as somebody who does not keep the rules.
#include <net/clientsocket.h>
#include <net/serversocket.h>
#include <net/strbinstream.h>
#include <signal.h>
#include <sys/socket.h>
#include <unistd.h>

#include <algorithm>
#include <cmath>
#include <cstdio>
#include <cstring>
#include <iterator>
#include <random>
#include <regex>
#include <set>
#include <sstream>
#include <utility>
#include <vector>

#include "program.h"

namespace {

// The bytes of values, one behind the other, as streams send them.
template <class... Values>
std::string Bytes(Values... values) {
    OStrBinStream out(64);
    (out << ... << values);
    char const* const text = out.Str();
    return {text, out.Len()};
}

using Byte = unsigned char;

// A request of one square, and the answer to it.
std::string Square(int x) {
    return Bytes(1, Byte{0}, 0, short{0}, 0, 4, x, 0, x + 10, 0, x + 10, 10, x, 10);
}
std::string SquareAnswer(int x) {
    return Bytes(Byte{0}, 0, Byte{0}, 4, x, 0, x + 10, 0, x + 10, 10, x, 10, Byte{0}, 1, x, 0,
                 x + 10, 10);
}

// Half of its edges cross a slab: the answer has about count * count * 6 bytes.
std::string Zigzag(int count) {
    std::string request = Bytes(1, Byte{0}, 0, short{0}, 0, count);
    for (int i = 0; i < count; ++i) request += Bytes(i, i % 2 * 20000 + i * 7 % 10000);
    return request;
}

// The end of a connection that the test itself has.
class Raw {
public:
    explicit Raw(int fd) : fd(fd) { EXPECT_LE(0, fd); }
    explicit Raw(std::string const& address) : Raw(ClientSocketIn(address.c_str()).Connect()) {}
    Raw(Raw&& other) noexcept : fd(std::exchange(other.fd, -1)) {}
    ~Raw() { close(fd); }

    void Send(std::string const& bytes) const {
        EXPECT_EQ(ssize_t(bytes.size()), send(fd, bytes.data(), bytes.size(), MSG_NOSIGNAL));
    }
    void SendNoMore() const { shutdown(fd, SHUT_WR); }
    // What comes next, up to `most` bytes or the end.
    std::string Receive(std::size_t most) const {
        std::string bytes(most, '\0');
        std::size_t got = 0;
        for (ssize_t n; got < most && (n = recv(fd, &bytes[got], most - got, 0)) > 0;)
            got += std::size_t(n);
        bytes.resize(got);
        return bytes;
    }
    // "HOST:PORT" of this end, as the server sees it.
    std::string Name() const {
        SockIO::SockAddr own;
        ClientSocketIn::GetSocketName(fd, own);
        return own.ToString().Get();
    }

private:
    int fd;
};

class Exchange : public Program {
protected:
    Exchange() : Program(FRACTURE_CLIENT_COMMAND) {}
    void TearDown() override {
        if (output != nullptr) EndServer(SIGTERM);
    }

    // Starts a process whose output, errors too, is read by Line().
    void Start(std::string const& command) {
        output = popen(("echo $$ && exec 2>&1 " + command).c_str(), "r");
        ASSERT_NE(nullptr, output);
        pid = std::stoi(Line());
    }
    void StartServer(std::string const& arguments) {
        Start(FRACTURE_SERVER_COMMAND " " + arguments);
        address = Line();
    }
    std::string Local() { return "-l " + folder.Path().string() + "/s"; }
    // The next line, waited for; "" at the end.
    std::string Line() {
        char line[1000] = "";
        if (std::fgets(line, sizeof line, output) == nullptr) return "";
        return std::string(line, std::strcspn(line, "\n"));
    }
    // The exit status; what was printed meanwhile in `rest`.
    int Wait() {
        rest.clear();
        for (std::string line; !(line = Line()).empty();) rest += line + '\n';
        int const status = pclose(std::exchange(output, nullptr));
        return WIFEXITED(status) ? WEXITSTATUS(status) : -1;
    }
    int EndServer(int signal_number) {
        kill(pid, signal_number);
        return Wait();
    }
    static std::set<std::string> Names() {
        std::set<std::string> names;
        for (auto const& entry : fs::directory_iterator("."))
            names.insert(entry.path().filename().string());
        return names;
    }
    // The output of a program without the times and its name.
    std::string Printed() const {
        std::string text;
        std::istringstream lines(out);
        for (std::string line; std::getline(lines, line);) {
            std::istringstream words(line);
            std::vector<std::string> row{std::istream_iterator<std::string>(words), {}};
            if (row.size() == 11) row[9] = "time";
            for (auto const& word : row) text += word + ' ';
            text += '\n';
        }
        return text + std::regex_replace(err, std::regex("(^|\n)fracture(_client)?:"), "$1:");
    }
    // The client does and says what fracture does.
    void ExpectSame(std::string const& arguments) {
        SCOPED_TRACE(arguments);
        int const want = RunProgram(FRACTURE_COMMAND, "-o own.svg " + arguments);
        std::string const printed = Printed();
        EXPECT_EQ(want, Run("-o far.svg " + arguments.substr(0, arguments.find('/')) + "'" +
                            address + "' " + arguments.substr(arguments.find('/'))));
        EXPECT_EQ(printed, std::regex_replace(Printed(), std::regex("far.svg"), "own.svg"));
        EXPECT_TRUE(ReadFile("own.svg") == ReadFile("far.svg"));
    }
    FILE* output = nullptr;
    pid_t pid = 0;
    std::string address, rest;
};

// Records of all kinds, some of them wrong.
std::string RandomLayout(unsigned seed) {
    std::mt19937 random(seed);
    auto const any = [&random](int from, int to) {
        return std::uniform_int_distribution<int>(from, to)(random);
    };
    std::ostringstream text;
    for (int i = 0; i < 3000; ++i) {
        int const x = any(-90000, 90000), y = any(-90000, 90000), n = any(1, 40);
        std::string const layer = "l" + std::to_string(any(0, 9));
        switch (any(0, 7)) {
            case 0: text << "label " << layer << " 50 " << x << ' ' << y << " text " << i; break;
            case 1:
                text << "circle " << layer << ' ' << any(2, 99) << ' ' << x << ' ' << y << " 500";
                break;
            case 2:
            case 3:
                text << "path " << layer << ' ' << any(0, 200) << ' ' << any(0, 1);
                for (int p = 0; p < n; ++p)
                    text << ' ' << x + (p + 1) / 2 * 300 << ' ' << y + p / 2 * any(1, 300) % 301;
                break;
            default:
                text << "polygon " << layer;
                for (int p = 0; p < n; ++p)
                    text << ' ' << x + std::lround(any(100, 999) * std::cos(6.28 * p / n)) << ' '
                         << y + std::lround(any(100, 999) * std::sin(6.28 * p / n));
        }
        text << '\n';
    }
    return text.str();
}

// Outlines of so many points that neither request nor answer fit what sockets hold.
std::string BigLayout() {
    std::ostringstream text;
    text << "polygon a 0 0 5 0 5 5\npolygon b";
    for (int i = 0; i < 10000; ++i)
        text << ' ' << std::lround(1e6 * std::cos(i / 1591.55)) << ' '
             << std::lround(1e6 * std::sin(i / 1591.55));
    text << "\npolygon d";  // the answer fills a socket while the comb is to be sent
    for (int i = 0; i < 600; ++i) text << ' ' << i << ' ' << i % 2 * 20000 + i * 7 % 10000;
    text << "\npolygon c 0 0";  // a comb
    for (int i = 0; i < 16000; ++i)
        text << ' ' << 20 * i << " 100 " << 20 * i << ' ' << 300 + i % 11 << ' ' << 20 * i + 10
             << ' ' << 300 + i % 11 << ' ' << 20 * i + 10 << " 100";
    text << " 320000 0\npolygon a 0 0 5 0 5 5";
    for (int i = 0; i < 3000; ++i) text << "\npolygon e 0 0 " << i << " 9 5 " << i;
    return text.str() + '\n';
}

std::string Samples() {
    std::string files;
    for (auto const& entry : fs::directory_iterator(EXAMPLE_DATA))
        files += entry.path().string() + ' ';
    return files;
}

TEST_F(Exchange, ClientsTellWhatFractureTells) {
    WriteFile("random.lay", RandomLayout(1));
    WriteFile("big.lay", BigLayout());
    for (std::string const& options : {std::string(), Local()}) {
        StartServer(options);
        ExpectSame(Samples());
        ExpectSame("-s 20n " + Samples());
        ExpectSame("-u 5n -s -0.04u " + Samples());
        ExpectSame(folder.Path().string() + "/random.lay " + folder.Path().string() + "/none.lay");
        ExpectSame(folder.Path().string() + "/big.lay");
        EXPECT_EQ(0, Run("-x " + address)) << err;
        EXPECT_EQ(0, Wait());
        EXPECT_EQ("", rest);
    }
}

TEST_F(Exchange, OthersSpeakTheProtocol) {
    StartServer("-l s");
    std::mt19937 random(5);
    std::string text;
    for (int i = 0; i < 300; ++i) {
        text += "polygon m";
        for (int p = 0; p < 2 * (3 + i % 20); ++p) text += ' ' + std::to_string(random() % 1000);
        text += '\n';
    }
    WriteFile("a.lay", text);
    ASSERT_EQ(0, Run(address + " a.lay")) << err;
    std::istringstream row(out.substr(out.find("\ntotal") + 6));
    std::string word, pieces;
    for (int i = 0; i < 6; ++i) row >> (i == 5 ? pieces : word);
    ASSERT_EQ(0, RunProgram("python3 " PEER, "cut " + address + " a.lay")) << err;
    EXPECT_EQ("a.lay: 300 polygons, " + pieces + " pieces\n", out);
    ASSERT_EQ(0, RunProgram("python3 " PEER, "stop " + address)) << err;
    EXPECT_EQ(0, Wait());
}

TEST_F(Exchange, ServesManyClientsAtOnce) {
    StartServer("");
    std::vector<Raw> clients;
    for (int i = 0; i < 64; ++i) clients.emplace_back(address);
    std::string const run = " && " FRACTURE_CLIENT_COMMAND " >table " + address + " " + Samples();
    for (int i = 0; i < 64; ++i) clients[std::size_t(i)].Send(Square(i).substr(0, 20));
    EXPECT_EQ(0,
              RunProgram("{ true", run + "& true" + run + "& a=$!; true" + run + "; wait $a; }"));
    for (int i = 64; i-- > 0;) {  // byte by byte, to some of them
        Raw const& client = clients[std::size_t(i)];
        if (i % 8 != 0) client.Send(Square(i).substr(20));
        for (char const c : i % 8 == 0 ? Square(i).substr(20) : "") client.Send({c});
        client.Send(Square(i + 1));
    }
    for (int i = 0; i < 64; ++i) {
        std::string const want = SquareAnswer(i) + SquareAnswer(i + 1);
        EXPECT_EQ(want, clients[std::size_t(i)].Receive(want.size())) << i;
    }
    EXPECT_EQ(0, EndServer(SIGTERM));
    EXPECT_EQ("", rest);
}

TEST_F(Exchange, AnswersRecordsOfEveryKind) {
    StartServer(Local());
    struct {
        std::string request, answer;
    } const rows[] = {
        {Bytes(1, Byte{1}, 20, short{1}, 0, 2, 0, 0, 100, 0),
         Bytes(Byte{0}, 0, Byte{0}, 4, -10, -10, 110, -10, 110, 10, -10, 10, Byte{0}, 1, -10, -10,
               110, 10)},
        {Bytes(1, Byte{0}, 0, short{0}, 0, 3, 0, 0, 20, 0, 0, 10),
         Bytes(Byte{0}, 0, Byte{0}, 3, 0, 0, 20, 0, 0, 10, Byte{1}, 1, 0, 0, 0, 20, 0, 10)},
        {Bytes(1, Byte{2}, 10, short{4}, -5, 1, 7, 7), Bytes(Byte{0}, 0, Byte{2}, 0, Byte{0}, 0)},
        {Bytes(1, Byte{0}, 0, short{0}, 9, 3, 0, 0, 5, 5, 9, 9),
         Bytes(Byte{0}, 2, Byte{1}, 1, 9, 9, Byte{0}, 0)},
        {Bytes(2, Byte{1}, 2, short{0}, 0, 2, 0, 0, 9, 5) + Square(3).substr(4),
         Bytes(Byte{1}, String_t("slanted path")) + SquareAnswer(3)},
        {Bytes(0), Bytes(0)}};
    for (auto const& row : rows) {
        Raw const client(address);
        client.Send(row.request);
        EXPECT_EQ(row.answer, client.Receive(row.answer.size())) << &row - rows;
    }
    EXPECT_EQ(0, Wait());
    EXPECT_EQ("", rest);
}

TEST_F(Exchange, BadClientsHarmNobodyElse) {
    StartServer("");
    constexpr int kFar = 1073741824;
    auto const polygon = [](int count) { return Bytes(1, Byte{0}, 0, short{0}, 0, count); };
    std::string const protocol = "protocol error", end = "end of input";
    struct {
        std::string bytes, complaint;
    } const rows[] = {{"GET / HTTP/1.1\r\n\r\n", protocol},
                      {Bytes(-1), protocol},
                      {Bytes(1025), protocol},
                      {Bytes(1, Byte{3}), protocol},
                      {Bytes(1, Byte{0}, 1, short{0}, 0), protocol},
                      {Bytes(1, Byte{0}, 0, short{1}, 0), protocol},
                      {Bytes(1, Byte{1}, -1, short{0}, 0), protocol},
                      {Bytes(1, Byte{1}, kFar, short{0}, 0), protocol},
                      {Bytes(1, Byte{1}, 2, short{2}, 0), protocol},
                      {Bytes(1, Byte{2}, 2, short{2}, 0), protocol},
                      {Bytes(1, Byte{0}, 0, short{0}, kFar / 4), protocol},
                      {Bytes(1, Byte{0}, 0, short{0}, -kFar / 4), protocol},
                      {polygon(2), protocol},
                      {polygon(65536), protocol},
                      {polygon(-2147483647), protocol},
                      {Bytes(1, Byte{1}, 2, short{0}, 0, 32768), protocol},
                      {Bytes(1, Byte{2}, 2, short{3}, 0, 2), protocol},
                      {polygon(3) + Bytes(0, kFar, 0, 0, 0, 0), protocol},
                      {polygon(3) + Bytes(0, 0, 0, 0, -kFar, 0), protocol},
                      {Bytes(1).substr(3), end},
                      {polygon(65535) + Bytes(1, 2, 3), end}};
    Raw const other(address);
    for (auto const& row : rows) {
        Raw const client(address);
        client.Send(row.bytes);
        if (row.complaint == end) client.SendNoMore();
        EXPECT_EQ("fracture_server: " + client.Name() + ": " + row.complaint, Line());
        EXPECT_EQ("", client.Receive(1)) << &row - rows;
        other.Send(Square(1));
        EXPECT_EQ(SquareAnswer(1), other.Receive(SquareAnswer(1).size()));
    }
    std::string name;
    {
        Raw const client(address);  // vanishes inside the answer
        client.Send(Zigzag(1500));
        EXPECT_EQ(100u, client.Receive(100).size());
        name = client.Name();
    }
    EXPECT_EQ(0u, Line().find("fracture_server: " + name + ": read/write error, "));
    { Raw const client(address); }  // may come and go
    other.Send(Square(1));
    EXPECT_EQ(SquareAnswer(1), other.Receive(SquareAnswer(1).size()));
    EXPECT_EQ(0, EndServer(SIGTERM));
    EXPECT_EQ("", rest);
}

TEST_F(Exchange, SlowClientsAreLeftAlone) {
    StartServer("-t 1");
    Raw const silent(address), stuck(address), deaf(address);
    stuck.Send(Square(1).substr(0, 30));
    deaf.Send(Zigzag(1500));
    std::set<std::string> want, complaints;
    for (auto const* client : {&silent, &stuck, &deaf}) {
        want.insert("fracture_server: " + client->Name() + ": timed out");
        complaints.insert(Line());
    }
    EXPECT_EQ(want, complaints);
    EXPECT_EQ("", silent.Receive(1));
    Raw const other(address);
    other.Send(Square(1));
    EXPECT_EQ(SquareAnswer(1), other.Receive(SquareAnswer(1).size()));
}

TEST_F(Exchange, EndsWithAllItsChildren) {
    for (std::string const& options : {std::string(), Local()})
        for (int const end : {SIGTERM, SIGINT, 0}) {
            StartServer(options);
            Raw const idle(address), busy(address), waiting(address);
            idle.Send(Square(1));
            EXPECT_EQ(SquareAnswer(1).size(), idle.Receive(SquareAnswer(1).size()).size());
            waiting.Send(Square(1).substr(0, 30));
            busy.Send(Zigzag(1500));
            EXPECT_EQ(100u, busy.Receive(100).size());
            EXPECT_EQ(0, end == 0 ? Run("--stop " + address) : 0) << err;
            EXPECT_EQ(0, end == 0 ? Wait() : EndServer(end));
            EXPECT_EQ("", rest);
            EXPECT_EQ("", idle.Receive(1));
            EXPECT_EQ("", waiting.Receive(1));
            EXPECT_GT(1u << 30, busy.Receive(1u << 24).size());
            EXPECT_EQ(-1, ClientSocketIn(address.c_str()).Connect());
            EXPECT_EQ(std::set<std::string>(), Names());
        }
}

TEST_F(Exchange, ListensWhereItIsTold) {
    StartServer("");
    EXPECT_EQ(0u, address.find("127.0.0.1:"));
    int const taken = std::stoi(address.substr(10)), last = std::min(taken + 9, 65535);
    std::string const port = std::to_string(taken), range = port + "-" + std::to_string(last);
    WriteFile("file", "");
    struct {
        std::string arguments, message;
    } const rows[] = {
        {"-p " + port, "cannot listen on 127.0.0.1 port " + port + ": Address already in use\n"},
        {"-H no.such.host.invalid", "cannot listen on no.such.host.invalid port 0: "},
        {"-l file", "cannot listen on ./file: Address already in use\n"},
        {"-l none/s", "cannot listen on ./none/s: No such file or directory\n"},
        {"-l " + std::string(106, 'x'), "not a path for a local socket: xxx"},
        {"-l ''", "not a path for a local socket: \nusage: "},
        {"-l s -p 0", "either ports or a local socket\nusage: "},
        {"-l s -H localhost", "either ports or a local socket\nusage: "},
        {"-p 5-4", "not a range of ports: 5-4\nusage: "},
        {"-p 0-4", "not a range of ports: 0-4\nusage: "},
        {"-p 1-65536", "not a range of ports: 1-65536\nusage: "},
        {"-p x", "not a range of ports: x\nusage: "},
        {"-t 0", "not a number of seconds: 0\nusage: "},
        {"-t 2147484", "not a number of seconds: 2147484\nusage: "},
        {"-t 1s", "not a number of seconds: 1s\nusage: "},
        {"-t", "a value is missing after -t\nusage: "},
        {"-q", "unknown option -q\nusage: "},
        {"a", "not expected: a\nusage: "}};
    for (auto const& row : rows) {
        EXPECT_EQ(1, RunProgram(FRACTURE_SERVER_COMMAND, row.arguments)) << row.arguments;
        EXPECT_EQ("", out) << row.arguments;
        EXPECT_EQ(0u, err.find("fracture_server: " + row.message)) << row.arguments << err;
        EXPECT_EQ(std::set<std::string>{"file"}, Names()) << row.arguments;
    }
    FILE* const first = std::exchange(output, nullptr);
    pid_t const first_pid = std::exchange(pid, 0);
    if (last > taken) {
        StartServer("-p " + range);
        EXPECT_NE(port, address.substr(10));
        EXPECT_EQ(0, Run("-x " + address)) << err;
        EXPECT_EQ(0, Wait());
    }
    if (ServerSocketIn(0, "::1").Listen(1) >= 0) {
        StartServer("-H ::1");
        EXPECT_EQ(0u, address.find("::1/"));
        EXPECT_EQ(0, Run(address + " " + Samples())) << err;
        EXPECT_EQ(0, Run("-x [::1]:" + address.substr(4))) << err;
        EXPECT_EQ(0, Wait());
    }
    output = first;
    pid = first_pid;
    EXPECT_EQ(0, EndServer(SIGTERM));
}

TEST_F(Exchange, ClientsNameWhatTheServerDoesWrong) {
    ServerSocketIn server(0, "127.0.0.1");
    ASSERT_LE(0, server.Listen(1));
    address = server.RefString().Get();
    WriteFile("a.lay", "polygon m 0 0 10 0 10 10 0 10\n");
    WriteFile("p.svg", "old");
    std::string const square = SquareAnswer(0);
    struct {
        std::string answer;
        char const* message;
        char const* options = "-o p.svg";
    } const rows[] = {
        {"", "end of input"},
        {square.substr(0, 50), "end of input"},
        {Bytes(0), "", "-x"},
        {"HTTP/1.1 400 Bad Request\r\n", "protocol error"},
        {Bytes(Byte{1}, String_t("")), "protocol error"},
        {Bytes(Byte{1}, String_t("\033[2J")), "protocol error"},
        {Bytes(Byte{1}, 9000), "protocol error"},
        {Bytes(Byte{0}, 5), "protocol error"},
        {Bytes(Byte{0}, 0, Byte{3}), "protocol error"},
        {Bytes(Byte{0}, 0, Byte{0}, 65536), "protocol error"},
        {Bytes(Byte{0}, 0, Byte{0}, 1, 1 << 30, 0), "protocol error"},
        {Bytes(Byte{0}, 0, Byte{0}, 0, Byte{2}), "protocol error"},
        {Bytes(Byte{0}, 0, Byte{0}, 0, Byte{1}, (1 << 24) + 1), "protocol error"},
        {Bytes(Byte{0}, 0, Byte{0}, 0, Byte{1}, -1), "protocol error"},
        {Bytes(Byte{0}, 0, Byte{0}, 0, Byte{0}, 1, 0, 0, 0, 1 << 30), "protocol error"},
        {Bytes(Byte{0}, 0, Byte{0}, 0, Byte{1}, 1 << 24, 1), "end of input"},
        {Bytes(7), "protocol error", "-x"},
        {Bytes(0).substr(1), "end of input", "-x"}};
    for (auto const& row : rows) {
        bool const stop = row.options[1] == 'x';
        Start(FRACTURE_CLIENT_COMMAND " " + (row.options + (" " + address)) +
              (stop ? "" : " a.lay"));
        {
            Raw const client(server.Accept(60));
            EXPECT_EQ(stop ? Bytes(0) : Square(0), client.Receive(stop ? 4 : Square(0).size()));
            client.Send(row.answer);
        }
        bool const good = stop && row.answer == Bytes(0);
        EXPECT_EQ(good ? 0 : 1, Wait()) << row.answer;
        EXPECT_EQ(good ? "" : "fracture_client: " + address + ": " + row.message + '\n', rest);
        EXPECT_EQ("old", ReadFile("p.svg"));
    }
    Start(FRACTURE_CLIENT_COMMAND " -t 1 -o p.svg " + address + " a.lay");
    Raw const client(server.Accept(60));
    EXPECT_EQ(1, Wait());
    EXPECT_EQ("fracture_client: " + address + ": timed out\n", rest);
    server.Close();
    EXPECT_EQ(1, Run("-o p.svg " + address + " a.lay"));
    EXPECT_EQ("fracture_client: connect error, " + address + ", Connection refused\n", err);
    struct {
        char const *arguments, *message;
    } const bad[] = {{"", "no address given\nusage: "},
                     {"./none", "no file given\nusage: "},
                     {"-x ./none a.lay", "not expected: a.lay\nusage: "},
                     {"-xy ./none", "unknown option -xy\nusage: "},
                     {"-t 0 ./none a.lay", "not a number of seconds: 0\nusage: "},
                     {"-s q ./none a.lay", "not a distance: q\nusage: "},
                     {"./none a.lay", "connect error, ./none, No such file"},
                     {"x a.lay", "connect error, x, "},
                     {"x.invalid:5 a.lay", "connect error, x.invalid:5, "}};
    for (auto const& row : bad) {
        EXPECT_EQ(1, Run(row.arguments)) << row.arguments;
        EXPECT_EQ(0u, err.find(std::string("fracture_client: ") + row.message)) << err;
        EXPECT_EQ("", out);
    }
}

TEST_F(Exchange, TheDemoLeavesAPicture) {
    auto const bare = [](std::string text) {
        text.erase(std::remove(text.begin(), text.end(), '\''), text.end());
        return "'" + text + "' ";
    };
    std::string const commands =
        bare(FRACTURE_SERVER_COMMAND) + bare(FRACTURE_CLIENT_COMMAND " -q");
    ASSERT_EQ(0, RunProgram(EXCHANGE_DEMO_COMMAND, commands + "p.svg " + Samples())) << err;
    EXPECT_EQ(0u, out.find("A server listens at 127.0.0.1:"));
    EXPECT_EQ(std::string::npos, out.find("\ntotal "));  // -q
    EXPECT_NE(std::string::npos, out.find("The server has ended.\nThe picture is p.svg: "));
    std::string const picture = ReadFile("p.svg");
    ASSERT_EQ(0, RunProgram(FRACTURE_COMMAND, "-o p.svg " + Samples()));
    EXPECT_TRUE(picture == ReadFile("p.svg"));
    EXPECT_EQ(1, RunProgram(EXCHANGE_DEMO_COMMAND, commands + "p.svg none.lay"));
    EXPECT_NE(std::string::npos, err.find("exchange_demo: the client failed\n"));
    EXPECT_EQ(1, RunProgram(EXCHANGE_DEMO_COMMAND, "false true p.svg a.lay"));
    EXPECT_EQ("exchange_demo: the server does not start\n", err);
}

}  // namespace
