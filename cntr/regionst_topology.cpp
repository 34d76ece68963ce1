#include "cntr/detail/cachedshape.h"
#include "cntr/regionst.h"

bool gmRegionSet::isSelfIntersecting() const {
    if (regions_.empty())
        return false;
    if (caches_.isSelfIntersectingKnown)
        return caches_.isSelfIntersecting;
    caches_.isSelfIntersectingKnown = true;
    bool& found = caches_.isSelfIntersecting;
    found = false;
    for (const RegionCPtr& region : regions_)
        if (region->isSelfIntersecting())
            found = true;
    for (std::size_t i = 0; i + 1 < regions_.size(); ++i)
        for (std::size_t j = i + 1; j < regions_.size(); ++j)
            if (!regions_[i]->intersections(*regions_[j], false).empty()) {
                found = true;
                return true;
            }
    return found;
}

void gmRegionSet::regularize(gmRegionSet& out) const {
    cleanUp(caches_.regularized, false, out);
}

void gmRegionSet::outerHull(gmRegionSet& out) const {
    cleanUp(caches_.outerHull, true, out);
}

void gmRegionSet::cleanUp(detail::Cached<gmPtrHandle_const<gmRegionSet>>& cache, bool hull, gmRegionSet& out) const {
    if (isSelfIntersecting())
        out = *detail::cachedShape(cache, [&](gmRegionSet& result) { outerHullRegularize(result, hull); });
    else
        out = *this;
}

void gmRegionSet::outerHullRegularize(gmRegionSet& out, bool hull) const {
    checkEmptyRegionSet();
    std::vector<RegionCPtr> regions = regions_;
    for (std::size_t i = 0; i + 1 < regions.size(); ++i)
        for (std::size_t j = i + 1; j < regions.size(); ++j) {
            if (regions[i]->intersections(*regions[j], false).empty())
                continue;
            const gmPtrHandle<gmRegion> spliced(new gmRegion);
            regions[i]->splice(*regions[j], *spliced);
            regions[i] = spliced;
            regions[j] = regions.back();
            regions.pop_back();
        }
    for (RegionCPtr& region : regions) {
        const gmPtrHandle<gmRegion> cleaned(new gmRegion);
        if (hull)
            region->outerHull(*cleaned);
        else
            region->regularize(*cleaned);
        region = cleaned;
    }
    out = gmRegionSet(regions);
}
