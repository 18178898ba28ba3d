#include "containers/hash_index.h"

#include <algorithm>
#include <cstring>
#include <limits>
#include <new>
#include <utility>

#include "generic/gohash"

namespace korbase_detail {

namespace {

using Word = std::uint64_t;
constexpr Word kAll = ~Word{0};
constexpr std::uint64_t kOdd = 0x9E3779B97F4A7C15U;  // 2^64 / golden ratio

// `n` zero bits, and ones up to the end of the last word.
void Reset(Word* bits, std::size_t n) {
    std::fill(bits, bits + n / 64, 0);
    if (n % 64) bits[n / 64] = kAll << n % 64;
}

std::size_t FirstZero(Word word) { return static_cast<std::size_t>(__builtin_ctzll(~word)); }

// The first word from `from` on, of `n`, that has a zero bit; `n` if none has.
std::size_t OpenWord(Word const* bits, std::size_t from, std::size_t n) {
    while (from < n && bits[from] == kAll) ++from;
    return from;
}

// The first zero bit from `from` on in `words` words; -1 if there is none.
std::int64_t ZeroBit(Word const* bits, std::size_t words, std::size_t from) {
    std::size_t word = from / 64;
    if (word >= words) return -1;
    Word const below = (Word{1} << from % 64) - 1;
    Word at = bits[word] | below;
    if (at == kAll) {
        word = OpenWord(bits, word + 1, words);
        if (word == words) return -1;
        at = bits[word];
    }
    return static_cast<std::int64_t>(word * 64 + FirstZero(at));
}

// `bytes` bytes as a number, the first one lowest.
template <std::size_t bytes>
std::uint64_t Load(char const* text) {
    std::uint64_t word = 0;
    std::memcpy(&word, text, bytes);
    return __BYTE_ORDER__ == __ORDER_BIG_ENDIAN__ ? __builtin_bswap64(word) : word;
}

std::uint64_t Mix(std::uint64_t hash, std::uint64_t word) {
    hash = (hash ^ word) * kOdd;
    hash = (hash ^ hash >> 32) * 0xBF58476D1CE4E5B9U;
    return hash ^ hash >> 32;
}

// A text of 4 to 12 characters in words of 4, behind as many zeros as it takes to fill them.
struct ShortText {
    std::uint32_t words[3];
};

bool IsShort(std::size_t length) { return length >= 4 && length <= 12; }

// Overlapping loads, with what they have in common shifted out; by a table, since no branch could
// foresee the lengths of names.
ShortText Pack(char const* text, std::size_t length) {
    static constexpr struct {
        std::uint8_t offset;         // where the second load begins
        std::uint8_t second, first;  // bits to shift out
    } kLoads[] = {{0, 32, 32}, {0, 24, 32}, {0, 16, 32}, {0, 8, 32}, {0, 0, 32},
                  {1, 0, 24},  {2, 0, 16},  {3, 0, 8},   {4, 0, 0}};
    auto const& load = kLoads[length - 4];
    return {{static_cast<std::uint32_t>(Load<4>(text) << load.first),
             static_cast<std::uint32_t>(Load<4>(text + load.offset) << load.second),
             static_cast<std::uint32_t>(Load<4>(text + length - 4))}};
}

// Words and fingerprint give each other: the last two words are the mark, and under a given mark
// the hash scrambles the first one.
HashIndex::Fingerprint PrintShort(ShortText const& text) {
    std::uint64_t const mark = std::uint64_t{text.words[1]} << 32 | text.words[2];
    std::uint32_t const both = static_cast<std::uint32_t>(mark * kOdd >> 32) ^ text.words[0];
    return {mark, (both ^ both >> 15) * 0x2C1B3C6DU};
}

// GHash, which zeros in front do not change.
std::uint32_t GHashShort(ShortText const& text) {
    std::uint32_t ghash = 0;
    for (std::uint32_t word : text.words)
        for (int i = 0; i < 4; ++i, word >>= 8) {
            ghash = (ghash << 4) + (word & 0xFF);
            ghash = (ghash & 0xFFFFFF) ^ ghash >> 24;
        }
    return ghash;
}

// Of texts of other lengths. Those of up to 3 characters are their own mark.
HashIndex::Fingerprint PrintOther(char const* text, std::size_t length) {
    if (length < 4) {
        std::uint32_t mark = 0;
        for (std::size_t i = 0; i < length; ++i)
            mark |= static_cast<std::uint32_t>(Load<1>(text + i) << 8 * i);
        return PrintShort({{0, 0, mark}});
    }
    std::uint64_t hash = length;
    for (std::size_t i = 0; i + 8 < length; i += 8) hash = Mix(hash, Load<8>(text + i));
    hash = Mix(hash, Load<8>(text + length - 8));
    return {hash << 8, static_cast<std::uint32_t>(hash >> 32)};
}

}  // namespace

HashIndex::HashIndex(std::uint32_t n) : HashIndex() {
    if (n == 0) return;
    unsigned bits = 1;
    while (((std::uint64_t{1} << bits) - (std::uint64_t{1} << bits) / 8) <= n && bits < 32) ++bits;
    std::uint64_t const count = std::uint64_t{1} << bits;
    if (count > std::numeric_limits<std::size_t>::max() / sizeof(Entry)) throw std::bad_alloc();
    size = n;
    mask = static_cast<std::size_t>(count - 1);
    shift = 32 - bits;
    if (n < 1U << 24) {
        quotient_shift = 40U + static_cast<unsigned>(31 - __builtin_clz(n));
        reciprocal = (std::uint64_t{1} << quotient_shift) / n + 1;
    }
    ghashes.reset(new std::uint32_t[n]);
    entries.reset(new Entry[mask + 1]);
    used.reset(new Word[Words()]);
    full.reset(new Word[FullWords()]);
    Clear();
}

HashIndex::HashIndex(HashIndex const& other) : HashIndex(other.size) {
    if (size == 0) return;
    std::copy(other.used.get(), other.used.get() + Words(), used.get());
    std::copy(other.full.get(), other.full.get() + FullWords(), full.get());
    std::copy(other.entries.get(), other.entries.get() + mask + 1, entries.get());
    for (std::uint32_t slot = 0; slot < size; ++slot)
        if (IsUsed(slot)) ghashes[slot] = other.ghashes[slot];
}

void HashIndex::Swap(HashIndex& other) noexcept {
    std::swap(size, other.size);
    std::swap(mask, other.mask);
    std::swap(shift, other.shift);
    std::swap(reciprocal, other.reciprocal);
    std::swap(quotient_shift, other.quotient_shift);
    ghashes.swap(other.ghashes);
    entries.swap(other.entries);
    used.swap(other.used);
    full.swap(other.full);
}

HashIndex::Fingerprint HashIndex::Print(char const* text) {
    std::size_t const length = text ? std::strlen(text) : 0;
    return IsShort(length) ? PrintShort(Pack(text, length)) : PrintOther(text, length);
}

HashIndex::Fingerprint HashIndex::Print(char const* text, std::uint32_t& ghash) {
    std::size_t const length = text ? std::strlen(text) : 0;
    if (!IsShort(length)) {
        ghash = GHash(text);
        return PrintOther(text, length);
    }
    ShortText const packed = Pack(text, length);
    ghash = GHashShort(packed);
    return PrintShort(packed);
}

// The first free slot from the second one of the probe sequence on, all around.
std::uint32_t HashIndex::FreeSlotBeyond(std::uint32_t ghash, std::uint32_t home) const {
    std::uint32_t const quotient = Quotient(ghash);
    std::uint32_t const step = quotient < size ? quotient : quotient % size;
    std::uint64_t const second = std::uint64_t{home} + (step ? step : 1);
    return FreeFrom(static_cast<std::uint32_t>(second < size ? second : second - size));
}

std::uint32_t HashIndex::FreeFrom(std::uint32_t slot) const {
    Word const below = (Word{1} << slot % 64) - 1;
    Word const here = used[slot / 64] | below;
    if (here != kAll) return static_cast<std::uint32_t>(slot / 64 * 64 + FirstZero(here));
    std::int64_t word = ZeroBit(full.get(), FullWords(), slot / 64 + 1);
    if (word < 0) word = ZeroBit(full.get(), FullWords(), 0);
    if (word < 0) return kNone;
    return static_cast<std::uint32_t>(static_cast<std::size_t>(word) * 64 + FirstZero(used[word]));
}

void HashIndex::Free(std::uint32_t slot, Fingerprint const& print) {
    std::size_t i = HomeEntry(print.hash);
    while (entries[i].slot != slot) i = Next(i);
    Free({slot, static_cast<std::uint32_t>(i)});
}

// The entries behind the one that goes move up as far as their homes allow.
void HashIndex::Free(Spot const& spot) {
    used[spot.slot / 64] &= ~(Word{1} << spot.slot % 64);
    full[spot.slot / 4096] &= ~(Word{1} << spot.slot / 64 % 64);
    std::size_t gap = spot.entry;
    for (std::size_t i = Next(gap); entries[i].slot != kNone; i = Next(i)) {
        std::size_t const home = HomeEntry(entries[i].hash);
        if (((i - home) & mask) < ((i - gap) & mask)) continue;
        entries[gap] = entries[i];
        gap = i;
    }
    entries[gap].slot = kNone;
}

void HashIndex::Clear() {
    if (size == 0) return;
    Reset(used.get(), size);
    Reset(full.get(), Words());
    std::fill(entries.get(), entries.get() + mask + 1, Entry{0, 0, kNone});
}

// The slots in use, in their order, and how many there are.
std::uint32_t HashIndex::ListUsed(std::uint32_t* slots) const {
    std::uint32_t* end = slots;
    for (std::size_t at = 0; at < Words(); ++at) {
        Word word = used[at];
        if (at == size / 64) word &= (Word{1} << size % 64) - 1;
        for (; word; word &= word - 1)
            *end++ = static_cast<std::uint32_t>(at * 64) +
                     static_cast<std::uint32_t>(__builtin_ctzll(word));
    }
    return static_cast<std::uint32_t>(end - slots);
}

// In the order of their homes, so that neighbours come to neighbours. The entries in use are listed
// first, a block at a time, without a branch that nothing could foresee.
void HashIndex::EnterAll(HashIndex const& old, std::uint32_t const* moved) {
    constexpr std::size_t kBlock = 64;
    std::size_t const count = old.size ? old.mask + 1 : 0;
    for (std::size_t first = 0; first < count; first += kBlock) {
        std::size_t const last = std::min(first + kBlock, count);
        std::size_t listed[kBlock], n = 0;
        for (std::size_t i = first; i < last; ++i) {
            listed[n] = i;
            n += old.entries[i].slot != kNone;
        }
        for (std::size_t k = 0; k < n; ++k) {
            Entry const& entry = old.entries[listed[k]];
            std::size_t to = HomeEntry(entry.hash);
            while (entries[to].slot != kNone) to = Next(to);
            entries[to] = {entry.mark, entry.hash, moved[entry.slot]};
        }
    }
}

HashIndex HashIndex::Rebuilt(std::uint32_t n, std::uint32_t* moved) const {
    std::unique_ptr<std::uint32_t[]> const order(new std::uint32_t[size]);
    std::uint32_t const card = ListUsed(order.get());
    for (;;) {
        HashIndex fresh(n);
        std::uint32_t const count = std::min(card, n - n / 8);
        for (std::uint32_t i = 0; i < count; ++i) {
            std::uint32_t const slot = order[i], ghash = ghashes[slot];
            moved[slot] = fresh.FreeSlot(ghash, fresh.HomeSlot(ghash));
            fresh.Take(moved[slot], ghash);
        }
        if (count == card) {
            fresh.EnterAll(*this, moved);
            return fresh;
        }
        std::sort(order.get(), order.get() + count,
                  [moved](std::uint32_t a, std::uint32_t b) { return moved[a] < moved[b]; });
        if (n > std::numeric_limits<std::uint32_t>::max() / 2) throw std::bad_alloc();
        n *= 2;
    }
}

}  // namespace korbase_detail
