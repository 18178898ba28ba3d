// What standard C++ expects of values and containers: moves and swaps that cannot throw, no views
// by accident, range-for with bindings, hashes, and that nothing is lost when a copy fails.
#include <string_view>
#include <type_traits>
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

TEST(Idioms, HashesTellAllBytesAndNullApart) {
    ByteString const a("a\0b", 3), again{std::string_view(a)}, shorter("a", 1);
    std::unordered_set<ByteString, std::hash<ByteString>, SameBytes> const seen{a, again, shorter};
    std::unordered_set<String_t> const names{"net", "", "net", String_t()};
    EXPECT_TRUE(seen.size() == 2 && names.size() == 3);
}

struct Fragile : String_t {
    inline static int copies_left = -1;  // the next copy throws when none are left
    using String_t::String_t;
    Fragile() = default;
    Fragile(Fragile const& other) : String_t(other) { Spend(); }
    Fragile& operator=(Fragile const& other) { return Spend(), String_t::operator=(other), *this; }
    static void Spend() { copies_left-- == 0 ? throw std::bad_alloc() : void(); }
};

TEST(Idioms, AFailedCopyLeavesContainersAsTheyWere) {
    TVarr<Fragile> array(4, VARR_DOUBLE);
    TMap<int, Fragile, ByValue> map, target;
    OHashTable<String_t, Fragile> table(7);
    for (char const* const name : {"a", "b", "c", "d", "e", "f", "g"}) table.Add(name);
    for (int i = 0; i < 4; ++i) array.App("x"), map[i];
    target[5];
    for (int const copies : {0, 1, 2, 3}) {
        Fragile::copies_left = copies;
        EXPECT_THROW(array.App("y"), std::bad_alloc);
        Fragile::copies_left = copies;
        EXPECT_THROW(target = map, std::bad_alloc);
        Fragile::copies_left = copies;
        EXPECT_THROW(table.Add("h"), std::bad_alloc);  // would have grown
        Fragile::copies_left = 0;
        EXPECT_THROW(table.Del(String_t("a")), std::bad_alloc);
    }
    EXPECT_TRUE(Joined(array) == "x x x x" && target.Find(5) && !target.Find(0));
    EXPECT_TRUE(table.Size() == 7 && table.Card() == 7 && table.Add("h") &&
                table.Find(String_t("a")));
}

}  // namespace
