// Typed streams against XDR, the classic big-endian encoding: memory streams against xdrmem, socket
// streams against xdrrec on the same kind of socket pair, with buffers of the same size.
//
// The values are ints, doubles and texts of 16 characters in turn. Both sides read all texts of a
// message into one variable, whose memory they use again: a String_t, or a char* that XDR allocates
// for the first text and the caller frees at the end.
#include <benchmark/benchmark.h>
#include <net/strbinstream.h>
#include <rpc/types.h>
#include <rpc/xdr.h>
#include <sys/socket.h>
#include <unistd.h>

#include <thread>
#include <vector>

namespace {

constexpr int kRounds = 333;  // of three values in a message
constexpr int kValues = 3 * kRounds;
constexpr unsigned kBuffer = 8192;
constexpr unsigned kMemory = 16 * kValues;
constexpr char kText[] = "routing layer 03";

struct Korbase {
    static void Encode(OSockStream& out) {
        static String_t const text(kText);
        for (int i = 0; i < kRounds; ++i) out << i << i * 0.5 << text;
    }
    static void Decode(ISockStream& in) {
        int number = 0;
        double real = 0;
        String_t text;
        for (int i = 0; i < kRounds; ++i) in >> number >> real >> text;
        benchmark::DoNotOptimize(number);
        benchmark::DoNotOptimize(real);
        benchmark::DoNotOptimize(text.Get());
    }

    static unsigned ToMemory(char* memory) {
        OStrBinStream out(memory, kMemory);
        Encode(out);
        out.Flush();
        return out.Len();
    }
    static void FromMemory(char* memory, unsigned length) {
        IStrBinStream in(memory, length);
        Decode(in);
    }
    struct Sender {
        explicit Sender(int fd) : out(fd) {}
        void Send() {
            Encode(out);
            out << endm;
        }
        OSockStream out;
    };
    struct Receiver {
        explicit Receiver(int fd) : in(fd) {}
        void Receive() { Decode(in); }
        ISockStream in;
    };
};

struct Xdr {
    static void Encode(XDR* xdr) {
        char text[] = "routing layer 03";
        char* p = text;
        for (int i = 0; i < kRounds; ++i) {
            double real = i * 0.5;
            xdr_int(xdr, &i);
            xdr_double(xdr, &real);
            xdr_string(xdr, &p, kBuffer);
        }
    }
    static void Decode(XDR* xdr) {
        int number = 0;
        double real = 0;
        char* text = nullptr;
        for (int i = 0; i < kRounds; ++i) {
            xdr_int(xdr, &number);
            xdr_double(xdr, &real);
            xdr_string(xdr, &text, kBuffer);
        }
        benchmark::DoNotOptimize(number);
        benchmark::DoNotOptimize(real);
        benchmark::DoNotOptimize(text);
        free(text);
    }

    static unsigned ToMemory(char* memory) {
        XDR xdr;
        xdrmem_create(&xdr, memory, kMemory, XDR_ENCODE);
        Encode(&xdr);
        return xdr_getpos(&xdr);
    }
    static void FromMemory(char* memory, unsigned length) {
        XDR xdr;
        xdrmem_create(&xdr, memory, length, XDR_DECODE);
        Decode(&xdr);
    }
    struct Record {
        Record(int fd, xdr_op op) : fd(fd) {
            xdrrec_create(
                &xdr, kBuffer, kBuffer, this,
                [](void* self, void* p, int n) {
                    return static_cast<int>(read(static_cast<Record*>(self)->fd, p, n));
                },
                [](void* self, void* p, int n) {
                    return static_cast<int>(write(static_cast<Record*>(self)->fd, p, n));
                });
            xdr.x_op = op;
        }
        ~Record() { xdr_destroy(&xdr); }
        int fd;
        XDR xdr;
    };
    struct Sender : Record {
        explicit Sender(int fd) : Record(fd, XDR_ENCODE) {}
        void Send() {
            Encode(&xdr);
            xdrrec_endofrecord(&xdr, TRUE);
        }
    };
    struct Receiver : Record {
        explicit Receiver(int fd) : Record(fd, XDR_DECODE) {}
        void Receive() {
            xdrrec_skiprecord(&xdr);
            Decode(&xdr);
        }
    };
};

template <class Subject>
void BM_Encode(benchmark::State& state) {
    std::vector<char> memory(kMemory);
    for (auto _ : state) {
        benchmark::DoNotOptimize(Subject::ToMemory(memory.data()));
        benchmark::ClobberMemory();
    }
    state.SetItemsProcessed(state.iterations() * kValues);
}
BENCHMARK_TEMPLATE(BM_Encode, Korbase)->Name("encode values into memory/korbase");
BENCHMARK_TEMPLATE(BM_Encode, Xdr)->Name("encode values into memory/XDR");

template <class Subject>
void BM_Decode(benchmark::State& state) {
    std::vector<char> memory(kMemory);
    unsigned const length = Subject::ToMemory(memory.data());
    for (auto _ : state) Subject::FromMemory(memory.data(), length);
    state.SetItemsProcessed(state.iterations() * kValues);
}
BENCHMARK_TEMPLATE(BM_Decode, Korbase)->Name("decode values from memory/korbase");
BENCHMARK_TEMPLATE(BM_Decode, Xdr)->Name("decode values from memory/XDR");

// A thread receives what the measured one sends, and says when it has a round of messages.
template <class Subject>
void BM_SocketPair(benchmark::State& state) {
    constexpr int kMessages = 50;
    int fd[2];
    if (socketpair(AF_UNIX, SOCK_STREAM, 0, fd) != 0) {
        state.SkipWithError("no socket pair");
        return;
    }
    std::thread peer([fd] {
        char word;
        while (read(fd[1], &word, 1) == 1 && word == 'g') {
            typename Subject::Receiver receiver(fd[1]);
            for (int i = 0; i < kMessages; ++i) receiver.Receive();
            if (write(fd[1], &word, 1) != 1) break;
        }
    });
    char word = 'g';
    bool ok = true;
    for (auto _ : state) {
        ok = ok && write(fd[0], &word, 1) == 1;
        {
            typename Subject::Sender sender(fd[0]);
            for (int i = 0; i < kMessages; ++i) sender.Send();
        }
        ok = ok && read(fd[0], &word, 1) == 1;
    }
    if (!ok) state.SkipWithError("broken socket pair");
    shutdown(fd[0], SHUT_RDWR);
    peer.join();
    close(fd[0]);
    close(fd[1]);
    state.SetItemsProcessed(state.iterations() * kMessages * kValues);
}
BENCHMARK_TEMPLATE(BM_SocketPair, Korbase)
    ->Name("values over a socket pair/korbase")
    ->UseRealTime();
BENCHMARK_TEMPLATE(BM_SocketPair, Xdr)->Name("values over a socket pair/XDR")->UseRealTime();

}  // namespace
