// The archive layouts of region sets, byte by byte.
#include <gtest/gtest.h>

#include <memory>

#include "tests/support/archives.h"
#include "tests/support/changes.h"
#include "tests/support/testregionset.h"

namespace {

using support::contentOf;
using support::header;
using support::hex;
using support::load;
using support::loadFrom;
using support::refusedCuts;
using support::refusedVersion;
using support::regionsOf;
using support::setOf;
using support::stored;
using support::TestRegionSet;
using support::transfer;
using support::unhex;

// object 1, "gmRegion": version, contour (version, base part, label 0, closed, no vertices, cachedVectorSize 3), no
// holes
const std::string emptyRegion =
    "01 00 00 00 08 00 00 00 67 6d 52 65 67 69 6f 6e 01 01 00 00 00 00 00 01 00 00 00 00 00 03 00 00 00 00 00 00 00 00";
// base part, regions: version, 3: that region, the same again, none
const std::string regions = "00 00 03 00 00 00 " + emptyRegion + " 01 00 00 00 00 00 00 00";

TEST(RegionSetArchive, ReproducesTheBytesOfItsCurrentVersion) {
    const RegionCPtr region(new gmRegion);
    gmRegionSet set(std::vector<RegionCPtr>{region, region, RegionCPtr()});
    set.cachedVectorSize(5);
    EXPECT_EQ(hex(contentOf(set)), "01 " + regions + " 05 00 00 00");
}

TEST(RegionSetArchive, BringsBackRegionsInOrderAndTheCacheLimit) {
    gmRegionSet set = setOf({"0 0, 4 0, 4 4", "9 9, 8 9, 9 8"});
    set.cachedVectorSize(2147483647);
    gmRegionSet target = setOf({"1 1, 2 1, 2 2"});
    transfer(set, target);
    EXPECT_EQ(target, set);
    EXPECT_EQ(target.cachedVectorSize(), 2147483647);
}

TEST(RegionSetArchive, SharesARegionThatTwoSetsHold) {
    gmRegionSet one = setOf({"0 0, 4 0, 4 4"});
    gmRegionSet two(one.regions());
    gmRegionSet first;
    gmRegionSet second;
    loadFrom(stored([&](gmArchive& archive) { archive || one || two; }),
             [&](gmArchive& archive) { archive || first || second; });
    EXPECT_TRUE(first.regions()[0] == second.regions()[0]);
    EXPECT_EQ(first, one);
}

TEST(RegionSetArchive, ReadsTheFirstVersionAndKeepsTheLimitItHad) {
    gmRegionSet target;
    target.cachedVectorSize(7);
    load("00 " + regions, target);
    ASSERT_EQ(target.regions().size(), 3u);
    EXPECT_TRUE(target.regions()[0] == target.regions()[1]);
    EXPECT_TRUE(target.regions()[2].isNull());
    EXPECT_EQ(target.cachedVectorSize(), 7);
}

TEST(RegionSetArchive, RefusesOtherVersionsByTheirPlace) {
    EXPECT_EQ(refusedVersion<gmRegionSet>("02 00"), "cntr/regionst:479");
    EXPECT_EQ(refusedVersion<gmRegionSet>("ff 00"), "cntr/regionst:479");
    EXPECT_EQ(refusedVersion<gmRegionSet>("01 01"), "gmPersistent:0");  // the base part
    EXPECT_EQ(refusedVersion<gmRegionSet>("01 00 01"), "null:0");       // the regions
}

TEST(RegionSetArchive, LeavesTheSetAsItWasWhenItsVersionIsRefused) {
    gmRegionSet target = setOf({"0 0, 4 0, 4 4"});
    const gmRegionSet before = target;
    EXPECT_THROW(load("02 00", target), gmArchive::UnknownVersion);
    EXPECT_EQ(target, before);
}

TEST(RegionSetArchive, ForgetsWhatItKnewOfTheOldRegions) {
    gmRegionSet source = setOf({"0 0, 4 0, 4 4"});
    gmRegionSet target = setOf({"0 0, 2 0, 2 2"});
    EXPECT_EQ(target.area(true), 2.0);
    transfer(source, target);
    EXPECT_EQ(target.area(true), 8.0);
    EXPECT_EQ(target.encloseRect(gmXform<2>::I).size(), gmVector<2>(4, 4));
}

TEST(RegionSetArchive, KeepsWhatWasReadBeforeARefusalAndNoOldAnswer) {
    gmRegionSet target = setOf({"0 0, 2 0, 2 2"});
    EXPECT_EQ(target.area(true), 2.0);
    EXPECT_THROW(load("01 " + regions + " 05 00", target), gmArchive::Truncated);
    EXPECT_EQ(target.regions().size(), 3u);
    EXPECT_THROW(target.area(true), gmContourDefs::EmptyContour);
}

TEST(RegionSetArchive, RefusesACachedVectorSizeBelowZero) {
    gmRegionSet target;
    EXPECT_THROW(load("01 " + regions + " ff ff ff ff", target), gmArchive::Malformed);
    EXPECT_EQ(target.cachedVectorSize(), 3);
}

TEST(RegionSetArchive, RefusesACountOfRegionsThatCannotFollowBeforeTakingMemory) {
    gmRegionSet target = setOf({"0 0, 2 0, 2 2"});
    EXPECT_THROW(load("01 00 00 ff ff ff ff 00", target), gmArchive::Truncated);
    EXPECT_EQ(target.regions().size(), 1u);
}

TEST(RegionSetArchive, EndsCleanlyWhereverTheBytesEnd) {
    gmRegionSet set = setOf({"0 0, 4 0, 4 4", "9 9, 8 9, 9 8"});
    EXPECT_EQ(refusedCuts(set), (header + contentOf(set)).size());
}

TEST(RegionSetArchive, AnnouncesALoadAndNoStore) {
    gmRegionSet target = setOf({"0 0, 4 0, 4 4"});
    target.reportChanges(true);
    support::ChangeCounter counter;
    contentOf(target);
    EXPECT_EQ(counter.take(), 0);
    load("01 " + regions + " 05 00 00 00", target);
    EXPECT_GE(counter.take(), 1);
}

TEST(RegionSetArchive, CallsTheCleanUpOfADerivedClassAfterLoading) {
    struct Watched : gmRegionSet {
        std::size_t seen = 0;
        void cleanCacheInfo() override {
            seen = regions().size();
            gmRegionSet::cleanCacheInfo();
        }
    } target;
    load("01 " + regions + " 05 00 00 00", target);
    EXPECT_EQ(target.seen, 3u);
}

TEST(RegionSetArchive, MakesAnEmptySetByName) {
    const std::unique_ptr<gmPersistent> made(gm_Instantiator::make("gmRegionSet"));
    const auto* set = dynamic_cast<const gmRegionSet*>(made.get());
    ASSERT_NE(set, nullptr);
    EXPECT_TRUE(set->regions().empty());
    EXPECT_EQ(set->cachedVectorSize(), 3);
}

}  // namespace
