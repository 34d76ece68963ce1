// What the shapes that carry edge points draw.
#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <cmath>
#include <functional>
#include <limits>
#include <string>
#include <vector>

#include "cntrtmpl/cntrtmpl.h"
#include "tests/support/edgelets.h"
#include "tests/support/tablet.h"

using support::ActingTablet;
using support::Calls;
using support::ContourT;
using support::edge;
using support::Edgelets;
using support::edgesOf;
using support::layer;
using support::orange;
using support::outlineCalls;
using support::ownCalls;
using support::points;
using support::RecordingTablet;
using support::RegionSetT;
using support::RegionT;
using support::SmallTablet;
using support::XformHandle;
using testing::ElementsAre;
using testing::IsEmpty;

namespace {

using EdgeRegionCPtr = gmPtrHandle_const<RegionT>;

gmEdgelet edgelet(double x, double y, int angle, unsigned short magnitude = 100) {
    return gmEdgelet({x, y}, magnitude, gmAngle8(static_cast<unsigned char>(angle)));
}

/// Where the segment of an edge point begins and ends, worked out step by step with plain numbers.
RecordingTablet::Call segmentOf(const gmEdgelet& edgelet) {
    const int back = (edgelet.angle().value() - 64 + 256) % 256;
    const double degrees = back * 1.40625;
    const double radians = degrees * 0.017453292519943295;
    const double opposite = radians + 3.141592653589793;
    const double x = edgelet.position().x();
    const double y = edgelet.position().y();
    return edge(x + 0.5 * std::cos(radians), y + 0.5 * std::sin(radians), x + 0.5 * std::cos(opposite),
                y + 0.5 * std::sin(opposite));
}

Calls segmentsOf(const Edgelets& data) {
    Calls calls;
    for (const gmEdgelet& edgelet : data)
        calls.push_back(segmentOf(edgelet));
    return calls;
}

/// Turns, scales by 20, and moves away.
XformHandle pixels() {
    return XformHandle(new gm2XformLinear(gmXform<2>(gmMatrix<2>(0, -20, 20, 0), {300, 400})));
}

Edgelets fourEdgelets() {
    return {edgelet(300, 400, 5), edgelet(500, 400, 64), edgelet(500, 600, 200), edgelet(300, 600, 255)};
}

/// A region under a transform, with holes of both kinds.
RegionT holed() {
    RegionT region(fourEdgelets(), pixels());
    const gmPtrHandle<RegionT> hole(
        new RegionT({edgelet(350, 450, 1), edgelet(450, 450, 2), edgelet(450, 550, 3)}, pixels()));
    region.gmRegion::holes(std::vector<RegionCPtr>{hole});
    region.data(fourEdgelets());
    region.holes(RegionT::Holes{hole});
    return region;
}

EdgeRegionCPtr shared(const Edgelets& data) {
    return EdgeRegionCPtr(new RegionT(data));
}

// ----- Regions

TEST(EdgeRegionDraw, RunsLevelFromRightToLeftAtAngle64) {
    EXPECT_THAT(ownCalls(RegionT({edgelet(10, 20, 64)})), ElementsAre(edge(10.5, 20, 9.5, 20)));
}

TEST(EdgeRegionDraw, RunsUprightFromBelowAtAngle0) {
    EXPECT_THAT(ownCalls(RegionT({edgelet(10, 20, 0)})), ElementsAre(edge(10, 19.5, 10, 20.5)));
}

TEST(EdgeRegionDraw, TurnsBackByAQuarterOfATurn) {
    EXPECT_THAT(ownCalls(RegionT({edgelet(10, 20, 128), edgelet(10, 20, 192)})),
                ElementsAre(edge(10, 20.5, 10, 19.5), edge(9.5, 20, 10.5, 20)));
}

TEST(EdgeRegionDraw, HasTheExactEndsOfEveryAngle) {
    for (const gmVector<2>& position : {gmVector<2>(0, 0), gmVector<2>(10, 20), gmVector<2>(-0.3, 1e-9),
                                        gmVector<2>(1234.5678, -98765.4321), gmVector<2>(1e15, -1e300)}) {
        Edgelets data;
        for (int angle = 0; angle < 256; ++angle)
            data.push_back(edgelet(position.x(), position.y(), angle));
        const Calls drawn = ownCalls(RegionT(data));
        ASSERT_EQ(drawn.size(), 256U);
        for (std::size_t angle = 0; angle < 256; ++angle)
            EXPECT_EQ(drawn[angle], segmentOf(data[angle])) << "angle " << angle;
    }
}

TEST(EdgeRegionDraw, AlsoShowsEdgePointsThatAreNowhere) {
    const double infinity = std::numeric_limits<double>::infinity();
    const Calls drawn = ownCalls(RegionT({edgelet(infinity, 3, 64), edgelet(std::nan(""), 4, 0), edgelet(1, 2, 3)}));
    ASSERT_EQ(drawn.size(), 3U);
    EXPECT_EQ(drawn[0].from.x(), infinity);
    EXPECT_EQ(drawn[0].to.x(), infinity);
    EXPECT_TRUE(std::isnan(drawn[1].from.x()) && std::isnan(drawn[1].to.x()));
    EXPECT_EQ(drawn[2], segmentOf(edgelet(1, 2, 3)));
}

TEST(EdgeRegionDraw, IsInDataOrderOneSegmentEach) {
    const Edgelets data{edgelet(9, 9, 7), edgelet(1, 2, 3), edgelet(9, 9, 7), edgelet(9, 9, 8), edgelet(-4, 0, 128)};
    EXPECT_EQ(ownCalls(RegionT(data)), segmentsOf(data));
    EXPECT_EQ(ownCalls(RegionT({data[0]})), segmentsOf({data[0]}));
    EXPECT_EQ(ownCalls(RegionT({data[0], data[1]})), segmentsOf({data[0], data[1]}));
}

TEST(EdgeRegionDraw, IsInDataCoordinatesWhateverTheTransform) {
    const XformHandle rigid(new gm2Rigid(gmDegree(30), {5, 6}));
    for (const XformHandle& xform : {XformHandle(), XformHandle(new gm2XformLinear), rigid, pixels()})
        EXPECT_EQ(ownCalls(RegionT(fourEdgelets(), xform)), segmentsOf(fourEdgelets()));
}

TEST(EdgeRegionDraw, DoesNotShowTheMagnitude) {
    EXPECT_EQ(ownCalls(RegionT({edgelet(1, 2, 3, 0), edgelet(4, 5, 6, 65535)})),
              ownCalls(RegionT({edgelet(1, 2, 3, 65535), edgelet(4, 5, 6, 0)})));
}

TEST(EdgeRegionDraw, DoesNotDependOnClosedness) {
    ContourT open(fourEdgelets(), pixels());
    open.isClosed(false);
    EXPECT_EQ(ownCalls(RegionT(open)), segmentsOf(fourEdgelets()));
    struct Open : RegionT {
        Open(const ContourT& contour) : gmContour(contour), RegionT(contour) {}
        using RegionT::isClosed;
        bool isClosed() const override { return false; }
    };
    const Open overridden(open);
    EXPECT_EQ(ownCalls(overridden), segmentsOf(fourEdgelets()));
    EXPECT_EQ(outlineCalls(overridden), edgesOf(overridden.points(), false));
}

TEST(EdgeRegionDraw, ShowsNoHolesOfEitherKind) {
    EXPECT_EQ(ownCalls(holed()), segmentsOf(fourEdgelets()));
    EXPECT_EQ(outlineCalls(holed()), edgesOf(holed().points(), true));
}

TEST(EdgeRegionDraw, WithoutDataDrawsNothing) {
    EXPECT_THAT(ownCalls(RegionT()), IsEmpty());
    EXPECT_THAT(ownCalls(RegionT(Edgelets())), IsEmpty());
    EXPECT_THAT(outlineCalls(RegionT()), IsEmpty());
    RegionT emptied(fourEdgelets());
    emptied.data({});
    EXPECT_THAT(ownCalls(emptied), IsEmpty());
}

TEST(EdgeRegionDraw, PassesColorAndLayerOn) {
    for (const auto layers : {gmUITablet::eImageLayer, gmUITablet::eOverlayLayer})
        for (const gmColor& color : {gmColor(), gmColor(1, 2, 255)}) {
            RecordingTablet tablet;
            RegionT({edgelet(10, 20, 64), edgelet(10, 20, 192)}).draw(tablet, color, layers);
            using Call = RecordingTablet::Call;
            EXPECT_THAT(tablet.calls, ElementsAre(Call{{10.5, 20}, {9.5, 20}, color, layers},
                                                  Call{{9.5, 20}, {10.5, 20}, color, layers}));
        }
}

TEST(EdgeRegionDraw, IsReachedThroughThePlainRegion) {
    const RegionT region(fourEdgelets(), pixels());
    EXPECT_EQ(ownCalls(static_cast<const gmRegion&>(region)), segmentsOf(fourEdgelets()));
}

TEST(EdgeRegionDraw, WithAModeDrawsTheOutlineInPointCoordinates) {
    const RegionT region(fourEdgelets(), pixels());
    const Calls outline{edge(10, 0, 0, 0), edge(0, 0, 0, -10), edge(0, -10, 10, -10), edge(10, -10, 10, 0)};
    for (const auto mode : {gmContourDefs::eOutline, gmContourDefs::eHighlighted}) {
        EXPECT_EQ(outlineCalls(region, mode), outline);
        RecordingTablet direct, asRegion, asEdgeContour;
        region.draw(direct, mode, orange, layer);
        static_cast<const gmRegion&>(region).draw(asRegion, mode, orange, layer);
        static_cast<const ContourT&>(region).draw(asEdgeContour, mode, orange, layer);
        EXPECT_EQ(direct.calls, outline);
        EXPECT_EQ(asRegion.calls, outline);
        EXPECT_EQ(asEdgeContour.calls, outline);
    }
}

TEST(EdgeRegionDraw, FollowsPointsThatAreSet) {
    RegionT region(fourEdgelets(), pixels());
    static_cast<gmContour&>(region).points(points("1 2, 3 4"));
    EXPECT_THAT(ownCalls(region), ElementsAre(edge(260, 419.5, 260, 420.5), edge(220, 459.5, 220, 460.5)));
    EXPECT_EQ(ownCalls(region), segmentsOf({edgelet(260, 420, 0), edgelet(220, 460, 0)}));
}

TEST(EdgeRegionDraw, FollowsDataThatAreSetAndAssigned) {
    RegionT region(fourEdgelets(), pixels());
    const Edgelets other{edgelet(1, 2, 3), edgelet(4, 5, 6)};
    region.data(other);
    EXPECT_EQ(ownCalls(region), segmentsOf(other));
    EXPECT_EQ(ownCalls(RegionT(region)), segmentsOf(other));
    region = holed();
    EXPECT_EQ(ownCalls(region), segmentsOf(fourEdgelets()));
}

TEST(EdgeRegionDraw, ShowsTheDataWhereTheVerticesAreOthers) {
    RegionT region(fourEdgelets());
    static_cast<gmContour&>(region) = gmContour(points("1 1, 2 1, 2 2, 1 2, 0 0"), true);
    EXPECT_EQ(ownCalls(region), segmentsOf(fourEdgelets()));
    EXPECT_EQ(outlineCalls(region), edgesOf(points("1 1, 2 1, 2 2, 1 2, 0 0"), true));
}

TEST(EdgeContourDraw, DrawsItsOutlineInPointCoordinates) {
    ContourT contour(fourEdgelets(), pixels());
    EXPECT_THAT(outlineCalls(contour),
                ElementsAre(edge(10, 0, 0, 0), edge(0, 0, 0, -10), edge(0, -10, 10, -10), edge(10, -10, 10, 0)));
    contour.isClosed(false);
    EXPECT_THAT(outlineCalls(contour), ElementsAre(edge(0, 0, 0, -10), edge(0, -10, 10, -10), edge(10, -10, 10, 0)));
    EXPECT_THAT(outlineCalls(ContourT()), IsEmpty());
    EXPECT_THAT(outlineCalls(ContourT({edgelet(1, 2, 3)})), ElementsAre(edge(1, 2, 1, 2)));
}

// ----- Tablets that misbehave

TEST(EdgeRegionDraw, LetsTheErrorOfAFullTabletPass) {
    const RegionT region = holed();
    const RegionT before(region);
    const Calls outline = edgesOf(region.points(), true);
    const Calls own = segmentsOf(fourEdgelets());
    for (std::size_t room = 0; room < 4; ++room) {
        SmallTablet small(room), smallForOutline(room);
        EXPECT_THROW(region.draw(small, orange, layer), support::TabletIsFull);
        EXPECT_EQ(small.calls, Calls(own.begin(), own.begin() + std::ptrdiff_t(room)));
        EXPECT_THROW(region.draw(smallForOutline, gmContourDefs::eOutline, orange, layer), support::TabletIsFull);
        EXPECT_EQ(smallForOutline.calls, Calls(outline.begin(), outline.begin() + std::ptrdiff_t(room)));
        EXPECT_EQ(region, before);
        EXPECT_EQ(region.data(), before.data());
        EXPECT_EQ(region.holes(), before.holes());
        EXPECT_EQ(ownCalls(region), own);
    }
}

TEST(EdgeRegionDraw, DrawsWhatItWasThoughTheTabletChangesIt) {
    const std::vector<std::function<void(RegionT&)>> changes{
        [](RegionT& region) { region.data({}); },
        [](RegionT& region) { region.data({edgelet(9, 9, 9)}); },
        [](RegionT& region) {
            region.data({4, edgelet(9, 9, 9)});
        },
        [](RegionT& region) { region.data(Edgelets(1000, edgelet(9, 9, 9))); },
        [](RegionT& region) { region.points({}); },
        [](RegionT& region) { region.points(points("9 9, 8 8, 7 7, 6 6")); },
        [](RegionT& region) { region = RegionT(); },
        [](RegionT& region) { region = RegionT(Edgelets(1000, edgelet(9, 9, 9))); },
        [](RegionT& region) { static_cast<ContourT&>(region) = ContourT({edgelet(9, 9, 9)}); },
        [](RegionT& region) { region.makeDataConsistentWithPoints(); },
        [](RegionT& region) { region.holes(RegionT::Holes()); },
        [](RegionT& region) {
            region.map(gmXform<2>(gmMatrix<2>(0, -1, 1, 0), {1, 2}), region);
        },
    };
    for (std::size_t which = 0; which < changes.size(); ++which)
        for (std::size_t when = 0; when < 4; ++when) {
            SCOPED_TRACE("change " + std::to_string(which) + " at call " + std::to_string(when));
            RegionT changed = holed();
            changes[which](changed);
            RegionT own = holed();
            ActingTablet ownTablet([&](std::size_t call) {
                if (call == when)
                    changes[which](own);
            });
            own.draw(ownTablet, orange, layer);
            EXPECT_EQ(ownTablet.calls, segmentsOf(fourEdgelets()));
            EXPECT_EQ(ownCalls(own), ownCalls(changed));

            RegionT outline = holed();
            const Calls whole = edgesOf(outline.points(), true);
            ActingTablet outlineTablet([&](std::size_t call) {
                if (call == when)
                    changes[which](outline);
            });
            outline.draw(outlineTablet, gmContourDefs::eOutline, orange, layer);
            EXPECT_EQ(outlineTablet.calls, whole);
            EXPECT_EQ(outlineCalls(outline), outlineCalls(changed));
        }
}

// ----- Sets

TEST(EdgeRegionSetDraw, HasEveryRegionDrawItsEdgePoints) {
    const Edgelets first{edgelet(1, 2, 3), edgelet(4, 5, 6)};
    const Edgelets second{edgelet(7, 8, 9)};
    const EdgeRegionCPtr twice = shared(first);
    const RegionSetT set(RegionSetT::Regions{twice, shared(second), shared({}), twice});
    const Calls expected = segmentsOf({first[0], first[1], second[0], first[0], first[1]});
    EXPECT_EQ(ownCalls(set), expected);
    EXPECT_EQ(ownCalls(static_cast<const gmRegionSet&>(set)), expected);
    EXPECT_EQ(ownCalls(RegionSetT(set)), expected);
    EXPECT_EQ(ownCalls(gmRegionSet(set.regions())), expected);
    EXPECT_THAT(ownCalls(RegionSetT()), IsEmpty());
}

TEST(EdgeRegionSetDraw, LeavesPlainRegionsOut) {
    const RegionCPtr plain(new gmRegion(points("0 0, 4 0, 4 3")));
    const Edgelets data{edgelet(1, 2, 3), edgelet(4, 5, 6)};
    EXPECT_EQ(ownCalls(gmRegionSet(std::vector<RegionCPtr>{plain, shared(data), plain, shared({data[0]})})),
              segmentsOf({data[0], data[1], data[0]}));
}

TEST(EdgeRegionSetDraw, StopsAtAnEmptyHandleWhenItsTurnComes) {
    const Edgelets data{edgelet(1, 2, 3), edgelet(4, 5, 6)};
    const RegionSetT set(RegionSetT::Regions{shared(data), nullptr, shared(data)});
    RecordingTablet tablet;
    EXPECT_THROW(set.draw(tablet, orange, layer), gmBadPointer);
    EXPECT_EQ(tablet.calls, segmentsOf(data));
}

TEST(EdgeRegionSetDraw, DrawsThePlainListWhereTheTwoListsDiffer) {
    const Edgelets data{edgelet(1, 2, 3), edgelet(4, 5, 6)};
    RegionSetT set(RegionSetT::Regions{shared(data)});
    EXPECT_THROW(set.add(shared({data[1]})), gmBadPointer);
    EXPECT_EQ(ownCalls(set), segmentsOf({data[0], data[1], data[1]}));
}

TEST(EdgeRegionSetDraw, LetsTheErrorOfAFullTabletPass) {
    const Edgelets data = fourEdgelets();
    const RegionSetT set(RegionSetT::Regions{shared({data[0], data[1]}), shared({data[2], data[3]})});
    const Calls whole = segmentsOf(data);
    for (std::size_t room = 0; room < whole.size(); ++room) {
        SmallTablet tablet(room);
        EXPECT_THROW(set.draw(tablet, orange, layer), support::TabletIsFull);
        EXPECT_EQ(tablet.calls, Calls(whole.begin(), whole.begin() + std::ptrdiff_t(room)));
        EXPECT_EQ(ownCalls(set), whole);
    }
}

TEST(EdgeRegionSetDraw, KeepsTheRegionThatIsDrawnAlive) {
    const Edgelets data = fourEdgelets();
    for (std::size_t when = 0; when < 2; ++when) {
        EdgeRegionCPtr outside = shared({data[0], data[1]});
        RegionSetT set(RegionSetT::Regions{outside, shared({data[2], data[3]})});
        ActingTablet tablet([&](std::size_t call) {
            if (call != when)
                return;
            outside = nullptr;
            set = RegionSetT();
        });
        set.draw(tablet, orange, layer);
        EXPECT_EQ(tablet.calls, segmentsOf({data[0], data[1]})) << "and no second region";
    }
}

}  // namespace
