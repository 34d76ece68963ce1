#pragma once

#include <algorithm>
#include <cmath>
#include <tuple>

#include "foundation/math/orientation.h"
#include "tests/reference/outline.h"

namespace support {

/// The convex hull as gfConvexHull lists it, as plainly as can be: sorted, then the lower and the upper chain.
inline reference::Points plainHull(const reference::Points& points) {
    reference::Points sorted;
    for (const gmVector<2>& v : points)
        if (std::isfinite(v.x()) && std::isfinite(v.y()))
            sorted.push_back(v);
    std::sort(sorted.begin(), sorted.end(), [](const gmVector<2>& a, const gmVector<2>& b) {
        return std::make_tuple(a.x(), a.y()) < std::make_tuple(b.x(), b.y());
    });
    sorted.erase(std::unique(sorted.begin(), sorted.end()), sorted.end());
    if (sorted.size() < 3)
        return sorted;
    reference::Points hull;
    for (int chain = 0; chain < 2; chain++) {
        const std::size_t start = hull.size();
        for (const gmVector<2>& v : sorted) {
            while (hull.size() >= start + 2 && gfOrientation(hull[hull.size() - 2], hull.back(), v) <= 0)
                hull.pop_back();
            hull.push_back(v);
        }
        hull.pop_back();  // the next chain starts with it
        std::reverse(sorted.begin(), sorted.end());
    }
    return hull;
}

}  // namespace support
