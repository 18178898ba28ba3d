// What standard C++ expects of every value and container: moves, swap, range-for, views, hashes,
// structured bindings.
#include <string_view>
#include <type_traits>
#include <unordered_map>
#include <unordered_set>

#include "containers/set.h"
#include "containers/slist.h"
#include "generic/autoarr"
#include "generic/gohash"
#include "generic/tmap"
#include "generic/tolist"
#include "generic/tsortedvector"
#include "generic/tvarr"
#include "generic/tvector"
#include "tests/support/test.h"
#include "text/bytestring.h"
#include "text/string.h"

namespace {

struct ByValue {
    int operator()(int const& a, int const& b) const { return (a > b) - (a < b); }
};
using Sorted = TSortedVector<int, ByValue>;
using Map = TMap<String_t, int, GStringCmp>;
using Table = OHashTable<String_t, StrCnt>;

template <class... T>
constexpr bool kMoveAndSwap = ((std::is_nothrow_move_constructible_v<T> &&
                                std::is_nothrow_move_assignable_v<T> &&
                                std::is_nothrow_swappable_v<T>)&&...);
static_assert(kMoveAndSwap<String_t, ByteString, TVarr<int>, Sorted, TOList<int>, Map, Table,
                           TVector<int>, AutoArr<int>>);
static_assert(std::is_swappable_v<Set>);  // one on the caller's words is copied

template <class... T>
constexpr bool kNoView = ((!std::is_convertible_v<std::string_view, T> &&
                           !std::is_convertible_v<T, std::string_view>)&&...);
static_assert(kNoView<String_t, ByteString>);  // never by accident

TEST(Idioms, RangeForGoesThroughEveryContainer) {
    TVarr<int> array(1, VARR_DOUBLE);
    Sorted sorted;
    TOList<int> list;
    TVector<int> vector(2);
    Set set(8);
    for (int const x : {7, 5}) {
        array.App(x), sorted.Insert(x), list.Append(x);
        vector[x == 7 ? 0 : 1] = x;
        set.add(x);
    }
    auto const& fixed = list;
    EXPECT_EQ("7 5|5 7|7 5|7 5|5 7|7 5", Joined(array) + '|' + Joined(sorted) + '|' + Joined(list) +
                                             '|' + Joined(vector) + '|' + Joined(set) + '|' +
                                             Joined(fixed));
    for (int& x : list) ++x;
    std::swap(array[0], array[1]);
    EXPECT_EQ("8 6|5 7", Joined(list) + '|' + Joined(array));

    Map map;
    map.Insert("out", 2), map.Insert("in", 1);
    Table table;
    table.Add(String_t("clk"))->cnt = 3;
    std::string entries;
    for (auto& [name, value] : map) entries += name.Get() + std::to_string(++value);
    for (auto const& [name, count] : table) entries += name.Get() + std::to_string(count);
    auto const [value, inserted] = map.Insert("in", 9);
    EXPECT_EQ("in2out3clk3", entries);
    EXPECT_TRUE(*value == 2 && inserted == 0);
}

TEST(Idioms, ViewsHashesAndSwapsKeepTheBytes) {
    constexpr std::string_view bytes("a\0b", 3);
    ByteString a(bytes), b(std::string_view{}), shorter("a", 1);
    EXPECT_EQ(bytes, std::string_view(a));
    EXPECT_TRUE(b.Get() == nullptr && b.View().empty() && a == shorter);
    using std::swap;
    swap(a, b);
    EXPECT_EQ(bytes, b.View());
    std::unordered_set<ByteString, std::hash<ByteString>, SameBytes> seen{a, b, shorter, b, a};
    EXPECT_EQ(3u, seen.size());

    std::unordered_map<String_t, int> counts;
    for (char const* const name : {"net1", "", "net1", "net2"}) ++counts[name];
    ++counts[String_t()];
    EXPECT_EQ(4u, counts.size());  // null and "" differ
    EXPECT_EQ(2, counts[String_t(std::string_view("net12").substr(0, 4))]);
}

}  // namespace
