#include "text/string.h"

#include <gtest/gtest.h>

namespace {

TEST(StringSharing, ReserveReachesCopiesAndAppendDetaches) {
    String_t a("layer"), b(a);
    std::strcpy(a.Reserve(5), "metal");
    a += "1";
    EXPECT_STREQ("metal", b.Get());
    EXPECT_STREQ("metal1", a.Get());
}

}  // namespace
