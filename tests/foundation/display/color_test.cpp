#include "foundation/display/color.h"

#include "tests/foundation/support.h"

namespace {

TEST(Color, IsBlackByDefault) {
    EXPECT_TRUE(gmColor() == gmColor(0, 0, 0));
}

TEST(Color, HoldsItsChannels) {
    const gmColor color(1, 128, 255);
    EXPECT_EQ(color.red(), 1);
    EXPECT_EQ(color.green(), 128);
    EXPECT_EQ(color.blue(), 255);
}

TEST(Color, ComparesEveryChannel) {
    const gmColor color(1, 2, 3);
    EXPECT_TRUE(color == gmColor(1, 2, 3));
    EXPECT_TRUE(color != gmColor(0, 2, 3));
    EXPECT_TRUE(color != gmColor(1, 0, 3));
    EXPECT_TRUE(color != gmColor(1, 2, 0));
}

}  // namespace
