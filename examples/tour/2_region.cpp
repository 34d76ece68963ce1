// The tour, second stop: a region with holes, and which points it holds.
#include <iostream>

#include "cntr/cntr.h"

int main() {
    gmRegion plate({{0, 0}, {60, 0}, {60, 40}, {0, 40}});
    const RegionCPtr slot(new gmRegion({{10, 10}, {20, 10}, {20, 30}, {10, 30}}));
    const RegionCPtr window(new gmRegion({{30, 10}, {50, 10}, {50, 30}, {30, 30}}));
    plate.holes(std::vector<RegionCPtr>{slot, window});

    std::cout << "outline  " << plate.area(false) << '\n'
              << "material " << plate.area(true) << '\n'
              << "holes    " << plate.holes().size() << '\n';

    for (const gmVector<2>& point : {gmVector<2>(25, 20), gmVector<2>(15, 20), gmVector<2>(70, 20)})
        std::cout << point.x() << ' ' << point.y() << ": outline " << plate.inside(point, false) << ", material "
                  << plate.inside(point, true) << '\n';

    try {
        plate.holes(std::vector<RegionCPtr>{RegionCPtr(new gmRegion({{50, 10}, {70, 10}, {70, 30}, {50, 30}}))});
    } catch (const gmContourDefs::BadParams& error) {
        std::cout << error.what() << "; still " << plate.holes().size() << " holes\n";
    }
}
