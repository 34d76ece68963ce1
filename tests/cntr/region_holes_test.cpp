#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <memory>
#include <string>
#include <utility>
#include <vector>

#include "tests/support/changes.h"
#include "tests/support/testregion.h"

using support::ChangeCounter;
using support::Handle;
using support::Holes;
using support::OwnHoles;
using support::points;
using support::region;
using support::shared;
using support::testRegion;
using support::TestRegion;
using testing::ElementsAre;
using testing::IsEmpty;
using testing::ThrowsMessage;

namespace {

using BadParams = gmContourDefs::BadParams;

const char* const square = "0 0, 10 0, 10 10, 0 10";
const char* const inSquare = "4 4, 6 4, 6 6, 4 6";

/// On the heap, to be a hole and to be changed.
Handle own(const char* vertices) {
    return Handle(new gmRegion(points(vertices)));
}

/// A region that tells when it ends.
class Mortal : public gmRegion {
  public:
    Mortal(const char* vertices, int& deaths) : gmContour(support::points(vertices), true), deaths_(deaths) {}
    ~Mortal() override { ++deaths_; }

  private:
    int& deaths_;
};

/// Writes down when it is called back.
class HookedRegion : public gmRegion {
  public:
    explicit HookedRegion(const char* vertices) : gmContour(support::points(vertices), true) {}

    void cleanCacheInfo() override {
        log_.push_back("clean " + std::to_string(holes().size()));
        gmRegion::cleanCacheInfo();
    }
    void makeDataConsistentWithPoints() override { log_.push_back("data " + std::to_string(holes().size())); }
    void makePointsConsistentWithData() override { log_.emplace_back("points"); }

    std::vector<std::string> takeLog() { return std::exchange(log_, {}); }

  private:
    std::vector<std::string> log_;
};

TEST(RegionHoles, AreTheGivenRegionsInTheirOrder) {
    gmRegion shape = region(square);
    const RegionCPtr first = shared(inSquare);
    const RegionCPtr second = shared("1 1, 2 1, 2 2");
    shape.holes(Holes{first, second});
    EXPECT_THAT(shape.holes(), ElementsAre(first, second));
    shape.holes(Holes{second, first, second});
    EXPECT_THAT(shape.holes(), ElementsAre(second, first, second));
    EXPECT_EQ(first->referenceCount(), 2) << "shared, not copied";
}

TEST(RegionHoles, AreTakenFromOrdinaryHandlesAsWell) {
    gmRegion shape = region(square);
    const Handle first = own(inSquare);
    const Handle second = own("1 1, 2 1, 2 2");
    shape.holes(OwnHoles{first, second});
    EXPECT_THAT(shape.holes(), ElementsAre(RegionCPtr(first), RegionCPtr(second)));
    shape.holes(OwnHoles{});
    EXPECT_THAT(shape.holes(), IsEmpty());
}

TEST(RegionHoles, TakeTheRegionsOwnHolesAgain) {
    gmRegion shape = region(square);
    const RegionCPtr hole = shared(inSquare);
    shape.holes(Holes{hole, hole});
    shape.holes(shape.holes());
    EXPECT_THAT(shape.holes(), ElementsAre(hole, hole));
}

TEST(RegionHoles, OfAnEmptyVectorAreNoneAndTheCachesAreDropped) {
    TestRegion shape = testRegion(square);
    shape.holes(Holes{shared(inSquare)});
    EXPECT_EQ(shape.area(true), 96.0);
    shape.holes(Holes{});
    EXPECT_THAT(shape.holes(), IsEmpty());
    EXPECT_EQ(shape.area(true), 100.0);
    shape.moveSecretly(2, {20, 20});
    shape.holes(Holes{});
    EXPECT_EQ(shape.area(true), 200.0);
}

TEST(RegionHoles, DropEveryCache) {
    TestRegion shape = testRegion(square);
    EXPECT_EQ(shape.length(), 40.0);
    EXPECT_EQ(shape.area(true), 100.0);
    const gmVector<2> center = shape.centerOfMass(false);
    const gmMatrix<2> inertia = shape.inertiaMatrix(false);
    shape.moveSecretly(2, {20, 20});
    shape.holes(OwnHoles{own("1 1, 2 1, 1 2")});
    EXPECT_NE(shape.length(), 40.0);
    EXPECT_EQ(shape.area(false), 200.0);
    EXPECT_EQ(shape.area(true), 199.5);
    EXPECT_NE(shape.centerOfMass(false), center);
    EXPECT_FALSE(shape.inertiaMatrix(false) == inertia);
}

TEST(RegionHoles, AreOneChangeThatIsAnnouncedBeforeItHappens) {
    gmRegion shape = region(square);
    shape.holes(Holes{shared(inSquare)});
    shape.reportChanges(true);
    std::vector<std::size_t> seen;
    ChangeCounter changes([&](const gmPersistent& object) {
        EXPECT_EQ(&object, static_cast<const gmPersistent*>(&shape));
        seen.push_back(shape.holes().size());
    });
    shape.holes(Holes{});
    EXPECT_THAT(std::exchange(seen, {}), ElementsAre(1U));
    shape.holes(OwnHoles{own(inSquare), own(inSquare)});
    EXPECT_THAT(std::exchange(seen, {}), ElementsAre(0U));
    EXPECT_THROW(shape.holes(Holes{RegionCPtr()}), gmBadPointer);
    EXPECT_THAT(std::exchange(seen, {}), ElementsAre(2U)) << "a refusal drops the caches all the same";
}

TEST(RegionHoles, CleanThenMakeDataFollowBeforeTheyAreSet) {
    HookedRegion shape(square);
    shape.takeLog();
    shape.holes(Holes{shared(inSquare)});
    EXPECT_THAT(shape.takeLog(), ElementsAre("clean 0", "data 0"));
    shape.holes(OwnHoles{});
    EXPECT_THAT(shape.takeLog(), ElementsAre("clean 1", "data 1"));
    EXPECT_THROW(shape.holes(Holes{RegionCPtr()}), gmBadPointer);
    EXPECT_THAT(shape.takeLog(), ElementsAre("clean 0", "data 0"));
    EXPECT_THROW(shape.holes(OwnHoles{own(square)}), BadParams);
    EXPECT_THAT(shape.takeLog(), ElementsAre("clean 0", "data 0"));
}

template <class Handles>
void expectRefusedWithoutATrace(const Handles& refused) {
    TestRegion shape = testRegion(square);
    const RegionCPtr old = shared(inSquare);
    shape.holes(Holes{old});
    EXPECT_EQ(shape.area(true), 96.0);
    shape.label(7);
    shape.moveSecretly(0, {-10, -10});
    EXPECT_ANY_THROW(shape.holes(refused));
    EXPECT_THAT(shape.holes(), ElementsAre(old));
    EXPECT_EQ(shape.area(true), 196.0) << "the caches were kept";
    EXPECT_EQ(shape.label(), 7U);
}

TEST(RegionHoles, RefuseAnEmptyHandle) {
    gmRegion shape = region(square);
    EXPECT_THROW(shape.holes(Holes{RegionCPtr()}), gmBadPointer);
    EXPECT_THROW(shape.holes(OwnHoles{Handle()}), gmBadPointer);
    EXPECT_THROW(shape.holes(Holes{shared(inSquare), nullptr}), gmBadPointer);
    EXPECT_THAT(shape.holes(), IsEmpty());
    expectRefusedWithoutATrace(Holes{shared("1 1, 2 1, 2 2"), nullptr});
    expectRefusedWithoutATrace(OwnHoles{own("1 1, 2 1, 2 2"), nullptr});
}

TEST(RegionHoles, RefuseAHoleThatMeetsTheOutline) {
    gmRegion shape = region(square);
    const char* const message = "holes cannot intersect region";
    const char* const across = "8 4, 12 4, 12 6, 8 6";
    EXPECT_THAT([&] { shape.holes(Holes{shared(across)}); }, ThrowsMessage<BadParams>(message));
    EXPECT_THAT([&] { shape.holes(OwnHoles{own(across)}); }, ThrowsMessage<BadParams>(message));
    EXPECT_THAT([&] { shape.holes(Holes{shared(inSquare), shared(across)}); }, ThrowsMessage<BadParams>(message));
    EXPECT_THAT([&] { shape.holes(Holes{shared(square)}); }, ThrowsMessage<BadParams>(message));
    EXPECT_THAT(shape.holes(), IsEmpty());
    expectRefusedWithoutATrace(Holes{shared("1 1, 2 1, 2 2"), shared(across)});
    expectRefusedWithoutATrace(OwnHoles{own("1 1, 2 1, 2 2"), own(across)});
}

TEST(RegionHoles, RefuseAHoleThatTouchesTheOutlineInOnePoint) {
    gmRegion shape = region(square);
    EXPECT_THROW(shape.holes(Holes{shared("0 5, 4 4, 4 6")}), BadParams) << "its vertex on an edge, from inside";
    EXPECT_THROW(shape.holes(Holes{shared("10 5, 14 4, 14 6")}), BadParams) << "from outside";
    EXPECT_THROW(shape.holes(Holes{shared("12 8, 8 12, 14 14")}), BadParams) << "its edge through a vertex";
    EXPECT_THROW(shape.holes(Holes{shared("10 10, 14 11, 11 14")}), BadParams) << "vertex on vertex";
    EXPECT_NO_THROW(shape.holes(Holes{shared("0.1 5, 4 4, 4 6")}));
    gmRegion slope = region("0 0, 10 10, 0 10");
    const RegionCPtr justShort = shared("5.0000005 4.9999995, 6 4, 9 8.6");
    ASSERT_EQ(slope.intersections(*justShort, false).size(), 1U) << "by the steeper edge, within the tolerance";
    EXPECT_THROW(slope.holes(Holes{justShort}), BadParams);
}

TEST(RegionHoles, RefuseOneThatMeetsTheClosingEdgeOfAnOpenContour) {
    gmRegion shape{gmContour(points("0 0, 10 0, 10 10"), false)};
    EXPECT_THROW(shape.holes(Holes{shared("4 5, 6 4, 6 3")}), BadParams);
    EXPECT_NO_THROW(shape.holes(Holes{shared("7 2, 8 2, 8 3")}));
    gmRegion other = region(square);
    const Handle open(new gmRegion(gmContour(points("9 9, 5 5, 14 8"), false)));
    EXPECT_THROW(other.holes(OwnHoles{open}), BadParams) << "the hole's closing edge counts as well";
}

TEST(RegionHoles, TheFirstBadOneDecidesWhichErrorItIs) {
    gmRegion shape = region(square);
    EXPECT_THROW(shape.holes(Holes{shared(square), nullptr}), BadParams);
    EXPECT_THROW(shape.holes(Holes{nullptr, shared(square)}), gmBadPointer);
}

TEST(RegionHoles, NeedAnOutlineToBeComparedWith) {
    gmRegion empty;
    EXPECT_THROW(empty.holes(Holes{shared(inSquare)}), gmContourDefs::EmptyContour);
    EXPECT_THAT(empty.holes(), IsEmpty());
    EXPECT_NO_THROW(empty.holes(Holes{}));
    gmRegion shape = region(square);
    EXPECT_NO_THROW(shape.holes(Holes{shared("")})) << "an empty hole meets nothing";
}

TEST(RegionHoles, MayLieOutsideTheOutline) {
    gmRegion shape = region(inSquare);
    EXPECT_NO_THROW(shape.holes(Holes{shared("20 20, 22 20, 22 22")}));
    EXPECT_NO_THROW(shape.holes(Holes{shared(square)})) << "around it";
}

TEST(RegionHoles, MayOverlapEachOtherAndBeNested) {
    gmRegion shape = region(square);
    EXPECT_NO_THROW(shape.holes(Holes{shared(inSquare), shared("5 5, 7 5, 7 7, 5 7")}));
    EXPECT_NO_THROW(shape.holes(Holes{shared(inSquare), shared("4.5 4.5, 5 4.5, 5 5")}));
    EXPECT_NO_THROW(shape.holes(Holes{shared(inSquare), shared(inSquare)}));
    EXPECT_EQ(shape.holes().size(), 2U);
}

TEST(RegionHoles, AlreadyThereDoNotCountWhenNewOnesAreSet) {
    gmRegion shape = region(square);
    shape.holes(Holes{shared(inSquare)});
    EXPECT_NO_THROW(shape.holes(Holes{shared("5 5, 7 5, 7 7, 5 7")})) << "it meets the hole it replaces";
}

TEST(RegionHoles, OfAHoleAreNotLookedAt) {
    const Handle hole = own(inSquare);
    hole->holes(Holes{shared("-9 3, 19 3, 19 30")});
    gmRegion shape = region(square);
    EXPECT_NO_THROW(shape.holes(OwnHoles{hole}));
}

TEST(RegionHoles, AreNotComparedByEquality) {
    gmRegion shape = region(square);
    shape.holes(Holes{shared(inSquare)});
    EXPECT_TRUE(shape == region(square));
    EXPECT_FALSE(shape != region(square));
    gmRegion other = region(square);
    other.holes(Holes{shared("1 1, 2 1, 2 2"), shared(inSquare)});
    EXPECT_TRUE(shape == other);
}

TEST(RegionHoles, AreSharedByCopies) {
    gmRegion original = region(square);
    const RegionCPtr hole = shared(inSquare);
    original.holes(Holes{hole});
    const gmRegion copy(original);
    gmRegion assigned = region(inSquare);
    assigned.holes(Holes{shared(square)});
    assigned = original;
    EXPECT_THAT(copy.holes(), ElementsAre(hole));
    EXPECT_THAT(assigned.holes(), ElementsAre(hole));
    original.holes(Holes{});
    EXPECT_THAT(copy.holes(), ElementsAre(hole)) << "the list is the copy's own";
}

TEST(RegionHoles, LiveAsLongAsAnyHandleToThem) {
    int deaths = 0;
    {
        const auto first = std::make_unique<gmRegion>(points(square));
        auto hole = std::make_unique<Handle>(new Mortal(inSquare, deaths));
        first->holes(OwnHoles{*hole});
        hole.reset();
        EXPECT_EQ(deaths, 0) << "the region holds it";
        gmRegion second(*first);
        first->holes(Holes{});
        EXPECT_EQ(deaths, 0) << "the copy holds it";
        const RegionCPtr last = second.holes().front();
        second = region(square);
        EXPECT_EQ(deaths, 0) << "a handle holds it";
    }
    EXPECT_EQ(deaths, 1);
}

TEST(RegionHoles, EndWithTheLastRegionThatHoldsThem) {
    int deaths = 0;
    {
        gmRegion shape = region(square);
        shape.holes(OwnHoles{Handle(new Mortal(inSquare, deaths)), Handle(new Mortal(inSquare, deaths))});
        const gmRegion copy(shape);
        shape.holes(Holes{shape.holes().front()});
        EXPECT_EQ(deaths, 0);
    }
    EXPECT_EQ(deaths, 2);
}

/// Regions nested to this depth, whose outlines do not touch.
Handle nested(int depth) {
    Handle outermost = own("0 0, 1 0, 0 1");
    for (int i = 1; i < depth; ++i) {
        const Handle around = own(i % 2 ? "5 5, 6 5, 5 6" : "0 0, 1 0, 0 1");
        around->holes(OwnHoles{outermost});
        outermost = around;
    }
    return outermost;
}

TEST(RegionHoles, AMillionInsideEachOtherEndWithoutExhaustingTheStack) {
    int deaths = 0;
    Handle innermost(new Mortal("0 0, 1 0, 0 1", deaths));
    gmRegion shape = region(square);
    {
        const Handle hole = own("5 5, 6 5, 5 6");
        Handle chain = nested(999999);
        hole->holes(OwnHoles{innermost, chain});
        shape.holes(OwnHoles{hole});
    }
    innermost = nullptr;
    EXPECT_EQ(deaths, 0);
    shape.holes(Holes{});
    EXPECT_EQ(deaths, 1);
}

TEST(RegionHoles, NestedOnesThatSomebodyHoldsOutliveTheRest) {
    int deaths = 0;
    const Handle held(new Mortal("0 0, 1 0, 0 1", deaths));
    {
        gmRegion outer = region(square);
        const Handle middle = own("5 5, 6 5, 5 6");
        middle->holes(OwnHoles{held, Handle(new Mortal("5.1 5.1, 5.2 5.1, 5.2 5.2", deaths))});
        outer.holes(OwnHoles{middle});
    }
    EXPECT_EQ(deaths, 1);
    EXPECT_EQ(held->referenceCount(), 1);
    EXPECT_EQ(held->area(false), 0.5);
}

TEST(RegionAssignment, ToItselfChangesNothing) {
    TestRegion shape = testRegion(square);
    const RegionCPtr hole = shared(inSquare);
    shape.holes(Holes{hole});
    shape.label(5);
    EXPECT_EQ(shape.area(true), 96.0);
    shape.moveSecretly(2, {20, 20});
    const gmRegion& alias = shape;
    static_cast<gmRegion&>(shape) = alias;
    EXPECT_THAT(shape.holes(), ElementsAre(hole));
    EXPECT_EQ(shape.label(), 5U);
    EXPECT_EQ(shape.points().size(), 4U);
    EXPECT_EQ(shape.area(true), 96.0);
}

TEST(RegionAssignment, TakesOneThatOnlyTheTargetKeepsAlive) {
    gmRegion shape = region(square);
    {
        const Handle island = own("4.5 4.5, 5.5 4.5, 5.5 5.5");
        island->label(3);
        island->holes(Holes{shared("5.2 4.8, 5.3 4.8, 5.3 4.9"), shared("5 4.6, 5.1 4.6, 5.1 4.7")});
        const Handle hole = own(inSquare);
        hole->holes(OwnHoles{island});
        shape.holes(OwnHoles{hole});
    }
    shape = *shape.holes().front()->holes().front();
    EXPECT_EQ(shape.points(), points("4.5 4.5, 5.5 4.5, 5.5 5.5"));
    EXPECT_EQ(shape.label(), 3U);
    ASSERT_EQ(shape.holes().size(), 2U);
    EXPECT_EQ(shape.holes().back()->points(), points("5 4.6, 5.1 4.6, 5.1 4.7"));
    shape = *shape.holes().front();
    EXPECT_EQ(shape.points(), points("5.2 4.8, 5.3 4.8, 5.3 4.9"));
    EXPECT_THAT(shape.holes(), IsEmpty());
}

}  // namespace
