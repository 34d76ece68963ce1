// What the front page of the site shows.
#include <iostream>

#include "cntr/cntr.h"

int main() {
    gmRegion plate({{0, 0}, {60, 0}, {60, 20}, {20, 20}, {20, 50}, {0, 50}});
    plate.holes(std::vector<RegionCPtr>{RegionCPtr(new gmRegion({{5, 5}, {15, 5}, {15, 15}, {5, 15}}))});
    const gmVector<2> point(40, 40);
    std::cout << "area     " << plate.area(true) << '\n';
    std::cout << "inside   " << (plate.inside(point, true) ? "yes" : "no") << '\n';
    std::cout << "distance " << plate.distToPoint(point, false, true, true) << '\n';
}
