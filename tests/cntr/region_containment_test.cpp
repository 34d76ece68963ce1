#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <cmath>
#include <string>
#include <vector>

#include "tests/support/testcontour.h"
#include "tests/support/testregion.h"

using support::Handle;
using support::Holes;
using support::insideCount;
using support::OwnHoles;
using support::points;
using support::region;
using support::shared;
using testing::ElementsAre;
using testing::IsEmpty;
using testing::ThrowsMessage;

namespace {

using Empty = gmContourDefs::EmptyContour;
using BadParams = gmContourDefs::BadParams;

const char* const square = "0 0, 10 0, 10 10, 0 10";
const char* const inSquare = "2 2, 8 2, 8 8, 2 8";
const char* const island = "4 4, 6 4, 6 6, 4 6";

gmRegion regionWith(const char* outline, const Holes& holes) {
    gmRegion shape = region(outline);
    shape.holes(holes);
    return shape;
}

Handle own(const std::string& outline, const OwnHoles& holes = {}) {
    const Handle shape(new gmRegion(points(outline)));
    shape->holes(holes);
    return shape;
}

/// The square around (5, 5) that reaches this far.
std::string squareOf(double reach) {
    const std::string low = support::text(5 - reach);
    const std::string high = support::text(5 + reach);
    return low + " " + low + ", " + high + " " + low + ", " + high + " " + high + ", " + low + " " + high;
}

/// A hole that no setter takes.
void addHoleSecretly(const gmRegion& region, const RegionCPtr& hole) {
    const_cast<Holes&>(region.holes()).push_back(hole);
}

TEST(RegionContainment, InsideAndOutsideOfAPlainOutline) {
    for (const char* outline : {"0 0, 10 0, 10 10, 5 4, 0 10", "0 10, 5 4, 10 10, 10 0, 0 0"}) {
        const gmRegion shape = region(outline);
        EXPECT_TRUE(shape.inside({5, 3}, false));
        EXPECT_TRUE(shape.inside({1, 8}, false));
        EXPECT_TRUE(shape.inside({9, 8}, true));
        EXPECT_FALSE(shape.inside({5, 5}, false));
        EXPECT_FALSE(shape.inside({5, 9}, true));
        EXPECT_FALSE(shape.inside({11, 5}, false));
    }
}

TEST(RegionContainment, CountsTheClosingEdgeOfAnOpenContour) {
    const gmRegion shape(support::openContour("0 0, 10 0, 10 10"));
    EXPECT_TRUE(shape.inside({7, 3}, false));
    EXPECT_FALSE(shape.inside({3, 7}, false));
}

TEST(RegionContainment, APointInAHoleIsOutsideWhenHolesAreConsidered) {
    const gmRegion shape = regionWith(square, {shared(inSquare)});
    EXPECT_TRUE(shape.inside({5, 5}, false));
    EXPECT_FALSE(shape.inside({5, 5}, true));
    EXPECT_TRUE(shape.inside({1, 5}, true));
    EXPECT_FALSE(shape.inside({11, 5}, true));
}

TEST(RegionContainment, APointInAnIslandOfAHoleIsInsideAgain) {
    gmRegion shape = region(square);
    shape.holes(OwnHoles{own(inSquare, {own(island, {own("4.9 4.9, 5.1 4.9, 5.1 5.1, 4.9 5.1")})})});
    EXPECT_TRUE(shape.inside({1, 5}, true));
    EXPECT_FALSE(shape.inside({3, 5}, true));
    EXPECT_TRUE(shape.inside({4.5, 5.2}, true));
    EXPECT_FALSE(shape.inside({5.02, 5.03}, true));
}

TEST(RegionContainment, EveryHoleIsAsked) {
    const gmRegion shape = regionWith(square, {shared("1 1, 2 1, 2 2"), shared("5 1, 6 1, 6 2"), shared(island)});
    EXPECT_FALSE(shape.inside({1.7, 1.3}, true));
    EXPECT_FALSE(shape.inside({5.7, 1.3}, true));
    EXPECT_FALSE(shape.inside({5, 5}, true));
    EXPECT_TRUE(shape.inside({3, 3}, true));
}

TEST(RegionContainment, AHoleOutsideTheOutlineAddsNothing) {
    const gmRegion shape = regionWith(island, {shared("20 20, 30 20, 30 30, 20 30")});
    EXPECT_FALSE(shape.inside({25, 25}, true));
    EXPECT_TRUE(shape.inside({5, 5}, true));
    EXPECT_FALSE(regionWith(island, {shared(square)}).inside({5, 5}, true)) << "but one around it takes all away";
}

TEST(RegionContainment, APointOnAVertexIsInside) {
    const gmRegion shape = region(square);
    for (const auto& vertex : points(square)) {
        EXPECT_EQ(insideCount(shape, vertex, false), 1);
        EXPECT_EQ(insideCount(shape, vertex, true), 1);
        EXPECT_TRUE(shape.inside(vertex, true));
    }
    EXPECT_FALSE(regionWith(square, {shared(inSquare)}).inside({8, 2}, true)) << "it is inside the hole";
}

TEST(RegionContainment, AVertexReachesAMillionth) {
    const gmRegion tipped = region("0 0, -4 4, 4 4, 4 6, -6 6, -6 -2");
    EXPECT_EQ(insideCount(tipped, {1e-6, 0}, false), 1);
    EXPECT_EQ(insideCount(tipped, {1e-6, 0}, true), 1);
    EXPECT_EQ(insideCount(tipped, {1.01e-6, 0}, true), 0);
    EXPECT_TRUE(tipped.inside({1e-6, 0}, false));
    EXPECT_FALSE(tipped.inside({1.01e-6, 0}, false));
    EXPECT_EQ(insideCount(region("0 0, nan 2, 4 4, 0 4"), {3, 1}, true), 1) << "not farther than that";
}

TEST(RegionContainment, NothingIsInsideBeyondTheBoundingBox) {
    EXPECT_EQ(insideCount(region(square), {-5e-7, 0}, false), 0) << "not even close to a vertex";
    EXPECT_EQ(insideCount(region(square), {10, 10 + 5e-7}, true), 0);
    EXPECT_EQ(insideCount(region(square), {20, 5}, false), 0);
    EXPECT_EQ(insideCount(region(square), {5, std::nan("")}, false), 0);
}

TEST(RegionContainment, TheRayRunsThroughTheFirstGapThatIsWideEnough) {
    // The corners are seen under 161.6, 225 and 288.4 degrees; the first gap is wider than 60 degrees and crosses two
    // edges, the last and widest none.
    for (const char* outline : {"0 0, 4 0, 0 4", "0 4, 4 0, 0 0", "4 0, 0 0, 0 4"}) {
        EXPECT_EQ(insideCount(region(outline), {3, 3}, false), 2) << outline;
        EXPECT_EQ(insideCount(region(outline), {3, 3}, true), 0) << "the opposite ray crosses nothing";
    }
    // Under 18.4, 251.6 and 315 degrees: the first gap lies away from the triangle.
    EXPECT_EQ(insideCount(region("0 0, 4 0, 4 4"), {1, 3}, false), 0);
    EXPECT_EQ(insideCount(region("0 0, 4 0, 4 4"), {1, 3}, true), 0) << "the opposite ray crosses three times";
}

TEST(RegionContainment, AGapOfExactlyHalfTheMeanIsNotWideEnough) {
    // A right angle, which is pi / 2, and three of them: the second is taken, away from both edges.
    EXPECT_EQ(insideCount(region("1 0, 0 1"), {0, 0}, false), 0);
}

TEST(RegionContainment, AGapThatIsTooNarrowIsPassedOver) {
    // The end of the slot is seen under 3.8 and 5.7 degrees, and a ray between them crosses it: three edges.
    const gmRegion slotted = region("-4 -4, 2 -4, 2 0.2, 3 0.2, 3 -4, 4 -4, 4 4, -4 4");
    EXPECT_EQ(insideCount(slotted, {0, 0}, false), 1);
}

TEST(RegionContainment, TheRayReachesAcrossTheWholeOutline) {
    // To the far side of a place that is farther away than any vertex is from the first, or from any other.
    EXPECT_EQ(insideCount(region("0 1, -2 3, -4 -1, 2 -4, 2 0"), {1, -3}, false), 1);
    EXPECT_EQ(insideCount(region("3 3, 1 4, -4 2, -1 -3, 3 0"), {3, -3}, false), 2);
}

TEST(RegionContainment, TheRayKeepsOffTheVertices) {
    // Even a hundredth of the gap away from the corner it would count both edges that meet there.
    EXPECT_EQ(insideCount(region("-3e-5 -3e-5, 3e-5 -3e-5, 3e-5 3e-5, -3e-5 3e-5"), {0, 0}, false), 1);
}

TEST(RegionContainment, AnEdgeThroughThePointIsNotCounted) {
    EXPECT_EQ(insideCount(region("0 0, 4 0, 4 4, 0 4"), {2, 0}, false), 1) << "the ray runs to the right edge";
    EXPECT_EQ(insideCount(region("0 0, 4 0, 4 4, 0 4"), {2, 4}, false), 0) << "the ray runs up and meets nothing";
    EXPECT_EQ(insideCount(region("0 0, 4 0, 4 -4, 0 -4"), {2, -1e-6}, false), 0) << "up to a millionth";
    EXPECT_EQ(insideCount(region("0 0, 4 0, 4 -4, 0 -4"), {2, -1.01e-6}, false), 1);
}

TEST(RegionContainment, TheCountNeverSeesHoles) {
    const gmRegion shape = regionWith(square, {shared(inSquare), shared("9 4, 9.5 4, 9.5 6, 9 6")});
    for (const bool both : {false, true}) {
        EXPECT_EQ(insideCount(shape, {5, 5}, both), 1);
        EXPECT_EQ(insideCount(shape, {1, 5}, both), 1);
        EXPECT_EQ(insideCount(shape, {9.2, 5}, both), 1);
    }
}

TEST(RegionContainment, ALobeThatIsRunAroundTwiceIsOutside) {
    const gmRegion pentagram = region("0 10, 6 -8, -9.5 3, 9.5 3, -6 -8");
    EXPECT_FALSE(pentagram.inside({0.1, 0.2}, false));
    EXPECT_TRUE(pentagram.inside({0.1, 8.1}, false));
    EXPECT_TRUE(region("0 0, 2 2, 2 0, 0 2").inside({1.7, 1}, false));
    EXPECT_FALSE(region("0 0, 2 2, 2 0, 0 2").inside({1, 1.7}, false));
}

TEST(RegionContainment, OfAnOutlineWithoutAVertexIsRefused) {
    EXPECT_THROW(gmRegion().inside({0, 0}, false), Empty);
    EXPECT_THROW(insideCount(gmRegion(), {0, 0}, true), Empty);
    const gmRegion shape = regionWith(square, {shared("")});
    EXPECT_THROW(shape.inside({5, 5}, true), Empty);
    EXPECT_TRUE(shape.inside({5, 5}, false));
    EXPECT_FALSE(shape.inside({15, 5}, true));
}

TEST(RegionContainment, AnEmptyHandleIsAnErrorWhereItMatters) {
    gmRegion shape = regionWith(square, {shared(inSquare)});
    addHoleSecretly(shape, nullptr);
    long holeIndex = 7;
    EXPECT_THROW(shape.inside({1, 5}, true), gmBadPointer);
    EXPECT_FALSE(shape.inside({5, 5}, true)) << "the hole before it has answered";
    EXPECT_FALSE(shape.inside({11, 5}, true));
    EXPECT_TRUE(shape.inside({1, 5}, false));
    EXPECT_THROW(shape.closestVertexIndex({1, 5}, true, holeIndex), gmBadPointer);
    EXPECT_EQ(shape.closestVertexIndex({1, 1}, false, holeIndex), 0);
    EXPECT_THROW(shape.closestPoint({1, 5}, true, true), gmBadPointer);
    EXPECT_EQ(shape.closestPoint({1, 1}, true, false), gmVector<2>(0, 0));
    EXPECT_THROW(shape.distToPoint({1, 5}, true, true, false), gmBadPointer);
    EXPECT_THROW(shape.distToPoint({1, 5}, true, true, true), gmBadPointer);
    EXPECT_EQ(shape.distToPoint({1, 5}, true, false, true), 0.0);
    gmRegion outer = region("-9 -9, 19 -9, 19 19, -9 19");
    outer.holes(OwnHoles{Handle(new gmRegion(shape))});
    EXPECT_THROW(outer.inside({1, 5}, true), gmBadPointer) << "of a hole";
}

TEST(RegionContainment, NestingCostsNoStack) {
    Handle outermost = own(island);
    for (int depth = 1; depth < 200000; ++depth)
        outermost = own(depth % 2 ? inSquare : island, {outermost});
    EXPECT_FALSE(outermost->inside({5, 5}, true));
    EXPECT_TRUE(own(square, {outermost})->inside({5, 5}, true));
}

TEST(RegionContainment, AHoleThatManyShareIsAskedOnce) {
    Handle outermost = own(squareOf(1));
    for (int depth = 1; depth <= 60; ++depth)
        outermost = own(squareOf(1 + depth), {outermost, outermost});
    EXPECT_TRUE(outermost->inside({5.1, 5.2}, true));
    EXPECT_FALSE(outermost->inside({5.1, 6.5}, true));
    EXPECT_TRUE(outermost->inside({5.1, 7.5}, true));
}

TEST(RegionContainment, HolesInACycleAreAnErrorWhereTheAnswerDependsOnItself) {
    const Handle outer = own(square);
    const Handle inner = own(inSquare, {outer});
    outer->holes(OwnHoles{inner});
    const char* const message = "holes form a cycle";
    EXPECT_THAT([&] { outer->inside({5, 5}, true); }, ThrowsMessage<BadParams>(message));
    EXPECT_THAT([&] { inner->inside({5, 5}, true); }, ThrowsMessage<BadParams>(message));
    EXPECT_THAT([&] { outer->distToPoint({5, 5}, false, false, true); }, testing::Not(testing::Throws<BadParams>()));
    EXPECT_THAT([&] { outer->distToPoint({5, 5}, false, true, true); }, ThrowsMessage<BadParams>(message));
    EXPECT_TRUE(outer->inside({5, 5}, false));
    EXPECT_TRUE(outer->inside({1, 5}, true));
    EXPECT_FALSE(outer->inside({11, 5}, true));
    EXPECT_FALSE(inner->inside({1, 5}, true));
    outer->holes(OwnHoles{});
    EXPECT_TRUE(outer->inside({5, 5}, true));
    EXPECT_FALSE(inner->inside({5, 5}, true));
}

TEST(RegionContainment, HolesInACycleAreNoErrorWhereAnotherHoleDecides) {
    const Handle outer = own(square);
    const Handle inner = own(inSquare, {own(island), outer});
    outer->holes(OwnHoles{inner});
    EXPECT_TRUE(outer->inside({5, 5}, true)) << "the island lets the inner one answer before it asks the outer one";
    EXPECT_FALSE(inner->inside({5, 5}, true));
    EXPECT_THROW(outer->inside({3, 5}, true), BadParams);
    outer->holes(OwnHoles{});
}

TEST(RegionDistance, TheNearestVertexIsTheOutlinesUnlessHolesCount) {
    const gmRegion shape = regionWith(square, {shared("2 8, 2 2, 8 2, 8 8"), shared("6 6, 4 6, 4 4, 6 4")});
    long holeIndex = 7;
    EXPECT_EQ(shape.closestVertexIndex({7, 7}, false, holeIndex), 2);
    EXPECT_EQ(holeIndex, -1);
    EXPECT_EQ(shape.closestVertexIndex({7, 3}, true, holeIndex), 2);
    EXPECT_EQ(holeIndex, 0);
    EXPECT_EQ(shape.closestVertexIndex({4.5, 5.6}, true, holeIndex), 1);
    EXPECT_EQ(holeIndex, 1);
    EXPECT_EQ(shape.closestVertexIndex({1, 9.5}, true, holeIndex), 3);
    EXPECT_EQ(holeIndex, -1);
    EXPECT_EQ(shape.closestVertexIndex({7, 3}), 1) << "the outline's own";
    EXPECT_EQ(region(square).closestVertexIndex({9, 3}, true, holeIndex), 1) << "there are no holes";
    EXPECT_EQ(holeIndex, -1);
}

TEST(RegionDistance, OfVerticesAsNearTheFirstWinsTheOutlineBeforeTheHoles) {
    const gmRegion shape = regionWith(square, {shared(inSquare), shared("1 1, 2 1, 1 2"), shared(inSquare)});
    long holeIndex = 7;
    EXPECT_EQ(shape.closestVertexIndex({0.5, 0.5}, true, holeIndex), 0);
    EXPECT_EQ(holeIndex, -1);
    EXPECT_EQ(shape.closestPoint({0.5, 0.5}, true, true), gmVector<2>(0, 0));
    EXPECT_EQ(shape.closestVertexIndex({9, 9}, true, holeIndex), 2) << "of corners and holes alike";
    EXPECT_EQ(holeIndex, -1);
    EXPECT_EQ(shape.closestVertexIndex({7.5, 7.5}, true, holeIndex), 2);
    EXPECT_EQ(holeIndex, 0) << "the last hole is as near";
    EXPECT_EQ(shape.closestVertexIndex({1.5, 1.5}, true, holeIndex), 0);
    EXPECT_EQ(holeIndex, 0) << "all of the second hole's are as near";
}

TEST(RegionDistance, TheNearestVertexOfAnEmptyOutlineIsRefused) {
    long holeIndex = 7;
    EXPECT_THROW(gmRegion().closestVertexIndex({0, 0}, true, holeIndex), Empty);
    EXPECT_EQ(holeIndex, -1);
    EXPECT_THROW(gmRegion().closestPoint({0, 0}, false, false), Empty);
    EXPECT_THROW(gmRegion().closestPoint({0, 0}, true, false), Empty);
    EXPECT_THROW(gmRegion().distToPoint({0, 0}, false, false, false), Empty);
    EXPECT_THROW(regionWith(square, {shared("")}).closestVertexIndex({0, 0}, true, holeIndex), Empty);
}

TEST(RegionDistance, TheNearestVertexMayBeAHolesOnlyIfAsked) {
    const gmRegion shape = regionWith(square, {shared(inSquare), shared(island)});
    EXPECT_EQ(shape.closestPoint({7, 3}, true, false), gmVector<2>(10, 0));
    EXPECT_EQ(shape.closestPoint({7, 3}, true, true), gmVector<2>(8, 2));
    EXPECT_EQ(shape.closestPoint({5.5, 5.5}, true, true), gmVector<2>(6, 6));
    EXPECT_EQ(shape.closestPoint({9, 0}, true, true), gmVector<2>(10, 0));
    EXPECT_EQ(shape.closestPoint({7, 3}, true), gmVector<2>(10, 0)) << "the outline's own";
}

TEST(RegionDistance, TheNearestPointMayBeAHolesInAnyCase) {
    const gmRegion shape = regionWith(square, {shared(inSquare), shared(island)});
    for (const bool considerHoles : {false, true}) {
        EXPECT_EQ(shape.closestPoint({5, 3}, false, considerHoles), gmVector<2>(5, 2));
        EXPECT_EQ(shape.closestPoint({5, 3.5}, false, considerHoles), gmVector<2>(5, 4)) << "the second hole";
        EXPECT_EQ(shape.closestPoint({5, 0.5}, false, considerHoles), gmVector<2>(5, 0));
        EXPECT_EQ(shape.closestPoint({5, 12}, false, considerHoles), gmVector<2>(5, 10));
    }
    EXPECT_EQ(shape.closestPoint({5, 3}, false), gmVector<2>(5, 0)) << "the outline's own";
}

TEST(RegionDistance, OfPointsAsNearTheFirstWinsTheOutlineBeforeTheHoles) {
    const gmRegion shape = regionWith(square, {shared(inSquare), shared(island)});
    EXPECT_EQ(shape.closestPoint({5, 1}, false, true), gmVector<2>(5, 0)) << "not the first hole's (5, 2)";
    EXPECT_EQ(shape.closestPoint({5, 3}, false, true), gmVector<2>(5, 2)) << "not the second hole's (5, 4)";
}

TEST(RegionDistance, IsThatToTheNearestPoint) {
    const gmRegion shape = regionWith(square, {shared(inSquare)});
    EXPECT_EQ(shape.distToPoint({5, 3}, false, false, false), 1.0) << "to a hole, though none is considered";
    EXPECT_EQ(shape.distToPoint({5, 3}, false, true, false), 1.0);
    EXPECT_EQ(shape.distToPoint({5, 12}, false, true, false), 2.0);
    EXPECT_EQ(shape.distToPoint({11, 0}, true, true, false), 1.0);
    EXPECT_EQ(shape.distToPoint({8, 3}, true, true, false), 1.0);
    EXPECT_EQ(shape.distToPoint({10, 3}, true, false, false), 3.0);
    EXPECT_EQ(shape.distToPoint({5, 3}, false), 3.0) << "the outline's own";
}

TEST(RegionDistance, IsNothingForAPointInsideIfAsked) {
    const gmRegion shape = regionWith(square, {shared(inSquare)});
    for (const bool vertexOnly : {false, true}) {
        EXPECT_EQ(shape.distToPoint({5, 1}, vertexOnly, true, true), 0.0);
        EXPECT_EQ(shape.distToPoint({5, 3}, vertexOnly, false, true), 0.0);
    }
    EXPECT_EQ(shape.distToPoint({5, 3}, false, true, true), 1.0) << "it is in the hole";
    EXPECT_EQ(shape.distToPoint({8, 3}, true, true, true), 1.0);
    EXPECT_EQ(shape.distToPoint({5, 12}, false, false, true), 2.0);
    EXPECT_EQ(regionWith(island, {shared(square)}).distToPoint({5, 11}, false, false, true), 1.0) << "to the hole";
}

TEST(RegionCrossings, WithAContourAreTheOutlinesAndThenEachHoles) {
    const gmRegion shape = regionWith(square, {shared(island), shared(inSquare)});
    const gmContour line(points("-1 5, 11 5"), false);
    EXPECT_THAT(shape.intersections(line, false), ElementsAre(gmVector<2>(0, 5), gmVector<2>(10, 5)));
    EXPECT_EQ(shape.intersections(line, true), points("0 5, 10 5, 4 5, 6 5, 2 5, 8 5"));
    const gmContour back(points("11 5, -1 5"), true);
    EXPECT_EQ(shape.intersections(back, true), points("0 5, 10 5, 10 5, 0 5, 4 5, 6 5, 6 5, 4 5, 2 5, 8 5, 8 5, 2 5"));
    EXPECT_THAT(shape.intersections(gmContour(), true), IsEmpty());
}

TEST(RegionCrossings, AtOnePlaceAreListedForEachOutline) {
    const gmRegion shape = regionWith(square, {shared(inSquare), shared(inSquare)});
    const gmContour line(points("1 5, 3 5"), false);
    EXPECT_EQ(shape.intersections(line, true), points("2 5, 2 5"));
    EXPECT_THAT(shape.intersections(line, false), IsEmpty());
}

TEST(RegionCrossings, WithASegmentAreTheOutlinesAndThenEachHoles) {
    const gmRegion shape = regionWith(square, {shared(island), shared(inSquare)});
    for (const bool includeEndpointEdges : {false, true}) {
        EXPECT_EQ(shape.intersections(gmLineSeg({11, 5}, {-1, 5}), includeEndpointEdges, true),
                  points("10 5, 0 5, 6 5, 4 5, 8 5, 2 5"));
        EXPECT_EQ(shape.intersections(gmLineSeg({11, 5}, {-1, 5}), includeEndpointEdges, false), points("10 5, 0 5"));
    }
}

TEST(RegionCrossings, EndpointEdgesCountOnlyIfAsked) {
    const gmRegion shape = regionWith(square, {shared(inSquare)});
    EXPECT_EQ(shape.intersections(gmLineSeg({0, 5}, {2, 5}), true, true), points("0 5, 2 5"));
    EXPECT_THAT(shape.intersections(gmLineSeg({0, 5}, {2, 5}), false, true), IsEmpty());
}

TEST(RegionCrossings, DoNotReachTheHolesOfHoles) {
    gmRegion shape = region(square);
    shape.holes(OwnHoles{own(inSquare, {own(island)})});
    EXPECT_EQ(shape.intersections(gmLineSeg({-1, 5}, {11, 5}), true, true), points("0 5, 10 5, 2 5, 8 5"));
    EXPECT_EQ(shape.closestPoint({5, 4.1}, false, true), gmVector<2>(5, 2));
}

TEST(RegionCrossings, OfAnOutlineWithoutAVertexAreRefused) {
    EXPECT_THROW(gmRegion().intersections(gmContour(), false), Empty);
    EXPECT_THROW(gmRegion().intersections(gmLineSeg({0, 0}, {1, 0}), true, false), Empty);
    EXPECT_THROW(regionWith(square, {shared("")}).intersections(gmLineSeg({0, 0}, {1, 0}), true, true), Empty);
}

}  // namespace
