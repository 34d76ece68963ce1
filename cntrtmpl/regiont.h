#pragma once

#include <initializer_list>
#include <vector>

#include "cntr/export.h"
#include "cntr/region.h"
#include "cntrtmpl/contourt.h"

/// A region with an edge point at every vertex of its outline: gmRegionT<gmEdgelet>, which is the only one.
///
/// It is a gmRegion and a gmContourT<gmEdgelet> at once, with one outline: see there for its queries, and for how
/// points and data follow each other.
///
/// **Two lists of holes.** The holes with edge points are held beside the plain ones of gmRegion, and setting either
/// list leaves the other alone.
/// Deliberate: area, containment and every other query of gmRegion see the plain holes only. To cut holes out, hand the
/// same regions over as plain ones too; that makes the data anew, so give the data afterwards.
///
/// **Results.** gmRegion::map, gmContour::convexHull, gmRegion::regularize and gmRegion::outerHull with this region as
/// their result make the data anew, as gmContour::map does for a gmContourT, and leave the holes with edge points
/// alone. A region that does not cross itself, cleaned up into itself, stays as it is.
///
/// Deliberate: an archive holds the outline and the plain holes. What comes back has no data and no transform: assign a
/// region made from edge points to it. Setting points or holes throws gmBadPointer until then, and
/// makePointsConsistentWithData() leaves no vertices.
template <class Datum>
class MOKCNTR_API gmRegionT : public gmContourT<Datum>, public gmRegion {
  public:
    using Holes = std::vector<gmPtrHandle_const<gmRegionT>>;

    /// An empty region without data and without a transform.
    gmRegionT();
    /// The region of these edge points, where they are: its transform is the identity.
    /// Throws: gmContourDefs::BadParams "label does not fit in 32 bits".
    explicit gmRegionT(const std::vector<Datum>& data, unsigned long label = 0);
    /// The region of these edge points under a clone of `xform`, or under the identity for an empty handle.
    /// Throws: the same, and what inverting and cloning the transform does.
    gmRegionT(const std::vector<Datum>& data, const gmPtrHandle_const<gm2XformBase>& xform, unsigned long label = 0);
    /// The region of a contour, open or closed, whose transform it shares. The contour's own label is not taken over.
    /// Throws: gmContourDefs::BadParams "label does not fit in 32 bits".
    explicit gmRegionT(const gmContourT<Datum>& contour, unsigned long label = 0);

    /// Copies everything and shares the holes and the transform. Assignment is no change that is reported or cleaned up
    /// after. A region may be assigned from one that only it keeps alive.
    gmRegionT(const gmRegionT& other);
    gmRegionT& operator=(const gmRegionT& other);
    /// Lets go of the holes. However deep they are nested, the stack does not grow with them.
    ~gmRegionT() override;

    /// True when the outlines are equal as gmContourT.
    /// Deliberate: a copy equals its source, and a region made from the same edge points does not. The holes are not
    /// compared.
    bool operator==(const gmRegionT& other) const { return gmContourT<Datum>::operator==(other); }
    bool operator!=(const gmRegionT& other) const { return !(*this == other); }
    using gmContourT<Datum>::operator==;
    using gmContourT<Datum>::operator!=;
    using gmRegion::operator==;
    using gmRegion::operator!=;

    /// The holes with edge points. gmRegion::holes() are the plain ones.
    const Holes& holes() const { return holes_; }
    /// Replaces the holes with edge points, and drops every cache. Nothing is checked. An observer of its changes
    /// already sees the new holes.
    void holes(const Holes& holes);
    void holes(const std::vector<gmPtrHandle<gmRegionT>>& holes);
    void holes(std::initializer_list<gmPtrHandle_const<gmRegionT>> holes) { this->holes(Holes(holes)); }
    /// Those of gmRegion, with which the data are made anew.
    /// Throws: gmBadPointer as well, for a region with a vertex and without a transform.
    using gmRegion::holes;

    using gmRegion::draw;
    /// Draws a segment of length 1 for every edge point, in data coordinates: centred on it, and along the edge, from
    /// its end a quarter of a turn back from the angle to the other.
    void draw(gmUITablet& tablet, const gmColor& color, const gmUITablet::Layers& layers) const override;

    /// Deliberate: always throw gmPel::BadWindow and change nothing, as gmContourT::mapT.
    void regularizeT(gmRegionT& out) const;
    void mapT(const gmXform<2>& xform, gmRegionT& out) const;

    using gmRegion::checkEmptyContour;
    using gmRegion::cleanCacheInfo;

    /// A new, empty region, for the registry.
    static gmPersistent* make();
    static gm_Instantiator sExemplar;

  protected:
    void dispatchSerialize(gmArchive& archive) override;
    /// The content of the version: 0. Loading takes data, transform and holes with edge points away, when the rest is
    /// read.
    void serialize_(gmArchive& archive, unsigned char version) override;

  private:
    Holes holes_;
};

// Registered with the archive layouts, in the order of all registrations.
template <>
gm_Instantiator gmRegionT<gmEdgelet>::sExemplar;

extern template class gmRegionT<gmEdgelet>;
