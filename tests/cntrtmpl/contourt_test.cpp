#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <memory>
#include <utility>
#include <vector>

#include "tests/support/changes.h"
#include "tests/support/consistent.h"
#include "tests/support/edgelets.h"

using support::Change;
using support::ChangeCounter;
using support::ContourT;
using support::edgeContour;
using support::Edgelets;
using support::edgelets;
using support::HookWatcher;
using support::moveSecretly;
using support::points;
using support::RegionT;
using support::scale;
using support::scaling;
using support::unmarked;
using support::WatchedXform;
using support::XformHandle;
using testing::ElementsAre;
using testing::IsEmpty;

namespace {

using Singular = gmMathError::Singular;
using WatchedHandle = gmPtrHandle<WatchedXform>;

const char* const square = "0 0, 4 0, 4 4, 0 4";
const char* const largeSquare = "0 0, 8 0, 8 8, 0 8";

WatchedHandle watched(double factor = 2.0) {
    return WatchedHandle(new WatchedXform(scale(factor)));
}

// ----- Construction

TEST(ContourTModel, DefaultIsAnEmptyClosedContourWithoutDataAndTransform) {
    const ContourT contour;
    EXPECT_THAT(contour.points(), IsEmpty());
    EXPECT_THAT(contour.data(), IsEmpty());
    EXPECT_TRUE(contour.dataFromPointsXform().isNull());
    EXPECT_TRUE(contour.isClosed());
    EXPECT_EQ(contour.label(), 0U);
    EXPECT_EQ(contour.cachedVectorSize(), 3);
    EXPECT_FALSE(contour.reportsChanges());
}

TEST(ContourTModel, MakesAnEmptyContourForTheRegistry) {
    const std::unique_ptr<gmPersistent> made(ContourT::make());
    const auto* contour = dynamic_cast<ContourT*>(made.get());
    ASSERT_NE(contour, nullptr);
    EXPECT_TRUE(*contour == ContourT());
    EXPECT_THAT(contour->data(), IsEmpty());
}

TEST(ContourTModel, OfEdgePointsHasItsVerticesWhereTheyAre) {
    Edgelets data = edgelets("1 2, 3 4, 3 4, -5e300 0.1");
    const ContourT contour(data);
    EXPECT_EQ(contour.points(), points("1 2, 3 4, 3 4, -5e300 0.1"));
    EXPECT_EQ(contour.data(), data);
    EXPECT_TRUE(contour.isClosed());
    EXPECT_EQ(contour.label(), 0U);
    ASSERT_FALSE(contour.dataFromPointsXform().isNull());
    const auto* linear = dynamic_cast<const gm2XformLinear*>(contour.dataFromPointsXform().get());
    ASSERT_NE(linear, nullptr);
    EXPECT_EQ(linear->linearXform(), gmXform<2>::I);
    data.clear();
    EXPECT_EQ(contour.data().size(), 4U);
}

TEST(ContourTModel, UnderATransformHasTheEdgePointsMappedBack) {
    const ContourT contour(edgelets(largeSquare), scaling(2));
    EXPECT_EQ(contour.points(), points(square));
    EXPECT_EQ(contour.data(), edgelets(largeSquare));
    EXPECT_EQ(contour.datum(contour.points()[2]), unmarked("8 8")[0]);
    const XformHandle moved(new gm2Rigid(gmDegree(0), {10, 20}));
    EXPECT_EQ(ContourT(edgelets("10 20, 13 20, 13 24"), moved).points(), points("0 0, 3 0, 3 4"));
}

TEST(ContourTModel, ClonesTheTransformOfTheCallerAndNeverSharesIt) {
    const WatchedHandle xform = watched();
    ContourT contour(edgelets(largeSquare), xform);
    EXPECT_EQ(xform->requests().clones, 1);
    EXPECT_EQ(xform->referenceCount(), 1);
    EXPECT_NE(contour.dataFromPointsXform(), xform);
    EXPECT_NE(dynamic_cast<const WatchedXform*>(contour.dataFromPointsXform().get()), nullptr) << "its class is kept";
    xform->become(scale(100));
    EXPECT_EQ(contour.datum({1, 3}).position(), gmVector<2>(2, 6));
    EXPECT_EQ(contour.point(edgelets("2 6")[0]), gmVector<2>(1, 3));
    const WatchedHandle other = watched();
    const ContourT empty({}, other);
    other->become(scale(100));
    EXPECT_EQ(empty.point(edgelets("2 6")[0]), gmVector<2>(1, 3)) << "also when the inverse is made later";
}

TEST(ContourTModel, UnderAnEmptyHandleHasTheIdentity) {
    const ContourT contour(edgelets(square), gmPtrHandle_const<gm2XformBase>());
    EXPECT_EQ(contour.points(), points(square));
    ASSERT_FALSE(contour.dataFromPointsXform().isNull());
    EXPECT_EQ(contour.dataFromPointsXform()->linearXform(), gmXform<2>::I);
    EXPECT_EQ(ContourT(edgelets(square), nullptr).points(), points(square));
}

TEST(ContourTModel, HandsOutTheTransformItself) {
    const ContourT contour = edgeContour(square);
    const gmPtrHandle_const<gm2XformBase> xform = contour.dataFromPointsXform();
    EXPECT_EQ(xform->referenceCount(), 2);
    EXPECT_EQ(xform, contour.dataFromPointsXform());
}

TEST(ContourTModel, CannotBeMadeOfEdgePointsThatNothingMapsBack) {
    const XformHandle flat(new gm2XformLinear(gmXform<2>(gmMatrix<2>(1, 1, 1, 1), {})));
    EXPECT_THROW(ContourT(edgelets(square), flat), Singular);
    ContourT empty({}, flat);
    EXPECT_THAT(empty.points(), IsEmpty());
    empty.points(points("1 2, 3 4"));
    EXPECT_EQ(empty.data(), unmarked("3 3, 7 7")) << "which needs no inverse";
}

// ----- Data and points

TEST(ContourTData, TakeTheVerticesAlong) {
    ContourT contour = edgeContour(largeSquare, 2);
    contour.label(7);
    contour.isClosed(false);
    contour.cachedVectorSize(9);
    contour.data(edgelets("2 4, 6 8, 10 12", 50));
    EXPECT_EQ(contour.points(), points("1 2, 3 4, 5 6"));
    EXPECT_EQ(contour.data(), edgelets("2 4, 6 8, 10 12", 50));
    EXPECT_EQ(contour.label(), 7U);
    EXPECT_FALSE(contour.isClosed());
    EXPECT_EQ(contour.cachedVectorSize(), 9);
    contour.data({});
    EXPECT_THAT(contour.points(), IsEmpty());
    EXPECT_THAT(contour.data(), IsEmpty());
    EXPECT_FALSE(contour.dataFromPointsXform().isNull());
}

TEST(ContourTData, AreMadeAnewFromPointsWithoutMagnitudeAndAngle) {
    ContourT contour = edgeContour(largeSquare, 2);
    contour.points(points("1 2, 3 4, 5 6"));
    EXPECT_EQ(contour.points(), points("1 2, 3 4, 5 6"));
    EXPECT_EQ(contour.data(), unmarked("2 4, 6 8, 10 12"));
    static_cast<gmContour&>(contour).points(points("9 1, 8 2, 7 3, 6 4, 5 5"));
    EXPECT_EQ(contour.data(), unmarked("18 2, 16 4, 14 6, 12 8, 10 10"));
    contour.points({});
    EXPECT_THAT(contour.data(), IsEmpty());
}

TEST(ContourTData, MayBeSetToThemselves) {
    ContourT contour = edgeContour(largeSquare, 2);
    contour.data(contour.data());
    EXPECT_EQ(contour.data(), edgelets(largeSquare));
    EXPECT_EQ(contour.points(), points(square));
    contour.points(contour.points());
    EXPECT_EQ(contour.data(), unmarked(largeSquare));
    EXPECT_EQ(contour.points(), points(square));
}

TEST(ContourTData, AreLeftAloneByWhatIsNotAboutVertices) {
    HookWatcher<ContourT> contour(edgelets(square));
    contour.label(5);
    contour.cachedVectorSize(1);
    HookWatcher<ContourT>::take();
    contour.isClosed(false);
    EXPECT_THAT(HookWatcher<ContourT>::take(), ElementsAre("clean 4/4"));
    EXPECT_FALSE(contour.isClosed());
    EXPECT_EQ(contour.length(), 12.0);
    EXPECT_EQ(contour.data(), edgelets(square));
}

TEST(ContourTData, FollowOnlyWhenToldOnceVerticesAreAssigned) {
    ContourT contour = edgeContour(largeSquare, 2);
    static_cast<gmContour&>(contour) = support::openContour("1 2, 3 4", 6);
    EXPECT_EQ(contour.points(), points("1 2, 3 4"));
    EXPECT_EQ(contour.data(), edgelets(largeSquare));
    EXPECT_EQ(contour.label(), 6U);
    EXPECT_FALSE(contour.isClosed());
    contour.makeDataConsistentWithPoints();
    EXPECT_EQ(contour.data(), unmarked("2 4, 6 8"));
    moveSecretly(contour, 0, {77, 77});
    contour.makePointsConsistentWithData();
    EXPECT_EQ(contour.points(), points("1 2, 3 4"));
}

class ContourTChange : public testing::TestWithParam<Change> {};
INSTANTIATE_TEST_SUITE_P(, ContourTChange, testing::ValuesIn(support::changes()),
                         [](const auto& instance) { return std::string(instance.param.name); });

TEST_P(ContourTChange, DropsEveryAnswer) {
    ContourT contour = edgeContour(square);
    support::askEverything(contour);
    moveSecretly(contour, 2, {2, -5});
    support::askEverything(contour);
    GetParam().make(contour);
    support::expectConsistent(contour);
    ASSERT_EQ(contour.data().size(), contour.points().size());
    for (std::size_t i = 0; i < contour.points().size(); i++)
        EXPECT_EQ(contour.data()[i].position(), contour.points()[i]);
}

TEST(ContourTHooks, AreReachedByTheSettersInOrder) {
    using Watcher = HookWatcher<ContourT>;
    Watcher::take();
    Watcher contour(edgelets(square), scaling(2));
    EXPECT_THAT(Watcher::take(), IsEmpty()) << "not by the constructors";
    contour.data(edgelets("2 4, 6 8, 10 12"));
    EXPECT_THAT(Watcher::take(), ElementsAre("clean 4/3", "clean 4/3", "points 3/3"));
    contour.points(points("1 2, 3 4"));
    EXPECT_THAT(Watcher::take(), ElementsAre("clean 3/3", "clean 2/3", "data 2/2"));
    static_cast<gmContour&>(contour).makePointsConsistentWithData();
    EXPECT_THAT(Watcher::take(), ElementsAre("clean 2/2", "clean 2/2", "points 2/2"));
    static_cast<gmContour&>(contour).makeDataConsistentWithPoints();
    EXPECT_THAT(Watcher::take(), ElementsAre("clean 2/2", "data 2/2"));
    contour.cleanCacheInfo();
    EXPECT_THAT(Watcher::take(), ElementsAre("clean 2/2"));
    Watcher other;
    other = contour;
    EXPECT_THAT(Watcher::take(), IsEmpty()) << "nor by assignment";
}

TEST(ContourTHooks, AnnounceWhileTheOldAnswersAreStillKnown) {
    ContourT contour = edgeContour(square, 2);
    EXPECT_EQ(contour.length(), 8.0);
    contour.reportChanges(true);
    std::vector<std::string> seen;
    ChangeCounter counter([&](const gmPersistent& object) {
        EXPECT_EQ(&object, static_cast<const gmPersistent*>(&contour));
        seen.push_back(support::text(contour.length()) + " of " + std::to_string(contour.points().size()) + "/" +
                       std::to_string(contour.data().size()));
    });
    contour.data(edgelets("0 0, 6 0, 6 8"));
    ASSERT_FALSE(seen.empty());
    EXPECT_EQ(seen.front(), "8 of 4/3");
    EXPECT_EQ(counter.take(), 2);
    EXPECT_EQ(contour.length(), 12.0);
    seen.clear();
    contour.points(points("0 0, 1 0"));
    EXPECT_THAT(seen, ElementsAre("12 of 3/3", "2 of 2/3"));
    counter.take();
    contour.makeDataConsistentWithPoints();
    EXPECT_EQ(counter.take(), 1);
    ContourT other = contour;
    other = edgeContour(square);
    contour = other;
    EXPECT_EQ(counter.take(), 0) << "assignment is none";
    EXPECT_TRUE(contour.reportsChanges());
    EXPECT_FALSE(other.reportsChanges());
}

TEST(ContourTData, WithoutATransformIsRefused) {
    ContourT contour;
    EXPECT_THROW(contour.datum({1, 2}), gmBadPointer);
    EXPECT_THROW(contour.point(edgelets("1 2")[0]), gmBadPointer);
    EXPECT_THROW(contour.point(edgelets("1 2")[0]), gmBadPointer) << "again";
    EXPECT_THROW(contour.data(edgelets("1 2, 3 4")), gmBadPointer);
    EXPECT_EQ(contour.data(), edgelets("1 2, 3 4"));
    EXPECT_THAT(contour.points(), IsEmpty());
    EXPECT_THROW(contour.makePointsConsistentWithData(), gmBadPointer);
    contour.makeDataConsistentWithPoints();
    EXPECT_THAT(contour.data(), IsEmpty());
    EXPECT_THROW(contour.points(points("5 6")), gmBadPointer);
    EXPECT_EQ(contour.points(), points("5 6"));
    EXPECT_THROW(contour.makeDataConsistentWithPoints(), gmBadPointer);
    EXPECT_THAT(contour.data(), IsEmpty());
}

TEST(ContourTData, WithoutATransformNothingIsNoProblem) {
    ContourT contour;
    contour.data({});
    contour.points({});
    contour.makeDataConsistentWithPoints();
    contour.makePointsConsistentWithData();
    EXPECT_TRUE(contour == ContourT());
}

// ----- Equality and copies

TEST(ContourTModel, EqualsWhatHasTheSameVerticesUnderTheSameTransformObject) {
    const ContourT contour = edgeContour(square, 2);
    ContourT copy(contour);
    EXPECT_TRUE(copy == contour);
    EXPECT_FALSE(copy != contour);
    EXPECT_FALSE(edgeContour(square, 2) == contour) << "an equal transform is another";
    EXPECT_TRUE(edgeContour(square, 2) != contour);
    copy.data(edgelets("0 0, 4 0, 4 4, 0 4", 99));
    copy.isClosed(false);
    copy.cachedVectorSize(9);
    copy.label(4);
    EXPECT_TRUE(copy == contour) << "nothing else is compared";
    copy.data(edgelets("0 0, 4 0, 4 4, 0 4.5"));
    EXPECT_TRUE(copy != contour);
    copy.data(edgelets("4 0, 4 4, 0 4, 0 0"));
    EXPECT_FALSE(copy == contour) << "the order counts";
    copy.data(edgelets("0 0, 4 0, 4 4"));
    EXPECT_FALSE(copy == contour);
    EXPECT_FALSE(contour == copy);
    copy.data(edgelets("0 0, 4 0, 4 nan"));
    EXPECT_FALSE(copy == copy);
    EXPECT_TRUE(ContourT() == ContourT()) << "neither has a transform";
    EXPECT_FALSE(ContourT() == ContourT(Edgelets()));
}

TEST(ContourTModel, ComparesWithPlainContoursAsOneOfThem) {
    ContourT contour = edgeContour(largeSquare, 2);
    EXPECT_TRUE(contour == gmContour(points(square), true));
    EXPECT_TRUE(gmContour(points(square), true) == contour);
    EXPECT_FALSE(contour != gmContour(points(square), true));
    EXPECT_TRUE(contour != support::openContour(square));
    EXPECT_TRUE(static_cast<gmContour&>(contour) == edgeContour(largeSquare, 2));
    contour.cachedVectorSize(9);
    EXPECT_FALSE(contour == gmContour(points(square), true));
}

TEST(ContourTModel, CopiesEverythingAndSharesTheTransform) {
    ContourT contour = edgeContour(largeSquare, 2);
    contour.label(7);
    contour.isClosed(false);
    contour.cachedVectorSize(9);
    contour.reportChanges(true);
    contour.length();
    moveSecretly(contour, 0, {1, 1});
    ContourT assigned = edgeContour("1 1, 2 2", 5);
    ContourT movedTo = edgeContour("1 1, 2 2", 5);
    assigned = contour;
    ContourT source(contour);
    movedTo = std::move(source);
    const ContourT moved(std::move(source));
    for (const ContourT& copy : {ContourT(contour), assigned, movedTo, moved, source}) {
        EXPECT_EQ(copy.points(), contour.points());
        EXPECT_EQ(copy.data(), edgelets(largeSquare));
        EXPECT_EQ(copy.dataFromPointsXform(), contour.dataFromPointsXform());
        EXPECT_EQ(copy.label(), 7U);
        EXPECT_FALSE(copy.isClosed());
        EXPECT_EQ(copy.cachedVectorSize(), 9);
        EXPECT_EQ(copy.length(), 12.0) << "what is remembered comes along";
        EXPECT_FALSE(copy.reportsChanges());
    }
    assigned.data(edgelets("2 4"));
    EXPECT_EQ(contour.data(), edgelets(largeSquare)) << "but the data are its own";
    ContourT& self = contour;
    contour = self;
    EXPECT_EQ(contour.data(), edgelets(largeSquare));
    EXPECT_EQ(contour.point(edgelets("2 4")[0]), gmVector<2>(1, 2));
}

// ----- What is not for edge points

TEST(ContourTModel, RefusesToMapAndToMakeAHullAndChangesNothing) {
    for (const ContourT& contour : {ContourT(), edgeContour(largeSquare, 2)}) {
        ContourT target = edgeContour("1 1, 2 2", 3);
        RegionT hull = support::edgeRegion("1 1, 2 2, 2 1");
        target.reportChanges(true);
        hull.reportChanges(true);
        ChangeCounter counter;
        EXPECT_THROW(contour.mapT(gmXform<2>::I, target), gmPel::BadWindow);
        EXPECT_THROW(contour.convexHullT(hull), gmPel::BadWindow);
        EXPECT_EQ(counter.take(), 0);
        EXPECT_EQ(target.data(), edgelets("1 1, 2 2"));
        EXPECT_EQ(hull.data(), edgelets("1 1, 2 2, 2 1"));
    }
}

TEST(ContourTModel, TakesAMappedContourAndMakesTheDataAnew) {
    ContourT out = edgeContour(square, 2);
    support::openContour("1 2, 3 4", 6).map(scale(2), out);
    EXPECT_EQ(out.points(), points("2 4, 6 8"));
    EXPECT_EQ(out.data(), unmarked("4 8, 12 16"));
    EXPECT_FALSE(out.isClosed());
    EXPECT_EQ(out.label(), 6U);
    ContourT bare;
    EXPECT_THROW(support::openContour("1 2, 3 4", 6).map(scale(2), bare), gmBadPointer);
    EXPECT_EQ(bare.points(), points("2 4, 6 8"));
    out.map(gmXform<2>::I, out);
    EXPECT_EQ(out.data(), unmarked("4 8, 12 16"));
}

}  // namespace
