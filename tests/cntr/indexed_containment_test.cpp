// Containment in outlines of every size: whatever is kept to answer sooner, the answers are those of the plain
// procedures.
#include <gtest/gtest.h>

#include <algorithm>
#include <string>

#include "tests/support/regionquestions.h"
#include "tests/support/setgenerators.h"

using reference::Region;
using support::HardFamily;
using support::HardProbes;
using support::HardShape;
using support::Points;
using support::Random;

namespace {

class IndexedContainment : public testing::TestWithParam<HardFamily> {};

INSTANTIATE_TEST_SUITE_P(Of, IndexedContainment, testing::ValuesIn(support::hardFamilies()),
                         [](const auto& instance) { return std::string(instance.param.name); });

void expectRays(const HardShape& shape, Random& random) {
    HardShape closed = shape;
    closed.outline.closed = true;
    HardProbes probes(closed, random);
    Points places = probes.places();
    for (int i = 0; i < 2; i++)
        for (const gmVector<2>& p : probes.grazing(3))
            places.push_back(p);
    const Region plain{shape.outline.points, {}};
    support::RegionQuestions questions;
    for (const gmVector<2>& p : places)
        support::addRays(questions, plain, p);
    // The outline may come from an open contour, which knows of no closing edge.
    support::expectAnswers([&] { return gmRegion(gmContour(shape.outline.points, shape.outline.closed)); }, questions,
                           random);
}

TEST_P(IndexedContainment, IsThatOfThePlainProcedures) {
    support::forEachHardShape(GetParam(), support::hardSizes(), expectRays);
}

TEST_P(IndexedContainment, WithHolesIsThatOfThePlainProcedures) {
    const std::vector<int> sizes = {4, 16, 33, 65, 130, 300};
    support::forEachHardShape(GetParam(), sizes, [](const HardShape& shape, Random& random) {
        // Smaller ones in its middle, some with islands, and in a while one that is not there.
        Region plain{shape.outline.points, {}};
        for (int i = random.integer(1, 5); i > 0; i--) {
            const int n = random.integer(random.chance(0.1) ? 0 : 3, 90);
            const HardFamily any = random.chance(0.5) ? GetParam() : random.oneOf(support::hardFamilies());
            const double size = random.real(0.05, 0.9);
            const gmVector<2> about = (random.oneOf(plain.points) + random.oneOf(plain.points)) * 0.5;
            Points points = n == 0 ? Points() : support::hardShape(any, random, n).outline.points;
            for (gmVector<2>& v : points)
                v = about + (v - about) * size;
            Region hole{points, {}};
            if (random.chance(0.4))
                hole.holes.push_back({support::placed(points, 0.5, about * 0.5), {}});
            plain.holes.push_back(hole);
        }
        HardShape closed = shape;
        closed.outline.closed = true;
        HardProbes probes(closed, random);
        const auto region = support::made(plain);

        support::RegionQuestions questions;
        Points places = probes.places();
        for (const Region& hole : plain.holes)
            if (!hole.points.empty()) {
                const HardShape around{{hole.points, true}, {}};
                HardProbes holeProbes(around, random);
                for (const gmVector<2>& p : holeProbes.places())
                    if (random.chance(0.3))
                        places.push_back(p);
            }
        for (const gmVector<2>& p : places)
            if (random.chance(0.5))
                support::addWithHoles(questions, plain, p);
        for (const gmLineSeg& seg : probes.segments())
            if (random.chance(0.3))
                support::addRegionCrossings(questions, plain, seg);
        support::addRegionCrossings(questions, plain, {plain.holes[0].points, random.chance(0.5)});
        // Not a copy: copies share the holes, which then remember what they were asked. Every one has its own.
        support::expectAnswers([&] { return gmRegion(*support::made(plain)); }, questions, random);
        for (const auto& question : questions)
            support::expectAnswer(*region, question, "of a shared one");
    });
}

/// The ray is not endless: seen from two corners of the box it ends before it is through.
TEST(IndexedContainmentOfAHub, CountsWhatTheRayComesTo) {
    long odd = 0;
    for (std::uint32_t seed = 0; seed < 60; seed++) {
        Random random(seed);
        const Points points = support::hardHub(random, random.integer(33, 300), {});
        const HardShape shape{{points, true}, {}};
        const double radius = points[1].len();
        support::RegionQuestions questions;
        for (int i = 0; i < 10; i++) {
            const gmVector<2> corner = gmVector<2>(-1.0, -1.0) * (random.chance(0.5) ? radius : -radius);
            const gmVector<2> p = corner * random.real(0.9, 0.999) + random.point(-1, 1) * (radius * 1e-3);
            odd += reference::insideCount({points, {}}, p, false) % 2;
            support::addRays(questions, {points, {}}, p);
        }
        support::expectAnswers([&] { return gmRegion(points); }, questions, random);
        ASSERT_FALSE(HasFailure()) << "seed " << seed << ": " << support::text(points);
    }
    EXPECT_GT(odd, 0) << "no ray ended between two edges: nothing was tried";
}

/// Beside a vertex the ray may pass it within the tolerance of crossings, and cross one edge too many.
TEST(IndexedContainmentBesideVertices, CountsWhatTheRayTouches) {
    long touched = 0;
    for (std::uint32_t seed = 0; seed < 60; seed++) {
        Random random(seed);
        const HardFamily family = support::hardFamilies()[seed % 2];  // scattered, jittered
        const HardShape shape = {{family.draw(random, random.oneOf<int>({64, 257, 600}), {}), true}, {}};
        HardProbes probes(shape, random);
        const Region plain{shape.outline.points, {}};
        support::RegionQuestions questions;
        for (int i = 0; i < 4; i++)
            for (const gmVector<2>& p : probes.grazing(4)) {
                support::addRays(questions, plain, p);
                bool evenOdd = false;
                for (const reference::Edge& edge : reference::edges(shape.outline)) {
                    const gmVector<2> a = shape.outline.points[edge.from] - p;
                    const gmVector<2> b = shape.outline.points[edge.to] - p;
                    if ((a.y() > 0.0) != (b.y() > 0.0) && (a.x() * b.y() - a.y() * b.x() > 0.0) == (b.y() > a.y()))
                        evenOdd = !evenOdd;
                }
                touched += evenOdd != reference::inside(plain, p, false);
            }
        support::expectAnswers([&] { return gmRegion(shape.outline.points); }, questions, random);
        ASSERT_FALSE(HasFailure()) << "seed " << seed;
    }
    EXPECT_GT(touched, 0) << "no ray touched a vertex: nothing was tried";
}

}  // namespace
