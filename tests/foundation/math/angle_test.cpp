#include "foundation/math/angle.h"

#include <type_traits>

#include "tests/foundation/support.h"

namespace {

using support::infinity;
using support::pi;

TEST(Radian, IsZeroByDefaultAndHoldsAnyAngle) {
    EXPECT_EQ(gmRadian().value(), 0.0);
    EXPECT_EQ(gmRadian(100.0).value(), 100.0);
    EXPECT_EQ(gmRadian(-7.0).value(), -7.0);
}

TEST(Radian, ConvertsImplicitlyToAndFromDegrees) {
    const gmRadian straight = gmDegree(180.0);
    EXPECT_DOUBLE_EQ(straight.value(), pi);
    const gmDegree back = straight;
    EXPECT_DOUBLE_EQ(back.value(), 180.0);
    EXPECT_TRUE((std::is_convertible_v<gmRadian, gmDegree>));
    EXPECT_TRUE((std::is_convertible_v<gmDegree, gmRadian>));
}

TEST(Radian, IsNeverMadeOfABareNumberByAccident) {
    EXPECT_FALSE((std::is_convertible_v<double, gmRadian>));
    EXPECT_FALSE((std::is_convertible_v<double, gmDegree>));
    EXPECT_FALSE((std::is_convertible_v<unsigned char, gmAngle8>));
}

TEST(Radian, NormBringsAnAngleIntoOneTurn) {
    EXPECT_EQ(gmRadian(1.0).norm().value(), 1.0);
    EXPECT_NEAR(gmRadian(-1.0).norm().value(), 2.0 * pi - 1.0, 1e-15);
    EXPECT_NEAR(gmRadian(7.0).norm().value(), 7.0 - 2.0 * pi, 1e-15);
    EXPECT_NEAR(gmRadian(-20.0).norm().value(), 8.0 * pi - 20.0, 1e-14);
}

TEST(Radian, NormStaysBelowAWholeTurn) {
    const double turn = 2.0 * pi;
    EXPECT_EQ(gmRadian(turn).norm().value(), 0.0);
    EXPECT_EQ(gmRadian(-turn).norm().value(), 0.0);
    EXPECT_EQ(gmRadian(-1e-300).norm().value(), 0.0) << "rounds up to a whole turn";
    support::Random random(3);
    for (int i = 0; i < 10000; ++i) {
        const double angle = random.uniform(-1e4, 1e4);
        const double normed = gmRadian(angle).norm().value();
        ASSERT_GE(normed, 0.0) << angle;
        ASSERT_LT(normed, turn) << angle;
        ASSERT_NEAR(std::cos(normed), std::cos(angle), 1e-11) << angle;
        ASSERT_NEAR(std::sin(normed), std::sin(angle), 1e-11) << angle;
    }
}

TEST(Radian, NormNeverYieldsNegativeZero) {
    EXPECT_FALSE(std::signbit(gmRadian(-0.0).norm().value()));
    EXPECT_FALSE(std::signbit(gmRadian(-2.0 * pi).norm().value()));
}

TEST(Radian, NormOfWhatIsNotFiniteIsNotANumber) {
    EXPECT_TRUE(std::isnan(gmRadian(infinity).norm().value()));
    EXPECT_TRUE(std::isnan(gmRadian(-infinity).norm().value()));
    EXPECT_TRUE(std::isnan(gmRadian(support::nan).norm().value()));
}

TEST(Radian, AddsSubtractsNegatesAndCompares) {
    EXPECT_EQ((gmRadian(1.0) + gmRadian(2.5)).value(), 3.5);
    EXPECT_EQ((gmRadian(1.0) - gmRadian(2.5)).value(), -1.5);
    EXPECT_EQ((-gmRadian(1.0)).value(), -1.0);
    EXPECT_TRUE(gmRadian(1.0) == gmRadian(1.0));
    EXPECT_TRUE(gmRadian(1.0) != gmRadian(1.5));
    EXPECT_TRUE(gmRadian(1.0) < gmRadian(1.5));
    EXPECT_FALSE(gmRadian(1.5) < gmRadian(1.5));
}

TEST(Degree, IsZeroByDefaultAndCompares) {
    EXPECT_EQ(gmDegree().value(), 0.0);
    EXPECT_TRUE(gmDegree(90.0) == gmDegree(90.0));
    EXPECT_TRUE(gmDegree(90.0) != gmDegree(91.0));
}

TEST(Angle8, HoldsEightBits) {
    EXPECT_EQ(gmAngle8().value(), 0);
    EXPECT_EQ(gmAngle8(255).value(), 255);
    EXPECT_TRUE(gmAngle8(128) == gmAngle8(128));
    EXPECT_TRUE(gmAngle8(128) != gmAngle8(127));
}

}  // namespace
