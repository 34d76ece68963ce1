// The archive layouts of regions and region sets with edge points, byte by byte.
#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <memory>
#include <string>
#include <vector>

#include "tests/support/archives.h"
#include "tests/support/edgelets.h"
#include "tests/support/golden.h"
#include "tests/support/setqueries.h"

using support::contentOf;
using support::ContourT;
using support::edgelets;
using support::edgePlate;
using support::expectSame;
using support::header;
using support::hex;
using support::Holes;
using support::load;
using support::loaded;
using support::loadFrom;
using support::plain;
using support::points;
using support::refusedCuts;
using support::refusedVersion;
using support::RegionSetT;
using support::RegionT;
using support::RegionTHandle;
using support::scaling;
using support::sharedT;
using support::stored;
using support::transfer;
using support::withoutBlankAtEnd;
using testing::IsEmpty;

namespace {

const char* const square = "0 0, 4 0, 4 4, 0 4";
const char* const triangle = "0 0, 3 0, 3 4";

// A contour: version, base part, label 7, closed, vertices: version, 1, (1, -2), cachedVectorSize 3
const std::string contourPart =
    "01 00 07 00 00 00 01 00 01 00 00 00 00 00 00 00 00 00 f0 3f 00 00 00 00 00 00 00 c0 03 00 00 00 ";
const std::string noHandle = "00 00 00 00 ";

ContourT oneEdgePoint() {
    return ContourT({{{2, -4}, 0xbeef, gmAngle8(0xab)}}, scaling(2));
}

// ----- Region

TEST(RegionTArchive, ReproducesTheBytesOfItsVersionWithoutDataAndTransform) {
    RegionT region(oneEdgePoint(), 7);
    EXPECT_EQ(hex(contentOf(region)), withoutBlankAtEnd("00 01 " + contourPart + "00 00 00 00 00 "));
}

TEST(RegionTArchive, HoldsOutlineAndPlainHolesAlone) {
    RegionT plate = edgePlate();
    plate.cachedVectorSize(4);
    plate.gmRegion::holes(Holes{plate.gmRegion::holes()[0], sharedT("7 7, 8 7, 8 8")});
    RegionT bare;
    transfer(plate, bare);
    EXPECT_EQ(bare.points(), plate.points());
    EXPECT_EQ(bare.label(), 5U);
    EXPECT_EQ(bare.cachedVectorSize(), 4);
    EXPECT_THAT(bare.data(), IsEmpty());
    EXPECT_TRUE(bare.dataFromPointsXform().isNull());
    EXPECT_THAT(bare.holes(), IsEmpty());
    ASSERT_EQ(bare.gmRegion::holes().size(), 2U);
    EXPECT_EQ(*bare.gmRegion::holes()[0], *plate.gmRegion::holes()[0]);
    const auto* edgeHole = dynamic_cast<const RegionT*>(bare.gmRegion::holes()[1].get());
    ASSERT_NE(edgeHole, nullptr) << "a hole keeps its class";
    EXPECT_EQ(edgeHole->points(), points("7 7, 8 7, 8 8"));
    EXPECT_THAT(edgeHole->data(), IsEmpty());
    EXPECT_EQ(bare.area(true), plate.area(true));
}

TEST(RegionTArchive, LeavesNothingOfWhatTheTargetHad) {
    RegionT source(oneEdgePoint(), 7);
    RegionT target = edgePlate();
    EXPECT_EQ(target.point(edgelets("2 4")[0]), gmVector<2>(1, 2));
    const gmPtrHandle_const<RegionT> edgeHole = target.holes()[0];
    const gmPtrHandle_const<gm2XformBase> xform = target.dataFromPointsXform();
    transfer(source, target);
    expectSame(target, loaded<RegionT>("00 01 " + contourPart + "00 00 00 00 00"));
    EXPECT_EQ(edgeHole->referenceCount(), 1);
    EXPECT_EQ(xform->referenceCount(), 1);
    EXPECT_THROW(target.point(edgelets("2 4")[0]), gmBadPointer) << "no inverse is remembered";
    EXPECT_THROW(target.area(true), gmContourDefs::EmptyContour) << "nor an area";
}

TEST(RegionTArchive, RefusesOtherVersionsByTheirPlace) {
    EXPECT_EQ(refusedVersion<RegionT>("01 00"), "cntrtmpl:186");
    EXPECT_EQ(refusedVersion<RegionT>("ff 00"), "cntrtmpl:186");
    EXPECT_EQ(refusedVersion<RegionT>("00 02"), "cntr/region:819");                  // the region
    EXPECT_EQ(refusedVersion<RegionT>("00 01 02"), "cntr/contour:904");              // its contour
    EXPECT_EQ(refusedVersion<RegionT>("00 00 01"), "cntr/region:0");                 // its legacy base
    EXPECT_EQ(refusedVersion<RegionT>("00 01 " + contourPart + "01 00"), "null:0");  // its holes
}

TEST(RegionTArchive, LeavesTheRegionAsItWasWhenItsVersionIsRefused) {
    RegionT target = edgePlate();
    const RegionT before = target;
    EXPECT_THROW(load("01 00", target), gmArchive::UnknownVersion);
    expectSame(target, before);
    EXPECT_EQ(target, before) << "with the same transform";
}

TEST(RegionTArchive, KeepsNoOldAnswerWhenALoadIsRefused) {
    RegionT target = edgePlate();
    EXPECT_EQ(target.area(false), 100.0);
    EXPECT_EQ(target.length(), 40.0);
    EXPECT_THROW(load("00 01 " + contourPart + "00 01", target), gmArchive::Truncated);
    EXPECT_EQ(target.points(), points("1 -2"));
    EXPECT_THROW(target.area(false), gmContourDefs::EmptyContour);
    EXPECT_EQ(target.length(), 0.0);
}

TEST(RegionTArchive, EndsCleanlyWhereverTheBytesEnd) {
    RegionT plate = edgePlate();
    EXPECT_EQ(refusedCuts(plate), (header + contentOf(plate)).size());
}

/// A class of an application, with a region as its part.
class Named : public RegionT {
  public:
    using RegionT::RegionT;
    std::string name = "unnamed";

  protected:
    void dispatchSerialize(gmArchive& archive) override {
        archiveOnce(archive, this, sizeof *this, 0, [&](unsigned char) {
            RegionT::dispatchSerialize(archive);
            ContourT::dispatchSerialize(archive);
            archive || name;
        });
    }
};

TEST(RegionTArchive, IsAPartOfADerivedClassThatKeepsItsData) {
    Named region(edgelets(triangle), scaling(1), 7);
    region.name = "bore";
    // The contour, which both parts share, is there once.
    EXPECT_THAT(hex(contentOf(region)), testing::StartsWith("00 00 01 01 00 07 00 00 00 01 00 03 00 00 00"));
    EXPECT_EQ(contentOf(region).size(), 1U + (1 + 1 + 64 + 5) + (1 + 5 + 3 * 19 + 4 + 18 + 49) + 8);
    Named target;
    transfer(region, target);
    expectSame(target, region);
    EXPECT_EQ(target.name, "bore");
    EXPECT_EQ(target.data(), edgelets(triangle));
}

// ----- Region set

// object 1, "gmRegionT<gmEdgelet>": version, region: version, contour, no holes
const std::string edgeRegion =
    "01 00 00 00 14 00 00 00 67 6d 52 65 67 69 6f 6e 54 3c 67 6d 45 64 67 65 6c 65 74 3e 00 01 " + contourPart +
    "00 00 00 00 00 ";
// set: version, base part, regions: version, 3: that region, none, the same again; cachedVectorSize 5
const std::string setPart = "01 00 00 03 00 00 00 " + edgeRegion + noHandle + "01 00 00 00 05 00 00 00 ";
// edge regions: version, 3: the same
const std::string sameRegions = "00 03 00 00 00 01 00 00 00 " + noHandle + "01 00 00 00 ";

TEST(RegionSetTArchive, ReproducesTheBytesOfItsVersion) {
    const RegionTHandle region(new RegionT(oneEdgePoint(), 7));
    RegionSetT set(std::vector<RegionTHandle>{region, nullptr, region});
    set.cachedVectorSize(5);
    EXPECT_EQ(hex(contentOf(set)), withoutBlankAtEnd("00 " + setPart + sameRegions));
}

TEST(RegionSetTArchive, BringsBackTheSameObjectsInBothLists) {
    RegionSetT set(std::vector<RegionTHandle>{sharedT(square), nullptr, sharedT(triangle)});
    set.cachedVectorSize(2147483647);
    RegionSetT target(std::vector<RegionTHandle>{sharedT(square)});
    transfer(set, target);
    EXPECT_EQ(target.cachedVectorSize(), 2147483647);
    ASSERT_EQ(target.regionsT().size(), 3U);
    EXPECT_EQ(plain(target.regionsT()), target.regions());
    EXPECT_EQ(target.regionsT()[0]->points(), points(square));
    EXPECT_TRUE(target.regionsT()[1].isNull());
    EXPECT_EQ(target.regionsT()[2]->points(), points(triangle));
}

TEST(RegionSetTArchive, SharesARegionThatSetsHold) {
    const RegionTHandle region = sharedT(square);
    RegionSetT alone(std::vector<RegionTHandle>{region});
    RegionSetT twice(std::vector<RegionTHandle>{region, region});
    gmRegionSet plainOne(Holes{region});
    RegionSetT first;
    RegionSetT second;
    gmRegionSet third;
    const std::string bytes = stored([&](gmArchive& archive) { archive || alone || twice || plainOne; });
    EXPECT_EQ(bytes.find("gmRegionT<gmEdgelet>"), bytes.rfind("gmRegionT<gmEdgelet>"));
    loadFrom(bytes, [&](gmArchive& archive) { archive || first || second || third; });
    ASSERT_EQ(second.regionsT().size(), 2U);
    EXPECT_TRUE(first.regionsT()[0] == second.regionsT()[1]);
    EXPECT_TRUE(first.regionsT()[0] == third.regions()[0]);
    EXPECT_EQ(first.regionsT()[0]->points(), points(square));
}

TEST(RegionSetTArchive, HoldsEachListAsItIs) {
    RegionSetT set(std::vector<RegionTHandle>{sharedT(square)});
    static_cast<gmRegionSet&>(set) = support::setOf({triangle, square});
    RegionSetT target;
    transfer(set, target);
    EXPECT_EQ(target, set);
    ASSERT_EQ(target.regionsT().size(), 1U);
    EXPECT_EQ(target.regionsT()[0]->points(), points(square));
}

TEST(RegionSetTArchive, LeavesAHandleEmptyWhoseRegionHasNoEdgePoints) {
    const std::string plainRegion =
        "01 00 00 00 08 00 00 00 67 6d 52 65 67 69 6f 6e 01 " + contourPart + "00 00 00 00 00 ";
    const RegionSetT set =
        loaded<RegionSetT>("00 01 00 00 01 00 00 00 " + plainRegion + "05 00 00 00 00 01 00 00 00 01 00 00 00");
    EXPECT_FALSE(set.regions()[0].isNull());
    ASSERT_EQ(set.regionsT().size(), 1U);
    EXPECT_TRUE(set.regionsT()[0].isNull());
}

TEST(RegionSetTArchive, RefusesOtherVersionsByTheirPlace) {
    EXPECT_EQ(refusedVersion<RegionSetT>("01 00"), "cntrtmpl:283");
    EXPECT_EQ(refusedVersion<RegionSetT>("ff 00"), "cntrtmpl:283");
    EXPECT_EQ(refusedVersion<RegionSetT>("00 02"), "cntr/regionst:479");         // the set
    EXPECT_EQ(refusedVersion<RegionSetT>("00 " + setPart + "01 00"), "null:0");  // the edge regions
}

TEST(RegionSetTArchive, LeavesTheSetAsItWasWhenItsVersionIsRefused) {
    RegionSetT target(std::vector<RegionTHandle>{sharedT(square)});
    const RegionSetT before = target;
    EXPECT_THROW(load("01 00", target), gmArchive::UnknownVersion);
    expectSame(target, before);
    EXPECT_TRUE(target.regionsT()[0] == before.regionsT()[0]);
}

TEST(RegionSetTArchive, KeepsNoOldAnswerWhetherALoadIsRefusedOrNot) {
    const std::string whole = withoutBlankAtEnd("00 " + setPart + sameRegions);
    const std::string cuts[] = {whole, whole.substr(0, whole.size() - 3),
                                "00 " + setPart.substr(0, setPart.size() - 4)};
    for (const std::string& content : cuts) {
        RegionSetT target(std::vector<RegionTHandle>{sharedT(square)});
        EXPECT_EQ(target.area(true), 16.0);
        try {
            load(content, target);
        } catch (const gmArchive::Truncated&) {
            EXPECT_NE(content, whole);
        }
        EXPECT_EQ(target.regions().size(), 3U);
        EXPECT_THROW(target.area(true), gmContourDefs::EmptyContour) << content;
    }
}

TEST(RegionSetTArchive, EndsCleanlyWhereverTheBytesEnd) {
    RegionSetT set(std::vector<RegionTHandle>{sharedT(square), sharedT(triangle)});
    EXPECT_EQ(refusedCuts(set), (header + contentOf(set)).size());
}

// ----- Registration

template <class T>
void expectMadeEmpty(const char* name) {
    const std::unique_ptr<gmPersistent> made(gm_Instantiator::make(name));
    const auto* shape = dynamic_cast<const T*>(made.get());
    ASSERT_NE(shape, nullptr) << name;
    expectSame(*shape, T());
}

TEST(EdgeShapesArchive, AreMadeEmptyByName) {
    expectMadeEmpty<ContourT>("gmContourT<gmEdgelet>");
    expectMadeEmpty<RegionT>("gmRegionT<gmEdgelet>");
    expectMadeEmpty<RegionSetT>("gmRegionSetT<gmEdgelet>");
}

}  // namespace
