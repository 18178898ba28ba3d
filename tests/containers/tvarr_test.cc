#include "generic/tvarr"

#include <gtest/gtest.h>

#include "text/string.h"

namespace {

TEST(TVarrGrowth, AddsTheIncrementOrDoubles) {
    TVarr<int> lazy(0xFFFFFFFF, VARR_ADD);
    EXPECT_EQ(0u, lazy.Size());
    EXPECT_EQ(nullptr, lazy.Get());
    for (int i = 0; i < 33; ++i) {
        lazy.App(i);
        EXPECT_EQ(i < 32 ? 32u : 64u, lazy.Size());
    }
    TVarr<String_t> doubling(1024, VARR_DOUBLE);
    doubling.Extend(3000);
    EXPECT_EQ(4096u, doubling.Size());
    EXPECT_EQ(0u, doubling.Len());
}

}  // namespace
