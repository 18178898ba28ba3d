#include "system/randname.h"

#include <set>
#include <thread>

#include "tests/support/test.h"

// The state stands behind the alphabet and its length; the model counts in integers.
TEST(RandName, FollowsTheRecurrence) {
    char const alphabet[] = "abcdefghijklm";
    ASSERT_EQ(8 + sizeof(char*), sizeof(RandName));
    RandName names(alphabet);
    auto* const place = reinterpret_cast<unsigned char*>(&names) + sizeof(char*) + 4;
    // -2^31 and 2^31 - 1 follow the first two: the ends, where an index could overrun.
    for (std::uint32_t state : {0x7C77A683U, 0x8DBDBB1EU, 0U, 20261121U}) {
        std::memcpy(place, &state, sizeof state);
        for (int i = 0; i < 1000; ++i) {
            state = state * 1103515245U + 12345U;
            std::uint64_t const part = std::min(state, 0U - state);
            if (i % 2 == 0)
                ASSERT_EQ(alphabet[part * 13 / 2147836648U], names.NextChar()) << state;
            else
                ASSERT_EQ(part * 256 / 2147836648U, names.NextByte()) << state;
        }
    }
    EXPECT_EQ('\0', RandName("").NextChar());
    for (unsigned n : {0U, 1U, 127U, 128U, ~0U}) EXPECT_EQ(std::min(n, 127U), names(n).Len());
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
            EXPECT_TRUE(name.Len() == 12 && all.insert(name.Get()).second) << name;
            used.insert(name.Get(), name.Get() + 12);
        }
    EXPECT_EQ(62u, used.size());
}
