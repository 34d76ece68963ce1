#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <memory>
#include <vector>

#include "tests/support/bits.h"
#include "tests/support/changes.h"
#include "tests/support/testcontour.h"
#include "tests/support/testregion.h"

using support::ChangeCounter;
using support::Holes;
using support::openContour;
using support::points;
using support::region;
using support::same;
using support::shared;
using support::testRegion;
using support::TestRegion;
using testing::IsEmpty;
using testing::Property;
using testing::Throws;

namespace {

const char* const square = "0 0, 10 0, 10 10, 0 10";
const char* const inSquare = "4 4, 6 4, 6 6, 4 6";
const char* const bowTie = "0 0, 2 2, 2 0, 0 2";

constexpr auto keep = gmContourDefs::eKeep;
constexpr auto outerHull = gmContourDefs::eOuterHull;
constexpr auto regularize = gmContourDefs::eRegularize;

gmRegion plate(const char* hole = inSquare) {
    gmRegion plate = region(square);
    plate.holes(Holes{shared(hole)});
    return plate;
}

/// Everything that a region answers of its outline is what a region that is made anew answers.
void expectConsistentMeasures(const gmRegion& asked) {
    const gmRegion fresh(asked.points());
    EXPECT_EQ(asked.area(false), fresh.area(false));
    EXPECT_EQ(asked.centerOfMass(false), fresh.centerOfMass(false));
    EXPECT_TRUE(same(asked.inertiaMatrix(false), fresh.inertiaMatrix(false)));
    gmRegion cleaned, cleanedFresh;
    asked.regularize(cleaned);
    fresh.regularize(cleanedFresh);
    EXPECT_EQ(cleaned, cleanedFresh);
    asked.outerHull(cleaned);
    fresh.outerHull(cleanedFresh);
    EXPECT_EQ(cleaned, cleanedFresh);
    EXPECT_EQ(asked.length(), fresh.length());
    EXPECT_EQ(asked.lineSegs(), fresh.lineSegs());
    EXPECT_TRUE(same(asked.encloseRect(gmXform<2>::I), fresh.encloseRect(gmXform<2>::I)));
}

TEST(RegionModel, DefaultIsAnEmptyClosedOutlineWithoutHoles) {
    const gmRegion region;
    EXPECT_THAT(region.points(), IsEmpty());
    EXPECT_THAT(region.holes(), IsEmpty());
    EXPECT_TRUE(region.isClosed());
    EXPECT_EQ(region.label(), 0U);
    EXPECT_EQ(region.cachedVectorSize(), 3);
    EXPECT_FALSE(region.reportsChanges());
}

TEST(RegionModel, MakesAnEmptyRegionForTheRegistry) {
    const std::unique_ptr<gmPersistent> made(gmRegion::make());
    const auto* region = dynamic_cast<gmRegion*>(made.get());
    ASSERT_NE(region, nullptr);
    EXPECT_EQ(*region, gmRegion());
    EXPECT_THAT(region->holes(), IsEmpty());
}

TEST(RegionModel, OfPointsIsAClosedContourOfThemWithLabelZero) {
    const auto vertices = points("1 2, 3 4, 3 4, nan inf");
    const gmRegion region(vertices);
    EXPECT_TRUE(same(region.points(), vertices));
    EXPECT_TRUE(region.isClosed());
    EXPECT_EQ(region.label(), 0U);
    EXPECT_EQ(region.cachedVectorSize(), 3);
    EXPECT_THAT(region.holes(), IsEmpty());
    EXPECT_TRUE(gmContour(region).isClosed()) << "also when only its contour part is copied";
}

TEST(RegionModel, OfAContourHasItsVerticesAndLabel) {
    gmContour contour(points(square), true, 4294967295UL);
    contour.cachedVectorSize(8);
    const gmRegion region(contour);
    EXPECT_EQ(region.points(), points(square));
    EXPECT_EQ(region.label(), 4294967295UL);
    EXPECT_EQ(region.cachedVectorSize(), 8);
    EXPECT_THAT(region.holes(), IsEmpty());
    EXPECT_EQ(contour.points(), points(square));
}

TEST(RegionModel, OfAnOpenContourHasItsClosingEdgeInEveryQuery) {
    const gmRegion region(openContour("0 0, 4 0, 4 3", 9));
    EXPECT_TRUE(region.isClosed());
    EXPECT_EQ(region.label(), 9U);
    EXPECT_EQ(region.length(), 12.0);
    EXPECT_EQ(region.lineSegs().size(), 3U);
    EXPECT_EQ(region.area(false), 6.0);
    EXPECT_TRUE(region.inside({3, 1}, false));
    EXPECT_EQ(region.distToPoint({0, 1.5}, false), gmRegion(points("0 0, 4 0, 4 3")).distToPoint({0, 1.5}, false));
    EXPECT_EQ(region.intersections(gmLineSeg({1, -1}, {1, 3}), true, false).size(), 2U);
    EXPECT_EQ(region, gmRegion(points("0 0, 4 0, 4 3")));
}

TEST(RegionModel, TakesNothingOverThatAnOpenContourRemembers) {
    const support::TestContour open = openContour(bowTie);
    open.length();
    open.meanPosition();
    open.lineSegs();
    open.isSelfIntersecting();
    open.medianFeatureSize();
    open.encloseRect(gmXform<2>::I);
    const gmRegion region(open);
    EXPECT_EQ(region.length(), gmRegion(points(bowTie)).length());
    EXPECT_EQ(region.lineSegs().size(), 4U);
    expectConsistentMeasures(region);
    EXPECT_EQ(gmRegion(open, regularize), gmRegion(points(bowTie), regularize));
}

TEST(RegionModel, OfAContourThatIsARegionHasNoHoles) {
    const gmRegion source = plate();
    const gmContour& outline = source;
    EXPECT_THAT(gmRegion(outline).holes(), IsEmpty());
    EXPECT_EQ(gmRegion(outline), source);
}

TEST(RegionModel, OfAPolygonHasAllItsVerticesAndLabelZero) {
    const gmRegion region(gmPolygon(points("0 0, 4 0, 4 3"), gmPolygon::eNonZero));
    EXPECT_EQ(region.points(), points("0 0, 4 0, 4 3"));
    EXPECT_TRUE(region.isClosed());
    EXPECT_EQ(region.length(), 12.0);
    EXPECT_EQ(region.label(), 0U);
    EXPECT_EQ(gmRegion(gmPolygon(points("0 0, 4 0, 4 3, 0 0"), gmPolygon::eEvenOdd)).points().size(), 4U);
    EXPECT_EQ(gmRegion(gmPolygon()), gmRegion());
}

TEST(RegionModel, KeepsACrossingOutlineUnlessToldOtherwise) {
    EXPECT_EQ(gmRegion(points(bowTie)).points(), points(bowTie));
    EXPECT_EQ(gmRegion(points(bowTie), keep).points(), points(bowTie));
    EXPECT_EQ(gmRegion(openContour(bowTie, 7), keep).points(), points(bowTie));
    EXPECT_EQ(gmRegion(openContour(bowTie, 7)).label(), 7U);
    EXPECT_EQ(gmRegion(gmPolygon(points(bowTie), gmPolygon::eEvenOdd)).points(), points(bowTie));
}

TEST(RegionModel, AModeThatIsNoneKeepsTheOutline) {
    for (const int number : {-1, 3, 4, 256, 257, 1 << 30}) {
        const auto mode = static_cast<gmContourDefs::IntersectionMode>(number);
        EXPECT_EQ(gmRegion(points(bowTie), mode).points(), points(bowTie)) << number;
        EXPECT_EQ(gmRegion(openContour(bowTie), mode).points(), points(bowTie)) << number;
        EXPECT_EQ(gmRegion(gmPolygon(points(bowTie), gmPolygon::eEvenOdd), mode).points(), points(bowTie)) << number;
    }
}

TEST(RegionModel, EveryConstructorAppliesTheMode) {
    const auto regularized = points("2 0, 1 1, 0 0, 0 2, 1 1, 2 2");
    const auto hull = points("1 1, 0 0, 0 2, 1 1, 2 2, 2 0");
    const gmPolygon polygon(points(bowTie), gmPolygon::eEvenOdd);
    EXPECT_EQ(gmRegion(points(bowTie), regularize).points(), regularized);
    EXPECT_EQ(gmRegion(openContour(bowTie), regularize).points(), regularized);
    EXPECT_EQ(gmRegion(polygon, regularize).points(), regularized);
    EXPECT_EQ(gmRegion(points(bowTie), outerHull).points(), hull);
    EXPECT_EQ(gmRegion(openContour(bowTie), outerHull).points(), hull);
    EXPECT_EQ(gmRegion(polygon, outerHull).points(), hull);
    expectConsistentMeasures(gmRegion(points(bowTie), regularize));
    expectConsistentMeasures(gmRegion(openContour(bowTie), outerHull));
}

TEST(RegionModel, ACleanedUpRegionHasLabelZero) {
    gmContour contour(points(bowTie), false, 7);
    contour.cachedVectorSize(8);
    for (const auto mode : {regularize, outerHull}) {
        EXPECT_EQ(gmRegion(contour, mode).label(), 0U);
        EXPECT_EQ(gmRegion(contour, mode).cachedVectorSize(), 3);
        EXPECT_EQ(gmRegion(openContour(square, 7), mode).label(), 7U) << "there was nothing to clean up";
    }
}

TEST(RegionModel, SettingItClosedIsNoChange) {
    TestRegion shape = testRegion(square);
    EXPECT_EQ(shape.area(false), 100.0);
    EXPECT_EQ(shape.length(), 40.0);
    shape.moveSecretly(2, {20, 20});
    shape.reportChanges(true);
    ChangeCounter changes;
    shape.isClosed(true);
    static_cast<gmContour&>(shape).isClosed(true);
    EXPECT_EQ(changes.take(), 0);
    EXPECT_TRUE(shape.isClosed());
    EXPECT_EQ(shape.area(false), 100.0);
    EXPECT_EQ(shape.length(), 40.0);
}

TEST(RegionModel, CannotBeSetOpen) {
    using Open = gmContourDefs::RegionCannotBeSetOpen;
    TestRegion shape = testRegion(square);
    shape.holes(Holes{shared(inSquare)});
    EXPECT_EQ(shape.area(true), 96.0);
    shape.moveSecretly(2, {20, 20});
    shape.reportChanges(true);
    ChangeCounter changes;
    EXPECT_THAT([&] { shape.isClosed(false); }, Throws<Open>(Property(&Open::message, "")));
    EXPECT_THROW(static_cast<gmContour&>(shape).isClosed(false), Open);
    EXPECT_EQ(changes.take(), 0);
    EXPECT_TRUE(shape.isClosed());
    EXPECT_EQ(shape.area(true), 96.0) << "the answers were dropped";
    EXPECT_EQ(shape.holes().size(), 1U);
}

TEST(RegionModel, NeedsThreeVerticesToBeMeasured) {
    using Empty = gmContourDefs::EmptyContour;
    for (const char* vertices : {"", "1 2", "1 2, 3 4"}) {
        const TestRegion shape = testRegion(vertices);
        EXPECT_THAT([&] { shape.checkEmptyContour(); }, Throws<Empty>(Property(&Empty::message, ""))) << vertices;
    }
    EXPECT_NO_THROW(testRegion("1 2, 1 2, 1 2").checkEmptyContour());
    EXPECT_NO_THROW(testRegion("1 2, 3 4").gmContour::checkEmptyContour());
}

TEST(RegionModel, IsChangedThroughItsContour) {
    gmRegion shape = plate();
    shape.label(4);
    EXPECT_EQ(shape.area(true), 96.0);
    gmContour& contour = shape;
    contour.points(points("0 0, 20 0, 20 20, 0 20"));
    EXPECT_EQ(shape.area(true), 396.0);
    EXPECT_EQ(shape.holes().size(), 1U) << "the holes are not the contour's";
    EXPECT_EQ(shape.label(), 4U);
    contour.label(5);
    EXPECT_EQ(shape.label(), 5U);
    openContour("0 0, 8 0, 8 8", 6).map(gmXform<2>::I, contour);
    EXPECT_EQ(shape.area(false), 32.0);
    EXPECT_EQ(shape.area(true), 28.0);
    EXPECT_TRUE(shape.isClosed());
    EXPECT_EQ(shape.length(), gmRegion(points("0 0, 8 0, 8 8")).length());
}

TEST(RegionModel, LabelAndCachedVectorSizeDropNothing) {
    TestRegion shape = testRegion(square);
    EXPECT_EQ(shape.area(false), 100.0);
    shape.moveSecretly(2, {20, 20});
    shape.label(5);
    shape.cachedVectorSize(7);
    EXPECT_EQ(shape.area(false), 100.0);
    EXPECT_EQ(shape.label(), 5U);
    EXPECT_EQ(shape.cachedVectorSize(), 7);
    EXPECT_THROW(shape.label(1UL << 32), gmContourDefs::BadParams);
    EXPECT_THROW(shape.cachedVectorSize(-1), gmContourDefs::BadParams);
    EXPECT_EQ(shape.label(), 5U);
    EXPECT_EQ(shape.cachedVectorSize(), 7);
}

TEST(RegionModel, CleaningUpTellsWhileTheOldAnswersAreStillKnown) {
    TestRegion shape = testRegion(square);
    EXPECT_EQ(shape.area(false), 100.0);
    shape.moveSecretly(2, {20, 20});
    shape.reportChanges(true);
    double during = 0.0;
    ChangeCounter changes([&](const gmPersistent&) { during = shape.area(false); });
    shape.cleanCacheInfo();
    EXPECT_EQ(changes.take(), 1);
    EXPECT_EQ(during, 100.0);
    EXPECT_EQ(shape.area(false), 200.0);
}

TEST(RegionModel, EqualityIsThatOfTheOutlines) {
    EXPECT_TRUE(region(square) == region(square));
    EXPECT_FALSE(region(square) != region(square));
    EXPECT_TRUE(region(square) != region("0 0, 10 0, 10 10, 0 10.5"));
    EXPECT_FALSE(region(square) == region(inSquare));
    gmRegion labelled = region(square);
    labelled.label(5);
    EXPECT_TRUE(labelled == region(square));
    labelled.cachedVectorSize(5);
    EXPECT_FALSE(labelled == region(square));
    EXPECT_TRUE(gmRegion(openContour(square)) == region(square));
    EXPECT_TRUE(gmContour(points(square), true) == region(square));
    EXPECT_FALSE(openContour(square) == region(square));
}

TEST(RegionMap, MapsTheOutlineAndNotTheHoles) {
    const gmXform<2> xform(gmMatrix<2>(0, -2, 3, 1), {10, 20});
    gmRegion shape = region("1 2, 3 4, 5 0");
    shape.holes(Holes{shared("2.9 2, 3.1 2, 3 2.1")});
    shape.label(9);
    gmRegion out;
    shape.map(xform, out);
    EXPECT_EQ(out.points(), points("6 25, 2 33, 10 35"));
    EXPECT_THAT(out.holes(), IsEmpty());
    EXPECT_EQ(out.label(), 9U);
    EXPECT_EQ(shape.points(), points("1 2, 3 4, 5 0"));
    EXPECT_EQ(shape.holes().size(), 1U);
}

TEST(RegionMap, ReplacesWhatTheTargetWas) {
    gmRegion source = region(square);
    source.cachedVectorSize(8);
    gmRegion out = plate();
    out.label(3);
    out.cachedVectorSize(9);
    EXPECT_EQ(out.area(true), 96.0);
    source.map(gmXform<2>(gmMatrix<2>(2, 0, 0, 1), {0, 0}), out);
    EXPECT_EQ(out.area(true), 200.0);
    EXPECT_THAT(out.holes(), IsEmpty());
    EXPECT_EQ(out.label(), 0U);
    EXPECT_EQ(out.cachedVectorSize(), 3);
    EXPECT_EQ(source.cachedVectorSize(), 8);
}

TEST(RegionMap, KeepsACrossingOutline) {
    gmRegion out;
    region(bowTie).map(gmXform<2>::I, out);
    EXPECT_EQ(out.points(), points(bowTie));
    gmRegion().map(gmXform<2>::I, out);
    EXPECT_THAT(out.points(), IsEmpty());
}

TEST(RegionMap, OntoItselfKeepsTheLabelAndDropsTheHoles) {
    gmRegion shape = plate();
    shape.label(9);
    EXPECT_EQ(shape.area(true), 96.0);
    shape.map(gmXform<2>(gmMatrix<2>(2, 0, 0, 2), {1, 0}), shape);
    EXPECT_EQ(shape.points(), points("1 0, 21 0, 21 20, 1 20"));
    EXPECT_THAT(shape.holes(), IsEmpty());
    EXPECT_EQ(shape.label(), 9U);
    EXPECT_EQ(shape.area(true), 400.0);
}

TEST(RegionMap, IsOneChangeOfTheTargetItsLabels) {
    gmRegion source = region(square);
    source.label(9);
    source.reportChanges(true);
    gmRegion out = plate();
    out.reportChanges(true);
    int announced = 0;
    ChangeCounter changes([&](const gmPersistent& object) {
        EXPECT_EQ(&object, static_cast<const gmPersistent*>(&out));
        EXPECT_EQ(out.points(), points("1 0, 11 0, 11 10, 1 10"));
        EXPECT_EQ(out.label(), 0U);
        ++announced;
    });
    source.map(gmXform<2>(gmMatrix<2>(1, 0, 0, 1), {1, 0}), out);
    EXPECT_EQ(announced, 1);
    EXPECT_EQ(out.label(), 9U);
    EXPECT_TRUE(out.reportsChanges());
}

}  // namespace
