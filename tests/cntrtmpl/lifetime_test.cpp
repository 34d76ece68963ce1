// Shapes with edge points whose parts act back on them, and how they are spelt.
#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <functional>

#include "tests/support/edgelets.h"

using support::ContourT;
using support::edgelets;
using support::edgeRegion;
using support::HolesT;
using support::RegionSetT;
using support::RegionT;
using support::RegionTHandle;
using support::sharedT;
using support::WatchedXform;
using support::XformHandle;
using testing::SizeIs;

namespace {

/// A transform that does something each time it maps or is inverted.
class MeddlingXform : public gm2XformLinear {
  public:
    explicit MeddlingXform(std::function<void()> meddle) : meddle_(std::move(meddle)) {}

    gmPtrHandle<gm2XformBase> clone() const override { return XformHandle(new MeddlingXform(meddle_)); }
    gmPtrHandle<gm2XformBase> inverseBase() const override {
        meddle_();
        return XformHandle(new MeddlingXform(meddle_));
    }
    gmVector<2> mapPoint(const gmVector<2>& point) const override {
        meddle_();
        return gm2XformLinear::mapPoint(point);
    }

  private:
    std::function<void()> meddle_;
};

/// A contour whose transform, from now on, assigns another one to it.
struct Meddled {
    bool armed = false;
    ContourT contour = ContourT(edgelets("1 1, 2 2, 3 3, 4 4"), XformHandle(new MeddlingXform([this] {
                                    if (armed)
                                        contour = ContourT(edgelets("7 7"));
                                })));
};

TEST(ContourTTransform, MayAssignToTheContourThatAsksIt) {
    for (const auto& ask : std::vector<std::function<void(ContourT&)>>{
             [](ContourT& c) { EXPECT_EQ(c.point(edgelets("5 6")[0]), gmVector<2>(5, 6)); },
             [](ContourT& c) {
                 EXPECT_EQ(c.datum({5, 6}).position(), gmVector<2>(5, 6));
             },
             [](ContourT& c) { c.makePointsConsistentWithData(); },
             [](ContourT& c) { c.makeDataConsistentWithPoints(); },
             [](ContourT& c) { c.data(edgelets("5 5, 6 6, 8 8, 9 9")); },
         }) {
        Meddled meddled;
        meddled.armed = true;
        ask(meddled.contour);
        meddled.contour = ContourT(edgelets("1 1, 2 2"));
        EXPECT_THAT(meddled.contour.points(), SizeIs(2));
    }
}

TEST(RegionTCopies, KeepTheInverseThatWasComputed) {
    const WatchedXform* watched = new WatchedXform(support::scale(2));
    const gmPtrHandle_const<gm2XformBase> xform(watched);
    const RegionT region(edgelets("0 0, 2 0, 2 2"), xform);
    RegionT copy(region);
    RegionT assigned;
    assigned = region;
    EXPECT_EQ(copy.point(edgelets("8 8")[0]), gmVector<2>(4, 4));
    EXPECT_EQ(assigned.point(edgelets("8 8")[0]), gmVector<2>(4, 4));
    EXPECT_EQ(watched->requests().inversions, 1);
}

TEST(RegionTOfAContour, HasItsVerticesInADerivedClassToo) {
    struct Derived : RegionT {
        using RegionT::RegionT;
    };
    ContourT contour(edgelets("0 0, 2 0, 2 2"));
    contour.isClosed(false);
    contour.length();
    const Derived derived(contour, 3);
    EXPECT_EQ(derived.points(), contour.points());
    EXPECT_EQ(derived.data(), contour.data());
    EXPECT_EQ(derived.label(), 3u);
    EXPECT_EQ(derived.length(), gmRegion(contour.points()).length()) << "with the closing edge";
}

TEST(RegionTHoles, CanBeGivenInBracesAndAsHandlesForWriting) {
    RegionT region = edgeRegion("0 0, 9 0, 9 9");
    const RegionTHandle one = sharedT("1 1, 2 1, 2 2");
    const gmPtrHandle_const<RegionT> two(sharedT("5 1, 6 1, 6 2"));
    region.holes({one});
    EXPECT_EQ(region.holes(), HolesT{one});
    region.holes({one, two});
    EXPECT_EQ(region.holes(), (HolesT{one, two}));
    region.holes({});
    EXPECT_EQ(region.holes(), HolesT());
    const std::vector<RegionTHandle> writable = {one, one};
    region.holes(writable);
    EXPECT_EQ(region.holes(), (HolesT{one, one}));
    EXPECT_EQ(region.gmRegion::holes(), std::vector<RegionCPtr>());
}

TEST(RegionSetTOfHandles, CanBeGivenInBraces) {
    const RegionTHandle one = sharedT("1 1, 2 1, 2 2");
    const gmPtrHandle_const<RegionT> two(sharedT("5 1, 6 1, 6 2"));
    EXPECT_EQ(RegionSetT({one, one}).regionsT(), (HolesT{one, one}));
    EXPECT_EQ(RegionSetT({one, two}).regionsT(), (HolesT{one, two}));
    EXPECT_EQ(RegionSetT({one, two}).regions(), (std::vector<RegionCPtr>{one, two}));
}

TEST(RegionSetTOfHandles, IsKeptAsItIsThoughItCrossesItself) {
    const HolesT crossing = {sharedT("0 0, 4 0, 4 4, 0 4"), sharedT("2 2, 6 2, 6 6, 2 6")};
    const RegionSetT set(crossing);
    EXPECT_EQ(set.regions(), support::plain(crossing));
    EXPECT_TRUE(set.isSelfIntersecting());
}

/// A region that holds a set.
class Owner : public RegionT {
  public:
    RegionSetT set;
};

TEST(RegionSetTRegions, MayBeWhatKeepsTheSetAlive) {
    gmPtrHandle<Owner> owner(new Owner);
    RegionSetT& set = owner->set;
    set = RegionSetT(HolesT{owner});
    owner = nullptr;
    EXPECT_NO_THROW(set.regions(std::vector<RegionCPtr>()));
}

/// The same with a plain set.
class PlainOwner : public gmRegion {
  public:
    gmRegionSet set;
};

TEST(RegionSetRegions, MayBeWhatKeepsTheSetAlive) {
    gmPtrHandle<PlainOwner> owner(new PlainOwner);
    gmRegionSet& set = owner->set;
    set = gmRegionSet(std::vector<RegionCPtr>{owner});
    owner = nullptr;
    EXPECT_NO_THROW(set.regions(std::vector<RegionCPtr>(), gmContourDefs::eRegularize));
}

TEST(RegionResult, MayBeKeptAliveByWhatItReplaces) {
    // The region holds the hole, and the hole the region.
    gmPtrHandle<gmRegion> region(new gmRegion(support::points("0 0, 4 0, 0 4, 4 4")));
    gmPtrHandle<gmRegion> hole(new gmRegion(support::points("9 9, 8 9, 8 8")));
    region->holes(std::vector<RegionCPtr>{hole});
    hole->holes(std::vector<RegionCPtr>{region});
    gmRegion& itself = *region;
    region = nullptr;
    hole = nullptr;
    EXPECT_NO_THROW(itself.regularize(itself));
}

TEST(ContourTHeader, ShowsWhatIsTrue) {
    const gmPtrHandle<gm2XformBase> pixels(new gm2XformLinear(gmXform<2>({20, 0, 0, 20}, {})));
    const gmContourT<gmEdgelet> edge({{{0, 0}, 90, gmAngle8(64)}, {{80, 0}, 120, gmAngle8(64)}}, pixels);
    EXPECT_EQ(edge.points()[1], gmVector<2>(4, 0));
}

}  // namespace
