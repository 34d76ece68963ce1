// What docs/moments.md shows: the second moments of a plate with a hole.
#include <iostream>

#include "cntr/cntr.h"

int main() {
    const std::vector<gmVector<2>> plate = {{0, 0}, {10, 0}, {10, 10}, {0, 10}};
    const std::vector<gmVector<2>> hole = {{6, 4}, {6, 6}, {8, 6}, {8, 4}};  // the other way around
    const gm_InertiaData whole = gf_InertiaDataPolygon(plate) + gf_InertiaDataPolygon(hole);
    const gmEllipse ellipse = gf_EllipseFromInertiaData(whole);

    std::cout << "area    " << whole.area() << '\n'
              << "centre  " << whole.centerOfMass().x() << ' ' << whole.centerOfMass().y() << '\n'
              << "moments " << whole.inertiaMatrix()(0, 0) << ' ' << whole.inertiaMatrix()(1, 1) << '\n'
              << "ellipse " << ellipse.xRadius() << " by " << ellipse.yRadius() << '\n';
}
