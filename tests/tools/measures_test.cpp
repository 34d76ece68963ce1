#include "tools/mokshape/measures.h"

#include <gtest/gtest.h>

#include <cmath>
#include <optional>
#include <utility>
#include <vector>

namespace {

using mokshape::measureLine;
using mokshape::measureRegion;
using mokshape::Measures;
using mokshape::measureSet;
using mokshape::SetMeasures;
using Points = std::vector<gmVector<2>>;

Points square(double x, double y, double side) {
    return {{x, y}, {x + side, y}, {x + side, y + side}, {x, y + side}};
}

gmRegion plate(const Points& outline, const std::vector<Points>& holes) {
    gmRegion region(outline);
    std::vector<RegionCPtr> handles;
    for (const Points& hole : holes)
        handles.emplace_back(new gmRegion(hole));
    region.holes(handles);
    return region;
}

Measures measurePolygon(const Points& points) {
    return measureRegion(gmRegion(points));
}

void expectAt(const std::optional<gmVector<2>>& point, double x, double y) {
    ASSERT_TRUE(point);
    EXPECT_NEAR(point->x(), x, 1e-12);
    EXPECT_NEAR(point->y(), y, 1e-12);
}

TEST(Measure, GivesEveryMeasureOfARectangle) {
    const Measures m = measurePolygon({{1, 1}, {5, 1}, {5, 4}, {1, 4}});
    EXPECT_EQ(m.vertices, 4u);
    EXPECT_EQ(m.length, 14.0);
    EXPECT_EQ(m.area, 12.0);
    expectAt(m.centre, 3.0, 2.5);
    EXPECT_EQ(m.holes, 0u);
    EXPECT_EQ(m.areaWithHoles, 12.0);
    EXPECT_EQ(m.centreWithHoles, m.centre);
    ASSERT_TRUE(m.box);
    EXPECT_EQ(*m.box, gmRect({1, 1}, {4, 3}));
    EXPECT_EQ(m.diameter, 5.0);
    EXPECT_FALSE(m.isSelfCrossing());
}

TEST(Measure, FindsTheEllipseThatTheVerticesLieOn) {
    std::vector<gmVector<2>> points;
    for (int i = 0; i < 12; ++i) {
        const gmVector<2> along(5.0 * std::cos(i * 0.5), gmRadian(gmDegree(30.0)));
        const gmVector<2> across(2.0 * std::sin(i * 0.5), gmRadian(gmDegree(120.0)));
        points.push_back(gmVector<2>(10.0, 20.0) + along + across);
    }
    const Measures m = measurePolygon(points);
    ASSERT_TRUE(m.ellipse);
    EXPECT_NEAR(m.ellipse->ellipse.xRadius(), 5.0, 1e-6);
    EXPECT_NEAR(m.ellipse->ellipse.yRadius(), 2.0, 1e-6);
    EXPECT_NEAR(mokshape::angleInDegrees(m.ellipse->ellipse), 30.0, 1e-6);
    EXPECT_NEAR(m.ellipse->residual, 0.0, 1e-6);
}

TEST(Measure, GivesALineNoAreaAndTheCentreOfItsLength) {
    const Measures m = measureLine(gmContour({{0, 0}, {4, 0}, {4, 4}}, false));
    EXPECT_EQ(m.length, 8.0);
    EXPECT_FALSE(m.area);
    ASSERT_TRUE(m.centre);
    EXPECT_EQ(*m.centre, gmVector<2>(3.0, 1.0));
}

TEST(Measure, TakesTheCentreOfTheLineWhereAClosedOutlineEnclosesNothing) {
    const Measures m = measurePolygon({{2, 2}, {4, 2}, {6, 2}});
    EXPECT_EQ(m.area, 0.0);
    ASSERT_TRUE(m.centre);
    EXPECT_EQ(*m.centre, gmVector<2>(4.0, 2.0));
}

TEST(Measure, NoticesAnOutlineThatCrossesItself) {
    EXPECT_TRUE(measurePolygon({{0, 0}, {4, 4}, {4, 0}, {0, 4}}).isSelfCrossing());
}

TEST(Measure, LeavesOutWhatAnEmptyOutlineDoesNotHave) {
    const Measures m = measureLine(gmContour());
    EXPECT_EQ(m.vertices, 0u);
    EXPECT_FALSE(m.length || m.area || m.centre || m.box || m.diameter || m.ellipse || m.isSelfCrossing());
}

TEST(Measure, LeavesOutWhatASinglePlaceDoesNotHave) {
    const Measures m = measurePolygon({{2, 3}, {2, 3}, {2, 3}});
    EXPECT_EQ(m.length, 0.0);
    EXPECT_EQ(m.area, 0.0);
    EXPECT_FALSE(m.centre);
    EXPECT_EQ(m.diameter, 0.0);
    EXPECT_FALSE(m.ellipse);
    ASSERT_TRUE(m.box);
    EXPECT_EQ(*m.box, gmRect({2, 3}, {0, 0}));
}

TEST(Measure, GivesALineThatIsStraightNoEllipse) {
    EXPECT_FALSE(measureLine(gmContour({{0, 0}, {1, 1}}, false)).ellipse);
}

TEST(Measure, LeavesOutWhatIsBeyondTheRangeOfNumbers) {
    const Measures m = measurePolygon({{-1e308, -1e308}, {1e308, -1e308}, {1e308, 1e308}});
    EXPECT_FALSE(m.length);
    EXPECT_FALSE(m.area);
    EXPECT_FALSE(m.box);
    EXPECT_FALSE(m.diameter);
}

TEST(MeasureWithHoles, TakesThemOutOfAreaAndCentre) {
    const Measures m = measureRegion(plate(square(0, 0, 10), {square(1, 1, 2)}));
    EXPECT_EQ(m.holes, 1u);
    EXPECT_EQ(m.area, 100.0);
    EXPECT_EQ(m.areaWithHoles, 96.0);
    expectAt(m.centre, 5.0, 5.0);
    expectAt(m.centreWithHoles, (500.0 - 8.0) / 96.0, (500.0 - 8.0) / 96.0);
    EXPECT_EQ(m.vertices, 4u);
    EXPECT_EQ(m.length, 40.0);
}

TEST(MeasureWithHoles, GivesTheSameCentreOfARegionThatWasAskedBefore) {
    const gmRegion region = plate(square(0, 0, 10), {square(1, 1, 2)});
    const gmVector<2> first = region.centerOfMass(true);
    ASSERT_NE(region.centerOfMass(true), first);
    EXPECT_EQ(measureRegion(region).centreWithHoles, first);
    EXPECT_EQ(measureRegion(region).centreWithHoles, first);
}

TEST(MeasureWithHoles, LeavesOutACentreWhereNextToNothingIsLeft) {
    const Measures m = measureRegion(plate(square(0, 0, 2), {square(10, 0, 2)}));
    EXPECT_EQ(m.areaWithHoles, 0.0);
    EXPECT_FALSE(m.centreWithHoles);
    expectAt(m.centre, 1.0, 1.0);
    const Measures next = measureRegion(plate(square(0, 0, 2), {square(10, 0, 2 - 1e-8)}));
    EXPECT_GT(next.areaWithHoles, 0.0);
    EXPECT_FALSE(next.centreWithHoles);
}

TEST(MeasureWithHoles, GivesTheNegativeAreaOfAHoleThatIsLarger) {
    EXPECT_EQ(measureRegion(plate(square(0, 0, 2), {square(10, 0, 3)})).areaWithHoles, -5.0);
}

TEST(MeasureWithHoles, LeavesOutWhatIsBeyondTheRangeOfNumbers) {
    const Measures m = measureRegion(plate(square(-1e200, -1e200, 2e200), {square(0, 0, 2)}));
    EXPECT_FALSE(m.areaWithHoles);
    EXPECT_FALSE(m.centreWithHoles);
    EXPECT_EQ(m.holes, 1u);
}

TEST(MeasureWithHoles, NamesTheRingsThatCrossThemselves) {
    const Points bowTie{{2, 2}, {4, 4}, {4, 2}, {2, 4}};
    const std::vector<std::size_t> third{3};
    EXPECT_EQ(measureRegion(plate(square(0, 0, 10), {square(6, 6, 1), bowTie})).crossingRings, third);
    const std::vector<std::size_t> first{1};
    EXPECT_EQ(measurePolygon(bowTie).crossingRings, first);
}

SetMeasures measurePolygons(const std::vector<Points>& outlines) {
    std::vector<RegionCPtr> regions;
    for (const Points& outline : outlines)
        regions.emplace_back(new gmRegion(outline));
    return measureSet(regions);
}

RegionCPtr shared(const gmRegion& region) {
    return RegionCPtr(new gmRegion(region));
}

void expectMoments(const SetMeasures& all, double xx, double xy, double yy) {
    ASSERT_TRUE(all.moments);
    EXPECT_NEAR((*all.moments)(0, 0), xx, 1e-9);
    EXPECT_NEAR((*all.moments)(0, 1), xy, 1e-9);
    EXPECT_NEAR((*all.moments)(1, 1), yy, 1e-9);
}

TEST(MeasureSet, SumsAreasAndTakesCommonCentreBoxAndMoments) {
    // A unit square and one of side 2 whose centres are (3, 1) apart: area 1 * 4 / 5 times that, squared.
    const SetMeasures all = measurePolygons({square(0, 0, 1), square(2.5, 0.5, 2)});
    EXPECT_EQ(all.polygons, 2u);
    EXPECT_EQ(all.vertices, 8u);
    EXPECT_EQ(all.holes, 0u);
    EXPECT_EQ(all.area, 5.0);
    EXPECT_EQ(all.areaWithHoles, 5.0);
    expectAt(all.centre, 0.5 + 3.0 * 4.0 / 5.0, 0.5 + 1.0 * 4.0 / 5.0);
    EXPECT_EQ(all.centreWithHoles, all.centre);
    ASSERT_TRUE(all.box);
    EXPECT_EQ(*all.box, gmRect({0, 0}, {4.5, 2.5}));
    expectMoments(all, 17.0 / 12.0 + 0.8 * 9.0, 0.8 * 3.0, 17.0 / 12.0 + 0.8 * 1.0);
    EXPECT_FALSE(all.isSelfCrossing);
}

TEST(MeasureSet, GivesTheSameMomentsWhicheverWayOutlinesRun) {
    // Not star-shaped around its centre: a bracket, open to the right.
    const Points bracket{{0, 0}, {6, 0}, {6, 1}, {1, 1}, {1, 5}, {6, 5}, {6, 6}, {0, 6}};
    // An upright of 1 by 6 and two arms of 5 by 1.
    const double centre = (6.0 * 0.5 + 10.0 * 3.5) / 16.0;
    const double xx = 6.0 / 12.0 + 6.0 * (0.5 - centre) * (0.5 - centre) + 2.0 * 125.0 / 12.0 +
                      10.0 * (3.5 - centre) * (3.5 - centre);
    const double yy = 216.0 / 12.0 + 2.0 * (5.0 / 12.0 + 5.0 * 2.5 * 2.5);
    expectMoments(measurePolygons({bracket}), xx, 0.0, yy);
    expectMoments(measurePolygons({Points(bracket.rbegin(), bracket.rend())}), xx, 0.0, yy);
}

TEST(MeasureSet, TakesHolesOutOfAreaAndCentreAndNothingElse) {
    const SetMeasures all = measureSet({shared(plate(square(0, 0, 10), {square(1, 1, 2), square(5, 5, 1)})),
                                        shared(plate(square(20, 0, 10), {square(21, 1, 2)}))});
    EXPECT_EQ(all.holes, 3u);
    EXPECT_EQ(all.vertices, 8u);
    EXPECT_EQ(all.area, 200.0);
    EXPECT_EQ(all.areaWithHoles, 191.0);
    expectAt(all.centre, 15.0, 5.0);
    expectAt(all.centreWithHoles, (3000.0 - 8.0 - 5.5 - 88.0) / 191.0, (1000.0 - 8.0 - 5.5 - 8.0) / 191.0);
    expectMoments(all, 2.0 * 1e4 / 12.0 + 200.0 * 100.0, 0.0, 2.0 * 1e4 / 12.0);
}

TEST(MeasureSet, GivesTheSameCentreOfRegionsThatWereAskedBefore) {
    const RegionCPtr region = shared(plate(square(0, 0, 10), {square(1, 1, 2)}));
    const gmVector<2> first = region->centerOfMass(true);
    for (int i = 0; i < 2; ++i)
        expectAt(measureSet({region}).centreWithHoles, first.x(), first.y());
}

TEST(MeasureSet, CountsOverlapsForEachAndNoticesCrossings) {
    const SetMeasures all = measurePolygons({square(0, 0, 4), square(2, 2, 4)});
    EXPECT_EQ(all.area, 32.0);
    EXPECT_TRUE(all.isSelfCrossing);
    EXPECT_FALSE(measurePolygons({square(0, 0, 9), square(2, 2, 4)}).isSelfCrossing);
    EXPECT_TRUE(measurePolygons({square(9, 9, 1), {{0, 0}, {4, 4}, {4, 0}, {0, 4}}}).isSelfCrossing);
    const gmRegion crossedHole = plate(square(0, 0, 10), {{{2, 2}, {4, 4}, {4, 2}, {2, 4}}});
    EXPECT_FALSE(measureSet({shared(crossedHole)}).isSelfCrossing);
}

TEST(MeasureSet, IsNotMovedByPolygonsThatEncloseNextToNothing) {
    const Points flat{{90, 90}, {94, 90}, {99, 90}};
    const SetMeasures all = measurePolygons({flat, square(2, 2, 1), square(50, 50, 1e-4)});
    expectAt(all.centre, 2.5, 2.5);
    expectAt(all.centreWithHoles, 2.5, 2.5);
    expectMoments(all, 1.0 / 12.0, 0.0, 1.0 / 12.0);
    EXPECT_EQ(all.box, gmRect({2, 2}, {97, 88}));
    const SetMeasures drilled = measureSet(
        {shared(plate(square(0, 0, 2), {square(10, 0, 2)})), shared(plate(square(0, 0, 10), {square(1, 1, 2)}))});
    expectAt(drilled.centreWithHoles, 492.0 / 96.0, 492.0 / 96.0);
}

TEST(MeasureSet, LeavesOutWhatDoesNotExist) {
    const SetMeasures flat = measurePolygons({{{0, 0}, {1, 0}, {2, 0}}});
    EXPECT_EQ(flat.area, 0.0);
    EXPECT_FALSE(flat.centre || flat.centreWithHoles || flat.moments);
    EXPECT_TRUE(flat.box);
    // Together the holes take as much as there is.
    const SetMeasures none = measureSet(
        {shared(plate(square(0, 0, 2), {square(10, 0, 3)})), shared(plate(square(0, 5, 3), {square(10, 5, 2)}))});
    EXPECT_EQ(none.areaWithHoles, 0.0);
    EXPECT_FALSE(none.centreWithHoles);
    EXPECT_TRUE(none.centre);
    const SetMeasures huge = measurePolygons({square(-1e200, -1e200, 2e200), square(0, 0, 1)});
    EXPECT_FALSE(huge.area || huge.areaWithHoles || huge.centre || huge.moments);
    EXPECT_FALSE(measurePolygons({{{-1e308, -1e308}, {1e308, -1e308}, {1e308, 1e308}}}).box);
}

}  // namespace
