// The tour, first stop: an outline and what can be asked of it.
#include <iostream>

#include "cntr/cntr.h"

int main() {
    const gmContour plate({{0, 0}, {60, 0}, {60, 20}, {20, 20}, {20, 50}, {0, 50}}, true);

    const gmRect box = plate.encloseRect(gmXform<2>::I);
    const gmVector<2> centre = gf_CenterOfMass(plate.points());
    std::cout << "around it      " << plate.length() << '\n'
              << "area           " << gf_Area(plate.points()) << '\n'
              << "box            " << box.size().x() << " x " << box.size().y() << '\n'
              << "centre of mass " << centre.x() << ' ' << centre.y() << '\n'
              << "widest         " << plate.diameter(gmContourDefs::eMaxVertexPair) << '\n';

    gmContour turned;
    const gmMatrix<2> quarterTurn(0, -1, 1, 0);
    plate.map(gmXform<2>(quarterTurn, {100, 0}), turned);
    std::cout << "turned, its first edge ends at " << turned.points()[1].x() << ' ' << turned.points()[1].y() << '\n';
}
