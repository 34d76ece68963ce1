#include "foundation/math/xform.h"

#include "foundation/object/exception.h"
#include "tests/foundation/support.h"

namespace {

using support::infinity;
using support::nan;

gmXform<2> sample() {
    return gmXform<2>(gmMatrix<2>(1.0, 2.0, 3.0, 4.0), gmVector<2>(10.0, 20.0));
}

TEST(Xform, IsTheIdentityByDefault) {
    EXPECT_EQ(gmXform<2>(), gmXform<2>::I);
    EXPECT_EQ(gmXform<2>::I * gmVector<2>(3.0, -5.0), gmVector<2>(3.0, -5.0));
    EXPECT_EQ(gmXform<2>::I.matrix(), gmMatrix<2>(1.0, 0.0, 0.0, 1.0));
    EXPECT_EQ(gmXform<2>::I.translation(), gmVector<2>());
}

TEST(Xform, MapsByTheMatrixThenTheTranslation) {
    EXPECT_EQ(sample() * gmVector<2>(1.0, 1.0), gmVector<2>(13.0, 27.0));
    EXPECT_EQ(sample().matrix(), gmMatrix<2>(1.0, 2.0, 3.0, 4.0));
    EXPECT_EQ(sample().translation(), gmVector<2>(10.0, 20.0));
}

TEST(Xform, StoresTheTranslationBeforeTheMatrix) {
    EXPECT_EQ(sample().values(), (std::array<double, 6>{10.0, 20.0, 1.0, 2.0, 3.0, 4.0}));
}

TEST(Xform, CompositionAppliesTheRightFactorFirst) {
    const gmXform<2> outer = sample();
    const gmXform<2> inner(gmMatrix<2>(0.0, -1.0, 2.0, 0.0), gmVector<2>(-3.0, 7.0));
    for (const gmVector<2>& v : {gmVector<2>(0.0, 0.0), gmVector<2>(5.0, -6.0)})
        EXPECT_EQ((outer * inner) * v, outer * (inner * v));
}

TEST(Xform, EqualityLooksAtEveryNumber) {
    EXPECT_TRUE(sample() == sample());
    EXPECT_TRUE(sample() != gmXform<2>(sample().matrix(), gmVector<2>(10.0, 21.0)));
    EXPECT_TRUE(sample() != gmXform<2>(gmMatrix<2>(1.0, 2.0, 3.0, 5.0), sample().translation()));
}

TEST(XformInverse, UndoesTheMap) {
    support::Random random(5);
    for (int i = 0; i < 1000; ++i) {
        const gmXform<2> map(
            gmMatrix<2>(random.uniform(-2, 2), random.uniform(-2, 2), random.uniform(-2, 2), random.uniform(-2, 2)),
            random.vector(100.0));
        const gmMatrix<2> m = map.matrix();
        if (std::fabs(m(0, 0) * m(1, 1) - m(0, 1) * m(1, 0)) < 0.1)
            continue;
        const gmVector<2> v = random.vector(50.0);
        const gmVector<2> back = map.inverse() * (map * v);
        ASSERT_NEAR(back.x(), v.x(), 1e-10);
        ASSERT_NEAR(back.y(), v.y(), 1e-10);
    }
}

TEST(XformInverse, IsExactForPowersOfTwo) {
    const gmXform<2> map(gmMatrix<2>(4.0, 0.0, 0.0, 0.5), gmVector<2>(8.0, -2.0));
    EXPECT_EQ(map.inverse(), gmXform<2>(gmMatrix<2>(0.25, 0.0, 0.0, 2.0), gmVector<2>(-2.0, 4.0)));
}

TEST(XformInverse, OfASingularMatrixThrows) {
    for (const gmMatrix<2>& m : {gmMatrix<2>(), gmMatrix<2>(1.0, 2.0, 2.0, 4.0), gmMatrix<2>(0.0, 0.0, 0.0, 3.0)})
        EXPECT_THROW(gmXform<2>(m, gmVector<2>(1.0, 1.0)).inverse(), gmMathError::Singular);
}

TEST(XformInverse, OfNumbersThatAreNotFiniteThrows) {
    for (const double bad : {nan, infinity, -infinity}) {
        EXPECT_THROW(gmXform<2>(gmMatrix<2>(bad, 0.0, 0.0, 1.0), {}).inverse(), gmMathError::Singular);
        EXPECT_THROW(gmXform<2>(gmMatrix<2>(1.0, 0.0, bad, 1.0), {}).inverse(), gmMathError::Singular);
        EXPECT_THROW(gmXform<2>(gmMatrix<2>(1.0, 0.0, 0.0, 1.0), {0.0, bad}).inverse(), gmMathError::Singular);
    }
}

TEST(XformInverse, ExistsForVerySmallAndVeryLargeScales) {
    for (const double scale : {1e-300, 1e-160, 1e160, 1e300}) {
        const gmXform<2> inverse = gmXform<2>(gmMatrix<2>(0.0, -scale, scale, 0.0), {}).inverse();
        EXPECT_DOUBLE_EQ(inverse.matrix()(0, 1), 1.0 / scale);
        EXPECT_DOUBLE_EQ(inverse.matrix()(1, 0), -1.0 / scale);
    }
}

TEST(XformInverse, ThatFitsInNoFiniteNumberThrows) {
    EXPECT_THROW(gmXform<2>(gmMatrix<2>(1e-320, 0.0, 0.0, 1.0), {}).inverse(), gmMathError::Singular);
    EXPECT_THROW(gmXform<2>(gmMatrix<2>(1e-200, 0.0, 0.0, 1e-200), {1e200, 0.0}).inverse(), gmMathError::Singular);
}

}  // namespace
