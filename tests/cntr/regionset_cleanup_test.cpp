// Crossing regions found and cleaned up: by whom, in which order, and what is kept of it. And drawing.
#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <string>
#include <vector>

#include "tests/support/setqueries.h"
#include "tests/support/tablet.h"

using support::regionsOf;
using support::setOf;
using support::shared;
using support::TestRegionSet;
using support::text;
using testing::ElementsAre;
using Handles = std::vector<gmPtrHandle<gmRegion>>;
using Regions = std::vector<RegionCPtr>;

// The one way to a result set that nothing but its owner's cache keeps alive.
namespace support {
struct SetCachesTag {
    using Member = detail::RegionSetCaches gmRegionSet::*;
    friend Member memberOf(SetCachesTag);
};
template struct Opened<SetCachesTag, &gmRegionSet::caches_>;
}  // namespace support

namespace {

const gmRegionSet& rememberedRegularized(gmRegionSet& set) {
    return *(set.*memberOf(support::SetCachesTag())).regularized.get([](auto&) { FAIL() << "nothing is remembered"; });
}

const char* const bowTie = "0 0, 2 2, 2 0, 0 2";
const char* const untraceable = "0 1, 1 0, 2 0, 0 0";
const char* const farAway = "90 90, 91 90, 91 91";

Regions crossing() {
    return regionsOf({"0 0, 4 0, 4 4, 0 4", "2 2, 6 2, 6 6, 2 6"});
}

bool isSelfIntersecting(const Regions& regions) {
    return gmRegionSet(regions).isSelfIntersecting();
}

/// The same regions and, where the text says so, another in front.
Regions operator+(Regions regions, const Regions& more) {
    regions.insert(regions.end(), more.begin(), more.end());
    return regions;
}

// ----- isSelfIntersecting

TEST(RegionSetCleanUp, FindsNoCrossingWhereThereIsNone) {
    EXPECT_FALSE(isSelfIntersecting({}));
    EXPECT_FALSE(isSelfIntersecting(regionsOf({"0 0, 4 0, 4 4, 0 4"})));
    EXPECT_FALSE(isSelfIntersecting(regionsOf({"0 0, 4 0, 4 4, 0 4", farAway})));
    EXPECT_FALSE(isSelfIntersecting(regionsOf({"0 0, 9 0, 9 9, 0 9", "4 4, 5 4, 5 5, 4 5"}))) << "inside the other";
}

TEST(RegionSetCleanUp, FindsAnOutlineThatCrossesItselfWhereverItIs) {
    EXPECT_TRUE(isSelfIntersecting(regionsOf({bowTie})));
    EXPECT_TRUE(isSelfIntersecting(regionsOf({bowTie, farAway})));
    EXPECT_TRUE(isSelfIntersecting(regionsOf({farAway, bowTie})));
}

TEST(RegionSetCleanUp, FindsAnyPairThatCrosses) {
    const Regions pair = crossing();
    const RegionCPtr other = shared(farAway);
    EXPECT_TRUE(isSelfIntersecting(pair));
    EXPECT_TRUE(isSelfIntersecting({pair[1], pair[0]}));
    EXPECT_TRUE(isSelfIntersecting({pair[0], other, pair[1]}));
    EXPECT_TRUE(isSelfIntersecting({other, pair[0], pair[1]}));
    EXPECT_TRUE(isSelfIntersecting({pair[0], pair[0]})) << "the same region twice";
    EXPECT_TRUE(isSelfIntersecting(regionsOf({"0 0, 1 0, 1 1, 0 1", "1 1, 2 1, 2 2, 1 2"}))) << "a corner is enough";
}

TEST(RegionSetCleanUp, LooksAtNoHole) {
    gmRegion* drilled = new gmRegion(support::region("0 0, 9 0, 9 9, 0 9"));
    const RegionCPtr handle(drilled);
    drilled->holes(regionsOf({"1 1, 3 3, 3 1, 1 3", "20 20, 30 20, 30 30, 20 30"}));
    EXPECT_FALSE(isSelfIntersecting({handle}));
    EXPECT_FALSE(isSelfIntersecting({handle, shared("25 25, 35 25, 35 35, 25 35")}));
}

/// What a set answers when it is asked again after the search for crossings failed.
template <class Error>
bool foundSoFar(const Regions& regions) {
    const gmRegionSet set(regions);
    EXPECT_THROW(set.isSelfIntersecting(), Error);
    return set.isSelfIntersecting();
}

TEST(RegionSetCleanUp, KeepsWhatItHadFoundWhenItMeetsNoRegion) {
    EXPECT_FALSE(foundSoFar<gmBadPointer>({nullptr}));
    EXPECT_FALSE(foundSoFar<gmBadPointer>({nullptr, shared(bowTie)}));
    EXPECT_TRUE(foundSoFar<gmBadPointer>({shared(bowTie), nullptr}));
    EXPECT_FALSE(foundSoFar<gmBadPointer>({shared(farAway), nullptr, shared(bowTie)}));
}

TEST(RegionSetCleanUp, LooksAtEveryOutlineBeforeThePairs) {
    EXPECT_TRUE(foundSoFar<gmBadPointer>({shared(bowTie), shared(bowTie), nullptr})) << "also after the first hit";
    EXPECT_FALSE(foundSoFar<gmBadPointer>(crossing() + Regions{nullptr})) << "and compares none before";
}

TEST(RegionSetCleanUp, ForgetsWhatItHadFoundWithTheOtherCaches) {
    TestRegionSet set(Regions{shared(bowTie), nullptr});
    EXPECT_THROW(set.isSelfIntersecting(), gmBadPointer);
    EXPECT_TRUE(set.isSelfIntersecting());
    set.cleanCacheInfo();
    EXPECT_THROW(set.isSelfIntersecting(), gmBadPointer);
    set.setRegions({});
    EXPECT_FALSE(set.isSelfIntersecting()) << "an empty set has no outline";
    set.setRegions(regionsOf({farAway}));
    EXPECT_TRUE(set.isSelfIntersecting()) << "and that is not remembered";
}

TEST(RegionSetCleanUp, RemembersNothingOfAnEmptySet) {
    TestRegionSet set;
    EXPECT_FALSE(set.isSelfIntersecting());
    set.setRegions(crossing());
    EXPECT_TRUE(set.isSelfIntersecting());
}

TEST(RegionSetCleanUp, ComparesEachRegionWithThoseBehindItFirstToLast) {
    using Empty = gmContourDefs::EmptyContour;
    const Regions pair = crossing();
    const RegionCPtr empty(new gmRegion);
    EXPECT_FALSE(isSelfIntersecting({pair[0], empty})) << "nothing of it crosses the first";
    EXPECT_FALSE(foundSoFar<Empty>({empty, pair[0]})) << "but it cannot be asked itself";
    EXPECT_TRUE(foundSoFar<Empty>({empty, shared(bowTie)}));
    EXPECT_TRUE(isSelfIntersecting({pair[0], empty, shared(farAway), pair[1]})) << "0 and 3 before 1 and 2";
    EXPECT_FALSE(foundSoFar<Empty>({shared(farAway), empty, pair[0], pair[1]})) << "1 and 2 before 2 and 3";
    EXPECT_TRUE(isSelfIntersecting({pair[0], pair[1], empty, shared(farAway)})) << "and ends with the first hit";
}

// ----- regularize and outerHull

TEST(RegionSetCleanUp, CopiesASetWithoutCrossings) {
    gmRegionSet set = setOf({"0 0, 9 0, 9 9, 0 9", "4 4, 5 4, 5 5, 4 5"});
    set.cachedVectorSize(7);
    gmRegionSet out = setOf({bowTie});
    set.outerHull(out);
    EXPECT_EQ(out.regions(), set.regions()) << "the same objects";
    EXPECT_EQ(out.cachedVectorSize(), 7);
    out = setOf({bowTie});
    set.regularize(out);
    EXPECT_EQ(out.regions(), set.regions());
    const Regions before = set.regions();
    set.regularize(set);
    set.outerHull(set);
    EXPECT_EQ(set.regions(), before);
}

TEST(RegionSetCleanUp, GivesAnEmptySetOfAnEmptySet) {
    gmRegionSet out = setOf({bowTie});
    gmRegionSet().outerHull(out);
    EXPECT_TRUE(out.regions().empty());
    out = setOf({bowTie});
    gmRegionSet().regularize(out);
    EXPECT_TRUE(out.regions().empty());
}

TEST(RegionSetCleanUp, CleansUpASingleRegion) {
    const gmRegionSet set = setOf({bowTie});
    EXPECT_EQ(support::textOfRegularized(set), R"("2 0, 1 1, 0 0, 0 2, 1 1, 2 2")");
    EXPECT_EQ(support::textOfOuterHull(set), R"("1 1, 0 0, 0 2, 1 1, 2 2, 2 0")");
    EXPECT_EQ(set, setOf({bowTie})) << "which stays as it is";
}

TEST(RegionSetCleanUp, CleansUpEveryRegionAlsoThoseThatCrossNothing) {
    const Regions regions = regionsOf({farAway, bowTie, "50 0, 52 2, 52 0, 50 2"});
    gmRegionSet out;
    gmRegionSet(regions).regularize(out);
    ASSERT_EQ(out.regions().size(), 3U);
    EXPECT_EQ(*out.regions()[0], *regions[0]);
    EXPECT_NE(out.regions()[0], regions[0]) << "an equal region, a new one";
    EXPECT_EQ(text(out.regions()[2]->points()), R"("52 0, 51 1, 50 0, 50 2, 51 1, 52 2")");
}

TEST(RegionSetCleanUp, GivesTheResultTheDefaultCacheLimit) {
    gmRegionSet set = setOf({bowTie});
    set.cachedVectorSize(8);
    set.regularize(set);
    EXPECT_EQ(set.cachedVectorSize(), 3);
}

TEST(RegionSetCleanUp, TakesAResultAsItIsTheSecondTime) {
    for (const bool hull : {false, true}) {
        gmRegionSet set(crossing());
        hull ? set.outerHull(set) : set.regularize(set);
        ASSERT_EQ(set.regions().size(), 1U);
        EXPECT_FALSE(set.isSelfIntersecting());
        const Regions once = set.regions();
        hull ? set.outerHull(set) : set.regularize(set);
        EXPECT_EQ(set.regions(), once) << "the same objects";
    }
}

TEST(RegionSetCleanUp, DoesNotCompareTheLastRegionThatTakesTheSecondsPlace) {
    const Regions three = regionsOf({"0 0, 8 0, 8 4, 0 4", "1 3, 2 3, 2 6, 1 6", "6 3, 7 3, 7 6, 6 6"});
    EXPECT_EQ(support::textOfRegularized(gmRegionSet(three)),
              R"("0 0, 8 0, 8 4, 2 4, 2 6, 1 6, 1 4, 2 4, 2 3, 1 3, 1 4, 0 4" + "6 3, 7 3, 7 6, 6 6")");
}

TEST(RegionSetCleanUp, ComparesTheMergedRegionWithThoseInBetween) {
    // 0 meets 1; the last takes 1's place; what was 2 is still ahead and meets what 1 brought.
    const Regions four = regionsOf({"0 0, 4 0, 4 4, 0 4", "3 1, 12 1, 12 3, 3 3", "10 0, 14 0, 14 4, 10 4", farAway});
    gmRegionSet out;
    gmRegionSet(four).regularize(out);
    ASSERT_EQ(out.regions().size(), 2U);
    EXPECT_EQ(*out.regions()[1], *four[3]);
}

TEST(RegionSetCleanUp, DoesNotGoBackToRegionsThatMetNothing) {
    // 0 meets neither 1 nor 2, which meet each other.
    const Regions regions = regionsOf({farAway, "0 0, 4 0, 4 4, 0 4", "2 2, 6 2, 6 6, 2 6"});
    EXPECT_EQ(support::textOfRegularized(gmRegionSet(regions)),
              R"("90 90, 91 90, 91 91" + "0 0, 4 0, 4 2, 6 2, 6 6, 2 6, 2 4, 4 4, 4 2, 2 2, 2 4, 0 4")");
}

TEST(RegionSetCleanUp, LosesTheHolesOfMergedRegionsAndKeepsThoseOfOthers) {
    Handles regions;
    for (const char* outline : {"0 0, 4 0, 4 4, 0 4", "2 2, 6 2, 6 6, 2 6", "20 20, 24 20, 24 24, 20 24"})
        regions.emplace_back(new gmRegion(support::points(outline)));
    regions[0]->holes(regionsOf({"1 1, 1.5 1, 1.5 1.5"}));
    regions[2]->holes(regionsOf({"21 21, 22 21, 22 22"}));
    gmRegionSet out;
    gmRegionSet(regions).outerHull(out);
    EXPECT_TRUE(out.regions()[0]->holes().empty());
    EXPECT_EQ(out.regions()[1]->holes(), regions[2]->holes());
}

// ----- Failure

TEST(RegionSetCleanUp, LeavesTheOtherSetAloneWhenItFails) {
    for (const bool hull : {false, true}) {
        TestRegionSet set(regionsOf({farAway, untraceable}));
        gmRegionSet out = setOf({farAway});
        for (int call = 0; call < 2; call++) {
            try {
                hull ? set.outerHull(out) : set.regularize(out);
                ADD_FAILURE() << call;
            } catch (const gmContourDefs::BadParams& error) {
                EXPECT_EQ(error.message(), "invalid contour");
            }
            EXPECT_EQ(out, setOf({farAway}));
        }
        set.setRegions(regionsOf({farAway}));
        hull ? set.outerHull(out) : set.regularize(out);
        EXPECT_EQ(out, setOf({farAway})) << "computed anew";
        EXPECT_NE(out.regions()[0], set.regions()[0]);
    }
}

TEST(RegionSetCleanUp, FailsAtAnEmptyHandleAndThenGoesByWhatWasFound) {
    gmRegionSet out = setOf({farAway});
    for (const bool hull : {false, true}) {
        const auto cleanUp = [&](const gmRegionSet& set) { hull ? set.outerHull(out) : set.regularize(out); };
        const gmRegionSet crosses(Regions{shared(bowTie), nullptr});
        for (int call = 0; call < 3; call++)
            EXPECT_THROW(cleanUp(crosses), gmBadPointer) << call;
        EXPECT_EQ(out.regions().size(), 1U);
        const gmRegionSet unknown(Regions{nullptr, shared(bowTie)});
        EXPECT_THROW(cleanUp(unknown), gmBadPointer);
        cleanUp(unknown);
        EXPECT_EQ(out.regions(), unknown.regions()) << "a copy";
        out = setOf({farAway});
    }
}

// ----- The result sets: the number of handles on a result region tells which of them live

/// A region of the remembered regularised set, which holds one handle on it.
RegionCPtr resultOf(const gmRegionSet& set) {
    gmRegionSet out;
    set.regularize(out);
    return out.regions().at(0);
}

TEST(RegionSetCleanUp, KeepsAResultUntilTheNextIsMade) {
    TestRegionSet set(crossing());
    const RegionCPtr result = resultOf(set);
    EXPECT_EQ(result->referenceCount(), 2);
    EXPECT_EQ(resultOf(set), result) << "the same object";
    set.cleanCacheInfo();
    EXPECT_EQ(result->referenceCount(), 2) << "kept, and not used any more";
    EXPECT_NE(resultOf(set), result);
    EXPECT_EQ(result->referenceCount(), 1);
}

TEST(RegionSetCleanUp, LetsGoOfAnOldResultAlsoWhenTheNextFails) {
    gmRegionSet set(crossing());
    const RegionCPtr result = resultOf(set);
    set.regions(regionsOf({untraceable}));
    EXPECT_THROW(resultOf(set), gmContourDefs::BadParams);
    EXPECT_EQ(result->referenceCount(), 1);
}

TEST(RegionSetCleanUp, SharesItsResultWithItsCopiesUntilTheyMakeTheirOwn) {
    RegionCPtr result;
    {
        gmRegionSet set(crossing());
        result = resultOf(set);
        gmRegionSet copy(set);
        EXPECT_EQ(result->referenceCount(), 2) << "one result set for both";
        EXPECT_EQ(resultOf(copy), result);
        copy.add(shared(farAway));
        EXPECT_EQ(result->referenceCount(), 2);
        set = setOf({farAway});
        EXPECT_EQ(result->referenceCount(), 2) << "the copy still holds it";
        EXPECT_NE(resultOf(copy), result);
        EXPECT_EQ(result->referenceCount(), 1);
        result = resultOf(copy);
    }
    EXPECT_EQ(result->referenceCount(), 1) << "it ends with its last set";
}

TEST(RegionSetCleanUp, KeepsTheTwoResultsApart) {
    const gmRegionSet set(crossing());
    const RegionCPtr regularized = resultOf(set);
    gmRegionSet hull;
    set.outerHull(hull);
    EXPECT_NE(hull.regions()[0]->points(), regularized->points());
    EXPECT_EQ(hull.regions()[0]->referenceCount(), 3) << "the set, the remembered one and this";
    EXPECT_EQ(resultOf(set), regularized);
}

TEST(RegionSetCleanUp, IsAssignedFromASetThatOnlyItsOwnCacheKeepsAlive) {
    gmRegionSet set(crossing());
    const RegionCPtr result = resultOf(set);
    set = rememberedRegularized(set);
    EXPECT_EQ(set.regions(), Regions{result});
    EXPECT_EQ(result->referenceCount(), 2) << "the result set is gone";
    EXPECT_FALSE(set.isSelfIntersecting());
}

// ----- Drawing

/// Draws a segment from its first vertex to its second.
class DrawnRegion : public gmRegion {
  public:
    explicit DrawnRegion(const std::vector<gmVector<2>>& points) : gmContour(points, true) {}

    using gmRegion::draw;
    void draw(gmUITablet& tablet, const gmColor& color, const gmUITablet::Layers& layers) const override {
        tablet.drawLineSeg({points()[0].x(), points()[0].y()}, {points()[1].x(), points()[1].y()}, color, layers);
    }
};

RegionCPtr drawn(const std::string& vertices) {
    return RegionCPtr(new DrawnRegion(support::points(vertices)));
}

TEST(RegionSetDrawing, HasEveryRegionDrawItselfInOrder) {
    support::RecordingTablet tablet;
    const gmColor red(255, 0, 0);
    const gmRegionSet set(Regions{drawn("5 6, 7 8"), shared("0 0, 1 0, 1 1"), drawn("1 2, 3 4")});
    set.draw(tablet, red, gmUITablet::eOverlayLayer);
    EXPECT_THAT(tablet.calls,
                ElementsAre(support::RecordingTablet::Call{{5, 6}, {7, 8}, red, gmUITablet::eOverlayLayer},
                            support::RecordingTablet::Call{{1, 2}, {3, 4}, red, gmUITablet::eOverlayLayer}));
    gmRegionSet().draw(tablet, red, gmUITablet::eImageLayer);
    EXPECT_EQ(tablet.calls.size(), 2U);
}

TEST(RegionSetDrawing, FailsAtAnEmptyHandleOnceTheOnesBeforeAreDrawn) {
    support::RecordingTablet tablet;
    const gmRegionSet set(Regions{drawn("5 6, 7 8"), nullptr, drawn("1 2, 3 4")});
    EXPECT_THROW(set.draw(tablet, gmColor(), gmUITablet::eImageLayer), gmBadPointer);
    EXPECT_EQ(tablet.calls.size(), 1U);
}

/// Takes the regions from the set that it draws.
class EmptyingTablet : public support::RecordingTablet {
  public:
    explicit EmptyingTablet(gmRegionSet& set) : set_(set) {}
    void drawLineSeg(const gmPair<double>& from, const gmPair<double>& to, const gmColor& color,
                     Layers layers) override {
        RecordingTablet::drawLineSeg(from, to, color, layers);
        set_.regions(Regions());
    }

  private:
    gmRegionSet& set_;
};

TEST(RegionSetDrawing, LooksAtTheListAnewForEveryRegion) {
    gmRegionSet set(Regions{drawn("5 6, 7 8"), drawn("1 2, 3 4")});
    EmptyingTablet tablet(set);
    set.draw(tablet, gmColor(), gmUITablet::eImageLayer);
    EXPECT_EQ(tablet.calls.size(), 1U);
}

}  // namespace
