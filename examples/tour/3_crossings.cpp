// The tour, third stop: where things meet, and how far apart they are.
#include <iostream>

#include "cntr/cntr.h"

int main() {
    gmRegion plate({{0, 0}, {60, 0}, {60, 40}, {0, 40}});
    plate.holes(std::vector<RegionCPtr>{RegionCPtr(new gmRegion({{10, 10}, {20, 10}, {20, 30}, {10, 30}}))});

    const gmLineSeg scanLine({-10, 20}, {70, 20});
    for (const gmVector<2>& crossing : plate.intersections(scanLine, true, true))
        std::cout << "the line crosses at " << crossing.x() << ' ' << crossing.y() << '\n';

    const gmVector<2> point(25, 18);
    const gmVector<2> nearest = plate.closestPoint(point, false, true);
    std::cout << "nearest boundary     " << nearest.x() << ' ' << nearest.y() << '\n'
              << "how far              " << plate.distToPoint(point, false, true, false) << '\n'
              << "the same, 0 inside   " << plate.distToPoint(point, false, true, true) << '\n'
              << "nearest outer corner " << plate.distToPoint(point, true) << " away\n";

    const gmContour path({{-5, -5}, {30, 20}, {65, -5}}, false);
    std::cout << "a path crosses the outline " << path.intersections(plate).size() << " times, itself "
              << (path.isSelfIntersecting() ? "too" : "never") << '\n';
}
