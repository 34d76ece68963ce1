// The archive layouts of regions, byte by byte.
#include <gtest/gtest.h>

#include <memory>

#include "cntr/region.h"
#include "tests/support/archives.h"
#include "tests/support/changes.h"
#include "tests/support/testregion.h"

namespace {

using support::contentOf;
using support::header;
using support::hex;
using support::Holes;
using support::load;
using support::loadFrom;
using support::refusedCuts;
using support::refusedVersion;
using support::region;
using support::shared;
using support::stored;
using support::transfer;
using support::unhex;

// A contour: version, base part, label 7, closed, vertices: version, 1, (1, -2), cachedVectorSize 3
const std::string contourPart =
    "01 00 07 00 00 00 01 00 01 00 00 00 00 00 00 00 00 00 f0 3f 00 00 00 00 00 00 00 c0 03 00 00 00";
// version, the contour, holes: version, none
const std::string withoutHoles = "01 " + contourPart + " 00 00 00 00 00";
// version, legacy base and its base, vertices: version, 1, (1, -2), any byte, cachedVectorSize 5
const std::string legacy = "00 00 00 00 01 00 00 00 00 00 00 00 00 00 f0 3f 00 00 00 00 00 00 00 c0 ab 05 00 00 00";

TEST(RegionArchive, ReproducesTheBytesOfItsCurrentVersion) {
    gmRegion plain(std::vector<gmVector<2>>{{1, -2}});
    plain.label(7);
    EXPECT_EQ(hex(contentOf(plain)), withoutHoles);
}

TEST(RegionArchive, WritesHolesBehindTheContourAsSharedObjects) {
    gmRegion holed(std::vector<gmVector<2>>{{1, -2}});
    holed.label(7);
    const RegionCPtr hole(new gmRegion);
    holed.holes(Holes{hole, hole});
    // holes: version, 2; object 1: "gmRegion", an empty region; then object 1 again
    EXPECT_EQ(hex(contentOf(holed)), "01 " + contourPart +
                                         " 00 02 00 00 00 01 00 00 00 08 00 00 00 67 6d 52 65 67 69 6f 6e"
                                         " 01 01 00 00 00 00 00 01 00 00 00 00 00 03 00 00 00 00 00 00 00 00"
                                         " 01 00 00 00");
}

TEST(RegionArchive, BringsBackOutlineLabelAndHolesOfHoles) {
    gmRegion plate = region("0 0, 10 0, 10 10, 0 10");
    plate.label(4294967295UL);
    plate.cachedVectorSize(9);
    const gmPtrHandle<gmRegion> hole(new gmRegion(support::points("2 2, 8 2, 8 8, 2 8")));
    hole->holes(Holes{shared("4 4, 6 4, 6 6, 4 6")});
    plate.holes(Holes{hole, shared("9 9, 9.5 9, 9 9.5")});
    gmRegion target;
    transfer(plate, target);
    EXPECT_EQ(target, plate);
    EXPECT_EQ(target.label(), 4294967295UL);
    ASSERT_EQ(target.holes().size(), 2u);
    EXPECT_EQ(*target.holes()[0], *hole);
    EXPECT_EQ(*target.holes()[1], *plate.holes()[1]);
    ASSERT_EQ(target.holes()[0]->holes().size(), 1u);
    EXPECT_TRUE(target.inside({5, 5}, true));
    EXPECT_FALSE(target.inside({3, 3}, true));
}

TEST(RegionArchive, SharesAHoleThatTwoRegionsHold) {
    gmRegion one = region("0 0, 10 0, 10 10, 0 10");
    gmRegion two = region("1 1, 9 1, 9 9, 1 9");
    one.holes(Holes{shared("4 4, 6 4, 6 6, 4 6")});
    two.holes(one.holes());
    gmRegion first;
    gmRegion second;
    loadFrom(stored([&](gmArchive& archive) { archive || one || two; }),
             [&](gmArchive& archive) { archive || first || second; });
    EXPECT_EQ(first.holes(), second.holes());
    EXPECT_EQ(*first.holes()[0], *one.holes()[0]);
}

TEST(RegionArchive, KeepsTheOpenFlagOfAnOutlineThatWasOpen) {
    gmRegion open(gmContour(support::points("0 0, 4 0, 4 4"), false, 2));
    std::string content = hex(contentOf(open));
    EXPECT_EQ(content.substr(0, 23), "01 01 00 02 00 00 00 00");
    gmRegion target;
    transfer(open, target);
    EXPECT_TRUE(target.isClosed());
    EXPECT_EQ(hex(contentOf(target)), content);
}

TEST(RegionArchive, ReadsTheFirstVersionWithoutLabelAndWithoutHoles) {
    gmRegion target = region("3 3, 9 3, 9 9");
    target.label(9);
    target.area(false);
    load(legacy, target);
    EXPECT_EQ(target.points(), (std::vector<gmVector<2>>{{1, -2}}));
    EXPECT_EQ(target.label(), 0u);
    EXPECT_EQ(target.cachedVectorSize(), 5);
    EXPECT_TRUE(target.isClosed());
    // The outline's own flag now says open.
    EXPECT_EQ(hex(contentOf(target)).substr(0, 23), "01 01 00 00 00 00 00 00");
    EXPECT_TRUE(target.holes().empty());
}

TEST(RegionArchive, AnswersForWhatWasReadOfTheFirstVersionBeforeARefusal) {
    gmRegion target = region("3 3, 9 3, 9 9");
    EXPECT_EQ(target.area(false), 18.0);
    EXPECT_THROW(load(legacy.substr(0, legacy.size() - 3), target), gmArchive::Truncated);
    EXPECT_EQ(target.points(), (std::vector<gmVector<2>>{{1, -2}}));
    EXPECT_THROW(target.area(false), gmContourDefs::EmptyContour);
    EXPECT_EQ(target.length(), 0.0);
}

TEST(RegionArchive, LeavesHolesAloneThatTheFirstVersionDoesNotSpeakOf) {
    gmRegion target = region("0 0, 10 0, 10 10, 0 10");
    target.holes(Holes{shared("4 4, 6 4, 6 6, 4 6")});
    load(legacy, target);
    EXPECT_EQ(target.holes().size(), 1u);
}

TEST(RegionArchive, ReadsTwoRegionsOfTheFirstVersionInOnePass) {
    struct Pair : gmPersistent {
        gmRegion first;
        gmRegion second;
        void dispatchSerialize(gmArchive& archive) override { archive || first || second; }
    } pair;
    load(legacy + ' ' + legacy, pair);
    EXPECT_EQ(pair.first.points(), (std::vector<gmVector<2>>{{1, -2}}));
    EXPECT_EQ(pair.second, pair.first);
}

TEST(RegionArchive, RefusesOtherVersionsByTheirPlace) {
    EXPECT_EQ(refusedVersion<gmRegion>("02 00"), "cntr/region:819");
    EXPECT_EQ(refusedVersion<gmRegion>("ff 00"), "cntr/region:819");
    EXPECT_EQ(refusedVersion<gmRegion>("00 01"), "cntr/region:0");               // the legacy base
    EXPECT_EQ(refusedVersion<gmRegion>("01 02"), "cntr/contour:904");            // the contour
    EXPECT_EQ(refusedVersion<gmRegion>("01 " + contourPart + " 01"), "null:0");  // the holes
}

TEST(RegionArchive, LeavesTheRegionAsItWasWhenItsVersionIsRefused) {
    gmRegion target = region("3 3, 9 3, 9 9");
    target.label(9);
    EXPECT_THROW(load("02 00", target), gmArchive::UnknownVersion);
    EXPECT_EQ(target, region("3 3, 9 3, 9 9"));
    EXPECT_EQ(target.label(), 9u);
}

TEST(RegionArchive, KeepsWhatWasReadBeforeARefusalAndNoOldAnswer) {
    gmRegion target = region("3 3, 9 3, 9 9");
    EXPECT_EQ(target.area(false), 18.0);
    EXPECT_THROW(load(withoutHoles.substr(0, withoutHoles.size() - 3), target), gmArchive::Truncated);
    EXPECT_EQ(target.points(), (std::vector<gmVector<2>>{{1, -2}}));
    EXPECT_THROW(target.area(false), gmContourDefs::EmptyContour);
}

TEST(RegionArchive, ForgetsWhatItKnewOfTheOldHoles) {
    gmRegion plate = region("0 0, 10 0, 10 10, 0 10");
    gmRegion target = plate;
    target.holes(Holes{shared("4 4, 6 4, 6 6, 4 6")});
    EXPECT_EQ(target.area(true), 96.0);
    transfer(plate, target);
    EXPECT_EQ(target.area(true), 100.0);
}

TEST(RegionArchive, LeavesAHandleEmptyThatIsToHoldSomethingElse) {
    gmRegion target;
    // One hole: object 1, a "gmContour"
    load("01 " + contourPart + " 00 01 00 00 00 01 00 00 00 09 00 00 00 67 6d 43 6f 6e 74 6f 75 72 " + contourPart,
         target);
    ASSERT_EQ(target.holes().size(), 1u);
    EXPECT_TRUE(target.holes()[0].isNull());
    target.points(support::points("0 0, 10 0, 10 10, 0 10"));
    EXPECT_THROW(target.inside({5, 5}, true), gmBadPointer);
    EXPECT_THROW(target.area(true), gmBadPointer);
    EXPECT_THROW(target.centerOfMass(true), gmBadPointer);
    long hole = 0;
    EXPECT_THROW(target.closestVertexIndex({5, 5}, true, hole), gmBadPointer);
    EXPECT_THROW(target.closestPoint({5, 5}, true, true), gmBadPointer);
    EXPECT_THROW(target.closestPoint({5, 5}, false, false), gmBadPointer);
    EXPECT_THROW(target.intersections(gmLineSeg({-1, 5}, {11, 5}), true, true), gmBadPointer);
    // Without holes nothing is wrong, nor where the point is outside anyway.
    EXPECT_TRUE(target.inside({5, 5}, false));
    EXPECT_FALSE(target.inside({50, 5}, true));
    EXPECT_EQ(target.area(false), 100.0);
}

TEST(RegionArchive, RefusesACountOfHolesThatCannotFollowBeforeTakingMemory) {
    gmRegion target;
    EXPECT_THROW(load("01 " + contourPart + " 00 ff ff ff ff 00", target), gmArchive::Truncated);
    EXPECT_TRUE(target.holes().empty());
}

TEST(RegionArchive, RefusesAHoleThatIsTheHoleAroundIt) {
    gmRegion target;
    // One hole: object 1, "gmRegion", which has one hole: object 1
    const std::string name = "01 00 00 00 08 00 00 00 67 6d 52 65 67 69 6f 6e ";
    EXPECT_THROW(
        load("01 " + contourPart + " 00 01 00 00 00 " + name + "01 " + contourPart + " 00 01 00 00 00 01 00 00 00",
             target),
        gmArchive::Malformed);
}

TEST(RegionArchive, RefusesToStoreHolesThatHoldEachOther) {
    const gmPtrHandle<gmRegion> a(new gmRegion(support::points("0 0, 1 0, 1 1")));
    const gmPtrHandle<gmRegion> b(new gmRegion(support::points("5 0, 6 0, 6 1")));
    a->holes(Holes{b});
    b->holes(Holes{a});
    gmPtrHandle<gmRegion> root = a;
    EXPECT_THROW(stored([&](gmArchive& archive) { archive || root; }), gmArchive::Malformed);
    b->holes(Holes{});
}

TEST(RegionArchive, EndsCleanlyWhereverTheBytesEnd) {
    gmRegion plate = region("0 0, 10 0, 10 10, 0 10");
    plate.holes(Holes{shared("4 4, 6 4, 6 6, 4 6"), shared("1 1, 2 1, 2 2")});
    EXPECT_EQ(refusedCuts(plate), (header + contentOf(plate)).size());
}

TEST(RegionArchive, AnnouncesALoadAndNoStore) {
    gmRegion target = region("3 3, 9 3, 9 9");
    target.reportChanges(true);
    support::ChangeCounter counter;
    contentOf(target);
    EXPECT_EQ(counter.take(), 0);
    load(withoutHoles, target);
    EXPECT_GE(counter.take(), 1);
}

TEST(RegionArchive, MakesAnEmptyRegionByName) {
    const std::unique_ptr<gmPersistent> made(gm_Instantiator::make("gmRegion"));
    const auto* region = dynamic_cast<const gmRegion*>(made.get());
    ASSERT_NE(region, nullptr);
    EXPECT_TRUE(region->points().empty());
    EXPECT_TRUE(region->holes().empty());
    EXPECT_EQ(region->label(), 0u);
    EXPECT_EQ(region->cachedVectorSize(), 3);
}

}  // namespace
