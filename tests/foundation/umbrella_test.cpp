#include <gtest/gtest.h>

#include "foundation/foundation.h"

namespace {

TEST(FoundationHeader, BringsEveryPart) {
    EXPECT_TRUE(gfRealEq(gmXform<2>::I, gm2XformLinear().linearXform(), 0.0));
    EXPECT_EQ(gmEdgelet().magnitude(), 0);
    EXPECT_TRUE(gmColor() == gmColor(0, 0, 0));
    EXPECT_TRUE(gmRect().isEmpty());
}

}  // namespace
