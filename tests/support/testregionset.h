#pragma once

#include <initializer_list>
#include <string>
#include <vector>

#include "cntr/regionst.h"
#include "tests/support/testregion.h"

namespace support {

/// A region set that lets tests at what only derived classes see.
class TestRegionSet : public gmRegionSet {
  public:
    using gmRegionSet::gmRegionSet;

    using gmRegionSet::checkEmptyRegionSet;
    using gmRegionSet::cleanCacheInfo;
    using gmRegionSet::setRegions;
};

/// setOf({"0 0, 1 0, 1 1", "5 0, 6 0, 6 1"}) is the set of two triangles.
inline std::vector<RegionCPtr> regionsOf(std::initializer_list<const char*> outlines) {
    std::vector<RegionCPtr> regions;
    for (const char* outline : outlines)
        regions.push_back(shared(outline));
    return regions;
}
inline gmRegionSet setOf(std::initializer_list<const char*> outlines,
                         gmContourDefs::IntersectionMode mode = gmContourDefs::eKeep) {
    return gmRegionSet(regionsOf(outlines), mode);
}

}  // namespace support
