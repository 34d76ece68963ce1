#include "foundation/shapes/line.h"

#include "foundation/shapes/point.h"
#include "tests/foundation/support.h"

namespace {

using support::infinity;
using support::nan;
using Vector = gmVector<2>;

TEST(Point, HasNoPositionByDefault) {
    const gmPoint point;
    EXPECT_FALSE(point.exists());
    EXPECT_EQ(point.position(), Vector());
    EXPECT_EQ(point.distToPoint({0.0, 0.0}), infinity);
}

TEST(Point, MeasuresFromItsPosition) {
    const gmPoint point({1.0, 1.0});
    EXPECT_TRUE(point.exists());
    EXPECT_EQ(point.position(), Vector(1.0, 1.0));
    EXPECT_EQ(point.distToPoint({4.0, 5.0}), 5.0);
}

TEST(Point, AtTheOriginIsNotAnAbsentOne) {
    EXPECT_FALSE(gmPoint() == gmPoint({0.0, 0.0}));
    EXPECT_TRUE(gmPoint() == gmPoint());
    EXPECT_FALSE(gmPoint({1.0, 0.0}) == gmPoint({0.0, 1.0}));
}

TEST(Point, CopiesMovesAndAssigns) {
    gmPoint point({2.0, 3.0});
    const gmPoint copy(point);
    EXPECT_TRUE(copy == point);
    gmPoint assigned;
    assigned = point;
    EXPECT_TRUE(assigned == copy);
    const gmPoint moved(std::move(point));
    EXPECT_TRUE(moved == copy);
    assigned = gmPoint();
    EXPECT_FALSE(assigned.exists());
}

TEST(Line, DefaultIsTheOriginWithoutDirection) {
    const gmLine line;
    EXPECT_EQ(line.through(), Vector());
    EXPECT_EQ(line.direction(), Vector());
}

TEST(LineProj, IsTheFootOfThePerpendicular) {
    const gmLine line({1.0, 1.0}, {2.0, 0.0});
    EXPECT_TRUE(line.proj({7.0, 9.0}) == gmPoint({7.0, 1.0}));
    EXPECT_TRUE(line.proj({-7.0, -9.0}) == gmPoint({-7.0, 1.0}));
    EXPECT_TRUE(gmLine({0.0, 0.0}, {1.0, 1.0}).proj({4.0, 0.0}) == gmPoint({2.0, 2.0}));
}

TEST(LineProj, OfAnyPointLiesOnTheLineAndSquareToIt) {
    support::Random random(21);
    for (int i = 0; i < 5000; ++i) {
        const gmLine line(random.vector(10.0), random.vector(3.0));
        if (line.direction().len() < 0.01)
            continue;
        const Vector v = random.vector(20.0);
        const Vector foot = line.proj(v).position();
        const Vector unit = line.direction().unit();
        ASSERT_NEAR((foot - line.through()).cross(unit), 0.0, 1e-12);
        ASSERT_NEAR((v - foot).dot(unit), 0.0, 1e-10);
        ASSERT_NEAR(line.distToPoint(v), std::fabs((v - line.through()).cross(unit)), 1e-12);
        ASSERT_NEAR(line.distToPoint(v), foot.distance(v), 1e-12);
    }
}

TEST(LineDistance, CountsPerpendicularToTheInfiniteLine) {
    const gmLine line({1.0, 1.0}, {0.0, -5.0});
    EXPECT_EQ(line.distToPoint({4.0, 1000.0}), 3.0);
    EXPECT_EQ(line.distToPoint({1.0, -77.0}), 0.0);
}

TEST(LineDistance, StaysFineFarFromTheOrigin) {
    const gmLine line({1e9, 1e9}, {1.0, 0.0});
    EXPECT_EQ(line.distToPoint({1e9 + 5.0, 1e9 + 0.125}), 0.125);
}

TEST(LineWithoutDirection, StandsForItsPoint) {
    const gmLine line({3.0, 4.0}, {0.0, 0.0});
    EXPECT_TRUE(line.proj({9.0, 9.0}) == gmPoint({3.0, 4.0}));
    EXPECT_EQ(line.distToPoint({0.0, 0.0}), 5.0);
}

TEST(LineWithoutDirection, IsParallelToEveryLine) {
    const gmLine other({0.0, 0.0}, {1.0, 2.0});
    // A direction whose square is no positive number is none.
    for (const Vector& none : {Vector(0.0, 0.0), Vector(1e-200, 0.0), Vector(nan, 0.0), Vector(1.0, nan)}) {
        const gmLine line({3.0, 4.0}, none);
        EXPECT_TRUE(line.isParallel(other)) << none.x() << ' ' << none.y();
        EXPECT_TRUE(other.isParallel(line)) << none.x() << ' ' << none.y();
        EXPECT_TRUE(line.isParallel(line));
        EXPECT_FALSE(line.intersect(other).exists());
        EXPECT_FALSE(other.intersect(line).exists());
        EXPECT_TRUE(line.proj({9.0, 9.0}) == gmPoint({3.0, 4.0}));
    }
}

TEST(LineWithoutDirection, IsALineWhoseLengthSquaredIsNotFinite) {
    const gmLine across({0.0, 0.0}, {1e200, 0.0});
    EXPECT_TRUE(across.isParallel(gmLine({0.0, 0.0}, {0.0, 1.0})));
    const gmLine steep({1.0, 2.0}, {1e160, 2e160});
    EXPECT_TRUE(steep.isParallel(gmLine({0.0, 0.0}, {3e160, 1e160})));
    EXPECT_FALSE(steep.intersect(gmLine({0.0, 0.0}, {3e160, 1e160})).exists());
    EXPECT_EQ(steep.proj({5.0, 5.0}).position(), gmVector<2>(1.0, 2.0));
}

TEST(LineParallel, DoesNotDependOnSenseLengthOrPlace) {
    const gmLine line({0.0, 0.0}, {1.0, 2.0});
    EXPECT_TRUE(line.isParallel(gmLine({5.0, 5.0}, {1.0, 2.0})));
    EXPECT_TRUE(line.isParallel(gmLine({5.0, 5.0}, {-300.0, -600.0})));
    EXPECT_TRUE(line.isParallel(gmLine({5.0, 5.0}, {1e-9, 2e-9})));
    EXPECT_FALSE(line.isParallel(gmLine({0.0, 0.0}, {2.0, 1.0})));
    EXPECT_FALSE(line.isParallel(gmLine({0.0, 0.0}, {-2.0, 1.0})));
}

TEST(LineParallel, ReachesToASineOfOnePartInTenToTheTwelve) {
    for (const double length : {1e-6, 1.0, 1e6}) {
        const gmLine line({0.0, 0.0}, {3.0, 0.0});
        for (const double side : {-1.0, 1.0}) {
            EXPECT_TRUE(line.isParallel(gmLine({0.0, 1.0}, {length, side * 0.99e-12 * length}))) << length;
            EXPECT_TRUE(line.isParallel(gmLine({0.0, 1.0}, {-length, side * 0.99e-12 * length}))) << length;
            EXPECT_FALSE(line.isParallel(gmLine({0.0, 1.0}, {length, side * 1.01e-12 * length}))) << length;
            EXPECT_FALSE(line.isParallel(gmLine({0.0, 1.0}, {-length, side * 1.01e-12 * length}))) << length;
        }
    }
}

TEST(LineIntersect, IsTheCommonPoint) {
    const gmLine a({0.0, 1.0}, {2.0, 0.0});
    const gmLine b({5.0, 9.0}, {0.0, -4.0});
    EXPECT_TRUE(a.intersect(b) == gmPoint({5.0, 1.0}));
    EXPECT_TRUE(b.intersect(a) == gmPoint({5.0, 1.0}));
}

TEST(LineIntersect, LiesOnBothLines) {
    support::Random random(22);
    for (int i = 0; i < 5000; ++i) {
        const gmLine a(random.vector(10.0), random.vector(3.0));
        const gmLine b(random.vector(10.0), random.vector(3.0));
        const double sine = a.direction().unit().cross(b.direction().unit());
        if (!(std::fabs(sine) > 1e-3))
            continue;
        const gmPoint point = a.intersect(b);
        ASSERT_TRUE(point.exists());
        ASSERT_NEAR(a.distToPoint(point.position()), 0.0, 1e-8);
        ASSERT_NEAR(b.distToPoint(point.position()), 0.0, 1e-8);
    }
}

TEST(LineIntersect, IsAbsentWhenParallel) {
    const gmLine line({0.0, 0.0}, {1.0, 2.0});
    EXPECT_FALSE(line.intersect(gmLine({1.0, 0.0}, {2.0, 4.0})).exists());
    EXPECT_FALSE(line.intersect(line).exists()) << "also when they are the same";
    EXPECT_EQ(line.intersect(line).distToPoint({0.0, 0.0}), infinity);
}

}  // namespace
