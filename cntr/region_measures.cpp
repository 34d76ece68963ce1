#include "cntr/inertia.h"
#include "cntr/region.h"

double gmRegion::area(bool considerHoles) const {
    checkEmptyContour();
    if (!considerHoles)
        return caches_.area.get([&](double& area) { area = gf_Area(points()); });
    return caches_.areaWithHoles.get([&](double& left) {
        left = area(false);
        for (const RegionCPtr& hole : holes_)
            left -= hole->area(false);
    });
}

gmVector<2> gmRegion::centerOfMass(bool considerHoles) const {
    checkEmptyContour();
    if (!considerHoles || holes_.empty())
        return caches_.centerOfMass.get([&](gmVector<2>& center) { center = gf_CenterOfMass(points()); });
    if (caches_.centerOfMassWithHolesComputed)
        return {};
    double mass = area(false);
    gmVector<2> moment = mass * centerOfMass(false);
    for (const RegionCPtr& hole : holes_) {
        const double missing = hole->area(false);
        moment = moment - missing * hole->centerOfMass(false);
        mass -= missing;
    }
    caches_.centerOfMassWithHolesComputed = true;
    return moment * (1.0 / mass);
}

gmMatrix<2> gmRegion::inertiaMatrix(bool considerHoles) const {
    checkEmptyContour();
    if (considerHoles && !holes_.empty())
        throw gmContourDefs::BadParams("inertiaMatrix(considerHoles) is not implemented");
    return caches_.inertiaMatrix.get(
        [&](gmMatrix<2>& matrix) { matrix = gf_InertiaDataPolygon(points()).inertiaMatrix(); });
}
