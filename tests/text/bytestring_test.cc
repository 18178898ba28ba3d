#include "text/bytestring.h"

#include <string_view>

#include "tests/support/test.h"

namespace {

using namespace std::string_view_literals;

constexpr unsigned kMost = 0xFFFFFFFF;

std::string_view Bytes(ByteString const& b) { return {b.Get() ? b.Get() : "", b.Len()}; }

TEST(ByteStringMaking, KeepsNoBufferForNoBytes) {
    ByteString const b("abcde", 5), zero("a\0a", 3), none;
    struct Row {
        ByteString made;
        std::string_view want;
    };
    for (auto const& [made, want] :
         {Row{ByteString(0u, "abc", 3, '-'), ""}, Row{ByteString(3, 'x'), "xxx"},
          Row{ByteString("a\0b", 3), "a\0b"sv}, Row{ByteString(nullptr, 3), ""},
          Row{ByteString(4, "ab", 2, '-'), "ab--"}, Row{ByteString(2, "abc", 3, '-'), "ab"},
          Row{ByteString(2, nullptr, 5, '-'), "--"}, Row{b.SubStr(1, 3), "bcd"},
          Row{b.SubStr(1, kMost), "bcde"}, Row{b.SubStr(0, kMost), ""}, Row{b.SubStr(3, 2), ""},
          Row{b.SubStr(5, 9), ""}, Row{b.SubStr(9, 12), ""}, Row{zero.Subst('a', 'b'), "b\0a"sv},
          Row{b.Subst("ace", 2, 'x'), "xbxde"},
          Row{ByteString("aba", 3).Subst('a', '\0'), "\0b\0"sv}, Row{none.Subst('a', 'b'), ""}}) {
        EXPECT_EQ(want, Bytes(made));
        std::unique_ptr<char[]> const saved(made.Save());
        EXPECT_TRUE(want.empty() == !made.Get() && want.empty() == !saved) << want;
        EXPECT_EQ(want, std::string_view(saved ? saved.get() : "", made.Len()));
    }
}

TEST(ByteStringEquality, ComparesTheShorterLength) {
    ByteString const empty, ab("ab", 2), abc("abc", 3), ax("ax", 2);
    EXPECT_TRUE(ab == abc && abc == ab && ab != ax && empty == ByteString(0u) && empty != ab);
}

TEST(ByteStringSharing, InPlaceMembersReachCopiesOthersDetach) {
    ByteString a("ab", 2), b(a);
    a.Erase('x');
    EXPECT_EQ("xx", Bytes(b));
    std::memcpy(a.Reserve(3), "123", 3);
    EXPECT_EQ("123", Bytes(b));
    char* const adopted = new char[1]{'z'};
    for (int i = 0; i < 2; ++i) a.Redefine(adopted, 1);
    a.Append(nullptr, 3);
    EXPECT_THROW(a.Append('x', kMost), std::bad_alloc);
    EXPECT_THROW(a.Prepend("x", kMost), std::bad_alloc);
    EXPECT_TRUE(a.Get() == adopted && b.Get() == adopted && a.Len() == 1);
    a.Append("y", 0);
    EXPECT_NE(adopted, a.Get());
    EXPECT_EQ("z", Bytes(a));
    b.Redefine(nullptr, 7);
    EXPECT_EQ(0u, b.Len());
    EXPECT_EQ(nullptr, a.Reserve(0));

    ByteString const empty;
    ByteString shared(empty), moved(std::move(shared));
    moved.Reserve(1)[0] = 'm';
    shared = moved;
    EXPECT_TRUE(Bytes(empty) == "m" && Bytes(shared) == "m");  // also between empty ones
}

TEST(ByteStringJoin, FollowsStdStringThroughRandomSteps) {
    std::mt19937 random(5);
    ByteString b;
    std::string model;
    for (int step = 0; step < 5000; ++step) {
        ByteString const before(b);
        std::string const kept = model;
        unsigned const n = random() % 4, from = b.Len() ? random() % b.Len() : 0;
        unsigned const own = std::min(n, b.Len() - from);
        char const c = static_cast<char>(random());
        switch (b.Len() > 40 ? 4 : random() % 5) {
            case 0: b.Append(c, n), model.append(n, c); break;
            case 1: b.Prepend(c, n), model.insert(0, n, c); break;
            case 2: b.Append(b.Get() + from, own), model += kept.substr(from, own); break;
            case 3: b.Prepend(b.Get() + from, own), model.insert(0, kept.substr(from, own)); break;
            default: b = ByteString(), model.clear();
        }
        ASSERT_EQ(model, Bytes(b)) << step;
        ASSERT_EQ(kept, Bytes(before)) << step;
    }
}

}  // namespace
