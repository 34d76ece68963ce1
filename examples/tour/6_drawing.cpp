// The tour, last stop: a picture. It is written to standard output.
#include <iostream>

#include "cntr/cntr.h"
#include "foundation/display/svgtablet.h"

int main() {
    gmRegion plate({{0, 0}, {60, 0}, {60, 20}, {20, 20}, {20, 50}, {0, 50}});
    plate.holes(std::vector<RegionCPtr>{RegionCPtr(new gmRegion({{5, 5}, {15, 5}, {15, 15}, {5, 15}}))});

    gmSvgTablet tablet(gmSvgTablet::eYUp);
    tablet.title("A plate with a hole, its centre of mass, and the way from a point to its boundary");
    tablet.background(gmColor(252, 251, 248));
    tablet.size(468, 393);
    tablet.strokeWidth(gmUITablet::eImageLayer, 6);
    tablet.strokeWidth(gmUITablet::eOverlayLayer, 4);

    const gmColor ink(31, 54, 84);
    plate.draw(tablet, gmContourDefs::eOutline, ink, gmUITablet::eImageLayer);
    for (const RegionCPtr& hole : plate.holes())
        hole->draw(tablet, gmContourDefs::eOutline, ink, gmUITablet::eImageLayer);

    const gmColor red(196, 48, 43);
    const gmVector<2> centre = plate.centerOfMass(true);
    for (const gmVector<2>& arm : {gmVector<2>(2, 0), gmVector<2>(0, 2)})
        gmContour({centre - arm, centre + arm}, false)
            .draw(tablet, gmContourDefs::eOutline, red, gmUITablet::eOverlayLayer);

    const gmVector<2> point(40, 40);
    gmContour({point, plate.closestPoint(point, false, true)}, false)
        .draw(tablet, gmContourDefs::eOutline, red, gmUITablet::eOverlayLayer);
    tablet.write(std::cout);
}
