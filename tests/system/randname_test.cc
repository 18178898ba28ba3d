#include "system/randname.h"

#include <set>
#include <thread>

#include "tests/support/test.h"

// The state stands behind the alphabet and its length; the model counts in integers.
TEST(RandName, FollowsTheRecurrence) {
    ASSERT_EQ(8 + sizeof(char*), sizeof(RandName));
    RandName names("abcdefghijklm");
    auto* const place = reinterpret_cast<unsigned char*>(&names) + sizeof(char*) + 4;
    // -2^31 and 2^31 - 1 follow the first two: the ends, where an index could overrun.
    for (std::uint32_t state : {0x7C77A683U, 0x8DBDBB1EU, 0U, 20261121U}) {
        std::memcpy(place, &state, sizeof state);
        for (unsigned i = 0; i < 1000; ++i) {
            state = state * 1103515245U + 12345U;
            std::uint64_t const part = std::min(state, 0U - state), count = i % 2 ? 256 : 13;
            int const got = i % 2 ? names.NextByte() : names.NextChar() - 'a';
            ASSERT_EQ(part * count / 2147836648U, static_cast<unsigned>(got)) << state;
        }
    }
    EXPECT_EQ('\0', RandName("").NextChar());
    for (unsigned n : {0U, 127U, 128U, ~0U}) EXPECT_EQ(std::min(n, 127U), names(n).Len());
}

TEST(SafeRandNameThreads, GivesEachNameOnce) {
    std::vector<std::string> names(6000);
    auto const collect = [&](int from) {
        for (int n = from; n < from + 3000; ++n) names[n] = SafeRandName::Get().Get();
    };
    std::thread other(collect, 3000);
    collect(0);
    other.join();
    EXPECT_EQ(6000u, std::set<std::string>(names.begin(), names.end()).size());
}
