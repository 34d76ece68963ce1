#pragma once

#include "tests/reference/outline.h"

namespace reference {

inline double length(const Outline& outline) {
    double sum = 0.0;
    for (const Edge& edge : edges(outline))
        sum += outline.points[edge.from].distance(outline.points[edge.to]);
    return sum;
}

/// The midpoints of the edges weighted by their lengths. Two vertices at least.
inline gmVector<2> meanPosition(const Outline& outline) {
    gmVector<2> weighted(0.0, 0.0);
    double total = 0.0;
    for (const Edge& edge : edges(outline)) {
        const gmVector<2>& a = outline.points[edge.from];
        const gmVector<2>& b = outline.points[edge.to];
        const double d = a.distance(b);
        weighted = weighted + d * (a + b) / 2.0;
        total += d;
    }
    return weighted * (1.0 / total);
}

}  // namespace reference
