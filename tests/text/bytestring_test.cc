#include "text/bytestring.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <cstring>
#include <memory>
#include <random>
#include <string>
#include <string_view>

namespace {

constexpr unsigned kMost = 0xFFFFFFFF;

std::string_view Bytes(ByteString const& b) { return {b.Get() ? b.Get() : "", b.Len()}; }

TEST(ByteStringMaking, CopiesFillsAndKeepsNoBufferForNoBytes) {
    using namespace std::string_view_literals;
    struct {
        ByteString made;
        std::string_view want;
    } const rows[] = {
        {ByteString(), ""},
        {ByteString(0u), ""},
        {ByteString(0u, 'x'), ""},
        {ByteString(3, 'x'), "xxx"},
        {ByteString("a\0b", 3), "a\0b"sv},
        {ByteString("abc", 0), ""},
        {ByteString(nullptr, 3), ""},
        {ByteString(4, "ab", 2, '-'), "ab--"},
        {ByteString(2, "abc", 3, '-'), "ab"},
        {ByteString(2, "abc", 0, '-'), "--"},
        {ByteString(2, nullptr, 5, '-'), "--"},
        {ByteString(0u, "abc", 3, '-'), ""},
    };
    for (auto const& row : rows) {
        EXPECT_EQ(row.want, Bytes(row.made)) << row.want;
        EXPECT_EQ(row.want.empty(), row.made.Get() == nullptr) << row.want;
        std::unique_ptr<char[]> const saved(row.made.Save());
        EXPECT_EQ(row.want.empty(), saved == nullptr) << row.want;
        EXPECT_EQ(row.want, std::string_view(saved ? saved.get() : "", row.made.Len()));
    }
}

TEST(ByteStringMaking, RefusesSumsBeyondTheAddressRange) {
    ByteString b("ab", 2);
    EXPECT_THROW(b.Append('x', kMost - 1), std::bad_alloc);
    EXPECT_THROW(b.Prepend("x", kMost), std::bad_alloc);
    EXPECT_EQ("ab", Bytes(b));
}

TEST(ByteStringSubStr, CountsUnsigned) {
    struct {
        unsigned from, to;
        std::string_view want;
    } const rows[] = {
        {1, 3, "bcd"},      {1, 100, "bcde"}, {0, 4, "abcde"}, {4, 4, "e"}, {3, 2, ""},
        {5, 9, ""},         {9, 12, ""},      {0, kMost, ""},  // the count wraps to 0
        {1, kMost, "bcde"},
    };
    ByteString const b("abcde", 5);
    for (auto const& row : rows)
        EXPECT_EQ(row.want, Bytes(b.SubStr(row.from, row.to))) << row.from << " to " << row.to;
    EXPECT_EQ(nullptr, ByteString().SubStr(0, 3).Get());
}

TEST(ByteStringSubst, StopsAtTheFirstZeroByteOrTheEnd) {
    using namespace std::string_view_literals;
    ByteString const b("a\0a", 3);
    EXPECT_EQ("b\0a"sv, Bytes(b.Subst('a', 'b')));
    EXPECT_EQ("a\0a"sv, Bytes(b));
    EXPECT_EQ("x-x-"sv, Bytes(ByteString("a-b-", 4).Subst("ab", 2, 'x')));
    EXPECT_EQ("a-b-"sv, Bytes(ByteString("a-b-", 4).Subst(nullptr, 2, 'x')));
    EXPECT_EQ("\0b\0"sv, Bytes(ByteString("aba", 3).Subst('a', '\0')));
    EXPECT_EQ("", Bytes(ByteString().Subst('a', 'b')));
}

TEST(ByteStringEquality, ComparesTheShorterLength) {
    ByteString const empty, ab("ab", 2), abc("abc", 3), ax("ax", 2);
    EXPECT_TRUE(ab == abc && abc == ab && ab != ax && empty == ByteString(0u));
    EXPECT_TRUE(empty != ab && ab != empty);
}

TEST(ByteStringSharing, InPlaceMembersReachCopiesOthersDetach) {
    ByteString a("ab", 2), b(a);
    a.Erase('x');
    EXPECT_EQ("xx", Bytes(b));
    std::memcpy(a.Reserve(3), "123", 3);
    EXPECT_EQ("123", Bytes(b));
    char* const adopted = new char[1]{'z'};
    a.Redefine(adopted, 1);
    EXPECT_EQ(adopted, b.Get());
    a.Redefine(adopted, 1);
    EXPECT_EQ("z", Bytes(b));
    a.Append(nullptr, 3);
    EXPECT_EQ(adopted, a.Get());
    a.Append("y", 0);
    EXPECT_NE(adopted, a.Get());
    EXPECT_EQ("z", Bytes(a));
    EXPECT_EQ(nullptr, b.Reserve(0));
    b.Redefine(nullptr, 7);
    EXPECT_EQ(0u, b.Len());

    ByteString const empty;
    ByteString shared(empty), moved(std::move(shared));
    moved.Reserve(1)[0] = 'm';
    EXPECT_EQ("m", Bytes(empty));  // also between copies of an empty one
    shared = moved;
    EXPECT_EQ("m", Bytes(shared));
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
        switch (random() % 5) {
            case 0: b.Append(c, n), model.append(n, c); break;
            case 1: b.Prepend(c, n), model.insert(0, n, c); break;
            case 2: b.Append(b.Get() + from, own), model += kept.substr(from, own); break;
            case 3: b.Prepend(b.Get() + from, own), model.insert(0, kept.substr(from, own)); break;
            default:
                if (model.size() > 40) b = ByteString(), model.clear();
        }
        ASSERT_EQ(model, Bytes(b)) << step;
        ASSERT_EQ(kept, Bytes(before)) << step;
    }
}

}  // namespace
