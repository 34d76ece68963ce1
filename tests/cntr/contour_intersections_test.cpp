#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <cmath>
#include <limits>
#include <string>
#include <vector>

#include "tests/support/bits.h"
#include "tests/support/consistent.h"
#include "tests/support/testcontour.h"

using support::contour;
using support::openContour;
using support::points;
using support::TestContour;
using testing::ElementsAre;
using testing::IsEmpty;

namespace {

const char* const square = "0 0, 4 0, 4 4, 0 4";

/// "x y @edge, ..." of the crossings, in their order.
std::string crossings(const gmContour& contour, const gmLineSeg& seg, bool includeEndpointEdges = true) {
    std::vector<int> edges = {99};
    const auto positions = TestContour(contour).intersections(seg, edges, includeEndpointEdges);
    EXPECT_EQ(positions.size(), edges.size());
    EXPECT_EQ(TestContour(contour).intersections(seg, includeEndpointEdges), positions);
    std::string result;
    for (std::size_t i = 0; i < positions.size(); ++i)
        result += (i ? ", " : "") + support::text(positions[i]) + " @" + std::to_string(edges.at(i));
    return result;
}

TEST(ContourIntersections, FindsACrossingWithItsEdgeNumber) {
    EXPECT_EQ(crossings(contour(square), gmLineSeg({2, 2}, {2, 9})), "2 4 @3");
    EXPECT_EQ(crossings(openContour(square), gmLineSeg({2, 2}, {2, 9})), "2 4 @2");
}

TEST(ContourIntersections, CountsTheClosingEdgeAsEdgeZeroOfAClosedContour) {
    EXPECT_EQ(crossings(contour(square), gmLineSeg({-1, 1}, {1, 1})), "0 1 @0");
    EXPECT_EQ(crossings(openContour(square), gmLineSeg({-1, 1}, {1, 1})), "");
}

TEST(ContourIntersections, ListsCrossingsFromTheSegmentsStartToItsEnd) {
    EXPECT_EQ(crossings(contour(square), gmLineSeg({-1, 1}, {5, 1})), "0 1 @0, 4 1 @2");
    EXPECT_EQ(crossings(contour(square), gmLineSeg({5, 1}, {-1, 1})), "4 1 @2, 0 1 @0");
    EXPECT_EQ(crossings(openContour("3 0, 3 2, 1 2, 1 0, 2 0, 2 2"), gmLineSeg({0, 1}, {9, 1})),
              "1 1 @2, 2 1 @4, 3 1 @0");
}

TEST(ContourIntersections, ClearsTheEdgeNumbersOfAnEarlierAnswer) {
    std::vector<int> edges = {1, 2, 3};
    EXPECT_THAT(contour(square).intersections(gmLineSeg({8, 8}, {9, 9}), edges, true), IsEmpty());
    EXPECT_THAT(edges, IsEmpty());
    edges = {1, 2, 3};
    EXPECT_THAT(contour(square).intersections(gmLineSeg({1, 1}, {2, 2}), edges, true), IsEmpty());
    EXPECT_THAT(edges, IsEmpty());
}

TEST(ContourIntersections, LeavesTheEdgeNumbersAloneWhenItRefuses) {
    std::vector<int> edges = {1, 2, 3};
    EXPECT_THROW(contour("").intersections(gmLineSeg(), edges, true), gmContourDefs::EmptyContour);
    EXPECT_THAT(edges, ElementsAre(1, 2, 3));
}

TEST(ContourIntersections, AVertexIsListedForBothItsEdges) {
    EXPECT_EQ(crossings(contour(square), gmLineSeg({3, -1}, {5, 1})), "4 0 @1, 4 0 @2");
    EXPECT_EQ(crossings(contour(square), gmLineSeg({-1, 1}, {1, -1})), "0 0 @0, 0 0 @1");
}

TEST(ContourIntersections, OfAnEdgeAlongTheSegmentNothingIsListed) {
    EXPECT_EQ(crossings(openContour("0 0, 4 0"), gmLineSeg({1, 0}, {3, 0})), "");
    EXPECT_EQ(crossings(openContour("0 0, 4 0"), gmLineSeg({4, 0}, {-4, 0})), "");
    // Along the bottom of a square its two sides are still met.
    EXPECT_EQ(crossings(contour(square), gmLineSeg({-1, 0}, {5, 0})), "0 0 @0, 4 0 @2");
}

TEST(ContourIntersections, ATouchOfTheSegmentsEndCounts) {
    EXPECT_EQ(crossings(contour(square), gmLineSeg({2, 2}, {2, 4})), "2 4 @3");
    EXPECT_EQ(crossings(contour(square), gmLineSeg({2, 4}, {2, 2})), "2 4 @3");
}

TEST(ContourIntersections, WithoutEndpointEdgesATouchedEdgeIsLeftOut) {
    EXPECT_EQ(crossings(contour(square), gmLineSeg({2, 2}, {2, 4}), false), "");
    EXPECT_EQ(crossings(contour(square), gmLineSeg({2, 4}, {2, 2}), false), "");
    EXPECT_EQ(crossings(contour(square), gmLineSeg({2, 4}, {2, -1}), false), "2 0 @1");
    EXPECT_EQ(crossings(contour(square), gmLineSeg({2, 2}, {2, 5}), false), "2 4 @3");
}

TEST(ContourIntersections, WithoutEndpointEdgesAnEdgeAtTheToleranceIsLeftOut) {
    const TestContour edge = openContour("0 0, 4 0");
    EXPECT_EQ(crossings(edge, gmLineSeg({2, 1e-6}, {2, -5}), false), "");
    EXPECT_EQ(crossings(edge, gmLineSeg({2, -5}, {2, 1e-6}), false), "");
    EXPECT_EQ(crossings(edge, gmLineSeg({2, 1.0000001e-6}, {2, -5}), false), "2 0 @0");
    EXPECT_EQ(crossings(edge, gmLineSeg({2, -5}, {2, 1.0000001e-6}), false), "2 0 @0");
    EXPECT_EQ(crossings(edge, gmLineSeg({2, 1e-6}, {2, -5}), true), "2 0 @0");
}

TEST(ContourIntersections, ASegmentThatEndsWithinTheToleranceOfAnEdgeMeetsIt) {
    const TestContour diagonal = openContour("0 0, 10 10");
    const auto endingAt = [](double gap) { return gmLineSeg({9, 1}, {5 + gap, 5 - gap}); };
    EXPECT_EQ(diagonal.intersections(endingAt(5e-7), true).size(), 1U);
    EXPECT_EQ(diagonal.intersections(endingAt(1e-6), true).size(), 0U);
}

TEST(ContourIntersections, AnEdgeThatEndsWithinTheToleranceOfTheSegmentIsMet) {
    const auto endingAt = [](double gap) { return TestContour({{9, 1}, {5 + gap, 5 - gap}}, false); };
    const gmLineSeg diagonal({0, 0}, {10, 10});
    EXPECT_EQ(endingAt(5e-7).intersections(diagonal, true).size(), 1U);
    EXPECT_EQ(endingAt(1e-6).intersections(diagonal, true).size(), 0U);
}

TEST(ContourIntersections, BoxesThatDoNotTouchRuleAMeetingOut) {
    // Half the tolerance away, but the boxes are apart.
    EXPECT_EQ(crossings(openContour("0 0, 4 0"), gmLineSeg({2, 5}, {2, 5e-7})), "");
    EXPECT_EQ(crossings(openContour("0 0, 4 0"), gmLineSeg({2, 5}, {2, 0})), "2 0 @0");
    // Here the contour's box meets the segment's, and the edge's own box does not.
    EXPECT_EQ(crossings(openContour("0 0, 4 0, 4 9"), gmLineSeg({2, 5}, {2, 5e-7})), "");
}

TEST(ContourIntersections, DegenerateEdgesTakeNoPart) {
    // Default segments would lie at the origin.
    EXPECT_EQ(crossings(contour("-5 -5, 5 -5, 5 5, 5 5, -5 5"), gmLineSeg({-1, -1}, {1, 1})), "");
    EXPECT_EQ(crossings(contour("-5 -5, 5 -5, 5 5, 5 5, -5 5"), gmLineSeg({0, 0}, {4, 8})), "2.5 5 @4");
    EXPECT_EQ(crossings(contour("2 2"), gmLineSeg({0, 0}, {4, 4})), "");
}

TEST(ContourIntersections, AnOpenContourOfOneVertexHasNone) {
    EXPECT_EQ(crossings(openContour("2 2"), gmLineSeg({0, 0}, {4, 4})), "");
}

TEST(ContourIntersections, ASegmentWithoutLengthMeetsNothing) {
    EXPECT_EQ(crossings(contour(square), gmLineSeg({2, 0}, {2, 0})), "");
    EXPECT_EQ(crossings(contour(square), gmLineSeg({2, 0}, {2, 0}), false), "");
}

TEST(ContourIntersections, OfCrossingsAtOnePlaceTheOrderIsTheExchangeSorts) {
    // Edges 0 and 1 cross at x = 5, edge 3 at x = 2, which comes first and thereby turns the other two around.
    EXPECT_EQ(crossings(openContour("5 1, 5 -1, 5 1, 2 1, 2 -1"), gmLineSeg({0, 0}, {9, 0})), "2 0 @3, 5 0 @1, 5 0 @0");
    EXPECT_EQ(crossings(openContour("5 1, 5 -1, 5 1, 7 1, 7 -1"), gmLineSeg({0, 0}, {9, 0})), "5 0 @0, 5 0 @1, 7 0 @3");
}

TEST(ContourIntersections, LeavesOutWhatIsNotANumber) {
    const double nan = std::nan("");
    const double infinity = std::numeric_limits<double>::infinity();
    EXPECT_EQ(crossings(openContour("nan 0, 4 4, 0 0"), gmLineSeg({0, 2}, {4, 2})), "2 2 @1");
    EXPECT_EQ(crossings(contour(square), gmLineSeg({nan, 1}, {5, 1})), "");
    EXPECT_EQ(crossings(contour(square), gmLineSeg({1, 1}, {5, nan})), "");
    EXPECT_EQ(crossings(contour(square), gmLineSeg({-infinity, 1}, {infinity, 1})), "");
}

TEST(ContourIntersectionsWithContour, AreGroupedByTheOthersEdgesInTheirOrder) {
    const TestContour bar = contour("1 -1, 3 -1, 3 5, 1 5");
    EXPECT_EQ(contour(square).intersections(bar), points("1 4, 1 0, 3 0, 3 4"));
    EXPECT_EQ(contour(square).intersections(openContour("1 -1, 3 -1, 3 5, 1 5")), points("3 0, 3 4"));
}

TEST(ContourIntersectionsWithContour, RunAlongEachEdgeOfTheOther) {
    EXPECT_EQ(contour(square).intersections(openContour("-1 1, 5 1")), points("0 1, 4 1"));
    EXPECT_EQ(contour(square).intersections(openContour("5 1, -1 1")), points("4 1, 0 1"));
}

TEST(ContourIntersectionsWithContour, KeepDuplicatesAndTouches) {
    EXPECT_EQ(contour(square).intersections(openContour("2 2, 2 4, 2 2")), points("2 4, 2 4"));
}

TEST(ContourIntersectionsWithContour, TakeDegenerateEdgesOfTheOtherAsTheyAre) {
    EXPECT_THAT(contour(square).intersections(contour("2 0")), IsEmpty());
    EXPECT_EQ(contour(square).intersections(openContour("2 2, 2 2, 2 9")), points("2 4"));
    // Degenerate by the library's measure, and yet with a direction that crosses the lower edge.
    EXPECT_EQ(contour(square).intersections(openContour("2 0, 2 1e-16")).size(), 1u);
}

TEST(ContourIntersections, KeepACrossingLessThanAMillionthFromTheEdgeOnly) {
    const TestContour edge = openContour("0 0, 1 0");
    EXPECT_THAT(edge.intersections(gmLineSeg({-1e-6, 0}, {1, 1}), true), IsEmpty());
    EXPECT_EQ(edge.intersections(gmLineSeg({std::nextafter(-1e-6, 0.0), 0}, {1, 1}), true).size(), 1u);
}

TEST(ContourSelfIntersecting, RemembersThatItIs) {
    TestContour shape = contour("0 0, 4 4, 4 0, 0 4");
    EXPECT_TRUE(shape.isSelfIntersecting());
    for (std::size_t vertex = 1; vertex <= 3; ++vertex)
        shape.moveSecretly(vertex, points(square)[vertex]);
    EXPECT_TRUE(shape.isSelfIntersecting());
    shape.cleanCacheInfo();
    EXPECT_FALSE(shape.isSelfIntersecting());
}

TEST(ContourIntersectionsWithContour, AreNoneWithAnEmptyOrFarOther) {
    EXPECT_THAT(contour(square).intersections(contour("")), IsEmpty());
    EXPECT_THAT(contour(square).intersections(contour("10 10, 14 10, 14 14")), IsEmpty());
}

TEST(ContourIntersectionsWithContour, MayBeAskedOfTheContourItself) {
    EXPECT_EQ(contour(square).intersections(contour(square)).size(), 8U);  // every corner from both its edges
    const TestContour self = contour(square);
    EXPECT_EQ(self.intersections(self), contour(square).intersections(contour(square)));
}

TEST(ContourIsSelfIntersecting, FindsABowTie) {
    EXPECT_TRUE(contour("0 0, 4 4, 4 0, 0 4").isSelfIntersecting());
    EXPECT_TRUE(openContour("0 0, 4 4, 4 0, 0 4").isSelfIntersecting());
}

TEST(ContourIsSelfIntersecting, IsFalseForSimpleOutlines) {
    EXPECT_FALSE(contour(square).isSelfIntersecting());
    EXPECT_FALSE(contour("0 0, 4 0, 4 3").isSelfIntersecting());
    EXPECT_FALSE(contour("0 0, 6 0, 6 6, 4 6, 4 2, 2 2, 2 6, 0 6").isSelfIntersecting());
    EXPECT_FALSE(openContour("0 0, 4 0, 4 4, 1 4, 1 1, 3 1").isSelfIntersecting());
}

TEST(ContourIsSelfIntersecting, CountsTheClosingEdgeOfAClosedContourOnly) {
    const char* const bay = "0 0, 4 0, 4 4, 6 4, 6 1";  // only the way back to the start crosses an edge
    EXPECT_TRUE(contour(bay).isSelfIntersecting());
    EXPECT_FALSE(openContour(bay).isSelfIntersecting());
}

TEST(ContourIsSelfIntersecting, CountsAVertexOnAnotherEdge) {
    EXPECT_TRUE(contour("0 0, 4 0, 4 4, 2 0, 0 4").isSelfIntersecting());
    EXPECT_FALSE(contour("0 0, 4 0, 4 4, 2 0.001, 0 4").isSelfIntersecting());
}

TEST(ContourIsSelfIntersecting, IgnoresRepeatedVertices) {
    EXPECT_FALSE(contour("0 0, 4 0, 4 0, 4 4, 0 4, 0 4, 0 4, 0 0").isSelfIntersecting());
}

TEST(ContourIsSelfIntersecting, DoesNotFindEdgesAlongEachOther) {
    EXPECT_FALSE(openContour("0 0, 4 0, 2 0, 6 0").isSelfIntersecting());
    EXPECT_FALSE(contour("0 0, 3 4").isSelfIntersecting());
}

TEST(ContourIsSelfIntersecting, IgnoresCornersThatOnlyTouchCorners) {
    // Two triangles that share a corner: every edge there touches an end of the others.
    EXPECT_FALSE(contour("0 0, 4 4, 8 0, 8 8, 4 4, 0 8").isSelfIntersecting());
}

TEST(ContourIsSelfIntersecting, IgnoresWhatHappensNearTheEndsOfTheEdgeUnderTest) {
    // The last edge crosses the first beyond the tolerance of either's ends, or within it of one's.
    EXPECT_TRUE(openContour("0 0, 4 0, 4 4, 2 4, 2 -2e-6").isSelfIntersecting());
    EXPECT_TRUE(openContour("0 0, 4 0, 4 4, 2 4, 2 -5e-7").isSelfIntersecting());
    EXPECT_FALSE(openContour("0 0, 4 0, 4 4, 5e-7 4, 5e-7 -5e-7").isSelfIntersecting());
}

TEST(ContourIsSelfIntersecting, FollowsTheVertices) {
    TestContour shape = contour("0 0, 4 4, 4 0, 0 4");
    EXPECT_TRUE(shape.isSelfIntersecting());
    shape.points(points("1 1, 1 1"));
    EXPECT_FALSE(shape.isSelfIntersecting());
    shape.points(points("0 0, 4 4, 4 0, 0 4"));
    EXPECT_TRUE(shape.isSelfIntersecting());
    shape.points({});
    EXPECT_FALSE(shape.isSelfIntersecting());
}

TEST(ContourIsSelfIntersecting, IsFalseWithoutAVertexOrAnEdge) {
    EXPECT_FALSE(contour("").isSelfIntersecting());
    EXPECT_FALSE(openContour("").isSelfIntersecting());
    EXPECT_FALSE(contour("1 1").isSelfIntersecting());
    EXPECT_FALSE(openContour("1 1").isSelfIntersecting());
    EXPECT_FALSE(contour("1 1, 1 1").isSelfIntersecting());
}

}  // namespace
