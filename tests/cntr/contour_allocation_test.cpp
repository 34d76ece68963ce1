// What a contour is when memory runs out.
#include <gtest/gtest.h>

#include <string>
#include <thread>
#include <vector>

#include "tests/support/allocations.h"
#include "tests/support/consistent.h"
#include "tests/support/queries.h"
#include "tests/support/testcontour.h"

using support::allocationsOf;
using support::interruptedAt;
using support::Query;
using support::TestContour;

namespace {

TestContour square() {
    return TestContour(support::points("0 0, 4 0, 4 4, 0 4"), true);
}

class InterruptedQuery : public testing::TestWithParam<Query> {};

INSTANTIATE_TEST_SUITE_P(Contour, InterruptedQuery, testing::ValuesIn(support::allQueries()),
                         [](const auto& instance) { return std::string(instance.param.name); });

TEST_P(InterruptedQuery, AnswersCorrectlyAfterwards) {
    const auto ask = GetParam().ask;
    const std::string expected = ask(square());
    for (long which = 0;; which++) {
        ASSERT_LT(which, support::enoughAllocations);
        const TestContour contour = square();
        const bool interrupted = interruptedAt(which, [&] { ask(contour); });
        EXPECT_EQ(ask(contour), expected) << "allocation " << which;
        support::expectConsistent(contour);
        if (!interrupted)
            break;
    }
}

TEST_P(InterruptedQuery, AnswersForTheNewPointsAfterAChange) {
    const auto ask = GetParam().ask;
    const reference::Points changed = support::points("0 0, 4 0, 2 -5, 0 4");
    const std::string expected = ask(TestContour(changed, true));
    for (long which = 0;; which++) {
        ASSERT_LT(which, support::enoughAllocations);
        TestContour contour = square();
        ask(contour);
        contour.points(changed);
        const bool interrupted = interruptedAt(which, [&] { ask(contour); });
        EXPECT_EQ(ask(contour), expected) << "allocation " << which;
        if (!interrupted)
            break;
    }
}

/// A contour that remembers an answer to everything.
TestContour asked(const std::string& points) {
    TestContour contour(support::points(points), true, 5);
    for (const Query& query : support::allQueries())
        query.ask(contour);
    return contour;
}

/// Changes a contour with each allocation of the change failing in turn: it is the old one, or the new one, or in
/// between, but it answers for what it is.
template <class Change>
void expectUsableWhereverInterrupted(Change change) {
    for (long which = 0;; which++) {
        SCOPED_TRACE("allocation " + std::to_string(which));
        ASSERT_LT(which, support::enoughAllocations);
        TestContour contour = asked("0 0, 4 0, 4 4, 0 4");
        const bool interrupted = interruptedAt(which, [&] { change(contour); });
        support::expectConsistent(contour);
        contour.points(support::points("1 1, 5 1, 5 6"));
        support::expectConsistent(contour);
        if (!interrupted)
            break;
    }
}

const reference::Points longer = support::points("0 0, 9 1, 8 8, 3 9, 1 7, 2 2, 1 1");

TEST(InterruptedChange, OfPointsLeavesAUsableContour) {
    expectUsableWhereverInterrupted([](TestContour& contour) { contour.points(longer); });
    expectUsableWhereverInterrupted([](TestContour& contour) { contour.setPoints(longer); });
}

TEST(InterruptedChange, OfClosednessLeavesAUsableContour) {
    expectUsableWhereverInterrupted([](TestContour& contour) { contour.isClosed(false); });
}

TEST(InterruptedChange, ByAssignmentLeavesAUsableTarget) {
    const TestContour source = asked("0 0, 9 1, 8 8, 3 9, 1 7, 2 2, 1 1");
    expectUsableWhereverInterrupted([&](TestContour& contour) { contour = source; });
    EXPECT_EQ(source, TestContour(longer, true));
    support::expectConsistent(source);
}

TEST(InterruptedChange, ByMapLeavesAUsableTarget) {
    const TestContour source = asked("0 0, 9 1, 8 8, 3 9, 1 7, 2 2, 1 1");
    const gmXform<2> turn(gmMatrix<2>(0, -1, 1, 0), {1, 2});
    expectUsableWhereverInterrupted([&](TestContour& contour) { source.map(turn, contour); });
    expectUsableWhereverInterrupted([&](TestContour& contour) { contour.map(turn, contour); });
}

TEST(InterruptedCopy, LeavesTheOriginalAlone) {
    const TestContour source = asked("0 0, 4 0, 4 4, 0 4");
    for (long which = 0;; which++) {
        ASSERT_LT(which, support::enoughAllocations);
        const bool interrupted = interruptedAt(which, [&] { TestContour(source).label(1); });
        EXPECT_EQ(source, square());
        if (!interrupted)
            break;
    }
    support::expectConsistent(source);
}

TEST(InterruptedEviction, KeepsEveryOtherEntry) {
    const auto shift = [](int x) { return gmXform<2>(gmMatrix<2>(1, 0, 0, 1), {double(x), 0}); };
    bool more = true;
    for (long which = 0; more; which++) {
        ASSERT_LT(which, support::enoughAllocations);
        // A thread of its own: the first eviction also makes the thread's generator.
        std::thread([&] {
            const TestContour contour = square();
            for (int x = 1; x <= 4; x++)
                contour.encloseRect(shift(x));
            more = interruptedAt(which, [&] { contour.encloseRect(shift(5)); });
            TestContour displaced(contour);
            displaced.cachedVectorSize(1000);
            for (std::size_t i = 0; i < 4; i++)
                displaced.moveSecretly(i, {1000, 0});
            int remembered = 0;
            for (int x = 1; x <= 5; x++)
                remembered += displaced.encloseRect(shift(x)).lower().x() < 500;
            EXPECT_EQ(remembered, 4) << "allocation " << which;
            support::expectConsistent(contour);
        }).join();
    }
}

TEST(Allocations, AreNoneForAnswersThatAreRemembered) {
    const TestContour contour = square();
    gmEllipse ellipse;
    double residual = 0;
    const auto askAll = [&] {
        contour.length();
        contour.meanPosition();
        contour.lineSegs();
        contour.validLine();
        contour.isSelfIntersecting();
        contour.medianFeatureSize();
        contour.encloseRect(gmXform<2>::I);
        contour.encloseCircle(gmContourDefs::eMaxVertexPair);
        contour.encloseCircle(gmContourDefs::eFromFirstVertex);
        contour.extremalVertexIndex(gmRadian(0.5));
        contour.fitEllipse(ellipse, residual);
        contour.vertexIndex({9, 9}, 0.5);
    };
    EXPECT_GT(allocationsOf(askAll), 0);
    EXPECT_EQ(allocationsOf(askAll), 0);
    const TestContour copy(contour);
    EXPECT_EQ(allocationsOf([&] { copy.lineSegs(); }), 0) << "copied";
}

TEST(Allocations, AreNoneForScans) {
    const TestContour contour = square();
    EXPECT_EQ(allocationsOf([&] {
                  contour.closestPoint({1, 2}, false);
                  contour.closestVertexIndex({1, 2});
              }),
              0);
}

TEST(Allocations, AreNoneForTolerancesThatHaveNoGrid) {
    const TestContour contour = square();
    for (const double tolerance : {0.0, -1.0, std::nan("")})
        EXPECT_EQ(allocationsOf([&] { contour.vertexIndex({0, 0}, tolerance); }), 0) << tolerance;
}

TEST(Allocations, AreNoneForTransformsAndAnglesThatAreNotNumbers) {
    const TestContour contour = square();
    const double nan = std::nan("");
    EXPECT_EQ(allocationsOf([&] {
                  contour.encloseRect(gmXform<2>(gmMatrix<2>(nan, 0, 0, 1), {0, 0}));
                  contour.extremalVertexIndex(gmRadian(nan));
              }),
              0);
}

TEST(Allocations, OfTheEdgesServeAgainAfterAChange) {
    TestContour contour = square();
    contour.computeLineSegs();
    contour.cleanCacheInfo();
    EXPECT_EQ(allocationsOf([&] { contour.computeLineSegs(); }), 0);
    contour.isClosed(false);
    EXPECT_EQ(allocationsOf([&] { contour.computeLineSegs(); }), 0);
}

}  // namespace
