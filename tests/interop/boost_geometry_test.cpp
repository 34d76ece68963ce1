// Geometries of Boost and our shapes.
#include "interop/boost_geometry.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <boost/geometry.hpp>
#include <boost/geometry/geometries/point_xy.hpp>
#include <cmath>
#include <cstdint>
#include <limits>
#include <sstream>
#include <string>
#include <type_traits>
#include <vector>

#include "tests/interop/support.h"

namespace {

namespace bg = boost::geometry;
using gnBoostGeometry::contourFrom;
using gnBoostGeometry::LineStringView;
using gnBoostGeometry::modelFrom;
using gnBoostGeometry::MultiPolygonView;
using gnBoostGeometry::PolygonView;
using gnBoostGeometry::regionFrom;
using gnBoostGeometry::regionsFrom;
using gnBoostGeometry::RingView;
using interop_test::backwards;
using interop_test::doubling;
using interop_test::nest;
using interop_test::outlines;
using interop_test::Points;
using interop_test::refusal;
using interop_test::shared;
using interop_test::square;

using Polygon = bg::model::polygon<gmVector<2>>;
using MultiPolygon = bg::model::multi_polygon<Polygon>;
using Ring = bg::model::ring<gmVector<2>>;
using Line = bg::model::linestring<gmVector<2>>;
using Integers = bg::model::d2::point_xy<int>;

constexpr double nan = std::numeric_limits<double>::quiet_NaN();

template <class Geometry>
std::string wkt(const Geometry& geometry) {
    std::ostringstream text;
    text << bg::wkt(geometry);
    return text.str();
}

// A view of a temporary would outlive it.
static_assert(std::is_constructible_v<RingView, const gmContour&> && !std::is_constructible_v<RingView, gmContour>);
static_assert(!std::is_constructible_v<LineStringView, gmContour>);
static_assert(!std::is_constructible_v<PolygonView, gmRegion>);
static_assert(!std::is_constructible_v<MultiPolygonView, gmRegion>);

gmRegion plate() {
    gmRegion region(square(0, 0, 10));
    region.holes(std::vector<RegionCPtr>{shared(square(1, 1, 2)), shared(backwards(square(5, 5, 3)))});
    return region;
}

/// An island in a hole, and a hole in the island.
gmRegion archery() {
    gmRegion region(square(0, 0, 10));
    const RegionCPtr island = shared(square(3, 3, 4), {shared(square(4, 4, 2))});
    region.holes(std::vector<RegionCPtr>{shared(square(1, 1, 1)), shared(square(2, 2, 7), {island})});
    return region;
}

TEST(BoostPoints, AreVectors) {
    gmVector<2> point(1, 2);
    bg::set<0>(point, 4.0);
    bg::set<1>(point, 6.0);
    EXPECT_EQ(point, gmVector<2>(4, 6));
    EXPECT_EQ(bg::distance(point, gmVector<2>(1, 2)), 5.0);
    EXPECT_EQ(wkt(point), "POINT(4 6)");
}

TEST(BoostLineStringView, IsAnOpenContour) {
    const gmContour contour({{0, 0}, {3, 4}, {3, 5}}, false);
    EXPECT_EQ(wkt(LineStringView(contour)), "LINESTRING(0 0,3 4,3 5)");
    EXPECT_EQ(bg::length(LineStringView(contour)), contour.length());
    EXPECT_EQ(bg::distance(gmVector<2>(4, 5), LineStringView(contour)), 1.0);
}

TEST(BoostLineStringView, RefusesWhatALineStringIsNot) {
    const auto refused = [](const gmContour& contour) { return refusal([&] { LineStringView{contour}; }); };
    EXPECT_EQ(refused(gmContour({{0, 0}, {1, 1}}, true)), "the contour is closed, which a linestring is not");
    EXPECT_EQ(refused(gmContour({{0, 0}, {1, nan}}, false)), "point 1: a coordinate is not finite");
    EXPECT_EQ(refused(gmContour({}, false)), "accepted");
}

TEST(BoostRingView, RunsClockwiseFromTheFirstVertexOn) {
    const Points points = {{0, 0}, {4, 0}, {4, 3}};
    for (const Points& outline : {points, backwards(points)}) {
        const gmContour contour(outline, true);
        const RingView ring(contour);
        EXPECT_EQ(Points(ring.begin(), ring.end()), backwards(points));
        EXPECT_EQ(ring.end() - ring.begin(), 3);
        EXPECT_EQ(*(ring.begin() + 2), points[1]);
        EXPECT_EQ(bg::area(ring), 6.0);
        EXPECT_EQ(bg::perimeter(ring), 12.0);
    }
}

TEST(BoostRingView, RefusesWhatARingIsNot) {
    const auto refused = [](const gmContour& contour) { return refusal([&] { RingView{contour}; }); };
    EXPECT_EQ(refused(gmContour(square(0, 0, 1), false)), "the contour is open, which a ring is not");
    EXPECT_EQ(refused(gmContour({}, true)), "a ring has 3 points at least, this one has 0");
    EXPECT_EQ(refused(gmContour({{0, 0}, {1, 1}}, true)), "a ring has 3 points at least, this one has 2");
    EXPECT_EQ(refused(gmContour({{0, 0}, {1, 1}, {std::numeric_limits<double>::infinity(), 0}}, true)),
              "point 2: a coordinate is not finite");
}

TEST(BoostPolygonView, IsARegionWithItsHoles) {
    const gmRegion region = plate();
    const PolygonView polygon(region);
    EXPECT_EQ(wkt(polygon), "POLYGON((0 0,0 10,10 10,10 0,0 0),(1 1,3 1,3 3,1 3,1 1),(5 5,8 5,8 8,5 8,5 5))");
    EXPECT_EQ(bg::area(polygon), region.area(true));
    EXPECT_TRUE(bg::within(gmVector<2>(4, 4), polygon));
    EXPECT_FALSE(bg::within(gmVector<2>(2, 2), polygon));
    EXPECT_TRUE(bg::is_valid(polygon));
}

TEST(BoostPolygonView, RefusesWhatAPolygonIsNot) {
    const auto refused = [](const gmRegion& region) { return refusal([&] { PolygonView{region}; }); };
    EXPECT_EQ(refused(archery()), "hole 1: has holes of its own, which only a multi-polygon holds");
    EXPECT_EQ(refused(gmRegion({{0, 0}, {1, 1}})), "outline: a ring has 3 points at least, this one has 2");
    EXPECT_EQ(refused(gmRegion({{0, 0}, {1, 1}, {0, nan}})), "outline, point 2: a coordinate is not finite");
    gmRegion region = plate();
    region.holes(std::vector<RegionCPtr>{shared(square(1, 1, 2)), shared({{5, 5}})});
    EXPECT_EQ(refused(region), "hole 1: a ring has 3 points at least, this one has 1");
}

TEST(BoostMultiPolygonView, HasTheIslandsInHolesAsPolygons) {
    const gmRegion region = archery();
    const MultiPolygonView polygons(region);
    EXPECT_EQ(polygons.end() - polygons.begin(), 2);
    EXPECT_EQ(bg::area(polygons), 100.0 - 1.0 - 49.0 + 16.0 - 4.0);
    support::Random random(3);
    for (int i = 0; i < 200; ++i) {
        const gmVector<2> point = random.point(-1, 11);
        EXPECT_EQ(bg::within(point, polygons), region.inside(point, true)) << point.x() << ' ' << point.y();
    }
    const RegionCPtr target = nest(7);
    EXPECT_EQ(bg::area(MultiPolygonView({target, target})), 2.0 * 4.0 * (49 - 36 + 25 - 16 + 9 - 4 + 1));
}

TEST(BoostMultiPolygonView, NamesWhatAPolygonIsNot) {
    gmRegion region = archery();
    const gmPtrHandle<gmRegion> island(new gmRegion(square(3, 3, 4)));
    island->holes(std::vector<RegionCPtr>{shared({{4, 4}, {5, 5}})});
    const RegionCPtr bad = shared(square(0, 0, 10), {shared(square(2, 2, 7), {island})});
    EXPECT_EQ(refusal([&] {
                  MultiPolygonView({nest(2), bad});
              }),
              "region 1, hole 0, hole 0, hole 0: a ring has 3 points at least, this one has 2");
    EXPECT_THROW(MultiPolygonView(std::vector<RegionCPtr>(1)), gmBadPointer);

    const gmPtrHandle<gmRegion> outer(new gmRegion(square(0, 0, 9)));
    const gmPtrHandle<gmRegion> inner(new gmRegion(square(2, 2, 5)));
    outer->holes(std::vector<RegionCPtr>{inner});
    inner->holes(std::vector<RegionCPtr>{outer});
    EXPECT_EQ(refusal([&] { MultiPolygonView{*outer}; }), "hole 0, hole 0: holes form a cycle");
    inner->holes(std::vector<RegionCPtr>());
}

TEST(BoostMultiPolygons, MayBeNestedDeeply) {
    const RegionCPtr region = nest(20000);
    const MultiPolygonView polygons(*region);
    EXPECT_EQ(polygons.end() - polygons.begin(), 10000);
    EXPECT_EQ(modelFrom<MultiPolygon>(*region).size(), 10000U);
    // Every outline adds what it has more than the next one: 4 (i + 1)^2 - 4 i^2.
    EXPECT_EQ(bg::area(polygons), 4.0 * 20000.0 * 20001.0 / 2.0);
}

TEST(BoostMultiPolygons, NameWhatIsBadDeepInANest) {
    RegionCPtr inner = shared({{0, 0}, {0.5, 0}, {nan, 0.5}});
    std::string name;
    for (int i = 0; i < 4000; ++i) {
        inner = shared(square(-i - 1, -i - 1, 2 * i + 2), {inner});
        name += "hole 0, ";
    }
    const std::string expected = name + "outline, point 2: a coordinate is not finite";
    EXPECT_EQ(refusal([&] { MultiPolygonView{*inner}; }), expected);
    EXPECT_EQ(refusal([&] { modelFrom<MultiPolygon>(*inner); }), expected);
}

TEST(BoostMultiPolygons, RefuseHolesThatAreSharedOnTooManyLevels) {
    const std::string why = "more than 262144 outlines came before: regions and holes are shared too often";
    const RegionCPtr region = doubling(40);
    EXPECT_THAT(refusal([&] { MultiPolygonView{*region}; }), testing::EndsWith(", hole 1: " + why));
    EXPECT_THAT(refusal([&] {
                    modelFrom<MultiPolygon>({nest(3), region});
                }),
                testing::AllOf(testing::StartsWith("region 1, hole 0, "), testing::EndsWith(": " + why)));
    EXPECT_EQ(modelFrom<MultiPolygon>(*doubling(3)).size(), 1U + 4U);
}

TEST(BoostAlgorithms, UniteIntersectAndSubtractRegions) {
    support::Random random(4);
    for (int round = 0; round < 30; ++round) {
        const auto box = [&] {
            const Points points = square(random.integer(0, 5), random.integer(0, 5), random.integer(1, 6));
            return gmRegion(random.chance(0.5) ? points : backwards(points));
        };
        const gmRegion a = box();
        const gmRegion b = box();
        MultiPolygon both;
        MultiPolygon common;
        MultiPolygon rest;
        bg::union_(PolygonView(a), PolygonView(b), both);
        bg::intersection(PolygonView(a), PolygonView(b), common);
        bg::difference(PolygonView(a), PolygonView(b), rest);
        EXPECT_NEAR(bg::area(both) + bg::area(common), a.area(false) + b.area(false), 1e-9);
        EXPECT_NEAR(bg::area(rest) + bg::area(common), a.area(false), 1e-9);
        EXPECT_NEAR(gmRegionSet(regionsFrom(both)).area(true), bg::area(both), 1e-9);
        for (int x = 0; x < 12; ++x) {
            const gmVector<2> point(x + 0.37, random.integer(0, 11) + 0.41);
            EXPECT_EQ(gmRegionSet(regionsFrom(both)).inside(point, true),
                      a.inside(point, true) || b.inside(point, true));
        }
    }
}

TEST(BoostAlgorithms, GrowARegionWithAHole) {
    gmRegion region(square(0, 0, 10));
    region.holes(std::vector<RegionCPtr>{shared(square(3, 3, 4))});
    MultiPolygon grown;
    bg::buffer(modelFrom<Polygon>(region), grown, bg::strategy::buffer::distance_symmetric<double>(1.0),
               bg::strategy::buffer::side_straight(), bg::strategy::buffer::join_miter(),
               bg::strategy::buffer::end_flat(), bg::strategy::buffer::point_square());
    const std::vector<RegionCPtr> regions = regionsFrom(grown);
    ASSERT_EQ(regions.size(), 1U);
    EXPECT_NEAR(regions[0]->area(true), 144.0 - 4.0, 1e-9);
}

template <class Model>
class BoostModels : public testing::Test {};
using Models =
    testing::Types<bg::model::polygon<gmVector<2>, true, true>, bg::model::polygon<gmVector<2>, true, false>,
                   bg::model::polygon<gmVector<2>, false, true>,
                   bg::model::polygon<bg::model::d2::point_xy<float>, false, false>, bg::model::polygon<Integers>,
                   bg::model::polygon<bg::model::point<long double, 2, bg::cs::cartesian>, false>,
                   bg::model::polygon<bg::model::point<std::int64_t, 2, bg::cs::cartesian>>>;
TYPED_TEST_SUITE(BoostModels, Models, );

TYPED_TEST(BoostModels, OfPolygonsGoThereAndBack) {
    const gmRegion region = plate();
    const TypeParam polygon = modelFrom<TypeParam>(region);
    EXPECT_EQ(static_cast<double>(bg::area(polygon)), region.area(true));
    EXPECT_EQ(static_cast<double>(bg::area(polygon.inners()[1])), -9.0);
    EXPECT_EQ(polygon.outer().size(), bg::closure<TypeParam>::value == bg::closed ? 5U : 4U);
    const gmRegion back = regionFrom(polygon);
    EXPECT_EQ(outlines(back), (std::vector<Points>{square(0, 0, 10), square(1, 1, 2), square(5, 5, 3)}));
}

TYPED_TEST(BoostModels, OfRingsGoThereAndBack) {
    using RingModel = typename TypeParam::ring_type;
    constexpr bool isClockwise = bg::point_order<RingModel>::value == bg::clockwise;
    support::Random random(9);
    for (int count = 3; count < 30; ++count) {
        Points points;
        for (int i = 0; i < count; ++i)
            points.push_back(random.gridPoint(-9, 9));
        // A vertex that is repeated, and one that closes a second time, stay.
        points.insert(points.begin(), points.front());
        const bool isKept = (gnInterop::detail::twiceSignedArea(points) < 0.0) == isClockwise ||
                            gnInterop::detail::twiceSignedArea(points) == 0.0;
        const gmContour back = contourFrom(modelFrom<RingModel>(gmContour(points, true)), 3);
        EXPECT_TRUE(back.isClosed());
        EXPECT_EQ(back.label(), 3U);
        EXPECT_EQ(back.points(), isKept ? points : backwards(points));
    }
}

TYPED_TEST(BoostModels, OfMultiPolygonsGoThereAndBack) {
    using Many = bg::model::multi_polygon<TypeParam>;
    const gmRegion first = archery();
    const Many polygons = modelFrom<Many>(std::vector<RegionCPtr>{RegionCPtr(new gmRegion(first)), nest(1)});
    ASSERT_EQ(polygons.size(), 3U);
    const std::vector<RegionCPtr> regions = regionsFrom(polygons);
    EXPECT_EQ(outlines(*regions[0]), outlines(first));
    EXPECT_EQ(outlines(*regions[1]), (std::vector<Points>{square(3, 3, 4), square(4, 4, 2)}));
    EXPECT_EQ(outlines(*regions[2]), (std::vector<Points>{square(-1, -1, 2)}));
    EXPECT_EQ(bg::num_points(modelFrom<Many>(first)), bg::num_points(polygons[0]) + bg::num_points(polygons[1]));
    EXPECT_TRUE(regionsFrom(Many()).empty());
}

TEST(BoostModelsOfLines, GoThereAndBackWhateverTheNumberOfVertices) {
    for (std::size_t count = 0; count < 5; ++count) {
        Points points = square(0, 0, 3);
        points.resize(count);
        const gmContour contour(points, false);
        const Line line = modelFrom<Line>(contour);
        EXPECT_EQ(line.size(), count);
        EXPECT_EQ(contourFrom(line).points(), points);
        EXPECT_FALSE(contourFrom(line).isClosed());
    }
    EXPECT_EQ(refusal([] { modelFrom<Line>(gmContour()); }), "the contour is closed, which a linestring is not");
}

TEST(BoostModelsFromOurs, AreNeverRoundedUnasked) {
    using Pixels = bg::model::polygon<Integers>;
    gmRegion region(square(0, 0, 10));
    region.holes(std::vector<RegionCPtr>{shared(square(1, 1, 2)), shared({{5, 5}, {8.5, 5}, {8, 8}})});
    EXPECT_EQ(refusal([&] { modelFrom<Pixels>(region); }), "hole 1, point 1: x = 8.5 is not a whole number");
    EXPECT_EQ(wkt(modelFrom<Pixels>(region, gnInterop::eNearest)),
              "POLYGON((0 0,0 10,10 10,10 0,0 0),(1 1,3 1,3 3,1 3,1 1),(5 5,8 5,8 8,5 5))");
    using Line32 = bg::model::linestring<Integers>;
    EXPECT_EQ(refusal([] {
                  modelFrom<Line32>(gmContour({{0, 3e9}}, false), gnInterop::eNearest);
              }),
              "point 0: y = 3e+09 is out of range");
    using LineF = bg::model::linestring<bg::model::d2::point_xy<float>>;
    EXPECT_EQ(refusal([] {
                  modelFrom<LineF>(gmContour({{0, 0.1}}, false));
              }),
              "point 0: y = 0.1 has more digits than a float");
    EXPECT_EQ(modelFrom<LineF>(gmContour({{0, 0.1}}, false), gnInterop::eNearest)[0].y(), 0.1F);
}

TEST(BoostModelsFromOurs, RefuseWhatTheyCannotHold) {
    EXPECT_EQ(refusal([] { modelFrom<Polygon>(archery()); }),
              "hole 1: has holes of its own, which only a multi-polygon holds");
    EXPECT_EQ(refusal([] { modelFrom<Polygon>(gmRegion()); }), "outline: a ring has 3 points at least, this one has 0");
    EXPECT_EQ(refusal([] { modelFrom<Ring>(gmContour(square(0, 0, 1), false)); }),
              "the contour is open, which a ring is not");
    EXPECT_EQ(refusal([] {
                  modelFrom<MultiPolygon>({nest(1), shared({{0, 0}, {1, nan}, {2, 2}})});
              }),
              "region 1, outline, point 1: a coordinate is not finite");
}

TEST(OursFromBoostModels, RefuseRingsThatAreNone) {
    const auto refused = [](const Points& outer, const Points& inner) {
        Polygon polygon;
        polygon.outer().assign(outer.begin(), outer.end());
        polygon.inners().emplace_back(inner.begin(), inner.end());
        return refusal([&] { regionFrom(polygon); });
    };
    Points ring = square(0, 0, 9);
    EXPECT_EQ(refused(ring, {}), "exterior ring: the ring is open: its last point is not the first one again");
    ring.push_back(ring[0]);
    EXPECT_EQ(refused(ring, {}), "interior ring 0: a ring has 3 points at least, this one has 0");
    EXPECT_EQ(refused(ring, {{1, 1}}), "interior ring 0: a ring has 3 points at least, this one has 1");
    EXPECT_EQ(refused(ring, {{1, 1}, {2, 2}, {1, 1}}), "interior ring 0: a ring has 3 points at least, this one has 2");
    EXPECT_EQ(refused(ring, {{1, 1}, {2, 2}, {1, 2}}),
              "interior ring 0: the ring is open: its last point is not the first one again");
    EXPECT_EQ(refused({}, {}), "exterior ring: a ring has 3 points at least, this one has 0");
    EXPECT_EQ(refused(ring, {{0, 3}, {3, 3}, {2, 5}, {0, 3}}),
              "interior ring 0: has a point in common with the exterior ring, and is no hole of a region then");
    EXPECT_EQ(refused(ring, {{1, 3}, {3, 3}, {2, 5}, {1, 3}}), "accepted");
    EXPECT_EQ(refusal([] {
                  contourFrom(Ring{{0, 0}, {1, 0}, {1, 1}});
              }),
              "the ring is open: its last point is not the first one again");
    EXPECT_EQ(refusal([] {
                  regionsFrom(MultiPolygon{Polygon(), Polygon()});
              }),
              "polygon 0, exterior ring: a ring has 3 points at least, this one has 0");
}

TEST(OursFromBoostModels, RefuseDigitsThatADoubleHasNot) {
    using Wide = bg::model::linestring<bg::model::point<std::int64_t, 2, bg::cs::cartesian>>;
    EXPECT_EQ(refusal([] {
                  contourFrom(Wide{{0, 0}, {0, (std::int64_t{1} << 53) + 1}});
              }),
              "point 1: y has more digits than a double");
    using Long = bg::model::linestring<bg::model::point<long double, 2, bg::cs::cartesian>>;
    EXPECT_EQ(refusal([] { contourFrom(Long{{1.0L / 3.0L, 0}}); }), "point 0: x has more digits than a double");
    EXPECT_EQ(refusal([] {
                  contourFrom(Long{{std::numeric_limits<long double>::max(), 0}});
              }),
              "point 0: x has more digits than a double");
    EXPECT_EQ(contourFrom(Long{{0.25L, std::numeric_limits<long double>::infinity()}}).points()[0],
              gmVector<2>(0.25, std::numeric_limits<double>::infinity()));
    EXPECT_EQ(refusal([] { contourFrom(Line(), 1UL << 32U); }), "label does not fit in 32 bits");
}

TEST(OursFromBoostModels, AreClosedWhereTheRepeatedPointHasANaN) {
    for (const gmVector<2>& first : {gmVector<2>(nan, 1), gmVector<2>(1, nan), gmVector<2>(nan, nan)}) {
        const gmContour contour = contourFrom(Ring{first, {4, 0}, {4, 3}, first});
        ASSERT_EQ(contour.points().size(), 3U);
        EXPECT_EQ(std::isnan(contour.points()[0].x()), std::isnan(first.x()));
        EXPECT_EQ(std::isnan(contour.points()[0].y()), std::isnan(first.y()));
        EXPECT_EQ(regionFrom(Polygon{{first, {4, 0}, {4, 3}, first}}).points().size(), 3U);
    }
    const std::string open = "the ring is open: its last point is not the first one again";
    EXPECT_EQ(refusal([] { contourFrom(Ring{{nan, 1}, {4, 0}, {4, 3}, {2, 1}}); }), open);
    EXPECT_EQ(refusal([] { contourFrom(Ring{{nan, 1}, {4, 0}, {4, 3}, {nan, 2}}); }), open);
}

TEST(OursFromBoostModels, KeepTheDirectionOfContoursAndTurnRegions) {
    const Points points = square(0, 0, 5);
    const bg::model::polygon<gmVector<2>, true, false> polygon{{{0, 0}, {0, 5}, {5, 5}, {5, 0}}};
    EXPECT_EQ(contourFrom(polygon.outer()).points(), backwards(points));
    EXPECT_EQ(regionFrom(polygon).points(), points);
}

}  // namespace
