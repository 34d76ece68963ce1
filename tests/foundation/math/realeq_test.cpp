#include "foundation/math/realeq.h"

#include "tests/foundation/support.h"

namespace {

using support::infinity;
using support::nan;
using Vector = gmVector<2>;

TEST(RealEq, ComparesNumbersWithinTheToleranceIncluded) {
    EXPECT_TRUE(gfRealEq(1.0, 1.5, 0.5));
    EXPECT_TRUE(gfRealEq(1.5, 1.0, 0.5));
    EXPECT_FALSE(gfRealEq(1.0, 1.5, 0.4999));
}

TEST(RealEq, VectorsOnePartInTenToTheSixteenApartAreEqual) {
    EXPECT_TRUE(gfRealEq(Vector(0.0, 0.0), Vector(1e-16, 0.0), 1e-15));
    EXPECT_TRUE(gfRealEq(Vector(0.0, 0.0), Vector(0.0, -1e-16), 1e-15));
    EXPECT_TRUE(gfRealEq(Vector(0.5, 0.5), Vector(0.5 + 1e-16, 0.5), 1e-15));
}

TEST(RealEq, VectorsOnePartInTenToTheFourteenApartAreNot) {
    EXPECT_FALSE(gfRealEq(Vector(0.0, 0.0), Vector(1e-14, 0.0), 1e-15));
    EXPECT_FALSE(gfRealEq(Vector(1.0, 2.0), Vector(1.0, 2.0 - 1e-14), 1e-15));
}

TEST(RealEq, EachComponentCountsOnItsOwn) {
    EXPECT_TRUE(gfRealEq(Vector(0.0, 0.0), Vector(1.0, 1.0), 1.0)) << "the distance is above 1";
}

TEST(RealEq, NotANumberEqualsNothing) {
    EXPECT_FALSE(gfRealEq(nan, nan, 1.0));
    EXPECT_FALSE(gfRealEq(0.0, 0.0 + nan, infinity));
    EXPECT_FALSE(gfRealEq(Vector(nan, 0.0), Vector(nan, 0.0), 1.0));
}

TEST(RealEq, EqualInfinitiesAreEqual) {
    EXPECT_TRUE(gfRealEq(infinity, infinity, 0.0));
    EXPECT_FALSE(gfRealEq(infinity, -infinity, 1e300));
    EXPECT_FALSE(gfRealEq(infinity, 1e300, 1e300));
}

TEST(RealEq, NegativeToleranceLeavesOnlyExactEquality) {
    EXPECT_TRUE(gfRealEq(1.0, 1.0, -1.0));
    EXPECT_FALSE(gfRealEq(1.0, std::nextafter(1.0, 2.0), -1.0));
}

TEST(RealEq, TransformsAgreeInEveryElement) {
    const double numbers[6] = {1.0, 2.0, 3.0, 4.0, 5.0, 6.0};
    const auto xform = [](const double* n) {
        return gmXform<2>(gmMatrix<2>(n[0], n[1], n[2], n[3]), gmVector<2>(n[4], n[5]));
    };
    EXPECT_TRUE(gfRealEq(xform(numbers), xform(numbers), 1e-15));
    for (int i = 0; i < 6; ++i) {
        double changed[6];
        std::copy(numbers, numbers + 6, changed);
        changed[i] += 1e-13;
        EXPECT_FALSE(gfRealEq(xform(numbers), xform(changed), 1e-15)) << i;
        EXPECT_TRUE(gfRealEq(xform(numbers), xform(changed), 1e-12)) << i;
    }
}

}  // namespace
