// The tour, fourth stop: an outline that crosses itself.
#include <iostream>

#include "cntr/cntr.h"

int main() {
    const std::vector<gmVector<2>> drawn = {{0, 1}, {13, 1}, {13, 12}, {3, 12}, {3, 4}, {9, 4}, {9, 8}, {0, 8}};
    const gmRegion kept(drawn);
    const gmRegion simple(drawn, gmContourDefs::eRegularize);
    const gmRegion hull(drawn, gmContourDefs::eOuterHull);

    for (const gmRegion* region : {&kept, &simple, &hull})
        std::cout << region->points().size() << " corners, area " << region->area(false)
                  << (region->isSelfIntersecting() ? ", crosses itself" : "") << '\n';

    const gmVector<2> inTheLoop(6, 6);
    std::cout << "inside? " << kept.inside(inTheLoop, false) << simple.inside(inTheLoop, false)
              << hull.inside(inTheLoop, false) << '\n';
}
