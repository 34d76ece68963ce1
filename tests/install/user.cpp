// A program of somebody else's: it includes the installed headers and links the installed libraries.
#include <iostream>

#include "cntrtmpl/cntrtmpl.h"

int main() {
    const gmContour contour({{0.0, 0.0}, {4.0, 0.0}, {4.0, 3.0}}, true);
    gmRegion region(contour);
    region.holes(std::vector<RegionCPtr>{RegionCPtr(new gmRegion({{3.0, 1.0}, {3.5, 1.0}, {3.5, 2.0}}))});
    if (region.area(true) != 5.75)
        return 1;
    // So must that of the templates, which are instantiated in the library alone.
    const gmPtrHandle<gmRegionT<gmEdgelet>> edge(new gmRegionT<gmEdgelet>(
        {{{0.0, 0.0}, 1, gmAngle8(0)}, {{4.0, 0.0}, 1, gmAngle8(0)}, {{4.0, 3.0}, 1, gmAngle8(0)}}));
    const gmRegionSetT<gmEdgelet> set(std::vector<gmPtrHandle<gmRegionT<gmEdgelet>>>{edge});
    if (set.area(true) != 6.0 || !dynamic_cast<const gmContourT<gmEdgelet>*>(set.regions()[0].get()))
        return 1;
    try {
        gmContour().meanPosition();  // the error's type information must come across the library's border
    } catch (const gmContourDefs::Errors& error) {
        std::cout << contour.length() << ' ' << error.what() << '\n';
        return contour.length() == 12.0 ? 0 : 1;
    }
    return 1;
}
