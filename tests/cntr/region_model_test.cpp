#include <gtest/gtest.h>

#include "tests/support/testregion.h"

TEST(RegionModel, IsClosedWhateverItWasMadeFrom) {
    EXPECT_TRUE(gmRegion().isClosed());
    EXPECT_TRUE(gmRegion(gmContour({{0, 0}, {1, 0}, {1, 1}}, false)).isClosed());
    EXPECT_EQ(support::insideCount(gmRegion({{0, 0}, {1, 0}, {1, 1}}), {0, 0}, false), 1);
}
