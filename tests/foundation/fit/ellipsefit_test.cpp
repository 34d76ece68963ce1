#include "foundation/fit/ellipsefit.h"

#include "foundation/math/matrix.h"
#include "foundation/object/exception.h"
#include "tests/foundation/support.h"

namespace {

using support::infinity;
using support::nan;
using support::pi;
using Vector = gmVector<2>;
using Points = std::vector<Vector>;

gmEllipse ellipseOf(const Vector& center, double xRadius, double yRadius, double rotation) {
    gmEllipse::gmEllipseGeom geom;
    geom.center = center;
    geom.xRadius = xRadius;
    geom.yRadius = yRadius;
    geom.rotation = gmRadian(rotation);
    return gmEllipse(geom);
}

Vector pointOn(const gmEllipse& ellipse, double phase) {
    const Vector flat(ellipse.xRadius() * std::cos(phase), ellipse.yRadius() * std::sin(phase));
    return ellipse.center() + gmMatrix<2>(ellipse.rotation(), ellipse.rotation(), 1.0, 1.0) * flat;
}

Points pointsOn(const gmEllipse& ellipse, int count, double arc = 2.0 * pi) {
    Points points;
    for (int i = 0; i < count; ++i)
        points.push_back(pointOn(ellipse, 0.2 + arc * i / count));
    return points;
}

gmEllipseFitResults fitted(const Points& points, const gmEllipseFitParams& params = gmEllipseFitParams()) {
    gmEllipseFitResults results;
    gfEllipseFit(params, points, results);
    return results;
}

void expectNear(const gmEllipse& actual, const gmEllipse& expected, double tolerance) {
    EXPECT_NEAR(actual.center().x(), expected.center().x(), tolerance);
    EXPECT_NEAR(actual.center().y(), expected.center().y(), tolerance);
    EXPECT_NEAR(actual.xRadius(), expected.xRadius(), tolerance);
    EXPECT_NEAR(actual.yRadius(), expected.yRadius(), tolerance);
    EXPECT_NEAR(std::remainder(actual.rotation().value() - expected.rotation().value(), pi), 0.0, tolerance);
}

TEST(EllipseFitParams, DefaultToPlainLeastSquares) {
    const gmEllipseFitParams params;
    EXPECT_EQ(params.mode(), gmEllipseFitDefs::eLeastSquares);
    EXPECT_EQ(params.circleRotation(), gmRadian(0.0));
    EXPECT_EQ(params.outlierRounds(), 0UL);
    EXPECT_EQ(params.outlierDistance(), infinity);
    const gmEllipseFitParams given(static_cast<gmEllipseFitDefs::fit_mode>(0), gmRadian(1.0), 3, 4.0);
    EXPECT_EQ(given.circleRotation(), gmRadian(1.0));
    EXPECT_EQ(given.outlierRounds(), 3UL);
    EXPECT_EQ(given.outlierDistance(), 4.0);
}

TEST(EllipseFitResults, AreTheDefaultEllipseAtFirst) {
    const gmEllipseFitResults results;
    EXPECT_TRUE(results.ellipse() == gmEllipse());
    EXPECT_EQ(results.residual(), 0.0);
}

TEST(EllipseFit, RecoversAnEllipseThroughFivePoints) {
    const gmEllipse ellipse = ellipseOf({1.0, 2.0}, 5.0, 3.0, 0.7);
    const gmEllipseFitResults results = fitted(pointsOn(ellipse, 5));
    expectNear(results.ellipse(), ellipse, 1e-12);
    EXPECT_NEAR(results.residual(), 0.0, 1e-13);
}

TEST(EllipseFit, RecoversEllipsesOfEveryRotation) {
    for (double rotation = -1.57; rotation <= 1.57; rotation += 0.1) {
        const gmEllipse ellipse = ellipseOf({-4.0, 2.0}, 6.0, 2.0, rotation);
        expectNear(fitted(pointsOn(ellipse, 23)).ellipse(), ellipse, 1e-12);
    }
}

TEST(EllipseFit, PutsTheLargerRadiusAlongX) {
    const gmEllipse upright = fitted(pointsOn(ellipseOf({0.0, 0.0}, 2.0, 5.0, 0.0), 12)).ellipse();
    EXPECT_NEAR(upright.xRadius(), 5.0, 1e-12);
    EXPECT_NEAR(upright.yRadius(), 2.0, 1e-12);
    EXPECT_NEAR(std::fabs(upright.rotation().value()), pi / 2.0, 1e-12);
}

TEST(EllipseFit, KeepsTheRotationInHalfATurn) {
    support::Random random(91);
    for (int i = 0; i < 2000; ++i) {
        const gmEllipse ellipse = ellipseOf(random.vector(3.0), 3.0, 1.0, random.integer(-8, 8) * pi / 8.0);
        const double rotation = fitted(pointsOn(ellipse, random.integer(5, 30))).ellipse().rotation().value();
        ASSERT_GT(rotation, -pi / 2.0);
        ASSERT_LE(rotation, pi / 2.0);
    }
}

TEST(EllipseFit, RecoversEllipsesOfAnyScale) {
    for (const double scale : {1e-140, 1e-12, 1e12, 1e140}) {
        const gmEllipse ellipse = ellipseOf(Vector(3.0, -2.0) * scale, 5.0 * scale, 2.0 * scale, -0.4);
        const gmEllipse found = fitted(pointsOn(ellipse, 31)).ellipse();
        expectNear(ellipseOf(found.center() / scale, found.xRadius() / scale, found.yRadius() / scale,
                             found.rotation().value()),
                   ellipseOf({3.0, -2.0}, 5.0, 2.0, -0.4), 1e-12);
    }
}

TEST(EllipseFit, RecoversEllipsesFarFromTheOrigin) {
    // The points themselves are rounded to 6e-8.
    for (const int count : {6, 100, 20000}) {
        const gmEllipse ellipse = ellipseOf({1e8, -3e8}, 10.0, 4.0, 0.5);
        expectNear(fitted(pointsOn(ellipse, count)).ellipse(), ellipse, 2e-7);
    }
}

TEST(EllipseFit, RecoversFlatEllipses) {
    for (const double flat : {1e-1, 1e-2, 1e-3}) {
        const gmEllipse ellipse = ellipseOf({1.0, 1.0}, 1.0, flat, 1.1);
        const gmEllipse found = fitted(pointsOn(ellipse, 50)).ellipse();
        EXPECT_NEAR(found.xRadius(), 1.0, 1e-6) << flat;
        EXPECT_NEAR(found.yRadius() / flat, 1.0, 1e-6) << flat;
    }
}

TEST(EllipseFit, RecoversAnEllipseFromPartOfIt) {
    const gmEllipse ellipse = ellipseOf({1.0, 2.0}, 5.0, 3.0, 0.7);
    expectNear(fitted(pointsOn(ellipse, 60, 2.0)).ellipse(), ellipse, 1e-8);
}

TEST(EllipseFit, GivesACircleTheRotationAskedFor) {
    Points circle;
    for (const Vector& corner : {Vector(3.0, 4.0), Vector(4.0, 3.0), Vector(5.0, 0.0), Vector(0.0, 5.0)})
        for (const double sx : {-1.0, 1.0})
            for (const double sy : {-1.0, 1.0})
                circle.emplace_back(sx * corner.x(), sy * corner.y());
    const gmEllipseFitParams params(gmEllipseFitDefs::eLeastSquares, gmRadian(0.625), 0, infinity);
    const gmEllipse found = fitted(circle, params).ellipse();
    EXPECT_EQ(found.rotation().value(), 0.625);
    EXPECT_NEAR(found.xRadius(), 5.0, 1e-13);
    EXPECT_NEAR(found.yRadius(), 5.0, 1e-13);
}

TEST(EllipseFit, IsAnEllipseWhateverTheNoise) {
    support::Random random(92);
    for (int i = 0; i < 2000; ++i) {
        Points points;
        for (int n = random.integer(6, 20); n > 0; --n)
            points.push_back(random.vector(1.0));
        const gmEllipseFitResults results = fitted(points);
        ASSERT_GT(results.ellipse().yRadius(), 0.0);
        ASSERT_GE(results.ellipse().xRadius(), results.ellipse().yRadius());
        ASSERT_TRUE(std::isfinite(results.residual()));
    }
}

TEST(EllipseFit, FollowsTheScaleRotationAndPlaceOfItsPoints) {
    support::Random random(93);
    for (int i = 0; i < 200; ++i) {
        Points points = pointsOn(ellipseOf({0.0, 0.0}, 4.0, 2.5, 0.3), 30);
        for (Vector& point : points)
            point = point + random.vector(0.2);
        const double turn = random.uniform(-1.5, 1.5);
        const Vector shift = random.vector(100.0);
        Points moved;
        for (const Vector& point : points)
            moved.push_back(gmMatrix<2>(gmRadian(turn), gmRadian(turn), 2.0, 2.0) * point + shift);
        const gmEllipseFitResults plain = fitted(points);
        const gmEllipseFitResults after = fitted(moved);
        const gmEllipse& found = plain.ellipse();
        const Vector center = gmMatrix<2>(gmRadian(turn), gmRadian(turn), 2.0, 2.0) * found.center() + shift;
        expectNear(after.ellipse(),
                   ellipseOf(center, 2.0 * found.xRadius(), 2.0 * found.yRadius(), found.rotation().value() + turn),
                   1e-9);
        ASSERT_NEAR(after.residual(), 2.0 * plain.residual(), 1e-9);
    }
}

TEST(EllipseFit, OfPointsThatDetermineNoneThrows) {
    const Vector a(0.0, 0.0);
    const Vector b(3.0, 1.0);
    const Vector c(2.0, 4.0);
    const Vector d(-1.0, 2.0);
    const Points degenerate[] = {
        {},
        {a, b, c, d},
        {a, a, a, a, a},
        {a, b, a, b, a, b},
        {a, b, c, a, b, c, a},
        {a, b, c, d, a, b, c, d},
        {{0.0, 0.0}, {1.0, 2.0}, {2.0, 4.0}, {3.0, 6.0}, {4.0, 8.0}, {5.0, 10.0}},
        {a, b, c, d, {nan, 0.0}},
        {a, b, c, d, {0.0, infinity}},
    };
    for (const Points& points : degenerate) {
        gmEllipseFitResults results(gmEllipse(gmCircle({1.0, 2.0}, 3.0)), 4.0);
        EXPECT_THROW(gfEllipseFit(gmEllipseFitParams(), points, results), gmMathError::Singular)
            << testing::PrintToString(points);
        EXPECT_TRUE(results.ellipse() == gmEllipse(gmCircle({1.0, 2.0}, 3.0))) << "the results are untouched";
        EXPECT_EQ(results.residual(), 4.0);
    }
}

TEST(EllipseFit, OfExtremeNumbersEndsInOneWayOrTheOther) {
    support::Random random(94);
    const double sizes[] = {5e-324, 1e-300, 1e-160, 1e-8, 1.0, 1e8, 1e153, 1e160, 1.7e308};
    for (int i = 0; i < 5000; ++i) {
        Points points;
        for (int n = random.integer(5, 9); n > 0; --n)
            points.push_back(random.vector(1.0) * sizes[random.integer(0, 8)]);
        try {
            const gmEllipseFitResults results = fitted(points);
            ASSERT_GE(results.residual(), 0.0);
            ASSERT_TRUE(std::isfinite(results.residual()));
            ASSERT_GT(results.ellipse().yRadius(), 0.0);
        } catch (const gmMathError::Singular&) {
        }
    }
}

TEST(EllipseFitOutliers, AreLeftOut) {
    const gmEllipse ellipse = ellipseOf({1.0, 2.0}, 10.0, 6.0, 0.4);
    Points points = pointsOn(ellipse, 200);
    points.emplace_back(14.0, 2.0);
    points.emplace_back(1.0, -9.0);
    const gmEllipseFitParams params(gmEllipseFitDefs::eLeastSquares, gmRadian(0.0), 10, 0.7);
    EXPECT_GT(fitted(points).residual(), 0.1);
    expectNear(fitted(points, params).ellipse(), ellipse, 1e-11);
}

TEST(EllipseFitOutliers, ThatAreNearlyAllPointsLeaveNoEllipse) {
    Points points = pointsOn(ellipseOf({1.0, 2.0}, 10.0, 6.0, 0.4), 20);
    points.emplace_back(15.0, 2.0);
    EXPECT_THROW(fitted(points, gmEllipseFitParams(gmEllipseFitDefs::eLeastSquares, gmRadian(0.0), 1, -1.0)),
                 gmMathError::Singular);
}

}  // namespace
