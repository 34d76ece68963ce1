// The one instantiation of the shapes that carry edge points.
#include "cntrtmpl/cntrtmpl.h"

#include <new>
#include <utility>

// ----- Contour

template <class Datum>
gmContourT<Datum>::gmContourT() = default;

template <class Datum>
gmContourT<Datum>::gmContourT(const std::vector<Datum>& data) : gmContourT(data, nullptr) {}

template <class Datum>
gmContourT<Datum>::gmContourT(const std::vector<Datum>& data, const gmPtrHandle_const<gm2XformBase>& xform) {
    carried_.dataFromPoints = xform.isNull() ? gmPtrHandle<gm2XformBase>(new gm2XformLinear) : xform->clone();
    carried_.data = data;
    gmContourT::makePointsConsistentWithData();
}

template <class Datum>
gmContourT<Datum>::gmContourT(const gmContourT& other)
    : gmPersistent(other), gmRepBase(other), gmContour(other), carried_(other.carried_) {}

template <class Datum>
gmContourT<Datum>& gmContourT<Datum>::operator=(const gmContourT& other) {
    // Memory may run out before the first change, and not after it.
    Carried carried = other.carried_;
    gmContour::operator=(other);
    std::swap(carried_, carried);
    return *this;
}

template <class Datum>
gmContourT<Datum>::~gmContourT() = default;

template <class Datum>
bool gmContourT<Datum>::operator==(const gmContourT& other) const {
    return points() == other.points() && carried_.dataFromPoints == other.carried_.dataFromPoints;
}

template <class Datum>
void gmContourT<Datum>::data(const std::vector<Datum>& data) {
    carried_.data = data;
    makePointsConsistentWithData();
}

template <class Datum>
gmVector<2> gmContourT<Datum>::point(const Datum& datum) const {
    // Held here as well, as in datum(): an application's transform may assign to this contour.
    const gmPtrHandle<gm2XformBase> inverse = carried_.pointsFromData.get([&](gmPtrHandle<gm2XformBase>& slot) {
        const gmPtrHandle<gm2XformBase> xform = carried_.dataFromPoints;
        slot = xform->inverseBase();
    });
    return inverse->mapPoint(datum.position());
}

template <class Datum>
Datum gmContourT<Datum>::datum(const gmVector<2>& point) const {
    return Datum(dataFromPointsXform()->mapPoint(point), 0, gmAngle8());
}

template <class Datum>
void gmContourT<Datum>::convexHullT(gmRegionT<Datum>&) const {
    throw gmPel::BadWindow();
}

template <class Datum>
void gmContourT<Datum>::mapT(const gmXform<2>&, gmContourT&) const {
    throw gmPel::BadWindow();
}

template <class Datum>
void gmContourT<Datum>::makeDataConsistentWithPoints() {
    cleanCacheInfo();
    // A copy, here and below: an application's transform may change the contour while it maps.
    const std::vector<gmVector<2>> points = this->points();
    carried_.data.clear();
    carried_.data.reserve(points.size());
    for (const gmVector<2>& point : points)
        carried_.data.push_back(datum(point));
}

template <class Datum>
void gmContourT<Datum>::makePointsConsistentWithData() {
    cleanCacheInfo();
    const std::vector<Datum> data = carried_.data;
    std::vector<gmVector<2>> points;
    points.reserve(data.size());
    for (const Datum& datum : data)
        points.push_back(point(datum));
    setPoints(points);
}

// ----- Region

template <class Datum>
gmRegionT<Datum>::gmRegionT() = default;

template <class Datum>
gmRegionT<Datum>::gmRegionT(const std::vector<Datum>& data, unsigned long label) : gmRegionT(data, nullptr, label) {}

template <class Datum>
gmRegionT<Datum>::gmRegionT(const std::vector<Datum>& data, const gmPtrHandle_const<gm2XformBase>& xform,
                            unsigned long label)
    : gmContourT<Datum>(data, xform) {
    this->label(label);
}

// Assigned: the outline is a virtual base, which a class derived from this one would construct without the vertices.
template <class Datum>
gmRegionT<Datum>::gmRegionT(const gmContourT<Datum>& contour, unsigned long label) {
    gmContourT<Datum>::operator=(contour);
    this->label(label);
}

template <class Datum>
gmRegionT<Datum>::gmRegionT(const gmRegionT& other) : gmRegionT() {
    *this = other;
}

template <class Datum>
gmRegionT<Datum>& gmRegionT<Datum>::operator=(const gmRegionT& other) {
    // Memory may run out before the first change, and not after it. The outline, which both bases share, is assigned
    // once. What is replaced ends last: it may be what keeps the other region alive.
    typename gmContourT<Datum>::Carried carried = other.carried_;
    Holes holes = other.holes_;
    gmRegion::operator=(other);
    std::swap(this->carried_, carried);
    std::swap(holes_, holes);
    return *this;
}

template <class Datum>
gmRegionT<Datum>::~gmRegionT() {
    try {
        std::vector<RegionCPtr> holes(holes_.begin(), holes_.end());
        holes_.clear();
        this->releaseHoles(holes);
    } catch (const std::bad_alloc&) {
        // Without memory for the list, these end one inside the other.
    }
}

template <class Datum>
void gmRegionT<Datum>::holes(const Holes& holes) {
    // What is replaced ends last: it may be what keeps the new list alive, or this region.
    Holes replaced = holes;
    std::swap(holes_, replaced);
    cleanCacheInfo();
}

template <class Datum>
void gmRegionT<Datum>::holes(const std::vector<gmPtrHandle<gmRegionT>>& holes) {
    this->holes(Holes(holes.begin(), holes.end()));
}

template <class Datum>
void gmRegionT<Datum>::regularizeT(gmRegionT&) const {
    throw gmPel::BadWindow();
}

template <class Datum>
void gmRegionT<Datum>::mapT(const gmXform<2>&, gmRegionT&) const {
    throw gmPel::BadWindow();
}

// ----- Region set

template <class Datum>
gmRegionSetT<Datum>::gmRegionSetT() = default;

template <class Datum>
gmRegionSetT<Datum>::gmRegionSetT(const Regions& regions) : regions_(regions) {
    gmRegionSetT::makePointsConsistentWithData();
}

template <class Datum>
gmRegionSetT<Datum>::gmRegionSetT(const std::vector<gmPtrHandle<gmRegionT<Datum>>>& regions)
    : gmRegionSetT(Regions(regions.begin(), regions.end())) {}

template <class Datum>
gmRegionSetT<Datum>::gmRegionSetT(std::initializer_list<gmPtrHandle_const<gmRegionT<Datum>>> regions)
    : gmRegionSetT(Regions(regions)) {}

template <class Datum>
gmRegionSetT<Datum>::gmRegionSetT(const gmRegionSetT& other) : gmRegionSetT() {
    *this = other;
}

template <class Datum>
gmRegionSetT<Datum>& gmRegionSetT<Datum>::operator=(const gmRegionSetT& other) {
    // Memory may run out before the first change, and not after it. What is replaced ends last.
    Regions regions = other.regions_;
    gmRegionSet::operator=(other);
    std::swap(regions_, regions);
    return *this;
}

template <class Datum>
gmRegionSetT<Datum>::~gmRegionSetT() = default;

template <class Datum>
void gmRegionSetT<Datum>::regularizeT(gmRegionSetT&) const {
    throw gmPel::BadWindow();
}

template <class Datum>
void gmRegionSetT<Datum>::mapT(const gmXform<2>&, gmRegionSetT&) const {
    throw gmPel::BadWindow();
}

template <class Datum>
void gmRegionSetT<Datum>::makePointsConsistentWithData() {
    cleanCacheInfo();
    setRegions(std::vector<RegionCPtr>(regions_.begin(), regions_.end()));
}

template <class Datum>
void gmRegionSetT<Datum>::makeDataConsistentWithPoints() {
    cleanCacheInfo();
    const std::vector<RegionCPtr> plain = regions();
    const Regions replaced = regions_;  // ends last: it may be what keeps this set alive
    regions_.resize(plain.size());
    for (std::size_t i = 0; i < plain.size(); ++i) {
        const gmPtrHandle<gmRegionT<Datum>> fresh(new gmRegionT<Datum>);
        fresh->points(plain[i]->points());
        regions_[i] = fresh;
    }
}

template class gmContourT<gmEdgelet>;
template class gmRegionT<gmEdgelet>;
template class gmRegionSetT<gmEdgelet>;
