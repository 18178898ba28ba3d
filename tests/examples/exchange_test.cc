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

using Byte = unsigned char;
using Strings = std::set<std::string>;

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
class Raw {
public:
    explicit Raw(int fd) : fd(fd) {
        EXPECT_LE(0, fd);
        timeval const limit = {60, 0};
        setsockopt(fd, SOL_SOCKET, SO_RCVTIMEO, &limit, sizeof limit);
    }
    explicit Raw(std::string const& address, int error = 0)
        : Raw(ClientSocketIn(address.c_str()).Connect(60, error)) {}
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
    void IsServed() const {
        Send(Square(1));
        EXPECT_EQ(SquareAnswer(1), Receive(SquareAnswer(1).size()));
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
    // The exit status behind what was printed meanwhile.
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
    static Strings Names() {
        Strings names;
        for (auto const& entry : fs::directory_iterator("."))
            names.insert(entry.path().filename().string());
        return names;
    }
    // The output of a program without the times and its name.
    std::string Printed() const {
        std::string text = std::regex_replace(out, std::regex(" +"), " ");
        text = std::regex_replace(text, std::regex("(\n(\\S+ ){9})\\S+ "), "$1time ");
        return text + std::regex_replace(err, std::regex("(^|\n)fracture(_client)?:"), "$1:");
    }
    // The client does and says what fracture does.
    void ExpectSame(std::string const& options, std::string const& files) {
        SCOPED_TRACE(options + files);
        int const want = RunProgram(FRACTURE_COMMAND, "-o p.svg " + options + files);
        std::string const printed = Printed(), picture = ReadFile("p.svg");
        fs::remove("p.svg");
        EXPECT_EQ(want, Run("-o p.svg " + options + address + ' ' + files));
        EXPECT_EQ(printed, Printed());
        EXPECT_TRUE(picture == ReadFile("p.svg"));
        fs::remove("p.svg");
    }

    FILE* output = nullptr;
    pid_t pid = 0;
    std::string address;
};

// Records of all kinds, some of them wrong.
std::string RandomLayout() {
    std::mt19937 random(1);
    auto const any = [&random](int from, int to) {
        return std::uniform_int_distribution<int>(from, to)(random);
    };
    char const* const kinds[] = {"label", "circle", "path", "polygon"};
    std::ostringstream text;
    for (int i = 0; i < 3000; ++i) {
        int const x = any(-90000, 90000), y = any(-90000, 90000), n = any(1, 40), kind = any(0, 3);
        text << kinds[kind] << " l" << any(0, 9);
        if (kind == 0) text << " 50 " << x << ' ' << y << " text";
        if (kind == 1) text << ' ' << any(2, 99) << ' ' << x << ' ' << y << " 500";
        if (kind == 2) text << ' ' << any(0, 200) << ' ' << any(0, 1);
        for (int p = 0; kind == 2 && p < n; ++p)
            text << ' ' << x + (p + 1) / 2 * 300 << ' ' << y + p / 2 * any(1, 300) % 301;
        for (int p = 0; kind == 3 && p < 2 * n; ++p)
            text << ' ' << std::lround(any(100, 999) * std::sin(3.14 * (p - p % 2) / n + p % 2));
        text << '\n';
    }
    return text.str();
}

// Outlines of so many points that neither record nor answer fit what sockets hold.
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
    WriteFile("random.lay", RandomLayout());
    WriteFile("big.lay", BigLayout());
    for (std::string const& options : {std::string(), Local()}) {
        StartServer(options);
        ExpectSame("", Samples());
        ExpectSame("-s 20n ", Samples());
        ExpectSame("-u 5n -s -0.04u ", Samples());
        ExpectSame("", "random.lay none.lay");
        ExpectSame("", "big.lay");
        EXPECT_EQ("0", Answer("-x " + address));
        EXPECT_EQ("0", Wait());
    }
}

// The bytes in the code blocks of the page.
std::vector<std::string> BytesOfThePage() {
    std::istringstream page(ReadFile(EXAMPLE_DATA "/../../docs/wire-format.md"));
    std::vector<std::string> blocks;
    bool inside = false;
    for (std::string line; std::getline(page, line);) {
        bool const fence = line == "```";
        if (fence && !inside) blocks.emplace_back();
        inside ^= fence;
        std::istringstream bytes(inside && !fence ? line : "");
        for (unsigned byte; bytes >> std::hex >> byte;) blocks.back() += char(byte);
    }
    return blocks;
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
    ASSERT_EQ(0, Run("./s a.lay")) << err;
    std::smatch total;
    ASSERT_TRUE(std::regex_search(out, total, std::regex("\ntotal( +\\S+){5} +(\\d+)")));
    std::string const pieces = total[2];
    ASSERT_EQ(0, RunProgram("python3 " PEER, "cut ./s a.lay")) << err;
    EXPECT_EQ("a.lay: 300 polygons, " + pieces + " pieces\n", out);
    auto const page = BytesOfThePage();
    ASSERT_EQ(2u, page.size());
    {
        Raw const client("./s");
        client.Send(page[0]);
        EXPECT_EQ(page[1], client.Receive(page[1].size()));
    }
    ASSERT_EQ(0, RunProgram("python3 " PEER, "stop ./s")) << err;
    EXPECT_EQ("0", Wait());
}

TEST_F(Exchange, ServesManyClientsAtOnce) {
    for (std::string const& options : {std::string(), Local()}) {
        StartServer(options);
        kill(pid, SIGSTOP);  // so that they all wait to be accepted
        std::vector<Raw> clients;
        for (int i = 0; i < 64; ++i) clients.emplace_back(address);
        kill(pid, SIGCONT);
        for (int i = 0; i < 64; ++i) clients[std::size_t(i)].Send(Square(i).substr(0, 20));
        std::string const run =
            " && " FRACTURE_CLIENT_COMMAND " >table " + address + " " + Samples();
        EXPECT_EQ(
            0, RunProgram("{ true", run + "& true" + run + "& a=$!; true" + run + "; wait $a; }"));
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
        EXPECT_EQ("0", EndServer(SIGTERM));
    }
}

TEST_F(Exchange, AnswersEveryClientAndNamesBadOnes) {
    StartServer("");
    constexpr int kFar = 1073741824;
    std::pair<std::string, std::string> const good[] = {
        {"", ""},
        {Square(1) + Square(2), SquareAnswer(1) + SquareAnswer(2)},
        {Head(1, 20, 1, 0, 2) + Bytes(0, 0, 100, 0),
         Bytes(Byte{0}, 0, Byte{0}, 4, -10, -10, 110, -10, 110, 10, -10, 10, Byte{0}, 1, -10, -10,
               110, 10)},
        {Head(0, 0, 0, 0, 3) + Bytes(0, 0, 20, 0, 0, 10),
         Bytes(Byte{0}, 0, Byte{0}, 3, 0, 0, 20, 0, 0, 10, Byte{1}, 1, 0, 0, 0, 20, 0, 10)},
        {Head(2, 10, 4, -5, 1) + Bytes(7, 7), Bytes(Byte{0}, 0, Byte{2}, 0, Byte{0}, 0)},
        {Head(0, 0, 0, 9, 3) + Bytes(0, 0, 5, 5, 9, 9),
         Bytes(Byte{0}, 2, Byte{1}, 1, 9, 9, Byte{0}, 0)},
        {Head(1, 2, 0, 0, 2) + Bytes(0, 0, 9, 5) + Square(3),
         Bytes(Byte{1}, String_t("slanted path")) + SquareAnswer(3)}};
    int const wrong_heads[][5] = {{'G', 0, 0, 0, 3},         {4, 0, 0, 0, 3},
                                  {0, 1, 0, 0, 3},           {0, 0, 1, 0, 3},
                                  {1, -1, 0, 0, 3},          {1, kFar, 0, 0, 3},
                                  {1, 2, 2, 0, 3},           {2, 2, 2, 0, 1},
                                  {0, 0, 0, kFar / 4, 3},    {0, 0, 0, -kFar / 4, 3},
                                  {0, 0, 0, 0, 2},           {0, 0, 0, 0, 65536},
                                  {0, 0, 0, 0, -2147483647}, {1, 2, 0, 0, 0},
                                  {1, 2, 0, 0, 32768},       {2, 2, 3, 0, 2}};
    Raw const other(address);
    auto const converse = [&](std::string const& bytes, std::string const& answer,
                              std::string const& complaint) {
        Raw const client(address);
        client.Send(bytes);
        if (complaint != "protocol error") client.SendNoMore();
        std::string const line = "fracture_server: " + client.Name() + ": " + complaint;
        EXPECT_EQ(complaint.empty() ? "" : line, complaint.empty() ? "" : Line());
        EXPECT_EQ(answer, client.Receive(1000)) << bytes;
        other.IsServed();
    };
    for (auto const& row : good) converse(row.first, row.second, "");
    for (auto const& head : wrong_heads)
        converse(Head(head[0], head[1], head[2], head[3], head[4]), "", "protocol error");
    converse(Head(0, 0, 0, 0, 3) + Bytes(0, kFar, 0, 0, 0, 0), "", "protocol error");
    converse(Head(0, 0, 0, 0, 3) + Bytes(0, 0, 0, 0, -kFar, 0), "", "protocol error");
    converse(Square(5).substr(0, 3), "", "end of input");
    converse(Head(0, 0, 0, 0, 65535) + Bytes(1, 2, 3), "", "end of input");
    std::string name;
    {
        Raw const client(address);  // vanishes inside the answer
        client.Send(Zigzag());
        EXPECT_EQ(100u, client.Receive(100).size());
        name = client.Name();
    }
    EXPECT_EQ(0u, Line().find("fracture_server: " + name + ": read/write error, "));
    other.IsServed();
    EXPECT_EQ("0", EndServer(SIGTERM));
}

TEST_F(Exchange, SlowClientsAreLeftAlone) {
    StartServer("-t 1");
    Raw const silent(address), stuck(address), deaf(address);
    stuck.Send(Square(1).substr(0, 30));
    deaf.Send(Zigzag());
    Strings want, complaints;
    for (auto const* client : {&silent, &stuck, &deaf}) {
        want.insert("fracture_server: " + client->Name() + ": timed out");
        complaints.insert(Line());
    }
    EXPECT_EQ(want, complaints);
    EXPECT_EQ("", silent.Receive(1));
    Raw(address).IsServed();
}

TEST_F(Exchange, EndsWithAllItsChildren) {
    for (std::string const& options : {std::string(), Local()})
        for (int const end : {SIGTERM, SIGINT, 0}) {
            StartServer(options);
            Raw const idle(address), busy(address), waiting(address);
            idle.IsServed();
            waiting.Send(Square(1).substr(0, 30));
            busy.Send(Zigzag());
            EXPECT_EQ(100u, busy.Receive(100).size());
            EXPECT_EQ("0", end == 0 ? Answer("--stop " + address) : "0");
            EXPECT_EQ("0", end == 0 ? Wait() : EndServer(end));
            EXPECT_EQ("", idle.Receive(1));
            EXPECT_EQ("", waiting.Receive(1));
            EXPECT_GT(1u << 24, busy.Receive(1u << 24).size());
            EXPECT_EQ(-1, ClientSocketIn(address.c_str()).Connect());
            EXPECT_EQ(Strings(), Names());
        }
}

TEST_F(Exchange, ListensWhereItIsTold) {
    StartServer("");
    EXPECT_EQ(0u, address.find("127.0.0.1:"));
    std::string const port = address.substr(10);
    int const taken = std::stoi(port), last = std::min(taken + 9, 65535);
    WriteFile("file", "");
    std::pair<std::string, std::string> const rows[] = {
        {"-p " + port, "cannot listen on 127.0.0.1 port " + port + ": Address already in use\n"},
        {"-H no.such.host.invalid", "cannot listen on no.such.host.invalid port 0: "},
        {"-l file", "cannot listen on ./file: Address already in use\n"},
        {"-l none/s", "cannot listen on ./none/s: No such file or directory\n"},
        {"-l " + std::string(106, 'x'), "not a path for a local socket: xxx"},
        {"-l ''", "not a path for a local socket: \nusage: "},
        {"-l s -p 0", "either ports or a local socket\nusage: "},
        {"-l s -H localhost", "either ports or a local socket\nusage: "},
        {"-t", "a value is missing after -t\nusage: "},
        {"-q", "unknown option -q\nusage: "},
        {"a", "not expected: a\nusage: "}};
    auto const refuses = [this](std::string const& arguments, std::string const& message) {
        EXPECT_EQ(1, RunProgram(FRACTURE_SERVER_COMMAND, arguments));
        EXPECT_EQ(0u, (out + err).find("fracture_server: " + message)) << arguments << err;
        EXPECT_EQ(Strings{"file"}, Names()) << arguments;
    };
    for (auto const& row : rows) refuses(row.first, row.second);
    for (std::string const ports : {"5-4", "0-4", "1-65536", "x"})
        refuses("-p " + ports, "not a range of ports: " + ports + "\nusage: ");
    for (std::string const seconds : {"0", "2147484", "1s"})
        refuses("-t " + seconds, "not a number of seconds: " + seconds + "\nusage: ");
    FILE* const first = std::exchange(output, nullptr);
    pid_t const first_pid = pid;
    if (last > taken) {
        StartServer("-p " + port + "-" + std::to_string(last));
        EXPECT_NE(port, address.substr(10));
        EXPECT_EQ("0", Answer("-x " + address));
        EXPECT_EQ("0", Wait());
    }
    if (ServerSocketIn(0, "::1").Listen(1) >= 0) {
        StartServer("-H ::1");
        EXPECT_EQ(0u, address.find("::1/"));
        EXPECT_EQ(0, Run(address + " " + Samples())) << err;
        EXPECT_EQ("0", Answer("-x [::1]:" + address.substr(4)));
        EXPECT_EQ("0", Wait());
    }
    output = first;
    pid = first_pid;
    EXPECT_EQ("0", EndServer(SIGTERM));
}

TEST_F(Exchange, ClientsNameWhatTheServerDoesWrong) {
    ServerSocketIn server(0, "127.0.0.1");
    ASSERT_LE(0, server.Listen(1));
    address = server.RefString().Get();
    WriteFile("a.lay", "polygon m 0 0 10 0 10 10 0 10\n");
    WriteFile("p.svg", "old");
    auto const converse = [&](bool stop, std::string const& answer, std::string const& message) {
        Start(FRACTURE_CLIENT_COMMAND +
              (stop ? " -x " + address : " -o p.svg " + address + " a.lay"));
        {
            Raw const client(server.Accept(60));
            std::string const request = stop ? Bytes(Byte{3}) : Square(0);
            EXPECT_EQ(request, client.Receive(request.size()));
            client.Send(answer);
        }
        std::string const complaint = "fracture_client: " + address + ": " + message + "\n1";
        EXPECT_EQ(message.empty() ? "0" : complaint, Wait()) << answer;
        EXPECT_EQ("old", ReadFile("p.svg"));
    };
    int const wrong[][6] = {{'H', 0, 0, 0, 0, 0}, {0, 5, 0, 0, 0, 0},
                            {0, 0, 3, 0, 0, 0},   {0, 0, 0, 65536, 0, 0},
                            {0, 0, 0, 0, 2, 0},   {0, 0, 0, 0, 1, (1 << 24) + 1},
                            {0, 0, 0, 0, 1, -1}};
    for (auto const& a : wrong)
        converse(false, Bytes(Byte(a[0]), a[1], Byte(a[2]), a[3], Byte(a[4]), a[5]),
                 "protocol error");
    for (auto const& text : {Bytes(9000), Bytes(String_t("")), Bytes(String_t("\033[2J"))})
        converse(false, Bytes(Byte{1}) + text, "protocol error");
    converse(false, Bytes(Byte{0}, 0, Byte{0}, 1, 1 << 30, 0), "protocol error");
    converse(false, Bytes(Byte{0}, 0, Byte{0}, 0, Byte{0}, 1, 0, 0, 0, 1 << 30), "protocol error");
    converse(false, Bytes(Byte{0}, 0, Byte{0}, 0, Byte{1}, 1 << 24, 1), "end of input");
    converse(false, SquareAnswer(0).substr(0, 50), "end of input");
    converse(false, "", "end of input");
    converse(true, Bytes(Byte{3}), "");
    converse(true, Bytes(Byte{0}), "protocol error");
    converse(true, "", "end of input");
    Start(FRACTURE_CLIENT_COMMAND " -t 1 -o p.svg " + address + " a.lay");
    Raw const client(server.Accept(60));
    EXPECT_EQ("fracture_client: " + address + ": timed out\n1", Wait());
    server.Close();
    EXPECT_EQ("fracture_client: connect error, " + address + ", Connection refused\n1",
              Answer("-o p.svg " + address + " a.lay"));
    char const* const bad[][2] = {{"", "no address given\n1"},
                                  {"./none", "no file given\n1"},
                                  {"-x ./none a.lay", "not expected: a.lay\n1"},
                                  {"-xy ./none", "unknown option -xy\n1"},
                                  {"-t 0 ./none a.lay", "not a number of seconds: 0\n1"},
                                  {"-s q ./none a.lay", "not a distance: q\n1"},
                                  {"./none a.lay", "connect error, ./none, No such file"},
                                  {"x a.lay", "connect error, x, "},
                                  {"x.invalid:5 a.lay", "connect error, x.invalid:5, "}};
    for (auto const& row : bad)
        EXPECT_EQ(0u, Answer(row[0]).find(std::string("fracture_client: ") + row[1])) << row[0];
}

TEST_F(Exchange, TheDemoLeavesAPicture) {
    auto const bare = [](std::string text) {
        text.erase(std::remove(text.begin(), text.end(), '\''), text.end());
        return "'" + text + "' ";
    };
    std::string const commands =
        bare(FRACTURE_SERVER_COMMAND) + bare(FRACTURE_CLIENT_COMMAND " -q") + "p.svg ";
    ASSERT_EQ(0, RunProgram(EXCHANGE_DEMO_COMMAND, commands + Samples())) << err;
    EXPECT_TRUE(std::regex_match(out, std::regex("A server listens at 127\\.0\\.0\\.1:\\d+\\.\n"
                                                 "The server has ended\\.\n"
                                                 "The picture is p\\.svg: .*\n")))
        << out;
    std::string const picture = ReadFile("p.svg");
    ASSERT_EQ(0, RunProgram(FRACTURE_COMMAND, "-o p.svg " + Samples()));
    EXPECT_TRUE(picture == ReadFile("p.svg"));
    EXPECT_EQ(1, RunProgram(EXCHANGE_DEMO_COMMAND, commands + "none.lay"));
    EXPECT_NE(std::string::npos, err.find("exchange_demo: the client failed\n"));
    EXPECT_EQ(1, RunProgram(EXCHANGE_DEMO_COMMAND, "false true p.svg a.lay"));
    EXPECT_EQ("exchange_demo: the server does not start\n", err);
}

}  // namespace
