#include <gtest/gtest.h>

#include <string>
#include <vector>

#include "foundation/fit/convexhull.h"
#include "tests/support/bits.h"
#include "tests/support/changes.h"
#include "tests/support/testcontour.h"
#include "tests/support/testregion.h"

using support::contour;
using support::Holes;
using support::openContour;
using support::points;
using support::region;
using support::same;
using support::shared;
using support::TestContour;
using support::TestRegion;

namespace {

const char* const arrow = "0 0, 4 0, 1 1, 0 4";
const char* const hullOfArrow = "0 0, 4 0, 0 4";

std::vector<gmVector<2>> hullOf(const gmContour& contour) {
    gmRegion hull;
    contour.convexHull(hull);
    return hull.points();
}

TEST(ConvexHullOfAContour, IsTheRegionOfItsOuterVertices) {
    const auto vertices = points("3 1, 0 0, 2 5, 1 1, 4 0, 2 2, 4 4, 2 0");
    std::vector<gmVector<2>> expected;
    gfConvexHull(vertices, expected);
    EXPECT_TRUE(same(hullOf(TestContour(vertices, true)), expected));
    EXPECT_EQ(expected, points("0 0, 4 0, 4 4, 2 5"));
    EXPECT_EQ(hullOf(contour(arrow)), points(hullOfArrow));
}

TEST(ConvexHullOfAContour, ReplacesWhatTheRegionWas) {
    gmRegion hull = region("0 0, 9 0, 9 9, 0 9");
    hull.holes(Holes{shared("1 1, 2 1, 2 2")});
    hull.label(7);
    hull.cachedVectorSize(8);
    EXPECT_EQ(hull.area(true), 80.5);
    TestContour shape = contour(arrow, 5);
    shape.cachedVectorSize(9);
    shape.convexHull(hull);
    EXPECT_EQ(hull.points(), points(hullOfArrow));
    EXPECT_TRUE(hull.holes().empty());
    EXPECT_EQ(hull.label(), 0U);
    EXPECT_EQ(hull.cachedVectorSize(), 3);
    EXPECT_EQ(hull.area(true), 8.0);
    EXPECT_TRUE(hull.isClosed());
    EXPECT_EQ(shape, [] {
        TestContour same = contour(arrow);
        same.cachedVectorSize(9);
        return same;
    }());
    EXPECT_EQ(shape.label(), 5U);
}

TEST(ConvexHullOfAContour, OfFewAndOfCollinearVerticesIsWhatIsLeftOfThem) {
    EXPECT_EQ(hullOf(contour("3 4")), points("3 4"));
    EXPECT_EQ(hullOf(contour("3 4, 3 4, 3 4")), points("3 4"));
    EXPECT_EQ(hullOf(contour("3 4, 1 2")), points("1 2, 3 4"));
    EXPECT_EQ(hullOf(contour("2 2, 0 0, 3 3, 1 1")), points("0 0, 3 3"));
    EXPECT_EQ(hullOf(contour("0 0, 4 0, 4 0, 2 0, 0 0, 0 4, 4 0")), points(hullOfArrow));
}

TEST(ConvexHullOfAContour, IsTheSameOfAnOpenContour) {
    EXPECT_EQ(hullOf(openContour(arrow)), points(hullOfArrow));
    EXPECT_EQ(hullOf(openContour("3 4")), points("3 4"));
    gmRegion hull;
    openContour(arrow).convexHull(hull);
    EXPECT_TRUE(hull.isClosed());
}

TEST(ConvexHullOfAContour, OfACrossingOutlineIsSimple) {
    EXPECT_EQ(hullOf(contour("0 0, 2 2, 2 0, 0 2")), points("0 0, 2 0, 2 2, 0 2"));
}

TEST(ConvexHullOfAContour, WithoutAVertexIsRefused) {
    gmRegion hull = region(arrow);
    hull.label(7);
    EXPECT_THROW(contour("").convexHull(hull), gmContourDefs::EmptyContour);
    EXPECT_THROW(openContour("").convexHull(hull), gmContourDefs::EmptyContour);
    EXPECT_THROW(gmRegion().convexHull(hull), gmContourDefs::EmptyContour);
    EXPECT_EQ(hull.points(), points(arrow));
    EXPECT_EQ(hull.label(), 7U);
    TestContour emptied = contour(arrow);
    emptied.convexHull(hull);
    const_cast<std::vector<gmVector<2>>&>(emptied.points()).clear();
    EXPECT_THROW(emptied.convexHull(hull), gmContourDefs::EmptyContour) << "even where the hull is known";
}

TEST(ConvexHullOfAContour, OfARegionCanReplaceTheRegion) {
    gmRegion shape = region(arrow);
    shape.holes(Holes{shared("0.2 0.2, 0.4 0.2, 0.4 0.4")});
    shape.label(7);
    shape.convexHull(shape);
    EXPECT_EQ(shape.points(), points(hullOfArrow));
    EXPECT_TRUE(shape.holes().empty());
    EXPECT_EQ(shape.label(), 0U);
    EXPECT_EQ(shape.area(true), 8.0);
    shape.convexHull(shape);
    EXPECT_EQ(shape.points(), points(hullOfArrow));
}

TEST(ConvexHullOfAContour, OfARegionThatRemembersItCanReplaceTheRegion) {
    gmRegion shape = region(arrow);
    EXPECT_EQ(hullOf(shape), points(hullOfArrow));
    shape.convexHull(shape);
    EXPECT_EQ(shape.points(), points(hullOfArrow));
    EXPECT_EQ(hullOf(shape), points(hullOfArrow));
}

TEST(ConvexHullOfAContour, OfARegionLeavesItsHolesOut) {
    gmRegion shape = region(arrow);
    shape.holes(Holes{shared("20 20, 22 20, 22 22")});
    EXPECT_EQ(hullOf(shape), points(hullOfArrow));
    EXPECT_EQ(shape.holes().size(), 1U);
}

TEST(ConvexHullOfAContour, IsRemembered) {
    TestContour shape = contour(arrow);
    EXPECT_EQ(hullOf(shape), points(hullOfArrow));
    shape.moveSecretly(2, {9, 9});
    EXPECT_EQ(hullOf(shape), points(hullOfArrow));
    shape.label(3);
    shape.cachedVectorSize(5);
    EXPECT_EQ(hullOf(shape), points(hullOfArrow));
}

TEST(ConvexHullOfAContour, IsNotChangedThroughTheRegionThatItWasAssignedTo) {
    const TestContour shape = contour(arrow);
    gmRegion hull;
    shape.convexHull(hull);
    hull.points(points("7 7"));
    hull.label(7);
    EXPECT_EQ(hullOf(shape), points(hullOfArrow));
    EXPECT_EQ(hull.points(), points("7 7"));
}

TEST(ConvexHullOfAContour, IsForgottenWithEveryChange) {
    const std::string other = "0 0, 4 0, 9 9, 0 4";
    for (const int change : {0, 1, 2, 3}) {
        TestContour shape = contour(arrow);
        hullOf(shape);
        shape.moveSecretly(2, {9, 9});
        if (change == 0)
            shape.points(std::vector<gmVector<2>>(shape.points()));
        else if (change == 1)
            shape.setPoints(std::vector<gmVector<2>>(shape.points()));
        else if (change == 2)
            shape.isClosed(false);
        else
            shape.cleanCacheInfo();
        EXPECT_EQ(hullOf(shape), points(other)) << "change " << change;
    }
    TestRegion shape;
    shape.points(points(arrow));
    hullOf(shape);
    shape.moveSecretly(2, {9, 9});
    shape.holes(Holes{});
    EXPECT_EQ(hullOf(shape), points(other));
}

TEST(ConvexHullOfAContour, IsTakenOverByCopies) {
    TestContour shape = contour(arrow);
    hullOf(shape);
    shape.moveSecretly(2, {9, 9});
    TestContour copy(shape);
    TestContour assigned = contour("7 7, 8 8, 9 7");
    hullOf(assigned);
    assigned = shape;
    EXPECT_EQ(hullOf(copy), points(hullOfArrow));
    EXPECT_EQ(hullOf(assigned), points(hullOfArrow));
    copy.cleanCacheInfo();
    EXPECT_EQ(hullOf(copy), points("0 0, 4 0, 9 9, 0 4"));
    EXPECT_EQ(hullOf(shape), points(hullOfArrow)) << "only the copy's is dropped";
    assigned = contour("7 7, 8 8, 9 7");
    EXPECT_EQ(hullOf(assigned), points("7 7, 9 7, 8 8")) << "what the source does not know is not known";
}

TEST(ConvexHullOfAContour, OutlivesTheContour) {
    TestContour copy;
    {
        const TestContour shape = contour(arrow);
        hullOf(shape);
        copy = shape;
    }
    EXPECT_EQ(hullOf(copy), points(hullOfArrow));
}

TEST(ConvexHullOfAContour, IsNoChangeThatIsReported) {
    TestContour shape = contour(arrow);
    shape.reportChanges(true);
    gmRegion hull;
    hull.reportChanges(true);
    support::ChangeCounter changes;
    shape.convexHull(hull);
    EXPECT_EQ(changes.take(), 0);
    EXPECT_TRUE(hull.reportsChanges());
}

TEST(ConvexHullOfAContour, LeavesOutVerticesThatAreNotFinite) {
    EXPECT_EQ(hullOf(contour("nan 0, 0 0, 4 0, inf 9, 0 4")), points(hullOfArrow));
    EXPECT_TRUE(hullOf(contour("nan nan")).empty());
}

}  // namespace
