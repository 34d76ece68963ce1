#pragma once

#include <cstddef>
#include <vector>

#include "foundation/math/lanes.h"

namespace detail {

/// The lengths of two vectors.
inline Two lengths(const Two& a, const Two& b) {
    const Two aa = a * a;
    const Two bb = b * b;
    return squareRoot(firsts(aa, bb) + seconds(aa, bb));
}

/// Calls pair(a, b, c) for the edges a-b and b-c, all edges two by two in edge order, and edge(a, b) for those that
/// have no neighbour left. What is computed for both at once is to be added up one after the other: a sum then has the
/// bits of the plain loop.
template <class Pair, class Edge>
void forEachEdgePair(const std::vector<gmVector<2>>& points, bool closed, Pair pair, Edge edge) {
    const std::size_t n = points.size();
    if (closed && n > 0)
        edge(points[n - 1], points[0]);
    std::size_t i = 0;
    for (; i + 2 < n; i += 2)
        pair(loadTwo(points[i]), loadTwo(points[i + 1]), loadTwo(points[i + 2]));
    if (i + 1 < n)
        edge(points[i], points[i + 1]);
}

}  // namespace detail
