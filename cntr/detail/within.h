#pragma once

#include <vector>

#include "foundation/math/vector.h"

namespace detail {

class EdgeTree;

/// The indices of the vertices closer to `point` than the tolerance: by square cell of that size (x, then y), then by
/// index. By index alone where cells of that size cannot be numbered. `tree` is that of the contour, or null.
std::vector<int> verticesWithin(double tolerance, const gmVector<2>& point, const std::vector<gmVector<2>>& points,
                                bool closed, const EdgeTree* tree);

}  // namespace detail
