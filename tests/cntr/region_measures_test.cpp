#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <cmath>
#include <vector>

#include "cntr/inertia.h"
#include "tests/support/bits.h"
#include "tests/support/testcontour.h"
#include "tests/support/testregion.h"

using support::Handle;
using support::Holes;
using support::OwnHoles;
using support::points;
using support::region;
using support::same;
using support::shared;
using support::testRegion;
using support::TestRegion;
using testing::Property;
using testing::Throws;
using testing::ThrowsMessage;

namespace {

using Empty = gmContourDefs::EmptyContour;
using BadParams = gmContourDefs::BadParams;

const char* const square = "0 0, 10 0, 10 10, 0 10";
const char* const inSquare = "1 1, 3 1, 3 3, 1 3";

/// A hole that no setter takes.
void addHoleSecretly(const gmRegion& region, const RegionCPtr& hole) {
    const_cast<Holes&>(region.holes()).push_back(hole);
}

TEST(RegionMeasures, AreaIsThatOfTheOutlineLessThoseOfTheHoles) {
    for (const char* outline : {square, "0 10, 10 10, 10 0, 0 0"})
        for (const char* hole : {inSquare, "1 3, 3 3, 3 1, 1 1"}) {
            const gmRegion shape = testRegion(outline, {shared(hole)});
            EXPECT_EQ(shape.area(false), 100.0);
            EXPECT_EQ(shape.area(true), 96.0);
            EXPECT_EQ(shape.area(false), 100.0) << "the two are remembered apart";
        }
    EXPECT_EQ(testRegion(square, {shared(inSquare), shared("5 5, 6 5, 6 6")}).area(true), 95.5);
}

TEST(RegionMeasures, AreaWithHolesIsThatOfTheOutlineWithoutAnyHole) {
    EXPECT_EQ(region(square).area(true), 100.0);
    EXPECT_EQ(region("0 0, 0 0, 0 0").area(true), 0.0);
}

TEST(RegionMeasures, AreaDoesNotLookAtWhereTheHolesLie) {
    EXPECT_EQ(testRegion(inSquare, {shared(square)}).area(true), -96.0);
    EXPECT_EQ(testRegion(square, {shared("20 20, 22 20, 22 22, 20 22")}).area(true), 96.0);
    EXPECT_EQ(testRegion(square, {shared(inSquare), shared(inSquare)}).area(true), 92.0);
}

TEST(RegionMeasures, AreaDoesNotLookAtTheHolesOfHoles) {
    const Handle hole(new gmRegion(points(inSquare)));
    hole->holes(Holes{shared("1.1 1.1, 2 1.1, 2 2, 1.1 2")});
    gmRegion shape = region(square);
    shape.holes(OwnHoles{hole});
    EXPECT_EQ(shape.area(true), 96.0);
    const gmVector<2> center = shape.centerOfMass(true);
    EXPECT_EQ(center, testRegion(square, {shared(inSquare)}).centerOfMass(true));
}

TEST(RegionMeasures, CenterOfMassIsThatOfTheOutline) {
    const auto vertices = points("0 0, 6 0, 0 3");
    EXPECT_TRUE(same(gmRegion(vertices).centerOfMass(false), gf_CenterOfMass(vertices)));
    EXPECT_NEAR(gmRegion(vertices).centerOfMass(false).x(), 2.0, 1e-12);
    EXPECT_NEAR(gmRegion(vertices).centerOfMass(false).y(), 1.0, 1e-12);
    EXPECT_EQ(testRegion(square, {shared(inSquare)}).centerOfMass(false), region(square).centerOfMass(false));
}

TEST(RegionMeasures, CenterOfMassWithHolesCountsThemAsNegativeMasses) {
    const gmRegion shape = testRegion(square, {shared(inSquare), shared("8 1, 9 1, 9 2, 8 2")});
    const gmVector<2> center = shape.centerOfMass(true);
    EXPECT_NEAR(center.x(), (100 * 5 - 4 * 2 - 1 * 8.5) / 95, 1e-12);
    EXPECT_NEAR(center.y(), (100 * 5 - 4 * 2 - 1 * 1.5) / 95, 1e-12);
}

TEST(RegionMeasures, CenterOfMassWithHolesIsTheOriginFromTheSecondCallOn) {
    const gmRegion shape = testRegion(square, {shared(inSquare)});
    EXPECT_NE(shape.centerOfMass(true), gmVector<2>());
    EXPECT_TRUE(same(shape.centerOfMass(true), gmVector<2>()));
    EXPECT_TRUE(same(shape.centerOfMass(true), gmVector<2>()));
    EXPECT_NE(shape.centerOfMass(false), gmVector<2>());
}

TEST(RegionMeasures, CenterOfMassWithHolesIsComputedAgainAfterAChange) {
    gmRegion shape = testRegion(square, {shared(inSquare)});
    const gmVector<2> center = shape.centerOfMass(true);
    shape.holes(shape.holes());
    EXPECT_EQ(shape.centerOfMass(true), center);
    shape.points(points(square));
    EXPECT_EQ(shape.centerOfMass(true), center);
    EXPECT_EQ(shape.centerOfMass(true), gmVector<2>());
}

TEST(RegionMeasures, CopiesKnowThatTheCenterWithHolesWasAsked) {
    const gmRegion shape = testRegion(square, {shared(inSquare)});
    const gmRegion before(shape);
    const gmVector<2> center = shape.centerOfMass(true);
    const gmRegion copy(shape);
    EXPECT_EQ(copy.centerOfMass(true), gmVector<2>());
    gmRegion assigned = testRegion(inSquare, {shared(square)});
    EXPECT_NE(assigned.centerOfMass(true), gmVector<2>());
    assigned = before;
    EXPECT_EQ(assigned.centerOfMass(true), center) << "the source had not been asked";
    assigned = shape;
    EXPECT_EQ(assigned.centerOfMass(true), gmVector<2>());
}

TEST(RegionMeasures, CenterOfMassWithoutHolesIsTheSameOnEveryCall) {
    const gmRegion shape = region(square);
    const gmVector<2> center = shape.centerOfMass(false);
    EXPECT_NE(center, gmVector<2>());
    EXPECT_EQ(shape.centerOfMass(true), center);
    EXPECT_EQ(shape.centerOfMass(true), center);
    const gmRegion other = region(square);
    EXPECT_EQ(other.centerOfMass(true), center);
    EXPECT_EQ(other.centerOfMass(true), center);
}

TEST(RegionMeasures, CenterOfMassIsNotFiniteWhenNoAreaIsLeft) {
    const gmVector<2> center = testRegion(square, {shared("20 20, 30 20, 30 30, 20 30")}).centerOfMass(true);
    EXPECT_FALSE(std::isfinite(center.x()));
    EXPECT_FALSE(std::isfinite(center.y()));
}

TEST(RegionMeasures, InertiaMatrixIsThatOfTheOutline) {
    const auto vertices = points("1 0, 6 2, 3 7, 0 4");
    const gmMatrix<2> matrix = gf_InertiaDataPolygon(vertices).inertiaMatrix();
    const gmRegion shape(vertices);
    EXPECT_TRUE(same(shape.inertiaMatrix(false), matrix));
    EXPECT_TRUE(same(shape.inertiaMatrix(true), matrix)) << "there is no hole";
    EXPECT_TRUE(same(shape.inertiaMatrix(false), matrix));
    const gmMatrix<2> unit = region("0 0, 1 0, 1 1, 0 1").inertiaMatrix(false);
    EXPECT_NEAR(unit(0, 0), 1.0 / 12, 1e-12);
    EXPECT_NEAR(unit(0, 1), 0.0, 1e-12);
    EXPECT_NEAR(unit(1, 1), 1.0 / 12, 1e-12);
}

TEST(RegionMeasures, InertiaMatrixWithHolesIsRefused) {
    const gmRegion shape = testRegion(square, {shared(inSquare)});
    const char* const message = "inertiaMatrix(considerHoles) is not implemented";
    EXPECT_THAT([&] { shape.inertiaMatrix(true); }, ThrowsMessage<BadParams>(message));
    EXPECT_TRUE(same(shape.inertiaMatrix(false), region(square).inertiaMatrix(false)));
    EXPECT_THAT([&] { shape.inertiaMatrix(true); }, ThrowsMessage<BadParams>(message)) << "also when it is known";
}

TEST(RegionMeasures, OfAnOpenContourCountTheClosingEdge) {
    const gmRegion shape(support::openContour(square));
    EXPECT_EQ(shape.area(false), 100.0);
    EXPECT_EQ(shape.centerOfMass(false), region(square).centerOfMass(false));
    EXPECT_TRUE(same(shape.inertiaMatrix(false), region(square).inertiaMatrix(false)));
}

TEST(RegionMeasures, AreRefusedForFewerThanThreeVertices) {
    for (const char* vertices : {"", "1 2", "1 2, 3 4"})
        for (const bool considerHoles : {false, true}) {
            gmRegion shape = region(vertices);
            addHoleSecretly(shape, nullptr);
            const auto refused = Throws<Empty>(Property(&Empty::message, ""));
            EXPECT_THAT([&] { shape.area(considerHoles); }, refused) << vertices;
            EXPECT_THAT([&] { shape.centerOfMass(considerHoles); }, refused) << vertices;
            EXPECT_THAT([&] { shape.inertiaMatrix(considerHoles); }, refused) << vertices;
        }
    EXPECT_EQ(region("1 2, 1 2, 3 4").area(false), 0.0);
}

TEST(RegionMeasures, AreRefusedEvenWhereAnAnswerIsKnown) {
    gmRegion shape = region(square);
    shape.area(true);
    shape.centerOfMass(false);
    shape.inertiaMatrix(false);
    const_cast<std::vector<gmVector<2>>&>(shape.points()).resize(2);
    EXPECT_THROW(shape.area(false), Empty);
    EXPECT_THROW(shape.area(true), Empty);
    EXPECT_THROW(shape.centerOfMass(false), Empty);
    EXPECT_THROW(shape.inertiaMatrix(false), Empty);
}

TEST(RegionMeasures, AreRefusedForAHoleOfFewerThanThreeVertices) {
    const Handle hole(new gmRegion(points("1 1, 3 1")));
    gmRegion shape = region(square);
    shape.holes(OwnHoles{hole});
    const auto refused = Throws<Empty>(Property(&Empty::message, ""));
    for (int again = 0; again < 2; ++again) {
        EXPECT_THAT([&] { shape.area(true); }, refused);
        EXPECT_THAT([&] { shape.centerOfMass(true); }, refused);
    }
    EXPECT_EQ(shape.area(false), 100.0);
    hole->points(points(inSquare));
    EXPECT_EQ(shape.area(true), 96.0) << "a failure is not remembered";
    EXPECT_NE(shape.centerOfMass(true), gmVector<2>()) << "a failure counts as no call";
}

TEST(RegionMeasures, AreRefusedForAnEmptyHandle) {
    gmRegion shape = testRegion(square, {shared(inSquare)});
    addHoleSecretly(shape, nullptr);
    for (int again = 0; again < 2; ++again) {
        EXPECT_THROW(shape.area(true), gmBadPointer);
        EXPECT_THROW(shape.centerOfMass(true), gmBadPointer);
    }
    EXPECT_THROW(shape.inertiaMatrix(true), BadParams);
    EXPECT_EQ(shape.area(false), 100.0);
    EXPECT_EQ(shape.centerOfMass(false), region(square).centerOfMass(false));
}

TEST(RegionMeasures, FillTheOutlinesAnswersOnTheWayToAFailure) {
    TestRegion shape = testRegion(square);
    const Handle hole(new gmRegion(points(inSquare)));
    addHoleSecretly(shape, hole);
    addHoleSecretly(shape, nullptr);
    EXPECT_THROW(shape.centerOfMass(true), gmBadPointer);
    shape.moveSecretly(2, {20, 20});
    const_cast<std::vector<gmVector<2>>&>(hole->points())[2] = {9, 9};
    EXPECT_EQ(shape.area(false), 100.0);
    EXPECT_EQ(shape.centerOfMass(false), region(square).centerOfMass(false));
    EXPECT_EQ(hole->area(false), 4.0);
    EXPECT_EQ(hole->centerOfMass(false), region(inSquare).centerOfMass(false));
}

TEST(RegionMeasures, FillTheCachesOfTheHoles) {
    const Handle hole(new gmRegion(points(inSquare)));
    TestRegion shape = testRegion(square, {hole});
    EXPECT_EQ(shape.area(true), 96.0);
    shape.centerOfMass(true);
    const_cast<std::vector<gmVector<2>>&>(hole->points())[2] = {9, 9};
    EXPECT_EQ(hole->area(false), 4.0);
    EXPECT_EQ(hole->centerOfMass(false), region(inSquare).centerOfMass(false));
    hole->points(points("1 1, 3 1, 3 3"));
    EXPECT_EQ(hole->area(false), 2.0);
}

TEST(RegionMeasures, DoNotNoticeAChangeInAHole) {
    const Handle hole(new gmRegion(points(inSquare)));
    gmRegion shape = testRegion(square, {hole});
    EXPECT_EQ(shape.area(true), 96.0);
    EXPECT_NE(shape.centerOfMass(true), gmVector<2>());
    hole->points(points("1 1, 3 1, 3 3"));
    EXPECT_EQ(shape.area(true), 96.0);
    EXPECT_EQ(shape.centerOfMass(true), gmVector<2>());
    shape.holes(shape.holes());
    EXPECT_EQ(shape.area(true), 98.0);
    EXPECT_NE(shape.centerOfMass(true), gmVector<2>());
}

TEST(RegionMeasures, AreRememberedUntilAChange) {
    TestRegion shape = testRegion(square, {shared(inSquare)});
    const gmMatrix<2> inertia = shape.inertiaMatrix(false);
    const gmVector<2> center = shape.centerOfMass(false);
    EXPECT_EQ(shape.area(false), 100.0);
    EXPECT_EQ(shape.area(true), 96.0);
    shape.moveSecretly(2, {20, 20});
    EXPECT_EQ(shape.area(false), 100.0);
    EXPECT_EQ(shape.area(true), 96.0);
    EXPECT_EQ(shape.centerOfMass(false), center);
    EXPECT_TRUE(same(shape.inertiaMatrix(false), inertia));

    shape.cleanCacheInfo();
    EXPECT_EQ(shape.area(false), 200.0);
    EXPECT_EQ(shape.area(true), 196.0);
    EXPECT_EQ(shape.centerOfMass(false), gmRegion(shape.points()).centerOfMass(false));
    EXPECT_TRUE(same(shape.inertiaMatrix(false), gmRegion(shape.points()).inertiaMatrix(false)));
    shape.points(points(square));
    EXPECT_EQ(shape.area(true), 96.0);
}

TEST(RegionMeasures, AnswerFromTheCachesThatACopyTookOver) {
    TestRegion shape = testRegion(square, {shared(inSquare)});
    const gmMatrix<2> inertia = shape.inertiaMatrix(false);
    const gmVector<2> center = shape.centerOfMass(false);
    EXPECT_EQ(shape.area(true), 96.0);
    shape.moveSecretly(2, {20, 20});
    gmRegion copy(shape);
    gmRegion assigned = region(inSquare);
    EXPECT_EQ(assigned.area(true), 4.0);
    assigned = shape;
    for (const gmRegion* region : {&copy, &assigned}) {
        EXPECT_EQ(region->area(false), 100.0);
        EXPECT_EQ(region->area(true), 96.0);
        EXPECT_EQ(region->centerOfMass(false), center);
        EXPECT_TRUE(same(region->inertiaMatrix(false), inertia));
    }
    copy.points(points(inSquare));
    EXPECT_EQ(copy.area(false), 4.0);
    EXPECT_EQ(shape.area(false), 100.0) << "only the copy's caches are cleared";
    assigned = region(inSquare);
    EXPECT_EQ(assigned.area(true), 4.0) << "what the source does not know is not known";
}

}  // namespace
