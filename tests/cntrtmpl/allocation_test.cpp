// What the shapes that carry edge points are when memory runs out.
#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <sstream>
#include <string>
#include <vector>

#include "cntrtmpl/cntrtmpl.h"
#include "tests/support/allocations.h"
#include "tests/support/edgelets.h"
#include "tests/support/tablet.h"
#include "tests/support/text.h"

using support::ContourT;
using support::Edgelets;
using support::interruptedAt;
using support::points;
using support::RegionSetT;
using support::RegionT;
using support::text;
using testing::AnyOf;

namespace {

using EdgeRegionCPtr = gmPtrHandle_const<RegionT>;

/// A transform that counts itself and its clones.
class Counted : public gm2XformLinear {
  public:
    Counted() : gm2XformLinear(gmXform<2>(gmMatrix<2>(2, 0, 0, 2), {})) { ++alive; }
    Counted(const Counted& other) : gmPersistent(other), gmRepBase(other), gm2XformLinear(other) { ++alive; }
    Counted& operator=(const Counted&) = default;
    ~Counted() override { --alive; }
    gmPtrHandle<gm2XformBase> clone() const override { return gmPtrHandle<gm2XformBase>(new Counted(*this)); }

    static inline int alive = 0;
};

gmPtrHandle_const<gm2XformBase> doubling() {
    return gmPtrHandle_const<gm2XformBase>(new Counted);
}

Edgelets edgelets(const std::string& positions) {
    Edgelets data;
    for (const gmVector<2>& position : points(positions))
        data.emplace_back(position, static_cast<unsigned short>(100 + data.size()), gmAngle8(200));
    return data;
}

const Edgelets plate = edgelets("0 0, 20 0, 20 20, 0 20");
const Edgelets longer = edgelets("-2 -2, 60 -2, 60 60, 40 70, 30 60, 10 66, -2 60");

EdgeRegionCPtr shared(const char* positions) {
    return EdgeRegionCPtr(new RegionT(edgelets(positions)));
}

/// A region that has holes of both kinds.
RegionT holed(const Edgelets& data) {
    RegionT region(data, doubling(), 7);
    region.gmRegion::holes(std::vector<RegionCPtr>{shared("2 2, 3 2, 3 3"), shared("4 4, 5 4, 5 5")});
    region.data(data);
    region.holes(RegionT::Holes{shared("2 2, 3 2, 3 3")});
    return region;
}

/// What a shape is, and which objects it shares.
template <class Handles>
void describeHandles(std::ostream& out, const Handles& handles) {
    for (const auto& handle : handles)
        out << ' ' << static_cast<const gmContour*>(handle.get());
    out << " |";
}

std::string stateOf(const ContourT& contour) {
    std::ostringstream out;
    out << text(static_cast<const gmContour&>(contour)) << " under " << contour.dataFromPointsXform().get();
    for (const gmEdgelet& edgelet : contour.data())
        out << ", " << text(edgelet.position()) << ' ' << edgelet.magnitude() << ' ' << int(edgelet.angle().value());
    return out.str();
}
std::string stateOf(const RegionT& region) {
    std::ostringstream out;
    out << stateOf(static_cast<const ContourT&>(region));
    describeHandles(out, region.holes());
    describeHandles(out, region.gmRegion::holes());
    return out.str();
}
std::string stateOf(const RegionSetT& set) {
    std::ostringstream out;
    out << set.cachedVectorSize();
    describeHandles(out, set.regionsT());
    describeHandles(out, set.regions());
    return out.str();
}

/// Answers, remembered ones among them.
std::string answersOf(const gmContour& contour) {
    if (contour.points().empty())
        return "none";
    gmRegion hull;
    contour.convexHull(hull);
    return text(contour.length()) + ' ' + std::to_string(contour.lineSegs().size()) + ' ' +
           text(contour.encloseRect(gmXform<2>::I)) + ' ' + text(contour.isSelfIntersecting()) + ' ' +
           text(hull.points());
}
std::string answersOf(const gmRegion& region) {
    if (region.points().empty())
        return "none";
    gmRegion cleaned;
    region.regularize(cleaned);
    return answersOf(static_cast<const gmContour&>(region)) + ' ' + text(region.area(true)) + ' ' +
           text(region.centerOfMass(false)) + ' ' + text(cleaned.points());
}
std::string answersOf(const gmRegionSet& set) {
    return text(set.area(true)) + ' ' +
           (set.regions().empty() ? "" : text(set.encloseRect(gmXform<2>::I)) + ' ' + text(set.isSelfIntersecting()));
}

std::string freshAnswersOf(const ContourT& contour) {
    return answersOf(gmContour(contour.points(), contour.isClosed()));
}
std::string freshAnswersOf(const RegionT& region) {
    gmRegion fresh(region.points());
    fresh.holes(region.gmRegion::holes());
    return answersOf(fresh);
}
std::string freshAnswersOf(const RegionSetT& set) {
    return answersOf(gmRegionSet(set.regions()));
}

/// The references to everything that a shape shares, to see whether an attempt has left one behind.
std::vector<int> referencesOf(const ContourT& contour) {
    const auto xform = contour.dataFromPointsXform();
    return {xform.isNull() ? 0 : xform->referenceCount()};
}
std::vector<int> referencesOf(const RegionT& region) {
    std::vector<int> counts = referencesOf(static_cast<const ContourT&>(region));
    for (const EdgeRegionCPtr& hole : region.holes())
        counts.push_back(hole->referenceCount());
    for (const RegionCPtr& hole : region.gmRegion::holes())
        counts.push_back(hole->referenceCount());
    return counts;
}
std::vector<int> referencesOf(const RegionSetT& set) {
    std::vector<int> counts;
    for (const EdgeRegionCPtr& region : set.regionsT())
        counts.push_back(region->referenceCount());
    return counts;
}

/// Changes copies of a shape that remembers its answers, each allocation of the change failing in turn: each is the old
/// one or the new one, with everything, and answers for what it is.
template <class Shape, class Change>
void expectOldOrNewWhereverInterrupted(const Shape& original, const Shape& expected, Change change) {
    answersOf(original);
    const std::string before = stateOf(original);
    const std::string after = stateOf(expected);
    const std::vector<int> originalReferences = referencesOf(original);
    const std::vector<int> expectedReferences = referencesOf(expected);
    const int transforms = Counted::alive;
    bool more = true;
    for (long which = 0; more; ++which) {
        SCOPED_TRACE("allocation " + std::to_string(which));
        ASSERT_LT(which, support::enoughAllocations);
        {
            Shape target(original);
            more = interruptedAt(which, [&] { change(target); });
            if (more) {
                EXPECT_THAT(stateOf(target), AnyOf(before, after));
            } else {
                EXPECT_EQ(stateOf(target), after);
            }
            EXPECT_EQ(answersOf(target), freshAnswersOf(target));
            change(target);
            EXPECT_EQ(stateOf(target), after);
        }
        EXPECT_EQ(stateOf(original), before);
        EXPECT_EQ(referencesOf(original), originalReferences);
        EXPECT_EQ(referencesOf(expected), expectedReferences);
        EXPECT_EQ(Counted::alive, transforms);
    }
}

/// Makes something from shared objects, each allocation failing in turn, and nothing of it is left.
template <class Make, class References>
void expectNothingLeftWhereverInterrupted(Make make, References references) {
    const auto before = references();
    const int transforms = Counted::alive;
    long which = 0;
    for (bool more = true; more; ++which) {
        ASSERT_LT(which, support::enoughAllocations);
        more = interruptedAt(which, make);
        EXPECT_EQ(references(), before) << "allocation " << which;
        EXPECT_EQ(Counted::alive, transforms) << "allocation " << which;
    }
    EXPECT_GT(which, 1) << "it makes no allocation";
}

TEST(InterruptedEdgeContour, LeavesNothingWhenItCannotBeMade) {
    const auto xform = doubling();
    const auto references = [&] { return xform->referenceCount(); };
    expectNothingLeftWhereverInterrupted([&] { ContourT contour(plate, xform); }, references);
    expectNothingLeftWhereverInterrupted([] { ContourT contour(plate); }, references);
    const ContourT source(longer, xform);
    answersOf(source);
    expectNothingLeftWhereverInterrupted([&] { ContourT contour(source); }, [&] { return referencesOf(source); });
}

TEST(InterruptedEdgeContour, IsTheOldOrTheNewOneAfterAnAssignment) {
    ContourT open(longer, doubling());
    open.isClosed(false);
    answersOf(static_cast<const gmContour&>(open));
    const ContourT original(plate, doubling());
    for (const ContourT& source : {open, ContourT(), ContourT(plate)}) {
        expectOldOrNewWhereverInterrupted(original, source, [&](ContourT& target) { target = source; });
        expectOldOrNewWhereverInterrupted(ContourT(), source, [&](ContourT& target) { target = source; });
    }
}

TEST(InterruptedEdgeContour, IsUsableAfterNewDataAndNewPoints) {
    bool more = true;
    for (long which = 0; more; ++which) {
        ASSERT_LT(which, support::enoughAllocations);
        ContourT asked(plate, doubling());
        answersOf(asked);
        ContourT other(asked);
        more = interruptedAt(which, [&] { asked.data(longer); });
        more |= interruptedAt(which, [&] { other.points(points("1 1, 2 1, 3 3, 2 2, 5 5, 1 3")); });
        for (ContourT* changed : {&asked, &other}) {
            EXPECT_EQ(answersOf(*changed), freshAnswersOf(*changed)) << "allocation " << which;
            changed->data(longer);
            EXPECT_EQ(changed->points(), ContourT(longer, doubling()).points());
            EXPECT_EQ(changed->data(), longer);
        }
    }
}

TEST(InterruptedEdgeRegion, LeavesNothingWhenItCannotBeMade) {
    const auto xform = doubling();
    const auto references = [&] { return xform->referenceCount(); };
    expectNothingLeftWhereverInterrupted([&] { RegionT region(plate, xform, 3); }, references);
    expectNothingLeftWhereverInterrupted([] { RegionT region(plate, 3); }, references);
    const ContourT contour(longer, xform);
    answersOf(contour);
    expectNothingLeftWhereverInterrupted([&] { RegionT region(contour, 3); }, [&] { return referencesOf(contour); });
    const RegionT source = holed(longer);
    answersOf(source);
    expectNothingLeftWhereverInterrupted([&] { RegionT region(source); }, [&] { return referencesOf(source); });
}

TEST(InterruptedEdgeRegion, IsTheOldOrTheNewOneAfterAnAssignment) {
    const RegionT original = holed(plate);
    const RegionT asked = holed(longer);
    answersOf(asked);
    for (const RegionT& source : {asked, RegionT(), RegionT(longer)}) {
        expectOldOrNewWhereverInterrupted(original, source, [&](RegionT& target) { target = source; });
        expectOldOrNewWhereverInterrupted(RegionT(), source, [&](RegionT& target) { target = source; });
    }
    const EdgeRegionCPtr hole = original.holes()[0];
    expectOldOrNewWhereverInterrupted(
        original, *hole, [&](RegionT& target) { target = target.holes().empty() ? *hole : *target.holes()[0]; });
}

TEST(InterruptedEdgeRegion, HasTheOldOrTheNewHoles) {
    const RegionT original = holed(plate);
    const RegionT::Holes holes{shared("1 1, 2 1, 2 2"), shared("5 5, 6 5, 6 6")};
    RegionT expected(original);
    expected.holes(holes);
    expectOldOrNewWhereverInterrupted(original, expected, [&](RegionT& target) { target.holes(holes); });
    EXPECT_EQ(referencesOf(expected), std::vector<int>({3, 2, 2, 2, 2})) << "of the transform and of each hole";
}

TEST(InterruptedEdgeRegion, EndsWithItsHolesWhenThereIsNoMemoryToEndThemInTurn) {
    for (long which = 0; which < 3; ++which) {
        const EdgeRegionCPtr island = shared("4 4, 6 4, 6 6, 4 6");
        {
            gmPtrHandle<RegionT> hole(new RegionT(edgelets("2 2, 7 2, 7 7, 2 7")));
            hole->holes(RegionT::Holes{island});
            gmPtrHandle<RegionT> owner(new RegionT(plate));
            owner->holes(RegionT::Holes{hole});
            hole = nullptr;
            EXPECT_EQ(island->referenceCount(), 2);
            interruptedAt(which, [&] { owner = nullptr; });
        }
        EXPECT_EQ(island->referenceCount(), 1);
    }
}

/// What makes a plain shape makes it in a shape with edge points, each allocation failing in turn: afterwards that
/// answers for its vertices, can be drawn, and takes new points.
template <class Shape, class Change>
void expectUsableWhereverInterrupted(const Shape& original, Change change) {
    bool more = true;
    for (long which = 0; more; ++which) {
        SCOPED_TRACE("allocation " + std::to_string(which));
        ASSERT_LT(which, support::enoughAllocations);
        Shape out(original);
        answersOf(out);
        more = interruptedAt(which, [&] { change(out); });
        EXPECT_EQ(answersOf(out), freshAnswersOf(out));
        EXPECT_EQ(support::outlineCalls(out), support::edgesOf(out.points(), out.isClosed()));
        if (!more) {
            EXPECT_EQ(out.data().size(), out.points().size());
        }
        out.points(points("1 1, 2 1, 2 2"));
        EXPECT_EQ(out.data().size(), 3U);
        EXPECT_EQ(out.data()[2], out.datum({2, 2}));
        EXPECT_EQ(answersOf(out), freshAnswersOf(out));
    }
}

TEST(InterruptedEdgeContour, IsUsableAsTheResultOfAMap) {
    const gmXform<2> turn(gmMatrix<2>(0, -1, 1, 0), {1, 2});
    const gmContour source(points("0 0, 2 2, 2 0, 0 2, 5 5"), false, 4);
    const ContourT original(plate, doubling());
    expectUsableWhereverInterrupted(original, [&](ContourT& out) { source.map(turn, out); });
    expectUsableWhereverInterrupted(original, [&](ContourT& out) { out.map(turn, out); });
}

TEST(InterruptedEdgeRegion, IsUsableAsTheResultOfAMapAndOfACleanUp) {
    const gmXform<2> turn(gmMatrix<2>(0, -1, 1, 0), {1, 2});
    const gmRegion source(points("0 0, 2 2, 2 0, 0 2, -1 5"));
    const RegionT crossing(edgelets("0 0, 2 2, 2 0, 0 2"), doubling());
    for (const RegionT& original : {RegionT(plate, doubling()), crossing}) {
        expectUsableWhereverInterrupted(original, [&](RegionT& out) { source.map(turn, out); });
        expectUsableWhereverInterrupted(original, [&](RegionT& out) { source.convexHull(out); });
        expectUsableWhereverInterrupted(original, [&](RegionT& out) { gmRegion(source).regularize(out); });
        expectUsableWhereverInterrupted(original, [&](RegionT& out) { gmRegion(source).outerHull(out); });
        expectUsableWhereverInterrupted(original, [&](RegionT& out) { out.map(turn, out); });
        expectUsableWhereverInterrupted(original, [&](RegionT& out) { out.convexHull(out); });
        expectUsableWhereverInterrupted(original, [&](RegionT& out) { out.regularize(out); });
        expectUsableWhereverInterrupted(original, [&](RegionT& out) { out.outerHull(out); });
    }
}

TEST(InterruptedEdgeRegionSet, LeavesNothingWhenItCannotBeMade) {
    const EdgeRegionCPtr region = shared("0 0, 4 0, 4 4");
    const auto references = [&] { return region->referenceCount(); };
    const RegionSetT::Regions regions{region, nullptr, region};
    expectNothingLeftWhereverInterrupted([&] { RegionSetT set(regions); }, references);
    const gmPtrHandle<RegionT> own(new RegionT(plate));
    const std::vector<gmPtrHandle<RegionT>> owned{own, own};
    expectNothingLeftWhereverInterrupted([&] { RegionSetT set(owned); }, [&] { return own->referenceCount(); });
    const RegionSetT source(RegionSetT::Regions{region, shared("9 9, 8 9, 8 8")});
    answersOf(source);
    expectNothingLeftWhereverInterrupted([&] { RegionSetT set(source); }, references);
}

TEST(InterruptedEdgeRegionSet, IsTheOldOrTheNewOneAfterAnAssignment) {
    const RegionSetT original(RegionSetT::Regions{shared("0 0, 4 0, 4 4"), shared("9 9, 8 9, 8 8")});
    RegionSetT asked(RegionSetT::Regions{shared("1 1, 5 1, 5 5"), shared("0 0, 4 0, 4 4"), shared("7 7, 7 8, 6 6")});
    asked.cachedVectorSize(9);
    answersOf(asked);
    for (const RegionSetT& source : {asked, RegionSetT()})
        expectOldOrNewWhereverInterrupted(original, source, [&](RegionSetT& target) { target = source; });
}

TEST(InterruptedEdgeRegionSet, IsUsableAfterAnAdditionAndACleanUp) {
    const RegionSetT original(RegionSetT::Regions{shared("0 0, 4 0, 4 4, 0 4"), shared("2 2, 6 2, 6 6, 2 6")});
    answersOf(original);
    const RegionSetT whole(RegionSetT::Regions{shared("1 1, 5 1, 5 5")});
    bool more = true;
    for (long which = 0; more; ++which) {
        ASSERT_LT(which, support::enoughAllocations);
        RegionSetT grown(original);
        RegionSetT cleaned(original);
        more = interruptedAt(which, [&] { EXPECT_ANY_THROW(grown.add(whole.regions()[0])); });
        more |= interruptedAt(which, [&] { RegionSetT(original).regularize(cleaned); });
        for (RegionSetT* out : {&grown, &cleaned}) {
            EXPECT_EQ(answersOf(*out), freshAnswersOf(*out)) << "allocation " << which;
            *out = whole;
            EXPECT_EQ(stateOf(*out), stateOf(whole));
        }
    }
}

TEST(InterruptedDraw, HasDrawnNothingOrEverything) {
    struct Counter : gmUITablet {
        void drawLineSeg(const gmPair<double>&, const gmPair<double>&, const gmColor&, Layers) override { ++calls; }
        int calls = 0;
    };
    const RegionT region = holed(plate);
    const std::string before = stateOf(region);
    bool more = true;
    for (long which = 0; more; ++which) {
        ASSERT_LT(which, support::enoughAllocations);
        Counter own, outline;
        more = interruptedAt(which, [&] { region.draw(own, gmColor(), support::layer); });
        EXPECT_EQ(own.calls, more ? 0 : 4);
        const bool moreOfTheOutline =
            interruptedAt(which, [&] { region.draw(outline, gmContourDefs::eOutline, gmColor(), support::layer); });
        EXPECT_EQ(outline.calls, moreOfTheOutline ? 0 : 4);
        more |= moreOfTheOutline;
        EXPECT_EQ(stateOf(region), before);
    }
}

}  // namespace
