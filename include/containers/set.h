// Set: a set of small non-negative integers, one bit for each; Setiterator walks its members.
//
// An owned set grows to hold what is added to it. A fixed set works in words of the caller, which
// must outlive it: it never grows, and members beyond its words are neither stored nor removed.
// Growth allocates first, a set is unchanged if that throws. A set belongs to one thread at a
// time.
#ifndef KORBASE_CONTAINERS_SET_H
#define KORBASE_CONTAINERS_SET_H

#include <korbase_api.h>

#include <cstddef>
#include <cstdint>
#include <iterator>
#include <type_traits>

// 32 bits on every target. Member i is bit i & 31, the lowest first, of word i >> 5.
using set_word_t = std::conditional_t<sizeof(unsigned long) == 4, unsigned long, std::uint32_t>;

class Setiterator;

class KORBASE_API Set {
    template <class Integer>
    using IfInteger = std::enable_if_t<std::is_integral_v<Integer>, int>;

public:
    // An owned, empty set of nbits / 32 words. Kept: the division drops a rest, for which the set
    // grows later.
    explicit Set(unsigned nbits);
    // The same for other integer types, converted to unsigned.
    template <class Integer, IfInteger<Integer> = 0>
    explicit Set(Integer nbits) : Set(static_cast<unsigned>(nbits)) {}

    // A fixed set over words[0] to words[n - 1]: empty, or with the members of `s`, which has to
    // have `n` words.
    Set(unsigned n, set_word_t* words);
    Set(unsigned n, set_word_t* words, Set const& s);

    // An owned set of list[0] to list[n - 1]; negative ones are ignored.
    Set(unsigned n, int* list);
    // An owned set of `first`, unless that is negative, and of `second` and the int arguments
    // behind it up to the first that is 0 or negative: Set(5, 3, 0) is {3, 5}.
    Set(int first, int second, ...);
    // An owned set of no words, then add(text).
    Set(char const* text);

    // A copy is owned, whatever its source is.
    Set(Set const& s);
    // Takes the words of an owned set over, which is left empty; copies a fixed one.
    Set(Set&& s);  // NOLINT(performance-noexcept-move-constructor): the copy may throw
    // An owned set takes the source's members and number of words. A fixed set requires that it has
    // as many words.
    Set& operator=(Set const& s);
    Set& operator=(Set&& s);  // NOLINT(performance-noexcept-move-constructor)
    ~Set();

    // An owned set grows to reach `i`; a fixed one that does not reach it stays as it is.
    void add(unsigned i) {
        if (Reach(i)) bits[i >> 5] |= Bit(i);
    }
    template <class Integer, IfInteger<Integer> = 0>
    void add(Integer i) {
        add(static_cast<unsigned>(i));
    }
    // An owned set grows to reach `i`, though it is not there.
    void remove(unsigned i) {
        if (Reach(i)) bits[i >> 5] &= ~Bit(i);
    }
    // list[0] to list[n - 1]; negative ones are ignored.
    void add(unsigned n, int* list);
    void remove(unsigned n, int* list);

    // Adds a list of members and ranges in decimal, separated by commas: "1,3,5-9". Blanks and tabs
    // are skipped, empty items allowed; a range that falls is empty, numbers saturate at
    // 2147483647. A leading "-" complements the whole set afterwards. Anything else is reported on
    // std::cerr and leaves the set unchanged. A null text is an empty one. Kept: "1 2" adds only 2,
    // and a number in front of a "-" without a number behind it is dropped.
    void add(char const* text);

    // Makes an owned set reach member `i`: if it does not, it gets exactly (i >> 5) + 1 words.
    void bumpsize(unsigned i);

    bool contains(unsigned i) const { return i >> 5 < num && (bits[i >> 5] & Bit(i)) != 0; }
    unsigned num_words() const { return num; }
    // The number of members.
    unsigned size() const;
    // One more than the largest member, 0 for an empty set.
    unsigned max() const;
    // Writes members to `out` in ascending order and returns size(). Kept: only those below
    // num_words() are written.
    unsigned get(int* out) const;

    // Removes every member; the words stay.
    void clear();
    // These grow this set, if it is owned, to as many words as `s` has.
    Set& operator|=(Set const& s);
    Set& operator&=(Set const& s);
    Set& operator-=(Set const& s);
    Set& operator^=(Set const& s);
    // Complements this set itself, within its words.
    Set& operator~();

    // Kept: sets with the same members, but different numbers of words, are not equal.
    bool operator==(Set const& s) const;
    bool operator!=(Set const& s) const { return !(*this == s); }
    // Whether this is a subset of `s`. Kept: of the words that this set has and `s` has not, only
    // the first is looked at.
    bool operator<=(Set const& s) const;

    // The members in ascending order.
    Setiterator begin() const;
    Setiterator end() const;

private:
    friend class Setiterator;
    friend KORBASE_API bool operator&&(Set const& a, Set const& b);

    static set_word_t Bit(unsigned i) { return set_word_t{1} << (i & 31); }
    bool Reach(unsigned i) {
        if (i >> 5 >= num) bumpsize(i);
        return i >> 5 < num;
    }
    unsigned Common(Set const& s) const { return num < s.num ? num : s.num; }
    void Grow(unsigned words);
    void Swap(Set& s) noexcept;

    unsigned fixed;    // 1: the words are the caller's
    unsigned num;      // words
    set_word_t* bits;  // null for an owned set that never had a word
    unsigned room;     // words allocated, in an owned set
};

// Whether the sets have a member in common.
KORBASE_API bool operator&&(Set const& a, Set const& b);

// Walks the members of a set in ascending order, starting at the smallest. The set must outlive it;
// members that come or go in front of it are noticed unless the set grows, which ends its use.
class KORBASE_API Setiterator {
public:
    using iterator_category = std::input_iterator_tag;
    using value_type = unsigned;
    using difference_type = std::ptrdiff_t;
    using pointer = unsigned const*;
    using reference = unsigned;

    Setiterator(Set const& s);

    // Back to the smallest member.
    void Reset() { pos = First(0); }

    // The current member, or -1 when there is none left; then advances.
    int operator()();
    // Advance; nothing when no member is left.
    Setiterator& operator++() {
        if (pos != limit) pos = First(pos + 1);
        return *this;
    }
    Setiterator operator++(int) {
        Setiterator const before(*this);
        ++*this;
        return before;
    }

    // For loops over a range and the standard algorithms.
    unsigned operator*() const { return pos; }
    bool operator==(Setiterator const& other) const { return pos == other.pos; }
    bool operator!=(Setiterator const& other) const { return pos != other.pos; }

private:
    friend class Set;

    unsigned First(unsigned from) const;

    unsigned pos;            // the current member, or the limit
    unsigned limit;          // positions in the set, in bits
    set_word_t const* bits;  // the words of the set
    unsigned num;            // and their number
};

inline Setiterator Set::begin() const { return Setiterator(*this); }

#endif
