// What standard C++ expects of every value and container: moves, swap, range-for, views, hashes,
// structured bindings.
#include <string_view>
#include <type_traits>
#include <unordered_map>
#include <unordered_set>

#include "containers/set.h"
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

TEST(Idioms, RangeForChangesValuesAndTakesTableEntriesApart) {
    TOList<int> list;
    for (int const x : {7, 5}) list.Append(x);
    for (int& x : list) ++x;
    Table table;
    table.Add(String_t("clk"))->cnt = 3;
    for (auto const& [name, count] : table)
        EXPECT_EQ("8 6 clk3", Joined(list) + ' ' + name.Get() + std::to_string(count));
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
