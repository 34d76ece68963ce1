#pragma once

#include <cstddef>
#include <vector>

#include "cntr/detail/edgetree.h"
#include "foundation/math/vector.h"

namespace detail {

/// Two vertices, the first with the lower index, and how far apart they are.
struct VertexPair {
    std::size_t first = 0;
    std::size_t second = 0;
    double distance = 0.0;
};

/// The vertices that are farthest apart: of equal pairs the one that comes first when all are gone through in order.
/// Distance 0 when no two are apart. `tree` is that of the contour, or null for trying every pair.
VertexPair farthestPair(const std::vector<gmVector<2>>& points, bool closed, const EdgeTree* tree);

/// The largest distance from the first vertex to another.
double largestDistanceFromFirst(const std::vector<gmVector<2>>& points);

}  // namespace detail
