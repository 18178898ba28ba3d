// What standard C++ expects of every value and container: moves, swap, range-for, views, bindings.
#include <string_view>
#include <type_traits>

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

TEST(Idioms, TableEntriesComeApart) {
    OHashTable<String_t, StrStrMap> map;
    OHashTable<String_t, TabStr> set(3);
    for (char const* const name : {"clk", "out", "clk"})
        map += {name, "net"}, set += String_t(name);
    std::vector<std::string> seen;
    for (auto const& [key, value] : map) seen.push_back(std::string(key.Get()) + value.Get());
    std::sort(seen.begin(), seen.end());
    EXPECT_EQ("clknet outnet", Joined(seen));
    EXPECT_TRUE(set.Card() == 2 && set & String_t("out"));
}

}  // namespace
