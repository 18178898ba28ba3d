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
    struct {
        unsigned size;
        VarrTypeT type;
        unsigned extend, want;
    } const rows[] = {
        {kLazy, VARR_ADD, 0, 0},
        {kLazy, VARR_ADD, 1, 32},
        {kLazy, VARR_ADD, 33, 64},
        {1024, VARR_DOUBLE, 1024, 1024},
        {1024, VARR_DOUBLE, 1025, 2048},
        {1024, VARR_DOUBLE, 3000, 4096},
        {10, VARR_ADD, 31, 40},
        {3, VARR_DOUBLE, 13, 24},
        {0, VARR_ADD, 0, 0},
    };
    for (auto const& row : rows) {
        TVarr<int> a(row.size, row.type);
        a.Extend(row.extend);
        EXPECT_EQ(row.want, a.Size()) << row.size << " by " << row.extend;
        TVarr<int> b(row.size, row.type);
        for (unsigned i = 0; i < row.extend; ++i) b.App(static_cast<int>(i));
        EXPECT_EQ(row.extend, b.Len());
    }
    TVarr<String_t> five(5, VARR_ADD);
    five.App("a");
    five.Resize(0);  // below the length: nothing
    five.Resize(5);
    EXPECT_EQ(5u, five.Size());
    five.Resize(6);
    EXPECT_EQ(10u, five.Size());
    EXPECT_EQ(1u, five.Len());
}

TEST(TVarrGrowth, RefusesWhatNoTargetCanHold) {
    TVarr<int> a = Ints({1, 2, 3});
    for (unsigned const n : {0x1FFFFFFFu, 0x7FFFFFFFu, 0xFFFFFFFDu, 0xFFFFFFFFu})
        EXPECT_THROW(a.Extend(n), std::bad_array_new_length) << n;
    EXPECT_THROW(a.Resize(0x20000000), std::bad_array_new_length);
    EXPECT_THROW(TVarr<double>(0x10000000, VARR_ADD), std::bad_array_new_length);
    EXPECT_EQ((std::vector<int>{1, 2, 3}), Values(a));
    EXPECT_EQ(4u, a.Size());
}

// An element whose copies throw on demand and whose number is watched.
struct Fragile {
    Fragile() : value(0) { ++alive; }
    Fragile(int value) : value(value) { ++alive; }
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
        for (int const left : {0, 2}) {
            Fragile::copies_left = left;
            EXPECT_THROW(a.App(Fragile(9)), std::runtime_error);
            Fragile::copies_left = left;
            EXPECT_THROW(TVarr<Fragile>{a}, std::runtime_error);
            Fragile::copies_left = left;
            EXPECT_THROW(std::unique_ptr<Fragile[]>{a.Save()}, std::runtime_error);
        }
        Fragile::copies_left = -1;
        EXPECT_EQ(buffer, a.Get());
        EXPECT_EQ(4u, a.Size());
        ASSERT_EQ(4u, a.Len());
        for (int i = 0; i < 4; ++i) EXPECT_EQ(i, a[i].value);
        EXPECT_EQ(4, Fragile::alive);
    }
    EXPECT_EQ(0, Fragile::alive);
}

TEST(TVarrGrowth, AppendsItsOwnElements) {
    TVarr<String_t> a(1, VARR_DOUBLE);
    a.App("x");
    for (int i = 0; i < 20; ++i) a.App(a[i])->operator+=("y");  // at every capacity
    EXPECT_EQ(std::string("x") + std::string(20, 'y'), a[20].Get());
    EXPECT_STREQ("x", a[0]);
    TVarr<int> b = Ints({1, 2, 3}, 3);
    b.Cat(3, b.Get());
    b.Cat(2, b.Get() + 4);
    EXPECT_EQ((std::vector<int>{1, 2, 3, 1, 2, 3, 2, 3}), Values(b));
    b.Cpy(3, b.Get() + 4);
    EXPECT_EQ((std::vector<int>{2, 3, 2}), Values(b));
}

TEST(TVarrStrings, ShareAsStringsDo) {
    TVarr<String_t> a(1, VARR_ADD);
    String_t const null;
    a.App(null);
    a.App("text");
    TVarr<String_t> const copy(a);
    for (int i = 0; i < 100; ++i) a.App(String_t("grow"));
    a[0].Reserve(1)[0] = '\0';
    EXPECT_STREQ("", null.Get());
    EXPECT_STREQ("", copy[0].Get());
    a[1].Reserve(0);
    EXPECT_STREQ("", copy[1].Get());
    a.Extend(1);
    EXPECT_TRUE(a.end()->IsNull());  // a spare slot
}

TEST(TVarrCopies, HaveTheCapacityOfTheSource) {
    TVarr<int> const a = Ints({1, 2}, 8);
    TVarr<int> b(a), c(1, VARR_ADD);
    c = a;
    c = *&c;
    for (TVarr<int>* copy : {&b, &c}) {
        EXPECT_EQ(8u, copy->Size());
        EXPECT_EQ(VARR_DOUBLE, copy->Type());
        EXPECT_EQ(Values(a), Values(*copy));
        EXPECT_NE(a.Get(), copy->Get());
    }
    TVarr<int> const lazy(TVarr<int>(kLazy, VARR_ADD));
    EXPECT_EQ(0u, TVarr<int>(lazy).Size());

    int const* const buffer = b.Get();
    c = std::move(b);
    EXPECT_EQ(buffer, c.Get());
    EXPECT_EQ(nullptr, b.Get());
    b.App(7);  // doubling from nothing would never end
    EXPECT_EQ(32u, b.Size());
    TVarr<int> d(std::move(c));
    EXPECT_EQ(buffer, d.Get());
    EXPECT_EQ(0u, c.Len());
}

TEST(TVarrBuffers, GoInAndOut) {
    TVarr<String_t> a(2, VARR_DOUBLE);
    a.App("old");
    EXPECT_STREQ("3", *a.Override(3, new String_t[3]{"1", "2", "3"}));
    EXPECT_EQ(3u, a.Size());
    EXPECT_EQ(3u, a.Len());
    std::unique_ptr<String_t[]> const saved(a.Save()), retrieved(a.Retrieve());
    EXPECT_STREQ("3", retrieved[2]);
    EXPECT_STREQ("3", saved[2]);
    EXPECT_EQ(2u, a.Size());  // fresh, from the increment
    EXPECT_EQ(0u, a.Len());

    TVarr<int> lazy(kLazy, VARR_ADD);
    EXPECT_EQ(nullptr, lazy.Retrieve());
    EXPECT_EQ(32u, lazy.Size());
    EXPECT_NE(nullptr, lazy.Get());
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

TEST(TVarrIndex, TakesAnyIntegerType) {
    TVarr<char*> a(2, VARR_ADD);
    char text[] = "ab";
    a.App(text);
    a.App(text + 1);
    TVarr<char*> const& c = a;
    EXPECT_EQ(text, a[0]);
    EXPECT_EQ(text + 1, a[1u]);
    EXPECT_EQ(text + 1, a[1L]);
    EXPECT_EQ(text + 1, a[1UL]);
    EXPECT_EQ(text + 1, a[std::int64_t{1}]);
    EXPECT_EQ(text + 1, a[std::uint8_t{1}]);
    EXPECT_EQ(text + 1, c[std::size_t{1}]);
    EXPECT_EQ(text + 1, c['\1']);
    enum { kOne = 1 };
    EXPECT_EQ(text + 1, c[kOne]);
    EXPECT_EQ(a.Get(), static_cast<char**>(a));
}

TEST(TVarrDeathTest, AssertionsNameFileAndCondition) {
    TVarr<int> a = Ints({7});
    TVarr<int> const& c = a;
    EXPECT_DEATH(a[1], R"(include/generic/tvarr:[0-9]+:.*operator\[\]\(int\).*i < \(arrp-arr\))");
    EXPECT_DEATH(c[1u], R"(include/generic/tvarr:[0-9]+:.*i < \(arrp-arr\))");
    TVarr<char> odd(1, static_cast<VarrTypeT>(7));
    odd.Extend(1);
    EXPECT_DEATH(odd.Extend(2), R"(include/generic/tvarr:[0-9]+:.*Extend.* `0' failed)");
}

TEST(TVarrUniq, ComparesWithTheNeighbourAsItStood) {
    struct {
        std::vector<int> values, want;
    } const rows[] = {
        {{}, {}},
        {{1}, {1}},
        {{1, 2, 1}, {1, 2, 1}},
        {{1, 1, 2, 2, 2, 3, 1, 1}, {1, 2, 3, 1}},
    };
    for (auto const& row : rows) {
        TVarr<int> a = Ints(row.values);
        a.Uniq(CompareInts);
        EXPECT_EQ(row.want, Values(a));
    }
    TVarr<int> steps = Ints({1, 2, 3, 9});  // each close to its neighbour, not to the last kept
    steps.Uniq([](int const* a, int const* b) { return std::abs(*a - *b) > 1 ? 1 : 0; });
    EXPECT_EQ((std::vector<int>{1, 9}), Values(steps));
    EXPECT_EQ(9, steps.Get()[3]);  // stale, not cleared
}

struct Recorder : TVarrRange<int> {
    Recorder(int low, int high) : low(low), high(high) {}
    int Lower(int const* element) override { return *element < low ? 1 : -1; }
    int Upper(int const* element) override { return *element > high ? -1 : 1; }
    void Action(int* element) override { seen.push_back(*element); }
    int low, high;
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
        TVarr<int> const& c = a;
        int const* const found = c.BFind(Key(key));
        ASSERT_EQ(range.first != range.second, found != nullptr);
        ASSERT_TRUE(!found || *found == key);
        TResult<int> const core =
            ArrBFindCore(a.Get(), a.Len(), key, [](int x, int y) { return CompareInts(&x, &y); });
        ASSERT_EQ(found != nullptr, core.found == 1);
        ASSERT_TRUE(core.found ? *core.ptr == key
                               : core.ptr == a.Get() + (range.first - values.begin()));

        Recorder within(key, high);
        a.RSearch(within);
        std::vector<int> inside;
        for (int value : values)
            if (value >= key && value <= high) inside.push_back(value);
        ASSERT_EQ(inside, within.seen);

        a.Remove(Key(key));
        values.erase(range.first, range.second);
        ASSERT_EQ(values, Values(a));
    }
}

TEST(TVarrSearch, RangeStartsAndEndsWhereTheComparisonsGiveZero) {
    struct Exact : Recorder {
        using Recorder::Recorder;
        int Lower(int const* element) override { return CompareInts(&low, element); }
        int Upper(int const* element) override { return CompareInts(&high, element); }
    } exact(2, 5);
    Ints({1, 2, 3, 5, 8}).RSearch(exact);
    EXPECT_EQ((std::vector<int>{2, 3, 5}), exact.seen);
}

TEST(TVarrSort, MovesStringsWithTheirRecords) {
    std::mt19937 random(8);
    TVarr<String_t> a(4, VARR_DOUBLE);
    std::vector<std::string> model;
    for (int i = 0; i < 300; ++i) {
        model.push_back(std::to_string(random() % 100));
        a.App(model.back().c_str());
    }
    a.App(String_t());
    a.Sort(CompareStrings);
    std::sort(model.begin(), model.end());
    EXPECT_TRUE(a[0].IsNull());
    for (unsigned i = 0; i < 300; ++i) ASSERT_EQ(model[i], a[i + 1].Get());
    a.Uniq(CompareStrings);
    model.erase(std::unique(model.begin(), model.end()), model.end());
    EXPECT_EQ(model.size() + 1, a.Len());
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
