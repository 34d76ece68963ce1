#include <cmath>
#include <limits>

#include "cntr/detail/tolerances.h"
#include "cntr/inertia.h"
#include "cntr/regionst.h"

template <class Value, class Compute>
Value gmRegionSet::remembered(detail::Cached<Value>& slot, Compute compute) const {
    const bool isNew = !slot.isValid();
    const Value value = slot.get([&](Value& kept) { kept = compute(); });
    if (isNew)
        reportChange();
    return value;
}

double gmRegionSet::area(bool considerHoles) const {
    return remembered(caches_.area[considerHoles], [&] {
        double sum = 0.0;
        for (const RegionCPtr& region : regions_)
            sum += region->area(considerHoles);
        return sum;
    });
}

gmVector<2> gmRegionSet::centerOfMass(bool considerHoles) const {
    checkEmptyRegionSet();
    return remembered(caches_.centerOfMass[considerHoles], [&] {
        gmVector<2> moment;
        double mass = 0.0;
        for (const RegionCPtr& region : regions_) {
            const double area = region->area(considerHoles);
            moment = moment + area * region->centerOfMass(considerHoles);
            mass += area;
        }
        return std::abs(mass) > detail::noMass ? moment * (1.0 / mass) : gmVector<2>();
    });
}

gmMatrix<2> gmRegionSet::inertiaMatrix(bool considerHoles) const {
    checkEmptyRegionSet();
    return remembered(caches_.inertiaMatrix[considerHoles], [&] {
        gm_InertiaData all;
        for (const RegionCPtr& region : regions_) {
            // One after the other: what fails decides what the region remembers.
            const double area = region->area(considerHoles);
            const gmVector<2> center = region->centerOfMass(considerHoles);
            all = all + gm_InertiaData(area, center, region->inertiaMatrix(considerHoles));
        }
        return all.inertiaMatrix();
    });
}

bool gmRegionSet::inside(const gmVector<2>& point, bool considerHoles) const {
    for (const RegionCPtr& region : regions_)
        if (region->inside(point, considerHoles))
            return true;
    return false;
}

double gmRegionSet::distToPoint(const gmVector<2>& point, bool vertexOnly, bool considerHoles,
                                bool insideIsZero) const {
    checkEmptyRegionSet();
    double best = std::numeric_limits<double>::infinity();
    for (const RegionCPtr& region : regions_) {
        const double distance = region->distToPoint(point, vertexOnly, considerHoles, insideIsZero);
        if (best > distance)
            best = distance;
    }
    return best;
}

gmRect gmRegionSet::encloseRect(const gmXform<2>& xform) const {
    checkEmptyRegionSet();
    bool isNew = false;
    const gmRect box = caches_.encloseRect.get(xform, cachedVectorSize_, [&] {
        isNew = true;
        gmRect all = regions_.front()->encloseRect(xform);
        for (std::size_t i = 1; i < regions_.size(); ++i)
            all = all.enclose(regions_[i]->encloseRect(xform));
        return all;
    });
    if (isNew)
        reportChange();
    return box;
}
