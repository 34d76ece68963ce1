#include "docs/pictures/pictures.h"
#include "docs/pictures/sheet.h"

namespace pictures {

/// What counts as material, and where the nearest boundary is from everywhere.
void drawRegions(const std::string& folder) {
    const gmPtrHandle<gmRegion> window(new gmRegion({{3, 3}, {10, 3}, {10, 11}, {3, 11}}));
    window->holes(std::vector<RegionCPtr>{RegionCPtr(new gmRegion({{5, 5}, {8, 5}, {8, 9}, {5, 9}}))});
    const RegionCPtr slot(new gmRegion({{12, 4}, {15, 7}, {12, 10}}));
    gmRegion plate({{0, 0}, {18, 0}, {18, 9}, {13, 14}, {0, 14}});
    plate.holes(std::vector<RegionCPtr>{window, slot});

    Sheet sheet("A region with two holes and an island in one of them; and from everywhere the way to the boundary",
                880, 380);
    sheet.panel({30, 350}, 22);
    sheet.hatch(plate, true, filling);
    sheet.region(plate, ink);

    sheet.panel({460, 350}, 22);
    for (int row = -1; row < 16; ++row)
        for (int column = -1; column < 19; ++column) {
            const gmVector<2> point(column + 0.35, row + 0.3);
            const gmVector<2> way = plate.closestPoint(point, false, true) - point;
            if (way.len() > 0.2)
                sheet.line(point, point + way.unit() * std::min(0.6, way.len()),
                           plate.inside(point, true) ? green : faint);
        }
    sheet.region(plate, ink);
    sheet.write(folder + "/regions.svg");
}

}  // namespace pictures
