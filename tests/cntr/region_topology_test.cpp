#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <string>
#include <vector>

#include "tests/support/random.h"
#include "tests/support/testcontour.h"
#include "tests/support/testregion.h"

using support::Holes;
using support::openContour;
using support::points;
using support::region;
using support::shared;
using support::splice;
using support::testRegion;
using support::TestRegion;
using testing::ElementsAre;
using testing::Property;
using testing::Throws;
using testing::ThrowsMessage;

namespace support {

struct OuterHullRegularizeTag {
    using Member = void (gmRegion::*)(gmRegion&, bool) const;
    friend Member memberOf(OuterHullRegularizeTag);
};
template struct Opened<OuterHullRegularizeTag, &gmRegion::outerHullRegularize>;

}  // namespace support

namespace {

using Points = std::vector<gmVector<2>>;
using Empty = gmContourDefs::EmptyContour;
using BadParams = gmContourDefs::BadParams;

const char* const square = "0 0, 10 0, 10 10, 0 10";
const char* const bowTie = "0 0, 2 2, 2 0, 0 2";
const char* const bowTieRegularized = "2 0, 1 1, 0 0, 0 2, 1 1, 2 2";
const char* const bowTieHull = "1 1, 0 0, 0 2, 1 1, 2 2, 2 0";

/// The traces of these never come back to where they started.
const char* const endless[] = {"0 0, 0 2, 2 1, 0 1, 1 1", "1 4, 4 1, 0 4, 3 4, 2 3"};

/// Regularising and the outer hull share most of what they promise.
using CleanUp = void (gmRegion::*)(gmRegion&) const;
const CleanUp cleanUps[] = {&gmRegion::regularize, &gmRegion::outerHull};

Points regularized(const gmRegion& region) {
    gmRegion out;
    region.regularize(out);
    return out.points();
}

Points hull(const gmRegion& region) {
    gmRegion out;
    region.outerHull(out);
    return out.points();
}

TEST(RegionCleanUp, ABowTieBecomesAFigureOfEight) {
    EXPECT_EQ(regularized(region(bowTie)), points(bowTieRegularized));
    EXPECT_EQ(hull(region(bowTie)), points(bowTieHull));
}

TEST(RegionCleanUp, TheTraceStartsAtTheFirstEdgeThatQualifies) {
    EXPECT_EQ(regularized(region("2 0, 0 2, 0 0, 2 2")), points("0 0, 1 1, 2 0, 2 2, 1 1, 0 2"));
    EXPECT_EQ(regularized(region("0 0, 8 0, 2 6, 6 6")), points("8 0, 4 4, 6 6, 2 6, 4 4, 0 0"));
}

TEST(RegionCleanUp, AnEdgeWithNothingOutsideIsNoStart) {
    // It begins with two edges of a loop within the outline, which nothing crosses.
    EXPECT_EQ(regularized(region("4 2, 6 2, 6 6, 0 6, 0 0, 8 0, 8 8, 4 8")),
              points("0 0, 8 0, 8 8, 4 8, 4 6, 6 6, 6 2, 4 2, 4 6, 0 6"));
}

TEST(RegionCleanUp, TheClosingEdgeIsNeverTheStart) {
    // Nothing crosses the edge from (1, 4) to (0, 1), and every other edge is crossed.
    EXPECT_THROW(regularized(region("0 1, 4 3, 1 3, 2 0, 1 4")), BadParams);
    EXPECT_EQ(regularized(region("4 3, 1 3, 2 0, 1 4, 0 1")).front(), gmVector<2>(0, 1));
}

TEST(RegionCleanUp, EitherOfTwoOppositeRaysShowsTheOutside) {
    EXPECT_EQ(regularized(region("0 4, 3 2, 5 3, 3 0, 5 6")).front(), gmVector<2>(3, 2));
}

TEST(RegionCleanUp, AnEdgeThatANeighbourContinuesIsNoStart) {
    // Along a straight line neighbours do not meet: (2, 1) keeps both edges there from being the start.
    EXPECT_THROW(regularized(region("0 0, 2 2, 2 1, 2 0, 0 2")), BadParams);
    EXPECT_EQ(regularized(region("2 2, 2 1, 2 0, 0 2, 0 0")).front(), gmVector<2>(0, 0));
}

TEST(RegionCleanUp, AnEdgeWithAnotherCloseByIsNoStart) {
    // Beside the second edge, within the outline, another one passes. It is 1.95 away from the middle, and then 2.05;
    // the sides of an edge are looked at from a hundredth of the median edge length, here 2.
    const auto start = [](const char* beside) {
        return regularized(region("0 0, 200 200, 200 0, 199 0, " + std::string(beside) + ", 150 0, 0 200")).front();
    };
    EXPECT_EQ(start("197.575 150"), gmVector<2>(199, 0)) << "the third edge";
    EXPECT_EQ(start("197.425 150"), gmVector<2>(200, 0)) << "the second";
}

TEST(RegionCleanUp, ALoopWithinIsTracedAndDroppedFromTheHull) {
    const gmRegion looped = region("0 0, 8 0, 8 8, 4 8, 4 2, 6 2, 6 6, 0 6");
    EXPECT_EQ(regularized(looped), points("8 0, 8 8, 4 8, 4 6, 6 6, 6 2, 4 2, 4 6, 0 6, 0 0"));
    EXPECT_EQ(hull(looped), points("4 6, 0 6, 0 0, 8 0, 8 8, 4 8"));
}

TEST(RegionCleanUp, ComingBackToACrossingTheOtherWayIsNoEndlessTrace) {
    EXPECT_EQ(regularized(region("0 0, 2 2, 3 1, 2 0, 0 2")), points("3 1, 2 0, 1 1, 0 0, 0 2, 1 1, 2 2"));
}

TEST(RegionCleanUp, ASpiralKeepsItsOuterTurn) {
    const gmRegion spiral = region("0 0, 10 0, 10 10, 0 10, 0 2, 8 2, 8 8, 2 8, 2 4, 5 5");
    EXPECT_EQ(regularized(spiral), points("10 0, 10 10, 0 10, 0 2, 2 2, 5 5, 2 4, 2 8, 8 8, 8 2, 2 2, 0 0"));
    EXPECT_EQ(hull(spiral), points("2 2, 0 0, 10 0, 10 10, 0 10, 0 2"));
}

TEST(RegionCleanUp, LobesInAChainAreCutApartAndJoinedAgain) {
    const gmRegion chain = region("0 0, 4 4, 8 0, 8 4, 4 0, 0 4");
    EXPECT_EQ(hull(chain), points("6 2, 4 4, 2 2, 0 4, 0 0, 2 2, 4 0, 6 2, 8 0, 8 4"));
}

TEST(RegionCleanUp, OfLoopsThatShareNoVertexTheFirstIsKept) {
    // The loop between the two that are left lies in the first, as the middle of its edge on it is judged.
    const gmRegion torn = region("4 3, 0 3, 5 0, 1 1, 3 5, 0 3");
    EXPECT_EQ(regularized(torn).size(), 9U);
    EXPECT_EQ(hull(torn), points("0 3, 2 3, 3 5"));
}

TEST(RegionCleanUp, LoopsAreDroppedAndJoinedInTheirOrder) {
    // A corner lies on an edge, and the ends meet: four loops, two of them of a single vertex.
    EXPECT_EQ(hull(region("4 2, 3 5, 4 6, 5 5, 0 5, 4 2")), points("3 5, 4 6, 5 5, 3 5, 4 2, 0 5"));
}

TEST(RegionCleanUp, ADoubledCornerIsALoopOfItsOwnThatIsDropped) {
    const gmRegion doubled = region("0 0, 0 0, 2 2, 2 0, 0 2");
    EXPECT_EQ(regularized(doubled), points("2 0, 1 1, 0 0, 0 0, 0 2, 1 1, 2 2"));
    EXPECT_EQ(hull(doubled), points(bowTieHull));
    EXPECT_EQ(hull(region("0 0, 2 2, 2 2, 2 0, 0 2")), points(bowTieHull));
}

TEST(RegionCleanUp, VerticesTouchWithinAMillionth) {
    // The left lobe has a notch, whose mouth is as wide as that: closed, it is a loop within that is dropped.
    const auto notched = [](const std::string& end) {
        return hull(region("0 0, 8 8, 8 0, 0 8, 0 " + end + ", 1 5, 1 3, 0 4"));
    };
    EXPECT_EQ(notched("4.0000009"), points("4 4, 0 0, 0 4.0000009, 0 8, 4 4, 8 8, 8 0"));
    EXPECT_EQ(notched("4.0000011"), points("4 4, 0 0, 0 4, 1 3, 1 5, 0 4.0000011, 0 8, 4 4, 8 8, 8 0"));
    // Loops that only all but touch are joined.
    EXPECT_EQ(hull(region("0 -9e-7, -4 4, 4 8, -4 8, 4 4, 0 0, 4 -4, -4 -4")),
              points("0 6, -4 4, 0 -9e-7, -4 -4, 4 -4, 0 0, 4 4, 0 6, 4 8, -4 8"));
}

TEST(RegionCleanUp, AnOutlineThatDoesNotCrossItselfIsCopiedWithItsHoles) {
    for (const CleanUp cleanUp : cleanUps) {
        TestRegion shape = testRegion(square);
        const RegionCPtr hole = shared("4 4, 6 4, 6 6, 4 6");
        shape.holes(Holes{hole});
        shape.label(7);
        shape.cachedVectorSize(8);
        EXPECT_EQ(shape.area(true), 96.0);
        shape.moveSecretly(2, {20, 20});
        gmRegion out = region(bowTie);
        (shape.*cleanUp)(out);
        EXPECT_EQ(out, shape);
        EXPECT_THAT(out.holes(), ElementsAre(hole));
        EXPECT_EQ(out.label(), 7U);
        EXPECT_EQ(out.area(true), 96.0) << "the answers are copied as well";
        (shape.*cleanUp)(shape);
        EXPECT_THAT(shape.holes(), ElementsAre(hole));
    }
}

TEST(RegionCleanUp, FewVerticesAreCopied) {
    for (const char* vertices : {"", "1 2", "1 2, 3 4", "1 2, 1 2, 1 2"}) {
        EXPECT_EQ(regularized(region(vertices)), points(vertices));
        EXPECT_EQ(hull(region(vertices)), points(vertices));
    }
}

TEST(RegionCleanUp, TheTraceItselfNeedsThreeVertices) {
    for (const bool hullOnly : {false, true})
        for (const char* vertices : {"", "1 2", "1 2, 3 4"}) {
            gmRegion out = region(square);
            const gmRegion shape = region(vertices);
            const auto trace = [&] { (shape.*memberOf(support::OuterHullRegularizeTag()))(out, hullOnly); };
            EXPECT_THAT(trace, Throws<Empty>(Property(&Empty::message, ""))) << vertices;
            EXPECT_EQ(out.points(), points(square));
        }
}

TEST(RegionCleanUp, TheTraceItselfReplacesAllOfTheTarget) {
    for (const bool hullOnly : {false, true}) {
        gmRegion out = region(square);
        out.holes(Holes{shared("4 4, 6 4, 6 6")});
        out.label(7);
        (region(bowTie).*memberOf(support::OuterHullRegularizeTag()))(out, hullOnly);
        EXPECT_EQ(out.points(), points(hullOnly ? bowTieHull : bowTieRegularized));
        EXPECT_TRUE(out.holes().empty());
        EXPECT_EQ(out.label(), 0U);
    }
}

TEST(RegionCleanUp, AnOutlineDrawnTwiceDoesNotCrossItself) {
    const char* const twice = "0 0, 4 0, 4 4, 0 4, 0 0, 4 0, 4 4, 0 4";
    EXPECT_EQ(regularized(region(twice)), points(twice));
    EXPECT_EQ(hull(region(twice)), points(twice));
}

TEST(RegionCleanUp, ResultsHaveNeitherHolesNorALabel) {
    for (const CleanUp cleanUp : cleanUps) {
        gmRegion shape = region(bowTie);
        shape.holes(Holes{shared("1.6 0.9, 1.99 0.9, 1.99 1.1")});  // close by the start edge
        shape.label(7);
        shape.cachedVectorSize(8);
        gmRegion out = region(square);
        EXPECT_EQ(out.area(false), 100.0);
        (shape.*cleanUp)(out);
        EXPECT_TRUE(out.holes().empty());
        EXPECT_EQ(out.label(), 0U);
        EXPECT_EQ(out.cachedVectorSize(), 3);
        EXPECT_EQ(out.points().size(), 6U);
        EXPECT_EQ(out.area(false), region(bowTieHull).area(false));
        EXPECT_EQ(shape.holes().size(), 1U) << "the source is as it was";
        EXPECT_EQ(shape.points(), points(bowTie));
    }
}

TEST(RegionCleanUp, MayReplaceTheRegionItself) {
    const char* const results[] = {bowTieRegularized, bowTieHull};
    for (const bool known : {false, true})
        for (const int i : {0, 1}) {
            gmRegion shape = region(bowTie);
            shape.holes(Holes{shared("1.6 0.9, 1.8 0.9, 1.8 1.1")});
            shape.label(7);
            EXPECT_GT(shape.length(), 9.0);
            gmRegion other;
            if (known)
                (shape.*cleanUps[i])(other);
            (shape.*cleanUps[i])(shape);
            EXPECT_EQ(shape.points(), points(results[i]));
            EXPECT_TRUE(shape.holes().empty());
            EXPECT_EQ(shape.label(), 0U);
            EXPECT_EQ(shape.length(), region(results[i]).length());
            (shape.*cleanUps[i])(shape);
            EXPECT_EQ(shape.points(), points(results[i])) << "which does not cross itself";
        }
}

TEST(RegionCleanUp, BothResultsAreRememberedApart) {
    TestRegion shape = testRegion(bowTie);
    EXPECT_EQ(regularized(shape), points(bowTieRegularized));
    EXPECT_EQ(hull(shape), points(bowTieHull));
    shape.moveSecretly(2, {3, 0});
    EXPECT_EQ(regularized(shape), points(bowTieRegularized));
    EXPECT_EQ(hull(shape), points(bowTieHull));
    const gmRegion copy(shape);
    EXPECT_EQ(regularized(copy), points(bowTieRegularized)) << "copies take them over";
    EXPECT_EQ(hull(copy), points(bowTieHull));
    gmRegion out;
    shape.outerHull(out);
    out.points(points(square));
    EXPECT_EQ(hull(shape), points(bowTieHull)) << "what becomes of a result does not matter";
}

TEST(RegionCleanUp, EveryChangeForgetsBothResults) {
    const auto expected = gmRegion(points("0 0, 2 2, 3 0, 0 2"));
    for (const int change : {0, 1, 2}) {
        TestRegion shape = testRegion(bowTie);
        regularized(shape);
        hull(shape);
        shape.moveSecretly(2, {3, 0});
        if (change == 0)
            shape.cleanCacheInfo();
        else if (change == 1)
            shape.holes(Holes{});
        else
            shape.points(Points(shape.points()));
        EXPECT_EQ(regularized(shape), regularized(expected)) << change;
        EXPECT_EQ(hull(shape), hull(expected)) << change;
    }
    EXPECT_NE(hull(expected), points(bowTieHull));
}

TEST(RegionCleanUp, AFailureLeavesTheTargetAndIsTriedAgain) {
    for (const CleanUp cleanUp : cleanUps)
        for (const char* vertices : {endless[0], endless[1], "0 0, 2 2, 2 0, 0 2, 0 0, 2 2, 2 0, 0 2"}) {
            gmRegion shape = region(vertices);
            gmRegion out = region(square);
            const RegionCPtr hole = shared("4 4, 6 4, 6 6");
            out.holes(Holes{hole});
            out.label(7);
            for (int again = 0; again < 3; ++again)
                EXPECT_THAT([&] { (shape.*cleanUp)(out); }, ThrowsMessage<BadParams>("invalid contour")) << vertices;
            EXPECT_EQ(out.points(), points(square));
            EXPECT_THAT(out.holes(), ElementsAre(hole));
            EXPECT_EQ(out.label(), 7U);
            EXPECT_THROW((shape.*cleanUp)(shape), BadParams);
            EXPECT_EQ(shape.points(), points(vertices));
        }
}

TEST(RegionCleanUp, AnEndlessTraceIsRefusedByEveryConstructor) {
    for (const auto mode : {gmContourDefs::eRegularize, gmContourDefs::eOuterHull})
        for (const char* vertices : endless) {
            const gmPolygon polygon(points(vertices), gmPolygon::eEvenOdd);
            const auto refused = ThrowsMessage<BadParams>("invalid contour");
            EXPECT_THAT([&] { gmRegion(points(vertices), mode); }, refused);
            EXPECT_THAT([&] { gmRegion(openContour(vertices), mode); }, refused);
            EXPECT_THAT([&] { gmRegion(polygon, mode); }, refused);
        }
}

TEST(RegionCleanUp, EndsForAnyOutline) {
    int traced = 0;
    for (std::uint32_t seed = 1; seed <= 20; ++seed) {
        support::Random random(seed);
        Points vertices;
        for (int i = 0; i < 200; ++i)
            vertices.push_back(seed % 2 ? random.point(0, 100) : random.gridPoint(0, 12));
        for (const CleanUp cleanUp : cleanUps) {
            gmRegion out;
            try {
                (gmRegion(vertices).*cleanUp)(out);
                EXPECT_GE(out.points().size(), 3U);
                ++traced;
            } catch (const BadParams& error) {
                EXPECT_EQ(error.message(), "invalid contour");
            }
        }
    }
    EXPECT_GT(traced, 0);
}

TEST(RegionSplice, RunsAroundOneFromTheFirstCrossingAndThenAroundTheOther) {
    gmRegion out = region("9 9");
    splice(region("0 0, 4 0, 4 4, 0 4"), region("2 2, 6 2, 6 6, 2 6"), out);
    EXPECT_EQ(out.points(), points("4 2, 4 4, 0 4, 0 0, 4 0, 4 2, 6 2, 6 6, 2 6, 2 2"));
}

TEST(RegionSplice, TakesTheFirstEdgeThatCrossesAndTheCrossingNearestToItsStart) {
    gmRegion out;
    splice(region("0 0, 4 0, 4 4, 0 4"), region("6 2, 2 2, 2 1, 6 1"), out);
    EXPECT_EQ(out.points(), points("4 1, 4 4, 0 4, 0 0, 4 0, 4 1, 6 1, 6 2, 2 2, 2 1"));
    splice(region("0 4, 4 4, 4 0, 0 0"), region("6 2, 2 2, 2 1, 6 1"), out);
    EXPECT_EQ(out.points(), points("4 2, 4 0, 0 0, 0 4, 4 4, 4 2, 2 2, 2 1, 6 1, 6 2"));
    splice(region("4 4, 0 4, 0 0, 4 0"), region("2 2, 2 3, 9 3, -9 2"), out);
    EXPECT_EQ(out.points().front().x(), 4.0) << "the closing edge is the first";
}

TEST(RegionSplice, CountsEdgesThatTouchAnEnd) {
    gmRegion out;
    splice(region("0 0, 4 0, 4 4, 0 4"), region("2 -2, 6 2, 6 -2"), out);
    EXPECT_EQ(out.points(), points("4 0, 4 0, 4 4, 0 4, 0 0, 4 0, 6 2, 6 -2, 2 -2"));
}

TEST(RegionSplice, DegenerateEdgesKeepTheirNumbers) {
    gmRegion out;
    splice(region("0 0, 4 0, 4 0, 4 4, 0 4"), region("2 2, 2 2, 6 2, 6 6, 2 6"), out);
    EXPECT_EQ(out.points(), points("4 2, 4 4, 0 4, 0 0, 4 0, 4 0, 4 2, 6 2, 6 6, 2 6, 2 2, 2 2"));
}

TEST(RegionSplice, OfRegionsThatDoNotCrossIsRefused) {
    const char* const message = "spliced regions do not intersect";
    gmRegion out = region(bowTie);
    EXPECT_THAT([&] { splice(region(square), region("20 0, 30 0, 30 5"), out); }, ThrowsMessage<BadParams>(message));
    EXPECT_THAT([&] { splice(region(square), region("4 4, 6 4, 6 6"), out); }, ThrowsMessage<BadParams>(message));
    EXPECT_THAT([&] { splice(gmRegion(), region(square), out); }, ThrowsMessage<BadParams>(message));
    EXPECT_THROW(splice(region(square), gmRegion(), out), Empty);
    EXPECT_EQ(out.points(), points(bowTie));
}

TEST(RegionSplice, HasNeitherHolesNorALabelAndMayReplaceEither) {
    const auto expected = points("4 2, 4 4, 0 4, 0 0, 4 0, 4 2, 6 2, 6 6, 2 6, 2 2");
    gmRegion first = region("0 0, 4 0, 4 4, 0 4");
    gmRegion second = region("2 2, 6 2, 6 6, 2 6");
    first.holes(Holes{shared("1 1, 2 1, 2 3")});
    first.label(7);
    second.label(8);
    gmRegion one(first), other(second);
    splice(one, second, one);
    splice(first, other, other);
    for (const gmRegion* out : {&one, &other}) {
        EXPECT_EQ(out->points(), expected);
        EXPECT_TRUE(out->holes().empty());
        EXPECT_EQ(out->label(), 0U);
    }
}

}  // namespace
