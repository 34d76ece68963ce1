#pragma once

#include <initializer_list>
#include <vector>

#include "cntr/export.h"
#include "cntr/regionst.h"
#include "cntrtmpl/regiont.h"

/// A set of regions with edge points: gmRegionSetT<gmEdgelet>, which is the only one.
///
/// It holds its regions twice, as they are and as the plain regions of gmRegionSet: the same objects in the same order
/// when it was made, and after makePointsConsistentWithData(). All queries are those of gmRegionSet, of the plain list.
///
/// Deliberate: it is made whole, by its constructors. gmRegionSet::add and gmRegionSet::regions make a region with
/// edge points of each plain one, for which there is no transform: they throw gmBadPointer as soon as a region has a
/// vertex. The plain list is changed by then, the caches are dropped, and the other list has the new length: cut off,
/// or with empty handles at its end. Assigning a plain set, as clean-up does with this one as its result, replaces the
/// plain list alone.
template <class Datum>
class MOKCNTR_API gmRegionSetT : public gmRegionSet {
  public:
    using Regions = std::vector<gmPtrHandle_const<gmRegionT<Datum>>>;

    /// The empty set.
    gmRegionSetT();
    /// A set of these regions, in this order. Empty handles may be among them, as in gmRegionSet.
    explicit gmRegionSetT(const Regions& regions);
    explicit gmRegionSetT(const std::vector<gmPtrHandle<gmRegionT<Datum>>>& regions);
    gmRegionSetT(std::initializer_list<gmPtrHandle_const<gmRegionT<Datum>>> regions);

    /// Shares the regions and the remembered result sets, and copies everything else. Assignment is no change that is
    /// reported or cleaned up after.
    gmRegionSetT(const gmRegionSetT& other);
    gmRegionSetT& operator=(const gmRegionSetT& other);
    ~gmRegionSetT() override;

    /// True when the sets are equal as gmRegionSet: region by region, as plain regions.
    bool operator==(const gmRegionSetT& other) const { return gmRegionSet::operator==(other); }
    bool operator!=(const gmRegionSetT& other) const { return !(*this == other); }
    using gmRegionSet::operator==;
    using gmRegionSet::operator!=;

    /// The regions with their edge points. A copy of the list: new handles to the same regions.
    Regions regionsT() const { return regions_; }

    /// Deliberate: always throw gmPel::BadWindow and change nothing, as gmContourT::mapT.
    void regularizeT(gmRegionSetT& out) const;
    void mapT(const gmXform<2>& xform, gmRegionSetT& out) const;

    /// Makes the plain list anew, of the same objects.
    void makePointsConsistentWithData() override;
    /// Makes the regions with edge points anew, from the vertices of the plain ones and nothing else of them.
    /// Throws: gmBadPointer for an empty handle, and for a region with a vertex: the new ones have no transform. Those
    /// before it are replaced, those behind it as they were, in a list of the new length.
    void makeDataConsistentWithPoints() override;

    using gmRegionSet::cleanCacheInfo;

    /// A new, empty set, for the registry.
    static gmPersistent* make();
    static gm_Instantiator sExemplar;

  protected:
    void dispatchSerialize(gmArchive& archive) override;
    /// The content of the version: 0.
    void serialize_(gmArchive& archive, unsigned char version) override;

  private:
    Regions regions_;
};

// Registered with the archive layouts, in the order of all registrations.
template <>
gm_Instantiator gmRegionSetT<gmEdgelet>::sExemplar;

extern template class gmRegionSetT<gmEdgelet>;
