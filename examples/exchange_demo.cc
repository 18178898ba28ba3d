// Starts a server, has it cut layouts for a client, stops it and tells where the picture is:
//
//   exchange_demo SERVER CLIENT OUT.svg FILE...
//
// SERVER and CLIENT are commands, words between blanks: fracture_server and fracture_client with
// what options they are to have. Exit status 0 if all went well.
#include <system/process.h>
#include <system/pstream.h>
#include <text/stringtok.h>

#include <csignal>
#include <generic/tvarr>
#include <iostream>
#include <string>

namespace {

// The output of a server, and its process.
class ServerProcess : public ipstream {
public:
    explicit ServerProcess(char const* command) : ipstream(command) {}
    void End() { child.Kill(SIGTERM); }
};

// Runs a client to its end, with more arguments behind those of the command.
bool RunClient(char const* command, std::initializer_list<char const*> options,
               char** files = nullptr) {
    TVarr<String_t> argv(16, VARR_DOUBLE);
    StringTok words(command);
    while (char const* const word = words(" ")) argv.App(word);
    for (char const* option : options) argv.App(option);
    for (; files != nullptr && *files != nullptr; ++files) argv.App(*files);
    return Process::Execute(argv).WaitFor() == 0;
}

int Fail(char const* what) {
    std::cerr << "exchange_demo: " << what << '\n';
    return 1;
}

}  // namespace

int main(int argc, char* argv[]) {
    if (argc < 5) return Fail("usage: exchange_demo SERVER CLIENT OUT.svg FILE...");
    char const *const client = argv[2], *const picture = argv[3];

    ServerProcess server(argv[1]);
    std::string address;
    if (!std::getline(server, address)) return Fail("the server does not start");
    std::cout << "A server listens at " << address << ".\n" << std::flush;

    bool const cut = RunClient(client, {"-o", picture, address.c_str()}, argv + 4);
    if (!RunClient(client, {"--stop", address.c_str()})) server.End();
    server.close();  // waits for it
    if (!cut) return Fail("the client failed");
    if (!server) return Fail("the server failed");
    std::cout << "The server has ended.\n"
              << "The picture is " << picture << ": open it in a browser.\n";
    return 0;
}
