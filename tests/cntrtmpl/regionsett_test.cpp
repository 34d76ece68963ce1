// Sets of regions with edge points; and what becomes of these regions and sets when they are copied and end.
#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <memory>
#include <utility>
#include <vector>

#include "tests/support/changes.h"
#include "tests/support/edgelets.h"
#include "tests/support/setqueries.h"

using support::ChangeCounter;
using support::ContourT;
using support::edgeContour;
using support::edgelets;
using support::edgePlate;
using support::Holes;
using support::HolesT;
using support::moveSecretly;
using support::plain;
using support::points;
using support::RegionSetT;
using support::RegionT;
using support::RegionTHandle;
using support::setOf;
using support::shared;
using support::sharedT;
using testing::ElementsAre;
using testing::IsEmpty;

namespace {

using Regions = RegionSetT::Regions;

const char* const square = "0 0, 2 0, 2 2, 0 2";
const char* const crossingSquare = "1 1, 3 1, 3 3, 1 3";
const char* const farSquare = "5 0, 8 0, 8 3, 5 3";

Regions twoRegions() {
    return {sharedT(square), sharedT(farSquare)};
}

RegionCPtr withoutVertices() {
    return RegionCPtr(new gmRegion);
}

// ----- The lists

TEST(RegionSetTModel, DefaultIsTheEmptySet) {
    const RegionSetT set;
    EXPECT_THAT(set.regions(), IsEmpty());
    EXPECT_THAT(set.regionsT(), IsEmpty());
    EXPECT_EQ(set.cachedVectorSize(), 3);
    EXPECT_EQ(set.area(true), 0.0);
    EXPECT_TRUE(set == gmRegionSet());
    const std::unique_ptr<gmPersistent> made(RegionSetT::make());
    ASSERT_NE(dynamic_cast<RegionSetT*>(made.get()), nullptr);
    EXPECT_THAT(dynamic_cast<RegionSetT&>(*made).regionsT(), IsEmpty());
}

TEST(RegionSetTModel, HoldsTheSameObjectsTwice) {
    const Regions list = {sharedT(farSquare), nullptr, sharedT(square)};
    const RegionSetT set(list);
    EXPECT_EQ(set.regionsT(), list);
    EXPECT_EQ(set.regions(), plain(list));
    EXPECT_EQ(set.regions()[0].get(), static_cast<const gmRegion*>(list[0].get()));
    EXPECT_EQ(list[0]->referenceCount(), 3);
    EXPECT_TRUE(set.regions()[1].isNull());
    EXPECT_EQ(set.cachedVectorSize(), 3);
    EXPECT_THAT(RegionSetT(Regions()).regions(), IsEmpty());
}

TEST(RegionSetTModel, TakesHandlesThatMayChangeTheirRegionAndHandsOutACopyOfTheList) {
    const std::vector<RegionTHandle> list = {sharedT(farSquare), nullptr, sharedT(square)};
    const RegionSetT set(list);
    Regions handed = set.regionsT();
    EXPECT_EQ(handed, Regions(list.begin(), list.end()));
    EXPECT_EQ(set.regions(), plain(handed));
    handed.clear();
    EXPECT_EQ(set.regionsT().size(), 3U);
}

TEST(RegionSetTModel, AnswersEveryQueryOfASet) {
    const RegionSetT set(twoRegions());
    const gmRegionSet expected = setOf({square, farSquare});
    EXPECT_EQ(set.area(true), 13.0);
    EXPECT_EQ(set.centerOfMass(false), expected.centerOfMass(false));
    EXPECT_TRUE(set.inside({6, 1}, true));
    EXPECT_EQ(set.distToPoint({4, 1}, false, true, true), 1.0);
    EXPECT_EQ(set.encloseRect(gmXform<2>::I), gmRect({0, 0}, {8, 3}));
    EXPECT_FALSE(set.isSelfIntersecting());
    const RegionSetT crossing(Regions{sharedT(square), sharedT(crossingSquare)});
    EXPECT_EQ(support::textOfRegularized(crossing), support::textOfRegularized(setOf({square, crossingSquare})));
    EXPECT_EQ(support::textOfOuterHull(crossing), support::textOfOuterHull(setOf({square, crossingSquare})));
    EXPECT_EQ(support::textOfRegularized(set), support::text(expected));
}

TEST(RegionSetTModel, EqualsASetOfEqualPlainRegions) {
    const RegionSetT set(twoRegions());
    EXPECT_TRUE(set == RegionSetT(twoRegions())) << "though the regions are not equal";
    EXPECT_FALSE(set != RegionSetT(twoRegions()));
    EXPECT_TRUE(set == setOf({square, farSquare}));
    EXPECT_TRUE(setOf({square, farSquare}) == set);
    EXPECT_FALSE(set != setOf({square, farSquare}));
    EXPECT_TRUE(set != RegionSetT(Regions{sharedT(farSquare), sharedT(square)})) << "the order counts";
    EXPECT_TRUE(set != RegionSetT(Regions{sharedT(square)}));
    const RegionSetT none(Regions{nullptr});
    EXPECT_THROW((void)(none == none), gmBadPointer);
}

TEST(RegionSetTModel, RefusesToMapAndToRegularizeAndChangesNothing) {
    for (const RegionSetT& set : {RegionSetT(), RegionSetT(twoRegions()), RegionSetT(Regions{nullptr})}) {
        RegionSetT out(Regions{sharedT(square)});
        out.reportChanges(true);
        ChangeCounter counter;
        EXPECT_THROW(set.mapT(gmXform<2>::I, out), gmPel::BadWindow);
        EXPECT_THROW(set.regularizeT(out), gmPel::BadWindow);
        EXPECT_EQ(counter.take(), 0);
        EXPECT_EQ(out.regions().size(), 1U);
        EXPECT_EQ(out.regionsT().size(), 1U);
    }
}

// ----- Changes of the plain list

TEST(RegionSetTModel, CannotBeGivenARegionWithVertices) {
    const Regions list = twoRegions();
    RegionSetT set(list);
    const RegionCPtr added = shared("0 5, 1 5, 1 6, 0 6");
    EXPECT_EQ(set.area(true), 13.0);
    EXPECT_THROW(set.add(added), gmBadPointer);
    EXPECT_EQ(set.regions(), (Holes{list[0], list[1], added}));
    EXPECT_EQ(set.regionsT(), (Regions{list[0], list[1], nullptr})) << "as many, and none replaced";
    EXPECT_EQ(set.area(true), 14.0) << "no old answer";
    RegionSetT empty;
    EXPECT_THROW(empty.add(added, gmContourDefs::eRegularize), gmBadPointer);
    EXPECT_EQ(empty.regions(), Holes{added});
    EXPECT_EQ(empty.regionsT(), Regions{nullptr});
    EXPECT_THROW(set.regions(Holes{added}), gmBadPointer);
    EXPECT_EQ(set.regions(), Holes{added});
    EXPECT_EQ(set.regionsT(), Regions{list[0]});
    EXPECT_THROW(set.regions(std::vector<gmPtrHandle<gmRegion>>{sharedT(square)}), gmBadPointer)
        << "not even with edge points";
    EXPECT_EQ(set.area(true), 4.0);
}

TEST(RegionSetTModel, ReplacesTheRegionsBeforeTheOneThatFails) {
    const Regions list = {sharedT(square), sharedT(farSquare), sharedT(crossingSquare)};
    for (const bool null : {false, true}) {
        RegionSetT set(list);
        const Holes plainList = {withoutVertices(), null ? RegionCPtr() : shared(square), withoutVertices()};
        EXPECT_THROW(set.regions(plainList), gmBadPointer);
        EXPECT_EQ(set.regions(), plainList);
        const Regions now = set.regionsT();
        ASSERT_EQ(now.size(), 3U);
        EXPECT_THAT(now[0]->points(), IsEmpty());
        EXPECT_EQ(now[1], list[1]);
        EXPECT_EQ(now[2], list[2]);
    }
}

TEST(RegionSetTModel, TakesRegionsWithoutVertices) {
    const gmPtrHandle<gmRegion> region(new gmRegion);
    region->label(7);
    RegionSetT set(twoRegions());
    set.regions(Holes{region});
    EXPECT_EQ(set.regions(), Holes{region});
    ASSERT_EQ(set.regionsT().size(), 1U);
    EXPECT_NE(static_cast<const gmRegion*>(set.regionsT()[0].get()), region.get()) << "a new one";
    EXPECT_TRUE(*set.regionsT()[0] == RegionT());
    EXPECT_EQ(set.regionsT()[0]->label(), 0U);
    set.add(region);
    EXPECT_EQ(set.regionsT().size(), 2U);
    EXPECT_NE(set.regionsT()[0], set.regionsT()[1]) << "one for each";
    EXPECT_FALSE(set.regionsT()[1].isNull());
    set.regions(Holes());
    EXPECT_THAT(set.regionsT(), IsEmpty());
}

TEST(RegionSetTModel, MakesThePlainListAnewWhenTold) {
    const Regions list = twoRegions();
    RegionSetT set(list);
    static_cast<gmRegionSet&>(set) = setOf({crossingSquare});
    EXPECT_EQ(set.area(true), 4.0);
    EXPECT_EQ(set.regionsT(), list) << "plain assignment leaves them";
    set.reportChanges(true);
    double during = 0.0;
    ChangeCounter counter([&](const gmPersistent&) { during = set.area(true); });
    set.makePointsConsistentWithData();
    EXPECT_EQ(counter.take(), 1);
    EXPECT_EQ(during, 4.0);
    EXPECT_EQ(set.regions(), plain(list));
    EXPECT_EQ(set.area(true), 13.0);
}

TEST(RegionSetTModel, TakesResultsIntoThePlainListAlone) {
    const Regions list = twoRegions();
    RegionSetT out(list);
    EXPECT_EQ(out.area(true), 13.0);
    setOf({square, crossingSquare}).outerHull(out);
    EXPECT_EQ(support::text(out), support::textOfOuterHull(setOf({square, crossingSquare})));
    EXPECT_EQ(out.area(true), 6.0) << "no old answer";
    EXPECT_EQ(out.regionsT(), list);
    setOf({square}).regularize(out);
    EXPECT_EQ(support::text(out), support::text(setOf({square})));
    EXPECT_EQ(out.regionsT(), list);
    RegionSetT crossing(Regions{sharedT(square), sharedT(crossingSquare)});
    crossing.regularize(crossing);
    EXPECT_EQ(crossing.regions().size(), 1U);
    EXPECT_EQ(crossing.regionsT().size(), 2U);
    crossing = RegionSetT(list);
    crossing.regularize(crossing);
    EXPECT_EQ(crossing.regions(), plain(list)) << "there was nothing to clean up";
}

TEST(RegionSetTModel, CallsTheHooksOfDerivedSets) {
    using Watcher = support::HookWatcher<RegionSetT>;
    Watcher::take();
    Watcher set(twoRegions());
    EXPECT_THAT(Watcher::take(), IsEmpty()) << "not in construction";
    set.regions(Holes{withoutVertices()});
    EXPECT_THAT(Watcher::take(), ElementsAre("clean 2/2", "clean 1/2", "data 1/1"));
    set.add(withoutVertices());
    EXPECT_THAT(Watcher::take(), ElementsAre("clean 1/1", "clean 2/1", "data 2/2"));
    set.makePointsConsistentWithData();
    EXPECT_THAT(Watcher::take(), ElementsAre("clean 2/2", "points 2/2"));
    EXPECT_THROW(set.add(nullptr), gmBadPointer);
    EXPECT_THAT(Watcher::take(), ElementsAre("clean 2/2", "clean 3/2"));
    set.cleanCacheInfo();
    EXPECT_THAT(Watcher::take(), ElementsAre("clean 3/3"));
    set = Watcher(twoRegions());
    EXPECT_THAT(Watcher::take(), IsEmpty()) << "assignment is none";
}

// ----- Copies

TEST(RegionSetTCopies, ShareTheRegionsAndTheAnswers) {
    const Regions list = twoRegions();
    RegionSetT set(list);
    set.cachedVectorSize(9);
    set.reportChanges(true);
    RegionSetT assigned(Regions{sharedT(crossingSquare)});
    assigned = set;
    RegionSetT source(set);
    RegionSetT movedTo;
    movedTo = std::move(source);
    const RegionSetT moved(std::move(source));
    for (const RegionSetT& copy : {RegionSetT(set), assigned, movedTo, moved, source}) {
        EXPECT_EQ(copy.regionsT(), list);
        EXPECT_EQ(copy.regions(), plain(list));
        EXPECT_EQ(copy.cachedVectorSize(), 9);
        EXPECT_EQ(copy.area(true), 13.0);
        EXPECT_FALSE(copy.reportsChanges());
    }
    const RegionSetT& self = set;
    set = self;
    EXPECT_EQ(set.regionsT(), list);
    EXPECT_EQ(set.regions(), plain(list));
}

TEST(RegionTCopies, ShareTheHolesAndTheTransform) {
    RegionT region = edgePlate();
    region.reportChanges(true);
    EXPECT_EQ(region.area(true), 96.0);
    moveSecretly(region, 2, {20, 20});
    RegionT assigned = support::edgeRegion("1 1, 2 2", 7);
    assigned = region;
    RegionT source(region);
    RegionT movedTo;
    movedTo = std::move(source);
    const RegionT moved(std::move(source));
    const RegionT& self = region;
    region = self;
    for (const RegionT& copy : {RegionT(region), assigned, movedTo, moved, source, self}) {
        EXPECT_TRUE(copy == region);
        EXPECT_EQ(copy.data(), support::edgePlateData());
        EXPECT_EQ(copy.dataFromPointsXform(), region.dataFromPointsXform());
        EXPECT_EQ(copy.holes(), region.holes());
        EXPECT_EQ(copy.gmRegion::holes(), region.gmRegion::holes());
        EXPECT_EQ(copy.label(), 5U);
        EXPECT_EQ(copy.area(true), 96.0) << "what is remembered comes along";
        EXPECT_FALSE(copy.reportsChanges());
    }
    EXPECT_TRUE(region.reportsChanges());
}

TEST(RegionTCopies, OfOneBaseLeaveWhatIsNotItsOwn) {
    const RegionT other(edgelets("1 2, 3 4, 5 0"), 8);
    RegionT region = edgePlate();
    const RegionT before = region;
    static_cast<gmContour&>(region) = other;
    EXPECT_EQ(region.points(), other.points());
    EXPECT_EQ(region.label(), 8U);
    EXPECT_EQ(region.data(), before.data());
    EXPECT_EQ(region.holes(), before.holes());
    region = before;
    static_cast<ContourT&>(region) = other;
    EXPECT_TRUE(region == other);
    EXPECT_EQ(region.data(), other.data());
    EXPECT_EQ(region.holes(), before.holes());
    EXPECT_EQ(region.gmRegion::holes(), before.gmRegion::holes());
    region = before;
    static_cast<gmRegion&>(region) = other;
    EXPECT_EQ(region.points(), other.points());
    EXPECT_EQ(region.data(), before.data());
    EXPECT_EQ(region.dataFromPointsXform(), before.dataFromPointsXform());
    EXPECT_EQ(region.holes(), before.holes());
    EXPECT_THAT(region.gmRegion::holes(), IsEmpty());
    ContourT contour = edgeContour("1 1", 3);
    contour = before;
    EXPECT_TRUE(contour == before) << "and the other way round";
}

// ----- What only the target keeps alive

TEST(RegionTAliasing, TakesARegionThatItAloneHolds) {
    RegionT region = edgePlate();
    {
        const RegionTHandle hole(new RegionT(edgePlate()));
        hole->holes(HolesT{sharedT(farSquare)});
        region.holes(HolesT{hole});
    }
    region = *region.holes()[0];
    EXPECT_EQ(region.points(), points("0 0, 10 0, 10 10, 0 10"));
    ASSERT_EQ(region.holes().size(), 1U);
    EXPECT_EQ(region.holes()[0]->points(), points(farSquare));
    region.holes(HolesT{RegionTHandle(new RegionT(region))});
    region.holes(region.holes()[0]->holes());
    ASSERT_EQ(region.holes().size(), 1U);
    EXPECT_EQ(region.holes()[0]->points(), points(farSquare));
    region.holes(region.holes());
    ASSERT_EQ(region.holes().size(), 1U);
    static_cast<ContourT&>(region) = *region.holes()[0];
    EXPECT_EQ(region.points(), points(farSquare));
}

TEST(RegionTAliasing, EndsARegionThatLetsGoOfItsLastOwner) {
    RegionTHandle a = sharedT(square);
    RegionTHandle b = sharedT(farSquare);
    const RegionTHandle witness = sharedT(crossingSquare);
    a->holes(HolesT{b});
    b->holes(HolesT{a, witness});
    RegionT* const kept = a.get();
    a = nullptr;
    b = nullptr;
    EXPECT_EQ(witness->referenceCount(), 2);
    kept->holes(HolesT{});  // which ends both
    EXPECT_EQ(witness->referenceCount(), 1);
}

/// A region that owns a set.
struct Owner : RegionT {
    RegionSetT set;
};

TEST(RegionSetTAliasing, TakesASetThatItAloneKeepsAlive) {
    gmPtrHandle<Owner> owner(new Owner);
    owner->set = RegionSetT(twoRegions());
    const Regions list = owner->set.regionsT();
    RegionSetT set(std::vector<RegionTHandle>{owner});
    const Owner* const only = owner.get();
    owner = nullptr;
    set = only->set;
    EXPECT_EQ(set.regionsT(), list);
    EXPECT_EQ(set.regions(), plain(list));
}

/// A chain of regions, each the hole of the next, alternately of one kind and of the other.
RegionTHandle chain(int depth, bool alternating) {
    const RegionT outlines[] = {RegionT(edgelets("0 5, 1 5, 1 6")), RegionT(edgelets(square))};
    RegionTHandle region = sharedT(farSquare);
    for (int i = 0; i < depth; i++) {
        const RegionTHandle next(new RegionT(outlines[i % 2]));
        if (alternating && i % 2 == 1)
            next->holes(plain({region}));
        else
            next->holes(HolesT{region});
        region = next;
    }
    return region;
}

TEST(RegionTAliasing, EndsDeeplyNestedHolesWithoutAStackForThem) {
    for (const bool alternating : {false, true}) {
        const RegionTHandle witness = sharedT(farSquare);
        RegionT region = *chain(100000, alternating);
        region.holes(HolesT{chain(100000, alternating), witness});
        EXPECT_EQ(witness->referenceCount(), 2);
        region = RegionT();
        EXPECT_EQ(witness->referenceCount(), 1);
        RegionTHandle last = chain(100000, alternating);
        last = nullptr;
    }
}

}  // namespace
