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

}  // namespace
