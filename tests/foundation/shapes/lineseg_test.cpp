#include "foundation/shapes/lineseg.h"

#include "foundation/shapes/rect.h"
#include "tests/foundation/support.h"

namespace {

using Vector = gmVector<2>;

/// The distance from v to a box, by the subtractions that the box's corners invite.
double distToBox(const Vector& lower, const Vector& upper, const Vector& v) {
    const double dx = std::max({lower.x() - v.x(), 0.0, v.x() - upper.x()});
    const double dy = std::max({lower.y() - v.y(), 0.0, v.y() - upper.y()});
    return Vector(dx, dy).len();
}

void expectNotBelowItsBox(const Vector& p1, const Vector& p2, const Vector& v) {
    const Vector lower(std::min(p1.x(), p2.x()), std::min(p1.y(), p2.y()));
    const Vector upper(std::max(p1.x(), p2.x()), std::max(p1.y(), p2.y()));
    ASSERT_GE(gmLineSeg(p1, p2).distToPoint(v), distToBox(lower, upper, v))
        << testing::PrintToString(p1) << testing::PrintToString(p2) << testing::PrintToString(v);
}

TEST(LineSeg, DefaultIsTheOrigin) {
    EXPECT_TRUE(gmLineSeg() == gmLineSeg({0.0, 0.0}, {0.0, 0.0}));
}

TEST(LineSeg, HoldsItsEnds) {
    const gmLineSeg segment({1.0, 2.0}, {3.0, 4.0});
    EXPECT_EQ(segment.p1(), Vector(1.0, 2.0));
    EXPECT_EQ(segment.p2(), Vector(3.0, 4.0));
    EXPECT_FALSE(segment == gmLineSeg({3.0, 4.0}, {1.0, 2.0})) << "it has a sense";
}

TEST(LineSeg, LineRunsThroughBothEnds) {
    EXPECT_TRUE(gmLineSeg({1.0, 2.0}, {4.0, 6.0}).line() == gmLine({1.0, 2.0}, {3.0, 4.0}));
    EXPECT_EQ(gmLineSeg({1.0, 2.0}, {1.0, 2.0}).line().direction(), Vector());
}

TEST(LineSegDistance, IsPerpendicularBesideTheSegment) {
    const gmLineSeg segment({0.0, 0.0}, {10.0, 0.0});
    EXPECT_EQ(segment.distToPoint({4.0, 3.0}), 3.0);
    EXPECT_EQ(segment.distToPoint({4.0, -3.0}), 3.0);
    EXPECT_EQ(segment.distToPoint({4.0, 0.0}), 0.0);
}

TEST(LineSegDistance, IsThatOfAnEndBeyondIt) {
    const gmLineSeg segment({0.0, 0.0}, {10.0, 0.0});
    EXPECT_EQ(segment.distToPoint({-3.0, 4.0}), 5.0);
    EXPECT_EQ(segment.distToPoint({13.0, -4.0}), 5.0);
    EXPECT_EQ(segment.distToPoint({10.0, 0.0}), 0.0);
    EXPECT_EQ(segment.distToPoint({0.0, 0.0}), 0.0);
}

TEST(LineSegDistance, OfASegmentOfOnePointIsThatOfThePoint) {
    EXPECT_EQ(gmLineSeg({1.0, 1.0}, {1.0, 1.0}).distToPoint({4.0, 5.0}), 5.0);
    EXPECT_EQ(gmLineSeg({1.0, 1.0}, {1.0, 1.0 + 1e-16}).distToPoint({4.0, 5.0}), 5.0);
    EXPECT_EQ(gmLineSeg({0.0, 0.0}, {1e-200, 0.0}).distToPoint({3.0, 4.0}), 5.0);
}

TEST(LineSegDistance, IsTheLeastOverTheWholeSegment) {
    support::Random random(31);
    for (int i = 0; i < 2000; ++i) {
        const gmLineSeg segment(random.vector(5.0), random.vector(5.0));
        const Vector v = random.vector(8.0);
        double least = support::infinity;
        for (int k = 0; k <= 2000; ++k)
            least = std::min(least, v.distance(segment.p1() + (segment.p2() - segment.p1()) * (k / 2000.0)));
        ASSERT_LE(segment.distToPoint(v), least + 1e-14);
        ASSERT_NEAR(segment.distToPoint(v), least, 5e-3);
    }
}

TEST(LineSegDistance, FallsNeverBelowThatOfItsBox) {
    support::Random random(32);
    for (int i = 0; i < 50000; ++i) {
        const double far = random.integer(0, 1) == 0 ? 0.0 : 1e7;
        const Vector corner(far, far * 3.0);
        const Vector p1 = corner + random.vector(3.0);
        const Vector p2 = p1 + random.vector(std::ldexp(1.0, random.integer(-40, 4)));
        ASSERT_NO_FATAL_FAILURE(expectNotBelowItsBox(p1, p2, corner + random.vector(4.0)));
        // Points that lie on the segment, but for rounding.
        ASSERT_NO_FATAL_FAILURE(expectNotBelowItsBox(p1, p2, p1 + (p2 - p1) * random.uniform(-0.1, 1.1)));
    }
}

TEST(LineSegDistance, FallsNeverBelowThatOfItsBoxOnAGrid) {
    support::Random random(33);
    for (int i = 0; i < 50000; ++i) {
        const double unit = random.integer(0, 1) == 0 ? 1.0 : 0.1;
        ASSERT_NO_FATAL_FAILURE(expectNotBelowItsBox(random.gridVector(4) * unit, random.gridVector(4) * unit,
                                                     random.gridVector(6) * unit));
    }
}

TEST(LineSegDistance, FallsNeverBelowThatOfItsBoxAtTheEndsOfTheRange) {
    const double sizes[] = {5e-324, 1e-310, 1e-200, 1e-160, 1e-8, 1e8, 1e150, 1e153};
    support::Random random(34);
    for (int i = 0; i < 20000; ++i) {
        const auto pick = [&] { return random.vector(1.0) * sizes[random.integer(0, 7)]; };
        const Vector p1 = pick();
        const Vector p2 = pick();
        ASSERT_NO_FATAL_FAILURE(expectNotBelowItsBox(p1, p2, pick()));
    }
}

}  // namespace
