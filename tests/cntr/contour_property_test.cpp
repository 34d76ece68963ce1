// Random and degenerate outlines against the plain procedures, to the bit; and the outlines that once broke something.
#include <gtest/gtest.h>

#include <cstdint>
#include <limits>
#include <string>

#include "tests/support/consistent.h"
#include "tests/support/corpus.h"
#include "tests/support/generators.h"
#include "tests/support/testcontour.h"

using support::Family;
using support::Random;
using support::TestContour;

namespace {

class EveryQuery : public testing::TestWithParam<Family> {};

INSTANTIATE_TEST_SUITE_P(OfOutlines, EveryQuery, testing::ValuesIn(support::families()),
                         [](const auto& instance) { return std::string(instance.param.name); });

TEST_P(EveryQuery, AnswersAsThePlainProcedures) {
    for (int i = 0; i < GetParam().count && !HasFailure(); i++) {
        const auto seed = static_cast<std::uint32_t>(i);
        Random random(seed);
        const TestContour contour(GetParam().draw(random));
        support::expectConsistent(contour, seed);
    }
}

TEST_P(EveryQuery, AnswersAsThePlainProceduresAfterChanges) {
    for (int i = 0; i < GetParam().count / 10 && !HasFailure(); i++) {
        const auto seed = static_cast<std::uint32_t>(i + 1000000);
        SCOPED_TRACE("first seed " + std::to_string(seed));
        Random random(seed);
        TestContour contour(GetParam().draw(random));
        if (!contour.points().empty()) {
            // Filled caches, which the changes must drop.
            Random probes(seed);
            support::expectConsistentProximity(contour, probes);
            support::expectConsistentIntersections(contour, probes);
            support::expectConsistentExtent(contour, probes);
        }
        contour.length();
        contour.isClosed(!contour.isClosed());
        support::expectConsistent(contour, seed + 1);
        contour.points(GetParam().draw(random).points);
        support::expectConsistent(contour, seed + 2);
    }
}

class Corpus : public testing::Test {
  protected:
    const std::vector<support::CorpusEntry> entries = support::corpus(MOK_TEST_DATA_DIR);
};

TEST_F(Corpus, IsNotEmpty) {
    EXPECT_FALSE(entries.empty());
}

TEST_F(Corpus, SaysOfEveryOutlineWhyItIsKept) {
    for (const auto& entry : entries)
        EXPECT_GT(entry.reason.size(), 20U) << entry.name;
}

TEST_F(Corpus, AnswersAsThePlainProcedures) {
    for (const auto& entry : entries) {
        SCOPED_TRACE(entry.name);
        for (std::uint32_t seed = 0; seed < 20; seed++) {
            support::expectConsistent(TestContour(entry.outline), seed);
            support::expectConsistent(TestContour(entry.outline.points, !entry.outline.closed), seed);
        }
    }
}

}  // namespace
