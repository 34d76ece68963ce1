// Regions that are changed by what only they keep alive, and what a region leaves behind in plain contours.
#include <gtest/gtest.h>

#include "tests/support/testcontour.h"
#include "tests/support/testregion.h"

using support::Handle;
using support::Holes;
using support::points;
using support::region;
using support::shared;

namespace {

const char* const square = "0 0, 20 0, 20 20, 0 20";

/// A hole of two holes.
Handle doubleHole() {
    Handle hole(new gmRegion(points("1 1, 9 1, 9 9, 1 9")));
    hole->holes(Holes{shared("2 2, 4 2, 4 4"), shared("5 5, 7 5, 7 7")});
    return hole;
}

TEST(RegionAliasing, TakesTheHolesOfAHoleThatItAloneHolds) {
    gmRegion plate = region(square);
    plate.holes(Holes{doubleHole(), shared("11 11, 12 11, 12 12")});
    plate.holes(plate.holes()[0]->holes());
    ASSERT_EQ(plate.holes().size(), 2u);
    EXPECT_EQ(plate.holes()[0]->points(), points("2 2, 4 2, 4 4"));
    EXPECT_EQ(plate.holes()[1]->points(), points("5 5, 7 5, 7 7"));
}

TEST(RegionAliasing, EndsARegionThatLetsGoOfItsLastOwner) {
    Handle a(new gmRegion(points("0 0, 1 0, 1 1")));
    Handle b(new gmRegion(points("5 0, 6 0, 6 1")));
    a->holes(Holes{b});
    b->holes(Holes{a});
    gmRegion* const kept = a.get();
    const RegionCPtr watched = shared("9 9, 10 9, 10 10");
    b->holes(Holes{a, watched});
    a = nullptr;
    b = nullptr;
    EXPECT_EQ(watched->referenceCount(), 2);
    kept->holes(Holes{});  // which ends both
    EXPECT_EQ(watched->referenceCount(), 1);
}

TEST(RegionAliasing, TakesResultsOntoAHole) {
    const Handle hole(new gmRegion(points("1 1, 9 1, 9 9, 1 9")));
    gmRegion plate = region(square);
    plate.holes(Holes{hole});
    plate.regularize(*hole);  // a copy of the plate, which holds itself from now on
    EXPECT_EQ(hole->holes()[0].get(), hole.get());
    EXPECT_THROW(plate.inside({5, 5}, true), gmContourDefs::BadParams);
    hole->holes(Holes{});
    EXPECT_FALSE(plate.inside({5, 5}, true));
}

TEST(RegionAliasing, RefusesToAskAHoleThatIsTheRegionItself) {
    // Without an edge across it, nothing in the outline meets itself.
    const Handle line(new gmRegion(points("0 0, 4 0")));
    line->holes(Holes{line});
    EXPECT_THROW(line->inside({0, 0}, true), gmContourDefs::BadParams);
    EXPECT_FALSE(line->inside({9, 9}, true));
    line->holes(Holes{});
}

TEST(RegionAliasing, LeavesAnOpenContourNoAnswerWithAClosingEdge) {
    const gmRegion closed(support::openContour("0 0, 4 0, 4 3"));
    EXPECT_EQ(closed.length(), 12.0);
    EXPECT_EQ(closed.lineSegs().size(), 3u);
    const gmContour copied(closed);
    EXPECT_FALSE(copied.isClosed());
    EXPECT_EQ(copied.length(), 7.0);
    EXPECT_EQ(copied.lineSegs().size(), 2u);
    gmContour assigned;
    assigned = closed;
    EXPECT_FALSE(assigned.isClosed());
    EXPECT_EQ(assigned.length(), 7.0);
}

TEST(RegionAliasing, KeepsAnswersBetweenRegionsThatWereOpen) {
    support::TestRegion closed;
    closed = support::TestRegion();
    static_cast<gmContour&>(closed) = support::openContour("0 0, 4 0, 4 3");
    EXPECT_EQ(closed.length(), 12.0);
    closed.moveSecretly(1, {5, 0});
    const gmRegion copied(closed);
    EXPECT_EQ(copied.length(), 12.0);
}

TEST(RegionAliasing, AnswersForTheOutlineAloneAsAContourDoes) {
    gmRegion plate = region(square);
    plate.holes(Holes{shared("1 1, 9 1, 9 9, 1 9")});
    const support::TestContour outline = support::contour(square);
    const gmLineSeg through({-1, 5}, {21, 6});
    EXPECT_EQ(plate.intersections(through, true), outline.intersections(through, true));
    EXPECT_EQ(plate.intersections(support::contour("-1 5, 5 5, 5 25")),
              outline.intersections(support::contour("-1 5, 5 5, 5 25")));
    EXPECT_TRUE(plate == outline);
    EXPECT_FALSE(plate != outline);
}

}  // namespace
