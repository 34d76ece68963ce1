// How small, how far away and how large a shape may be: the tables of docs/coordinates.md.
#include <cmath>
#include <iomanip>
#include <iostream>
#include <limits>

#include "cntr/cntr.h"

namespace {

using Points = std::vector<gmVector<2>>;

Points placed(const Points& shape, double size, double away) {
    Points result;
    for (const gmVector<2>& vertex : shape)
        result.push_back(vertex * size + gmVector<2>(away, away));
    return result;
}

const char* yesNo(bool yes) {
    return yes ? "yes" : "no";
}

bool hasEqualEllipse(const Points& points) {
    try {
        gf_EllipseFromInertiaData(gf_InertiaDataPolygon(points));
        return true;
    } catch (const gmMathError::Singular&) {
        return false;
    }
}

/// The region moved to the origin by the corner of its box: there no digit is lost.
gmRegion atTheOrigin(const gmRegion& region) {
    const gmVector<2> corner = region.encloseRect(gmXform<2>::I).lower();
    gmRegion near;
    region.map(gmXform<2>(gmMatrix<2>(1, 0, 0, 1), -corner), near);
    return near;
}

}  // namespace

int main() {
    const Points square = {{0, 0}, {1, 0}, {1, 1}, {0, 1}};
    const Points angle = {{0, 0}, {1, 0}, {1, 0.5}, {0.5, 0.5}, {0.5, 1}, {0, 1}};
    const Points bowTie = {{0, 0}, {1, 1.25}, {1, 0}, {0, 1.125}};

    std::cout << std::setprecision(3) << "small      area   centre ellipse notch   crosses\n";
    for (const double size : {1.0, 1e-2, 1e-3, 1e-4, 1e-5, 1e-6}) {
        const gmRegion region(placed(square, size, 0));
        const gmRegion notched(placed(angle, size, 0));
        std::cout << std::left << std::setw(10) << size << ' ' << std::setw(6) << region.area(false) << ' '
                  << std::setw(6) << yesNo(region.centerOfMass(false).x() > 0.0) << ' ' << std::setw(7)
                  << yesNo(hasEqualEllipse(region.points())) << ' ' << std::setw(7)
                  << (notched.inside(gmVector<2>(0.75, 0.75) * size, false) ? "inside" : "outside") << ' '
                  << yesNo(gmContour(placed(bowTie, size, 0), true).isSelfIntersecting()) << '\n';
    }

    std::cout << "\nfar away   area     moved centre    distance crosses\n";
    for (const double away : {0.0, 1e4, 1e6, 1e8, 1e12}) {
        const gmRegion region(placed(square, 1, away));
        std::cout << std::setw(10) << away << ' ' << std::setw(8) << region.area(false) << ' ' << std::setw(5)
                  << atTheOrigin(region).area(false) << ' ' << std::setw(9)
                  << region.centerOfMass(false).x() - (away + 0.5) << ' ' << std::setw(8)
                  << region.distToPoint({away + 3, away + 0.5}, false) << ' '
                  << yesNo(gmContour(placed(bowTie, 1, away), true).isSelfIntersecting()) << '\n';
    }

    std::cout << "\nlarge      area   length distance centre moments inside crosses\n";
    for (const double size : {1e6, 1e8, 1e12, 1e70, 1e100, 1e150, 1e160}) {
        const gmRegion region(placed(square, size, 0));
        std::cout << std::setw(10) << size << ' ' << std::setw(6) << region.area(false) << ' ' << std::setw(6)
                  << region.length() << ' ' << std::setw(8) << region.distToPoint({3 * size, 0}, false) << ' '
                  << std::setw(6) << yesNo(std::isfinite(region.centerOfMass(false).x())) << ' ' << std::setw(7)
                  << yesNo(std::isfinite(region.inertiaMatrix(false)(0, 0))) << ' ' << std::setw(6)
                  << yesNo(region.inside({0.25 * size, 0.5 * size}, false)) << ' '
                  << yesNo(gmContour(placed(bowTie, size, 0), true).isSelfIntersecting()) << '\n';
    }

    const double nan = std::numeric_limits<double>::quiet_NaN();
    const gmRegion holed({{0, 0}, {4, 0}, {nan, 3}, {0, 3}});
    const gmRect box = holed.encloseRect(gmXform<2>::I);
    std::cout << "\nnot a number: box " << box.size().x() << " x " << box.size().y() << ", nearest at "
              << holed.distToPoint({2, -1}, false) << ", length "
              << (std::isnan(holed.length()) ? "not a number" : "a number") << ", equal to its copy "
              << yesNo(holed == gmRegion(holed)) << '\n';
}
