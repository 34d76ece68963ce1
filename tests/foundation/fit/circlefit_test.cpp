#include "foundation/fit/circlefit.h"

#include "foundation/object/exception.h"
#include "tests/foundation/support.h"

namespace {

using support::infinity;
using support::nan;
using Vector = gmVector<2>;
using Points = std::vector<Vector>;

Points onCircle(const Vector& center, double radius, int count, double arc = 2.0 * support::pi) {
    Points points;
    for (int i = 0; i < count; ++i)
        points.push_back(center + Vector(radius, gmRadian(0.3 + arc * i / count)));
    return points;
}

gmCircleFitResults fitted(const Points& points, const gmCircleFitParams& params = gmCircleFitParams()) {
    gmCircleFitResults results;
    gfCircleFit(params, points, results);
    return results;
}

double sumOfSquares(const Points& points, const Vector& center, double radius) {
    double sum = 0.0;
    for (const Vector& point : points) {
        const double deviation = std::hypot(point.x() - center.x(), point.y() - center.y()) - radius;
        sum += deviation * deviation;
    }
    return sum;
}

TEST(CircleFitParams, DefaultToPlainLeastSquares) {
    const gmCircleFitParams params;
    EXPECT_EQ(params.mode(), gmCircleFitDefs::eLeastSquares);
    EXPECT_EQ(params.precision(), 1.0);
    EXPECT_EQ(params.outlierRounds(), 0UL);
    EXPECT_EQ(params.outlierDistance(), infinity);
    const gmCircleFitParams given(static_cast<gmCircleFitDefs::fit_mode>(0), 2.0, 3, 4.0);
    EXPECT_EQ(given.precision(), 2.0);
    EXPECT_EQ(given.outlierRounds(), 3UL);
    EXPECT_EQ(given.outlierDistance(), 4.0);
}

TEST(CircleFitResults, AreTheDefaultCircleAtFirst) {
    const gmCircleFitResults results;
    EXPECT_TRUE(results.circle() == gmCircle());
    EXPECT_EQ(results.residual(), 0.0);
}

TEST(CircleFit, RecoversACircleThroughThreePoints) {
    const gmCircleFitResults results = fitted({{1.0, 0.0}, {0.0, 1.0}, {-1.0, 0.0}});
    EXPECT_NEAR(results.circle().center().len(), 0.0, 1e-15);
    EXPECT_NEAR(results.circle().radius(), 1.0, 1e-15);
    EXPECT_NEAR(results.residual(), 0.0, 1e-15);
}

TEST(CircleFit, RecoversCirclesOfAnyScale) {
    for (const double scale : {1e-140, 1e-12, 1.0, 1e12, 1e140}) {
        const gmCircleFitResults results = fitted(onCircle(Vector(3.0, -2.0) * scale, 5.0 * scale, 37));
        EXPECT_NEAR(results.circle().center().x() / scale, 3.0, 1e-13) << scale;
        EXPECT_NEAR(results.circle().center().y() / scale, -2.0, 1e-13) << scale;
        EXPECT_NEAR(results.circle().radius() / scale, 5.0, 1e-13) << scale;
        EXPECT_NEAR(results.residual() / scale, 0.0, 1e-13) << scale;
    }
}

TEST(CircleFit, RecoversCirclesFarFromTheOrigin) {
    const Vector center(1e8, -3e8);
    const gmCircleFitResults results = fitted(onCircle(center, 10.0, 1000));
    // The points themselves are rounded to 6e-8.
    EXPECT_NEAR(results.circle().center().distance(center), 0.0, 1e-7);
    EXPECT_NEAR(results.circle().radius(), 10.0, 2e-8);
    EXPECT_LT(results.residual(), 6e-8);
}

TEST(CircleFit, RecoversACircleFromAShortArc) {
    const gmCircleFitResults results = fitted(onCircle({1.0, 2.0}, 3.0, 50, 0.1));
    EXPECT_NEAR(results.circle().center().distance({1.0, 2.0}), 0.0, 1e-8);
    EXPECT_NEAR(results.circle().radius(), 3.0, 1e-8);
}

TEST(CircleFit, HasTheLeastSquaredDistances) {
    support::Random random(81);
    for (int i = 0; i < 200; ++i) {
        Points points = onCircle(random.vector(5.0), random.uniform(1.0, 4.0), 40, random.uniform(2.0, 6.3));
        for (Vector& point : points)
            point = point + random.vector(0.2);
        const gmCircleFitResults results = fitted(points);
        const Vector center = results.circle().center();
        const double radius = results.circle().radius();
        const double least = sumOfSquares(points, center, radius);
        ASSERT_NEAR(results.residual(), std::sqrt(least / 40.0), 1e-12) << "root mean square distance";
        for (const double step : {1e-4, 1e-2}) {
            ASSERT_LE(least, sumOfSquares(points, center, radius + step));
            ASSERT_LE(least, sumOfSquares(points, center, radius - step));
            for (double angle = 0.0; angle < 6.0; angle += 0.5)
                ASSERT_LE(least, sumOfSquares(points, center + Vector(step, gmRadian(angle)), radius)) << i;
        }
    }
}

TEST(CircleFit, OfPointsThatDetermineNoneThrows) {
    const Points degenerate[] = {
        {},
        {{1.0, 1.0}},
        {{1.0, 1.0}, {2.0, 2.0}},
        {{1.0, 1.0}, {1.0, 1.0}, {1.0, 1.0}},
        {{0.0, 0.0}, {1.0, 2.0}, {2.0, 4.0}},
        {{0.0, 0.0}, {1.0, 0.0}, {2.0, 0.0}, {7.0, 0.0}},
        {{1e8, 1e8}, {1e8 + 1.0, 1e8 + 3.0}, {1e8 + 2.0, 1e8 + 6.0}},
        {{0.0, 0.0}, {1.0, 1.0}, {0.0, 0.0}, {1.0, 1.0}},
        {{0.0, 0.0}, {1.0, 0.0}, {0.0, nan}},
        {{0.0, 0.0}, {1.0, 0.0}, {infinity, 1.0}},
        {{0.0, 0.0}, {1.0, 0.0}, {0.0, -infinity}},
    };
    for (const Points& points : degenerate) {
        gmCircleFitResults results(gmCircle({1.0, 2.0}, 3.0), 4.0);
        EXPECT_THROW(gfCircleFit(gmCircleFitParams(), points, results), gmMathError::Singular)
            << testing::PrintToString(points);
        EXPECT_TRUE(results.circle() == gmCircle({1.0, 2.0}, 3.0)) << "the results are untouched";
        EXPECT_EQ(results.residual(), 4.0);
    }
}

TEST(CircleFit, OfExtremeNumbersEndsInOneWayOrTheOther) {
    support::Random random(82);
    const double sizes[] = {5e-324, 1e-300, 1e-160, 1e-8, 1.0, 1e8, 1e153, 1e160, 1.7e308};
    for (int i = 0; i < 5000; ++i) {
        Points points;
        for (int n = random.integer(3, 6); n > 0; --n)
            points.push_back(random.vector(1.0) * sizes[random.integer(0, 8)]);
        try {
            const gmCircleFitResults results = fitted(points);
            ASSERT_GE(results.residual(), 0.0);
            ASSERT_GE(results.circle().radius(), 0.0);
        } catch (const gmMathError::Singular&) {
        }
    }
}

TEST(CircleFitOutliers, AreLeftOutRoundByRound) {
    Points points = onCircle({0.0, 0.0}, 10.0, 100);
    points.emplace_back(30.0, 0.0);
    points.emplace_back(0.0, -16.0);
    const gmCircleFitDefs::fit_mode mode = gmCircleFitDefs::eLeastSquares;
    EXPECT_GT(fitted(points).residual(), 1.0);
    const gmCircleFitResults results = fitted(points, gmCircleFitParams(mode, 1.0, 10, 1.0));
    EXPECT_NEAR(results.circle().center().len(), 0.0, 1e-12);
    EXPECT_NEAR(results.circle().radius(), 10.0, 1e-12);
    EXPECT_NEAR(results.residual(), 0.0, 1e-12);
}

TEST(CircleFitOutliers, StayOutOnceTheyAreLeftOut) {
    // Whatever the points: more rounds than points change nothing any more.
    std::mt19937 engine(5);
    const auto coordinate = [&] { return static_cast<double>(engine() % 2000) / 1000.0 - 1.0; };
    int fitted = 0;
    for (int i = 0; i < 300; ++i) {
        std::vector<gmVector<2>> points;
        for (int k = 0; k < 14; ++k) {
            const double x = coordinate();
            points.emplace_back(x, coordinate());
        }
        gmCircleFitResults once;
        gmCircleFitResults again;
        try {
            gfCircleFit(gmCircleFitParams(gmCircleFitDefs::eLeastSquares, 1.0, points.size(), 0.4), points, once);
        } catch (const gmMathError::Singular&) {
            continue;
        }
        gfCircleFit(gmCircleFitParams(gmCircleFitDefs::eLeastSquares, 1.0, 1000000000, 0.4), points, again);
        EXPECT_EQ(once.circle(), again.circle());
        ++fitted;
    }
    EXPECT_GT(fitted, 100);
}

TEST(CircleFitOutliers, StayWithoutRoundsOrBelowTheDistance) {
    Points points = onCircle({0.0, 0.0}, 10.0, 20);
    points.emplace_back(13.0, 0.0);
    const gmCircleFitDefs::fit_mode mode = gmCircleFitDefs::eLeastSquares;
    const gmCircle plain = fitted(points).circle();
    EXPECT_TRUE(fitted(points, gmCircleFitParams(mode, 1.0, 0, 0.1)).circle() == plain);
    EXPECT_TRUE(fitted(points, gmCircleFitParams(mode, 1.0, 5, 100.0)).circle() == plain);
    EXPECT_FALSE(fitted(points, gmCircleFitParams(mode, 1.0, 1, 1.0)).circle() == plain);
}

TEST(CircleFitOutliers, ThatAreNearlyAllPointsLeaveNoCircle) {
    Points points = onCircle({0.0, 0.0}, 10.0, 20);
    points.emplace_back(13.0, 0.0);
    gmCircleFitResults results(gmCircle({1.0, 2.0}, 3.0), 4.0);
    for (const double limit : {0.0, -1.0, nan})
        EXPECT_THROW(gfCircleFit(gmCircleFitParams(gmCircleFitDefs::eLeastSquares, 1.0, 3, limit), points, results),
                     gmMathError::Singular);
    EXPECT_EQ(results.residual(), 4.0);
}

TEST(CircleFitPrecision, CutsTheRefinementShort) {
    support::Random random(83);
    Points points = onCircle({0.0, 0.0}, 10.0, 30, 1.0);
    for (Vector& point : points)
        point = point + random.vector(0.3);
    const gmCircleFitDefs::fit_mode mode = gmCircleFitDefs::eLeastSquares;
    const double rough = fitted(points, gmCircleFitParams(mode, 1e300, 0, infinity)).residual();
    const double fine = fitted(points, gmCircleFitParams(mode, 0.0, 0, infinity)).residual();
    EXPECT_LT(fine, rough);
    EXPECT_GE(fitted(points, gmCircleFitParams(mode, nan, 0, infinity)).residual(), fine);
    EXPECT_NEAR(fitted(points, gmCircleFitParams(mode, -1.0, 0, infinity)).residual(), fine, 1e-12);
}

}  // namespace
