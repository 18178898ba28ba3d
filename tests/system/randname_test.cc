#include "system/randname.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <set>
#include <string>
#include <thread>
#include <vector>

namespace {

TEST(RandName, ReachesTheWholeAlphabetEvenly) {
    RandName letters("abcd"), bytes;
    int counts[4] = {}, byte_counts[256] = {};
    for (int i = 0; i < 100000; ++i) {
        ++counts[letters.NextChar() - 'a'];
        ++byte_counts[bytes.NextByte()];
    }
    for (int count : counts) EXPECT_NEAR(25000, count, 2500);
    for (int count : byte_counts) EXPECT_NEAR(390, count, 200);
    EXPECT_EQ('\0', RandName("").NextChar());
    for (unsigned n : {1U, 127U, 128U, ~0U}) EXPECT_EQ(std::min(n, 127U), bytes(n).Len());
    EXPECT_STREQ("", bytes(0));
}

TEST(SafeRandNameThreads, GivesEachNameOnce) {
    std::vector<String_t> names[4];
    std::vector<std::thread> threads;
    for (auto& mine : names)
        threads.emplace_back([&mine] {
            for (int i = 0; i < 2000; ++i) mine.push_back(SafeRandName::Get());
        });
    for (auto& thread : threads) thread.join();
    std::set<std::string> all;
    std::set<char> used;
    for (auto const& some : names)
        for (String_t const& name : some) {
            EXPECT_EQ(12u, name.Len());
            all.insert(name.Get());
            used.insert(name.Get(), name.Get() + 12);
        }
    EXPECT_EQ(8000u, all.size());
    EXPECT_EQ("0123456789ABCDEFGHIJKLMNOPQRSTUVWXYZabcdefghijklmnopqrstuvwxyz",
              std::string(used.begin(), used.end()));
}

}  // namespace
