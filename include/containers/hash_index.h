// korbase_detail::HashIndex: what OHashTable (generic/gohash) knows beside its slots, so that no
// call has to walk along a run of used ones. Not for use by itself: the header is public because
// tables of a caller's own records need it.
//
// A lookup goes through an open-addressing table of its own, from a fingerprint of the text to the
// slot: linear probing, at most 7/8 full, no tombstones. The fingerprint of a text of up to 12
// characters is the text itself, scrambled, so that no text has to be read. The place of a new text
// is computed: it is the first slot of its probe sequence that is not in use, which bit sets of the
// used slots and of their full words give in a few steps. Fingerprints and hashes are kept, so that
// growing reads no text either.
#ifndef KORBASE_CONTAINERS_HASH_INDEX_H
#define KORBASE_CONTAINERS_HASH_INDEX_H

#include <korbase_api.h>

#include <cstddef>
#include <cstdint>
#include <memory>

namespace korbase_detail {

class KORBASE_API HashIndex {
public:
    static constexpr std::uint32_t kNone = 0xFFFFFFFF;  // no slot

    struct Fingerprint {
        std::uint64_t mark;
        std::uint32_t hash;

        // Whether no other text has this fingerprint; otherwise the lowest byte of `mark` is 0.
        bool Unique() const { return (mark & 0xFF) != 0; }
    };

    // All `n` slots are free.
    explicit HashIndex(std::uint32_t n);
    HashIndex(HashIndex const& other);
    // A moved-from index is one of no slots.
    HashIndex(HashIndex&& other) noexcept : HashIndex() { Swap(other); }
    HashIndex& operator=(HashIndex other) noexcept {
        Swap(other);
        return *this;
    }

    // The same for null and ""; also the GHash of the text.
    static Fingerprint Print(char const* text);
    static Fingerprint Print(char const* text, std::uint32_t& ghash);

    // Where the probe sequence of a text with this GHash, which is below 2^24, begins.
    std::uint32_t HomeSlot(std::uint32_t ghash) const { return ghash - Quotient(ghash) * size; }

    // Where a text is entered, or would be.
    struct Spot {
        std::uint32_t slot;  // kNone for a new text
        std::uint32_t entry;
    };

    std::uint32_t Size() const { return size; }
    // The spot of the text with this fingerprint; `same` tells whether a slot has that text where
    // the fingerprint leaves it open.
    template <class Same>  // bool Same(std::uint32_t slot)
    Spot Find(Fingerprint const& print, Same const& same) const {
        if (size == 0) return {kNone, 0};
        for (std::size_t i = HomeEntry(print.hash);; i = Next(i)) {
            Entry const& entry = entries[i];
            if (entry.slot == kNone || (entry.hash == print.hash && entry.mark == print.mark &&
                                        (print.Unique() || same(entry.slot))))
                return {entry.slot, static_cast<std::uint32_t>(i)};
        }
    }
    // The slot for a new text, by its GHash and home, or kNone when all are in use.
    std::uint32_t FreeSlot(std::uint32_t ghash, std::uint32_t home) const {
        return IsUsed(home) ? FreeSlotBeyond(ghash, home) : home;
    }

    // A new text, whose spot Find gave, has come to a free slot.
    void Use(Spot const& spot, std::uint32_t slot, std::uint32_t ghash, Fingerprint const& print) {
        Take(slot, ghash);
        entries[spot.entry] = {print.mark, print.hash, slot};
    }
    // The text at this spot, or with this fingerprint in this slot, is gone.
    void Free(Spot const& spot);
    void Free(std::uint32_t slot, Fingerprint const& print);
    bool IsUsed(std::uint32_t slot) const { return used[slot / 64] >> slot % 64 & 1; }
    void Clear();

    // The index after all texts of this one went, in slot order, to a table that starts with `n`
    // slots and doubles at 7/8 load. moved[slot] becomes the new slot of each text.
    HashIndex Rebuilt(std::uint32_t n, std::uint32_t* moved) const;

private:
    using Word = std::uint64_t;
    struct Entry {
        std::uint64_t mark;
        std::uint32_t hash;
        std::uint32_t slot;
    };

    HashIndex() noexcept : size(0), mask(0), shift(0) {}
    void Swap(HashIndex& other) noexcept;
    std::size_t Words() const { return (std::size_t{size} + 63) / 64; }
    std::size_t FullWords() const { return (Words() + 63) / 64; }
    // ghash / size, by multiplication (Granlund and Montgomery, 1994). The reciprocal is at most
    // 1 too large, which adds less than 2^(24 - quotient_shift), less than 1 / size, to the
    // quotient.
    std::uint32_t Quotient(std::uint32_t ghash) const {
        return static_cast<std::uint32_t>(ghash * reciprocal >> quotient_shift);
    }
    std::size_t HomeEntry(std::uint32_t hash) const { return hash >> shift; }
    std::size_t Next(std::size_t i) const { return (i + 1) & mask; }
    void Take(std::uint32_t slot, std::uint32_t ghash) {
        ghashes[slot] = ghash;
        Word& word = used[slot / 64];
        word |= Word{1} << slot % 64;
        if (word == ~Word{0}) full[slot / 4096] |= Word{1} << slot / 64 % 64;
    }
    std::uint32_t ListUsed(std::uint32_t* slots) const;
    void EnterAll(HashIndex const& old, std::uint32_t const* moved);
    std::uint32_t FreeSlotBeyond(std::uint32_t ghash, std::uint32_t home) const;
    std::uint32_t FreeFrom(std::uint32_t slot) const;

    std::uint32_t size;
    std::size_t mask;  // entries, a power of 2 above size, less 1
    unsigned shift;    // from the hash of a fingerprint to an entry
    unsigned quotient_shift = 0;
    std::uint64_t reciprocal = 0;              // 2^quotient_shift / size + 1; 0 from 2^24 slots on
    std::unique_ptr<std::uint32_t[]> ghashes;  // by slot: the GHash of its text
    std::unique_ptr<Entry[]> entries;
    std::unique_ptr<Word[]> used;  // a bit for each slot; those behind the last one are set
    std::unique_ptr<Word[]> full;  // a bit for each word of `used` without a zero, likewise
};

}  // namespace korbase_detail

#endif
