#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <memory>
#include <utility>
#include <vector>

#include "tests/support/changes.h"
#include "tests/support/consistent.h"
#include "tests/support/edgelets.h"

using support::Change;
using support::ChangeCounter;
using support::ContourT;
using support::edgeContour;
using support::edgelets;
using support::edgePlate;
using support::edgeRegion;
using support::Holes;
using support::HolesT;
using support::HookWatcher;
using support::moveSecretly;
using support::plain;
using support::points;
using support::RegionT;
using support::RegionTHandle;
using support::scale;
using support::scaling;
using support::shared;
using support::sharedT;
using support::unmarked;
using support::WatchedXform;
using testing::ElementsAre;
using testing::IsEmpty;
using testing::Property;
using testing::Throws;
using testing::ThrowsMessage;

namespace {

using BadParams = gmContourDefs::BadParams;

const char* const square = "0 0, 10 0, 10 10, 0 10";
const char* const largeSquare = "0 0, 20 0, 20 20, 0 20";
const char* const inSquare = "4 4, 6 4, 6 6, 4 6";
const char* const bowTie = "0 0, 2 2, 2 0, 0 2";

/// A region's measures are those of a plain region of the same vertices and plain holes.
void expectPlainMeasures(const RegionT& asked) {
    gmRegion fresh(asked.points());
    fresh.holes(asked.gmRegion::holes());
    for (const bool considerHoles : {false, true}) {
        EXPECT_EQ(asked.area(considerHoles), fresh.area(considerHoles));
        EXPECT_EQ(asked.centerOfMass(considerHoles), fresh.centerOfMass(considerHoles));
        EXPECT_EQ(asked.inside({5, 5}, considerHoles), fresh.inside({5, 5}, considerHoles));
    }
    EXPECT_TRUE(support::same(asked.inertiaMatrix(false), fresh.inertiaMatrix(false)));
    support::expectConsistent(asked);
}

// ----- Construction

TEST(RegionTModel, DefaultIsAnEmptyClosedOutlineWithoutDataTransformAndHoles) {
    const RegionT region;
    EXPECT_THAT(region.points(), IsEmpty());
    EXPECT_THAT(region.data(), IsEmpty());
    EXPECT_TRUE(region.dataFromPointsXform().isNull());
    EXPECT_THAT(region.holes(), IsEmpty());
    EXPECT_THAT(region.gmRegion::holes(), IsEmpty());
    EXPECT_TRUE(region.isClosed());
    EXPECT_EQ(region.label(), 0U);
    EXPECT_EQ(region.cachedVectorSize(), 3);
    EXPECT_THROW(region.datum({1, 2}), gmBadPointer);
}

TEST(RegionTModel, MakesAnEmptyRegionForTheRegistry) {
    const std::unique_ptr<gmPersistent> made(RegionT::make());
    const auto* region = dynamic_cast<RegionT*>(made.get());
    ASSERT_NE(region, nullptr);
    EXPECT_TRUE(*region == RegionT());
}

TEST(RegionTModel, OfEdgePointsHasItsVerticesWhereTheyAre) {
    const RegionT region(edgelets(square), 4294967295UL);
    EXPECT_EQ(region.points(), points(square));
    EXPECT_EQ(region.data(), edgelets(square));
    EXPECT_EQ(region.label(), 4294967295UL);
    EXPECT_TRUE(region.isClosed());
    EXPECT_EQ(region.dataFromPointsXform()->linearXform(), gmXform<2>::I);
    EXPECT_THAT(region.holes(), IsEmpty());
    EXPECT_THAT(region.gmRegion::holes(), IsEmpty());
    EXPECT_EQ(region.area(true), 100.0);
    EXPECT_EQ(RegionT(edgelets(square)).label(), 0U);
    EXPECT_EQ(RegionT(edgelets(bowTie)).points(), points(bowTie)) << "a crossing outline is kept";
}

TEST(RegionTModel, UnderATransformHasTheEdgePointsMappedBackByAClone) {
    const gmPtrHandle<WatchedXform> xform(new WatchedXform(scale(2)));
    const RegionT region(edgelets(largeSquare), xform, 6);
    EXPECT_EQ(region.points(), points(square));
    EXPECT_EQ(region.data(), edgelets(largeSquare));
    EXPECT_EQ(region.label(), 6U);
    EXPECT_EQ(xform->requests().clones, 1);
    EXPECT_EQ(xform->referenceCount(), 1);
    xform->become(scale(100));
    EXPECT_EQ(region.datum({1, 2}), unmarked("2 4")[0]);
    gmPtrHandle_const<gm2XformBase> none;
    EXPECT_EQ(RegionT(edgelets(square), none, 6).points(), points(square));
    EXPECT_EQ(RegionT(edgelets(square), none, 6).dataFromPointsXform()->linearXform(), gmXform<2>::I);
    EXPECT_EQ(RegionT(edgelets(square), xform).label(), 0U);
}

TEST(RegionTModel, OfAContourSharesItsTransformAndHasALabelOfItsOwn) {
    ContourT contour = edgeContour(largeSquare, 2);
    contour.label(7);
    contour.cachedVectorSize(9);
    contour.isClosed(false);
    support::askEverything(contour);
    const RegionT region(contour, 8);
    EXPECT_EQ(region.points(), points(square));
    EXPECT_EQ(region.data(), edgelets(largeSquare));
    EXPECT_EQ(region.dataFromPointsXform(), contour.dataFromPointsXform());
    EXPECT_EQ(region.label(), 8U);
    EXPECT_EQ(region.cachedVectorSize(), 9);
    EXPECT_TRUE(region.isClosed());
    EXPECT_EQ(region.length(), 40.0) << "with the closing edge";
    EXPECT_EQ(region.lineSegs().size(), 4U);
    EXPECT_EQ(RegionT(contour).label(), 0U);
    const RegionT source = edgePlate();
    const ContourT& outline = source;
    EXPECT_THAT(RegionT(outline).holes(), IsEmpty());
    EXPECT_THAT(RegionT(outline).gmRegion::holes(), IsEmpty());
    EXPECT_TRUE(RegionT(ContourT()) == RegionT());
}

TEST(RegionTModel, RefusesALabelThatIsTooLarge) {
    const auto refused = ThrowsMessage<BadParams>("label does not fit in 32 bits");
    EXPECT_THAT([] { RegionT(edgelets(square), 1UL << 32); }, refused);
    EXPECT_THAT([] { RegionT(edgelets(square), scaling(2), 1UL << 32); }, refused);
    EXPECT_THAT([] { RegionT(edgeContour(square), 1UL << 32); }, refused);
}

TEST(RegionTModel, IsAlwaysClosed) {
    using Open = gmContourDefs::RegionCannotBeSetOpen;
    RegionT region = edgePlate();
    region.length();
    moveSecretly(region, 2, {20, 20});
    region.reportChanges(true);
    ChangeCounter counter;
    region.isClosed(true);
    EXPECT_THAT([&] { region.isClosed(false); }, Throws<Open>(Property(&Open::message, "")));
    EXPECT_THROW(static_cast<ContourT&>(region).isClosed(false), Open);
    EXPECT_THROW(static_cast<gmRegion&>(region).isClosed(false), Open);
    EXPECT_TRUE(static_cast<const gmContour&>(region).isClosed());
    EXPECT_EQ(counter.take(), 0);
    EXPECT_EQ(region.length(), 40.0) << "nothing is dropped";
    EXPECT_EQ(region.data(), edgelets(largeSquare));
}

// ----- Data and points

class RegionTChange : public testing::TestWithParam<Change> {};
INSTANTIATE_TEST_SUITE_P(, RegionTChange, testing::ValuesIn(support::changes()),
                         [](const auto& instance) { return std::string(instance.param.name); });

TEST_P(RegionTChange, DropsTheAnswersOfTheOutlineAndOfTheRegion) {
    RegionT region(edgelets("0 0, 16 0, 16 16, 0 16"));
    region.holes(Holes{shared("4 4, 6 4, 6 5")});
    const auto ask = [&] {
        support::askEverything(region);
        region.area(true);
        region.centerOfMass(true);
        region.centerOfMass(false);
        region.inertiaMatrix(false);
    };
    ask();
    moveSecretly(region, 2, {2, -5});
    ask();
    GetParam().make(region);
    expectPlainMeasures(region);
    EXPECT_EQ(region.data().size(), region.points().size());
}

TEST(RegionTData, FollowThePointsThroughEveryBase) {
    RegionT region = edgePlate();
    const auto set = points("0 0, 5 0, 5 30");
    const auto expectSet = [&] {
        EXPECT_EQ(region.points(), set);
        EXPECT_EQ(region.data(), unmarked("0 0, 10 0, 10 60"));
        EXPECT_EQ(region.area(false), 75.0);
        EXPECT_EQ(region.holes().size(), 2U);
        EXPECT_EQ(region.gmRegion::holes().size(), 1U);
        region.data(edgelets(square));
    };
    region.points(set);
    expectSet();
    static_cast<gmContour&>(region).points(set);
    expectSet();
    static_cast<gmRegion&>(region).points(set);
    expectSet();
    static_cast<ContourT&>(region).points(set);
    expectSet();
    static_cast<ContourT&>(region).data(edgelets("2 4, 6 8, 10 0"));
    EXPECT_EQ(region.points(), points("1 2, 3 4, 5 0"));
}

TEST(RegionTHooks, AreReachedByTheSetters) {
    using Watcher = HookWatcher<RegionT>;
    Watcher::take();
    Watcher region(edgelets(square), scaling(2), 3UL);
    EXPECT_THAT(Watcher::take(), IsEmpty()) << "not by the constructors";
    region.data(edgelets(bowTie));
    EXPECT_THAT(Watcher::take(), ElementsAre("clean 4/4", "clean 4/4", "points 4/4"));
    region.points(points("0 0, 8 0, 8 8"));
    EXPECT_THAT(Watcher::take(), ElementsAre("clean 4/4", "clean 3/4", "data 3/3"));
    region.holes(HolesT{});
    EXPECT_THAT(Watcher::take(), ElementsAre("clean 3/3"));
    region.holes(Holes{});
    EXPECT_THAT(Watcher::take(), ElementsAre("clean 3/3", "clean 3/3", "data 3/3"));
    static_cast<gmRegion&>(region).makePointsConsistentWithData();
    EXPECT_THAT(Watcher::take(), ElementsAre("clean 3/3", "clean 3/3", "points 3/3"));
}

TEST(RegionTModel, LetsEverybodyCallWhatDerivedClassesNeed) {
    const RegionT line(edgelets("0 0, 9 0"));
    EXPECT_THROW(line.checkEmptyContour(), gmContourDefs::EmptyContour) << "a region needs three vertices";
    EXPECT_NO_THROW(line.gmContour::checkEmptyContour());
    EXPECT_THROW(ContourT(edgelets("1 1")).checkEmptyContour(), gmContourDefs::EmptyContour);
    EXPECT_NO_THROW(ContourT(edgelets("1 1, 2 2")).checkEmptyContour());
    RegionT region = edgePlate();
    region.computeLineSegs();
    moveSecretly(region, 2, {20, 20});
    EXPECT_EQ(region.area(true), 196.0);
    EXPECT_EQ(region.lineSegs()[2], gmLineSeg({10, 0}, {10, 10}));
    region.cleanCacheInfo();
    EXPECT_EQ(region.lineSegs()[2], gmLineSeg({10, 0}, {20, 20}));
}

TEST(RegionTModel, AnswersTheQueriesOfBothItsBases) {
    const RegionT region = edgePlate();
    const gmLineSeg seg({-1, 5}, {11, 5});
    long hole = 7;
    EXPECT_EQ(region.closestVertexIndex({9, 9}), 2);
    EXPECT_EQ(region.closestVertexIndex({4, 4}, true, hole), 0);
    EXPECT_EQ(hole, 0);
    EXPECT_EQ(region.distToPoint({5, -1}, false), 1.0);
    EXPECT_EQ(region.distToPoint({5, 1}, false, true, true), 0.0);
    EXPECT_EQ(region.closestPoint({5, -1}, false), gmVector<2>(5, 0));
    EXPECT_EQ(region.closestPoint({5, 5.5}, true, true), gmVector<2>(6, 6));
    EXPECT_EQ(region.intersections(seg, true).size(), 2U);
    EXPECT_EQ(region.intersections(seg, true, true).size(), 4U);
    EXPECT_EQ(region.intersections(gmContour(points("5 -1, 5 1"), false)).size(), 1U);
    EXPECT_EQ(region.intersections(gmContour(points("5 -1, 5 4.5"), false), true).size(), 2U);
    EXPECT_EQ(region.encloseRect(gmXform<2>::I), gmRect({0, 0}, {10, 10}));
    EXPECT_FALSE(region.inside({5, 5}, true));
    EXPECT_TRUE(region.inside({5, 5}, false));
    EXPECT_TRUE(region.inside({1.75, 1.5}, true)) << "holes with edge points are not looked at";
    gmContour contour;
    region.map(scale(3), contour);
    EXPECT_EQ(contour.points()[2], gmVector<2>(30, 30));
    gmRegion mapped;
    region.map(scale(3), mapped);
    EXPECT_EQ(mapped.area(false), 900.0);
    expectPlainMeasures(region);
}

// ----- Equality and what is not for edge points

TEST(RegionTModel, EqualsWhatHasTheSameOutlineUnderTheSameTransformObject) {
    const RegionT region = edgePlate();
    RegionT copy(region);
    EXPECT_TRUE(copy == region);
    EXPECT_FALSE(copy != region);
    copy.holes(HolesT{});
    copy.holes(Holes{});
    copy.label(3);
    copy.cachedVectorSize(8);
    EXPECT_TRUE(copy == region) << "nothing else is compared";
    EXPECT_FALSE(edgePlate() == region) << "an equal transform is another";
    EXPECT_TRUE(edgePlate() != region);
    EXPECT_TRUE(RegionT(edgelets(square)) != RegionT(edgelets(square)));
    copy.data(edgelets("0 0, 20 0, 20 20"));
    EXPECT_FALSE(copy == region);
    const ContourT contour(region);
    EXPECT_TRUE(contour == region);
    EXPECT_TRUE(region == contour);
    EXPECT_FALSE(region != contour);
    EXPECT_TRUE(RegionT() == RegionT());
}

TEST(RegionTModel, ComparesWithPlainShapesAsOneOfThem) {
    RegionT region = edgePlate();
    const gmRegion& asRegion = region;
    EXPECT_TRUE(region == gmRegion(points(square)));
    EXPECT_TRUE(gmRegion(points(square)) == region);
    EXPECT_FALSE(region != gmContour(points(square), true));
    EXPECT_TRUE(gmContour(points(square), true) == region);
    EXPECT_TRUE(region != gmContour(points(square), false));
    EXPECT_TRUE(asRegion == edgePlate()) << "seen as plain ones";
    region.cachedVectorSize(8);
    EXPECT_TRUE(region != gmRegion(points(square)));
}

TEST(RegionTModel, RefusesToMapAndToRegularizeAndChangesNothing) {
    for (const RegionT& region : {RegionT(), edgePlate(), RegionT(edgelets(bowTie))}) {
        RegionT out = edgePlate();
        out.reportChanges(true);
        ChangeCounter counter;
        EXPECT_THROW(region.mapT(gmXform<2>::I, out), gmPel::BadWindow);
        EXPECT_THROW(region.regularizeT(out), gmPel::BadWindow);
        EXPECT_THROW(region.convexHullT(out), gmPel::BadWindow);
        EXPECT_EQ(counter.take(), 0);
        EXPECT_EQ(out.data(), edgelets(largeSquare));
        EXPECT_EQ(out.points(), points(square));
        EXPECT_EQ(out.holes().size(), 2U);
    }
}

// ----- Holes

TEST(RegionTHoles, AreTwoListsThatLeaveEachOtherAlone) {
    RegionT region = edgeRegion(largeSquare, 2);
    const RegionTHandle one = sharedT(inSquare);
    const HolesT list = {one, nullptr, one};
    region.holes(list);
    EXPECT_EQ(region.holes(), list) << "the same objects, unchecked";
    EXPECT_EQ(one->referenceCount(), 5);
    EXPECT_THAT(region.gmRegion::holes(), IsEmpty());
    EXPECT_EQ(region.area(true), 100.0);
    EXPECT_EQ(region.data(), edgelets(largeSquare));
    const Holes plainList = {shared("1 1, 2 1, 2 2")};
    region.holes(plainList);
    EXPECT_EQ(region.holes(), list);
    EXPECT_EQ(region.gmRegion::holes(), plainList);
    EXPECT_EQ(region.area(true), 99.5);
    region.holes(HolesT{});
    EXPECT_THAT(region.holes(), IsEmpty());
    EXPECT_EQ(one->referenceCount(), 3) << "as `list` has it twice";
    EXPECT_EQ(region.gmRegion::holes(), plainList);
    region.holes(HolesT{sharedT("5 5, 50 5, 50 50")});
    EXPECT_EQ(region.holes().size(), 1U) << "one that meets the outline is taken";
    RegionT bare;
    bare.holes(list);
    EXPECT_EQ(bare.holes(), list);
}

TEST(RegionTHoles, AreAnnouncedInPlaceAndDropEveryAnswer) {
    RegionT region = edgePlate();
    EXPECT_EQ(region.area(true), 96.0);
    EXPECT_EQ(region.length(), 40.0);
    moveSecretly(region, 2, {20, 20});
    region.reportChanges(true);
    std::size_t seen = 99;
    double area = 0.0;
    ChangeCounter counter([&](const gmPersistent&) {
        seen = region.holes().size();
        area = region.area(true);
    });
    region.holes(HolesT{nullptr, nullptr, nullptr});
    EXPECT_EQ(counter.take(), 1);
    EXPECT_EQ(seen, 3U);
    EXPECT_EQ(area, 96.0);
    EXPECT_EQ(region.area(true), 196.0);
    EXPECT_EQ(region.length(), gmContour(region.points(), true).length());
}

TEST(RegionTHoles, OfThePlainKindHaveTheDataMadeAnewEvenWhenRefused) {
    RegionT region = edgeRegion(largeSquare, 2);
    const RegionTHandle hole = sharedT(inSquare);
    region.holes(plain({hole}));
    EXPECT_EQ(region.area(true), 96.0);
    EXPECT_EQ(region.data(), unmarked(largeSquare));
    region.data(edgelets(largeSquare));
    EXPECT_EQ(region.area(true), 96.0);
    EXPECT_EQ(region.data(), edgelets(largeSquare));
    EXPECT_THROW(region.holes(Holes{shared("5 5, 50 5, 50 50")}), BadParams);
    EXPECT_EQ(region.data(), unmarked(largeSquare));
    EXPECT_EQ(region.gmRegion::holes(), plain({hole}));
    RegionT bare;
    static_cast<gmContour&>(bare) = gmContour(points(square), true);
    EXPECT_THROW(bare.holes(plain({hole})), gmBadPointer) << "without a transform";
    EXPECT_THAT(bare.gmRegion::holes(), IsEmpty());
}

}  // namespace
