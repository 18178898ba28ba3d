// Streams on a pretended connection: what a flush or a refill does is drawn at random, from a seed,
// and each is noted, so that two streams with the same seed can be compared. Seed 0 moves as much
// as there is room for.
#ifndef KORBASE_TESTS_NET_SCRIPTED_STREAMS_H
#define KORBASE_TESTS_NET_SCRIPTED_STREAMS_H

#include <net/sockstream.h>

#include "tests/support/test.h"

// The exception that `act` throws, with its code.
template <class Act>
std::string Thrown(Act const& act) {
    try {
        act();
    } catch (SockIO::BaseException const& e) {
        return e.ToString().Get() + (' ' + std::to_string(e.Code()));
    }
    return "";
}

class Sink : public OSockStream {
public:
    explicit Sink(unsigned seed = 0) : random(seed), steady(seed == 0) {}
    int Flush() override {
        log.push_back(Pending());
        unsigned const roll = steady ? 15 : random() % 16;
        unsigned const take = roll < 3 ? 0 : roll < 8 ? random() % (Pending() + 1) : Pending();
        sent.append(base, take);
        PBump(-static_cast<int>(take));
        if (roll == 0 || roll == 3) SetTimedout();
        if (roll == 1 || roll == 4) return SetBad(), -1;
        return static_cast<int>(take);
    }
    int PutByte(char const* p) override {
        if (cur == end) log.push_back(~0u);
        return OSockStream::PutByte(p);
    }
    // PutByte, and whether the byte got in.
    std::pair<int, bool> Store(char c) {
        bool const full = cur == end;
        int const result = PutByte(&c);
        return {result, !full || cur != end};
    }
    unsigned Pending() const { return static_cast<unsigned>(cur - base); }
    std::string Content() const { return std::string(base, cur); }

    std::vector<unsigned> log;  // bytes pending at each flush, ~0 for a PutByte to a full buffer
    std::string sent;

private:
    std::minstd_rand random;
    bool steady;
};

class Source : public ISockStream {
public:
    // Refills of at most `most` bytes, with 0 of any number; some fail, at places that only the
    // seed tells: no two in one place.
    explicit Source(std::string data, unsigned seed = 0, unsigned most = 0, Sink* tie = nullptr)
        : ISockStream(tie), data(std::move(data)), most(most), places(seed), pieces(seed) {
        if (seed % 2 == 0) fails_at = seed == 0 ? ~0u : places() % 99;
    }
    int Fill() override {
        if (Status() & kEof) return -1;
        if (at == data.size()) return SetEof(), 0;
        unsigned roll = 3;
        if (at == fails_at) {
            roll = places() % 5;  // 0: as if it would block, 4: too late, but with bytes
            fails_at += 1 + places() % 2000;
            if (roll == 1) SetTimedout();
            if (roll == 2) return SetBad(), -1;
            if (roll < 2) return 0;
        }
        std::size_t const piece = most ? most : pieces() % 3 ? 1 + pieces() % 9 : size;
        std::size_t const count = std::min({piece, data.size() - at, fails_at - at, size_t{size}});
        end = std::copy_n(data.data() + at, count, cur = base);
        at += count;
        if (roll == 4) SetTimedout();
        return static_cast<int>(count);
    }
    std::string Rest() const { return std::string(cur, end); }
    std::size_t Left() const { return data.size() - at + Rest().size(); }

private:
    std::string data;
    std::size_t at = 0, fails_at = ~0u;
    unsigned most;
    std::minstd_rand places, pieces;
};

#endif
