// Having a fracture server cut shapes over a loopback connection, beside cutting them in one
// process with one thread. The time is that from the first request to the last answer, all results
// kept; connecting is not in it.
//
// The work of each client: the shapes of examples/data ten times, and as many more: two fifths
// rectangles, one fifth axis-parallel stairs of 6 to 24 corners, one fifth outlines of any slant
// with 3 to 48 corners, one fifth paths of 2 to 12 points.
#include <benchmark/benchmark.h>
#include <signal.h>
#include <unistd.h>

#include <system/process.h>
#include <cmath>
#include <filesystem>
#include <fstream>
#include <iterator>
#include <random>
#include <thread>
#include <vector>

#include "exchange/connection.h"
#include "exchange/pipeline.h"
#include "exchange/server.h"
#include "layout/report.h"

namespace {

using Items = std::vector<layout::Item>;

void AddSamples(Items& items) {
    for (auto const& entry : std::filesystem::directory_iterator(EXAMPLE_DATA)) {
        std::ifstream in(entry.path());
        layout::Reader reader(in, 1e-9);
        layout::Item item;
        while (reader.Next(item.record) == layout::Reader::kRecord)
            if (item.IsShape()) items.push_back(item);
    }
}

class Generator {
public:
    layout::Item Next() {
        layout::Item item;
        x = Any(-1000000, 1000000);
        y = Any(-1000000, 1000000);
        switch (Any(0, 4)) {
            case 0: Stairs(item.record, 2 * Any(3, 12)); break;
            case 1: Slanted(item.record, Any(3, 48)); break;
            case 2: Path(item.record, Any(2, 12)); break;
            default: Rectangle(item.record);
        }
        return item;
    }

private:
    int Any(int from, int to) { return std::uniform_int_distribution<int>(from, to)(random); }

    void Rectangle(layout::Record& record) {
        int const width = Any(100, 900), height = Any(100, 900);
        gu_point_t const corners[] = {
            {x, y}, {x + width, y}, {x + width, y + height}, {x, y + height}};
        record.points.Cat(4, corners);
    }
    void Stairs(layout::Record& record, int corners) {
        record.points.App({x, y});
        for (int i = 1; i < corners - 1; ++i)
            record.points.App({x + 100 * ((i + 1) / 2), y + 60 * (i / 2)});
        record.points.App({x, y + 60 * ((corners - 2) / 2)});
    }
    void Slanted(layout::Record& record, int corners) {
        for (int i = 0; i < corners; ++i) {
            double const turn = 2 * M_PI * i / corners, radius = Any(500, 5000);
            record.points.App({x + static_cast<int>(std::lround(radius * std::cos(turn))),
                               y + static_cast<int>(std::lround(radius * std::sin(turn)))});
        }
    }
    void Path(layout::Record& record, int points) {
        record.kind = layout::Record::kPath;
        record.size = 40;
        for (int i = 0; i < points; ++i)
            record.points.App({x + 200 * (i / 2), y + 150 * ((i + 1) / 2)});
    }

    std::mt19937 random{11};
    int x = 0, y = 0;
};

Items Work() {
    Items items;
    for (int i = 0; i < 10; ++i) AddSamples(items);
    Generator generator;
    for (std::size_t left = items.size(); left > 0; --left) items.push_back(generator.Next());
    return items;
}

// What is kept of all shapes.
struct Results {
    layout::Outline points{1024, VARR_DOUBLE};
    layout::Trapezoids pieces{1024, VARR_DOUBLE};
    unsigned refused = 0;

    void Add(layout::Shape const& shape, String_t const& problem) {
        points.Cat(shape.outline.Len(), shape.outline.Get());
        pieces.Cat(shape.pieces.Len(), shape.pieces.Get());
        refused += !problem.IsNull();
    }
};

// Of all clients one behind the other.
bool IsSound(Results const& results, unsigned& pieces) {
    if (pieces == 0) pieces = results.pieces.Len();
    return results.refused == 0 && pieces > 0 && results.pieces.Len() == pieces;
}

void BM_InProcess(benchmark::State& state) {
    Items const items = Work();
    unsigned pieces = 0;
    for (auto _ : state)
        for (int client = 0; client < state.range(0); ++client) {
            Results results;
            layout::Shape shape;
            for (layout::Item const& source : items) {
                layout::Item item = source;
                item.problem = shape.Make(item.record, 0);
                results.Add(shape, item.problem);
            }
            if (!IsSound(results, pieces)) return state.SkipWithError("wrong results");
        }
    state.SetItemsProcessed(state.iterations() * state.range(0) *
                            static_cast<std::int64_t>(items.size()));
}
BENCHMARK(BM_InProcess)
    ->Name("exchange shapes/in process")
    ->ArgName("clients")
    ->Arg(1)
    ->Arg(8)
    ->UseRealTime();

// A server in a child of this process, until the end of the scope.
class ServerProcess {
public:
    ServerProcess() {
        exchange::Server server("exchange_bench", 60);
        if (!server.ListenIn("127.0.0.1", 0, 0)) return;
        address = server.RefString();
        process = Process::Fork();
        if (process.Pid() != 0) return;
        server.Run();
        _exit(0);
    }
    ~ServerProcess() {
        process.Kill(SIGTERM);
        process.WaitFor();
    }
    String_t const& Address() const { return address; }

private:
    String_t address;
    Process process;
};

// One thread's client, with texts of its own.
class Client {
public:
    explicit Client(String_t const& address) : server(exchange::Connect(address, 60), 60) {}

    void Run() {
        Results results;
        exchange::Pipeline pipeline(server, 0);
        auto const take = [&] {
            layout::Item const item = pipeline.Take(shape);
            results.Add(shape, item.problem);
        };
        for (layout::Item const& source : items) {
            layout::Item item = source;
            while (!pipeline.HasRoomFor(item)) take();
            pipeline.Put(std::move(item));
        }
        while (!pipeline.IsEmpty()) take();
        sound = IsSound(results, pieces);
    }
    std::size_t Shapes() const { return items.size(); }
    bool Sound() const { return sound; }

private:
    Items items = Work();
    exchange::Connection server;
    layout::Shape shape;
    unsigned pieces = 0;
    bool sound = false;
};

void BM_Exchange(benchmark::State& state) {
    ServerProcess const server;
    std::vector<std::unique_ptr<Client>> clients;
    for (int i = 0; i < state.range(0); ++i)
        clients.push_back(std::make_unique<Client>(server.Address().Get()));
    for (auto _ : state) {
        std::vector<std::thread> threads;
        for (std::size_t i = 1; i < clients.size(); ++i)
            threads.emplace_back([&client = *clients[i]] { client.Run(); });
        clients[0]->Run();
        for (auto& thread : threads) thread.join();
        for (auto const& client : clients)
            if (!client->Sound()) return state.SkipWithError("wrong results");
    }
    state.SetItemsProcessed(state.iterations() * state.range(0) *
                            static_cast<std::int64_t>(clients[0]->Shapes()));
}
BENCHMARK(BM_Exchange)
    ->Name("exchange shapes/korbase")
    ->ArgName("clients")
    ->Arg(1)
    ->Arg(8)
    ->UseRealTime();

}  // namespace
