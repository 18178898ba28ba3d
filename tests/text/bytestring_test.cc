#include "text/bytestring.h"

#include "tests/support/test.h"

namespace {

using namespace std::string_literals;

constexpr unsigned kMost = 0xFFFFFFFF;

std::string Bytes(ByteString const& b) { return {b.Get() ? b.Get() : "", b.Len()}; }

TEST(ByteStringMaking, KeepsNoBufferForNoBytes) {
    ByteString const b("abcde", 5), zero("a\0b", 3);
    std::string all;
    for (ByteString const& made :
         {ByteString(0u, "abc", 3, '-'), ByteString(3, 'x'), zero, ByteString(nullptr, 3),
          ByteString(4, "ab", 2, '-'), ByteString(2, "abc", 3, '-'), ByteString(2, nullptr, 5, '-'),
          b.SubStr(1, 3), b.SubStr(1, kMost), b.SubStr(0, kMost), b.SubStr(3, 2), b.SubStr(5, 9),
          b.SubStr(9, 12), b.Subst("ace", 2, 'x'), zero.Subst('a', '\0')}) {
        std::string const bytes = Bytes(made);
        all += bytes + '|';
        std::unique_ptr<char[]> const saved(made.Save());
        EXPECT_TRUE(bytes.empty() == !made.Get() && bytes.empty() == !saved) << bytes;
        EXPECT_EQ(bytes, std::string(saved ? saved.get() : "", made.Len()));
    }
    EXPECT_EQ("|xxx|a\0b||ab--|ab|--|bcd|bcde|||||xbxde|\0\0b|"s, all);
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
    EXPECT_TRUE(b.Len() == 0 && !a.Reserve(0));

    ByteString const empty;
    ByteString(empty).Reserve(1)[0] = 'm';
    EXPECT_EQ("m", Bytes(empty));  // also between empty ones
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
