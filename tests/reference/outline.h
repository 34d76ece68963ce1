// The plain procedures' own idea of a contour: vertices and a flag, and nothing that is remembered.
#pragma once

#include <cstddef>
#include <vector>

#include "foundation/math/vector.h"

namespace reference {

using Points = std::vector<gmVector<2>>;

struct Outline {
    Points points;
    bool closed = true;
};

/// One edge: the indices of the vertices that it joins.
struct Edge {
    std::size_t from;
    std::size_t to;
};

/// All edges in edge order: a closed outline's closing edge comes first.
inline std::vector<Edge> edges(const Outline& outline) {
    std::vector<Edge> result;
    const std::size_t n = outline.points.size();
    std::size_t prev = 0;
    if (outline.closed && n > 0)
        prev = n - 1;
    for (std::size_t i = outline.closed ? 0 : 1; i < n; i++) {
        result.push_back({prev, i});
        prev = i;
    }
    return result;
}

}  // namespace reference
