#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <limits>
#include <string>
#include <utility>
#include <vector>

#include "tests/support/bits.h"
#include "tests/support/changes.h"
#include "tests/support/consistent.h"
#include "tests/support/tablet.h"
#include "tests/support/testcontour.h"

using support::ChangeCounter;
using support::contour;
using support::openContour;
using support::points;
using support::TestContour;
using testing::ElementsAre;
using testing::IsEmpty;

namespace {

/// Writes down when it is called back, and what it looks like then.
class HookedContour : public TestContour {
  public:
    using TestContour::TestContour;

    void cleanCacheInfo() override {
        note("clean");
        TestContour::cleanCacheInfo();
    }
    void makeDataConsistentWithPoints() override { note("data follows"); }
    void makePointsConsistentWithData() override { note("points follow"); }

    std::vector<std::string> takeLog() { return std::exchange(log_, {}); }

  private:
    void note(const std::string& call) {
        log_.push_back(call + ": " + std::to_string(points().size()) + (isClosed() ? " closed" : " open"));
    }

    std::vector<std::string> log_;
};

/// Is closed or open whatever was stored.
class OverridingContour : public TestContour {
  public:
    using TestContour::isClosed;
    using TestContour::TestContour;
    bool isClosed() const override { return answer; }

    bool answer = true;
};

TEST(ContourPoints, CleansThenAssignsThenMakesDataFollow) {
    HookedContour shape(points("0 0, 1 1"), true);
    shape.takeLog();
    shape.points(points("0 0, 1 0, 1 1"));
    EXPECT_THAT(shape.takeLog(), ElementsAre("clean: 2 closed", "data follows: 3 closed"));
    EXPECT_EQ(shape.points(), points("0 0, 1 0, 1 1"));
}

TEST(ContourSetPoints, CleansAndAssignsOnly) {
    HookedContour shape(points("0 0, 1 1"), true);
    shape.takeLog();
    shape.setPoints(points("0 0, 1 0, 1 1"));
    EXPECT_THAT(shape.takeLog(), ElementsAre("clean: 2 closed"));
    EXPECT_EQ(shape.points().size(), 3U);
}

TEST(ContourIsClosed, StoresThenCleans) {
    HookedContour shape(points("0 0, 1 1"), true);
    shape.takeLog();
    gmContour& base = shape;
    base.isClosed(false);
    EXPECT_THAT(shape.takeLog(), ElementsAre("clean: 2 open"));
    base.isClosed(false);
    EXPECT_THAT(shape.takeLog(), ElementsAre("clean: 2 open"));
}

TEST(ContourMap, CleansTheTargetAndHasItsDataFollow) {
    HookedContour target(points("0 0, 1 1"), false);
    target.takeLog();
    target.reportChanges(true);
    ChangeCounter changes;
    contour("0 0, 1 0, 1 1").map(gmXform<2>::I, target);
    EXPECT_THAT(target.takeLog(), ElementsAre("clean: 2 open", "data follows: 3 closed"));
    EXPECT_EQ(changes.take(), 1);
}

TEST(ContourLabel, CallsNoHook) {
    HookedContour shape(points("0 0, 1 1"), true);
    shape.takeLog();
    shape.label(5);
    shape.cachedVectorSize(5);
    EXPECT_THAT(shape.takeLog(), IsEmpty());
}

TEST(ContourHooks, DoNothingInAPlainContour) {
    TestContour shape = contour("0 0, 1 0, 1 1", 4);
    shape.length();
    shape.makeDataConsistentWithPoints();
    shape.makePointsConsistentWithData();
    EXPECT_EQ(shape, contour("0 0, 1 0, 1 1"));
    support::expectConsistent(shape);
}

TEST(ContourPoints, TakesItsOwnPoints) {
    TestContour shape = contour("0 0, 4 0, 4 3", 4);
    shape.length();
    shape.points(shape.points());
    EXPECT_EQ(shape.points(), points("0 0, 4 0, 4 3"));
    shape.setPoints(shape.points());
    EXPECT_EQ(shape.points(), points("0 0, 4 0, 4 3"));
    support::expectConsistent(shape);
}

TEST(ContourPoints, KeepsLabelClosednessAndCachedVectorSize) {
    TestContour shape = openContour("0 0, 4 0", 4);
    shape.cachedVectorSize(7);
    shape.points({});
    EXPECT_EQ(shape.label(), 4U);
    EXPECT_EQ(shape.cachedVectorSize(), 7);
    EXPECT_FALSE(shape.isClosed());
    EXPECT_TRUE(shape.points().empty());
}

TEST(ContourIsClosed, IsAskedThroughTheVirtualTable) {
    OverridingContour shape(points("0 0, 4 0, 4 3"), true);
    shape.answer = false;
    EXPECT_EQ(shape.length(), 7.0);
    EXPECT_EQ(shape.meanPosition(), openContour("0 0, 4 0, 4 3").meanPosition());
    EXPECT_EQ(shape.lineSegs().size(), 2U);
    EXPECT_EQ(shape.polygon().size(), 3);
    EXPECT_EQ(shape.closestPoint({2, 1.5}, false), openContour("0 0, 4 0, 4 3").closestPoint({2, 1.5}, false));
    EXPECT_EQ(shape.medianFeatureSize(), openContour("0 0, 4 0, 4 3").medianFeatureSize());
    EXPECT_TRUE(shape.intersections(gmLineSeg({1, -1}, {1, 2}), true).size() == 1);
    support::RecordingTablet tablet;
    shape.draw(tablet, gmContourDefs::eOutline, gmColor(), gmUITablet::eImageLayer);
    EXPECT_EQ(tablet.calls.size(), 2U);
    TestContour mapped;
    shape.map(gmXform<2>::I, mapped);
    EXPECT_FALSE(mapped.isClosed());
}

TEST(ContourIsClosed, OfTheOtherContourIsAskedThroughTheVirtualTable) {
    OverridingContour other(points("-1 1, 5 1, 5 9"), true);
    other.answer = false;
    const TestContour square = contour("0 0, 4 0, 4 4, 0 4");
    EXPECT_EQ(square.intersections(other), square.intersections(openContour("-1 1, 5 1, 5 9")));
    EXPECT_NE(square.intersections(other), square.intersections(contour("-1 1, 5 1, 5 9")));
}

TEST(ContourEquality, AsksBothForClosednessThroughTheVirtualTable) {
    OverridingContour shape(points("0 0, 4 0"), true);
    shape.answer = false;
    EXPECT_TRUE(shape == openContour("0 0, 4 0"));
    EXPECT_TRUE(openContour("0 0, 4 0") == shape);
    EXPECT_TRUE(contour("0 0, 4 0") != shape);
}

TEST(ContourCopy, CopiesEveryMember) {
    TestContour original = openContour("0 0, 4 0, 4 3", 6);
    original.cachedVectorSize(11);
    const gmContour copy(original);
    EXPECT_EQ(copy.points(), original.points());
    EXPECT_FALSE(copy.isClosed());
    EXPECT_EQ(copy.label(), 6U);
    EXPECT_EQ(copy.cachedVectorSize(), 11);
    TestContour assigned = contour("9 9", 1);
    assigned = original;
    EXPECT_EQ(assigned, original);
    EXPECT_EQ(assigned.label(), 6U);
}

TEST(ContourCopy, IsIndependent) {
    const TestContour original = contour("0 0, 4 0, 4 3");
    EXPECT_EQ(original.length(), 12.0);
    TestContour copy(original);
    copy.points(points("0 0, 8 0, 8 6"));
    copy.label(3);
    EXPECT_EQ(original, contour("0 0, 4 0, 4 3"));
    EXPECT_EQ(original.label(), 0U);
    EXPECT_EQ(original.length(), 12.0);
    EXPECT_EQ(copy.length(), 24.0);
}

TEST(ContourCopy, OutlivesItsOriginal) {
    TestContour copy;
    {
        const TestContour original = contour("0 0, 4 0, 4 3");
        original.vertexIndex({0, 0}, 1.0);
        original.extremalVertexIndex(gmRadian(1.0));
        original.encloseRect(gmXform<2>::I);
        copy = original;
    }
    support::expectConsistent(copy);
}

TEST(ContourAssignment, ToItselfChangesNothing) {
    TestContour shape = openContour("0 0, 4 0, 4 3", 6);
    shape.cachedVectorSize(11);
    shape.length();
    shape.vertexIndex({0, 0}, 1.0);
    shape.encloseRect(gmXform<2>::I);
    const gmContour& alias = shape;
    static_cast<gmContour&>(shape) = alias;
    EXPECT_EQ(shape.points(), points("0 0, 4 0, 4 3"));
    EXPECT_EQ(shape.label(), 6U);
    EXPECT_EQ(shape.cachedVectorSize(), 11);
    support::expectConsistent(shape);
}

TEST(ContourChanges, AreAnnouncedByEveryMutator) {
    TestContour shape = contour("0 0, 4 0, 4 3");
    shape.reportChanges(true);
    ChangeCounter changes;
    shape.points(points("0 0, 1 1"));
    EXPECT_EQ(changes.take(), 1) << "points";
    shape.setPoints(points("0 0, 1 1, 2 0"));
    EXPECT_EQ(changes.take(), 1) << "setPoints";
    shape.isClosed(false);
    EXPECT_EQ(changes.take(), 1) << "isClosed";
    shape.label(3);
    EXPECT_EQ(changes.take(), 1) << "label";
    shape.cachedVectorSize(5);
    EXPECT_EQ(changes.take(), 1) << "cachedVectorSize";
    shape.cleanCacheInfo();
    EXPECT_EQ(changes.take(), 1) << "cleanCacheInfo";
}

TEST(ContourChanges, AreNotAnnouncedUnlessAskedFor) {
    TestContour shape = contour("0 0, 4 0, 4 3");
    ChangeCounter changes;
    shape.points({});
    shape.isClosed(false);
    shape.label(3);
    shape.cachedVectorSize(5);
    shape.cleanCacheInfo();
    EXPECT_EQ(changes.take(), 0);
}

TEST(ContourChanges, AreNotAnnouncedByARefusal) {
    TestContour shape = contour("0 0, 4 0, 4 3");
    shape.reportChanges(true);
    ChangeCounter changes;
    EXPECT_THROW(shape.label(1UL << 32), gmContourDefs::BadParams);
    EXPECT_THROW(shape.cachedVectorSize(-1), gmContourDefs::BadParams);
    EXPECT_THROW(shape.cachedVectorSize(1L << 31), gmContourDefs::BadParams);
    EXPECT_EQ(changes.take(), 0);
}

TEST(ContourChanges, AreNotAnnouncedByQueriesAndCopies) {
    TestContour shape = contour("0 0, 4 0, 4 3");
    shape.reportChanges(true);
    ChangeCounter changes;
    support::expectConsistent(shape);
    shape.length();
    shape.vertexIndex({0, 0}, 1.0);
    shape.encloseRect(gmXform<2>::I);
    TestContour copy(shape);
    EXPECT_FALSE(copy.reportsChanges());
    copy.points({});
    EXPECT_EQ(changes.take(), 0);
}

TEST(ContourChanges, AreAnnouncedBeforeTheyHappen) {
    TestContour shape = contour("0 0, 4 0, 4 3", 1);
    shape.reportChanges(true);
    std::vector<std::string> seen;
    ChangeCounter changes([&](const gmPersistent& object) {
        EXPECT_EQ(&object, static_cast<const gmPersistent*>(&shape));
        seen.push_back(support::text(shape));
    });
    const std::string before = support::text(shape);
    shape.label(2);
    EXPECT_THAT(std::exchange(seen, {}), ElementsAre(before));
    shape.label(1);
    seen.clear();
    shape.cachedVectorSize(5);
    EXPECT_THAT(std::exchange(seen, {}), ElementsAre(before));
    shape.cachedVectorSize(3);
    seen.clear();
    shape.setPoints({});
    EXPECT_THAT(std::exchange(seen, {}), ElementsAre(before));
    shape.setPoints(points("0 0, 4 0, 4 3"));
    seen.clear();
    shape.points({});
    EXPECT_THAT(std::exchange(seen, {}), ElementsAre(before));
}

TEST(ContourChanges, AreAnnouncedWhileTheOldAnswersAreStillKnown) {
    TestContour shape = contour("0 0, 4 0, 4 3");
    EXPECT_EQ(shape.length(), 12.0);
    shape.moveSecretly(1, {0, 9});
    shape.reportChanges(true);
    double during = 0.0;
    ChangeCounter changes([&](const gmPersistent&) { during = shape.length(); });
    shape.cleanCacheInfo();
    EXPECT_EQ(during, 12.0);
    EXPECT_NE(shape.length(), 12.0);
}

TEST(ContourAssignment, LeavesTheTargetsReportingAlone) {
    TestContour reporting = contour("0 0");
    reporting.reportChanges(true);
    TestContour silent = contour("1 1");
    silent = reporting;
    EXPECT_FALSE(silent.reportsChanges());
    reporting = contour("2 2");
    EXPECT_TRUE(reporting.reportsChanges());
}

}  // namespace
