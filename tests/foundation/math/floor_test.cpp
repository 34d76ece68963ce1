#include "foundation/math/floor.h"

#include "tests/foundation/support.h"

namespace {

using Limits = std::numeric_limits<long>;

TEST(IFloor, IsTheLargestIntegerNotAbove) {
    EXPECT_EQ(gfIFloor(2.0), 2);
    EXPECT_EQ(gfIFloor(2.999999), 2);
    EXPECT_EQ(gfIFloor(std::nextafter(3.0, 0.0)), 2);
    EXPECT_EQ(gfIFloor(-0.5), -1);
    EXPECT_EQ(gfIFloor(-2.0), -2);
    EXPECT_EQ(gfIFloor(-1e-300), -1);
    EXPECT_EQ(gfIFloor(-0.0), 0);
}

TEST(IFloor, LeavesThirtyTwoBitsBehind) {
    EXPECT_EQ(gfIFloor(2148.0 / 1e-6), 2148000000L);
    EXPECT_EQ(gfIFloor(-9007199254740991.0), -9007199254740991L);
}

TEST(IFloor, BeyondTheRangeGivesTheNearestLong) {
    EXPECT_EQ(gfIFloor(9223372036854775808.0), Limits::max());
    EXPECT_EQ(gfIFloor(1e300), Limits::max());
    EXPECT_EQ(gfIFloor(support::infinity), Limits::max());
    EXPECT_EQ(gfIFloor(-1e300), Limits::min());
    EXPECT_EQ(gfIFloor(-support::infinity), Limits::min());
}

TEST(IFloor, IsExactAtTheEndsOfTheRange) {
    EXPECT_EQ(gfIFloor(9223372036854774784.0), 9223372036854774784L) << "the last double below the end";
    EXPECT_EQ(gfIFloor(-9223372036854775808.0), Limits::min());
    EXPECT_EQ(gfIFloor(-9223372036854777856.0), Limits::min()) << "the first double beyond it";
}

TEST(IFloor, OfNotANumberIsZero) {
    EXPECT_EQ(gfIFloor(support::nan), 0);
}

}  // namespace
