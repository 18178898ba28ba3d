#include "containers/set.h"

#include <korbase_assert.h>

#include <algorithm>
#include <cstdarg>
#include <memory>
#include <utility>

namespace {

constexpr unsigned kWordBits = 32;

unsigned CountBits(set_word_t word) { return static_cast<unsigned>(__builtin_popcountl(word)); }
unsigned LowestBit(set_word_t word) { return static_cast<unsigned>(__builtin_ctzl(word)); }

unsigned HighestBit(set_word_t word) {
    return kWordBits - 1 - static_cast<unsigned>(__builtin_clz(static_cast<unsigned>(word)));
}

}  // namespace

Set::Set(unsigned nbits) : fixed(0), num(nbits >> 5), bits(nullptr), room(num) {
    if (num > 0) bits = new set_word_t[num]();
}

Set::Set(unsigned n, set_word_t* words) : fixed(1), num(n), bits(words), room(0) { clear(); }

Set::Set(unsigned n, set_word_t* words, Set const& s) : fixed(1), num(n), bits(words), room(0) {
    KORBASE_ASSERT(n == s.num);
    std::copy_n(s.bits, n, bits);
}

Set::Set(unsigned n, int* list) : Set(kWordBits) { add(n, list); }

Set::Set(int first, int second, ...) : Set(kWordBits) {
    if (first >= 0) add(first);
    std::va_list rest;
    va_start(rest, second);
    for (int i = second; i > 0; i = va_arg(rest, int)) add(i);
    va_end(rest);
}

Set::Set(char const* text) : Set(0U) { add(text); }

Set::Set(Set const& s) : fixed(0), num(s.num), bits(nullptr), room(num) {
    if (num == 0) return;
    bits = new set_word_t[num];
    std::copy_n(s.bits, num, bits);
}

Set::Set(Set&& s) : Set(0U) {  // NOLINT(performance-noexcept-move-constructor)
    if (s.fixed)
        *this = static_cast<Set const&>(s);
    else
        Swap(s);
}

Set& Set::operator=(Set const& s) {
    if (this == &s) return *this;
    if (fixed) {
        KORBASE_ASSERT(num == s.num);
        std::copy_n(s.bits, num, bits);
    } else {
        Set copy(s);
        Swap(copy);
    }
    return *this;
}

Set& Set::operator=(Set&& s) {  // NOLINT(performance-noexcept-move-constructor)
    if (fixed || s.fixed) return *this = static_cast<Set const&>(s);
    Set taken(std::move(s));
    Swap(taken);
    return *this;
}

Set::~Set() {
    if (!fixed) delete[] bits;
}

void Set::Swap(Set& s) noexcept {
    std::swap(fixed, s.fixed);
    std::swap(num, s.num);
    std::swap(bits, s.bits);
    std::swap(room, s.room);
}

void Set::add(unsigned n, int* list) {
    for (int* i = list; i != list + n; ++i)
        if (*i >= 0) add(*i);
}

void Set::remove(unsigned n, int* list) {
    for (int* i = list; i != list + n; ++i)
        if (*i >= 0) remove(static_cast<unsigned>(*i));
}

void Set::bumpsize(unsigned i) { Grow((i >> 5) + 1); }

// Allocates at least twice the old words, so that members may come one by one.
void Set::Grow(unsigned words) {
    if (fixed || words <= num) return;
    if (words > room) {
        unsigned const larger = std::max(words, 2 * room);
        std::unique_ptr<set_word_t[]> fresh(new set_word_t[larger]);
        std::copy_n(bits, num, fresh.get());
        delete[] bits;
        bits = fresh.release();
        room = larger;
    }
    std::fill(bits + num, bits + words, 0);
    num = words;
}

unsigned Set::size() const {
    unsigned members = 0;
    for (unsigned w = 0; w < num; ++w) members += CountBits(bits[w]);
    return members;
}

unsigned Set::max() const {
    for (unsigned w = num; w-- > 0;)
        if (bits[w] != 0) return w * kWordBits + HighestBit(bits[w]) + 1;
    return 0;
}

unsigned Set::get(int* out) const {
    for (unsigned i : *this) {
        if (i >= num) break;
        *out++ = static_cast<int>(i);
    }
    return size();
}

void Set::clear() { std::fill_n(bits, num, 0); }

Set& Set::operator|=(Set const& s) {
    Grow(s.num);
    for (unsigned w = 0; w < Common(s); ++w) bits[w] |= s.bits[w];
    return *this;
}

Set& Set::operator&=(Set const& s) {
    Grow(s.num);
    unsigned const common = Common(s);
    for (unsigned w = 0; w < common; ++w) bits[w] &= s.bits[w];
    std::fill(bits + common, bits + num, 0);
    return *this;
}

Set& Set::operator-=(Set const& s) {
    Grow(s.num);
    for (unsigned w = 0; w < Common(s); ++w) bits[w] &= ~s.bits[w];
    return *this;
}

Set& Set::operator^=(Set const& s) {
    Grow(s.num);
    for (unsigned w = 0; w < Common(s); ++w) bits[w] ^= s.bits[w];
    return *this;
}

Set& Set::operator~() {
    for (unsigned w = 0; w < num; ++w) bits[w] = ~bits[w];
    return *this;
}

bool Set::operator==(Set const& s) const {
    return num == s.num && std::equal(bits, bits + num, s.bits);
}

bool Set::operator<=(Set const& s) const {
    for (unsigned w = 0; w < Common(s); ++w)
        if ((bits[w] & ~s.bits[w]) != 0) return false;
    return num <= s.num || bits[s.num] == 0;
}

bool operator&&(Set const& a, Set const& b) {
    for (unsigned w = 0; w < a.Common(b); ++w)
        if ((a.bits[w] & b.bits[w]) != 0) return true;
    return false;
}

Setiterator Set::end() const {
    Setiterator i(*this);
    i.pos = i.limit;
    return i;
}

// The 2^32 bits of the largest possible set are one more than the limit can say; that position is
// given up.
Setiterator::Setiterator(Set const& s)
    : pos(0), limit(s.num >> 27 != 0 ? 0xFFFFFFFFU : s.num * kWordBits), bits(s.bits), num(s.num) {
    Reset();
}

int Setiterator::operator()() {
    if (pos == limit) return -1;
    auto const member = static_cast<int>(pos);
    ++*this;
    return member;
}

// The smallest member that is `from` or more; the limit if there is none.
unsigned Setiterator::First(unsigned from) const {
    if (from >= limit) return limit;
    set_word_t word = bits[from >> 5] >> (from & 31) << (from & 31);
    for (unsigned w = from >> 5;;) {
        if (word != 0) return w * kWordBits + LowestBit(word);
        if (++w == num) return limit;
        word = bits[w];
    }
}
