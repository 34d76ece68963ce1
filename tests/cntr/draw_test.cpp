// What contours, plain regions and sets of them draw.
#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <cmath>
#include <cstring>
#include <functional>
#include <limits>
#include <string>
#include <utility>
#include <vector>

#include "cntr/regionst.h"
#include "tests/support/tablet.h"
#include "tests/support/testcontour.h"
#include "tests/support/testregion.h"

using support::ActingTablet;
using support::Calls;
using support::contour;
using support::edge;
using support::edgesOf;
using support::layer;
using support::openContour;
using support::orange;
using support::outlineCalls;
using support::ownCalls;
using support::points;
using support::RecordingTablet;
using support::shared;
using support::SmallTablet;
using support::TestContour;
using testing::ElementsAre;
using testing::IsEmpty;

namespace {

const char* const triangle = "0 0, 4 0, 4 3";

bool sameBits(double a, double b) {
    return std::memcmp(&a, &b, sizeof a) == 0;
}

TEST(ContourDraw, AClosedContourStartsWithItsClosingEdge) {
    EXPECT_THAT(outlineCalls(contour(triangle)), ElementsAre(edge(4, 3, 0, 0), edge(0, 0, 4, 0), edge(4, 0, 4, 3)));
}

TEST(ContourDraw, AnOpenContourHasOneSegmentLess) {
    EXPECT_THAT(outlineCalls(openContour(triangle)), ElementsAre(edge(0, 0, 4, 0), edge(4, 0, 4, 3)));
}

TEST(ContourDraw, WithoutAnEdgeNothingIsDrawn) {
    EXPECT_THAT(outlineCalls(contour("")), IsEmpty());
    EXPECT_THAT(outlineCalls(openContour("")), IsEmpty());
    EXPECT_THAT(outlineCalls(openContour("1 2")), IsEmpty());
}

TEST(ContourDraw, DegenerateEdgesAreDrawnLikeOthers) {
    EXPECT_THAT(outlineCalls(contour("1 2")), ElementsAre(edge(1, 2, 1, 2)));
    EXPECT_THAT(outlineCalls(openContour("1 2, 1 2, 3 4")), ElementsAre(edge(1, 2, 1, 2), edge(1, 2, 3, 4)));
    EXPECT_THAT(outlineCalls(contour("0 0, 3 4")), ElementsAre(edge(3, 4, 0, 0), edge(0, 0, 3, 4)));
    EXPECT_THAT(outlineCalls(contour("7 7, 7 7")), ElementsAre(edge(7, 7, 7, 7), edge(7, 7, 7, 7)));
}

TEST(ContourDraw, AnyNumberOfVerticesIsDrawnInEdgeOrder) {
    reference::Points outline;
    for (const int n : {0, 1, 2, 3, 4, 5, 17, 1000}) {
        while (outline.size() < std::size_t(n))
            outline.emplace_back(std::sqrt(double(outline.size())), 1.0 / (1.0 + double(outline.size())));
        for (const bool closed : {true, false}) {
            const Calls drawn = outlineCalls(TestContour(outline, closed));
            EXPECT_EQ(drawn, edgesOf(outline, closed)) << n << " vertices";
            EXPECT_EQ(drawn.size(), std::size_t(closed ? n : std::max(n - 1, 0)));
        }
    }
}

TEST(ContourDraw, AsksTheDerivedClassWhetherItIsClosed) {
    struct Contrary : gmContour {
        using gmContour::gmContour;
        using gmContour::isClosed;
        bool isClosed() const override { return !gmContour::isClosed(); }
    };
    for (const char* vertices : {"", "1 2", "1 2, 3 4", triangle})
        for (const bool closed : {true, false}) {
            const Contrary contrary(points(vertices), closed);
            EXPECT_EQ(outlineCalls(contrary), edgesOf(points(vertices), !closed)) << vertices;
        }
}

TEST(ContourDraw, FollowsAChangeOfClosednessAndOfPoints) {
    TestContour shape = contour(triangle);
    shape.isClosed(false);
    EXPECT_EQ(outlineCalls(shape), edgesOf(points(triangle), false));
    shape.points(points("1 1, 2 2"));
    EXPECT_EQ(outlineCalls(shape), edgesOf(points("1 1, 2 2"), false));
    shape.isClosed(true);
    EXPECT_EQ(outlineCalls(shape), edgesOf(points("1 1, 2 2"), true));
}

TEST(ContourDraw, EveryModeDrawsTheSame) {
    for (const TestContour& shape : {contour(triangle), openContour(triangle)})
        for (const int mode : {0, 1, 2, 3, -1, 255, std::numeric_limits<int>::max(), std::numeric_limits<int>::min()})
            EXPECT_EQ(outlineCalls(shape, static_cast<gmContourDefs::DrawMode>(mode)), outlineCalls(shape)) << mode;
}

TEST(ContourDraw, PassesColorAndLayerOn) {
    for (const auto layers : {gmUITablet::eImageLayer, gmUITablet::eOverlayLayer})
        for (const gmColor& color : {gmColor(), gmColor(1, 2, 255), gmColor(255, 255, 255)}) {
            RecordingTablet tablet;
            contour("0 0, 4 0").draw(tablet, gmContourDefs::eOutline, color, layers);
            openContour("0 0, 4 0").draw(tablet, gmContourDefs::eHighlighted, color, layers);
            using Call = RecordingTablet::Call;
            EXPECT_THAT(tablet.calls,
                        ElementsAre(Call{{4, 0}, {0, 0}, color, layers}, Call{{0, 0}, {4, 0}, color, layers},
                                    Call{{0, 0}, {4, 0}, color, layers}));
        }
}

TEST(ContourDraw, HandsEveryCoordinateOverAsItIs) {
    const double infinity = std::numeric_limits<double>::infinity();
    const double tiny = std::numeric_limits<double>::denorm_min();
    const reference::Points strange{{infinity, -0.0}, {std::nan(""), tiny}, {0.1, -infinity}, {1e308, 0.3}};
    const Calls drawn = outlineCalls(TestContour(strange, true));
    const Calls expected = edgesOf(strange, true);
    ASSERT_EQ(drawn.size(), expected.size());
    for (std::size_t i = 0; i < drawn.size(); ++i)
        EXPECT_TRUE(sameBits(drawn[i].from.x(), expected[i].from.x()) &&
                    sameBits(drawn[i].from.y(), expected[i].from.y()) &&
                    sameBits(drawn[i].to.x(), expected[i].to.x()) && sameBits(drawn[i].to.y(), expected[i].to.y()))
            << "segment " << i << ": " << testing::PrintToString(drawn[i]);
}

TEST(ContourDraw, LetsTheErrorOfAFullTabletPass) {
    for (const TestContour& shape : {contour(triangle), openContour(triangle)}) {
        const Calls whole = outlineCalls(shape);
        const TestContour before(shape);
        for (std::size_t room = 0; room < whole.size(); ++room) {
            SmallTablet tablet(room);
            EXPECT_THROW(shape.draw(tablet, gmContourDefs::eOutline, orange, layer), support::TabletIsFull);
            EXPECT_EQ(tablet.calls, Calls(whole.begin(), whole.begin() + std::ptrdiff_t(room)));
            EXPECT_EQ(shape, before);
            EXPECT_EQ(outlineCalls(shape), whole);
        }
    }
}

TEST(ContourDraw, DrawsWhatItWasThoughTheTabletChangesIt) {
    const std::vector<std::function<void(TestContour&)>> changes{
        [](TestContour& shape) { shape.points({}); },
        [](TestContour& shape) {
            shape.points({{9, 9}});
        },
        [](TestContour& shape) {
            shape.points({{9, 9}, {8, 8}, {7, 7}});
        },
        [](TestContour& shape) { shape.points(reference::Points(1000, gmVector<2>(9, 9))); },
        [](TestContour& shape) {
            shape.setPoints({{9, 9}, {8, 8}, {7, 7}});
        },
        [](TestContour& shape) { shape = openContour("9 9, 8 8"); },
        [](TestContour& shape) { shape = contour("9 9, 8 8, 7 7, 6 6, 5 5, 4 4"); },
        [](TestContour& shape) { shape.isClosed(!shape.isClosed()); },
        [](TestContour& shape) {
            shape.map(gmXform<2>(gmMatrix<2>(0, -1, 1, 0), {1, 2}), shape);
        },
    };
    for (const TestContour& original : {contour(triangle), openContour(triangle)}) {
        const Calls whole = outlineCalls(original);
        for (std::size_t which = 0; which < changes.size(); ++which)
            for (std::size_t when = 0; when < whole.size(); ++when) {
                TestContour shape(original);
                TestContour changed(original);
                changes[which](changed);
                ActingTablet tablet([&](std::size_t call) {
                    if (call == when)
                        changes[which](shape);
                });
                shape.draw(tablet, gmContourDefs::eOutline, orange, layer);
                EXPECT_EQ(tablet.calls, whole) << "change " << which << " at call " << when;
                EXPECT_EQ(outlineCalls(shape), outlineCalls(changed)) << "change " << which;
            }
    }
}

TEST(ContourDraw, CanBeDrawnWhileItIsDrawn) {
    const TestContour shape = contour(triangle);
    const Calls whole = outlineCalls(shape);
    ActingTablet tablet([&](std::size_t) { EXPECT_EQ(outlineCalls(shape), whole); });
    shape.draw(tablet, gmContourDefs::eOutline, orange, layer);
    EXPECT_EQ(tablet.calls, whole);
}

// ----- Regions

const char* const plate = "0 0, 10 0, 10 10, 0 10";

/// A plate with a hole that has an island.
gmRegion holed() {
    const gmPtrHandle<gmRegion> hole(new gmRegion(points("2 2, 7 2, 7 7, 2 7")));
    hole->holes(support::Holes{shared("4 4, 6 4, 6 6, 4 6")});
    gmRegion region = support::region(plate);
    region.holes(support::Holes{hole});
    return region;
}

TEST(RegionDraw, WithoutAModeDrawsNothing) {
    EXPECT_THAT(ownCalls(gmRegion()), IsEmpty());
    EXPECT_THAT(ownCalls(holed()), IsEmpty());
    EXPECT_THAT(ownCalls(gmRegion(openContour(triangle))), IsEmpty());
}

TEST(RegionDraw, WithAModeDrawsTheOutlineAndNoHoles) {
    const gmRegion shape = holed();
    for (const auto mode : {gmContourDefs::eOutline, gmContourDefs::eHighlighted}) {
        const Calls expected{edge(0, 10, 0, 0), edge(0, 0, 10, 0), edge(10, 0, 10, 10), edge(10, 10, 0, 10)};
        EXPECT_EQ(outlineCalls(shape, mode), expected);
        RecordingTablet tablet;
        shape.draw(tablet, mode, orange, layer);
        EXPECT_EQ(tablet.calls, expected) << "not through the contour";
    }
    EXPECT_THAT(outlineCalls(gmRegion()), IsEmpty());
}

TEST(RegionDraw, OfAnOpenContourHasItsClosingEdge) {
    EXPECT_EQ(outlineCalls(gmRegion(openContour(triangle))), edgesOf(points(triangle), true));
    gmRegion assigned;
    static_cast<gmContour&>(assigned) = openContour(triangle);
    EXPECT_EQ(outlineCalls(assigned), edgesOf(points(triangle), true));
}

/// Does something when it is drawn, after it has drawn the segment from (name, 0) to (name, 0).
class ActingRegion : public gmRegion {
  public:
    explicit ActingRegion(
        int name, std::function<void()> action = [] {})
        : name_(name), action_(std::move(action)) {}
    ~ActingRegion() override { name_ = -1; }

    using gmRegion::draw;
    void draw(gmUITablet& tablet, const gmColor& color, const gmUITablet::Layers& layers) const override {
        tablet.drawLineSeg({double(name_), 0}, {double(name_), 0}, color, layers);
        action_();
        tablet.drawLineSeg({double(name_), 1}, {double(name_), 1}, color, layers);
    }

  private:
    int name_;
    std::function<void()> action_;
};

RegionCPtr acting(
    int name, std::function<void()> action = [] {}) {
    return RegionCPtr(new ActingRegion(name, std::move(action)));
}

/// The calls of acting regions of these names.
Calls callsOf(const std::vector<int>& names) {
    Calls calls;
    for (const int name : names) {
        calls.push_back(edge(name, 0, name, 0));
        calls.push_back(edge(name, 1, name, 1));
    }
    return calls;
}

TEST(RegionDraw, CanBeOverriddenByADerivedRegion) {
    const ActingRegion drawn(7);
    EXPECT_EQ(ownCalls(static_cast<const gmRegion&>(drawn)), callsOf({7}));
    EXPECT_THAT(outlineCalls(drawn), IsEmpty()) << "it has no vertex";
}

// ----- Sets

TEST(RegionSetDraw, OfPlainRegionsDrawsNothing) {
    EXPECT_THAT(ownCalls(gmRegionSet()), IsEmpty());
    EXPECT_THAT(ownCalls(gmRegionSet(std::vector<RegionCPtr>{shared(plate), shared(triangle)})), IsEmpty());
    EXPECT_THAT(ownCalls(gmRegionSet(std::vector<RegionCPtr>{RegionCPtr(new gmRegion(holed()))})), IsEmpty());
}

TEST(RegionSetDraw, HasEveryRegionDrawItselfInOrder) {
    const RegionCPtr twice = acting(2);
    EXPECT_EQ(ownCalls(gmRegionSet(std::vector<RegionCPtr>{acting(1), twice, shared(plate), acting(3), twice})),
              callsOf({1, 2, 3, 2}));
}

TEST(RegionSetDraw, HandsTabletColorAndLayerOn) {
    struct Given : gmRegion {
        using gmRegion::draw;
        void draw(gmUITablet& tablet, const gmColor& color, const gmUITablet::Layers& layers) const override {
            EXPECT_EQ(&tablet, expected);
            tablet.drawLineSeg({}, {}, color, layers);
        }
        const gmUITablet* expected = nullptr;
    };
    for (const auto layers : {gmUITablet::eImageLayer, gmUITablet::eOverlayLayer}) {
        RecordingTablet tablet;
        const gmPtrHandle<Given> given(new Given);
        given->expected = &tablet;
        const gmColor blue(1, 2, 255);
        gmRegionSet(std::vector<RegionCPtr>{given, given}).draw(tablet, blue, layers);
        const RecordingTablet::Call call{{}, {}, blue, layers};
        EXPECT_THAT(tablet.calls, ElementsAre(call, call));
    }
}

TEST(RegionSetDraw, StopsAtAnEmptyHandleWhenItsTurnComes) {
    const std::vector<RegionCPtr> regions{acting(1), acting(2), nullptr, acting(3)};
    const gmRegionSet set(regions);
    for (int time = 0; time < 2; ++time) {
        RecordingTablet tablet;
        EXPECT_THROW(set.draw(tablet, orange, layer), gmBadPointer);
        EXPECT_EQ(tablet.calls, callsOf({1, 2}));
        EXPECT_EQ(set.regions(), regions);
    }
    EXPECT_THROW(ownCalls(gmRegionSet(std::vector<RegionCPtr>{nullptr})), gmBadPointer);
    EXPECT_THROW(ownCalls(gmRegionSet(std::vector<RegionCPtr>{shared(plate), nullptr})), gmBadPointer);
}

TEST(RegionSetDraw, LetsTheErrorOfAFullTabletPass) {
    const gmRegionSet set(std::vector<RegionCPtr>{acting(1), acting(2)});
    const std::vector<RegionCPtr> before = set.regions();
    const Calls whole = callsOf({1, 2});
    for (std::size_t room = 0; room < whole.size(); ++room) {
        SmallTablet tablet(room);
        EXPECT_THROW(set.draw(tablet, orange, layer), support::TabletIsFull);
        EXPECT_EQ(tablet.calls, Calls(whole.begin(), whole.begin() + std::ptrdiff_t(room)));
        EXPECT_EQ(set.regions(), before);
        EXPECT_EQ(ownCalls(set), whole);
    }
}

TEST(RegionSetDraw, DrawsARegionThatIsAddedMeanwhile) {
    gmRegionSet set;
    set.regions(std::vector<RegionCPtr>{acting(1, [&] { set.add(acting(3)); }), acting(2)});
    EXPECT_EQ(ownCalls(set), callsOf({1, 2, 3}));
    EXPECT_EQ(ownCalls(set), callsOf({1, 2, 3, 3})) << "one more";
    set.regions(std::vector<RegionCPtr>{acting(1), acting(2, [&] { set.add(acting(3)); })});
    EXPECT_EQ(ownCalls(set), callsOf({1, 2, 3})) << "added by the last";
}

TEST(RegionSetDraw, StopsWhereTheListHasBecomeShorter) {
    gmRegionSet set;
    set.regions(std::vector<RegionCPtr>{acting(1),
                                        acting(2,
                                               [&] {
                                                   set.regions(std::vector<RegionCPtr>{acting(8), acting(9)});
                                               }),
                                        acting(3)});
    EXPECT_EQ(ownCalls(set), callsOf({1, 2}));
    EXPECT_EQ(ownCalls(set), callsOf({8, 9}));
    set.regions(std::vector<RegionCPtr>{acting(1, [&] { set.regions(std::vector<RegionCPtr>{}); }), acting(2)});
    EXPECT_EQ(ownCalls(set), callsOf({1}));
    EXPECT_THAT(ownCalls(set), IsEmpty());
}

TEST(RegionSetDraw, GoesOnInTheListThatTookThePlace) {
    gmRegionSet set;
    set.regions(
        std::vector<RegionCPtr>{acting(1,
                                       [&] {
                                           set.regions(std::vector<RegionCPtr>{acting(7), acting(8), acting(9)});
                                       }),
                                acting(2)});
    EXPECT_EQ(ownCalls(set), callsOf({1, 8, 9}));
    set.regions(std::vector<RegionCPtr>{acting(1, [&] {
        set = gmRegionSet(std::vector<RegionCPtr>{acting(7), nullptr});
    })});
    RecordingTablet tablet;
    EXPECT_THROW(set.draw(tablet, orange, layer), gmBadPointer);
    EXPECT_EQ(tablet.calls, callsOf({1}));
}

TEST(RegionSetDraw, KeepsTheRegionThatIsDrawnAlive) {
    gmRegionSet set;
    RegionCPtr outside = acting(1);
    set.regions(std::vector<RegionCPtr>{outside, acting(2)});
    // The last handle outside ends, and then the set's own as well, between the two segments of the region.
    ActingTablet tablet([&](std::size_t) {
        outside = nullptr;
        set.regions(std::vector<RegionCPtr>{});
    });
    set.draw(tablet, orange, layer);
    EXPECT_EQ(tablet.calls, callsOf({1}));
    EXPECT_THAT(ownCalls(set), IsEmpty());
}

}  // namespace
