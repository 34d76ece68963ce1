#pragma once

#include <cstdint>
#include <optional>
#include <vector>

#include "cntr/defs.h"
#include "cntr/detail/contourcaches.h"
#include "cntr/export.h"
#include "foundation/display/uitablet.h"
#include "foundation/math/angle.h"
#include "foundation/math/vector.h"
#include "foundation/math/xform.h"
#include "foundation/object/instantiator.h"
#include "foundation/object/persistent.h"
#include "foundation/object/repbase.h"
#include "foundation/shapes/circle.h"
#include "foundation/shapes/ellipse.h"
#include "foundation/shapes/lineseg.h"
#include "foundation/shapes/polygon.h"
#include "foundation/shapes/rect.h"

namespace detail {
struct Crossed;
}

/// An ordered list of vertices in the plane, open (a polyline) or closed (the last vertex joins the first), with a
/// label.
///
/// **Edges.** A closed contour of n vertices has n edges: edge 0 is the closing edge, from vertex n-1 to vertex 0, and
/// edge k joins vertex k-1 to vertex k. An open one has n-1 edges: edge k joins vertex k to vertex k+1. Every query
/// visits the edges, and every edge number counts them, in this order. An edge whose ends agree to 1e-15 in both
/// coordinates is degenerate: it keeps its number, and the contour is never crossed there.
///
/// **Degenerate contours** are contours: without vertices, with one, with repeated ones, crossing themselves. What a
/// query makes of them is said at the query; without any vertex most throw gmContourDefs::EmptyContour.
///
/// **Units.** Lengths and positions are in coordinate units, whatever the application's are (pixels, millimetres);
/// angles in radians. Tolerances are absolute and suit both (see docs/architecture.md).
///
/// **Ties.** Of equal candidates the first in vertex or edge order wins.
///
/// **Caches.** A query whose cost is less later keeps its answer until the vertices or the closedness change. Queries
/// are const and yet fill these caches: one contour belongs to one thread at a time, also one that another is asked
/// about. Different contours are independent.
///
/// **Cost of searches.** The first question that searches the edges looks at all of them, O(n); the second builds a
/// tree of boxes in O(n), and from then on a question costs O(log n) and what it finds, for outlines whose edges are
/// short beside the whole; at the worst O(n) again. What asks as much as there are edges builds it at once. Up to 32
/// vertices, and with coordinates that are not finite or beyond 1e150, all are looked at. Answers are the same in each
/// case, to the bit (docs/architecture.md tells why).
///
/// **Numbers.** Vertices are stored as given. NaN and infinite coordinates never crash a query and never disturb later
/// answers; what they come to is said at the query. Places more than about 1e154 apart have no finite distance.
///
///     const gmContour contour({{0, 0}, {4, 0}, {4, 3}}, true);
///     double around = contour.length();                                            // 12
///     gmVector<2> near = contour.closestPoint({2, -1}, false);                      // (2, 0)
///     gmRect box = contour.encloseRect(gmXform<2>::I);                              // 4 x 3 at (0, 0)
///     double widest = contour.diameter(gmContourDefs::eMaxVertexPair);              // 5
class MOKCNTR_API gmContour : public virtual gmPersistent, public virtual gmRepBase {
  public:
    // ----- Model: contour.cpp

    /// An empty, closed contour with label 0.
    gmContour();
    /// A contour of these vertices, unchecked.
    /// Throws: gmContourDefs::BadParams "label does not fit in 32 bits".
    gmContour(const std::vector<gmVector<2>>& points, bool closed, unsigned long label = 0);
    /// The vertices of the polygon; closed when the first and the last agree to 1e-15. An empty polygon gives an empty,
    /// closed contour.
    /// Deliberate: a repeated closing vertex is kept, and the closing edge then is degenerate.
    /// Throws: gmContourDefs::BadParams "label does not fit in 32 bits".
    explicit gmContour(const gmPolygon& polygon, unsigned long label = 0);
    /// Copies everything, filled caches included, unless the other sees a closing edge and this does not (as a region
    /// does of an open outline). Assignment is no change that is reported or cleaned up after: what a derived class
    /// remembers of its own is that class's to assign.
    gmContour(const gmContour& other);
    gmContour& operator=(const gmContour& other);
    ~gmContour() override;

    /// True when closedness, vertices (exactly) and cachedVectorSize are equal.
    /// Deliberate: the label is not compared, and cachedVectorSize is.
    bool operator==(const gmContour& other) const;
    bool operator!=(const gmContour& other) const { return !(*this == other); }

    const std::vector<gmVector<2>>& points() const { return points_; }
    /// Replaces the vertices and drops every cache.
    virtual void points(const std::vector<gmVector<2>>& points);

    virtual bool isClosed() const { return closed_; }
    /// Closes or opens the contour and drops every cache. An observer of its changes already sees the new state.
    virtual void isClosed(bool closed);

    unsigned long label() const { return label_; }
    /// Throws: gmContourDefs::BadParams "label does not fit in 32 bits".
    void label(unsigned long label);

    /// How many results of encloseRect, and as many of extremalVertexIndex, are kept (and one more of each). 3 unless
    /// set. Lowering it drops nothing that is kept already.
    long cachedVectorSize() const { return cachedVectorSize_; }
    /// Throws: gmContourDefs::BadParams for a negative number (without a message) and for one that does not fit in 32
    /// bits; nothing is changed then.
    void cachedVectorSize(long size);

    /// The sum of the edge lengths, in coordinate units; 0 without an edge.
    /// Cost: O(n), later O(1).
    double length() const;

    /// The mean of the edges' midpoints, weighted by the edges' lengths.
    /// Deliberate: NaN for a contour whose vertices are all at one place.
    /// Throws: gmContourDefs::EmptyContour for fewer than 2 vertices.
    /// Cost: O(n), later O(1).
    gmVector<2> meanPosition() const;

    /// The vertices as a polygon, even-odd filled; a closed contour's with the first vertex once more at the end.
    gmPolygon polygon() const;

    /// Makes `out` a contour of the mapped vertices, with this one's closedness and label. `out` may be this contour.
    /// Deliberate: its cachedVectorSize becomes 3, whatever either had.
    /// Cost: O(n).
    void map(const gmXform<2>& xform, gmContour& out) const;

    /// The edges as segments, one an edge. Those of degenerate edges are default segments.
    /// Cost: O(n), later O(1).
    const std::vector<gmLineSeg>& lineSegs() const;
    /// Which edges are not degenerate.
    const std::vector<bool>& validLine() const;
    /// Fills what lineSegs() and validLine() read, unless it is there.
    void computeLineSegs() const;

    /// Throws: gmContourDefs::EmptyContour for fewer than 2 vertices.
    void checkEmptyContour() const;

    // ----- Proximity: contour_proximity.cpp. All throw gmContourDefs::EmptyContour without a vertex.

    /// The point of the contour nearest to `point`; with `vertexOnly`, the nearest vertex.
    /// A zero-length edge is its start.
    /// Ties: the first edge, so on a closed contour the closing edge; the first vertex.
    /// Deliberate: (0, 0) when there is no edge (an open contour of one vertex) or no distance is finite; with
    /// `vertexOnly`, vertex 0 then.
    /// Cost: a search.
    gmVector<2> closestPoint(const gmVector<2>& point, bool vertexOnly) const;

    /// The index of the vertex nearest to `point`; 0 when no distance is finite.
    /// Ties: the lowest index.
    /// Cost: a search.
    long closestVertexIndex(const gmVector<2>& point) const;

    /// The distance from `point` to closestPoint(point, vertexOnly).
    double distToPoint(const gmVector<2>& point, bool vertexOnly) const;

    /// The indices of all vertices closer to `point` than `tolerance` (coordinate units).
    /// Order: by square cell of that size (x, then y), by index within a cell. Only nearby cells are looked at. By
    /// index alone where there are no cells: for a tolerance that is infinite or has no finite reciprocal.
    /// Tolerance: strict; none is closer than 0 or NaN. With +infinity every vertex at a finite distance is near.
    /// Cost: a search, whatever the tolerance, and O(m) for m vertices found.
    std::vector<int> vertexIndex(const gmVector<2>& point, double tolerance) const;

    // ----- Intersections: contour_intersections.cpp

    /// Where the segment crosses the contour, from the segment's start to its end.
    /// Edges parallel to the segment yield nothing, also where they lie on it. A crossing at a vertex is listed for
    /// each of its two edges. Without `includeEndpointEdges`, edges within 1e-6 of an end of the segment are left out.
    /// Tolerance: a crossing lies within 1e-6 of both (strictly), and the bounding boxes of both meet: a segment that
    /// ends just short of a level edge does not reach it.
    /// Ties: crossings at the same place along the segment stand as an exchange sort leaves them.
    /// Throws: gmContourDefs::EmptyContour without a vertex.
    /// Cost: a search, and O(m log m) for m crossings, O(m * m) with ties.
    std::vector<gmVector<2>> intersections(const gmLineSeg& seg, bool includeEndpointEdges) const;

    /// Where the edges of `other`, each in its direction and all in their order, cross this contour. Duplicates are
    /// kept, and degenerate edges of `other` are asked like any other.
    /// Throws: gmContourDefs::EmptyContour when this contour has no vertex.
    /// Cost: O(n) for the trees of both, and that of the edges that come close.
    std::vector<gmVector<2>> intersections(const gmContour& other) const;

    /// Whether an edge meets another that does not touch its ends. A vertex on another edge counts; edges that lie on
    /// each other do not, nor does what happens within 1e-6 of an edge's ends (seen from that edge).
    /// Deliberate: false, not an error, without a vertex.
    /// Cost: O(n), and that of the edges that come close to each other; later O(1).
    bool isSelfIntersecting() const;

    // ----- Extent: contour_extent.cpp. Except for the circles, all throw gmContourDefs::EmptyContour without a vertex.

    /// The axis-aligned bounding box of the mapped vertices, in the frame that the transform maps to.
    /// Vertices with a NaN take no part.
    /// Cost: a search; O(1) for transforms that are remembered, see cachedVectorSize. One that holds a NaN is not.
    /// Deliberate: of the transform's stored values the last (row 1, column 1 of the matrix) takes no part in telling
    /// remembered transforms apart. The identity, a mirror image in y and a scaling of y alone share one answer, which
    /// the intersection queries read too: ask for such transforms on a copy.
    gmRect encloseRect(const gmXform<2>& xform) const;

    /// The circle that the mode describes, see gmContourDefs::DiameterMode.
    /// Ties: the first pair.
    /// Deliberate: the default circle when no two vertices are apart (eMaxVertexPair).
    /// Throws: gmContourDefs::BadParams "diameterMode is not one of the valid enums"; gmContourDefs::EmptyContour
    /// without a vertex (eFromFirstVertex).
    /// Cost: eMaxVertexPair O(n) for the tree and little more, O(n * n) at the worst; eFromFirstVertex O(n); later
    /// O(1).
    gmCircle encloseCircle(gmContourDefs::DiameterMode mode) const;

    /// Twice the radius of encloseCircle(mode).
    double diameter(gmContourDefs::DiameterMode mode) const;

    /// The index of the vertex farthest in the direction `angle`; -1 when none has a place along it: NaN coordinates,
    /// or an angle that is not finite. Along an axis the coordinate itself decides.
    /// Ties: the lowest index.
    /// Cost: a search; O(1) for angles that are remembered, see cachedVectorSize. NaN is not.
    long extremalVertexIndex(const gmRadian& angle) const;

    /// That vertex.
    /// Throws: gmContourDefs::BadParams "no extremal vertex" when there is none.
    gmVector<2> extremalVertexPosition(const gmRadian& angle) const;

    /// Makes `hull` the region of the vertices of the convex hull, see gfConvexHull. `hull` may be this contour.
    /// That it changes is not reported, as with assignment.
    /// Cost: O(n log n), later that of a copy.
    void convexHull(gmRegion& hull) const;

    /// The least-squares ellipse of the vertices and its residual, see gf_FitEllipse.
    /// Cost: O(n), later O(1).
    void fitEllipse(gmEllipse& ellipse, double& residual) const;

    // ----- Drawing: draw.cpp

    /// Draws every edge, in edge order, as a segment from its first vertex to its second.
    /// Deliberate: the mode makes no difference.
    virtual void draw(gmUITablet& tablet, gmContourDefs::DrawMode mode, const gmColor& color,
                      const gmUITablet::Layers& layers) const;

    // ----- Archives: persist.cpp

    /// A new, empty contour, for the registry.
    static gmPersistent* make();
    static gm_Instantiator sExemplar;

  protected:
    /// Replaces the vertices and drops every cache, without a word to the data that goes with them.
    void setPoints(const std::vector<gmVector<2>>& points);

    /// The median of the edge lengths (of an even number, the upper of the two in the middle); 0 without an edge.
    /// Throws: gmContourDefs::EmptyContour without a vertex.
    /// Cost: O(n), later O(1).
    double medianFeatureSize() const;

    /// The crossings of intersections(seg, includeEndpointEdges), and in `edgeIndex` the number of the edge of each.
    std::vector<gmVector<2>> intersections(const gmLineSeg& seg, std::vector<int>& edgeIndex,
                                           bool includeEndpointEdges) const;

    void dispatchSerialize(gmArchive& archive) override;
    /// The content of the version: 1 is written, 0 read as well.
    virtual void serialize_(gmArchive& archive, unsigned char version);
    /// The vertices and cachedVectorSize as they stood in archives before contours carried a label; that becomes 0.
    void archiveUnlabelled(gmArchive& archive);

  public:
    // ----- For derived classes: contour.cpp

    /// For contours that carry data with their vertices. The first is called after the vertices were set, and on what
    /// became the result of map(), convexHull() or a region's clean-up: what it throws passes through, with the new
    /// vertices in place. The second is called by whoever set the data. They do nothing here.
    virtual void makeDataConsistentWithPoints();
    virtual void makePointsConsistentWithData();

    /// Says that the contour changes, to the observer of gmPersistent if the object reports its changes, and drops
    /// every cache. Called by everything that changes vertices or closedness, except assignment.
    virtual void cleanCacheInfo();

  private:
    friend class gmRegion;  // it searches its outline

    const detail::Edges& edges() const;
    /// closestPoint(point, false), or nothing where there is none; there may be none when it is farther away.
    std::optional<gmVector<2>> closestPointWithin(double distance, const gmVector<2>& point) const;
    /// To be called after what a query sees has changed, or what the box of the identity is remembered by.
    void noteIfShared() const;
    /// encloseRect for the identity.
    const gmRect& identityBox() const;
    std::size_t edgeCount() const;
    /// What searches the edges for one question, and for many; null where looking at each is better.
    const detail::EdgeTree* treeForOne() const;
    const detail::EdgeTree* treeForMany() const;
    detail::Crossed crossed(const detail::EdgeTree* tree) const;
    bool isSearchable() const;
    gmRect computeBox(const gmXform<2>& xform) const;
    long computeExtremalVertex(const gmRadian& angle) const;
    void checkHasVertex() const;

    std::uint32_t label_ = 0;
    bool closed_ = true;
    std::vector<gmVector<2>> points_;
    std::int32_t cachedVectorSize_ = 3;
    mutable detail::ContourCaches caches_;
};
