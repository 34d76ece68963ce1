// Random sets of regions against the plain procedures, to the bit.
#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <algorithm>
#include <cmath>
#include <cstdint>
#include <functional>
#include <string>
#include <thread>

#include "cntr/detail/randomindex.h"
#include "tests/reference/keyedcache.h"
#include "tests/support/outcome.h"
#include "tests/support/setgenerators.h"
#include "tests/support/testregionset.h"

using reference::Region;
using reference::RegionSet;
using support::agree;
using support::Fresh;
using support::made;
using support::outcome;
using support::Outcome;
using support::Random;
using support::regionsOf;
using support::same;
using support::setOf;
using support::shared;
using support::TestRegionSet;
using support::text;
using support::textOf;
using testing::ElementsAre;
using Regions = std::vector<RegionCPtr>;

namespace {

// ----- The library's sets

bool sameRegion(const gmRegion& actual, const Region& expected) {
    if (!support::sameBits(actual.points(), expected.points) || actual.holes().size() != expected.holes.size())
        return false;
    for (std::size_t i = 0; i < expected.holes.size(); i++)
        if (!sameRegion(*actual.holes()[i], expected.holes[i]))
            return false;
    return true;
}

/// The regions that were there before are the same objects, the others equal and new.
testing::AssertionResult isMadeOf(const gmRegionSet& actual, const RegionSet& expected, const Fresh& before) {
    const Regions regions = actual.regions();
    bool right = regions.size() == expected.size();
    for (std::size_t i = 0; right && i < regions.size(); i++) {
        const auto kept = before.known.find(expected[i].get());
        if (kept != before.known.end()) {
            right = regions[i] == kept->second;
            continue;
        }
        right = !regions[i].isNull() && sameRegion(*regions[i], *expected[i]);
        for (const auto& handle : before.handles)
            right = right && regions[i] != handle;
    }
    if (right)
        return testing::AssertionSuccess();
    auto failure = testing::AssertionFailure() << "set of";
    for (const RegionCPtr& region : regions)
        failure << "\n    " << (region.isNull() ? "nothing" : text(region->points()));
    return failure << "\ninstead of\n" << textOf(expected);
}

gmXform<2> anyXform(Random& random) {
    const double angle = random.real(0.0, 6.3);
    const double size = random.oneOf<double>({0.5, 1.0, 3.0, 1e-9, 1e200, std::nan("")});
    return gmXform<2>(gmMatrix<2>(gmRadian(angle), gmRadian(angle), size, 1.0), random.gridPoint(-3, 3));
}

class EveryRegionSet : public testing::Test {
  protected:
    template <class Check>
    static void forEachSet(std::uint32_t first, std::uint32_t count, const Check& check) {
        for (std::uint32_t seed = first; seed < first + count && !HasFailure(); seed++) {
            Random random(seed);
            const RegionSet plain = support::anySet(random);
            SCOPED_TRACE("seed " + std::to_string(seed) + ": " + textOf(plain));
            check(plain, random);
        }
    }
};

TEST_F(EveryRegionSet, IsMeasuredAsByThePlainProcedures) {
    forEachSet(0, 6000, [](const RegionSet& plain, Random&) {
        for (const bool holes : {true, false}) {
            const Fresh one(plain), two(plain), three(plain);
            for (int call = 0; call < 2; call++)
                EXPECT_TRUE(agree([&] { return one.set.area(holes); }, [&] { return reference::area(plain, holes); }));
            const auto center = outcome([&] { return reference::centerOfMass(plain, holes); });
            EXPECT_TRUE(agree([&] { return two.set.centerOfMass(holes); },
                              [&] { return reference::centerOfMass(plain, holes); }));
            if (center.answer) {
                EXPECT_TRUE(same(two.set.centerOfMass(holes), *center.answer)) << "remembered";
            }
            for (int call = 0; call < 2; call++)
                EXPECT_TRUE(agree([&] { return three.set.inertiaMatrix(holes); },
                                  [&] { return reference::inertiaMatrix(plain, holes); }));
        }
    });
}

TEST_F(EveryRegionSet, LiesToPointsAsByThePlainProcedures) {
    forEachSet(10000, 5000, [](const RegionSet& plain, Random& random) {
        const Fresh fresh(plain);
        for (int i = 0; i < 4; i++) {
            gmVector<2> p = i == 0 ? random.point(-3, 9) : random.gridPoint(-1, 8) * 0.5;
            const auto& near = plain.empty() ? nullptr : random.oneOf(plain);
            if (i == 1 && near && !near->points.empty())
                p = (random.oneOf(near->points) + random.oneOf(near->points)) * 0.5;
            SCOPED_TRACE("point " + text(p));
            for (const bool holes : {false, true}) {
                EXPECT_TRUE(agree([&] { return fresh.set.inside(p, holes); },
                                  [&] { return reference::inside(plain, p, holes); }));
                for (const bool vertexOnly : {false, true})
                    for (const bool zero : {false, true})
                        EXPECT_TRUE(agree([&] { return fresh.set.distToPoint(p, vertexOnly, holes, zero); },
                                          [&] { return reference::distToPoint(plain, p, vertexOnly, holes, zero); }));
            }
        }
    });
}

TEST_F(EveryRegionSet, HasTheBoxesOfThePlainProcedure) {
    forEachSet(20000, 5000, [](const RegionSet& plain, Random& random) {
        const Fresh fresh(plain);
        for (const gmXform<2>& xform : {gmXform<2>(), anyXform(random), anyXform(random)})
            for (int call = 0; call < 2; call++)
                EXPECT_TRUE(agree([&] { return fresh.set.encloseRect(xform); },
                                  [&] { return reference::encloseRect(plain, xform); }))
                    << text(xform);
    });
}

using CleanUp = Outcome<RegionSet>;

std::string described(const CleanUp& cleanUp) {
    return cleanUp.answer ? textOf(*cleanUp.answer) : cleanUp.refusal;
}

testing::AssertionResult isCleanUp(const Outcome<gmRegionSet>& actual, const CleanUp& expected, const Fresh& before) {
    if (actual.refusal != expected.refusal)
        return testing::AssertionFailure() << "\"" << actual.refusal << "\" instead of " << described(expected);
    return expected.answer ? isMadeOf(*actual.answer, *expected.answer, before) : testing::AssertionSuccess();
}

/// Twice into another set, and into the set itself. What the search for crossings found before it failed is kept.
TEST_F(EveryRegionSet, IsCleanedUpAsByThePlainProcedures) {
    forEachSet(30000, 5000, [](const RegionSet& plain, Random&) {
        bool found = false;
        const auto crosses = outcome([&] { return reference::findSelfIntersection(plain, found), found; });
        const Fresh fresh(plain);
        EXPECT_TRUE(agree([&] { return fresh.set.isSelfIntersecting(); },
                          [&] { return reference::findSelfIntersection(plain, found), found; }));
        EXPECT_EQ(fresh.set.isSelfIntersecting(), found);
        for (const bool hull : {false, true}) {
            SCOPED_TRACE(hull ? "outer hull" : "regularised");
            const CleanUp later =
                outcome([&] { return found ? reference::outerHullRegularize(plain, hull) : RegionSet(plain); });
            const Fresh other(plain);
            for (int call = 0; call < 3; call++) {
                gmRegionSet out;
                gmRegionSet& target = call == 2 ? const_cast<TestRegionSet&>(other.set) : out;
                const auto result = outcome([&] {
                    hull ? other.set.outerHull(target) : other.set.regularize(target);
                    return gmRegionSet(target);
                });
                const CleanUp first = {std::nullopt, crosses.refusal};
                EXPECT_TRUE(isCleanUp(result, call == 0 && !crosses.answer ? first : later, other)) << "call " << call;
                if (!result.answer) {
                    EXPECT_EQ(target.regions().size(), call == 2 ? plain.size() : 0U) << "left as it was";
                }
            }
        }
    });
}

/// One of the ways to come to a list of regions with a mode.
Outcome<bool> bring(gmRegionSet& set, const Fresh& fresh, int way, gmContourDefs::IntersectionMode mode) {
    const Regions list = fresh.set.regions();
    return outcome([&] {
        if (way == 0)
            set = gmRegionSet(list, mode);
        if (way == 1)
            set = gmRegionSet(fresh.handles, mode);
        if (way == 2)
            set.regions(list, mode);
        if (way == 3)
            set.regions(fresh.handles, mode);
        if (way == 4) {
            set.regions(Regions(list.begin(), list.end() - 1));
            set.isSelfIntersecting();
            gmRegionSet out;
            set.regularize(out);
            set.outerHull(out);
            set.add(list.back(), mode);
        }
        return true;
    });
}

TEST_F(EveryRegionSet, IsMadeAsItsModeSays) {
    forEachSet(40000, 5000, [](const RegionSet& plain, Random& random) {
        for (const int mode : {0, 1, 2, random.oneOf<int>({-1, 3, 1000})}) {
            const bool complete = std::find(plain.begin(), plain.end(), nullptr) == plain.end();
            const int way = random.integer(0, plain.empty() || !complete ? 3 : 4);
            SCOPED_TRACE("mode " + std::to_string(mode) + ", way " + std::to_string(way));
            const CleanUp expected =
                outcome([&] { return mode == 1 || mode == 2 ? reference::cleanedUp(plain, mode == 1) : plain; });
            const Fresh fresh(plain);
            gmRegionSet set = support::setOf({"0 0, 9 9, 9 0, 0 9"});
            const auto result = bring(set, fresh, way, static_cast<gmContourDefs::IntersectionMode>(mode));
            if (way == 4 && !result.answer && set.regions().size() < plain.size())
                continue;  // it was refused before the last region came
            EXPECT_EQ(result.refusal, expected.refusal);
            if (result.answer && expected.answer) {
                EXPECT_TRUE(isMadeOf(set, *expected.answer, fresh));
            } else if (way >= 2) {
                EXPECT_EQ(set.regions(), fresh.set.regions()) << "the new list is in place";
            }
        }
    });
}

// ----- Boxes: which transforms a set remembers, and which it forgets

void onFreshThread(const std::function<void()>& action) {
    std::thread(action).join();
}

gmXform<2> shift(double x) {
    return gmXform<2>(gmMatrix<2>(1, 0, 0, 1), {x, 0});
}

/// Which of the shifts 0, 1, ... 19 the set remembers: a copy without a proper region left still answers those.
std::vector<int> rememberedShifts(const gmRegionSet& set) {
    TestRegionSet copy;
    static_cast<gmRegionSet&>(copy) = set;
    copy.cachedVectorSize(1000000);
    gmPtrHandle<gmRegion> nowhere(new gmRegion(support::points("nan nan")));
    nowhere->cachedVectorSize(1000000);  // draws nothing from the generator that all caches share
    copy.setRegions(Regions{nowhere});
    std::vector<int> result;
    for (int x = 0; x < 20; x++)
        if (!copy.encloseRect(shift(x)).isEmpty())
            result.push_back(x);
    return result;
}

TEST(RegionSetBoxes, EncloseTheOutlinesOfAllRegions) {
    const gmRegionSet set(Regions{shared("1 1, 2 1, 2 5"), made({support::points("-3 2, 0 2, 0 4, -3 4"),
                                                                 {{support::points("9 9, 10 9, 10 10"), {}}}})});
    EXPECT_TRUE(same(set.encloseRect(gmXform<2>::I), gmRect({-3, 1}, {5, 4})));
    const gmXform<2> turn(gmMatrix<2>(0, -2, 2, 0), {1, 0});
    EXPECT_TRUE(same(set.encloseRect(turn), gmRect({-9, -6}, {8, 10})));
}

TEST(RegionSetBoxes, AreKeptForOneTransformMoreThanTheLimit) {
    const gmRegionSet set = setOf({"0 0, 1 0, 1 1"});
    for (const int x : {5, 3, 4, 2})
        set.encloseRect(shift(x));
    EXPECT_THAT(rememberedShifts(set), ElementsAre(2, 3, 4, 5));
    set.encloseRect(shift(9));
    EXPECT_EQ(rememberedShifts(set).size(), 4U);
}

TEST(RegionSetBoxes, WithALimitOfZeroAreKeptForTheLastTransformOnly) {
    gmRegionSet set = setOf({"0 0, 1 0, 1 1"});
    set.cachedVectorSize(0);
    for (const int x : {3, 1, 2}) {
        set.encloseRect(shift(x));
        EXPECT_THAT(rememberedShifts(set), ElementsAre(x));
    }
}

TEST(RegionSetBoxes, StayWhenTheLimitIsLowered) {
    gmRegionSet set = setOf({"0 0, 1 0, 1 1"});
    set.cachedVectorSize(5);
    for (int x = 0; x < 6; x++)
        set.encloseRect(shift(x));
    set.cachedVectorSize(1);
    EXPECT_THAT(rememberedShifts(set), ElementsAre(0, 1, 2, 3, 4, 5));
    set.encloseRect(shift(6));
    EXPECT_EQ(rememberedShifts(set).size(), 6U);
}

TEST(RegionSetBoxes, AreSharedByTransformsThatDifferInTheLastStoredValueOnly) {
    const gmRegionSet set = setOf({"0 0, 1 0, 1 1"});
    const gmRect box = set.encloseRect(gmXform<2>(gmMatrix<2>(1, 0, 0, 5), {0, 0}));
    EXPECT_TRUE(same(set.encloseRect(gmXform<2>::I), box));
    for (std::size_t value = 0; value < 5; value++) {
        std::vector<double> v = {0, 0, 1, 0, 0, 1};
        v[value] += 0.5;
        const gmXform<2> xform(gmMatrix<2>(v[2], v[3], v[4], v[5]), {v[0], v[1]});
        EXPECT_FALSE(set.encloseRect(xform) == box) << value;
    }
}

TEST(RegionSetBoxes, OfTransformsThatAreNoNumbersAreNotKept) {
    onFreshThread([] {
        const gmRegionSet set = setOf({"0 0, 1 0, 1 1"});
        for (int x = 0; x < 4; x++)
            set.encloseRect(shift(x));
        for (std::size_t value = 0; value < 6; value++) {
            std::vector<double> v = {0, 0, 1, 0, 0, 1};
            v[value] = std::nan("");
            const gmXform<2> xform(gmMatrix<2>(v[2], v[3], v[4], v[5]), {v[0], v[1]});
            EXPECT_TRUE(set.encloseRect(xform).isEmpty() && set.encloseRect(xform).isEmpty()) << value;
        }
        EXPECT_THAT(rememberedShifts(set), ElementsAre(0, 1, 2, 3));
        gmRandomUniform plain(1);
        EXPECT_EQ(detail::randomCacheIndex(1000), gfIFloor(plain.next(0.0, 1000.0))) << "nothing was drawn";
    });
}

TEST(RegionSetBoxes, AreCopiedAndNotShared) {
    const gmRegionSet set = setOf({"0 0, 1 0, 1 1"});
    set.encloseRect(shift(1));
    gmRegionSet copy = setOf({"0 0, 1 0, 1 1"});
    copy.encloseRect(shift(7));
    copy = set;
    EXPECT_THAT(rememberedShifts(copy), ElementsAre(1)) << "its own are gone";
    copy.encloseRect(shift(2));
    set.encloseRect(shift(3));
    EXPECT_THAT(rememberedShifts(copy), ElementsAre(1, 2));
    EXPECT_THAT(rememberedShifts(set), ElementsAre(1, 3));
    copy.add(shared("0 0, 1 0, 1 1"));
    EXPECT_THAT(rememberedShifts(copy), ElementsAre());
    EXPECT_THAT(rememberedShifts(set), ElementsAre(1, 3));
}

/// Sets of regions that they share, on one thread, against plain maps. A region remembers boxes of its own, and draws
/// from the same generator.
TEST(RegionSetBoxes, AreForgottenAsThePlainMapsSayThroughRandomUse) {
    for (std::uint32_t seed = 0; seed < 12; seed++)
        onFreshThread([seed] {
            SCOPED_TRACE("seed " + std::to_string(seed));
            Random random(seed);
            gmRandomUniform generator(1);
            const Regions regions = regionsOf({"0 0, 4 0, 4 4", "9 9, 8 3, 2 2"});
            std::vector<reference::RememberingOutline> outlines;
            for (const RegionCPtr& region : regions)
                outlines.emplace_back(reference::Outline{region->points(), true}, generator);
            gmRegionSet sets[] = {gmRegionSet(regions), gmRegionSet(regions)};
            reference::KeyedCache<gmXform<2>, gmRect, reference::FirstFiveLess> known[2];
            for (int i = 0; i < 150; i++) {
                const int which = random.integer(0, 1);
                gmRegionSet& set = sets[which];
                if (random.chance(0.1))
                    set.cachedVectorSize(random.integer(0, 5));
                if (random.chance(0.03)) {
                    set.regions(regions);
                    known[which].clear();
                }
                const gmXform<2> xform = shift(random.integer(0, 19));
                gmRect expected;
                if (const gmRect* box = known[which].find(xform)) {
                    expected = *box;
                } else {
                    for (auto& outline : outlines)
                        expected = expected.enclose(outline.encloseRect(xform));
                    known[which].insert(xform, expected, set.cachedVectorSize(), generator);
                }
                EXPECT_TRUE(same(set.encloseRect(xform), expected));
                std::vector<int> shifts;
                for (const auto& entry : known[which].entries())
                    shifts.push_back(static_cast<int>(entry.first.values()[0]));
                ASSERT_EQ(rememberedShifts(set), shifts) << "step " << i;
            }
            EXPECT_EQ(detail::randomCacheIndex(1000000), gfIFloor(generator.next(0.0, 1000000.0)));
        });
}

}  // namespace
