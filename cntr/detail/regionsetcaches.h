#pragma once

#include <array>

#include "cntr/detail/cached.h"
#include "cntr/detail/rectcache.h"
#include "cntr/detail/regionindex.h"
#include "foundation/math/matrix.h"
#include "foundation/math/vector.h"
#include "foundation/object/handle.h"

class gmRegionSet;

namespace detail {

/// Everything that the queries of a region set remember. The measures twice: without holes and with them.
struct RegionSetCaches {
    std::array<Cached<double>, 2> area;
    std::array<Cached<gmVector<2>>, 2> centerOfMass;
    std::array<Cached<gmMatrix<2>>, 2> inertiaMatrix;
    RectCache encloseRect;
    Cached<gmPtrHandle_const<gmRegionSet>> regularized;
    Cached<gmPtrHandle_const<gmRegionSet>> outerHull;
    RegionIndex regionIndex;
    // The odd one: known from the moment on that it is first asked for. When that fails part-way, what was found so far
    // stays the answer, and applications have come to count on it.
    bool isSelfIntersectingKnown = false;
    bool isSelfIntersecting = false;

    void invalidate() {
        for (auto& slot : area)
            slot.invalidate();
        for (auto& slot : centerOfMass)
            slot.invalidate();
        for (auto& slot : inertiaMatrix)
            slot.invalidate();
        encloseRect.clear();
        regularized.invalidate();
        outerHull.invalidate();
        regionIndex.invalidate();
        isSelfIntersectingKnown = false;
    }
};

}  // namespace detail
