// What a region set holds, what it remembers and for how long, and whom it tells.
#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <functional>
#include <string>
#include <vector>

#include "tests/support/changes.h"
#include "tests/support/setqueries.h"

using support::ChangeCounter;
using support::region;
using support::regionsOf;
using support::setOf;
using support::shared;
using support::TestRegionSet;
using support::text;
using testing::ElementsAre;
using Handles = std::vector<gmPtrHandle<gmRegion>>;
using Regions = std::vector<RegionCPtr>;

namespace {

Regions crossing() {
    return regionsOf({"0 0, 4 0, 4 4, 0 4", "2 2, 6 2, 6 6, 2 6"});
}

gmPtrHandle<gmRegion> square() {
    return gmPtrHandle<gmRegion>(new gmRegion({{0, 0}, {1, 0}, {1, 1}, {0, 1}}));
}

// ----- The list

TEST(RegionSetModel, StartsEmpty) {
    const gmRegionSet set;
    EXPECT_TRUE(set.regions().empty());
    EXPECT_EQ(set.cachedVectorSize(), 3);
    EXPECT_TRUE(set == gmRegionSet());
    EXPECT_FALSE(set.reportsChanges());
}

TEST(RegionSetModel, KeepsItsRegionsInOrder) {
    const Regions regions = regionsOf({"9 9, 10 9, 10 10", "0 0, 1 0, 1 1", "0 0, 4 4, 4 0, 0 4"});
    const gmRegionSet set(regions);
    EXPECT_EQ(set.regions(), regions) << "the same objects";
    EXPECT_EQ(set.cachedVectorSize(), 3);
}

TEST(RegionSetModel, TakesHandlesThatMayChangeTheirRegion) {
    const gmPtrHandle<gmRegion> one = square();
    const std::vector<gmPtrHandle<gmRegion>> list = {one, nullptr, one};
    const gmRegionSet set(list, gmContourDefs::eKeep);
    EXPECT_EQ(set.regions(), (Regions{one, nullptr, one}));
    EXPECT_EQ(one->referenceCount(), 5);
    gmRegionSet other = setOf({"5 5, 6 5, 6 6"});
    other.regions(list, gmContourDefs::eKeep);
    EXPECT_EQ(other.regions(), (Regions{one, nullptr, one}));
    EXPECT_EQ(set.cachedVectorSize(), 3);
}

TEST(RegionSetModel, SharesItsRegionsAndLetsGoOfThem) {
    const RegionCPtr one = shared("0 0, 1 0, 1 1");
    {
        const gmRegionSet set(Regions{one});
        EXPECT_EQ(one->referenceCount(), 2);
        gmRegionSet copy(set);
        EXPECT_EQ(one->referenceCount(), 3);
        copy.regions(Regions());
        EXPECT_EQ(one->referenceCount(), 2);
    }
    EXPECT_EQ(one->referenceCount(), 1);
}

TEST(RegionSetModel, HandsOutACopyOfTheList) {
    const gmRegionSet set(crossing());
    Regions list = set.regions();
    EXPECT_EQ(list[0]->referenceCount(), 2);
    list.clear();
    EXPECT_EQ(set.regions().size(), 2U);
}

TEST(RegionSetModel, AddsAtTheEndWithoutLookingAtWhatIsThere) {
    const RegionCPtr one = shared("0 0, 1 0, 1 1");
    gmRegionSet set = setOf({"5 5, 6 5, 6 6"});
    const RegionCPtr first = set.regions()[0];
    set.add(one, gmContourDefs::eKeep);
    set.add(one);
    set.add(nullptr);
    EXPECT_EQ(set.regions(), (Regions{first, one, one, nullptr}));
    EXPECT_EQ(one->referenceCount(), 3);
}

TEST(RegionSetModel, KeepsItsCacheLimitWhenTheListIsReplaced) {
    gmRegionSet set;
    set.cachedVectorSize(8);
    set.regions(crossing());
    set.add(shared("0 0, 1 0, 1 1"));
    EXPECT_EQ(set.cachedVectorSize(), 8);
}

gmContourDefs::IntersectionMode mode(int number) {
    return static_cast<gmContourDefs::IntersectionMode>(number);
}

// ----- Modes

/// A way to bring a list of regions and a mode into a set.
struct Way {
    const char* name;
    void (*bring)(gmRegionSet&, const std::vector<gmPtrHandle<gmRegion>>&, gmContourDefs::IntersectionMode);

    friend void PrintTo(const Way& way, std::ostream* out) { *out << way.name; }
};

Regions readOnly(const Handles& list) {
    return Regions(list.begin(), list.end());
}

class RegionSetModes : public testing::TestWithParam<Way> {
  protected:
    static Handles handles(std::initializer_list<const char*> outlines) {
        Handles result;
        for (const char* outline : outlines)
            result.emplace_back(new gmRegion(support::points(outline)));
        return result;
    }
};

using M = gmContourDefs::IntersectionMode;
INSTANTIATE_TEST_SUITE_P(
    RegionSetModel, RegionSetModes,
    testing::Values(Way{"Construction", [](gmRegionSet& s, const Handles& l, M m) { s = gmRegionSet(readOnly(l), m); }},
                    Way{"ConstructionFromHandles",
                        [](gmRegionSet& s, const Handles& l, M m) { s = gmRegionSet(l, m); }},
                    Way{"Replacing", [](gmRegionSet& s, const Handles& l, M m) { s.regions(readOnly(l), m); }},
                    Way{"ReplacingByHandles", [](gmRegionSet& s, const Handles& l, M m) { s.regions(l, m); }},
                    Way{"Adding",
                        [](gmRegionSet& s, const Handles& l, M m) {
                            s.regions(Regions());
                            for (const auto& region : l)
                                s.add(region, region == l.back() ? m : gmContourDefs::eKeep);
                        }}),
    [](const auto& instance) { return std::string(instance.param.name); });

TEST_P(RegionSetModes, KeepsOverlappingRegionsAsTheyAre) {
    const Handles list = handles({"0 0, 4 0, 4 4, 0 4", "0 0, 2 2, 2 0, 0 2"});
    for (const int number : {0, 3, 4, -1, 256, 2147483647}) {
        gmRegionSet set;
        GetParam().bring(set, list, mode(number));
        EXPECT_EQ(set.regions(), readOnly(list)) << number;
    }
}

TEST_P(RegionSetModes, ReplacesTheSetByItsOuterHull) {
    gmRegionSet set;
    GetParam().bring(set, handles({"0 0, 4 0, 4 4, 0 4", "2 2, 6 2, 6 6, 2 6"}), gmContourDefs::eOuterHull);
    EXPECT_EQ(text(set), R"("4 2, 6 2, 6 6, 2 6, 2 4, 4 4, 4 2, 2 2, 2 4, 0 4, 0 0, 4 0")");
}

TEST_P(RegionSetModes, ReplacesTheSetByItsRegularisedForm) {
    gmRegionSet set;
    GetParam().bring(set, handles({"0 0, 4 0, 4 4, 0 4", "2 2, 6 2, 6 6, 2 6"}), gmContourDefs::eRegularize);
    EXPECT_EQ(text(set), R"("0 0, 4 0, 4 2, 6 2, 6 6, 2 6, 2 4, 4 4, 4 2, 2 2, 2 4, 0 4")");
}

TEST_P(RegionSetModes, PassOnWhatFailsWithTheNewListInPlace) {
    const bool constructs = std::string(GetParam().name).substr(0, 12) == "Construction";
    for (const int number : {1, 2}) {
        gmRegionSet set = setOf({"0 0, 1 0, 1 1"});
        set.area(true);
        const Handles list = handles({"7 7, 8 7, 8 8, 7 8", "0 1, 1 0, 2 0, 0 0"});
        EXPECT_THROW(GetParam().bring(set, list, mode(number)), gmContourDefs::BadParams);
        if (!constructs) {
            EXPECT_EQ(set.regions(), readOnly(list));
            EXPECT_EQ(set.area(true), 1.5) << "no old answer";
        }
        const Handles withNone = {list[0], nullptr};
        EXPECT_THROW(GetParam().bring(set, withNone, mode(number)), gmBadPointer);
        if (!constructs) {
            EXPECT_EQ(set.regions(), readOnly(withNone));
        }
    }
}

// ----- The cache limit and the check

TEST(RegionSetModel, TakesAnyCacheLimitThatIsNotNegative) {
    gmRegionSet set;
    for (const long limit : {0L, 1L, 2147483647L}) {
        set.cachedVectorSize(limit);
        EXPECT_EQ(set.cachedVectorSize(), limit);
    }
}

TEST(RegionSetModel, RefusesOtherCacheLimitsAndChangesNothing) {
    gmRegionSet set;
    set.cachedVectorSize(5);
    set.reportChanges(true);
    ChangeCounter counter;
    const std::vector<std::pair<long, std::string>> refused = {
        {-1, ""}, {-2147483648L, ""}, {2147483648L, "cachedVectorSize does not fit in 32 bits"}};
    for (const auto& [limit, message] : refused) {
        try {
            set.cachedVectorSize(limit);
            ADD_FAILURE() << limit;
        } catch (const gmContourDefs::BadParams& error) {
            EXPECT_EQ(error.message(), message);
        }
        EXPECT_EQ(set.cachedVectorSize(), 5);
    }
    EXPECT_EQ(counter.take(), 0);
}

TEST(RegionSetModel, ChecksThatThereIsARegion) {
    TestRegionSet set;
    try {
        set.checkEmptyRegionSet();
        ADD_FAILURE();
    } catch (const gmContourDefs::EmptyRegionSet& error) {
        EXPECT_EQ(error.message(), "");
    }
    set.setRegions({nullptr});
    set.checkEmptyRegionSet();
}

// ----- Equality

TEST(RegionSetModel, EqualsASetOfEqualRegionsInTheSameOrder) {
    const gmRegionSet set = setOf({"0 0, 1 0, 1 1", "5 5, 6 5, 6 6"});
    EXPECT_TRUE(set == setOf({"0 0, 1 0, 1 1", "5 5, 6 5, 6 6"}));
    EXPECT_FALSE(set != setOf({"0 0, 1 0, 1 1", "5 5, 6 5, 6 6"}));
    EXPECT_FALSE(set == setOf({"5 5, 6 5, 6 6", "0 0, 1 0, 1 1"}));
    EXPECT_FALSE(set == setOf({"0 0, 1 0, 1 1", "5 5, 6 5, 7 6"}));
    EXPECT_FALSE(set == setOf({"0 0, 1 0, 2 1", "5 5, 6 5, 6 6"}));
    EXPECT_FALSE(set == setOf({"0 0, 1 0, 1 1"}));
    EXPECT_FALSE(setOf({"0 0, 1 0, 1 1"}) == set);
    EXPECT_TRUE(set != gmRegionSet());
}

TEST(RegionSetModel, ComparesRegionsAsTheyCompareThemselves) {
    const gmPtrHandle<gmRegion> one(new gmRegion(region("0 0, 9 0, 9 9")));
    const gmPtrHandle<gmRegion> drilled(new gmRegion(*one));
    drilled->holes(support::Holes{shared("7 1, 8 1, 8 2")});
    EXPECT_TRUE(gmRegionSet(Regions{one}) == gmRegionSet(Regions{drilled})) << "not by their holes";
}

TEST(RegionSetModel, ComparesNoCaches) {
    gmRegionSet one(crossing());
    one.cachedVectorSize(9);
    one.area(true);
    support::textOfRegularized(one);
    EXPECT_TRUE(one == gmRegionSet(crossing()));
    EXPECT_TRUE(gmRegionSet(crossing()) == one);
}

TEST(RegionSetModel, ComparesNoFurtherThanTheFirstDifference) {
    const RegionCPtr a = shared("0 0, 1 0, 1 1");
    const RegionCPtr b = shared("0 0, 1 0, 2 1");
    EXPECT_FALSE(gmRegionSet(Regions{a, nullptr}) == gmRegionSet(Regions{b, nullptr}));
    EXPECT_FALSE(gmRegionSet(Regions{nullptr}) == gmRegionSet(Regions{a, b}));
    EXPECT_THROW((void)(gmRegionSet(Regions{a, nullptr}) == gmRegionSet(Regions{a, b})), gmBadPointer);
    EXPECT_THROW((void)(gmRegionSet(Regions{a, b}) == gmRegionSet(Regions{a, nullptr})), gmBadPointer);
    EXPECT_THROW((void)(gmRegionSet(Regions{nullptr, a}) == gmRegionSet(Regions{nullptr, b})), gmBadPointer);
}

// ----- Copies

TEST(RegionSetModel, CopiesTheCacheLimitAndNotTheReporting) {
    gmRegionSet set(crossing());
    set.cachedVectorSize(6);
    set.reportChanges(true);
    EXPECT_EQ(gmRegionSet(set).cachedVectorSize(), 6);
    EXPECT_FALSE(gmRegionSet(set).reportsChanges());
    gmRegionSet assigned;
    assigned = set;
    EXPECT_EQ(assigned.cachedVectorSize(), 6);
    EXPECT_FALSE(assigned.reportsChanges());
    set = gmRegionSet();
    EXPECT_EQ(set.cachedVectorSize(), 3);
    EXPECT_TRUE(set.reportsChanges());
}

// ----- Whom it tells, and when

/// Writes down what is called, and the number of regions then.
struct WatchedSet : TestRegionSet {
    using TestRegionSet::TestRegionSet;
    void cleanCacheInfo() override {
        TestRegionSet::cleanCacheInfo();
        note("clean");
    }
    void makeDataConsistentWithPoints() override { note("data"); }
    void makePointsConsistentWithData() override { note("points"); }
    void note(const std::string& what) const { calls.push_back(what + " " + std::to_string(regions().size())); }

    mutable std::vector<std::string> calls;
};

TEST(RegionSetModel, CleansUpBeforeTheListIsReplacedAndCallsTheHookBeforeTheMode) {
    for (const int mode : {0, 1, 2}) {
        WatchedSet set;
        set.regions(crossing(), static_cast<gmContourDefs::IntersectionMode>(mode));
        EXPECT_THAT(set.calls, ElementsAre("clean 0", "data 2"));
        EXPECT_EQ(set.regions().size(), mode == 0 ? 2U : 1U);
        set.calls.clear();
        const Handles three(3, square());
        set.regions(three, gmContourDefs::eKeep);
        EXPECT_THAT(set.calls, ElementsAre(mode == 0 ? "clean 2" : "clean 1", "data 3"));
        set.calls.clear();
        set.add(shared("0 0, 9 9, 9 0, 0 9"), static_cast<gmContourDefs::IntersectionMode>(mode));
        EXPECT_THAT(set.calls, ElementsAre("clean 3", "data 4"));
    }
}

TEST(RegionSetModel, CallsNoHookElsewhere) {
    WatchedSet set{crossing()};
    set.setRegions(regionsOf({"0 0, 9 9, 9 0, 0 9"}));
    set.cachedVectorSize(4);
    gmRegionSet out;
    set.regularize(out);
    set.regularize(set);
    set.outerHull(set);
    static_cast<gmRegionSet&>(set) = out;
    set.area(true);
    set.encloseRect(gmXform<2>::I);
    EXPECT_TRUE(set.calls.empty());
}

/// What a set says while the action runs: the number of regions and the area at each announcement.
std::vector<std::string> announcements(TestRegionSet& set, const std::function<void()>& action) {
    std::vector<std::string> result;
    set.reportChanges(true);
    ChangeCounter counter([&](const gmPersistent&) {
        result.push_back(std::to_string(set.regions().size()));
        if (result.size() < 9)
            result.back() += " of " + text(set.area(true));
    });
    action();
    set.reportChanges(false);
    return result;
}

TEST(RegionSetModel, AnnouncesAChangeOnceAndBeforeAnythingIsDropped) {
    for (const int number : {0, 1, 2}) {
        const auto mode = static_cast<gmContourDefs::IntersectionMode>(number);
        TestRegionSet set(Regions{square()});
        set.area(true);
        EXPECT_THAT(announcements(set, [&] { set.regions(crossing(), mode); }), ElementsAre("1 of 1"));
        set.setRegions({});
        set.cleanCacheInfo();
        set.area(true);
        EXPECT_THAT(announcements(set, [&] { set.regions(Handles(2, square()), mode); }), ElementsAre("0 of 0"));
        set.regions(crossing());
        set.area(true);
        EXPECT_THAT(announcements(set, [&] { set.add(square(), mode); }), ElementsAre("2 of 32"));
        set.area(true);
        set.setRegions({});
        EXPECT_EQ(announcements(set, [&] { set.cleanCacheInfo(); }).size(), 1U);
        EXPECT_EQ(set.area(true), 0.0);
    }
}

TEST(RegionSetModel, AnnouncesTheCacheLimitOnceItIsSet) {
    gmRegionSet set;
    set.reportChanges(true);
    long seen = -1;
    ChangeCounter counter([&](const gmPersistent&) { seen = set.cachedVectorSize(); });
    set.cachedVectorSize(9);
    EXPECT_EQ(counter.take(), 1);
    EXPECT_EQ(seen, 9);
}

TEST(RegionSetModel, AnnouncesNoAssignmentNorWhatWasSetSecretly) {
    TestRegionSet set(crossing());
    gmRegionSet out;
    out.reportChanges(true);
    EXPECT_TRUE(announcements(set, [&] {
                    static_cast<gmRegionSet&>(set) = setOf({"0 0, 1 0, 1 1", "0 0, 9 9, 9 0, 0 9"});
                    set.setRegions(crossing());
                    set.regularize(out);
                    set.outerHull(out);
                    set.outerHull(set);
                }).empty());
}

}  // namespace
