#include "geometry/gu_angle.h"

#include "tests/support/test.h"

namespace {

TEST(GuAngle, ConvertsInDoubleAndNarrows) {
    EXPECT_EQ(180.0F, gu_rad2deg(3.14159265F));
    EXPECT_EQ(-90.0F, gu_rad2deg(-1.57079633F));
    EXPECT_EQ(1.57079633F, gu_deg2rad(90.0F));
    EXPECT_EQ(0x1.1df46ap-6F, gu_deg2rad(1.0F));
}

}  // namespace
