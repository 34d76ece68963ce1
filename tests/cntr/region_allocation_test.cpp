// What a region is when memory runs out.
#include <gtest/gtest.h>

#include <string>
#include <vector>

#include "tests/support/allocations.h"
#include "tests/support/testregion.h"

using support::Holes;
using support::interruptedAt;
using support::points;
using support::region;
using support::shared;

namespace {

const char* const plate = "0 0, 10 0, 10 10, 0 10";
const char* const other = "1 1, 9 1, 9 8, 1 8";
const char* const crossing = "0 0, 2 2, 2 0, 0 2";

/// A plate with a hole that has an island.
gmRegion holed(const char* outline = plate) {
    const gmPtrHandle<gmRegion> hole(new gmRegion(points("2 2, 7 2, 7 7, 2 7")));
    hole->holes(Holes{shared("4 4, 6 4, 6 6, 4 6")});
    gmRegion result = region(outline);
    result.holes(Holes{hole});
    return result;
}

/// Everything that a region remembers, and some of what it does not.
std::string everything(const gmRegion& asked) {
    gmRegion cleaned;
    gmRegion hull;
    gmRegion convex;
    asked.regularize(cleaned);
    asked.outerHull(hull);
    asked.convexHull(convex);
    std::string answer = support::text(asked.area(false)) + ' ' + support::text(asked.area(true)) + ' ' +
                         support::text(asked.centerOfMass(false)) + ' ' + support::text(asked.inside({5, 5}, true)) +
                         ' ' + support::text(asked.inside({3, 3}, true)) + ' ' +
                         support::text(asked.closestPoint({5, 3}, false, true)) + ' ';
    for (const gmRegion* result : {&cleaned, &hull, &convex})
        answer += support::text(result->points()) + ' ' + std::to_string(result->holes().size()) + ' ';
    return answer + support::text(asked.inertiaMatrix(false) * gmVector<2>(1, 2));
}

/// Changes a region that remembers its answers, each allocation of the change failing in turn: afterwards it answers as
/// a new region of its outline and holes does.
template <class Make, class Change>
void expectUsableWhereverInterrupted(Make make, Change change) {
    bool more = true;
    for (long which = 0; more; ++which) {
        SCOPED_TRACE("allocation " + std::to_string(which));
        ASSERT_LT(which, support::enoughAllocations);
        gmRegion changed = make();
        everything(changed);
        more = interruptedAt(which, [&] { change(changed); });
        gmRegion fresh(changed.points());
        fresh.holes(changed.holes());
        EXPECT_EQ(everything(changed), everything(fresh));
    }
}

TEST(InterruptedRegion, AnswersCorrectlyAfterwards) {
    for (const char* outline : {plate, crossing}) {
        const auto make = [&] { return outline == plate ? holed() : region(crossing); };
        const std::string expected = everything(make());
        bool more = true;
        for (long which = 0; more; ++which) {
            ASSERT_LT(which, support::enoughAllocations);
            const gmRegion asked = make();
            more = interruptedAt(which, [&] { everything(asked); });
            EXPECT_EQ(everything(asked), expected) << "allocation " << which;
        }
    }
}

TEST(InterruptedRegion, IsUsableAfterAnAssignment) {
    const gmRegion source = holed(other);
    everything(source);
    expectUsableWhereverInterrupted([] { return holed(); }, [&](gmRegion& target) { target = source; });
    expectUsableWhereverInterrupted([] { return holed(); },
                                    [](gmRegion& target) { target = gmRegion(*target.holes()[0]); });
    expectUsableWhereverInterrupted([] { return holed(); }, [](gmRegion& target) { target = *target.holes()[0]; });
}

TEST(InterruptedRegion, IsUsableAfterNewHoles) {
    expectUsableWhereverInterrupted(
        [] { return holed(); }, [holes = Holes{shared("1 1, 2 1, 2 2")}](gmRegion& target) { target.holes(holes); });
    expectUsableWhereverInterrupted([] { return holed(); }, [](gmRegion& target) { target.holes(Holes{}); });
}

TEST(InterruptedRegion, IsUsableAfterMappingOntoItself) {
    const gmXform<2> turn(gmMatrix<2>(0, -1, 1, 0), {1, 2});
    expectUsableWhereverInterrupted([] { return holed(); }, [&](gmRegion& target) { target.map(turn, target); });
}

TEST(InterruptedRegion, IsUsableAfterCleaningItselfUp) {
    const auto make = [] { return region(crossing); };
    expectUsableWhereverInterrupted(make, [](gmRegion& target) { target.regularize(target); });
    expectUsableWhereverInterrupted(make, [](gmRegion& target) { target.outerHull(target); });
    expectUsableWhereverInterrupted(make, [](gmRegion& target) { target.convexHull(target); });
}

TEST(InterruptedRegion, EndsWithItsHolesWhenThereIsNoMemoryToEndThemInTurn) {
    // The hole's own hole goes onto a list when the plate ends, which takes memory.
    for (long which = 0; which < 3; ++which) {
        RegionCPtr island = shared("4 4, 6 4, 6 6, 4 6");
        {
            gmPtrHandle<gmRegion> hole(new gmRegion(points("2 2, 7 2, 7 7, 2 7")));
            hole->holes(Holes{island});
            gmPtrHandle<gmRegion> owner(new gmRegion(points(plate)));
            owner->holes(Holes{hole});
            hole = nullptr;
            EXPECT_EQ(island->referenceCount(), 2);
            interruptedAt(which, [&] { owner = nullptr; });
        }
        EXPECT_EQ(island->referenceCount(), 1);
    }
}

TEST(Allocations, AreNoneForARegionsRememberedAnswers) {
    const gmRegion asked = holed();
    const auto measure = [&] {
        asked.area(true);
        asked.centerOfMass(false);
        asked.inertiaMatrix(false);
        asked.holes()[0]->area(false);
    };
    measure();
    EXPECT_EQ(support::allocationsOf(measure), 0);
}

}  // namespace
