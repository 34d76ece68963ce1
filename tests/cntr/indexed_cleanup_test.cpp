// Clean-up of outlines of moderate size: whatever is kept to answer sooner, the results are those of the plain
// procedures.
#include <gtest/gtest.h>

#include <cmath>
#include <string>

#include "tests/reference/region_topology.h"
#include "tests/support/outcome.h"
#include "tests/support/questions.h"
#include "tests/support/regiongenerators.h"
#include "tests/support/testregion.h"

using reference::Region;
using support::HardFamily;
using support::Points;
using support::Random;

namespace {

// ----- Outlines that cross themselves in a few clear places

/// A loop of jittered vertices of which stretches are run through the other way round.
Points twistedLoop(Random& random, int n, const gmVector<2>& center) {
    Points points = support::hardJittered(random, n, center);
    for (int twists = random.integer(1, 3); twists > 0; twists--) {
        const int first = random.integer(0, n - 4);
        std::reverse(points.begin() + first, points.begin() + random.integer(first + 2, n));
    }
    return points;
}

Points figureEight(Random& random, int n, const gmVector<2>& center) {
    const double depth = random.oneOf<double>({0.0, 0.01, 0.3});
    const int lobes = random.integer(2, 4);
    Points points;
    for (int i = 0; i < n; i++) {
        const double angle = support::twoPi * (i + 0.37) / n;
        points.push_back(center + gmVector<2>(20.0 * std::sin(angle), 20.0 * std::sin(lobes * angle)) +
                         random.point(-depth, depth));
    }
    return points;
}

Points loops(Random& random, int n, const gmVector<2>& center) {
    const int rate = random.oneOf<int>({-5, -3, -2, 2, 3, 5});
    const double radius = random.real(0.3, 1.2);
    Points points;
    for (int i = 0; i < n; i++) {
        const double angle = support::twoPi * i / n;
        points.push_back(center + gmVector<2>(10.0, gmRadian(angle)) +
                         gmVector<2>(10.0 * radius, gmRadian(rate * angle)));
    }
    return points;
}

std::vector<HardFamily> crossingFamilies() {
    return {{"TwistedLoop", twistedLoop},
            {"FigureEight", figureEight},
            {"Loops", loops},
            {"Crossing", support::hardCrossing},
            {"Grid", support::hardGrid},
            {"Runs", support::hardRuns},
            {"Broken", support::hardBroken},
            {"ShortEdges", support::hardShortEdges}};
}

class IndexedCleanUp : public testing::TestWithParam<HardFamily> {};

INSTANTIATE_TEST_SUITE_P(Of, IndexedCleanUp, testing::ValuesIn(crossingFamilies()),
                         [](const auto& instance) { return std::string(instance.param.name); });

void expectCleanUps(const Points& points, bool askedBefore) {
    const gmRegion region(points);
    if (askedBefore)
        for (int i = 0; i < 3; i++)
            region.closestPoint(gmVector<2>(), false);
    for (int call = 0; call < 2; call++)
        for (const bool hull : {false, true})
            EXPECT_TRUE(support::agree(
                [&] {
                    gmRegion out;
                    hull ? region.outerHull(out) : region.regularize(out);
                    return out.points();
                },
                [&] {
                    const Region plain{points, {}};
                    return (hull ? reference::outerHull(plain) : reference::regularize(plain)).points;
                }))
                << (hull ? "outer hull" : "regularised") << ", call " << call;
    support::Pairs::compared() += 2;
}

TEST_P(IndexedCleanUp, IsThatOfThePlainProcedures) {
    for (int round = 0; round < support::Pairs::rounds(); round++)
        for (const int n : {8, 16, 31, 33, 40, 65, 80}) {
            const auto seed = static_cast<std::uint32_t>(round * 1000 + n);
            Random random(seed);
            const gmVector<2> center = random.gridPoint(0, 3);
            const Points points = GetParam().draw(random, n, center);
            SCOPED_TRACE(support::text(points) + ", seed " + std::to_string(seed));
            expectCleanUps(points, random.chance(0.5));
            if (HasFailure())
                return;
        }
}

/// Most random outlines are refused; that some are not is what makes the comparison worth something.
TEST(IndexedCleanUpOfLargeOutlines, IsThatOfThePlainProcedures) {
    int cleanedUp = 0;
    for (const int n : {130, 200})
        for (const HardFamily& family : {crossingFamilies()[0], crossingFamilies()[1], crossingFamilies()[2]}) {
            Random random(static_cast<std::uint32_t>(n));
            const Points points = family.draw(random, n, {});
            SCOPED_TRACE(std::string(family.name) + " of " + std::to_string(n));
            expectCleanUps(points, false);
            cleanedUp += support::outcome([&] {
                             return reference::regularize(Region{points, {}}).points.size() != points.size();
                         }).answer.value_or(false);
        }
    EXPECT_GT(cleanedUp, 0);
}

}  // namespace
