#include "tools/mokshape/measures.h"

#include <gtest/gtest.h>

#include <cmath>
#include <utility>
#include <vector>

namespace {

using mokshape::measure;
using mokshape::Measures;
using mokshape::Outline;

Outline outline(std::vector<gmVector<2>> points, Outline::Kind kind = Outline::Kind::eOuter) {
    Outline result;
    result.points = std::move(points);
    result.kind = kind;
    return result;
}

TEST(Measure, GivesEveryMeasureOfARectangle) {
    const Measures m = measure(outline({{1, 1}, {5, 1}, {5, 4}, {1, 4}}));
    EXPECT_EQ(m.vertices, 4u);
    EXPECT_EQ(m.length, 14.0);
    EXPECT_EQ(m.area, 12.0);
    ASSERT_TRUE(m.centre);
    EXPECT_NEAR(m.centre->x(), 3.0, 1e-12);
    EXPECT_NEAR(m.centre->y(), 2.5, 1e-12);
    ASSERT_TRUE(m.box);
    EXPECT_EQ(*m.box, gmRect({1, 1}, {4, 3}));
    EXPECT_EQ(m.diameter, 5.0);
    EXPECT_FALSE(m.isSelfCrossing);
}

TEST(Measure, FindsTheEllipseThatTheVerticesLieOn) {
    std::vector<gmVector<2>> points;
    for (int i = 0; i < 12; ++i) {
        const gmVector<2> along(5.0 * std::cos(i * 0.5), gmRadian(gmDegree(30.0)));
        const gmVector<2> across(2.0 * std::sin(i * 0.5), gmRadian(gmDegree(120.0)));
        points.push_back(gmVector<2>(10.0, 20.0) + along + across);
    }
    const Measures m = measure(outline(points));
    ASSERT_TRUE(m.ellipse);
    EXPECT_NEAR(m.ellipse->ellipse.xRadius(), 5.0, 1e-6);
    EXPECT_NEAR(m.ellipse->ellipse.yRadius(), 2.0, 1e-6);
    EXPECT_NEAR(mokshape::angleInDegrees(m.ellipse->ellipse), 30.0, 1e-6);
    EXPECT_NEAR(m.ellipse->residual, 0.0, 1e-6);
}

TEST(Measure, GivesALineNoAreaAndTheCentreOfItsLength) {
    const Measures m = measure(outline({{0, 0}, {4, 0}, {4, 4}}, Outline::Kind::eLine));
    EXPECT_EQ(m.length, 8.0);
    EXPECT_FALSE(m.area);
    ASSERT_TRUE(m.centre);
    EXPECT_EQ(*m.centre, gmVector<2>(3.0, 1.0));
}

TEST(Measure, TakesTheCentreOfTheLineWhereAClosedOutlineEnclosesNothing) {
    const Measures m = measure(outline({{2, 2}, {4, 2}, {6, 2}}));
    EXPECT_EQ(m.area, 0.0);
    ASSERT_TRUE(m.centre);
    EXPECT_EQ(*m.centre, gmVector<2>(4.0, 2.0));
}

TEST(Measure, NoticesAnOutlineThatCrossesItself) {
    EXPECT_TRUE(measure(outline({{0, 0}, {4, 4}, {4, 0}, {0, 4}})).isSelfCrossing);
}

TEST(Measure, LeavesOutWhatAnEmptyOutlineDoesNotHave) {
    const Measures m = measure(outline({}));
    EXPECT_EQ(m.vertices, 0u);
    EXPECT_FALSE(m.length || m.area || m.centre || m.box || m.diameter || m.ellipse || m.isSelfCrossing);
}

TEST(Measure, LeavesOutWhatASinglePlaceDoesNotHave) {
    const Measures m = measure(outline({{2, 3}, {2, 3}, {2, 3}}));
    EXPECT_EQ(m.length, 0.0);
    EXPECT_EQ(m.area, 0.0);
    EXPECT_FALSE(m.centre);
    EXPECT_EQ(m.diameter, 0.0);
    EXPECT_FALSE(m.ellipse);
    ASSERT_TRUE(m.box);
    EXPECT_EQ(*m.box, gmRect({2, 3}, {0, 0}));
}

TEST(Measure, GivesALineThatIsStraightNoEllipse) {
    EXPECT_FALSE(measure(outline({{0, 0}, {1, 1}}, Outline::Kind::eLine)).ellipse);
}

TEST(Measure, LeavesOutWhatIsBeyondTheRangeOfNumbers) {
    const Measures m = measure(outline({{-1e308, -1e308}, {1e308, -1e308}, {1e308, 1e308}}));
    EXPECT_FALSE(m.length);
    EXPECT_FALSE(m.area);
    EXPECT_FALSE(m.box);
    EXPECT_FALSE(m.diameter);
}

}  // namespace
