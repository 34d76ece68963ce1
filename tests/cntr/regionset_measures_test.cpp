// What region sets answer from their regions' answers, and what they remember of it.
#include <gtest/gtest.h>

#include <cmath>
#include <functional>
#include <limits>
#include <string>
#include <vector>

#include "cntr/inertia.h"
#include "tests/support/bits.h"
#include "tests/support/changes.h"
#include "tests/support/setqueries.h"

using support::ChangeCounter;
using support::regionsOf;
using support::RememberedSetQuery;
using support::same;
using support::setOf;
using support::shared;
using support::TestRegionSet;
using support::text;
using Handles = std::vector<gmPtrHandle<gmRegion>>;
using Regions = std::vector<RegionCPtr>;

namespace {

using EmptySet = gmContourDefs::EmptyRegionSet;
const double infinity = std::numeric_limits<double>::infinity();

RegionCPtr drilled(const std::string& outline, const char* hole) {
    gmPtrHandle<gmRegion> region(new gmRegion(std::vector<gmVector<2>>{{0, 0}}));
    region->holes(support::Holes{shared(hole)});
    region->points(support::points(outline));  // which may meet the hole now
    return region;
}

TEST(RegionSetMeasures, OfAnEmptySet) {
    TestRegionSet set;
    for (const bool holes : {false, true}) {
        EXPECT_EQ(set.area(holes), 0.0);
        EXPECT_FALSE(set.inside({0, 0}, holes));
        EXPECT_THROW(set.centerOfMass(holes), EmptySet);
        EXPECT_THROW(set.inertiaMatrix(holes), EmptySet);
        EXPECT_THROW(set.distToPoint({0, 0}, holes, holes, holes), EmptySet);
    }
    try {
        set.encloseRect(gmXform<2>::I);
        ADD_FAILURE();
    } catch (const EmptySet& error) {
        EXPECT_EQ(error.message(), "");
    }
    set.setRegions(regionsOf({"0 0, 1 0, 1 1"}));
    EXPECT_EQ(set.area(false), 0.0) << "that is remembered";
    EXPECT_EQ(set.area(true), 0.0);
    EXPECT_NE(set.centerOfMass(true), gmVector<2>()) << "that is not";
}

TEST(RegionSetMeasures, LookForRegionsBeforeTheyRemember) {
    TestRegionSet set(regionsOf({"0 0, 1 0, 1 1"}));
    for (const bool holes : {false, true}) {
        set.centerOfMass(holes);
        set.inertiaMatrix(holes);
    }
    set.encloseRect(gmXform<2>::I);
    set.setRegions({});
    for (const bool holes : {false, true}) {
        EXPECT_THROW(set.centerOfMass(holes), EmptySet);
        EXPECT_THROW(set.inertiaMatrix(holes), EmptySet);
    }
    EXPECT_THROW(set.encloseRect(gmXform<2>::I), EmptySet);
}

TEST(RegionSetMeasures, AddUpTwoSquares) {
    const gmRegionSet set = setOf({"-0.5 -0.5, 0.5 -0.5, 0.5 0.5, -0.5 0.5", "3.5 -0.5, 4.5 -0.5, 4.5 0.5, 3.5 0.5"});
    EXPECT_EQ(set.area(true), 2.0);
    EXPECT_NEAR(set.centerOfMass(true).x(), 2.0, 1e-15);
    EXPECT_EQ(set.centerOfMass(true).y(), 0.0);
    EXPECT_NEAR(set.inertiaMatrix(true)(0, 0), 2 * (1.0 / 12 + 4), 1e-12);
    EXPECT_NEAR(set.inertiaMatrix(true)(1, 1), 2.0 / 12, 1e-12);
}

TEST(RegionSetMeasures, CountAnOverlapForEachRegion) {
    EXPECT_EQ(setOf({"0 0, 4 0, 4 4, 0 4", "2 2, 6 2, 6 6, 2 6"}).area(false), 32.0);
    const RegionCPtr one = shared("0 0, 1 0, 1 1, 0 1");
    EXPECT_EQ(gmRegionSet(Regions{one, one}).area(false), 2.0);
}

TEST(RegionSetMeasures, WithAndWithoutHolesAreApart) {
    const gmRegionSet set(Regions{drilled("0 0, 8 0, 8 8, 0 8", "1 1, 3 1, 3 3, 1 3"), shared("9 0, 10 0, 10 1, 9 1")});
    EXPECT_EQ(set.area(true), 61.0);
    EXPECT_EQ(set.area(false), 65.0);
    EXPECT_EQ(set.area(true), 61.0);
    const gmVector<2> with = set.centerOfMass(true);
    const gmVector<2> without = set.centerOfMass(false);
    EXPECT_GT(with.y(), without.y());
    EXPECT_TRUE(same(set.centerOfMass(true), with)) << "the set remembers, though the region does not";
    EXPECT_TRUE(same(set.centerOfMass(false), without));
    EXPECT_NEAR(gmRegionSet(set.regions()).centerOfMass(true).x(), 9.5 / 61.0, 1e-15)
        << "a second set gets (0, 0) for the region with the hole";
}

TEST(RegionSetMeasures, GiveTheOriginAsTheCenterOfRegionsWithoutArea) {
    EXPECT_EQ(setOf({"1 1, 2 2, 3 3", "5 1, 6 1, 7 1"}).centerOfMass(true), gmVector<2>());
}

/// A square, a hole alone of the same size elsewhere, and a sliver: `sliver` is the area of them all.
gmRegionSet cancelling(double sliver, bool negative) {
    const std::string outline = "0 0, " + text(sliver) + " 0, " + text(sliver) + " 1, 0 1";
    return gmRegionSet(Regions{shared("5 5, 6 5, 6 6, 5 6"), drilled("0 0, 1 0, 2 0", "7 2, 8 2, 8 3, 7 3"),
                               negative ? drilled("0 0, 1 0, 2 0", outline.c_str()) : shared(outline.c_str())});
}

TEST(RegionSetMeasures, GiveTheOriginAsTheCenterOfHardlyAnyAreaInAll) {
    for (const bool negative : {false, true}) {
        ASSERT_EQ(cancelling(1e-15, negative).area(true), negative ? -1e-15 : 1e-15);
        EXPECT_EQ(cancelling(1e-15, negative).centerOfMass(true), gmVector<2>());
        EXPECT_GT(std::fabs(cancelling(1.0001e-15, negative).centerOfMass(true).x()), 1e14);
    }
}

TEST(RegionSetMeasures, CombineMomentsAboutTheCommonCenter) {
    const gmRegionSet set = setOf({"0 0, 4 0, 4 1, 0 1", "7 3, 9 3, 9 8, 7 8", "-1 -1, -2 -3, -5 0"});
    gm_InertiaData all;
    for (const RegionCPtr& region : set.regions())
        all = all + gm_InertiaData(region->area(false), region->centerOfMass(false), region->inertiaMatrix(false));
    EXPECT_TRUE(same(set.inertiaMatrix(false), all.inertiaMatrix()));
    EXPECT_TRUE(same(set.inertiaMatrix(true), all.inertiaMatrix()));
}

TEST(RegionSetMeasures, RefuseMomentsWithHolesAndRememberNothing) {
    TestRegionSet set(Regions{shared("20 0, 21 0, 21 1"), drilled("0 0, 8 0, 8 8, 0 8", "1 1, 3 1, 3 3, 1 3")});
    set.inertiaMatrix(false);
    set.reportChanges(true);
    ChangeCounter counter;
    for (int call = 0; call < 2; call++)
        EXPECT_THROW(set.inertiaMatrix(true), gmContourDefs::BadParams);
    EXPECT_EQ(counter.take(), 0);
    set.setRegions(regionsOf({"0 0, 1 0, 1 1"}));
    EXPECT_TRUE(same(set.inertiaMatrix(true), setOf({"0 0, 1 0, 1 1"}).inertiaMatrix(true)));
}

TEST(RegionSetMeasures, AskForTheAreaFirstThenTheCenterThenTheMoments) {
    // A hole without area is refused by the area, before the moments refuse any hole.
    EXPECT_THROW(gmRegionSet(Regions{drilled("0 0, 8 0, 8 8, 0 8", "1 1, 3 1")}).inertiaMatrix(true),
                 gmContourDefs::EmptyContour);
    // A region with holes tells its centre once, and has told it by the time its moments are refused.
    const gmRegionSet set(Regions{drilled("0 0, 8 0, 8 8, 0 8", "1 1, 3 1, 3 3, 1 3")});
    EXPECT_THROW(set.inertiaMatrix(true), gmContourDefs::BadParams);
    EXPECT_EQ(set.centerOfMass(true), gmVector<2>());
}

TEST(RegionSetMeasures, FailAtAnEmptyHandleOrAtARegionsFailureAndRememberNothing) {
    const RegionCPtr square = shared("0 0, 1 0, 1 1, 0 1");
    for (const RegionCPtr& bad : {RegionCPtr(), shared("5 5, 6 6")}) {
        TestRegionSet set(Regions{square, bad});
        set.reportChanges(true);
        ChangeCounter counter;
        const auto refuses = [&](const std::function<void()>& query) {
            if (bad.isNull())
                EXPECT_THROW(query(), gmBadPointer);
            else
                EXPECT_THROW(query(), gmContourDefs::EmptyContour);
        };
        for (const bool holes : {false, true}) {
            refuses([&] { set.area(holes); });
            refuses([&] { set.centerOfMass(holes); });
            refuses([&] { set.inertiaMatrix(holes); });
        }
        if (bad.isNull()) {
            refuses([&] { set.encloseRect(gmXform<2>::I); });
            refuses([&] { set.distToPoint({5, 5}, false, false, false); });
        }
        EXPECT_EQ(counter.take(), 0);
        set.setRegions(Regions{square});
        for (const bool holes : {false, true}) {
            EXPECT_EQ(set.area(holes), 1.0);
            EXPECT_EQ(set.centerOfMass(holes), gmVector<2>(0.5, 0.5));
            EXPECT_NE(set.inertiaMatrix(holes), gmMatrix<2>());
        }
        EXPECT_EQ(set.encloseRect(gmXform<2>::I).upper(), gmVector<2>(1, 1));
    }
}

TEST(RegionSetMeasures, FindPointsInsideAnyRegionAndAskNoFurther) {
    const gmRegionSet set(Regions{shared("0 0, 1 0, 1 1, 0 1"), drilled("4 0, 8 0, 8 4, 4 4", "5 1, 6 1, 6 2, 5 2")});
    EXPECT_TRUE(set.inside({0.5, 0.4}, true));
    EXPECT_TRUE(set.inside({7.5, 3.4}, true));
    EXPECT_FALSE(set.inside({5.5, 1.4}, true));
    EXPECT_TRUE(set.inside({5.5, 1.4}, false));
    EXPECT_FALSE(set.inside({2, 2}, false));
    const gmRegionSet withNone(Regions{set.regions()[0], nullptr});
    EXPECT_TRUE(withNone.inside({0.5, 0.4}, true));
    EXPECT_THROW(withNone.inside({7, 7}, true), gmBadPointer);
}

TEST(RegionSetMeasures, GiveTheSmallestDistanceWithTheFlagsAsTheyAre) {
    const Regions regions = {drilled("0 0, 9 0, 9 9, 0 9", "2 2, 4 2, 4 5, 2 5"), shared("90 0, 91 0, 91 1")};
    for (const gmVector<2>& p : {gmVector<2>(3, 4.5), gmVector<2>(6, 3), gmVector<2>(20, 3)})
        for (int flags = 0; flags < 8; flags++) {
            const bool a = flags & 1, b = flags & 2, c = flags & 4;
            const double d = regions[0]->distToPoint(p, a, b, c);
            EXPECT_EQ(gmRegionSet(Regions{regions[0]}).distToPoint(p, a, b, c), d) << flags;
            EXPECT_EQ(gmRegionSet(regions).distToPoint(p, a, b, c), d) << flags;
            EXPECT_EQ(gmRegionSet(Regions{regions[1], regions[0]}).distToPoint(p, a, b, c), d) << flags;
        }
    TestRegionSet set(regions);
    set.distToPoint({95, 0}, false, true, false);
    set.setRegions(Regions{regions[0]});
    EXPECT_EQ(set.distToPoint({95, 0}, false, true, false), 86.0) << "not remembered";
    EXPECT_FALSE(set.inside({90.9, 0.5}, true));
}

TEST(RegionSetMeasures, TakeADistanceThatIsNoNumberForNone) {
    const RegionCPtr bad = shared("nan nan, nan nan, nan nan");
    const RegionCPtr good = shared("0 0, 1 0, 1 1, 0 1");
    EXPECT_EQ(gmRegionSet(Regions{bad, good}).distToPoint({3, 0}, true, false, false), 2.0);
    EXPECT_EQ(gmRegionSet(Regions{good, bad}).distToPoint({3, 0}, true, false, false), 2.0);
    EXPECT_EQ(gmRegionSet(Regions{bad}).distToPoint({3, 0}, true, false, false), infinity);
}

// ----- What is remembered, and for how long

TestRegionSet setWith(const Regions& regions) {
    return TestRegionSet(regions);
}

class RegionSetMemory : public testing::TestWithParam<RememberedSetQuery> {
  protected:
    std::string ask(const gmRegionSet& set) const { return GetParam().ask(set); }
    std::string first() const { return ask(setWith(GetParam().first)); }
    std::string second() const { return ask(setWith(GetParam().second)); }
    /// A set that answers the first while its list is the second.
    TestRegionSet remembering() const {
        TestRegionSet set(GetParam().first);
        ask(set);
        set.setRegions(GetParam().second);
        return set;
    }
};

INSTANTIATE_TEST_SUITE_P(RegionSetModel, RegionSetMemory, testing::ValuesIn(support::rememberedSetQueries()),
                         [](const auto& instance) { return std::string(instance.param.name); });

TEST_P(RegionSetMemory, HoldsUntilTheListChanges) {
    ASSERT_NE(first(), second());
    TestRegionSet set = remembering();
    EXPECT_EQ(ask(set), first());
    set.cachedVectorSize(7);
    EXPECT_EQ(ask(set), first());
}

TEST_P(RegionSetMemory, IsEmptyAtFirst) {
    TestRegionSet set(GetParam().first);
    set.setRegions(GetParam().second);
    EXPECT_EQ(ask(set), second());
}

TEST_P(RegionSetMemory, EndsWithTheList) {
    TestRegionSet set = remembering();
    set.regions(set.regions());
    EXPECT_EQ(ask(set), second());
    set = remembering();
    set.regions(Handles());
    set.setRegions(GetParam().second);
    EXPECT_EQ(ask(set), second());
}

TEST_P(RegionSetMemory, EndsWhenARegionIsAdded) {
    TestRegionSet set = remembering();
    set.add(nullptr);
    set.setRegions(GetParam().second);
    EXPECT_EQ(ask(set), second());
}

TEST_P(RegionSetMemory, EndsWithACleanUp) {
    TestRegionSet set = remembering();
    set.cleanCacheInfo();
    EXPECT_EQ(ask(set), second());
}

TEST_P(RegionSetMemory, GoesAlongWithCopies) {
    const TestRegionSet set = remembering();
    EXPECT_EQ(ask(gmRegionSet(set)), first());
    gmRegionSet assigned = setOf({"70 70, 80 70, 80 80"});
    ask(assigned);
    assigned = set;
    EXPECT_EQ(ask(assigned), first());
    EXPECT_EQ(assigned.regions(), GetParam().second);
}

TEST_P(RegionSetMemory, IsReplacedByThatOfTheAssignedSet) {
    TestRegionSet set = remembering();
    set = setWith(GetParam().second);
    EXPECT_EQ(ask(set), second());
}

TEST_P(RegionSetMemory, BelongsToEachCopy) {
    const TestRegionSet set = remembering();
    TestRegionSet copy(set);
    copy.cleanCacheInfo();
    EXPECT_EQ(ask(copy), second());
    EXPECT_EQ(ask(set), first());
    copy.add(shared("0 0, 1 0, 1 1"));
    EXPECT_EQ(ask(set), first());
    TestRegionSet fresh(GetParam().first);
    copy = fresh;
    ask(copy);
    fresh.setRegions(GetParam().second);
    EXPECT_EQ(ask(fresh), second());
}

TEST_P(RegionSetMemory, SurvivesSelfAssignment) {
    TestRegionSet set = remembering();
    const TestRegionSet& same = set;
    set = same;
    EXPECT_EQ(ask(set), first());
    EXPECT_EQ(set.regions(), GetParam().second);
}

TEST_P(RegionSetMemory, IsAnnouncedWhenItChangesAndNotWhenItServes) {
    gmRegionSet set(GetParam().first);
    set.reportChanges(true);
    std::vector<std::string> seen;
    ChangeCounter counter([&](const gmPersistent& object) {
        EXPECT_EQ(dynamic_cast<const gmRegionSet*>(&object), &set);
        seen.push_back("");
        if (seen.size() < 3)
            seen.back() = ask(set);
    });
    ask(set);
    EXPECT_EQ(counter.take(), GetParam().announces ? 1 : 0);
    ask(set);
    EXPECT_EQ(counter.take(), 0);
    EXPECT_EQ(seen, std::vector<std::string>(GetParam().announces ? 1 : 0, first())) << "it is there by then";
    set.reportChanges(false);
    set.regions(GetParam().second);
    ask(set);
    EXPECT_EQ(counter.take(), 0);
}

}  // namespace
