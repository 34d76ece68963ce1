// What a region set is when memory runs out.
#include <gtest/gtest.h>

#include <string>

#include "tests/support/allocations.h"
#include "tests/support/testregionset.h"
#include "tests/support/text.h"

using support::interruptedAt;
using support::regionsOf;
using support::setOf;
using support::shared;
using support::text;

namespace {

gmRegionSet crossing() {
    return setOf({"0 0, 4 0, 4 4, 0 4", "2 2, 6 2, 6 6, 2 6", "20 0, 22 2, 22 0, 20 2"});
}

/// Everything that a set remembers, and what its regions are.
std::string everything(const gmRegionSet& asked) {
    std::string answer;
    for (const RegionCPtr& region : asked.regions())
        answer += text(region->points()) + '\n';
    if (asked.regions().empty())
        return answer;
    answer += text(asked.area(true)) + text(asked.centerOfMass(false)) + text(asked.encloseRect(gmXform<2>::I).size()) +
              text(asked.inertiaMatrix(true) * gmVector<2>(1, 2)) + text(asked.isSelfIntersecting());
    for (const bool hull : {false, true}) {
        gmRegionSet cleaned;
        if (hull)
            asked.outerHull(cleaned);
        else
            asked.regularize(cleaned);
        for (const RegionCPtr& region : cleaned.regions())
            answer += text(region->points());
    }
    return answer;
}

/// Changes a set that remembers its answers, each allocation of the change failing in turn: afterwards it answers as a
/// new set of its regions does.
template <class Change>
void expectUsableWhereverInterrupted(Change change) {
    bool more = true;
    for (long which = 0; more; ++which) {
        SCOPED_TRACE("allocation " + std::to_string(which));
        ASSERT_LT(which, support::enoughAllocations);
        gmRegionSet changed = crossing();
        everything(changed);
        more = interruptedAt(which, [&] { change(changed); });
        EXPECT_EQ(everything(changed), everything(gmRegionSet(changed.regions())));
    }
}

TEST(InterruptedRegionSet, IsUsableAfterAnAssignment) {
    const gmRegionSet source = setOf({"1 1, 9 1, 9 8, 1 8", "10 10, 12 10, 12 12"});
    everything(source);
    expectUsableWhereverInterrupted([&](gmRegionSet& target) { target = source; });
}

TEST(InterruptedRegionSet, IsUsableAfterNewRegions) {
    const auto regions = regionsOf({"1 1, 9 1, 9 8, 1 8", "10 10, 12 10, 12 12"});
    expectUsableWhereverInterrupted([&](gmRegionSet& target) { target.regions(regions); });
    const RegionCPtr region = shared("30 30, 31 30, 31 31");
    expectUsableWhereverInterrupted([&](gmRegionSet& target) { target.add(region); });
}

TEST(InterruptedRegionSet, IsUsableAfterCleaningItselfUp) {
    expectUsableWhereverInterrupted([](gmRegionSet& target) { target.regularize(target); });
    expectUsableWhereverInterrupted([](gmRegionSet& target) { target.outerHull(target); });
}

}  // namespace
