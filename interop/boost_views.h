// Our shapes as Boost sees them. Include boost_geometry.h, which says what for.
#pragma once

#include <boost/geometry/core/access.hpp>
#include <boost/geometry/core/closure.hpp>
#include <boost/geometry/core/coordinate_dimension.hpp>
#include <boost/geometry/core/coordinate_system.hpp>
#include <boost/geometry/core/coordinate_type.hpp>
#include <boost/geometry/core/cs.hpp>
#include <boost/geometry/core/exterior_ring.hpp>
#include <boost/geometry/core/interior_rings.hpp>
#include <boost/geometry/core/point_order.hpp>
#include <boost/geometry/core/ring_type.hpp>
#include <boost/geometry/core/tag.hpp>
#include <boost/geometry/core/tags.hpp>
#include <boost/iterator/iterator_facade.hpp>
#include <boost/mpl/int.hpp>
#include <cmath>
#include <cstddef>
#include <string>
#include <vector>

#include "cntr/contour.h"
#include "cntr/region.h"
#include "cntr/regionptr.h"
#include "interop/common.h"

namespace gnBoostGeometry {

namespace bg = boost::geometry;

namespace detail {

namespace common = gnInterop::detail;
using Vertices = std::vector<gmVector<2>>;

// In these `element()` makes the name that a refusal begins with: deep in a nest names are long, and few are asked for.

template <class Element>
void checkFinite(const Vertices& vertices, const Element& element) {
    for (std::size_t i = 0; i < vertices.size(); ++i)
        if (!std::isfinite(vertices[i].x()) || !std::isfinite(vertices[i].y()))
            common::refuse(common::within(element(), common::numbered("point", i)), "a coordinate is not finite");
}

inline void checkLineString(const gmContour& contour) {
    if (contour.isClosed())
        common::refuse("", "the contour is closed, which a linestring is not");
    checkFinite(contour.points(), common::unnamed);
}

template <class Element>
void checkCount(std::size_t count, const Element& element) {
    if (count < 3)
        common::refuse(element(), "a ring has 3 points at least, this one has " + std::to_string(count));
}

template <class Element>
void checkRing(const gmContour& contour, const Element& element) {
    if (!contour.isClosed())
        common::refuse(element(), "the contour is open, which a ring is not");
    checkCount(contour.points().size(), element);
    checkFinite(contour.points(), element);
}

/// A polygon has holes, and these have none.
inline void checkHoles(const gmRegion& region) {
    for (std::size_t i = 0; i < region.holes().size(); ++i)
        if (!region.holes()[i]->holes().empty())
            common::refuse(common::numbered("hole", i), "has holes of its own, which only a multi-polygon holds");
}

/// Calls visit(region, element) for the region and for every island in its holes, in theirs, and so on.
template <class Visit>
void visitPolygons(common::Nesting& nesting, const gmRegion& region, const std::string& name, const Visit& visit) {
    nesting.visit(region, name, [&](const gmRegion& outline, const common::Path& path) {
        if (path.size() % 2 == 0)
            visit(outline, [&] { return common::named(name, path); });
    });
}

}  // namespace detail

/// The vertices of an open contour, a const linestring. The contour outlives it, unchanged.
class LineStringView {
  public:
    using const_iterator = std::vector<gmVector<2>>::const_iterator;
    using iterator = const_iterator;

    /// Throws: gmContourDefs::BadParams for a closed contour and for a coordinate that is not finite.
    explicit LineStringView(const gmContour& contour) : vertices_(&contour.points()) {
        detail::checkLineString(contour);
    }
    explicit LineStringView(const gmContour&&) = delete;

    const_iterator begin() const { return vertices_->begin(); }
    const_iterator end() const { return vertices_->end(); }

  private:
    const std::vector<gmVector<2>>* vertices_;
};

/// Goes through an outline from its first vertex on, in its direction or against it.
class OutlineIterator
    : public boost::iterator_facade<OutlineIterator, const gmVector<2>, boost::random_access_traversal_tag> {
  public:
    OutlineIterator() = default;
    OutlineIterator(const std::vector<gmVector<2>>& vertices, bool isAgainst, std::size_t index)
        : vertices_(&vertices), isAgainst_(isAgainst), index_(static_cast<std::ptrdiff_t>(index)) {}

  private:
    friend class boost::iterator_core_access;

    const gmVector<2>& dereference() const {
        const auto index = static_cast<std::size_t>(index_);
        return (*vertices_)[isAgainst_ && index > 0 ? vertices_->size() - index : index];
    }
    bool equal(const OutlineIterator& other) const { return index_ == other.index_; }
    void increment() { ++index_; }
    void decrement() { --index_; }
    void advance(std::ptrdiff_t steps) { index_ += steps; }
    std::ptrdiff_t distance_to(const OutlineIterator& other) const { return other.index_ - index_; }

    const std::vector<gmVector<2>>* vertices_ = nullptr;
    bool isAgainst_ = false;
    std::ptrdiff_t index_ = 0;
};

/// The vertices of a closed contour, or of the outline of a region, from the first one on: a const ring, clockwise and
/// without the first vertex at the end. The contour outlives it, unchanged.
class RingView {
  public:
    using const_iterator = OutlineIterator;
    using iterator = const_iterator;

    /// Throws: gmContourDefs::BadParams for an open contour, fewer than 3 vertices, a coordinate that is not finite.
    /// Cost: O(n).
    explicit RingView(const gmContour& contour) : RingView(contour, bg::clockwise, gnInterop::detail::unnamed) {}
    explicit RingView(const gmContour&&) = delete;

    const_iterator begin() const { return {*vertices_, isAgainst_, 0}; }
    const_iterator end() const { return {*vertices_, isAgainst_, vertices_->size()}; }

  private:
    friend class PolygonView;

    template <class Element>
    RingView(const gmContour& contour, bg::order_selector order, const Element& element)
        : vertices_(&contour.points()) {
        detail::checkRing(contour, element);
        const double area = gnInterop::detail::twiceSignedArea(*vertices_);
        isAgainst_ = order == bg::clockwise ? area > 0.0 : area < 0.0;
    }

    const std::vector<gmVector<2>>* vertices_;
    bool isAgainst_ = false;
};

/// A region with its holes, a const polygon with interior rings. The region and its holes outlive it, unchanged.
class PolygonView {
  public:
    /// Throws: gmContourDefs::BadParams as a RingView does, for outline and holes; and for a hole that has holes, which
    /// MultiPolygonView takes. gmBadPointer for an empty handle.
    /// Cost: O(n).
    explicit PolygonView(const gmRegion& region) : PolygonView(region, gnInterop::detail::unnamed) {
        detail::checkHoles(region);
    }
    explicit PolygonView(const gmRegion&&) = delete;

    const RingView& outer() const { return outer_; }
    const std::vector<RingView>& inners() const { return inners_; }

  private:
    friend class MultiPolygonView;
    friend struct bg::traits::exterior_ring<PolygonView>;
    friend struct bg::traits::interior_rings<PolygonView>;

    template <class Element>
    PolygonView(const gmRegion& region, const Element& element)
        : outer_(region, bg::clockwise, [&] { return gnInterop::detail::within(element(), "outline"); }) {
        for (std::size_t i = 0; i < region.holes().size(); ++i)
            inners_.push_back(RingView(*region.holes()[i], bg::counterclockwise, [&] {
                return gnInterop::detail::within(element(), gnInterop::detail::numbered("hole", i));
            }));
    }

    RingView outer_;
    std::vector<RingView> inners_;
};

/// Regions with their holes, and the islands in these as polygons of their own: a const multi-polygon. It keeps the
/// regions of a list; they are not to change.
/// Deliberate: regions that overlap are not united. Boost takes the polygons of a multi-polygon for disjoint.
class MultiPolygonView {
  public:
    using const_iterator = std::vector<PolygonView>::const_iterator;
    using iterator = const_iterator;

    /// Of a gmRegionSet: `MultiPolygonView(set.regions())`.
    /// Throws: gmContourDefs::BadParams as a PolygonView does, for holes that hold each other in a circle, and for more
    /// than gnInterop::mostRepeats outlines that come again; gmBadPointer for an empty handle.
    /// Cost: O(n), with outlines that come again counted as often as they come.
    explicit MultiPolygonView(const std::vector<RegionCPtr>& regions) : regions_(regions) {
        gnInterop::detail::Nesting nesting;
        for (std::size_t i = 0; i < regions_.size(); ++i)
            add(nesting, *regions_[i], gnInterop::detail::numbered("region", i));
    }
    /// Of one region, which outlives it.
    explicit MultiPolygonView(const gmRegion& region) {
        gnInterop::detail::Nesting nesting;
        add(nesting, region, "");
    }
    explicit MultiPolygonView(const gmRegion&&) = delete;

    const_iterator begin() const { return polygons_.begin(); }
    const_iterator end() const { return polygons_.end(); }

  private:
    void add(gnInterop::detail::Nesting& nesting, const gmRegion& region, const std::string& name) {
        detail::visitPolygons(nesting, region, name, [&](const gmRegion& outline, const auto& element) {
            polygons_.push_back(PolygonView(outline, element));
        });
    }

    std::vector<RegionCPtr> regions_;
    std::vector<PolygonView> polygons_;
};

}  // namespace gnBoostGeometry

// What Boost asks of a type that it did not make.
namespace boost::geometry::traits {

template <>
struct tag<gmVector<2>> {
    using type = point_tag;
};
template <>
struct coordinate_type<gmVector<2>> {
    using type = double;
};
template <>
struct coordinate_system<gmVector<2>> {
    using type = cs::cartesian;
};
template <>
struct dimension<gmVector<2>> : boost::mpl::int_<2> {};
template <>
struct access<gmVector<2>, 0> {
    static double get(const gmVector<2>& point) { return point.x(); }
    static void set(gmVector<2>& point, double x) { point = gmVector<2>(x, point.y()); }
};
template <>
struct access<gmVector<2>, 1> {
    static double get(const gmVector<2>& point) { return point.y(); }
    static void set(gmVector<2>& point, double y) { point = gmVector<2>(point.x(), y); }
};

template <>
struct tag<gnBoostGeometry::LineStringView> {
    using type = linestring_tag;
};

template <>
struct tag<gnBoostGeometry::RingView> {
    using type = ring_tag;
};
template <>
struct point_order<gnBoostGeometry::RingView> {
    static const order_selector value = clockwise;
};
template <>
struct closure<gnBoostGeometry::RingView> {
    static const closure_selector value = open;
};

template <>
struct tag<gnBoostGeometry::PolygonView> {
    using type = polygon_tag;
};
template <>
struct ring_mutable_type<gnBoostGeometry::PolygonView> {
    using type = gnBoostGeometry::RingView&;
};
template <>
struct ring_const_type<gnBoostGeometry::PolygonView> {
    using type = const gnBoostGeometry::RingView&;
};
template <>
struct interior_mutable_type<gnBoostGeometry::PolygonView> {
    using type = std::vector<gnBoostGeometry::RingView>&;
};
template <>
struct interior_const_type<gnBoostGeometry::PolygonView> {
    using type = const std::vector<gnBoostGeometry::RingView>&;
};
template <>
struct exterior_ring<gnBoostGeometry::PolygonView> {
    static gnBoostGeometry::RingView& get(gnBoostGeometry::PolygonView& polygon) { return polygon.outer_; }
    static const gnBoostGeometry::RingView& get(const gnBoostGeometry::PolygonView& polygon) { return polygon.outer_; }
};
template <>
struct interior_rings<gnBoostGeometry::PolygonView> {
    static std::vector<gnBoostGeometry::RingView>& get(gnBoostGeometry::PolygonView& polygon) {
        return polygon.inners_;
    }
    static const std::vector<gnBoostGeometry::RingView>& get(const gnBoostGeometry::PolygonView& polygon) {
        return polygon.inners_;
    }
};

template <>
struct tag<gnBoostGeometry::MultiPolygonView> {
    using type = multi_polygon_tag;
};

}  // namespace boost::geometry::traits
