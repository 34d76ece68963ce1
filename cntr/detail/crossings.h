#pragma once

#include <vector>

#include "cntr/detail/edgetree.h"
#include "foundation/math/vector.h"
#include "foundation/shapes/lineseg.h"

namespace detail {

/// Where a segment meets an edge.
struct Crossing {
    gmVector<2> position;
    int edge;
    double key;  // how far along the segment
};

/// A contour that is searched for crossings.
struct Crossed {
    const std::vector<gmVector<2>>& points;
    bool closed;
    const Extent& extent;
    const EdgeTree* tree;  // or null
};

/// The crossings of the segment, from its start to its end. Those at one place stand as exchanging every pair out of
/// order leaves them, from edge order on.
std::vector<Crossing> crossingsOf(const gmLineSeg& seg, bool includeEndpointEdges, const Crossed& contour);

/// The places where the edges of `other`, in their order, cross the contour. Both have tame coordinates.
std::vector<gmVector<2>> crossingsOfEdges(const Crossed& other, const Crossed& contour);

/// Whether an edge crosses another that does not touch its ends. The contour has tame coordinates.
bool crossesItself(const Crossed& contour);

/// Which edges a segment from one of their ends to the other, asked without the edges that touch its ends, may cross.
/// Those that are not marked it does not cross. Where finding out would take too long, all are marked. The contour has
/// tame coordinates.
std::vector<bool> crossableEdges(const Crossed& contour);

}  // namespace detail
