#include "foundation/fit/ellipsefit.h"

#include "foundation/math/matrix.h"
#include "tests/foundation/support.h"

namespace {

using support::pi;
using Vector = gmVector<2>;

gmEllipse ellipseOf(double xRadius, double yRadius, double rotation = 0.0, const Vector& center = Vector()) {
    gmEllipse::gmEllipseGeom geom;
    geom.center = center;
    geom.xRadius = xRadius;
    geom.yRadius = yRadius;
    geom.rotation = gmRadian(rotation);
    return gmEllipse(geom);
}

/// The least distance over the phases of the ellipse: a coarse look, then ever finer ones around the best.
double sampledDistance(double xRadius, double yRadius, const Vector& point) {
    const auto distance = [&](double phase) {
        return std::hypot(point.x() - xRadius * std::cos(phase), point.y() - yRadius * std::sin(phase));
    };
    double best = 0.0;
    double width = pi;
    for (int round = 0; round < 9; ++round) {
        const double middle = best;
        const int steps = round == 0 ? 1500 : 20;
        for (int i = -steps; i <= steps; ++i) {
            const double phase = middle + width * i / steps;
            if (distance(phase) < distance(best))
                best = phase;
        }
        width = width * 2.0 / steps;
    }
    return distance(best);
}

void expectSampled(double xRadius, double yRadius, const Vector& point) {
    const double size = std::max({xRadius, yRadius, point.len()});
    ASSERT_NEAR(gfDistToEllipse(ellipseOf(xRadius, yRadius), point), sampledDistance(xRadius, yRadius, point),
                1e-11 * size)
        << xRadius << ' ' << yRadius << ' ' << testing::PrintToString(point);
}

TEST(DistToEllipse, OfItsOwnPointsIsZero) {
    for (double phase = 0.0; phase < 6.3; phase += 0.05) {
        const Vector point(5.0 * std::cos(phase), 2.0 * std::sin(phase));
        EXPECT_NEAR(gfDistToEllipse(ellipseOf(5.0, 2.0), point), 0.0, 4e-15);
    }
}

TEST(DistToEllipse, OfTheCentreIsTheSmallerRadius) {
    EXPECT_EQ(gfDistToEllipse(ellipseOf(5.0, 2.0), {0.0, 0.0}), 2.0);
    EXPECT_EQ(gfDistToEllipse(ellipseOf(2.0, 5.0), {0.0, 0.0}), 2.0);
    EXPECT_EQ(gfDistToEllipse(ellipseOf(3.0, 3.0), {0.0, 0.0}), 3.0);
}

TEST(DistToEllipse, OnTheAxesOutsideIsToTheVertex) {
    EXPECT_DOUBLE_EQ(gfDistToEllipse(ellipseOf(5.0, 2.0), {9.0, 0.0}), 4.0);
    EXPECT_DOUBLE_EQ(gfDistToEllipse(ellipseOf(5.0, 2.0), {-9.0, 0.0}), 4.0);
    EXPECT_DOUBLE_EQ(gfDistToEllipse(ellipseOf(5.0, 2.0), {0.0, 9.0}), 7.0);
    EXPECT_DOUBLE_EQ(gfDistToEllipse(ellipseOf(5.0, 2.0), {0.0, -1.0}), 1.0);
}

TEST(DistToEllipse, OnTheLongAxisInsideTheEvoluteLeavesTheAxis) {
    // The centre of curvature at the vertex lies at (a^2 - b^2) / a.
    for (const double x : {0.1, 1.0, 3.0, 4.19, 4.21, 4.9})
        ASSERT_NO_FATAL_FAILURE(expectSampled(5.0, 2.0, {x, 0.0}));
}

TEST(DistToEllipse, IsTheLeastOverItsPoints) {
    support::Random random(101);
    for (int i = 0; i < 3000; ++i) {
        const double xRadius = random.uniform(0.1, 5.0);
        const double yRadius = random.uniform(0.1, 5.0);
        ASSERT_NO_FATAL_FAILURE(expectSampled(xRadius, yRadius, random.vector(6.0)));
    }
}

TEST(DistToEllipse, IsTheLeastNearTheAxes) {
    for (double tiny = 1e-3; tiny > 0.0; tiny *= 1e-3)
        for (const double along : {0.0, 0.5, 1.5, 1.9, 2.0, 3.0}) {
            ASSERT_NO_FATAL_FAILURE(expectSampled(2.0, 1.0, {along, tiny}));
            ASSERT_NO_FATAL_FAILURE(expectSampled(2.0, 1.0, {tiny, along}));
            ASSERT_NO_FATAL_FAILURE(expectSampled(1.0, 2.0, {along, -tiny}));
            ASSERT_NO_FATAL_FAILURE(expectSampled(2.0, 2.0 - 1e-12, {along, tiny}));
            ASSERT_NO_FATAL_FAILURE(expectSampled(2.0, 2.0, {along, tiny}));
        }
}

TEST(DistToEllipse, IsTheLeastNearTheEvolute) {
    for (double phase = 0.0; phase < 1.6; phase += 0.02)
        for (const double off : {-1e-3, -1e-9, 0.0, 1e-9, 1e-3}) {
            const double cosine = std::cos(phase);
            const double sine = std::sin(phase);
            const Vector onEvolute(21.0 / 5.0 * cosine * cosine * cosine, 21.0 / 2.0 * sine * sine * sine);
            ASSERT_NO_FATAL_FAILURE(expectSampled(5.0, 2.0, onEvolute + Vector(off, off)));
        }
}

TEST(DistToEllipse, IsTheLeastForFlatEllipses) {
    support::Random random(102);
    for (double flat = 0.1; flat > 1e-12; flat *= 0.1)
        for (int i = 0; i < 50; ++i) {
            const Vector point = random.vector(1.5);
            ASSERT_NO_FATAL_FAILURE(expectSampled(1.0, flat, point));
            ASSERT_NO_FATAL_FAILURE(expectSampled(1.0, flat, {point.x(), point.y() * flat}));
        }
}

TEST(DistToEllipse, OfAFlatOneIsThatOfASegment) {
    EXPECT_DOUBLE_EQ(gfDistToEllipse(ellipseOf(5.0, 0.0), {3.0, 4.0}), 4.0);
    EXPECT_DOUBLE_EQ(gfDistToEllipse(ellipseOf(5.0, 0.0), {8.0, 4.0}), 5.0);
    EXPECT_DOUBLE_EQ(gfDistToEllipse(ellipseOf(0.0, 5.0), {4.0, 3.0}), 4.0);
    EXPECT_EQ(gfDistToEllipse(ellipseOf(5.0, 0.0), {3.0, 0.0}), 0.0);
}

TEST(DistToEllipse, OfOneWithoutRadiiIsThatOfItsCentre) {
    EXPECT_DOUBLE_EQ(gfDistToEllipse(ellipseOf(0.0, 0.0, 1.0, {1.0, 1.0}), {4.0, 5.0}), 5.0);
    EXPECT_EQ(gfDistToEllipse(gmEllipse(), {0.0, 0.0}), 0.0);
}

TEST(DistToEllipse, OfACircleIsThatToItsRadius) {
    support::Random random(103);
    const gmEllipse circle(gmCircle({1.0, 2.0}, 3.0));
    for (int i = 0; i < 1000; ++i) {
        const Vector point = random.vector(9.0);
        ASSERT_NEAR(gfDistToEllipse(circle, point), std::fabs(point.distance({1.0, 2.0}) - 3.0), 1e-14);
    }
}

TEST(DistToEllipse, FollowsTheFrameOfTheEllipse) {
    support::Random random(104);
    for (int i = 0; i < 1000; ++i) {
        const gmRadian turn(random.uniform(-4.0, 4.0));
        const Vector center = random.vector(100.0);
        const Vector point = random.vector(6.0);
        const Vector moved = center + gmMatrix<2>(turn, turn, 1.0, 1.0) * point;
        ASSERT_NEAR(gfDistToEllipse(ellipseOf(4.0, 2.0, turn.value(), center), moved),
                    gfDistToEllipse(ellipseOf(4.0, 2.0), point), 1e-12);
    }
}

TEST(DistToEllipse, WorksAtEveryScale) {
    support::Random random(105);
    for (const double scale : {1e-150, 1e-100, 1e-10, 1e10, 1e100, 1e150})
        for (int i = 0; i < 200; ++i) {
            const Vector point = random.vector(6.0);
            ASSERT_NEAR(gfDistToEllipse(ellipseOf(4.0 * scale, 2.0 * scale), point * scale) / scale,
                        gfDistToEllipse(ellipseOf(4.0, 2.0), point), 1e-12)
                << scale << testing::PrintToString(point);
        }
}

TEST(DistToEllipse, FarAwayIsFarAway) {
    EXPECT_NEAR(gfDistToEllipse(ellipseOf(4.0, 2.0), {1e9, 1e9}), std::sqrt(2.0) * 1e9, 5.0);
    EXPECT_NEAR(gfDistToEllipse(ellipseOf(1e-9, 1e-12), {3.0, 4.0}), 5.0, 1e-8);
    EXPECT_FALSE(std::isfinite(gfDistToEllipse(ellipseOf(4.0, 2.0), {support::infinity, 1.0})));
}

TEST(DistToEllipse, OfNotANumberIsNotANumber) {
    EXPECT_TRUE(std::isnan(gfDistToEllipse(ellipseOf(4.0, 2.0), {support::nan, 1.0})));
    EXPECT_TRUE(std::isnan(gfDistToEllipse(ellipseOf(4.0, 2.0), {1.0, support::nan})));
    EXPECT_TRUE(std::isnan(gfDistToEllipse(ellipseOf(4.0, 2.0, support::nan), {1.0, 1.0})));
}

}  // namespace
