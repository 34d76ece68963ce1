#pragma once

#include <boost/geometry/core/access.hpp>
#include <boost/geometry/core/closure.hpp>
#include <boost/geometry/core/coordinate_dimension.hpp>
#include <boost/geometry/core/coordinate_system.hpp>
#include <boost/geometry/core/coordinate_type.hpp>
#include <boost/geometry/core/exterior_ring.hpp>
#include <boost/geometry/core/interior_rings.hpp>
#include <boost/geometry/core/mutable_range.hpp>
#include <boost/geometry/core/point_order.hpp>
#include <boost/geometry/core/point_type.hpp>
#include <boost/geometry/core/tag.hpp>
#include <boost/geometry/core/tags.hpp>
#include <boost/range/begin.hpp>
#include <boost/range/end.hpp>
#include <cmath>
#include <cstddef>
#include <string>
#include <type_traits>
#include <vector>

#include "cntr/contour.h"
#include "cntr/region.h"
#include "cntr/regionptr.h"
#include "interop/boost_views.h"
#include "interop/common.h"

/// Geometries of Boost, and the shapes of this library.
///
/// Header-only: what includes it links with the contour library and with nothing of Boost. It is tested with
/// Boost 1.74.
///
/// **Points.** gmVector<2> is a point of Boost, cartesian and of doubles: to be measured, and to make models of, as
/// `bg::model::polygon<gmVector<2>>`.
///
/// **Views.** What Boost only reads need not be copied: LineStringView, RingView, PolygonView and MultiPolygonView are
/// Boost's concepts, const, over our shapes. They are classes of their own because Boost wants to know at compile time
/// what our shapes know at run time: whether an outline is closed, which way it runs, whether holes have holes. A view
/// looks when it is made, refuses what the concept has no place for, and shows every outline clockwise and every hole
/// counter-clockwise. It refers to the shape: that has to outlive it, unchanged.
///
///     gmRegion plate = ..., slot = ...;
///     bg::model::multi_polygon<bg::model::polygon<gmVector<2>>> both;
///     bg::union_(gnBoostGeometry::PolygonView(plate), gnBoostGeometry::PolygonView(slot), both);
///     const gmRegionSet parts(gnBoostGeometry::regionsFrom(both));
///
/// Algorithms that make geometries of their input's own type take no view: `bg::buffer`, `bg::simplify`. Give them a
/// copy.
///
/// **Copies.** modelFrom() makes any model of linestring, ring, polygon or multi-polygon; contourFrom(), regionFrom()
/// and regionsFrom() make our shapes of any. Models may be of either direction, closed or not, and of any built-in
/// number. Our shapes do not repeat the first vertex at the end: the point that closed models have there comes and
/// goes.
///
/// **Direction.** A contour keeps the order of the points. The outlines of regions, those of holes as well, are made to
/// run counter-clockwise with y up, since the second moments of others are not to be relied on (see
/// gf_InertiaDataPolygon); the first point stays the first. Which way an outline runs is told by the sign of its
/// area, see gnInterop.
///
/// **Errors.** What one side does not hold is refused with gmContourDefs::BadParams, see gnInterop. To Boost go finite
/// coordinates only: its algorithms are not made for others. Whether outlines cross themselves or each other is not
/// looked at: `bg::is_valid` and gmContour::isSelfIntersecting tell, gmRegion::regularize helps.
namespace gnBoostGeometry {

namespace detail {

template <class Geometry>
using TagOf = typename bg::tag<Geometry>::type;

template <class Geometry, class Tag>
inline constexpr bool isA = std::is_same_v<TagOf<Geometry>, Tag>;

template <class Geometry>
constexpr void checkPlane() {
    static_assert(bg::dimension<Geometry>::value == 2, "our shapes lie in the plane");
    static_assert(std::is_same_v<typename bg::coordinate_system<Geometry>::type, bg::cs::cartesian>,
                  "our shapes lie in a plane, not on a sphere");
}

template <class Range, class Outline>
void append(const gmVector<2>& vertex, std::size_t index, gnInterop::Rounding rounding, const Outline& outline,
            Range& range) {
    using Point = typename bg::point_type<Range>::type;
    using Number = typename bg::coordinate_type<Point>::type;
    const auto element = [&] { return common::within(outline(), common::numbered("point", index)); };
    Point point = Point();
    bg::set<0>(point, common::coordinateTo<Number>(vertex.x(), "x", rounding, element));
    bg::set<1>(point, common::coordinateTo<Number>(vertex.y(), "y", rounding, element));
    bg::traits::push_back<Range>::apply(range, point);
}

template <class LineString>
void fillLineString(const gmContour& contour, gnInterop::Rounding rounding, LineString& out) {
    checkLineString(contour);
    const Vertices& vertices = contour.points();
    for (std::size_t i = 0; i < vertices.size(); ++i)
        append(vertices[i], i, rounding, common::unnamed, out);
}

/// An interior ring runs against the direction of its type.
template <class Ring, class Element>
void fillRing(const gmContour& contour, bool isInterior, gnInterop::Rounding rounding, const Element& element,
              Ring& out) {
    checkRing(contour, element);
    const Vertices& vertices = contour.points();
    const bool isClockwise = (bg::point_order<Ring>::value == bg::clockwise) != isInterior;
    const double area = common::twiceSignedArea(vertices);
    const bool isAgainst = isClockwise ? area > 0.0 : area < 0.0;
    const std::size_t end = vertices.size() + (bg::closure<Ring>::value == bg::closed ? 1 : 0);
    for (std::size_t i = 0; i < end; ++i) {
        const std::size_t step = i % vertices.size();
        const std::size_t index = isAgainst && step > 0 ? vertices.size() - step : step;
        append(vertices[index], index, rounding, element, out);
    }
}

template <class Polygon, class Element>
void fillPolygon(const gmRegion& region, gnInterop::Rounding rounding, const Element& element, Polygon& out) {
    const auto outline = [&] { return common::within(element(), "outline"); };
    fillRing(region, false, rounding, outline, bg::exterior_ring(out));
    auto& rings = bg::interior_rings(out);
    bg::traits::resize<std::decay_t<decltype(rings)>>::apply(rings, region.holes().size());
    auto ring = boost::begin(rings);
    for (std::size_t i = 0; i < region.holes().size(); ++i) {
        const auto hole = [&] { return common::within(element(), common::numbered("hole", i)); };
        fillRing(*region.holes()[i], true, rounding, hole, *ring++);
    }
}

template <class MultiPolygon>
void addPolygons(common::Nesting& nesting, const gmRegion& region, gnInterop::Rounding rounding,
                 const std::string& name, MultiPolygon& out) {
    using Polygon = std::decay_t<decltype(*boost::begin(out))>;
    visitPolygons(nesting, region, name, [&](const gmRegion& outline, const auto& element) {
        Polygon polygon;
        fillPolygon(outline, rounding, element, polygon);
        bg::traits::push_back<MultiPolygon>::apply(out, polygon);
    });
}

template <class Range>
Vertices verticesFrom(const Range& range, const std::string& outline) {
    checkPlane<Range>();
    Vertices vertices;
    for (auto point = boost::begin(range); point != boost::end(range); ++point) {
        const auto element = [&] { return common::within(outline, common::numbered("point", vertices.size())); };
        const double x = common::coordinateFrom(bg::get<0>(*point), "x", element);
        vertices.emplace_back(x, common::coordinateFrom(bg::get<1>(*point), "y", element));
    }
    return vertices;
}

/// Coordinates that are NaN are the same here.
inline bool isSame(const gmVector<2>& a, const gmVector<2>& b) {
    const auto same = [](double left, double right) {
        return left == right || (std::isnan(left) && std::isnan(right));
    };
    return same(a.x(), b.x()) && same(a.y(), b.y());
}

template <class Ring>
Vertices verticesOfRing(const Ring& ring, const std::string& element) {
    Vertices vertices = verticesFrom(ring, element);
    if (bg::closure<Ring>::value == bg::closed && vertices.size() > 1) {
        if (!isSame(vertices.back(), vertices.front()))
            common::refuse(element, "the ring is open: its last point is not the first one again");
        vertices.pop_back();
    }
    checkCount(vertices.size(), [&] { return element; });
    return vertices;
}

template <class Ring>
gmPtrHandle<gmRegion> regionInside(const Ring& ring, const std::string& element) {
    Vertices vertices = verticesOfRing(ring, element);
    common::turn(vertices);
    return gmPtrHandle<gmRegion>(new gmRegion(vertices));
}

template <class Polygon>
gmPtrHandle<gmRegion> regionFrom(const Polygon& polygon, const std::string& element) {
    const gmPtrHandle<gmRegion> region =
        regionInside(bg::exterior_ring(polygon), common::within(element, "exterior ring"));
    const auto name = [&](std::size_t i) { return common::within(element, common::numbered("interior ring", i)); };
    const auto& rings = bg::interior_rings(polygon);
    std::vector<RegionCPtr> holes;
    for (auto ring = boost::begin(rings); ring != boost::end(rings); ++ring)
        holes.push_back(regionInside(*ring, name(holes.size())));
    common::setHoles(*region, holes, [&](std::size_t hole) {
        common::refuse(name(hole), "has a point in common with the exterior ring, and is no hole of a region then");
    });
    return region;
}

}  // namespace detail

/// A model of an open contour, any linestring, or of a closed one, any ring; in the model's direction, and closed as it
/// is.
/// Throws: gmContourDefs::BadParams as the views do; for a coordinate that the model's number does not hold exactly,
/// unless `rounding` says so; and for one that is out of range.
/// Cost: O(n).
template <class Geometry>
Geometry modelFrom(const gmContour& contour, gnInterop::Rounding rounding = gnInterop::eExact) {
    detail::checkPlane<Geometry>();
    static_assert(detail::isA<Geometry, bg::linestring_tag> || detail::isA<Geometry, bg::ring_tag>,
                  "a contour becomes a linestring or a ring");
    Geometry out;
    if constexpr (detail::isA<Geometry, bg::ring_tag>)
        detail::fillRing(contour, false, rounding, gnInterop::detail::unnamed, out);
    else
        detail::fillLineString(contour, rounding, out);
    return out;
}

/// A model of a region: any polygon, or a multi-polygon, which takes islands in holes as well.
/// Rounding may move outlines onto each other: ask `bg::is_valid` then.
/// Throws: gmContourDefs::BadParams as the views do, and for coordinates as above; gmBadPointer for an empty handle.
/// Cost: O(n), with outlines that come again counted as often as they come.
template <class Geometry>
Geometry modelFrom(const gmRegion& region, gnInterop::Rounding rounding = gnInterop::eExact) {
    detail::checkPlane<Geometry>();
    static_assert(detail::isA<Geometry, bg::polygon_tag> || detail::isA<Geometry, bg::multi_polygon_tag>,
                  "a region becomes a polygon or a multi-polygon; its outline alone, taken as a gmContour, a ring");
    Geometry out;
    if constexpr (detail::isA<Geometry, bg::multi_polygon_tag>) {
        gnInterop::detail::Nesting nesting;
        detail::addPolygons(nesting, region, rounding, "", out);
    } else {
        detail::checkHoles(region);
        detail::fillPolygon(region, rounding, gnInterop::detail::unnamed, out);
    }
    return out;
}

/// A multi-polygon of regions, in their order, each before the islands in its holes. Of a gmRegionSet give
/// `set.regions()`.
/// Deliberate: regions that overlap are not united. Boost takes the polygons of a multi-polygon for disjoint.
/// Throws: what modelFrom() of a region does, naming "region 2, hole 0, point 17".
/// Cost: O(n), with outlines that come again counted as often as they come.
template <class Geometry>
Geometry modelFrom(const std::vector<RegionCPtr>& regions, gnInterop::Rounding rounding = gnInterop::eExact) {
    detail::checkPlane<Geometry>();
    static_assert(detail::isA<Geometry, bg::multi_polygon_tag>, "regions become a multi-polygon");
    Geometry out;
    gnInterop::detail::Nesting nesting;
    for (std::size_t i = 0; i < regions.size(); ++i)
        detail::addPolygons(nesting, *regions[i], rounding, gnInterop::detail::numbered("region", i), out);
    return out;
}

/// The open contour of a linestring, the closed one of a ring; the points in their order, NaN and infinities as they
/// are.
/// Throws: gmContourDefs::BadParams for a ring that its type calls closed, and whose last point is not the first one
/// again; for a ring of fewer than 3 points besides that one; for a coordinate with more digits than a double; and
/// "label does not fit in 32 bits".
/// Cost: O(n).
template <class Geometry>
gmContour contourFrom(const Geometry& geometry, unsigned long label = 0) {
    static_assert(detail::isA<Geometry, bg::linestring_tag> || detail::isA<Geometry, bg::ring_tag>,
                  "a contour is made of a linestring or a ring");
    if constexpr (detail::isA<Geometry, bg::ring_tag>)
        return gmContour(detail::verticesOfRing(geometry, ""), true, label);
    else
        return gmContour(detail::verticesFrom(geometry, ""), false, label);
}

/// The region of a polygon; its interior rings become holes, in their order.
/// Throws: gmContourDefs::BadParams as contourFrom() does for each ring; and for an interior ring that has a point in
/// common with the exterior one, which Boost may allow and a region cannot hold.
/// Cost: O(n), and that of gmRegion::holes.
template <class Polygon>
gmRegion regionFrom(const Polygon& polygon) {
    static_assert(detail::isA<Polygon, bg::polygon_tag>, "a region is made of a polygon");
    return *detail::regionFrom(polygon, "");
}

/// The regions of the polygons of a multi-polygon, in their order.
/// Throws: what regionFrom() does, naming "polygon 2, interior ring 0, point 17".
/// Cost: as for regionFrom().
template <class MultiPolygon>
std::vector<RegionCPtr> regionsFrom(const MultiPolygon& polygons) {
    static_assert(detail::isA<MultiPolygon, bg::multi_polygon_tag>, "regions are made of a multi-polygon");
    std::vector<RegionCPtr> regions;
    for (auto polygon = boost::begin(polygons); polygon != boost::end(polygons); ++polygon)
        regions.push_back(detail::regionFrom(*polygon, gnInterop::detail::numbered("polygon", regions.size())));
    return regions;
}

}  // namespace gnBoostGeometry
