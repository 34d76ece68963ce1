// The archive layouts of contours and errors, byte by byte.
#include <gtest/gtest.h>

#include <type_traits>

#include "cntr/contour.h"
#include "tests/support/archives.h"
#include "tests/support/changes.h"
#include "tests/support/testcontour.h"

namespace {

using support::contentOf;
using support::header;
using support::hex;
using support::load;
using support::loadFrom;
using support::refusedCuts;
using support::refusedVersion;
using support::stored;
using support::transfer;
using support::unhex;

// version, base part, label 7, open, vertices: version, 1, (1, -2), cachedVectorSize 5
const std::string current =
    "01 00 07 00 00 00 00 00 01 00 00 00 00 00 00 00 00 00 f0 3f 00 00 00 00 00 00 00 c0 05 00 00 00";
// version, legacy base and its base, vertices: version, 1, (1, -2), any byte, cachedVectorSize 5, closed
const std::string legacy = "00 00 00 00 01 00 00 00 00 00 00 00 00 00 f0 3f 00 00 00 00 00 00 00 c0 ab 05 00 00 00 01";

TEST(ContourArchive, ReproducesTheBytesOfItsCurrentVersion) {
    gmContour contour({{1, -2}}, false, 7);
    contour.cachedVectorSize(5);
    EXPECT_EQ(hex(contentOf(contour)), current);
}

TEST(ContourArchive, BringsBackEverythingButTheCaches) {
    gmContour contour({{0.1, 1e300}, {-0.0, 4}, {3, 5}}, false, 4294967295UL);
    contour.cachedVectorSize(2147483647);
    gmContour target;
    transfer(contour, target);
    EXPECT_EQ(target, contour);
    EXPECT_EQ(target.label(), 4294967295UL);
}

TEST(ContourArchive, ReadsTheFirstVersionAndForgetsItsLabel) {
    gmContour target({{3, 3}}, false, 9);
    load(legacy, target);
    EXPECT_EQ(target.points(), (std::vector<gmVector<2>>{{1, -2}}));
    EXPECT_EQ(target.label(), 0u);
    EXPECT_EQ(target.cachedVectorSize(), 5);
    EXPECT_TRUE(target.isClosed());
}

TEST(ContourArchive, ReadsTwoContoursOfTheFirstVersionInOnePass) {
    struct Pair : gmPersistent {
        gmContour first;
        gmContour second;
        void dispatchSerialize(gmArchive& archive) override { archive || first || second; }
    } pair;
    load(legacy + ' ' + legacy, pair);
    EXPECT_EQ(pair.first.points(), (std::vector<gmVector<2>>{{1, -2}}));
    EXPECT_EQ(pair.second, pair.first);
}

TEST(ContourArchive, RefusesOtherVersionsByTheirPlace) {
    EXPECT_EQ(refusedVersion<gmContour>("02 00"), "cntr/contour:904");
    EXPECT_EQ(refusedVersion<gmContour>("ff 00"), "cntr/contour:904");
    EXPECT_EQ(refusedVersion<gmContour>("00 01"), "cntr/contour:894");                      // the legacy base
    EXPECT_EQ(refusedVersion<gmContour>("01 01"), "gmPersistent:0");                        // the base part
    EXPECT_EQ(refusedVersion<gmContour>("01 00 07 00 00 00 00 01 00 00 00 00"), "null:0");  // the vertices
}

TEST(ContourArchive, LeavesTheContourAsItWasWhenItsVersionIsRefused) {
    gmContour target({{3, 3}, {4, 4}}, false, 9);
    const gmContour before = target;
    EXPECT_THROW(load("02 00", target), gmArchive::UnknownVersion);
    EXPECT_EQ(target, before);
    EXPECT_EQ(target.label(), 9u);
}

TEST(ContourArchive, KeepsWhatWasReadBeforeARefusalAndNoOldAnswer) {
    support::TestContour target({{0, 0}, {3, 4}}, false, 9);
    EXPECT_EQ(target.length(), 5.0);
    EXPECT_THROW(load(current.substr(0, current.size() - 12), target), gmArchive::Truncated);
    EXPECT_EQ(target.points(), (std::vector<gmVector<2>>{{1, -2}}));
    EXPECT_EQ(target.label(), 7u);
    EXPECT_EQ(target.length(), 0.0);
}

TEST(ContourArchive, RefusesACachedVectorSizeBelowZero) {
    gmContour target;
    std::string content = current;
    content.replace(content.size() - 11, 11, "ff ff ff ff");
    EXPECT_THROW(load(content, target), gmArchive::Malformed);
    EXPECT_GE(target.cachedVectorSize(), 0);
}

TEST(ContourArchive, RefusesAClosedFlagThatIsNeitherTrueNorFalse) {
    gmContour target;
    std::string content = current;
    content.replace(18, 2, "02");
    EXPECT_THROW(load(content, target), gmArchive::Malformed);
}

TEST(ContourArchive, RefusesACountOfVerticesThatCannotFollowBeforeTakingMemory) {
    gmContour target({{3, 3}}, true);
    EXPECT_THROW(load("01 00 07 00 00 00 00 00 ff ff ff ff 00", target), gmArchive::Truncated);
    EXPECT_EQ(target.points().size(), 1u);
}

TEST(ContourArchive, EndsCleanlyWhereverTheBytesEnd) {
    gmContour contour({{1, -2}}, false, 7);
    EXPECT_EQ(refusedCuts(contour), (header + unhex(current)).size());
}

TEST(ContourArchive, AnnouncesALoadAndNoStore) {
    gmContour contour({{1, -2}}, false, 7);
    contour.reportChanges(true);
    support::ChangeCounter counter;
    contentOf(contour);
    EXPECT_EQ(counter.take(), 0);
    load(current, contour);
    EXPECT_GE(counter.take(), 1);
}

TEST(ContourArchive, CallsTheCleanUpOfADerivedClassAfterLoading) {
    struct Watched : gmContour {
        std::size_t seen = 0;
        void cleanCacheInfo() override {
            seen = points().size();
            gmContour::cleanCacheInfo();
        }
    } target;
    load(current, target);
    EXPECT_EQ(target.seen, 1u);
}

TEST(ContourArchive, SharesAContourThatTwoHandlesHold) {
    gmPtrHandle<gmContour> one(new gmContour({{1, 2}}, true, 3));
    gmPtrHandle_const<gmContour> two = one;
    gmPtrHandle<gmContour> first;
    gmPtrHandle_const<gmContour> second;
    loadFrom(stored([&](gmArchive& archive) { archive || one || two; }),
             [&](gmArchive& archive) { archive || first || second; });
    ASSERT_FALSE(first.isNull());
    EXPECT_TRUE(first == second);
    EXPECT_EQ(*first, *one);
    EXPECT_EQ(first->label(), 3u);
}

TEST(ContourArchive, MakesAnEmptyClosedContourByName) {
    const std::unique_ptr<gmPersistent> made(gm_Instantiator::make("gmContour"));
    const auto* contour = dynamic_cast<const gmContour*>(made.get());
    ASSERT_NE(contour, nullptr);
    EXPECT_EQ(*contour, gmContour());
    EXPECT_EQ(contour->label(), 0u);
    EXPECT_EQ(contour->cachedVectorSize(), 3);
}

template <class Error>
class ErrorArchive : public testing::Test {};

struct ErrorNames {
    template <class Error>
    static std::string GetName(int) {
        return gm_Instantiator::className(typeid(Error)).substr(15);  // behind "gmContourDefs::"
    }
};

using ErrorClasses = testing::Types<gmContourDefs::BadParams, gmContourDefs::EmptyContour,
                                    gmContourDefs::EmptyRegionSet, gmContourDefs::RegionCannotBeSetOpen>;
TYPED_TEST_SUITE(ErrorArchive, ErrorClasses, ErrorNames);

TYPED_TEST(ErrorArchive, IsThreeVersionsAndTheMessage) {
    TypeParam error("no");
    EXPECT_EQ(hex(contentOf(error)), "00 00 00 02 00 00 00 6e 6f");
}

TYPED_TEST(ErrorArchive, BringsBackTheMessage) {
    TypeParam error("spliced regions do not intersect");
    TypeParam target;
    transfer(error, target);
    EXPECT_EQ(target.message(), error.message());
}

TYPED_TEST(ErrorArchive, RefusesOtherVersionsByTheNameOfTheClass) {
    const auto place = [](const std::string& content) -> std::string {
        TypeParam target;
        try {
            load(content, target);
        } catch (const gmArchive::UnknownVersion& error) {
            EXPECT_EQ(error.line(), 0);
            return error.file();
        }
        return "accepted";
    };
    EXPECT_EQ(place("01 00 00"), gm_Instantiator::className(typeid(TypeParam)));
    EXPECT_EQ(place("00 01 00"), "gmContourDefs::Errors");
    EXPECT_EQ(place("00 00 01"), "gmException");
}

TYPED_TEST(ErrorArchive, IsMadeByNameWithoutAMessage) {
    const std::unique_ptr<gmPersistent> made(gm_Instantiator::make(gm_Instantiator::className(typeid(TypeParam))));
    const auto* error = dynamic_cast<const TypeParam*>(made.get());
    ASSERT_NE(error, nullptr);
    EXPECT_EQ(error->message(), "");
}

TEST(ErrorArchive, TheBaseOfAllErrorsIsNeverMadeByName) {
    EXPECT_FALSE(gm_Instantiator::isRegistered("gmContourDefs::Errors"));
}

}  // namespace
