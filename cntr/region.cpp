#include "cntr/region.h"

#include <new>
#include <utility>

namespace {

/// Holes whose owners are being destroyed, on a thread that is at it.
thread_local std::vector<RegionCPtr>* orphans = nullptr;

}  // namespace

gmRegion::gmRegion(const std::vector<gmVector<2>>& points, gmContourDefs::IntersectionMode mode)
    : gmContour(points, true) {
    applyMode(mode);
}

gmRegion::gmRegion(const gmContour& contour, gmContourDefs::IntersectionMode mode) : gmContour(contour) {
    applyMode(mode);
}

gmRegion::gmRegion(const gmPolygon& polygon, gmContourDefs::IntersectionMode mode) : gmContour(polygon) {
    applyMode(mode);
}

gmRegion::gmRegion(const gmRegion& other) : gmRegion() {
    *this = other;
}

gmRegion& gmRegion::operator=(const gmRegion& other) {
    if (this == &other)
        return *this;
    // Memory may run out before the first change, and not after it. What is replaced ends last: it may be what keeps
    // the other region alive.
    std::vector<RegionCPtr> holes = other.holes_;
    detail::RegionCaches caches = other.caches_;
    gmContour::operator=(other);  // sets that share the region know from this on
    std::swap(holes_, holes);
    std::swap(caches_, caches);
    return *this;
}

gmRegion::~gmRegion() {
    releaseHoles(holes_);
}

void gmRegion::releaseHoles(std::vector<RegionCPtr>& holes) {
    if (orphans) {
        try {
            orphans->insert(orphans->end(), holes.begin(), holes.end());
        } catch (const std::bad_alloc&) {
            // Without memory for the list, these end one inside the other.
        }
        return;
    }
    orphans = &holes;
    while (!holes.empty()) {
        const RegionCPtr hole = std::move(holes.back());
        holes.pop_back();
    }
    orphans = nullptr;
}

bool gmRegion::operator==(const gmRegion& other) const {
    return gmContour::operator==(other);
}

void gmRegion::holes(const std::vector<RegionCPtr>& newHoles) {
    cleanCacheInfo();
    makeDataConsistentWithPoints();
    for (const RegionCPtr& hole : newHoles)
        if (!intersections(*hole, false).empty())
            throw gmContourDefs::BadParams("holes cannot intersect region");
    // What is replaced ends last: it may be what keeps the new list alive, or this region.
    std::vector<RegionCPtr> holes = newHoles;
    std::swap(holes_, holes);
    noteIfShared();
}

void gmRegion::holes(const std::vector<gmPtrHandle<gmRegion>>& newHoles) {
    holes(std::vector<RegionCPtr>(newHoles.begin(), newHoles.end()));
}

void gmRegion::isClosed(bool closed) {
    if (!closed)
        throw gmContourDefs::RegionCannotBeSetOpen();
}

void gmRegion::map(const gmXform<2>& xform, gmRegion& out) const {
    gmContour mapped;
    gmContour::map(xform, mapped);
    const std::vector<RegionCPtr> replaced = out.holes_;  // ends last, as in become()
    out = gmRegion(mapped.points());
    out.label(mapped.label());
    out.makeDataConsistentWithPoints();
}

void gmRegion::become(const gmRegion& result) {
    const std::vector<RegionCPtr> replaced = holes_;  // ends last: it may be what keeps this region alive
    *this = result;
    makeDataConsistentWithPoints();
}

void gmRegion::checkEmptyContour() const {
    if (points().size() < 3)
        throw gmContourDefs::EmptyContour();
}

void gmRegion::cleanCacheInfo() {
    gmContour::cleanCacheInfo();
    caches_.invalidate();
}

void gmRegion::applyMode(gmContourDefs::IntersectionMode mode) {
    // The outline may have been open before: what it remembered then lacks the closing edge.
    gmRegion::cleanCacheInfo();
    if (mode == gmContourDefs::eOuterHull)
        outerHull(*this);
    else if (mode == gmContourDefs::eRegularize)
        regularize(*this);
}
