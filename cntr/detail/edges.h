#pragma once

#include <cstddef>
#include <vector>

#include "foundation/math/vector.h"

namespace detail {

/// Calls visit(previous, current, edge) for every edge of a contour of n vertices, in the library's edge order: a
/// closed contour starts with the closing edge, from vertex n - 1 to vertex 0; an open one with the edge from vertex 0
/// to 1.
template <class Visit>
void forEachEdge(std::size_t n, bool closed, Visit visit) {
    std::size_t previous = closed && n > 0 ? n - 1 : 0;
    std::size_t edge = 0;
    for (std::size_t current = closed ? 0 : 1; current < n; previous = current++)
        visit(previous, current, edge++);
}

/// The same with the two vertices of the edge.
template <class Visit>
void forEachEdge(const std::vector<gmVector<2>>& points, bool closed, Visit visit) {
    forEachEdge(points.size(), closed, [&](std::size_t previous, std::size_t current, std::size_t) {
        visit(points[previous], points[current]);
    });
}

/// The two vertices of an edge of that contour.
struct EdgeEnds {
    std::size_t from;
    std::size_t to;
};
inline EdgeEnds edgeEnds(std::size_t n, bool closed, std::size_t edge) {
    if (!closed)
        return {edge, edge + 1};
    return {edge > 0 ? edge - 1 : n - 1, edge};
}

}  // namespace detail
