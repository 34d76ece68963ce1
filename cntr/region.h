#pragma once

#include <vector>

#include "cntr/contour.h"
#include "cntr/detail/regioncaches.h"
#include "cntr/export.h"
#include "cntr/regionptr.h"
#include "foundation/math/matrix.h"

/// An area of the plane: a closed outline, which is its gmContour part, and any number of holes cut out of it.
///
/// **Holes** are regions themselves, shared through counted handles and never copied. A hole may have holes of its own:
/// what lies in an island inside a hole is inside the region again. That a hole does not meet the outline is checked
/// when it is set.
/// Deliberate: nothing else is; a hole may lie outside the outline, and holes may overlap each other.
/// Holes that hold each other in a circle are never freed: take one of them out again.
///
/// **considerHoles** says for each query whether the holes count. What concerns the outline alone is asked with false,
/// or with gmContour's own queries, which see the outline only.
///
/// **Always closed.** Every query sees the closing edge, also when the region was made from an open contour.
///
/// **Outlines that cross themselves** are kept, unless a constructor is told otherwise; regularize() and outerHull()
/// make outlines of them that touch themselves at most (docs/containment-and-clean-up.md shows how, and how far).
///
/// **Derived classes** construct the outline themselves, since it is a virtual base: one that only inherits the
/// constructors has no vertices.
///
/// **Units, ties, caches, numbers** are as for gmContour. Queries with holes fill caches of the holes as well: regions
/// that share a hole belong to one thread at a time. What changes inside a hole is not noticed by the regions that hold
/// it: their area and centre with holes stay what they were.
///
///     gmRegion plate({{0, 0}, {10, 0}, {10, 10}, {0, 10}});
///     plate.holes(std::vector<RegionCPtr>{RegionCPtr(new gmRegion({{4, 4}, {6, 4}, {6, 6}, {4, 6}}))});
///     double material = plate.area(true);                                           // 96
///     bool drilled = !plate.inside({5, 5}, true);                                   // true
///     double clearance = plate.distToPoint({5, 5}, false, true, false);             // 1
class MOKCNTR_API gmRegion : public virtual gmContour {
  public:
    // ----- Model: region.cpp

    /// A region of these vertices, with label 0 and without holes. Without arguments: the empty region.
    ///
    /// An outline that crosses itself is kept (eKeep), or replaced by its outer hull (eOuterHull) or by its regularised
    /// form (eRegularize), which have label 0; any other mode keeps it.
    /// Throws: what outerHull() and regularize() do.
    explicit gmRegion(const std::vector<gmVector<2>>& points = {},
                      gmContourDefs::IntersectionMode mode = gmContourDefs::eKeep);
    /// The same with the vertices and the label of a contour, open or closed.
    explicit gmRegion(const gmContour& contour, gmContourDefs::IntersectionMode mode = gmContourDefs::eKeep);
    /// The same with the vertices of a polygon.
    /// Deliberate: a repeated closing vertex is kept.
    explicit gmRegion(const gmPolygon& polygon, gmContourDefs::IntersectionMode mode = gmContourDefs::eKeep);

    /// Shares the holes and copies everything else, filled caches included. Assignment is no change that is reported or
    /// cleaned up after. A region may be assigned from one that only it keeps alive, like one of its own holes.
    /// Deliberate: whoever assigns to the gmContour part alone leaves the region its old measures and results.
    gmRegion(const gmRegion& other);
    gmRegion& operator=(const gmRegion& other);
    /// Lets go of the holes. However deep they are nested, the stack does not grow with them.
    ~gmRegion() override;

    using gmContour::operator==;
    using gmContour::operator!=;
    /// True when the outlines are equal as contours.
    /// Deliberate: the holes are not compared.
    bool operator==(const gmRegion& other) const;
    bool operator!=(const gmRegion& other) const { return !(*this == other); }

    const std::vector<RegionCPtr>& holes() const { return holes_; }
    /// Replaces the holes, in this order; an empty vector removes them all. Both vectors may be meant by a braced list:
    /// write its type, as in holes(std::vector<RegionCPtr>{...}). Every cache is dropped, and the change is
    /// reported, also when the new holes are refused; then the region keeps the old ones.
    /// Throws: gmBadPointer for an empty handle; gmContourDefs::BadParams "holes cannot intersect region" for a hole
    /// whose outline has a point in common with this one's, as gmContour::intersections finds them;
    /// gmContourDefs::EmptyContour for any hole when this region has no vertex.
    /// Cost: that of the intersections with each hole.
    void holes(const std::vector<RegionCPtr>& newHoles);
    void holes(const std::vector<gmPtrHandle<gmRegion>>& newHoles);

    /// Always true.
    bool isClosed() const override { return true; }
    /// Does nothing for true.
    /// Throws: gmContourDefs::RegionCannotBeSetOpen for false.
    void isClosed(bool closed) override;

    using gmContour::map;
    /// Makes `out` a region of the mapped vertices, with this one's label. `out` may be this region. An observer of its
    /// changes already sees the new vertices.
    /// Deliberate: the holes are not mapped, `out` ends without any; and its cachedVectorSize becomes 3.
    void map(const gmXform<2>& xform, gmRegion& out) const;

    // ----- Containment, distance, crossings: region_containment.cpp. Nothing of it is kept. All throw
    // gmContourDefs::EmptyContour when an outline that they ask has no vertex, and gmBadPointer for an empty handle.

    /// Whether the point is inside the outline and, with `considerHoles`, not inside a hole.
    ///
    /// A point is inside an outline when a ray from it crosses the outline an odd number of times; so a place that the
    /// outline runs around twice is outside. The ray passes between the vertices: of the directions from the point to
    /// all vertices, sorted from 0 on, it takes the middle of the first two neighbours that are more than pi / n apart.
    /// It is twice as long as the largest distance from the first vertex to another.
    /// Outside the bounding box no point is inside; one on its border is decided like any other.
    /// Tolerance: a point within 1e-6 of a vertex is inside. An edge within 1e-6 of the point is not counted: on which
    /// side of an edge a point lies that is so close is not to be relied on.
    /// With holes: a point on a hole's vertex is inside the hole and so outside the region.
    /// Deliberate: of an outline with a vertex that is NaN every point of the bounding box is inside.
    /// Throws: gmContourDefs::BadParams "holes form a cycle" when the answer for a hole would depend on itself.
    /// Cost: for each outline that is asked, a search within the bounding box and O(1) outside. For a point that is
    /// within 1e-5 or so of an edge, or so close to a vertex that it matters where the ray passes, and for outlines
    /// with a coordinate of 1e6 or more, O(n log n) at the worst.
    bool inside(const gmVector<2>& p, bool considerHoles) const;

    using gmContour::closestPoint;
    /// The boundary point nearest to `p`; with `vertexOnly`, the nearest vertex.
    /// Ties: the outline before the holes, these in their order.
    /// Deliberate: `considerHoles` is read for vertices only. The nearest boundary point may lie on a hole in any case.
    /// Cost: a search of the outline and of each hole.
    gmVector<2> closestPoint(const gmVector<2>& p, bool vertexOnly, bool considerHoles) const;

    using gmContour::closestVertexIndex;
    /// The index of the vertex nearest to `p`, in the outline (`holeIndex` -1) or in the hole `holeIndex`.
    /// Ties: the outline before the holes, these in their order.
    long closestVertexIndex(const gmVector<2>& p, bool considerHoles, long& holeIndex) const;

    using gmContour::distToPoint;
    /// The distance from `p` to closestPoint(p, vertexOnly, considerHoles); with `insideIsZero`, 0 for a point inside.
    double distToPoint(const gmVector<2>& p, bool vertexOnly, bool considerHoles, bool insideIsZero) const;

    /// The crossings with the outline alone, as those of any contour.
    std::vector<gmVector<2>> intersections(const gmContour& other) const { return gmContour::intersections(other); }
    std::vector<gmVector<2>> intersections(const gmLineSeg& seg, bool includeEndpointEdges) const {
        return gmContour::intersections(seg, includeEndpointEdges);
    }
    /// The crossings of `other` with the outline and then, with `considerHoles`, with each hole's outline, as
    /// gmContour::intersections lists them: neither sorted nor merged across outlines.
    std::vector<gmVector<2>> intersections(const gmContour& other, bool considerHoles) const;
    /// The same for a segment. Without `includeEndpointEdges`, edges within 1e-6 of an end of it are left out.
    std::vector<gmVector<2>> intersections(const gmLineSeg& seg, bool includeEndpointEdges, bool considerHoles) const;

    // ----- Measures: region_measures.cpp. All throw gmContourDefs::EmptyContour for an outline of fewer than 3
    // vertices; with holes, for that of a hole as well, and gmBadPointer for an empty handle. Cost: O(n), later O(1).

    /// The area that the outline encloses, in square coordinate units, never negative whichever way it runs; with
    /// `considerHoles`, less those of the holes.
    /// Deliberate: where the holes lie is not looked at, nor what holes they have themselves: overlapping holes count
    /// twice, islands not at all, and a hole larger than the outline makes the area negative.
    double area(bool considerHoles) const;

    /// The centre of mass, see gf_CenterOfMass; with `considerHoles`, that of the outline and the holes as negative
    /// masses.
    /// Deliberate: with holes only the first call computes. Every later one answers (0, 0) until the outline or the
    /// holes change: keep the first answer, or ask a region that is made for it. Without any area left there is no
    /// guard: the result is not finite.
    gmVector<2> centerOfMass(bool considerHoles) const;

    /// The second moments of the outline, see gm_InertiaData::inertiaMatrix.
    /// Throws: gmContourDefs::BadParams "inertiaMatrix(considerHoles) is not implemented" with `considerHoles` when
    /// there is a hole.
    gmMatrix<2> inertiaMatrix(bool considerHoles) const;

    // ----- Clean-up: region_topology.cpp

    /// Makes `out` the outer boundary of an outline that crosses itself, traced until it is back at its start. Where
    /// the boundary touches itself it passes more than once, so that a bow-tie becomes two triangles that share a
    /// vertex; an outline with many crossings gets many times as many vertices. Of an outline that does not cross
    /// itself, a copy of the region, with its holes. `out` may be this region. That it changes is not reported, as with
    /// assignment.
    /// Deliberate: a traced result has no holes, whatever the region had; its label is 0, its cachedVectorSize 3.
    ///
    /// Method: from an edge that meets its two neighbours and nothing else, and has nothing on one side (the closing
    /// edge is not tried), along the outline; at every crossing, turn into the crossing edge and go on in the other
    /// direction, until it is back. Of an outline that crosses itself in a few clear places that is all of it; one that
    /// winds around an area many times may come back early and lose large parts, and what comes of one that passes
    /// through its own vertices is not to be relied on. Vertices in the middle of straight sides stand in the way of a
    /// start: the edges on both sides of one are parallel, and do not meet.
    ///
    /// Throws: gmContourDefs::BadParams "invalid contour" when no edge qualifies as a start, or the trace never comes
    /// back to it; `out` is as it was.
    /// Cost: a search for each edge until there is a start, and for each traced vertex; later that of a copy.
    void regularize(gmRegion& out) const;

    /// The same, and then: the traced loop is cut apart where it touches itself (vertices closer than 1e-6), loops that
    /// lie inside others are dropped, loops that share a vertex are joined again, and the first of what is left is
    /// kept.
    /// Deliberate: others are lost.
    /// Cost: for a traced loop of m vertices that touches itself t times, O(t * m log m) more at the worst.
    void outerHull(gmRegion& out) const;

    // ----- Drawing: draw.cpp

    using gmContour::draw;
    /// Deliberate: draws nothing. The other draw draws the outline, and no operation the holes.
    virtual void draw(gmUITablet& tablet, const gmColor& color, const gmUITablet::Layers& layers) const;

    // ----- Archives: persist.cpp

    /// A new, empty region, for the registry.
    static gmPersistent* make();
    static gm_Instantiator sExemplar;

  protected:
    /// Throws: gmContourDefs::EmptyContour for fewer than 3 vertices.
    void checkEmptyContour() const;

    void cleanCacheInfo() override;

    /// For destructors: lets go of the holes of a region that ends. The regions that end with them hand their own holes
    /// over to the outermost one, which goes on until there are none: nesting costs no stack.
    static void releaseHoles(std::vector<RegionCPtr>& holes);

    void dispatchSerialize(gmArchive& archive) override;
    /// The content of the version: 1 is written, 0 read as well.
    void serialize_(gmArchive& archive, unsigned char version) override;

  private:
    friend class gmContour;    // its hull is a result
    friend class gmRegionSet;  // it splices

    /// Takes a result over, and has the data of a derived class follow the new vertices.
    void become(const gmRegion& result);
    void applyMode(gmContourDefs::IntersectionMode mode);

    /// How often a ray from `p` crosses the outline; with `bothDirections`, the smaller count of it and the opposite
    /// ray. 1 for a point on a vertex.
    long insideCount(const gmVector<2>& p, bool bothDirections) const;
    /// The box of the outline and the holes; not a tame one when it is not everything that queries look at.
    detail::Extent extentWithHoles() const;
    /// The distance to closestPoint(p, false, ...), or infinity where that is farther than `limit`.
    double leastDistance(const gmVector<2>& p, double limit) const;
    bool isInBox(const gmVector<2>& p) const;
    bool isOnVertex(const gmVector<2>& p) const;
    bool insideOutline(const gmVector<2>& p) const;
    /// inside(p, true) for a point inside the outline.
    bool insideNested(const gmVector<2>& p) const;

    void cleanUp(detail::Cached<RegionCPtr>& cache, bool outerHullOnly, gmRegion& out) const;
    void outerHullRegularize(gmRegion& out, bool outerHullOnly) const;
    std::size_t boundaryStart() const;
    std::vector<gmVector<2>> traceBoundary(std::size_t start) const;

    /// Makes `out` one outline that runs around this region from a crossing with the other, and then around the other.
    /// Throws: gmContourDefs::BadParams "spliced regions do not intersect".
    void splice(const gmRegion& other, gmRegion& out) const;

    std::vector<RegionCPtr> holes_;
    mutable detail::RegionCaches caches_;
};
