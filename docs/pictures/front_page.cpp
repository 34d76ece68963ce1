#include "docs/pictures/pictures.h"
#include "docs/pictures/sheet.h"

namespace pictures {

/// The plate of the front page's program: its material, its centre, and the way to its boundary.
void drawFrontPage(const std::string& folder) {
    gmRegion plate({{0, 0}, {60, 0}, {60, 20}, {20, 20}, {20, 50}, {0, 50}});
    plate.holes(std::vector<RegionCPtr>{RegionCPtr(new gmRegion({{5, 5}, {15, 5}, {15, 15}, {5, 15}}))});
    const gmVector<2> point(40, 40);

    Sheet sheet("A plate with a hole: its material, its centre of mass, its box, and how far a point is from it", 480,
                405);
    sheet.panel({15, 390}, 7.5);
    sheet.hatch(plate, true, filling);
    sheet.rectangle(gmRect({-1, -1}, {62, 52}), faint);
    sheet.region(plate, ink);
    sheet.cross(plate.centerOfMass(true), red);
    sheet.dot(point, red);
    sheet.arrow(point - gmVector<2>(0, 0.8), plate.closestPoint(point, false, true) + gmVector<2>(0, 0.3), red);
    sheet.write(folder + "/front-page.svg");
}

}  // namespace pictures
