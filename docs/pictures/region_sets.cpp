#include "docs/pictures/pictures.h"
#include "docs/pictures/sheet.h"

namespace pictures {

/// A set before and after clean-up.
void drawRegionSets(const std::string& folder) {
    const gmRegionSet parts({RegionCPtr(new gmRegion({{0, 0}, {6, 0}, {6, 6}, {0, 6}})),
                             RegionCPtr(new gmRegion({{4, 3}, {10, 3}, {10, 9}, {4, 9}})),
                             RegionCPtr(new gmRegion({{12, 1}, {16, 1}, {14, 6}}))});
    gmRegionSet cleaned;
    parts.regularize(cleaned);

    Sheet sheet("A set of three regions with its box, its centre and a distance; and what clean-up makes of it", 880,
                250);
    const gmVector<2> point(11, 0.5);
    for (const gmRegionSet* set : {&parts, static_cast<const gmRegionSet*>(&cleaned)}) {
        sheet.panel({set == &parts ? 40.0 : 480.0, 225}, 22);
        for (const RegionCPtr& region : set->regions())
            sheet.hatch(*region, true, filling);
        if (set == &parts)
            sheet.rectangle(set->encloseRect(gmXform<2>::I), faint);
        for (const RegionCPtr& region : set->regions())
            sheet.region(*region, ink);
        if (set == &parts) {
            sheet.dot(point, red);
            const gmVector<2> nearest = set->regions()[2]->closestPoint(point, false, true);
            sheet.arrow(point, nearest, red);
            sheet.cross(set->centerOfMass(true), red);
        }
    }
    sheet.write(folder + "/region-sets.svg");
}

}  // namespace pictures
