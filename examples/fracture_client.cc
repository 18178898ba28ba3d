// Does what fracture does, but has a fracture server cut the shapes:
//
//   fracture_client [-u UNIT] [-s DISTANCE] [-o OUT.svg] [-q] [-t SECONDS] ADDRESS FILE...
//   fracture_client -x [-t SECONDS] ADDRESS
//
// ADDRESS is what the server has printed: HOST:PORT, [IPV6]:PORT, IPV6/PORT, or the path of a local
// socket, beginning with "/" or ".". The server may take SECONDS (60) for each sign of life. With
// -q the table is left out. With -x, or --stop, the server is asked to end. Everything else is told
// in fracture.cc; the time in the table is that which the answers were waited for. Without an
// answer to everything, there is neither table nor picture, and the exit status is 1.
#include <net/sockio_exceptions.h>
#include <system/sigblock.h>
#include <text/strfmt.h>

#include <cstdio>
#include <iostream>
#include <new>

#include "exchange/connection.h"
#include "exchange/messages.h"
#include "exchange/pipeline.h"
#include "layout/command_line.h"
#include "layout/cutter.h"
#include "layout/outline.h"
#include "layout/report.h"
#include "layout/shape.h"

namespace {

char const kUsage[] =
    "usage: fracture_client [-u UNIT] [-s DISTANCE] [-o OUT.svg] [-q] [-t SECONDS] ADDRESS\n"
    "                       FILE...\n"
    "       fracture_client -x [-t SECONDS] ADDRESS\n"
    "       UNIT in metres, such as 5n; 1n if not given\n"
    "       DISTANCE in units or in metres, below 0 to shrink\n";

// Has a server cut.
class RemoteCutter : public layout::Cutter {
public:
    RemoteCutter(exchange::Connection& server, gu_coord_t distance, layout::Report& report)
        : pipeline(server, distance), report(report) {}

    void Take(layout::Item&& item) override {
        while (!pipeline.HasRoomFor(item)) AddOldest();
        pipeline.Put(std::move(item));
    }
    void Finish() override {
        while (!pipeline.IsEmpty()) AddOldest();
    }

private:
    void AddOldest() {
        auto const start = layout::Clock::now();
        layout::Item const item = pipeline.Take(shape);
        if (item.IsShape()) shape.measures = layout::MeasureOutline(shape.outline);
        report.Add(item, shape, layout::SecondsSince(start));
    }

    exchange::Pipeline pipeline;
    layout::Report& report;
    layout::Shape shape;
};

struct Options : layout::CutOptions {
    String_t seconds_text{"60"};
    int seconds = 60;
    bool quiet = false, stop = false;
};

// What the arguments ask for. Throws a SockIO exception when the connection fails.
int Perform(layout::CommandLine const& line, Options const& options, char** arguments) {
    auto const seconds = static_cast<unsigned>(options.seconds);
    exchange::Connection server(exchange::Connect(arguments[0], seconds), seconds);
    if (options.stop) {
        exchange::WriteStop(server.Out());
        exchange::ReadStop(server.In());
        return 0;
    }
    layout::Report report(line.Program(), options);
    RemoteCutter cutter(server, options.distance, report);
    return layout::CutFiles(arguments + 1, options, cutter, report);
}

int Run(char** argv) {
    layout::CommandLine const line("fracture_client", kUsage);
    Options options;
    char** const arguments = line.Take(argv, {{'u', &options.unit_text},
                                              {'s', &options.distance_text},
                                              {'o', &options.picture},
                                              {'t', &options.seconds_text},
                                              {'q', nullptr, &options.quiet},
                                              {'x', nullptr, &options.stop, "--stop"}});
    if (arguments == nullptr || !options.Parse(line)) return 1;
    options.table = !options.quiet;
    if (!layout::ReadNumber(options.seconds_text, 1, exchange::kMaxSeconds, options.seconds))
        return line.Complain("not a number of seconds: ", options.seconds_text);
    if (arguments[0] == nullptr) return line.Complain("no address given", "");
    bool const files = arguments[1] != nullptr;
    if (files == options.stop)
        return files ? line.Complain("not expected: ", arguments[1])
                     : line.Complain("no file given", "");
    IgnoreSigPipe();
    try {
        return Perform(line, options, arguments);
    } catch (SockIO::BaseException const& error) {
        // Of an error in connecting, the address is in the message.
        bool const connected = error.Code() >= 0;
        StrFmt(std::cerr, "fracture_client: %s%s%s\n", connected ? arguments[0] : "",
               connected ? ": " : "", error.ToString().Get());
        return 1;
    }
}

}  // namespace

int main(int argc, char* argv[]) {
    try {
        return argc > 0 ? Run(argv) : 1;
    } catch (std::bad_alloc const&) {
        std::fputs("fracture_client: out of memory\n", stderr);
        return 1;
    }
}
