#pragma once

#include "cntr/defs.h"
#include "tests/reference/inertia.h"
#include "tests/reference/region_containment.h"

namespace reference {

inline void refuseWithoutArea(const Region& region) {
    if (region.points.size() < 3)
        throw gmContourDefs::EmptyContour();
}

/// Where the holes lie, and what holes they have, is not looked at.
inline double area(const Region& region, bool considerHoles) {
    refuseWithoutArea(region);
    double result = area(region.points);
    if (considerHoles)
        for (const Region& hole : region.holes)
            result -= area(hole, false);
    return result;
}

/// What the first call answers; with holes, every later one answers (0, 0).
inline gmVector<2> centerOfMass(const Region& region, bool considerHoles) {
    refuseWithoutArea(region);
    if (!considerHoles || region.holes.empty())
        return centerOfMass(region.points);
    double mass = area(region, false);
    gmVector<2> moment = mass * centerOfMass(region, false);
    for (const Region& hole : region.holes) {
        refuseWithoutArea(hole);
        const double holeMass = area(hole, false);
        moment = moment - holeMass * centerOfMass(hole, false);
        mass = mass - holeMass;
    }
    return moment * (1.0 / mass);
}

inline gmMatrix<2> inertiaMatrix(const Region& region, bool considerHoles) {
    refuseWithoutArea(region);
    if (considerHoles && !region.holes.empty())
        throw gmContourDefs::BadParams("inertiaMatrix(considerHoles) is not implemented");
    const Moments moments = inertiaDataPolygon(region.points);
    return gmMatrix<2>(moments.xx, moments.xy, moments.xy, moments.yy);
}

}  // namespace reference
