// Traps that searches fell into once: each shows where a structure that is kept can be wrong.
#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <cmath>
#include <functional>
#include <vector>

#include "cntr/region.h"
#include "cntr/regionst.h"
#include "tests/support/testcontour.h"

using support::TestContour;

namespace {

constexpr std::size_t enoughForATree = 82;

std::vector<gmVector<2>> halfCircle(std::size_t n, double radius) {
    std::vector<gmVector<2>> points;
    for (std::size_t i = 0; i < n; ++i)
        points.emplace_back(radius, gmRadian(3.141592653589793 * static_cast<double>(i) / static_cast<double>(n - 1)));
    return points;
}

/// What an observer sees while a contour that has its tree is opened or closed.
const TestContour* observed = nullptr;
std::size_t crossingsSeen = 0;

void observe(const gmPersistent&) {
    crossingsSeen = observed->intersections(gmLineSeg({1, -1}, {1, 1}), true).size();
}

TEST(SearchedContour, AnswersAnObserverForTheNewClosedness) {
    for (const bool closed : {true, false}) {
        TestContour contour(halfCircle(enoughForATree, 100), !closed);
        for (int i = 0; i < 3; ++i)
            contour.closestVertexIndex({0, 0});
        contour.reportChanges(true);
        observed = &contour;
        gmPersistent::changeObserver(observe);
        contour.isClosed(closed);
        gmPersistent::changeObserver(nullptr);
        EXPECT_EQ(crossingsSeen, closed ? 1U : 0U);
    }
}

/// Asks about itself while its vertices are being replaced.
class Curious : public TestContour {
  public:
    using TestContour::TestContour;
    void cleanCacheInfo() override {
        TestContour::cleanCacheInfo();
        for (int i = 0; i < 3 && !points().empty(); ++i)
            closestVertexIndex({0, 0});
    }
};

TEST(SearchedContour, ForgetsWhatItLearntWhileItsVerticesWereReplaced) {
    Curious contour(halfCircle(enoughForATree, 100), true);
    contour.points({{0, 0}, {1, 0}, {0, 1}});
    EXPECT_EQ(contour.closestVertexIndex({-100, 0}), 0);
    EXPECT_EQ(contour.closestPoint({-100, 0}, true), gmVector<2>(0, 0));
}

gmRegionSet rowOfSquares(std::vector<gmPtrHandle<gmRegion>>& squares, double x) {
    for (int i = 0; i < 12; ++i) {
        const double left = x + 2 * i;
        squares.emplace_back(new gmRegion({{left, 0}, {left + 1, 0}, {left + 1, 1}, {left, 1}}));
    }
    return gmRegionSet(squares);
}

TEST(SearchedRegionSet, LetsARegionThatRemembersAMirrorImageDecide) {
    std::vector<gmPtrHandle<gmRegion>> squares;
    const gmRegionSet set = rowOfSquares(squares, 0);
    const gmVector<2> justAbove(0.5, 1 + 5e-7);
    for (int i = 0; i < 3; ++i)
        EXPECT_FALSE(set.inside(justAbove, false));
    gmPtrHandle<gmRegion> first = squares.front();
    *first = gmRegion(first->points());
    first->encloseRect(gmXform<2>(gmMatrix<2>(1, 0, 0, 2), {0, 0}));
    const bool answer = first->inside(justAbove, false);
    for (int i = 0; i < 3; ++i) {
        EXPECT_EQ(set.inside(justAbove, false), answer);
        EXPECT_EQ(set.distToPoint(justAbove, false, false, true), answer ? 0.0 : first->distToPoint(justAbove, false));
    }
}

TEST(SearchedRegionSet, AsksNoRegionBehindTheFirstThatHoldsThePoint) {
    // Both hold (20, 20); the second comes first in any order by place.
    std::vector<gmPtrHandle<gmRegion>> regions;
    regions.emplace_back(new gmRegion({{15, 15}, {35, 15}, {35, 35}, {15, 35}}));
    regions.emplace_back(new gmRegion({{5, 5}, {25, 5}, {25, 25}, {5, 25}}));
    rowOfSquares(regions, 0);
    const gmRegionSet set(regions);
    for (int i = 0; i < 3; ++i)
        EXPECT_TRUE(set.inside({30, 30}, false));
    EXPECT_TRUE(set.inside({20, 20}, false));
    // A mirror image or a stretch shares the entry of what is remembered.
    const gmXform<2> stretch(gmMatrix<2>(1, 0, 0, 2), {0, 0});
    EXPECT_EQ(regions[0]->encloseRect(stretch).upper(), gmVector<2>(35, 35)) << "was asked";
    EXPECT_EQ(regions[1]->encloseRect(stretch).upper(), gmVector<2>(25, 50)) << "was not asked";
}

/// Asks something while its holes are being set.
class Asking : public gmRegion {
  public:
    explicit Asking(const std::vector<gmVector<2>>& points) : gmContour(points, true) {}
    void makeDataConsistentWithPoints() override {
        if (ask)
            ask();
    }
    std::function<void()> ask;
};

TEST(SearchedRegionSet, ForgetsWhatItLearntWhileHolesWereSet) {
    std::vector<gmPtrHandle<gmRegion>> squares;
    rowOfSquares(squares, 0);
    auto* const asking = new Asking({{0, 2}, {1, 2}, {1, 3}, {0, 3}});
    squares.emplace_back(asking);
    const gmRegionSet set(squares);
    const gmVector<2> farAway(1000, 1000);
    const auto distance = [&] { return set.distToPoint(farAway, false, true, false); };
    asking->ask = [&] {
        for (int i = 0; i < 3; ++i)
            EXPECT_GT(distance(), 900);
    };
    asking->holes(std::vector<RegionCPtr>{RegionCPtr(new gmRegion({{1000, 1001}, {1001, 1001}, {1001, 1002}}))});
    for (int i = 0; i < 3; ++i)
        EXPECT_EQ(distance(), 1);
}

TEST(SearchedRegionSet, AnswersForAPointSoFarAwayThatDistancesOverflow) {
    std::vector<gmPtrHandle<gmRegion>> squares;
    const gmRegionSet set = rowOfSquares(squares, -1e150);
    const gmVector<2> farAway(1.3407807929942596e154, 0);
    const double first = set.distToPoint(farAway, false, false, false);
    for (int i = 0; i < 3; ++i)
        EXPECT_EQ(set.distToPoint(farAway, false, false, false), first);
}

TEST(SearchedContour, KeepsTheSignOfTheFirstZeroOfItsBox) {
    const gmContour contour({{5, 0}, {-0.0, 0}, {1, 0}, {1, 1}, {0.0, 1}}, true);
    EXPECT_TRUE(std::signbit(contour.encloseRect(gmXform<2>::I).lower().x()));
}

/// A region that says it is open, as nothing prevents.
class OpenRegion : public gmRegion {
  public:
    explicit OpenRegion(const std::vector<gmVector<2>>& points) : gmContour(points, true) {}
    bool isClosed() const override { return false; }
};

TEST(SearchedRegion, ThatSaysItIsOpenIsAskedByItsRay) {
    const OpenRegion region(halfCircle(enoughForATree, 100));
    const bool first = region.inside({0, 50}, false);
    for (int i = 0; i < 3; ++i)
        EXPECT_EQ(region.inside({0, 50}, false), first);
}

}  // namespace
