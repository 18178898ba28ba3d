// Values for the debugger to show.
#include <text/bytestring.h>

#include <generic/tmap>
#include <generic/tolist>
#include <generic/tsortedvector>

struct Ascending {
    int operator()(int const& a, int const& b) const { return (a > b) - (a < b); }
};

int main() {
    String_t const none, text("metal1");
    ByteString const no_bytes, bytes("a\0b", 3);
    TVarr<int> array(2, VARR_DOUBLE), empty_array(2, VARR_DOUBLE);
    TSortedVector<int, Ascending> sorted;
    TOList<String_t> list, empty_list;
    TMap<String_t, int, GStringCmp> map, empty_map;
    for (int const x : {30, 10, 20}) array.App(x), sorted.Insert(x);
    for (char const* const name : {"poly", "metal1", "ndiff"}) list.Append(name), map[name] = 6;
    __builtin_trap();
}
