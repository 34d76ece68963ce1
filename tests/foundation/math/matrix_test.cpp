#include "foundation/math/matrix.h"

#include "tests/foundation/support.h"

namespace {

using support::pi;

TEST(Matrix, IsZeroByDefault) {
    EXPECT_EQ(gmMatrix<2>(), gmMatrix<2>(0.0, 0.0, 0.0, 0.0));
}

TEST(Matrix, TakesItsElementsRowByRow) {
    const gmMatrix<2> m(1.0, 2.0, 3.0, 4.0);
    EXPECT_EQ(m(0, 0), 1.0);
    EXPECT_EQ(m(0, 1), 2.0);
    EXPECT_EQ(m(1, 0), 3.0);
    EXPECT_EQ(m(1, 1), 4.0);
}

TEST(Matrix, ColumnsAreTheTurnedAndScaledAxes) {
    const gmMatrix<2> m(gmRadian(pi / 6.0), gmRadian(pi / 3.0), 2.0, 4.0);
    const gmVector<2> x = m * gmVector<2>(1.0, 0.0);
    const gmVector<2> y = m * gmVector<2>(0.0, 1.0);
    EXPECT_NEAR(x.x(), 2.0 * std::cos(pi / 6.0), 1e-15);
    EXPECT_NEAR(x.y(), 2.0 * std::sin(pi / 6.0), 1e-15);
    EXPECT_NEAR(y.x(), 4.0 * -std::sin(pi / 3.0), 1e-15);
    EXPECT_NEAR(y.y(), 4.0 * std::cos(pi / 3.0), 1e-15);
}

TEST(Matrix, EqualRotationsAndUnitScalesTurnThePlane) {
    const gmMatrix<2> quarter(gmRadian(pi / 2.0), gmRadian(pi / 2.0), 1.0, 1.0);
    const gmVector<2> turned = quarter * gmVector<2>(1.0, 0.0);
    EXPECT_NEAR(turned.x(), 0.0, 1e-15);
    EXPECT_NEAR(turned.y(), 1.0, 1e-15);
    EXPECT_NEAR((quarter * gmVector<2>(0.0, 1.0)).x(), -1.0, 1e-15);
}

TEST(Matrix, TimesAVectorIsRowsTimesTheVector) {
    EXPECT_EQ(gmMatrix<2>(1.0, 2.0, 3.0, 4.0) * gmVector<2>(10.0, 100.0), gmVector<2>(210.0, 430.0));
}

TEST(Matrix, ProductAppliesTheRightFactorFirst) {
    const gmMatrix<2> a(1.0, 2.0, 3.0, 4.0);
    const gmMatrix<2> b(0.0, 1.0, -1.0, 5.0);
    EXPECT_EQ(a * b, gmMatrix<2>(-2.0, 11.0, -4.0, 23.0));
    const gmVector<2> v(7.0, -3.0);
    EXPECT_EQ((a * b) * v, a * (b * v));
}

TEST(Matrix, EqualityLooksAtEveryElement) {
    const gmMatrix<2> m(1.0, 2.0, 3.0, 4.0);
    EXPECT_TRUE(m == gmMatrix<2>(1.0, 2.0, 3.0, 4.0));
    EXPECT_TRUE(m != gmMatrix<2>(0.0, 2.0, 3.0, 4.0));
    EXPECT_TRUE(m != gmMatrix<2>(1.0, 0.0, 3.0, 4.0));
    EXPECT_TRUE(m != gmMatrix<2>(1.0, 2.0, 0.0, 4.0));
    EXPECT_TRUE(m != gmMatrix<2>(1.0, 2.0, 3.0, 0.0));
}

}  // namespace
