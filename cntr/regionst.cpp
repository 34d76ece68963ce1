#include "cntr/regionst.h"

#include <utility>

#include "cntr/detail/cachelimit.h"

namespace {

std::vector<RegionCPtr> readOnly(const std::vector<gmPtrHandle<gmRegion>>& regions) {
    return {regions.begin(), regions.end()};
}

}  // namespace

gmRegionSet::gmRegionSet(const std::vector<RegionCPtr>& regions, gmContourDefs::IntersectionMode mode)
    : regions_(regions) {
    applyMode(mode);
}

gmRegionSet::gmRegionSet(const std::vector<gmPtrHandle<gmRegion>>& regions, gmContourDefs::IntersectionMode mode)
    : gmRegionSet(readOnly(regions), mode) {}

gmRegionSet::gmRegionSet(const gmRegionSet& other) : gmRegionSet() {
    *this = other;
}

gmRegionSet& gmRegionSet::operator=(const gmRegionSet& other) {
    if (this == &other)
        return *this;
    // Memory may run out here, and not below. What is replaced ends last: it may be what keeps the other set alive.
    std::vector<RegionCPtr> regions = other.regions_;
    detail::RegionSetCaches caches = other.caches_;
    cachedVectorSize_ = other.cachedVectorSize_;
    std::swap(regions_, regions);
    std::swap(caches_, caches);
    return *this;
}

gmRegionSet::~gmRegionSet() = default;

bool gmRegionSet::operator==(const gmRegionSet& other) const {
    if (regions_.size() != other.regions_.size())
        return false;
    for (std::size_t i = 0; i < regions_.size(); ++i) {
        const gmRegion& counterpart = *other.regions_[i];  // first, so that its handle is the one that is refused
        if (*regions_[i] != counterpart)
            return false;
    }
    return true;
}

void gmRegionSet::regions(const std::vector<RegionCPtr>& regions, gmContourDefs::IntersectionMode mode) {
    std::vector<RegionCPtr> replaced = regions;
    cleanCacheInfo();
    std::swap(regions_, replaced);  // what is replaced ends last: it may be what keeps this set alive
    caches_.invalidate();           // whoever asked something meanwhile asked of the old regions
    makeDataConsistentWithPoints();
    applyMode(mode);
}

void gmRegionSet::regions(const std::vector<gmPtrHandle<gmRegion>>& regions, gmContourDefs::IntersectionMode mode) {
    this->regions(readOnly(regions), mode);
}

void gmRegionSet::add(const RegionCPtr& region, gmContourDefs::IntersectionMode mode) {
    cleanCacheInfo();
    regions_.push_back(region);
    caches_.invalidate();
    makeDataConsistentWithPoints();
    applyMode(mode);
}

void gmRegionSet::cachedVectorSize(long size) {
    cachedVectorSize_ = detail::checkedCacheLimit(size);
    reportChange();
}

void gmRegionSet::makeDataConsistentWithPoints() {}

void gmRegionSet::makePointsConsistentWithData() {}

void gmRegionSet::cleanCacheInfo() {
    reportChange();
    caches_.invalidate();
}

void gmRegionSet::setRegions(const std::vector<RegionCPtr>& regions) {
    // What is replaced ends last: it may be what keeps the new list alive.
    std::vector<RegionCPtr> replaced = regions;
    std::swap(regions_, replaced);
}

void gmRegionSet::checkEmptyRegionSet() const {
    if (regions_.empty())
        throw gmContourDefs::EmptyRegionSet();
}

void gmRegionSet::applyMode(gmContourDefs::IntersectionMode mode) {
    if (mode == gmContourDefs::eOuterHull)
        outerHull(*this);
    else if (mode == gmContourDefs::eRegularize)
        regularize(*this);
}
