// The tour, fifth stop: many regions as one set, written to an archive and read back.
#include <iostream>
#include <sstream>

#include "cntr/cntr.h"

int main() {
    const RegionCPtr punched(new gmRegion({{4, 4}, {6, 4}, {6, 6}, {4, 6}}));
    const gmPtrHandle<gmRegion> plate(new gmRegion({{0, 0}, {10, 0}, {10, 10}, {0, 10}}));
    plate->holes(std::vector<RegionCPtr>{punched});
    gmPtrHandle<gmRegionSet> parts(new gmRegionSet({RegionCPtr(plate), punched}));

    std::ostringstream out;
    gmArchive storing(out);
    storing || parts;
    std::cout << out.str().size() << " bytes\n";

    std::istringstream in(out.str());
    gmArchive loading(in);
    gmPtrHandle<gmRegionSet> loaded;
    loading || loaded;
    const std::vector<RegionCPtr> regions = loaded->regions();
    std::cout << regions.size() << " regions, area " << loaded->area(true) << '\n'
              << "equal to what was stored:      " << (*loaded == *parts ? "yes" : "no") << '\n'
              << "the hole is the second region: " << (regions[0]->holes()[0] == regions[1] ? "yes" : "no") << '\n';

    try {
        std::istringstream cut(out.str().substr(0, 100));
        gmArchive damaged(cut);
        damaged || loaded;
    } catch (const gmArchive::Errors& error) {
        std::cout << "the first 100 bytes alone: " << error.what() << '\n';
    }
}
