// Random, degenerate and all small outlines as regions, against the plain procedures, to the bit.
#include <gtest/gtest.h>

#include <cmath>
#include <cstdint>
#include <limits>
#include <string>

#include "tests/reference/region_measures.h"
#include "tests/reference/region_topology.h"
#include "tests/support/corpus.h"
#include "tests/support/outcome.h"
#include "tests/support/regiongenerators.h"
#include "tests/support/testcontour.h"
#include "tests/support/testregion.h"

using reference::Region;
using support::agree;
using support::Family;
using support::outcome;
using support::Outcome;
using support::Outline;
using support::Points;
using support::Random;
using support::text;

namespace {

std::string textOf(const Region& region) {
    std::string result = "region(" + text(region.points);
    for (const Region& hole : region.holes)
        result += ", " + textOf(hole);
    return result + ")";
}

/// The library's region. Holes that meet the outline come to it as they can: the outline changes after they are set.
void make(const Region& plain, gmRegion& region) {
    support::Holes holes;
    for (const Region& plainHole : plain.holes) {
        auto* hole = new gmRegion;
        holes.emplace_back(hole);
        make(plainHole, *hole);
    }
    if (!holes.empty()) {
        region.points({gmVector<2>(0, 0)});
        region.holes(holes);
    }
    region.points(plain.points);
}

// ----- Containment, distance, crossings

/// On, near, amid and away from vertices and edges. An outline without vertices is asked about as one at the origin.
Points probesOf(Points outline, Random& random) {
    if (outline.empty())
        outline.push_back(gmVector<2>());
    const std::vector<double> tiny = {1e-7, 9.99e-7, 1e-6, 1.001e-6, 2e-6};
    const auto index = static_cast<std::size_t>(random.integer(0, static_cast<int>(outline.size()) - 1));
    const gmVector<2> a = outline[index];
    const gmVector<2> b = outline[(index + 1) % outline.size()];
    const gmVector<2> c = random.oneOf(outline);
    const gmVector<2> normal = gmVector<2>(a.y() - b.y(), b.x() - a.x()).unit();
    const gmVector<2> direction(1.0, gmRadian(random.integer(0, 7) * 0.7853981633974483));
    Points probes = {a,
                     c + direction * random.oneOf(tiny),
                     (a + b) * 0.5,
                     (a + b) * 0.5 + normal * random.oneOf(tiny),
                     (a + b) * 0.5 - normal * random.oneOf(tiny),
                     a + (b - a) * random.real(-0.2, 1.2),
                     (a + b + c) / 3.0,
                     a + (c - b) * random.real(0.0, 0.5),
                     random.gridPoint(-1, 5),
                     random.point(-12, 12)};
    if (random.chance(0.05))
        probes.emplace_back(random.oneOf<double>({std::nan(""), std::numeric_limits<double>::infinity(), 1e300}), 1.0);
    return probes;
}

void expectSameContainment(const gmRegion& region, const Region& plain, const gmVector<2>& p) {
    for (const bool both : {false, true})
        EXPECT_TRUE(agree([&] { return support::insideCount(region, p, both); },
                          [&] { return reference::insideCount(plain, p, both); }))
            << "crossings of " << (both ? "two rays" : "one ray");
    for (const bool holes : {false, true})
        EXPECT_TRUE(agree([&] { return region.inside(p, holes); }, [&] { return reference::inside(plain, p, holes); }))
            << "inside, holes " << holes;
}

void expectSameNearness(const gmRegion& region, const Region& plain, const gmVector<2>& p) {
    for (const bool holes : {false, true}) {
        long hole = -7;
        EXPECT_TRUE(agree([&] { return region.closestVertexIndex(p, holes, hole); },
                          [&] { return reference::closestVertexIndex(plain, p, holes).index; }));
        const auto closest = outcome([&] { return reference::closestVertexIndex(plain, p, holes).hole; });
        if (closest.answer) {
            EXPECT_EQ(hole, *closest.answer);
        }
        for (const bool vertexOnly : {false, true}) {
            EXPECT_TRUE(agree([&] { return region.closestPoint(p, vertexOnly, holes); },
                              [&] { return reference::closestPoint(plain, p, vertexOnly, holes); }));
            for (const bool insideIsZero : {false, true})
                EXPECT_TRUE(agree([&] { return region.distToPoint(p, vertexOnly, holes, insideIsZero); },
                                  [&] { return reference::distToPoint(plain, p, vertexOnly, holes, insideIsZero); }));
        }
    }
}

void expectSameCrossings(const gmRegion& region, const Region& plain, const gmLineSeg& seg, const Outline& other) {
    for (const bool holes : {false, true}) {
        for (const bool endpointEdges : {false, true})
            EXPECT_TRUE(agree([&] { return region.intersections(seg, endpointEdges, holes); },
                              [&] { return reference::intersections(plain, seg, endpointEdges, holes); }))
                << text(seg);
        EXPECT_TRUE(agree([&] { return region.intersections(support::TestContour(other), holes); },
                          [&] { return reference::intersections(plain, other, holes); }))
            << text(other);
    }
}

// ----- Measures

void expectSameMeasures(const gmRegion& region, const Region& plain) {
    for (const bool holes : {true, false}) {
        for (int call = 0; call < 2; call++) {
            EXPECT_TRUE(agree([&] { return region.area(holes); }, [&] { return reference::area(plain, holes); }));
            EXPECT_TRUE(agree([&] { return region.inertiaMatrix(holes); },
                              [&] { return reference::inertiaMatrix(plain, holes); }));
        }
        const auto center = outcome([&] { return reference::centerOfMass(plain, holes); });
        EXPECT_TRUE(
            agree([&] { return region.centerOfMass(holes); }, [&] { return reference::centerOfMass(plain, holes); }));
        const bool forgets = holes && !plain.holes.empty() && center.answer;
        EXPECT_TRUE(agree([&] { return region.centerOfMass(holes); },
                          [&] { return forgets ? gmVector<2>() : reference::centerOfMass(plain, holes); }))
            << "second call";
    }
}

// ----- Clean-up

using CleanUp = Outcome<Points>;

CleanUp plainCleanUp(const Region& plain, bool hull) {
    return outcome([&] { return (hull ? reference::outerHull(plain) : reference::regularize(plain)).points; });
}

testing::AssertionResult isCleanUp(const CleanUp& actual, const CleanUp& expected) {
    return agree([&] { return actual.answer ? *actual.answer : throw gmContourDefs::BadParams(actual.refusal); },
                 [&] { return expected.answer ? *expected.answer : throw gmContourDefs::BadParams(expected.refusal); });
}

/// Asked of the region for another, twice, and of a copy for itself.
void expectSameCleanUp(const gmRegion& region, const CleanUp& expected, bool hull) {
    const auto cleanUp = [&](const gmRegion& of, gmRegion& out) { hull ? of.outerHull(out) : of.regularize(out); };
    SCOPED_TRACE(hull ? "outer hull" : "regularised");
    for (int call = 0; call < 2; call++) {
        gmRegion out;
        EXPECT_TRUE(isCleanUp(outcome([&] { return cleanUp(region, out), out.points(); }), expected)) << call;
        EXPECT_EQ(out.holes(), region.isSelfIntersecting() ? support::Holes() : region.holes());
    }
    gmRegion copy(region);
    EXPECT_TRUE(isCleanUp(outcome([&] { return cleanUp(copy, copy), copy.points(); }), expected)) << "of itself";
}

void expectSameConstruction(const Points& points, const CleanUp& expected, gmContourDefs::IntersectionMode mode) {
    SCOPED_TRACE("mode " + std::to_string(mode));
    EXPECT_TRUE(isCleanUp(outcome([&] { return gmRegion(points, mode).points(); }), expected));
    for (const bool closed : {false, true})
        EXPECT_TRUE(isCleanUp(outcome([&] { return gmRegion(gmContour(points, closed), mode).points(); }), expected));
    const gmPolygon polygon(points, gmPolygon::eEvenOdd);
    EXPECT_TRUE(isCleanUp(outcome([&] { return gmRegion(polygon, mode).points(); }), expected));
}

void expectSameCleanUps(const Region& plain, const gmRegion& region) {
    expectSameCleanUp(region, plainCleanUp(plain, false), false);
    expectSameCleanUp(region, plainCleanUp(plain, true), true);
}

// ----- Random outlines

class EveryRegion : public testing::TestWithParam<Family> {
  protected:
    /// Calls `check` with an outline of the family, its seed and random choices to go on with, `share` times the count.
    template <class Check>
    void forEachOutline(double share, const Check& check) {
        const int count = static_cast<int>(GetParam().count * share);
        for (int i = 0; i < count && !HasFailure(); i++) {
            Random random(static_cast<std::uint32_t>(i));
            const Points points = GetParam().draw(random).points;
            SCOPED_TRACE("seed " + std::to_string(i));
            check(points, random);
        }
    }
};

INSTANTIATE_TEST_SUITE_P(OfOutlines, EveryRegion, testing::ValuesIn(support::regionFamilies()),
                         [](const auto& instance) { return std::string(instance.param.name); });

TEST_P(EveryRegion, HoldsThePointsThatThePlainProcedureSays) {
    forEachOutline(1.0, [](const Points& points, Random& random) {
        SCOPED_TRACE(text(points));
        const gmRegion region(points);
        for (const gmVector<2>& p : probesOf(points, random)) {
            SCOPED_TRACE("point " + text(p));
            expectSameContainment(region, {points, {}}, p);
        }
    });
}

TEST_P(EveryRegion, IsCleanedUpAsThePlainProcedures) {
    forEachOutline(1.0, [](const Points& points, Random&) {
        SCOPED_TRACE(text(points));
        expectSameCleanUps({points, {}}, gmRegion(points));
    });
}

TEST_P(EveryRegion, IsMadeAsItsModeSays) {
    forEachOutline(0.3, [](const Points& points, Random&) {
        SCOPED_TRACE(text(points));
        expectSameConstruction(points, {points, ""}, gmContourDefs::eKeep);
        expectSameConstruction(points, {points, ""}, static_cast<gmContourDefs::IntersectionMode>(3));
        expectSameConstruction(points, plainCleanUp({points, {}}, false), gmContourDefs::eRegularize);
        expectSameConstruction(points, plainCleanUp({points, {}}, true), gmContourDefs::eOuterHull);
    });
}

TEST_P(EveryRegion, IsMeasuredAsThePlainProcedures) {
    forEachOutline(1.0, [](const Points& points, Random&) {
        SCOPED_TRACE(text(points));
        expectSameMeasures(gmRegion(points), {points, {}});
    });
}

TEST_P(EveryRegion, AnswersWithHolesOfHolesAsThePlainProcedures) {
    forEachOutline(0.2, [](const Points& points, Random& random) {
        const Region plain = support::regionOf(random, points, 3);
        SCOPED_TRACE(textOf(plain));
        gmRegion region;
        make(plain, region);
        for (const gmVector<2>& p : probesOf(points, random)) {
            SCOPED_TRACE("point " + text(p));
            expectSameContainment(region, plain, p);
            expectSameNearness(region, plain, p);
        }
        const gmVector<2> from = random.gridPoint(-2, 6);
        const gmLineSeg seg(from, probesOf(points, random)[0]);
        expectSameCrossings(region, plain, seg, {GetParam().draw(random).points, random.chance(0.5)});
        expectSameMeasures(region, plain);
        expectSameCleanUps(plain, region);
    });
}

TEST_P(EveryRegion, TakesTheHolesThatThePlainProcedureFindsNoCrossingWith) {
    forEachOutline(0.3, [](const Points& points, Random& random) {
        const Points other = GetParam().draw(random).points;
        SCOPED_TRACE(text(points) + " with " + text(other));
        gmRegion region(points);
        EXPECT_TRUE(agree(
            [&] {
                region.holes(support::Holes{RegionCPtr(new gmRegion(other))});
                return region.holes().size() == 1;
            },
            [&] {
                if (!reference::intersections(Region{points, {}}, Outline{other, true}, false).empty())
                    throw gmContourDefs::BadParams("holes cannot intersect region");
                return true;
            }));
    });
}

TEST_P(EveryRegion, IsSplicedAsByThePlainProcedure) {
    forEachOutline(0.3, [](const Points& points, Random& random) {
        Points other = points;
        if (random.chance(0.5))
            other = GetParam().draw(random).points;
        const gmVector<2> shift = support::nearly(random, {0.0, 0.5, 1.0});
        for (gmVector<2>& v : other)
            v = v + shift;
        SCOPED_TRACE(text(points) + " with " + text(other));
        EXPECT_TRUE(agree(
            [&] {
                gmRegion out;
                support::splice(gmRegion(points), gmRegion(other), out);
                return out.points();
            },
            [&] {
                return reference::splice({points, {}}, {other, {}});
            }));
    });
}

TEST(NestedRegions, AnswerAsThePlainProcedures) {
    for (std::uint32_t seed = 0; seed < 300 && !testing::Test::HasFailure(); seed++) {
        Random random(seed);
        const Region plain = support::nestedRegion(random, {0, 0}, 8.0, 3);
        SCOPED_TRACE(textOf(plain));
        gmRegion region;
        make(plain, region);
        for (int i = 0; i < 20; i++) {
            const gmVector<2> p = random.chance(0.5) ? random.point(-9, 9) : random.gridPoint(-9, 9);
            SCOPED_TRACE("point " + text(p));
            expectSameContainment(region, plain, p);
            expectSameNearness(region, plain, p);
        }
        expectSameMeasures(region, plain);
    }
}

TEST(RegionCorpus, AnswersAsThePlainProcedures) {
    for (const auto& entry : support::corpus(MOK_TEST_DATA_DIR)) {
        SCOPED_TRACE(entry.name);
        const Region plain = {entry.outline.points, {}};
        const gmRegion region(plain.points);
        Random random(1);
        for (int i = 0; i < 20; i++)
            for (const gmVector<2>& p : probesOf(plain.points, random)) {
                SCOPED_TRACE("point " + text(p));
                expectSameContainment(region, plain, p);
            }
        expectSameMeasures(region, plain);
        expectSameCleanUps(plain, region);
    }
}

// ----- All small outlines

/// Every outline of `n` vertices on a grid of three by three.
class EverySmallOutline : public testing::TestWithParam<int> {};

INSTANTIATE_TEST_SUITE_P(OfVertices, EverySmallOutline, testing::Range(0, 6));

TEST_P(EverySmallOutline, IsCleanedUpAsThePlainProcedures) {
    const int n = GetParam();
    int outlines = 1;
    for (int i = 0; i < n; i++)
        outlines *= 9;
    for (int number = 0; number < outlines && !HasFailure(); number++) {
        Points points;
        for (int i = 0, rest = number; i < n; i++, rest /= 9)
            points.emplace_back(rest % 3, rest / 3 % 3);
        SCOPED_TRACE(text(points));
        const gmRegion region(points);
        const CleanUp regularized = plainCleanUp({points, {}}, false);
        const CleanUp hull = plainCleanUp({points, {}}, true);
        expectSameCleanUp(region, regularized, false);
        expectSameCleanUp(region, hull, true);
        if (region.isSelfIntersecting()) {
            expectSameConstruction(points, regularized, gmContourDefs::eRegularize);
            expectSameConstruction(points, hull, gmContourDefs::eOuterHull);
        }
    }
}

}  // namespace
