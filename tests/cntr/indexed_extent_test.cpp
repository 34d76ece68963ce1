// Extent of outlines of every size: whatever is kept to answer sooner, the answers are those of the plain procedures.
#include <gtest/gtest.h>

#include <string>

#include "tests/support/contourquestions.h"

using support::HardFamily;
using support::HardShape;
using support::Random;
using support::TestContour;

namespace {

class IndexedExtent : public testing::TestWithParam<HardFamily> {};

INSTANTIATE_TEST_SUITE_P(Of, IndexedExtent, testing::ValuesIn(support::hardFamilies()),
                         [](const auto& instance) { return std::string(instance.param.name); });

void expectExtent(const HardShape& shape, Random& random) {
    support::ContourQuestions questions;
    for (int i = 0; i < 2; i++)
        support::addExtent(questions, shape, random);
    support::addOnceAsked(questions, shape);
    support::expectAnswers([&] { return TestContour(shape.outline); }, questions, random);
}

TEST_P(IndexedExtent, IsThatOfThePlainProcedures) {
    support::forEachHardShape(GetParam(), support::hardSizes(), expectExtent);
}

TEST_P(IndexedExtent, IsThatOfThePlainProceduresForLargeOutlines) {
    support::forEachHardShape(GetParam(), {4097}, expectExtent);
}

}  // namespace
