// Measures one outline: what the first page of the documentation shows.
#include <iostream>

#include "cntr/cntr.h"

int main() {
    const gmContour part({{0, 0}, {60, 0}, {60, 20}, {20, 20}, {20, 50}, {0, 50}}, true);

    std::cout << "length   " << part.length() << '\n';
    std::cout << "area     " << gf_Area(part.points()) << '\n';
    std::cout << "centre   " << gf_CenterOfMass(part.points()).x() << " from the left\n";
    std::cout << "size     " << part.encloseRect(gmXform<2>::I).size().x() << '\n';
    std::cout << "diameter " << part.diameter(gmContourDefs::eMaxVertexPair) << '\n';
    std::cout << "distance " << part.distToPoint({40, 40}, false) << '\n';

    gmRegion plate(part);
    plate.holes(std::vector<RegionCPtr>{RegionCPtr(new gmRegion({{5, 5}, {15, 5}, {15, 15}, {5, 15}}))});
    std::cout << "material " << plate.area(true) << '\n';
    std::cout << "drilled  " << (plate.inside({10, 10}, true) ? "no" : "yes") << '\n';
}
