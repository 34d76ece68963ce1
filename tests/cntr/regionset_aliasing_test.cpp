// Region sets that are changed by what only they keep alive, and archived as shared objects.
#include <gtest/gtest.h>

#include "tests/support/archives.h"
#include "tests/support/testregionset.h"

using support::Handle;
using support::header;
using support::Holes;
using support::loadFrom;
using support::points;
using support::regionsOf;
using support::setOf;
using support::shared;
using support::stored;

namespace {

/// A region of two holes, which the set alone holds.
gmRegionSet setOfAPlate() {
    const Handle plate(new gmRegion(points("0 0, 20 0, 20 20, 0 20")));
    plate->holes(Holes{shared("2 2, 4 2, 4 4"), shared("5 5, 7 5, 7 7")});
    return gmRegionSet(std::vector<RegionCPtr>{plate, shared("30 0, 31 0, 31 1")});
}

TEST(RegionSetAliasing, TakesTheHolesOfARegionThatItAloneHolds) {
    gmRegionSet set = setOfAPlate();
    const gmRegion& plate = *set.regions()[0];
    set.regions(plate.holes());
    ASSERT_EQ(set.regions().size(), 2u);
    EXPECT_EQ(set.regions()[0]->points(), points("2 2, 4 2, 4 4"));
    EXPECT_EQ(set.regions()[1]->points(), points("5 5, 7 5, 7 7"));
}

TEST(RegionSetAliasing, AddsAHoleOfItsOwnRegion) {
    gmRegionSet set = setOfAPlate();
    set.add(set.regions()[0]->holes()[1]);
    ASSERT_EQ(set.regions().size(), 3u);
    EXPECT_EQ(set.regions()[2]->points(), points("5 5, 7 5, 7 7"));
}

TEST(RegionSetCleanUp, IsNoUnion) {
    const gmRegionSet squares = setOf({"0 0, 4 0, 4 4, 0 4", "2 2, 6 2, 6 6, 2 6"});
    EXPECT_EQ(squares.area(false), 32.0);
    for (const auto mode : {gmContourDefs::eRegularize, gmContourDefs::eOuterHull}) {
        const gmRegionSet merged(squares.regions(), mode);
        EXPECT_EQ(merged.regions().size(), 1u);
        EXPECT_EQ(merged.area(false), 24.0);
        EXPECT_FALSE(merged.inside({3.1, 3.2}, false));
        EXPECT_TRUE(merged.inside({1.1, 1.2}, false));
    }
}

TEST(RegionSetCleanUp, TakesRegionsThatShareASideForCrossing) {
    EXPECT_TRUE(setOf({"0 0, 4 0, 4 4, 0 4", "4 0, 8 0, 8 4, 4 4"}).isSelfIntersecting());
}

TEST(RegionSetArchive, SharesASetThatTwoHandlesHold) {
    gmPtrHandle<gmRegionSet> one(new gmRegionSet(regionsOf({"0 0, 4 0, 4 4"})));
    gmPtrHandle<gmRegionSet> two = one;
    gmPtrHandle<gmRegionSet> first;
    gmPtrHandle<gmRegionSet> second;
    loadFrom(stored([&](gmArchive& archive) { archive || one || two; }),
             [&](gmArchive& archive) { archive || first || second; });
    ASSERT_FALSE(first.isNull());
    EXPECT_TRUE(first == second);
    EXPECT_EQ(*first, *one);
}

TEST(RegionSetArchive, IsStoredOnceInAPass) {
    struct Twice : gmPersistent {
        gmRegionSet set;
        void dispatchSerialize(gmArchive& archive) override { archive || set || set; }
    } twice;
    gmRegionSet once;
    EXPECT_EQ(support::contentOf(twice), support::contentOf(once));
}

TEST(RegionSetArchive, LeavesAHandleEmptyThatIsToHoldSomethingElse) {
    gmRegionSet target;
    // One region: object 1, a "gmContour" without vertices
    support::load(
        "01 00 00 01 00 00 00 01 00 00 00 09 00 00 00 67 6d 43 6f 6e 74 6f 75 72 01 00 00 00 00 00 01 00 00 00"
        " 00 00 03 00 00 00 03 00 00 00",
        target);
    ASSERT_EQ(target.regions().size(), 1u);
    EXPECT_TRUE(target.regions()[0].isNull());
    EXPECT_THROW(target.area(true), gmBadPointer);
}

}  // namespace
