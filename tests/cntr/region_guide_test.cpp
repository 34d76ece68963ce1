// What docs/containment-and-clean-up.md says in numbers.
#include <gtest/gtest.h>

#include <cmath>

#include "tests/support/random.h"
#include "tests/support/testregion.h"

using support::points;
using support::region;

namespace {

std::vector<gmVector<2>> placed(const std::vector<gmVector<2>>& shape, double size, const gmVector<2>& shift) {
    std::vector<gmVector<2>> result;
    for (const gmVector<2>& v : shape)
        result.push_back(v * size + shift);
    return result;
}

/// About 2 large, with 60 edges of about 0.1.
std::vector<gmVector<2>> blob() {
    std::vector<gmVector<2>> shape;
    for (int i = 0; i < 60; ++i) {
        const double t = 6.283185307179586 * i / 60;
        shape.emplace_back(1.0 + 0.3 * std::cos(7 * t), gmRadian(t));
    }
    return shape;
}

/// About 2 large, with a small loop inside.
std::vector<gmVector<2>> looped() {
    std::vector<gmVector<2>> shape;
    for (int i = 0; i < 48; ++i) {
        const double t = 6.283185307179586 * (i + 0.3) / 48;
        shape.emplace_back((2.0 + 4.0 * std::cos(t)) / 6.0, gmRadian(t));
    }
    return shape;
}

struct Range {
    double size;
    double distance;
};

class UsefulCoordinates : public testing::TestWithParam<Range> {};

INSTANTIATE_TEST_SUITE_P(OfRegions, UsefulCoordinates,
                         testing::Values(Range{1e-3, 0}, Range{1e-3, 1e5}, Range{1, 0}, Range{1, 1e8}, Range{1e4, 1e8},
                                         Range{1e8, 0}, Range{5e7, 5e7}));

TEST_P(UsefulCoordinates, MisjudgeNoPointThatIsClearOfTheOutline) {
    const gmVector<2> shift(GetParam().distance, GetParam().distance / 3);
    const gmRegion reference(blob());
    const gmRegion asked(placed(blob(), GetParam().size, shift));
    support::Random random(7);
    int inside = 0;
    for (int i = 0; i < 1000; ++i) {
        const gmVector<2> p = random.point(-1.4, 1.4);
        const bool expected = p.len() < 1.0 + 0.3 * std::cos(7 * p.angle().value());
        if (reference.distToPoint(p, false) < 0.02)
            continue;
        EXPECT_EQ(asked.inside(p * GetParam().size + shift, false), expected);
        inside += expected;
    }
    EXPECT_GT(inside, 300);
}

TEST_P(UsefulCoordinates, LeaveCleanUpItsLoops) {
    const gmVector<2> shift(GetParam().distance, GetParam().distance / 3);
    const gmRegion drawn(placed(looped(), GetParam().size, shift));
    ASSERT_TRUE(drawn.isSelfIntersecting());
    gmRegion result;
    drawn.regularize(result);
    EXPECT_EQ(result.points().size(), 50u);
    drawn.outerHull(result);
    EXPECT_LT(result.points().size(), 40u);
}

TEST(CleanUp, CountsALoopInsideNotTwiceButAsOutsideOrInside) {
    const std::string loop = "0 1, 13 1, 13 12, 3 12, 3 4, 9 4, 9 8, 0 8";
    EXPECT_EQ(region(loop).area(false), 155.0);
    EXPECT_EQ(region(loop, gmContourDefs::eRegularize).area(false), 107.0);
    EXPECT_EQ(region(loop, gmContourDefs::eOuterHull).area(false), 131.0);
}

TEST(CleanUp, RefusesAStarOfWhichEveryEdgeIsCrossed) {
    const std::string star = "6 0, 10 13, 0 5, 13 5, 3 13";
    EXPECT_THROW(region(star, gmContourDefs::eRegularize), gmContourDefs::BadParams);
    EXPECT_THROW(region(star, gmContourDefs::eOuterHull), gmContourDefs::BadParams);
    EXPECT_FALSE(region(star).inside({6.6, 6.5}, false));
    EXPECT_TRUE(region(star).inside({6.3, 2}, false));
}

}  // namespace
