#include "foundation/math/vector.h"

#include <type_traits>

#include "foundation/math/pair.h"
#include "tests/foundation/support.h"

namespace {

using support::infinity;
using support::pi;

TEST(Vector, IsTheOriginByDefault) {
    EXPECT_EQ(gmVector<2>(), gmVector<2>(0.0, 0.0));
}

TEST(Vector, HoldsItsComponents) {
    const gmVector<2> v(3.5, -4.25);
    EXPECT_EQ(v.x(), 3.5);
    EXPECT_EQ(v.y(), -4.25);
}

TEST(Vector, PolarFormIsLengthTimesCosineAndSine) {
    const gmVector<2> v(2.0, gmRadian(pi / 6.0));
    EXPECT_NEAR(v.x(), std::sqrt(3.0), 1e-15);
    EXPECT_NEAR(v.y(), 1.0, 1e-15);
    EXPECT_EQ(gmVector<2>(5.0, gmRadian(0.0)), gmVector<2>(5.0, 0.0));
}

TEST(Vector, TakesAPairOfIntegers) {
    const gmVector<2> v = gmPair<long>(-7, 1L << 40);
    EXPECT_EQ(v, gmVector<2>(-7.0, 1099511627776.0));
}

TEST(Vector, ArithmeticIsComponentWise) {
    const gmVector<2> a(1.0, 2.0);
    const gmVector<2> b(10.0, -20.0);
    EXPECT_EQ(a + b, gmVector<2>(11.0, -18.0));
    EXPECT_EQ(a - b, gmVector<2>(-9.0, 22.0));
    EXPECT_EQ(-a, gmVector<2>(-1.0, -2.0));
    EXPECT_EQ(b / 4.0, gmVector<2>(2.5, -5.0));
    EXPECT_EQ(a * 3.0, gmVector<2>(3.0, 6.0));
    EXPECT_EQ(3.0 * a, gmVector<2>(3.0, 6.0));
}

TEST(Vector, DotAndCrossAreThoseOfThePlane) {
    const gmVector<2> right(2.0, 0.0);
    const gmVector<2> up(0.0, 3.0);
    EXPECT_EQ(right.dot(up), 0.0);
    EXPECT_EQ(right.dot(right), 4.0);
    EXPECT_EQ(right.cross(up), 6.0) << "left is positive";
    EXPECT_EQ(up.cross(right), -6.0);
}

TEST(Vector, EqualityIsExact) {
    EXPECT_EQ(gmVector<2>(1.0, 2.0), gmVector<2>(1.0, 2.0));
    EXPECT_NE(gmVector<2>(1.0, 2.0), gmVector<2>(std::nextafter(1.0, 2.0), 2.0));
    EXPECT_NE(gmVector<2>(1.0, 2.0), gmVector<2>(1.0, std::nextafter(2.0, 1.0)));
    EXPECT_NE(gmVector<2>(support::nan, 0.0), gmVector<2>(support::nan, 0.0));
    EXPECT_EQ(gmVector<2>(0.0, -0.0), gmVector<2>(-0.0, 0.0));
}

TEST(Vector, LengthIsTheRootOfTheSquares) {
    EXPECT_EQ(gmVector<2>(3.0, -4.0).len(), 5.0);
    EXPECT_EQ(gmVector<2>().len(), 0.0);
    support::Random random(11);
    for (int i = 0; i < 10000; ++i) {
        const gmVector<2> v = random.vector(1e6);
        const double xx = v.x() * v.x();
        const double yy = v.y() * v.y();
        ASSERT_EQ(v.len(), std::sqrt(xx + yy)) << "the same bits everywhere";
    }
}

TEST(Vector, LengthWhoseSquareLeavesTheRangeIsInfiniteOrZero) {
    EXPECT_EQ(gmVector<2>(1e200, 0.0).len(), infinity);
    EXPECT_EQ(gmVector<2>(1e-200, 1e-200).len(), 0.0);
}

TEST(Vector, DistanceIsTheLengthOfTheDifference) {
    EXPECT_EQ(gmVector<2>(1.0, 1.0).distance({4.0, 5.0}), 5.0);
    EXPECT_EQ(gmVector<2>(4.0, 5.0).distance({1.0, 1.0}), 5.0);
}

TEST(Vector, AngleIsMeasuredFromXTowardsY) {
    EXPECT_EQ(gmVector<2>(1.0, 0.0).angle().value(), 0.0);
    EXPECT_DOUBLE_EQ(gmVector<2>(0.0, 1.0).angle().value(), pi / 2.0);
    EXPECT_DOUBLE_EQ(gmVector<2>(-1.0, 0.0).angle().value(), pi);
    EXPECT_DOUBLE_EQ(gmVector<2>(-1.0, -1.0).angle().value(), -0.75 * pi);
    EXPECT_EQ(gmVector<2>().angle().value(), 0.0);
}

TEST(Vector, UnitHasLengthOneAndTheSameDirection) {
    EXPECT_EQ(gmVector<2>(0.0, -8.0).unit(), gmVector<2>(0.0, -1.0));
    EXPECT_EQ(gmVector<2>(30.0, 40.0).unit(), gmVector<2>(0.6, 0.8));
}

TEST(Vector, UnitOfTheZeroVectorIsNotANumber) {
    EXPECT_TRUE(std::isnan(gmVector<2>().unit().x()));
    EXPECT_TRUE(std::isnan(gmVector<2>().unit().y()));
}

TEST(Pair, HoldsTwoNumbersZeroByDefault) {
    EXPECT_EQ(gmPair<long>(), gmPair<long>(0, 0));
    const gmPair<double> pair(1.5, -2.5);
    EXPECT_EQ(pair.x(), 1.5);
    EXPECT_EQ(pair.y(), -2.5);
}

TEST(Pair, ComparesBothNumbers) {
    EXPECT_TRUE(gmPair<long>(1, 2) == gmPair<long>(1, 2));
    EXPECT_TRUE(gmPair<long>(1, 2) != gmPair<long>(2, 2));
    EXPECT_TRUE(gmPair<long>(1, 2) != gmPair<long>(1, 1));
}

}  // namespace
