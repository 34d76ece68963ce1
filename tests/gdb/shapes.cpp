// Objects of every class that the debugger has printers for, and a place to stop at where it sees them all, whatever
// was optimised.
#include <cstddef>
#include <cstring>
#include <iostream>
#include <string>
#include <vector>

#include "cntr/cntr.h"
#include "cntrtmpl/cntrtmpl.h"

namespace shown {

/// An application's own region.
class Part : public gmRegion {
  public:
    Part(const std::vector<gmVector<2>>& outline, long serialNumber)
        : gmContour(outline, true), gmRegion(outline), serialNumber_(serialNumber) {}
    long serialNumber() const { return serialNumber_; }

  private:
    long serialNumber_;
    gmCircle bore_{{5, 5}, 1.5};
};

std::vector<gmVector<2>> square(double left, double size) {
    return {{left, left}, {left + size, left}, {left + size, left + size}, {left, left + size}};
}

gmRegion plateWithHoles() {
    gmRegion plate(square(0, 10));
    const RegionCPtr shared(new gmRegion(square(1, 2)));
    plate.holes(std::vector<RegionCPtr>{shared, RegionCPtr(new Part(square(4, 1), 12))});
    plate.label(3);
    return plate;
}

std::vector<gmEdgelet> edgePoints() {
    return {{{0, 0}, 90, gmAngle8(64)}, {{80, 0}, 120, gmAngle8(128)}, {{80, 40}, 7, gmAngle8(255)}};
}

/// A region and the hole in it, which holds that region in turn.
gmPtrHandle<gmRegion> ring() {
    const gmPtrHandle<gmRegion> outer(new gmRegion(square(0, 3)));
    const gmPtrHandle<gmRegion> inner(new gmRegion(square(1, 1)));
    outer->holes(std::vector<gmPtrHandle<gmRegion>>{inner});
    inner->holes(std::vector<gmPtrHandle<gmRegion>>{outer});
    return outer;
}

const gmPtrHandle<gm2XformBase> pixels(new gm2XformLinear(gmXform<2>({20, 0, 0, 20}, {1, 2})));

struct Shapes {
    gmVector<2> vector{0.1, -3};
    gmPair<long> pair{7, -8};
    gmPair<double> place{0.5, 1e300};
    gmRadian radian{0.25};
    gmDegree degree{90};
    gmAngle8 angle8{64};
    gmMatrix<2> matrix{1, 2, 3, 4};
    gmXform<2> xform{gmMatrix<2>(0, -1, 1, 0), {5, 6}};
    gm2XformLinear linear{xform};
    gm2Rigid rigid{gmDegree(30), {1, 2}};
    gmRect rect{{1, 2}, {3, 4}};
    gmRect emptyRect;
    gmCircle circle{{1, 2}, 2.5};
    gmEllipse ellipse{gmEllipse::gmEllipseGeom{{1, 2}, 4, 3, gmRadian(0.5)}};
    gmLine line{{1, 2}, {0, 1}};
    gmLineSeg segment{{1, 2}, {3, 4}};
    gmPoint point{{1, 2}};
    gmPoint noPoint;
    gmPolygon polygon{square(0, 1), gmPolygon::eEvenOdd};
    gmEdgelet edgelet{{1.5, 2}, 300, gmAngle8(32)};
    gmColor color{255, 128, 0};
    gm_InertiaData inertia = gf_InertiaDataPolygon(square(0, 2));

    gmContour emptyContour;
    gmContour contour{square(0, 4), true, 7};
    gmContour polyline{{{0, 0}, {4, 0}, {4, 3}}, false};
    gmContour longContour{std::vector<gmVector<2>>(5000, gmVector<2>(1, 2)), true};
    gmRegion region = plateWithHoles();
    gmRegion longRegion{std::vector<gmVector<2>>(5000, gmVector<2>(1, 2))};
    gmRegionSet emptySet;
    gmRegionSet set{{RegionCPtr(new gmRegion(square(0, 1))), RegionCPtr(), RegionCPtr(new gmRegion(plateWithHoles()))}};
    gmContourT<gmEdgelet> edgeContour{edgePoints(), pixels};
    gmContourT<gmEdgelet> emptyEdgeContour;
    gmRegionT<gmEdgelet> edgeRegion{edgePoints(), pixels, 5};
    gmRegionSetT<gmEdgelet> edgeSet{{gmPtrHandle_const<gmRegionT<gmEdgelet>>(new gmRegionT<gmEdgelet>(edgePoints()))}};
    Part part{square(2, 6), 4711};

    gmPtrHandle<gmRegion> noHandle;
    RegionCPtr handle{new gmRegion(square(0, 1))};
    RegionCPtr sameHandle = handle;
    gmPtrHandle<gmContour> partHandle{new Part(square(0, 1), 4712)};
    gmPtrHandle_const<gmRegionSet> setHandle{new gmRegionSet};
    gmPtrHandle<gmRegion> ringHandle = ring();

    gmContourDefs::BadParams badParams{"holes cannot intersect region"};
    gmContourDefs::EmptyContour emptyContourError;
    gmArchive::Malformed malformed{"two\nlines"};
    gmArchive::UnknownVersion unknownVersion{"reader.cpp", 12};
    gmMathError::Singular longMessage{std::string(1000, 'm')};
    gmBadPointer badPointer;

    const gmContour& contourOfRegion = region;
    const gmContour& reference = contour;
    const gmContour* pointer = &contour;
    const gmContour* pointerToPart = &part;
    const gmContour* noPointer = nullptr;
    const gmException& error = badParams;

    // What an object looks like before its constructor ran, and after something ran over it.
    alignas(std::max_align_t) unsigned char zeros[1024] = {};
    alignas(std::max_align_t) unsigned char noise[1024];

    Shapes() { std::memset(noise, 0x5a, sizeof noise); }
};

__attribute__((noinline)) void seeShapes(const Shapes& shapes) {
    std::cout << shapes.part.serialNumber() << '\n';
    // Nothing that was stored before may be left out, and nothing of `shapes` forgotten.
    asm volatile("" : : "r"(&shapes) : "memory");
}

}  // namespace shown

int main() {
    const shown::Shapes shapes;
    shown::seeShapes(shapes);
    return 0;
}
