// Nearness on outlines of every size: whatever is kept to answer sooner, the answers are those of the plain procedures.
#include <gtest/gtest.h>

#include <string>

#include "tests/support/contourquestions.h"

using support::HardFamily;
using support::HardShape;
using support::Random;
using support::TestContour;

namespace {

class IndexedProximity : public testing::TestWithParam<HardFamily> {};

INSTANTIATE_TEST_SUITE_P(Of, IndexedProximity, testing::ValuesIn(support::hardFamilies()),
                         [](const auto& instance) { return std::string(instance.param.name); });

void expectNearness(const HardShape& shape, Random& random) {
    support::ContourQuestions questions;
    support::addProximity(questions, shape, random);
    support::expectAnswers([&] { return TestContour(shape.outline); }, questions, random);
}

TEST_P(IndexedProximity, IsThatOfThePlainProcedures) {
    support::forEachHardShape(GetParam(), support::hardSizes(), expectNearness);
}

TEST_P(IndexedProximity, IsThatOfThePlainProceduresForLargeOutlines) {
    support::forEachHardShape(GetParam(), {4097}, expectNearness);
}

/// Every distance is the same but for rounding, which most roots lose: the first vertex and the first edge count.
TEST(IndexedProximityTies, AtTheCenterOfARegularPolygonGoToTheFirst) {
    for (const int n : {33, 40, 64, 65, 100, 360, 512, 1000, 2048, 4096})
        for (const double radius : {1.0, 3.0, 10.0, 1000.0 / 3.0})
            for (std::uint32_t seed = 0; seed < 4; seed++) {
                Random random(seed);
                const gmVector<2> center = seed < 2 ? gmVector<2>() : random.gridPoint(-9, 9);
                HardShape shape{{{}, seed % 2 == 0}, center};
                for (int i = 0; i < n; i++)
                    shape.outline.points.push_back(center +
                                                   gmVector<2>(radius, gmRadian(support::twoPi * i / n + seed * 0.1)));
                SCOPED_TRACE(std::to_string(n) + " vertices around " + support::text(center) + ", radius " +
                             support::text(radius) + ", seed " + std::to_string(seed));
                support::ContourQuestions questions;
                for (const gmVector<2>& p : {center, center + random.point(-1, 1) * 1e-16 * radius})
                    support::addNearness(questions, shape, p, radius);
                support::expectAnswers([&] { return TestContour(shape.outline); }, questions, random);
                if (HasFailure())
                    return;
            }
}

}  // namespace
