// Streams on a pretended connection: what a flush or a refill does is drawn at random, from a seed,
// and each is noted, so that two streams with the same seed can be compared. Seed 0 moves as much
// as there is room for.
#ifndef KORBASE_TESTS_NET_SCRIPTED_STREAMS_H
#define KORBASE_TESTS_NET_SCRIPTED_STREAMS_H

#include <net/sockstream.h>

#include "tests/support/test.h"

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
        if (roll != 1 && roll != 4) return static_cast<int>(take);
        SetBad();
        return -1;
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
    std::string Content() const { return std::string(base, Pending()); }

    std::vector<unsigned> log;  // bytes pending at each flush, ~0 for a PutByte to a full buffer
    std::string sent;

private:
    std::minstd_rand random;
    bool steady;
};

class Source : public ISockStream {
public:
    Source(std::string data, unsigned seed, OSockStream* tie = nullptr)
        : ISockStream(tie), data(std::move(data)), seed(seed), random(seed) {}
    int Fill() override {
        log.push_back(at);
        if (Status() & kEof) return -1;
        if (at == data.size()) return SetEof(), 0;
        unsigned const roll = seed % 2 == 0 && seed != 0 ? random() % 32 : 31;
        if (roll == 0) return 0;  // as if it would block
        if (roll == 1) return SetTimedout(), 0;
        if (roll == 2) return SetBad(), -1;
        std::size_t const most = seed == 0 || random() % 3 == 0 ? size : 1 + random() % 9;
        std::size_t const count = std::min(most, data.size() - at);
        std::copy_n(data.data() + at, count, base);
        at += count;
        cur = base;
        end = base + count;
        if (roll == 3) SetTimedout();
        return static_cast<int>(count);
    }
    int GetByte(char* p) override {
        if (cur == end) log.push_back(~std::size_t{0});
        return ISockStream::GetByte(p);
    }
    std::string Rest() const { return std::string(cur, end); }

    std::vector<std::size_t> log;  // bytes given out before each refill, ~0 for a GetByte of none

private:
    std::string data;
    std::size_t at = 0;
    unsigned seed;  // odd: in pieces, but without failures
    std::minstd_rand random;
};

#endif
