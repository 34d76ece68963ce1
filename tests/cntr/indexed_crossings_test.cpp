// Crossings of outlines of every size: whatever is kept to answer sooner, the answers are those of the plain
// procedures.
#include <gtest/gtest.h>

#include <algorithm>
#include <string>
#include <vector>

#include "tests/support/contourquestions.h"

using support::HardFamily;
using support::HardShape;
using support::Outline;
using support::Random;
using support::TestContour;

namespace {

class IndexedCrossings : public testing::TestWithParam<HardFamily> {};

INSTANTIATE_TEST_SUITE_P(Of, IndexedCrossings, testing::ValuesIn(support::hardFamilies()),
                         [](const auto& instance) { return std::string(instance.param.name); });

void expectCrossings(const HardShape& shape, Random& random) {
    support::ContourQuestions questions;
    for (int i = 0; i < 2; i++)
        support::addCrossings(questions, shape, random);
    support::expectAnswers([&] { return TestContour(shape.outline); }, questions, random);
}

TEST_P(IndexedCrossings, OfSegmentsAreThoseOfThePlainProcedures) {
    support::forEachHardShape(GetParam(), support::hardSizes(), expectCrossings);
}

TEST_P(IndexedCrossings, OfSegmentsAreThoseOfThePlainProceduresForLargeOutlines) {
    support::forEachHardShape(GetParam(), {4097}, expectCrossings);
}

TEST_P(IndexedCrossings, WithItselfAreFoundAsByThePlainProcedure) {
    support::forEachHardShape(GetParam(), support::hardSizes(), [](const HardShape& shape, Random& random) {
        support::ContourQuestions questions;
        support::addSelfCrossing(questions, shape);
        support::expectAnswers([&] { return TestContour(shape.outline); }, questions, random);
    });
}

TEST_P(IndexedCrossings, WithContoursAreThoseOfThePlainProcedures) {
    const std::vector<int> sizes = {1, 2, 9, 16, 32, 33, 40, 65, 100, 257};
    support::forEachHardShape(GetParam(), sizes, [](const HardShape& shape, Random& random) {
        support::ContourQuestions questions;
        const HardFamily any = random.oneOf(support::hardFamilies());
        const Outline other = support::hardShape(any, random, random.integer(1, 80)).outline;
        support::addCrossingsWith(questions, shape, other, any.name);
        const Outline another = support::hardShape(GetParam(), random, random.oneOf<int>({2, 33, 100, 150})).outline;
        support::addCrossingsWith(questions, shape, another, "another of its family");
        Outline moved = shape.outline;
        const double step = random.oneOf<double>({0.0, 1e-9, 5e-7, 1e-6, 0.1, 1.0});
        for (gmVector<2>& v : moved.points)
            v = v + gmVector<2>(step, step * 0.5);
        if (random.chance(0.5))
            std::reverse(moved.points.begin(), moved.points.end());
        moved.closed = random.chance(0.5);
        support::addCrossingsWith(questions, shape, moved, "itself moved by " + support::text(step));
        support::expectAnswers([&] { return TestContour(shape.outline); }, questions, random);
    });
}

TEST_P(IndexedCrossings, OfAContourWithItselfAreThoseOfThePlainProcedures) {
    support::forEachHardShape(GetParam(), {9, 33, 65, 129}, [](const HardShape& shape, Random&) {
        const TestContour contour(shape.outline);
        const support::Points expected = support::plainCrossings(shape.outline, shape.outline);
        for (int call = 0; call < 3; call++)
            EXPECT_TRUE(support::same(contour.intersections(contour), expected)) << "call " << call;
        support::Pairs::compared()++;
    });
}

/// Through the outermost vertex, where coordinates are so large that on which side of the line it lies is rounding's.
TEST(IndexedCrossingsOfTangents, AreThoseOfThePlainProcedureHoweverCoarseCoordinatesAre) {
    long crossed = 0;
    for (std::uint32_t seed = 0; seed < 60U * static_cast<std::uint32_t>(support::Pairs::rounds()); seed++) {
        Random random(seed);
        const double size = random.oneOf<double>({1e6, 1e7, 3e7, 1e8, 1e9, 1e10});
        HardShape shape{{support::hardJittered(random, 100, {}), random.chance(0.5)}, {}};
        for (gmVector<2>& v : shape.outline.points)
            v = v * size;
        support::HardProbes probes(shape, random);
        const reference::EdgeTable table = reference::edgeTable(shape.outline);
        const gmRect box = reference::encloseRect(shape.outline, gmXform<2>());
        const TestContour contour(shape.outline);
        for (int i = 0; i < 200; i++) {
            const gmLineSeg seg = probes.tangentThroughAVertex();
            support::Points positions;
            for (const auto& crossing : reference::crossings(table, box, seg, true))
                positions.push_back(crossing.position);
            crossed += positions.empty() ? 0 : 1;
            EXPECT_TRUE(support::same(contour.intersections(seg, true), positions))
                << support::text(seg) << ", size " << support::text(size);
            support::Pairs::compared()++;
        }
        ASSERT_FALSE(HasFailure()) << "seed " << seed;
    }
    EXPECT_GT(crossed, 1000);
}

}  // namespace
