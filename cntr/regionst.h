#pragma once

#include <cstdint>
#include <vector>

#include "cntr/defs.h"
#include "cntr/detail/regionsetcaches.h"
#include "cntr/export.h"
#include "cntr/region.h"
#include "cntr/regionptr.h"

/// An ordered list of shared regions.
///
/// The set has no geometry of its own: it asks its regions and remembers what comes of it. It takes them as independent
/// pieces: where two overlap, both count. regularize() and outerHull() splice regions whose outlines meet into one
/// outline and clean that up. That is no union: what the spliced outline runs around twice is outside afterwards.
///
/// **Order** is part of the value: sets of the same regions in another order are not equal. Regions may be in a set
/// twice.
///
/// **Regions are not to change** once they are in a set. Deliberate: nothing stops an application that holds one for
/// writing, and what the set remembers then stays what it was.
///
/// **Empty handles** may be put into a set. Whatever comes to one throws gmBadPointer.
///
/// **considerHoles** is as for gmRegion. **Units, ties, caches, numbers** are as for gmContour. Queries fill caches of
/// the regions as well: sets and regions that share regions or holes belong to one thread at a time.
///
/// **Notification.** A set that reports its changes (gmPersistent::reportChanges) also does so each time area,
/// centerOfMass, inertiaMatrix or encloseRect has computed something, and not when it is remembered.
///
///     const gmRegionSet parts({RegionCPtr(new gmRegion({{0, 0}, {2, 0}, {2, 2}, {0, 2}})),
///                              RegionCPtr(new gmRegion({{5, 0}, {7, 0}, {7, 2}, {5, 2}}))});
///     double material = parts.area(true);                                           // 8
///     gmVector<2> balance = parts.centerOfMass(true);                               // (3.5, 1)
class MOKCNTR_API gmRegionSet : public virtual gmPersistent, public virtual gmRepBase {
  public:
    // ----- Model: regionst.cpp

    /// A set of these regions, in this order. Without arguments: the empty set.
    ///
    /// Regions that cross themselves or each other are kept (eKeep), or replaced by the set's outer hull (eOuterHull)
    /// or by its regularised form (eRegularize); any other mode keeps them.
    /// Throws: what outerHull() and regularize() do.
    explicit gmRegionSet(const std::vector<RegionCPtr>& regions = {},
                         gmContourDefs::IntersectionMode mode = gmContourDefs::eKeep);
    explicit gmRegionSet(const std::vector<gmPtrHandle<gmRegion>>& regions,
                         gmContourDefs::IntersectionMode mode = gmContourDefs::eKeep);

    /// Shares the regions and the remembered result sets, and copies everything else, filled caches included.
    /// Assignment is no change that is reported or cleaned up after.
    gmRegionSet(const gmRegionSet& other);
    gmRegionSet& operator=(const gmRegionSet& other);
    ~gmRegionSet() override;

    /// True when there are as many regions in both and each equals its counterpart, see gmRegion::operator==: the
    /// holes are not compared.
    /// Throws: gmBadPointer for an empty handle in a pair that is compared.
    bool operator==(const gmRegionSet& other) const;
    bool operator!=(const gmRegionSet& other) const { return !(*this == other); }

    /// The regions. A copy of the list: new handles to the same regions.
    std::vector<RegionCPtr> regions() const { return regions_; }
    /// Replaces the regions, drops every cache and applies the mode as a constructor does. When that fails, the new
    /// list is in place.
    void regions(const std::vector<RegionCPtr>& regions, gmContourDefs::IntersectionMode mode = gmContourDefs::eKeep);
    void regions(const std::vector<gmPtrHandle<gmRegion>>& regions,
                 gmContourDefs::IntersectionMode mode = gmContourDefs::eKeep);
    /// Adds a region at the end, drops every cache and applies the mode. When that fails, the region is added.
    void add(const RegionCPtr& region, gmContourDefs::IntersectionMode mode = gmContourDefs::eKeep);

    /// How many results of encloseRect are kept (and one more). 3 unless set. Lowering it drops nothing that is kept
    /// already. An observer of changes already sees the new number.
    long cachedVectorSize() const { return cachedVectorSize_; }
    /// Throws: gmContourDefs::BadParams for a negative number (without a message) and for one that does not fit in 32
    /// bits; nothing is changed then.
    void cachedVectorSize(long size);

    // ----- Measures: regionst_measures.cpp. A region's own errors pass through, and then the set remembers nothing.

    /// The sum of the regions' areas, in square coordinate units; 0 for an empty set.
    /// Cost: that of the regions' areas, later O(1).
    double area(bool considerHoles) const;

    /// The mean of the regions' centres of mass, weighted by their areas; (0, 0) unless the sum of these is more than
    /// 1e-15 in magnitude.
    /// Deliberate: a region with holes answers its centre with holes only once (see gmRegion::centerOfMass), and (0, 0)
    /// after that. So it counts as if it lay at the origin when it was asked before, by anybody: by another set, by
    /// this one before a region was added or inertiaMatrix(true) was refused, or as the same region earlier in it.
    /// Throws: gmContourDefs::EmptyRegionSet.
    /// Cost: that of the regions' centres, later O(1).
    gmVector<2> centerOfMass(bool considerHoles) const;

    /// The second moments of the regions together, about their common centre, see gm_InertiaData::operator+.
    /// Throws: gmContourDefs::EmptyRegionSet; with `considerHoles`, what gmRegion::inertiaMatrix does of holes.
    /// Cost: that of the regions' moments, later O(1).
    gmMatrix<2> inertiaMatrix(bool considerHoles) const;

    /// Whether the point is inside one of the regions; false for an empty set. Regions after the first that holds
    /// it are not asked.
    /// Cost: that of gmRegion::inside for the first question of a set, and for the first after a region that handles
    /// share was changed anywhere in the process. The second makes a tree of the regions' boxes, O(n log n) in their
    /// number n; from then on O(log n), and gmRegion::inside for the regions whose box holds the point. Up to 8 regions
    /// are always asked one by one.
    bool inside(const gmVector<2>& point, bool considerHoles) const;

    /// The smallest of the regions' distances from the point, see gmRegion::distToPoint; +infinity when none is a
    /// number.
    /// Throws: gmContourDefs::EmptyRegionSet.
    /// Cost: as for inside(), with the distances of the few regions whose boxes are nearest; with `insideIsZero` from
    /// the third question on.
    double distToPoint(const gmVector<2>& point, bool vertexOnly, bool considerHoles, bool insideIsZero) const;

    /// The axis-aligned bounding box of the regions' mapped outlines, in the frame that the transform maps to.
    /// Deliberate: remembered transforms are told apart as in gmContour::encloseRect.
    /// Throws: gmContourDefs::EmptyRegionSet.
    /// Cost: gmContour::encloseRect for each region; O(1) for transforms that are remembered, see cachedVectorSize. One
    /// with a NaN is not.
    gmRect encloseRect(const gmXform<2>& xform) const;

    // ----- Clean-up: regionst_topology.cpp

    /// Whether a region's outline crosses itself, or has a point in common with that of another region, as
    /// gmContour::intersections finds them: touching is enough. False for an empty set. Holes are not looked at, and an
    /// outline that lies wholly inside another is no crossing.
    /// Throws: gmBadPointer; gmContourDefs::EmptyContour for a region without a vertex that has others behind it.
    /// Deliberate: when it fails part-way, what was found so far is the answer from then on, for regularize() and
    /// outerHull() as well.
    /// Cost: that of gmContour::isSelfIntersecting for each region and of gmContour::intersections for each pair; later
    /// O(1).
    bool isSelfIntersecting() const;

    /// Makes `out` the set in which regions whose outlines meet are spliced into one, and every region is regularised,
    /// see gmRegion::regularize. Of a set that does not cross itself, a copy. `out` may be this set.
    /// Deliberate: spliced regions have no holes and label 0, and what both held before may be outside of what becomes
    /// of them. Each region is compared once with those behind it, in order; when two are spliced the last of the list
    /// takes the place of the second and is not compared with the first, so that crossings may be left. A result
    /// that was computed has a cachedVectorSize of 3.
    /// Throws: gmBadPointer; gmContourDefs::EmptyContour for a region without vertices; gmContourDefs::BadParams
    /// "invalid contour" when a region cannot be cleaned up. `out` is as it was then.
    /// Cost: that of isSelfIntersecting() and of gmRegion::regularize for each region, and of splicing; later that of a
    /// copy.
    void regularize(gmRegionSet& out) const;

    /// The same with gmRegion::outerHull for every region.
    void outerHull(gmRegionSet& out) const;

    // ----- Drawing: draw.cpp

    /// Has every region draw itself, in order. Plain regions draw nothing.
    /// Throws: gmBadPointer at an empty handle; the regions before it are drawn by then.
    void draw(gmUITablet& tablet, const gmColor& color, const gmUITablet::Layers& layers) const;

    // ----- Archives: persist.cpp

    /// A new, empty set, for the registry.
    static gmPersistent* make();
    static gm_Instantiator sExemplar;

  protected:
    void dispatchSerialize(gmArchive& archive) override;
    /// The content of the version: 1 is written, 0 read as well.
    virtual void serialize_(gmArchive& archive, unsigned char version);

    /// For sets that carry data with their regions: called after the regions were set, and by whoever set the data.
    /// They do nothing here.
    virtual void makeDataConsistentWithPoints();
    virtual void makePointsConsistentWithData();

    /// Says that the set changes, to the observer of gmPersistent if it reports its changes, and drops every cache.
    virtual void cleanCacheInfo();

    /// Replaces the regions and does nothing else: dropping the caches is up to the caller.
    void setRegions(const std::vector<RegionCPtr>& regions);

    /// Throws: gmContourDefs::EmptyRegionSet for an empty set.
    void checkEmptyRegionSet() const;

  private:
    void applyMode(gmContourDefs::IntersectionMode mode);
    /// What knows where the regions are, or null where each has to be asked.
    const detail::RegionIndex* index() const;
    std::vector<std::size_t> regionsAround(const gmVector<2>& point, const detail::RegionIndex& index) const;
    /// Has the first `count` regions asked for their box.
    void askUpTo(std::size_t count) const;
    template <class Value, class Compute>  // for regionst_measures.cpp alone
    Value remembered(detail::Cached<Value>& slot, Compute compute) const;
    void cleanUp(detail::Cached<gmPtrHandle_const<gmRegionSet>>& cache, bool hull, gmRegionSet& out) const;
    void outerHullRegularize(gmRegionSet& out, bool hull) const;

    std::vector<RegionCPtr> regions_;
    std::int32_t cachedVectorSize_ = 3;
    mutable detail::RegionSetCaches caches_;
};
