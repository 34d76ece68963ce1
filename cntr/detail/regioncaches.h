#pragma once

#include "cntr/detail/cached.h"
#include "cntr/regionptr.h"
#include "foundation/math/matrix.h"
#include "foundation/math/vector.h"

namespace detail {

/// Everything that the queries of a region remember, beside what those of its outline do.
struct RegionCaches {
    Cached<double> area;           // of the outline
    Cached<double> areaWithHoles;  // less the holes
    Cached<gmVector<2>> centerOfMass;
    Cached<gmMatrix<2>> inertiaMatrix;
    Cached<RegionCPtr> regularized;
    Cached<RegionCPtr> outerHull;
    // The odd one: only the fact that the centre with holes was computed is remembered, never the centre. From the
    // second call on the answer is (0, 0), and applications have come to count on it.
    bool centerOfMassWithHolesComputed = false;

    void invalidate() {
        area.invalidate();
        areaWithHoles.invalidate();
        centerOfMass.invalidate();
        inertiaMatrix.invalidate();
        regularized.invalidate();
        outerHull.invalidate();
        centerOfMassWithHolesComputed = false;
    }
};

}  // namespace detail
