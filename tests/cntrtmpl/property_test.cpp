// How points and data follow each other: by examples, in what other operations put into a shape, and at random.
#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <cmath>
#include <functional>
#include <string>
#include <vector>

#include "tests/support/changes.h"
#include "tests/support/consistent.h"
#include "tests/support/edgelets.h"
#include "tests/support/generators.h"
#include "tests/support/outcome.h"

using support::agree;
using support::ChangeCounter;
using support::ContourT;
using support::edgeContour;
using support::Edgelets;
using support::edgelets;
using support::edgePlate;
using support::HolesT;
using support::moveSecretly;
using support::points;
using support::Random;
using support::RegionT;
using support::scale;
using support::sharedT;
using support::unmarked;
using support::WatchedXform;
using support::XformHandle;
using testing::IsEmpty;

namespace {

using Singular = gmMathError::Singular;
using WatchedHandle = gmPtrHandle<WatchedXform>;

const char* const square = "0 0, 4 0, 4 4, 0 4";
const char* const largeSquare = "0 0, 8 0, 8 8, 0 8";
const char* const bowTie = "0 0, 2 2, 2 0, 0 2";

WatchedHandle watched(double factor = 2.0) {
    return WatchedHandle(new WatchedXform(scale(factor)));
}

// ----- Between points and data

TEST(ContourTMapping, InvertsTheTransformOnceAndWhenItIsNeeded) {
    const WatchedHandle xform = watched();
    ContourT empty({}, xform);
    empty.points(points(square));
    empty.datum({1, 1});
    EXPECT_EQ(xform->requests().inversions, 0);
    EXPECT_EQ(empty.point(edgelets("6 8")[0]), gmVector<2>(3, 4));
    EXPECT_EQ(xform->requests().inversions, 1);
    empty.data(edgelets(largeSquare));
    empty.points(points(square));
    empty.isClosed(false);
    empty.cleanCacheInfo();
    empty.data(edgelets(square));
    EXPECT_EQ(empty.point(edgelets("6 8")[0]), gmVector<2>(3, 4));
    EXPECT_EQ(xform->requests().inversions, 1);
    const WatchedHandle other = watched();
    const ContourT filled(edgelets(largeSquare), other);
    filled.point(edgelets("6 8")[0]);
    EXPECT_EQ(other->requests().inversions, 1);
}

TEST(ContourTMapping, AsksTheTransformOnceForEachVertex) {
    const WatchedHandle xform = watched();
    ContourT contour(edgelets(largeSquare), xform);
    EXPECT_EQ(xform->requests().mappings, 0);
    contour.points(points("1 2, 3 4, 5 6"));
    EXPECT_EQ(xform->requests().mappings, 3);
    EXPECT_EQ(xform->requests().clones, 1);
}

TEST(ContourTMapping, KeepsTheInverseInCopies) {
    const WatchedHandle xform = watched();
    const ContourT contour(edgelets(largeSquare), xform);
    const ContourT copy(contour);
    ContourT assigned = edgeContour(square, 5);
    assigned = contour;
    RegionT region(contour, 1);
    EXPECT_EQ(copy.point(edgelets("6 8")[0]), gmVector<2>(3, 4));
    EXPECT_EQ(assigned.point(edgelets("6 8")[0]), gmVector<2>(3, 4));
    EXPECT_EQ(region.point(edgelets("6 8")[0]), gmVector<2>(3, 4));
    EXPECT_EQ(xform->requests().inversions, 1);
    EXPECT_EQ(xform->requests().clones, 1);
}

TEST(ContourTMapping, ForgetsTheInverseForThatOfWhatIsAssigned) {
    const WatchedHandle xform = watched(4);
    const ContourT notYet({}, xform);
    ContourT contour = edgeContour(largeSquare, 2);
    contour = notYet;
    EXPECT_EQ(xform->requests().inversions, 0);
    EXPECT_EQ(contour.point(edgelets("8 12")[0]), gmVector<2>(2, 3));
    EXPECT_EQ(xform->requests().inversions, 1);
    notYet.point(edgelets("8 12")[0]);
    EXPECT_EQ(xform->requests().inversions, 2) << "one for each";
    contour = ContourT();
    EXPECT_THROW(contour.point(edgelets("8 12")[0]), gmBadPointer);
}

TEST(ContourTMapping, KeepsTheInverseWhenTheContourPartAloneIsAssigned) {
    const WatchedHandle xform = watched();
    ContourT contour(edgelets(largeSquare), xform);
    static_cast<gmContour&>(contour) = gmContour(points("1 1, 2 2"), true);
    EXPECT_EQ(contour.point(edgelets("6 8")[0]), gmVector<2>(3, 4));
    EXPECT_EQ(xform->requests().inversions, 1);
}

TEST(ContourTMapping, PassesOnWhatFailsInTheInversionAndTriesAgain) {
    const WatchedHandle xform = watched();
    xform->requests().refusesInversion = true;
    EXPECT_THROW(ContourT(edgelets(square), xform), Singular);
    ContourT contour({}, xform);
    contour.points(points(square));
    contour.length();
    moveSecretly(contour, 1, {40, 0});
    xform->requests().inversions = 0;
    EXPECT_THROW(contour.data(edgelets("6 8, 2 2")), Singular);
    EXPECT_EQ(contour.data(), edgelets("6 8, 2 2"));
    EXPECT_EQ(contour.points(), points("0 0, 40 0, 4 4, 0 4"));
    EXPECT_EQ(contour.length(), gmContour(contour.points(), true).length()) << "no old answer";
    EXPECT_THROW(contour.point(edgelets("6 8")[0]), Singular);
    EXPECT_EQ(xform->requests().inversions, 2);
    xform->requests().refusesInversion = false;
    EXPECT_EQ(contour.point(edgelets("6 8")[0]), gmVector<2>(3, 4));
    contour.makePointsConsistentWithData();
    EXPECT_EQ(contour.points(), points("3 4, 1 1"));
    EXPECT_EQ(xform->requests().inversions, 3);
}

TEST(ContourTMapping, TakesNoInverseForAnswerAndAsksOnlyOnce) {
    const WatchedHandle xform = watched();
    xform->requests().invertsToNothing = true;
    EXPECT_THROW(ContourT(edgelets(square), xform), gmBadPointer);
    xform->requests().inversions = 0;
    ContourT contour({}, xform);
    EXPECT_THROW(contour.point(edgelets("6 8")[0]), gmBadPointer);
    EXPECT_THROW(contour.data(edgelets(square)), gmBadPointer);
    EXPECT_EQ(xform->requests().inversions, 1);
    EXPECT_EQ(contour.data(), edgelets(square));
    EXPECT_THAT(contour.points(), IsEmpty());
    contour.points(points("1 2"));
    EXPECT_EQ(contour.data(), unmarked("2 4")) << "the other way goes on";
}

TEST(ContourTMapping, FailingPartWayLeavesTheDataUpToThere) {
    const WatchedHandle xform = watched();
    ContourT contour(edgelets(largeSquare), xform);
    xform->requests().mappingsLeft = 2;
    EXPECT_THROW(contour.points(points("1 2, 3 4, 5 6, 7 8")), Singular);
    EXPECT_EQ(contour.points(), points("1 2, 3 4, 5 6, 7 8"));
    EXPECT_EQ(contour.data(), unmarked("2 4, 6 8"));
    contour.makeDataConsistentWithPoints();
    EXPECT_EQ(contour.data().size(), 4U);
}

TEST(ContourTMapping, WithoutATransformDropsTheAnswersAllTheSame) {
    for (const bool points : {false, true}) {
        ContourT contour;
        static_cast<gmContour&>(contour) = gmContour(support::points(square), true);
        EXPECT_EQ(contour.length(), 16.0);
        moveSecretly(contour, 1, {0, 0});
        moveSecretly(contour, 2, {0, 4});
        contour.reportChanges(true);
        ChangeCounter counter;
        if (points)
            EXPECT_THROW(contour.makeDataConsistentWithPoints(), gmBadPointer);
        else
            EXPECT_THROW(contour.data(edgelets(square)), gmBadPointer);
        EXPECT_EQ(counter.take(), 1);
        EXPECT_EQ(contour.length(), 8.0);
    }
}

// ----- Results of plain operations

TEST(RegionTResults, OfAPlainOperationHaveTheirDataMadeAnewUnderTheTransformThatWasThere) {
    const gmRegion crossing(points(bowTie));
    const gmRegion apart(points("0 0, 3 0, 3 3"));
    const auto inRegion = [](auto operation) { return [=](RegionT& out) { operation(static_cast<gmRegion&>(out)); }; };
    struct Result {
        const char* name;
        std::function<void(RegionT&)> write;
    };
    const std::vector<Result> results = {
        {"map", inRegion([&](gmRegion& out) { apart.map(scale(3), out); })},
        {"map of the outline", inRegion([&](gmRegion& out) { apart.map(scale(3), static_cast<gmContour&>(out)); })},
        {"hull", inRegion([&](gmRegion& out) { crossing.convexHull(out); })},
        {"regularised", inRegion([&](gmRegion& out) { crossing.regularize(out); })},
        {"not crossing", inRegion([&](gmRegion& out) { apart.regularize(out); })},
        {"outer hull", inRegion([&](gmRegion& out) { crossing.outerHull(out); })},
        {"onto itself", [](RegionT& out) { out.gmContour::map(scale(2), out); }},
        {"own hull", [](RegionT& out) { out.convexHull(out); }},
    };
    for (const Result& result : results) {
        SCOPED_TRACE(result.name);
        RegionT out = edgePlate();
        const auto xform = out.dataFromPointsXform();
        result.write(out);
        EXPECT_EQ(out.dataFromPointsXform(), xform);
        ASSERT_EQ(out.data().size(), out.points().size());
        for (std::size_t i = 0; i < out.points().size(); i++)
            EXPECT_EQ(out.data()[i], out.datum(out.points()[i]));
        EXPECT_EQ(out.holes().size(), 2U) << "the holes with edge points are not theirs";
        RegionT bare;
        bare.holes(HolesT{sharedT(square)});
        if (result.name == std::string("onto itself") || result.name == std::string("own hull"))
            continue;
        EXPECT_THROW(result.write(bare), gmBadPointer);
        EXPECT_EQ(bare.points(), out.points());
        EXPECT_THAT(bare.data(), IsEmpty());
        EXPECT_EQ(bare.holes().size(), 1U);
    }
}

TEST(RegionTResults, OfCleaningUpWhatDoesNotCrossLeaveTheRegionAsItWas) {
    RegionT region = edgePlate();
    region.reportChanges(true);
    ChangeCounter counter;
    region.regularize(region);
    region.outerHull(region);
    EXPECT_EQ(counter.take(), 0);
    EXPECT_EQ(region.data(), support::edgePlateData());
    EXPECT_EQ(region.gmRegion::holes().size(), 1U);
    RegionT crossing(edgelets(bowTie));
    crossing.regularize(crossing);
    EXPECT_EQ(crossing.points(), points("2 0, 1 1, 0 0, 0 2, 1 1, 2 2"));
    EXPECT_EQ(crossing.data(), unmarked("2 0, 1 1, 0 0, 0 2, 1 1, 2 2"));
}

// ----- At random

/// A transform that is far from having no inverse: a rotation, perhaps scaled, mirrored and sheared, and moved.
XformHandle anyXform(Random& random) {
    const gmVector<2> shift = random.point(-1000, 1000);
    if (random.chance(0.3))
        return XformHandle(new gm2Rigid(gmDegree(random.real(-400, 400)), shift));
    const gmRadian turn(random.real(-4, 4));
    const double size = std::pow(10.0, random.real(-3, 3));
    const gmXform<2> turned(gmMatrix<2>(turn, turn, size, size * (random.chance(0.5) ? -1.0 : 1.0)), {});
    const gmXform<2> sheared(gmMatrix<2>(1, random.real(-1, 1), 0, random.real(0.5, 2)), {});
    return XformHandle(new gm2XformLinear(gmXform<2>(gmMatrix<2>(1, 0, 0, 1), shift) * turned * sheared));
}

Edgelets anyData(Random& random, const std::vector<gmVector<2>>& positions) {
    Edgelets data;
    for (const gmVector<2>& position : positions)
        data.emplace_back(position, static_cast<unsigned short>(random.integer(0, 65535)),
                          gmAngle8(static_cast<unsigned char>(random.integer(0, 255))));
    return data;
}

/// Rounded a few times: `size` is that of the numbers that come together.
void expectNear(const gmVector<2>& actual, const gmVector<2>& expected, double size) {
    EXPECT_LE(actual.distance(expected), 1e-13 * size) << support::text(actual) << " not " << support::text(expected);
}

TEST(EdgePointProperty, ComeBackFromTheOtherSideUpToRounding) {
    for (std::uint32_t seed = 1; seed <= 1500; seed++) {
        SCOPED_TRACE("seed " + std::to_string(seed));
        Random random(seed);
        std::vector<gmVector<2>> positions;
        for (int n = random.integer(1, 12); n > 0; n--)
            positions.push_back(random.point(-1000, 1000));
        const XformHandle xform = anyXform(random);
        const gmXform<2> map = xform->linearXform();
        const gmMatrix<2> m = map.matrix();
        const double scaled = std::hypot(std::hypot(m(0, 0), m(0, 1)), std::hypot(m(1, 0), m(1, 1)));
        const double dataSize = 4000.0;  // position and shift
        const double pointSize = dataSize * (1.0 + 1.0 / scaled);
        ContourT contour(anyData(random, positions), xform);
        for (std::size_t i = 0; i < positions.size(); i++) {
            expectNear(contour.datum(contour.points()[i]).position(), positions[i], dataSize);
            expectNear(map * contour.points()[i], positions[i], dataSize);
        }
        contour.points(contour.points());
        for (std::size_t i = 0; i < positions.size(); i++)
            EXPECT_EQ(contour.data()[i], gmEdgelet(map * contour.points()[i], 0, gmAngle8()));
        contour.points(positions);
        for (std::size_t i = 0; i < positions.size(); i++)
            expectNear(contour.point(contour.data()[i]), positions[i], pointSize);
        contour.makePointsConsistentWithData();
        for (std::size_t i = 0; i < positions.size(); i++)
            expectNear(contour.points()[i], positions[i], pointSize);
    }
}

/// Which side was set last.
enum class Leading { Points, Data };

void expectFollowing(const RegionT& region, Leading leading) {
    ASSERT_EQ(region.data().size(), region.points().size());
    for (std::size_t i = 0; i < region.points().size(); i++) {
        if (leading == Leading::Data)
            EXPECT_TRUE(support::same(region.points()[i], region.point(region.data()[i])));
        else
            EXPECT_EQ(region.data()[i], region.datum(region.points()[i]));
    }
}

void expectAnswersOfAPlainRegion(const RegionT& region, Random& random) {
    const gmRegion plain(region.points());
    const gmVector<2> p = random.point(-5, 15);
    EXPECT_TRUE(agree([&] { return region.area(true); }, [&] { return plain.area(true); }));
    EXPECT_TRUE(agree([&] { return region.centerOfMass(false); }, [&] { return plain.centerOfMass(false); }));
    EXPECT_TRUE(agree([&] { return region.inertiaMatrix(true); }, [&] { return plain.inertiaMatrix(true); }));
    EXPECT_TRUE(agree([&] { return region.inside(p, true); }, [&] { return plain.inside(p, true); }));
    EXPECT_TRUE(agree([&] { return region.distToPoint(p, false, true, true); },
                      [&] { return plain.distToPoint(p, false, true, true); }));
    const auto regularized = [](const gmRegion& asked) {
        gmRegion out;
        asked.regularize(out);
        return out.points();
    };
    EXPECT_TRUE(agree([&] { return regularized(region); }, [&] { return regularized(plain); }));
    support::expectConsistent(region);
}

TEST(EdgePointProperty, FollowWhicheverSideWasSetLastAndEveryAnswerIsThatOfAPlainShape) {
    for (std::uint32_t seed = 1; seed <= 250; seed++) {
        SCOPED_TRACE("seed " + std::to_string(seed));
        Random random(seed);
        const auto outline = [&] {
            return random
                .oneOf<support::Outline (*)(Random&)>({support::tinyOutline, support::scatteredOutline,
                                                       support::gridOutline, support::crossingOutline})(random)
                .points;
        };
        const auto fresh = [&] {
            if (random.chance(0.3))
                return RegionT(anyData(random, outline()));
            return RegionT(anyData(random, outline()), anyXform(random));
        };
        RegionT region = fresh();
        RegionT other = fresh();
        Leading leading = Leading::Data;
        Leading otherLeading = Leading::Data;
        for (int step = random.integer(1, 8); step > 0; step--) {
            switch (random.integer(0, 7)) {
                case 0:
                    region.data(anyData(random, outline()));
                    leading = Leading::Data;
                    break;
                case 1:
                    region.points(outline());
                    leading = Leading::Points;
                    break;
                case 2:
                    region.makePointsConsistentWithData();
                    leading = Leading::Data;
                    break;
                case 3:
                    gmRegion(outline()).map(scale(2), region);
                    leading = Leading::Points;
                    break;
                case 4:
                    region = RegionT(ContourT(region), 3);
                    break;
                case 5:
                    std::swap(region, other);
                    std::swap(leading, otherLeading);
                    break;
                case 6:
                    other = region;
                    otherLeading = leading;
                    break;
                default:
                    if (region.points().size() > 1)
                        support::askEverything(region);
            }
            expectFollowing(region, leading);
            expectFollowing(other, otherLeading);
        }
        expectAnswersOfAPlainRegion(region, random);
    }
}

}  // namespace
