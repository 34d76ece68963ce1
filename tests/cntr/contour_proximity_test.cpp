#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <cmath>
#include <limits>
#include <vector>

#include "tests/support/bits.h"
#include "tests/support/consistent.h"
#include "tests/support/testcontour.h"

using support::contour;
using support::openContour;
using support::same;
using support::TestContour;
using testing::ElementsAre;
using testing::IsEmpty;

namespace {

constexpr double infinity = std::numeric_limits<double>::infinity();
const double nan = std::nan("");

TEST(ContourClosestVertexIndex, FindsTheNearestVertex) {
    const TestContour shape = openContour("0 0, 4 0, 4 3");
    EXPECT_EQ(shape.closestVertexIndex({-1, 0}), 0);
    EXPECT_EQ(shape.closestVertexIndex({4, 1}), 1);
    EXPECT_EQ(shape.closestVertexIndex({100, 100}), 2);
}

TEST(ContourClosestVertexIndex, TakesTheLowestOfEquallyNear) {
    EXPECT_EQ(openContour("9 9, 0 2, 2 0, 0 -2, 0 2").closestVertexIndex({0, 0}), 1);
}

TEST(ContourClosestVertexIndex, NeverTakesAVertexWithoutADistance) {
    EXPECT_EQ(openContour("nan 0, 5 5, 0 nan, 4 4").closestVertexIndex({0, 0}), 3);
    EXPECT_EQ(openContour("nan 0, inf 5").closestVertexIndex({0, 0}), 0);
    EXPECT_EQ(openContour("7 7, 1 1").closestVertexIndex({nan, 0}), 0);
    EXPECT_EQ(openContour("7 7, 1 1").closestVertexIndex({infinity, 0}), 0);
}

TEST(ContourClosestPoint, IsTheFootOnTheNearestEdge) {
    const TestContour shape = openContour("0 0, 4 0, 4 3");
    EXPECT_TRUE(same(shape.closestPoint({1, 1}, false), gmVector<2>(1, 0)));
    EXPECT_TRUE(same(shape.closestPoint({5, 2}, false), gmVector<2>(4, 2)));
}

TEST(ContourClosestPoint, IsAnEndPastTheEdge) {
    const TestContour shape = openContour("0 0, 4 0");
    EXPECT_TRUE(same(shape.closestPoint({-2, 1}, false), gmVector<2>(0, 0)));
    EXPECT_TRUE(same(shape.closestPoint({6, -1}, false), gmVector<2>(4, 0)));
    EXPECT_TRUE(same(shape.closestPoint({0, 1}, false), gmVector<2>(0, 0)));
    EXPECT_TRUE(same(shape.closestPoint({4, 1}, false), gmVector<2>(4, 0)));
}

TEST(ContourClosestPoint, LooksAtTheClosingEdgeOfAClosedContourOnly) {
    EXPECT_TRUE(same(contour("0 0, 4 0, 4 4, 0 4").closestPoint({1, 2}, false), gmVector<2>(0, 2)));
    EXPECT_TRUE(same(openContour("0 0, 4 0, 4 4, 0 4").closestPoint({1, 2}, false), gmVector<2>(1, 0)));
}

TEST(ContourClosestPoint, OfEquallyNearEdgesTakesTheClosingEdgeFirst) {
    const TestContour square = contour("0 0, 2 0, 2 2, 0 2");
    EXPECT_TRUE(same(square.closestPoint({0.5, 0.5}, false), gmVector<2>(0, 0.5)));
    EXPECT_TRUE(same(square.closestPoint({1, 1}, false), gmVector<2>(0, 1)));
}

TEST(ContourClosestPoint, OfEquallyNearEdgesTakesTheEarlier) {
    EXPECT_TRUE(same(openContour("0 0, 2 0, 2 2, 0 2").closestPoint({1, 1}, false), gmVector<2>(1, 0)));
}

TEST(ContourClosestPoint, OfAnEdgeWithoutLengthIsItsStart) {
    EXPECT_TRUE(same(openContour("3 4, 3 4").closestPoint({0, 0}, false), gmVector<2>(3, 4)));
    EXPECT_TRUE(same(contour("3 4").closestPoint({0, 0}, false), gmVector<2>(3, 4)));
    EXPECT_TRUE(same(contour("3 4, 3 4, 3 4").closestPoint({3, 4}, false), gmVector<2>(3, 4)));
}

TEST(ContourClosestPoint, OfAnEdgeWhoseSquareVanishesIsTheEndThatFacesThePoint) {
    EXPECT_TRUE(same(openContour("0 0, 1e-170 0").closestPoint({1, 0}, false), gmVector<2>(1e-170, 0)));
    EXPECT_TRUE(same(openContour("0 0, 1e-170 0").closestPoint({-1, 0}, false), gmVector<2>(0, 0)));
}

TEST(ContourClosestPoint, OfAnOpenContourOfOneVertexIsTheOrigin) {
    const TestContour single = openContour("3 4");
    EXPECT_TRUE(same(single.closestPoint({3, 4}, false), gmVector<2>(0, 0)));
    EXPECT_EQ(single.distToPoint({3, 4}, false), 5.0);
    EXPECT_TRUE(same(single.closestPoint({0, 0}, true), gmVector<2>(3, 4)));
    EXPECT_EQ(single.distToPoint({3, 0}, true), 4.0);
}

TEST(ContourClosestPoint, AmongVerticesOnlyIsTheNearestVertex) {
    const TestContour shape = contour("0 0, 4 0, 4 3");
    EXPECT_TRUE(same(shape.closestPoint({3, -1}, true), gmVector<2>(4, 0)));
    EXPECT_TRUE(same(shape.closestPoint({2, 0}, true), gmVector<2>(0, 0)));
}

TEST(ContourClosestPoint, WithoutAnyDistanceIsTheOrigin) {
    EXPECT_TRUE(same(contour("1 1, 2 1, 2 2").closestPoint({nan, 0}, false), gmVector<2>(0, 0)));
    EXPECT_TRUE(same(openContour("nan 1, 2 nan").closestPoint({1, 1}, false), gmVector<2>(0, 0)));
    EXPECT_TRUE(same(openContour("1 1, 2 1").closestPoint({infinity, 0}, false), gmVector<2>(0, 0)));
}

TEST(ContourClosestPoint, LeavesOutEdgesWithoutADistance) {
    EXPECT_TRUE(same(openContour("nan 1, 2 1, 2 5").closestPoint({0, 3}, false), gmVector<2>(2, 3)));
}

TEST(ContourDistToPoint, IsTheDistanceToTheClosestPoint) {
    const TestContour square = contour("0 0, 4 0, 4 4, 0 4");
    EXPECT_EQ(square.distToPoint({2, 1}, false), 1.0);
    EXPECT_EQ(square.distToPoint({0, 1}, false), 0.0);
    EXPECT_EQ(square.distToPoint({0, 1}, true), 1.0);
    EXPECT_EQ(square.distToPoint({7, 8}, true), 5.0);
}

TEST(ContourVertexIndex, FindsTheVerticesCloserThanTheTolerance) {
    const TestContour shape = contour("0 0, 4 0, 4 4, 0.5 0");
    EXPECT_THAT(shape.vertexIndex({0.1, 0}, 0.5), ElementsAre(0, 3));
    EXPECT_THAT(shape.vertexIndex({4, 0.1}, 0.5), ElementsAre(1));
    EXPECT_THAT(shape.vertexIndex({2, 2}, 0.5), IsEmpty());
}

TEST(ContourVertexIndex, LeavesOutAVertexExactlyAtTheTolerance) {
    const TestContour shape = openContour("0 0, 9 9");
    EXPECT_THAT(shape.vertexIndex({0.5, 0}, 0.5), IsEmpty());
    EXPECT_THAT(shape.vertexIndex({0.5, 0}, 0.5000001), ElementsAre(0));
    EXPECT_THAT(shape.vertexIndex({0, 0}, 0.5), ElementsAre(0));
}

TEST(ContourVertexIndex, ListsVerticesByCellAndThenByIndex) {
    // Cells of size 1 around (0, 0): x first, then y; those of one cell by index.
    const TestContour shape = openContour("0.6 0.1, 0.1 0.6, 0.1 0.1, -0.6 0.1, 0.2 0.2, 0.1 -0.6");
    EXPECT_THAT(shape.vertexIndex({0, 0}, 1.0), ElementsAre(3, 5, 2, 4, 1, 0));
}

TEST(ContourVertexIndex, PutsHalvesIntoTheCellAwayFromZero) {
    EXPECT_THAT(openContour("0.5 0, 0.49 0").vertexIndex({0.45, 0}, 1.0), ElementsAre(1, 0));
    EXPECT_THAT(openContour("-0.49 0, -0.5 0").vertexIndex({-0.45, 0}, 1.0), ElementsAre(1, 0));
    EXPECT_THAT(openContour("0 1.5, 0 1.49").vertexIndex({0, 1.45}, 1.0), ElementsAre(1, 0));
    EXPECT_THAT(openContour("0 -1.49, 0 -1.5").vertexIndex({0, -1.45}, 1.0), ElementsAre(1, 0));
}

TEST(ContourVertexIndex, ScalesByTheReciprocalOfTheTolerance) {
    // 3.5 times the tolerance lies on a cell border; multiplied by the rounded reciprocal it falls short of it.
    const double tolerance = 49.0;
    const double border = 3.5 * tolerance;
    ASSERT_LT(border * (1.0 / tolerance), 3.5);
    const TestContour shape({{border, 0}, {border - 1, 0}}, false);
    EXPECT_THAT(shape.vertexIndex({border, 0}, tolerance), ElementsAre(0, 1));
}

TEST(ContourVertexIndex, MissesWhatRoundingPutsTwoCellsAway) {
    const double tolerance = 0.23;
    const double near = 3.565;
    const double far = 3.795;
    ASSERT_LT(far - near, tolerance);
    EXPECT_THAT(TestContour({{far, 0}, {near, 0}}, false).vertexIndex({near, 0}, tolerance), ElementsAre(1));
    EXPECT_THAT(TestContour({{0, far}, {0, near}}, false).vertexIndex({0, near}, tolerance), ElementsAre(1));
}

TEST(ContourVertexIndex, HoldsCellsBeyondThirtyTwoBits) {
    const TestContour image = openContour("2147.4836 3000, 4095.5 2159.5, 4095.5000004 2159.5, 4096 2160");
    EXPECT_THAT(image.vertexIndex({4095.5, 2159.5}, 1e-6), ElementsAre(1, 2));
    EXPECT_THAT(image.vertexIndex({2147.4836, 3000}, 1e-6), ElementsAre(0));
    EXPECT_THAT(image.vertexIndex({4095.5, 2159.6}, 1e-6), IsEmpty());
}

TEST(ContourVertexIndex, KeepsTheOrderOfCellsBeyondThirtyTwoBits) {
    EXPECT_THAT(openContour("4095.5000006 0, 4095.5 0").vertexIndex({4095.5000003, 0}, 1e-6), ElementsAre(1, 0));
    EXPECT_THAT(openContour("0 -4095.5, 0 -4095.5000006").vertexIndex({0, -4095.5000003}, 1e-6), ElementsAre(1, 0));
}

TEST(ContourVertexIndex, HoldsCellsBeyondSixtyFourBits) {
    const TestContour far = openContour("1e300 -1e300, 1e300 1e300, -1e300 -1e300, 0 0");
    EXPECT_THAT(far.vertexIndex({1e300, -1e300}, 1.0), ElementsAre(0));
    EXPECT_THAT(far.vertexIndex({-1e300, -1e300}, 1e-300), ElementsAre(2));
    EXPECT_THAT(far.vertexIndex({0, 0}, 1e-300), ElementsAre(3));
    EXPECT_THAT(far.vertexIndex({infinity, 0}, 1.0), IsEmpty());
}

TEST(ContourVertexIndex, FindsNothingWithoutAPositiveTolerance) {
    const TestContour shape = openContour("0 0, 1 1");
    for (const double tolerance : {0.0, -0.0, -1.0, -infinity, nan})
        EXPECT_THAT(shape.vertexIndex({0, 0}, tolerance), IsEmpty()) << tolerance;
    EXPECT_THAT(shape.vertexIndex({0, 0}, 0.5), ElementsAre(0));
}

TEST(ContourVertexIndex, FindsEveryFiniteVertexInIndexOrderWithAnInfiniteTolerance) {
    const TestContour shape = openContour("9 9, nan 0, -9 4, inf 0, 0 0");
    EXPECT_THAT(shape.vertexIndex({0, 0}, infinity), ElementsAre(0, 2, 4));
    EXPECT_THAT(shape.vertexIndex({nan, 0}, infinity), IsEmpty());
}

TEST(ContourVertexIndex, ComparesDistancesWhenTheToleranceIsTooSmallForCells) {
    const double tiny = 1e-309;
    const TestContour shape = openContour("5 5, 0 0, 1 0, 0 0");
    EXPECT_THAT(shape.vertexIndex({0, 0}, tiny), ElementsAre(1, 3));
    EXPECT_THAT(shape.vertexIndex({0, 0.1}, tiny), IsEmpty());
}

TEST(ContourVertexIndex, LeavesOutVerticesAndPlacesThatAreNotNumbers) {
    const TestContour shape = openContour("nan 0, 0 nan, 0 0");
    EXPECT_THAT(shape.vertexIndex({0, 0}, 1.0), ElementsAre(2));
    EXPECT_THAT(shape.vertexIndex({nan, 0}, 1.0), IsEmpty());
    EXPECT_THAT(shape.vertexIndex({0, nan}, 1.0), IsEmpty());
}

TEST(ContourMedianFeatureSize, IsTheMedianEdgeLength) {
    EXPECT_EQ(contour("0 0, 2 0, 2 2, 0 2").medianFeatureSize(), 2.0);
    EXPECT_EQ(openContour("0 0, 5 0, 5 1, 7 1").medianFeatureSize(), 2.0);
}

TEST(ContourMedianFeatureSize, OfAnEvenNumberIsTheUpperOfTheMiddleTwo) {
    EXPECT_EQ(openContour("0 0, 1 0, 3 0, 6 0, 10 0").medianFeatureSize(), 3.0);
    EXPECT_EQ(openContour("0 0, 4 0, 7 0, 9 0, 10 0").medianFeatureSize(), 3.0);
    EXPECT_EQ(openContour("0 0, 1 0, 3 0").medianFeatureSize(), 2.0);
}

TEST(ContourMedianFeatureSize, CountsTheClosingEdgeAndDegenerateEdges) {
    EXPECT_EQ(contour("0 0, 4 0, 4 3").medianFeatureSize(), 4.0);
    EXPECT_EQ(openContour("0 0, 0 0, 0 0, 5 0").medianFeatureSize(), 0.0);
    EXPECT_EQ(contour("3 3").medianFeatureSize(), 0.0);
}

TEST(ContourMedianFeatureSize, WithoutAnEdgeIsZero) {
    EXPECT_EQ(openContour("3 3").medianFeatureSize(), 0.0);
}

TEST(ContourMedianFeatureSize, CountsLengthsThatAreNotNumbersAsTheLongest) {
    EXPECT_EQ(openContour("0 nan, 0 0, 1 0, 3 0").medianFeatureSize(), 2.0);
    EXPECT_TRUE(std::isnan(openContour("0 nan, 0 0, 1 nan, 3 0").medianFeatureSize()));
    EXPECT_EQ(openContour("nan 0, 0 0, inf 0, 0 0").medianFeatureSize(), infinity);
}

TEST(ContourProximity, RefusesAContourWithoutVertices) {
    support::expectEveryQueryRefuses(contour(""));
    support::expectEveryQueryRefuses(openContour(""));
}

}  // namespace
