#include "generic/tvarr"

#include <gtest/gtest.h>

#include <algorithm>
#include <cstdint>
#include <cstdlib>
#include <memory>
#include <random>
#include <stdexcept>
#include <string>
#include <type_traits>
#include <utility>
#include <vector>

#include "text/string.h"

namespace {

static_assert(std::is_nothrow_move_constructible_v<TVarr<String_t>>);
static_assert(std::is_nothrow_move_assignable_v<TVarr<String_t>>);
static_assert(std::is_same_v<int, std::underlying_type_t<VarrTypeT>>);

constexpr unsigned kLazy = 0xFFFFFFFF;

template <class T>
std::vector<T> Values(TVarr<T> const& a) {
    return std::vector<T>(a.begin(), a.end());
}

TVarr<int> Ints(std::vector<int> const& values, unsigned size = 4) {
    TVarr<int> a(size, VARR_DOUBLE);
    a.Cat(static_cast<unsigned>(values.size()), values.data());
    return a;
}

int CompareInts(int const* a, int const* b) { return *a < *b ? -1 : *a > *b; }
int CompareStrings(String_t const* a, String_t const* b) { return str_cmp(*a, *b); }

struct Key : TVarrCmp<int> {
    explicit Key(int key) : key(key) {}
    int operator()(int const* element) const override { return CompareInts(&key, element); }
    int key;
};

TEST(TVarrGrowth, AddsTheIncrementOrDoubles) {
    struct Row {
        unsigned size;
        VarrTypeT type;
        unsigned extend, want;
    };
    for (Row const& row :
         {Row{kLazy, VARR_ADD, 0, 0}, Row{kLazy, VARR_ADD, 1, 32}, Row{kLazy, VARR_ADD, 33, 64},
          Row{1024, VARR_DOUBLE, 1024, 1024}, Row{1024, VARR_DOUBLE, 1025, 2048},
          Row{1024, VARR_DOUBLE, 3000, 4096}, Row{10, VARR_ADD, 31, 40}, Row{0, VARR_ADD, 0, 0}}) {
        TVarr<int> a(row.size, row.type), b(a);
        a.Extend(row.extend);
        for (unsigned i = 0; i < row.extend; ++i) b.App(static_cast<int>(i));
        EXPECT_TRUE(a.Size() == row.want && b.Size() == row.want) << row.size << '+' << row.extend;
        EXPECT_TRUE(a.Len() == 0 && b.Len() == row.extend);
    }
    TVarr<String_t> five(5, VARR_ADD);
    five.App("a");
    for (unsigned n : {0, 5}) five.Resize(n);  // below the length: nothing
    EXPECT_EQ(5u, five.Size());
    five.Resize(6);
    EXPECT_TRUE(five.Size() == 10 && five.Len() == 1);
}

TEST(TVarrGrowth, RefusesWhatNoTargetCanHold) {
    TVarr<int> a = Ints({1, 2, 3});
    for (unsigned const n : {0x1FFFFFFFu, 0x7FFFFFFFu, 0xFFFFFFFDu, 0xFFFFFFFFu})
        EXPECT_THROW(a.Extend(n), std::bad_array_new_length) << n;
    EXPECT_THROW(a.Resize(0x20000000), std::bad_array_new_length);
    EXPECT_THROW(TVarr<double>(0x10000000, VARR_ADD), std::bad_array_new_length);
    EXPECT_TRUE(a.Size() == 4 && Values(a) == (std::vector<int>{1, 2, 3}));
}

// An element whose assignments throw on demand and whose number is watched.
struct Fragile {
    Fragile(int value = 0) : value(value) { ++alive; }
    Fragile(Fragile const& other) : value(other.value) { ++alive; }
    Fragile& operator=(Fragile const& other) {
        if (copies_left-- == 0) throw std::runtime_error("no more copies");
        value = other.value;
        return *this;
    }
    ~Fragile() { --alive; }
    int value;
    static int alive, copies_left;
};
int Fragile::alive = 0;
int Fragile::copies_left = -1;

TEST(TVarrGrowth, LeavesTheArrayAloneWhenACopyThrows) {
    {
        TVarr<Fragile> a(4, VARR_DOUBLE);
        for (int i = 0; i < 4; ++i) a.App(Fragile(i));
        Fragile* const buffer = a.Get();
        for (int const left : {0, 2, 0, 3}) {
            Fragile::copies_left = left;
            EXPECT_THROW(left == 3 ? TVarr<Fragile>(a).Pop() : a.App(Fragile(9)),
                         std::runtime_error);
        }
        Fragile::copies_left = -1;
        ASSERT_TRUE(a.Get() == buffer && a.Size() == 4 && a.Len() == 4 && Fragile::alive == 4);
        for (int i = 0; i < 4; ++i) EXPECT_EQ(i, a[i].value);
    }
    EXPECT_EQ(0, Fragile::alive);
}

TEST(TVarrGrowth, AppendsItsOwnElements) {
    TVarr<String_t> a(1, VARR_DOUBLE);
    a.App("x");
    for (int i = 0; i < 20; ++i) a.App(a[i])->operator+=("y");  // at every capacity
    EXPECT_EQ("x" + std::string(20, 'y'), a[20].Get());
    EXPECT_STREQ("x", a[0]);
    TVarr<int> b = Ints({1, 2, 3}, 3);
    for (int i = 0; i < 4; ++i) b.App(b[i]);
    b.Cat(7, b.Get());
    EXPECT_EQ((std::vector<int>{1, 2, 3, 1, 2, 3, 1, 1, 2, 3, 1, 2, 3, 1}), Values(b));
    b.Cpy(3, b.Get() + 4);
    EXPECT_EQ((std::vector<int>{2, 3, 1}), Values(b));
}

TEST(TVarrStrings, ShareAsStringsDo) {
    TVarr<String_t> a(1, VARR_ADD);
    String_t const null;
    a.App(null);
    a.App("text");
    TVarr<String_t> const copy(a);
    for (int i = 0; i < 100; ++i) a.App(String_t("grow"));
    for (int i : {0, 1}) a[i].Reserve(0);
    EXPECT_TRUE(null == "" && copy[0] == "" && copy[1] == "");
    a.Extend(1);
    EXPECT_TRUE(a.end()->IsNull());  // a spare slot
}

TEST(TVarrCopies, HaveTheCapacityOfTheSource) {
    TVarr<int> const a = Ints({1, 2}, 8);
    TVarr<int> b(a), c(1, VARR_ADD);
    c = a;
    c = *&c;
    for (TVarr<int>* copy : {&b, &c}) {
        EXPECT_TRUE(copy->Size() == 8 && copy->Type() == VARR_DOUBLE && copy->Get() != a.Get());
        EXPECT_EQ(Values(a), Values(*copy));
        copy->Resize(9);
        EXPECT_EQ(16u, copy->Size());
    }
    int const* const buffer = b.Get();
    c = std::move(b);
    EXPECT_TRUE(c.Get() == buffer && !b.Get() && b.Len() == 0);
    b.App(7);  // doubling from nothing would never end
    EXPECT_EQ(32u, b.Size());
    TVarr<int> d(std::move(c));
    d.App(3);
    EXPECT_TRUE(d.Get() == buffer && d.Len() == 3 && c.Len() == 0);
}

TEST(TVarrBuffers, GoInAndOut) {
    TVarr<String_t> a(2, VARR_DOUBLE);
    a.App("old");
    EXPECT_STREQ("3", *a.Override(3, new String_t[3]{"1", "2", "3"}));
    EXPECT_TRUE(a.Size() == 3 && a.Len() == 3);
    a.App("4");  // knows that the adopted buffer is full
    EXPECT_TRUE(a.Size() == 6 && a.Len() == 4);
    std::unique_ptr<String_t[]> const saved(a.Save()), retrieved(a.Retrieve());
    EXPECT_TRUE(retrieved[2] == "3" && saved[3] == "4");
    for (int i = 0; i < 3; ++i) a.App(retrieved[i]);  // from the increment's capacity
    EXPECT_TRUE(a.Size() == 4 && a[2] == "3");

    TVarr<int> lazy(kLazy, VARR_ADD);
    EXPECT_EQ(nullptr, lazy.Retrieve());
    EXPECT_TRUE(lazy.Size() == 32 && lazy.Get());
    delete[] lazy.Save();  // of no elements, yet the caller's
}

TEST(TVarrEnd, MovesWithinTheCapacity) {
    TVarr<int> a = Ints({1, 2, 3});
    EXPECT_EQ(3, *a.Pop());
    EXPECT_EQ(a.Get() + 1, a.Cat(0, nullptr));
    EXPECT_EQ(a.Get() + 3, a.Adjust(3));
    EXPECT_EQ(3, a[2]);               // the popped element was still in its slot
    EXPECT_EQ(a.end(), a.Adjust(5));  // above the capacity: nothing
    EXPECT_EQ(3u, a.Len());
    a.Reset();
    EXPECT_EQ(nullptr, a.Pop());
    EXPECT_EQ(sizeof(int), reinterpret_cast<std::uintptr_t>(a.Get()) -
                               reinterpret_cast<std::uintptr_t>(a.Cat(0, nullptr)));
}

TEST(TVarrDeathTest, TakesAnyIndexBelowTheLength) {
    TVarr<char*> a(2, VARR_ADD);
    char text[] = "ab";
    for (char* p = text; *p; ++p) a.App(p);
    TVarr<char*> const& c = a;
    enum { kOne = 1 };
    for (char* p : {a[1], a[1u], a[1L], a[1UL], a[std::int64_t{1}], a[std::uint8_t{1}],
                    c[std::size_t{1}], c['\1'], a[kOne], static_cast<char**>(a)[1]})
        EXPECT_EQ(text + 1, p);
    EXPECT_DEATH(a[2], R"(include/generic/tvarr:[0-9]+:.*operator\[\]\(int\).*i < \(arrp-arr\))");
    EXPECT_DEATH(c[2u], R"(include/generic/tvarr:[0-9]+:.*i < \(arrp-arr\))");
    TVarr<char> odd(1, static_cast<VarrTypeT>(7));
    odd.Extend(1);
    EXPECT_DEATH(odd.Extend(2),
                 R"(include/generic/tvarr:[0-9]+:.*::Extend\(unsigned.* `0' failed)");
}

TEST(TVarrUniq, ComparesWithTheNeighbourAsItStood) {
    struct Row {
        std::vector<int> values, want;
    };
    for (Row const& row :
         {Row{{}, {}}, Row{{1, 2, 1}, {1, 2, 1}}, Row{{1, 1, 2, 2, 2, 3, 1, 1}, {1, 2, 3, 1}}}) {
        TVarr<int> a = Ints(row.values);
        a.Uniq(CompareInts);
        EXPECT_EQ(row.want, Values(a));
    }
    TVarr<int> steps = Ints({1, 2, 3, 9});  // each close to its neighbour, not to the last kept
    steps.Uniq([](int const* a, int const* b) { return std::abs(*a - *b) > 1 ? 1 : 0; });
    EXPECT_EQ((std::vector<int>{1, 9}), Values(steps));
    EXPECT_EQ(9, steps.Get()[3]);  // stale, not cleared
}

// The elements between its ends; comparisons that give 0 end a search, others go on.
struct Recorder : TVarrRange<int> {
    Recorder(int low, int high, bool exact) : low(low), high(high), exact(exact) {}
    int Lower(int const* e) override { return exact ? CompareInts(&low, e) : *e < low ? 1 : -1; }
    int Upper(int const* e) override { return exact ? CompareInts(&high, e) : *e > high ? -1 : 1; }
    void Action(int* element) override { seen.push_back(*element); }
    int low, high;
    bool exact;
    std::vector<int> seen;
};

TEST(TVarrSearch, AgreesWithAModelOnRandomArrays) {
    std::mt19937 random(3);
    for (int round = 0; round < 2000; ++round) {
        std::vector<int> values(random() % 12);
        for (int& value : values) value = static_cast<int>(random() % 10);
        int const key = static_cast<int>(random() % 10), high = static_cast<int>(random() % 12);
        TVarr<int> a = Ints(values);
        auto const at = std::find(values.begin(), values.end(), key);
        EXPECT_EQ(at == values.end() ? nullptr : a.Get() + (at - values.begin()), a.Find(Key(key)));

        a.Sort(CompareInts);
        std::sort(values.begin(), values.end());
        ASSERT_EQ(values, Values(a));
        auto const range = std::equal_range(values.begin(), values.end(), key);
        int const* const found = std::as_const(a).BFind(Key(key));
        ASSERT_EQ(range.first != range.second, found && *found == key);
        TResult<int> const core =
            ArrBFindCore(a.Get(), a.Len(), key, [](int x, int y) { return CompareInts(&x, &y); });
        ASSERT_EQ(found != nullptr, core.found == 1);
        ASSERT_TRUE(found ? *core.ptr == key
                          : core.ptr == a.Get() + (range.first - values.begin()));

        Recorder within(key, high, false);
        a.RSearch(within);
        auto const end = std::upper_bound(range.first, values.end(), high);
        ASSERT_EQ(high < key ? std::vector<int>() : std::vector<int>(range.first, end),
                  within.seen);

        a.Remove(Key(key));
        values.erase(range.first, range.second);
        ASSERT_EQ(values, Values(a));
    }
    Recorder exact(2, 5, true);
    Ints({1, 2, 3, 5, 8}).RSearch(exact);
    EXPECT_EQ((std::vector<int>{2, 3, 5}), exact.seen);
}

TEST(TVarrSort, MovesStringsWithTheirRecords) {
    TVarr<String_t> a(4, VARR_DOUBLE);
    for (char const* text : {"b", "c", "a", "b", "a"}) a.App(text);
    a.App(String_t());
    a.Sort(CompareStrings);
    a.Uniq(CompareStrings);
    EXPECT_TRUE(a.Len() == 4 && a[0].IsNull() && a[1] == "a" && a[2] == "b" && a[3] == "c");
}

TEST(ArrCpy, GoesFrontToBack) {
    char text[] = "abcdef";
    ArrCpy(text, text + 2, 4);
    EXPECT_STREQ("cdefef", text);
    ArrCpy(text + 1, text, 4);  // reads what it has written
    EXPECT_STREQ("cccccf", text);
    ArrCpy<char>(text, nullptr, 0);
    ArrSet(text + 1, 'x', 2);
    EXPECT_STREQ("cxxccf", text);
}

}  // namespace
