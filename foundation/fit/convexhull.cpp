#include "foundation/fit/convexhull.h"

#include <algorithm>
#include <cmath>

#include "foundation/math/orientation.h"

void gfConvexHull(const std::vector<gmVector<2>>& in, std::vector<gmVector<2>>& out) {
    std::vector<gmVector<2>> sorted;
    sorted.reserve(in.size());
    for (const gmVector<2>& point : in)
        if (std::isfinite(point.x()) && std::isfinite(point.y()))
            sorted.push_back(point);
    std::sort(sorted.begin(), sorted.end(), [](const gmVector<2>& a, const gmVector<2>& b) {
        return a.x() < b.x() || (a.x() == b.x() && a.y() < b.y());
    });
    sorted.erase(std::unique(sorted.begin(), sorted.end()), sorted.end());

    std::vector<gmVector<2>> hull;
    // One chain from the lowest point to the highest, one back; each starts on the last vertex of the one before.
    const auto addChain = [&hull](auto first, auto last) {
        const std::size_t start = hull.size();
        for (; first != last; ++first) {
            while (hull.size() >= start + 2 && gfOrientation(hull[hull.size() - 2], hull[hull.size() - 1], *first) <= 0)
                hull.pop_back();
            hull.push_back(*first);
        }
        hull.pop_back();
    };
    if (sorted.size() < 2) {
        hull = sorted;
    } else {
        addChain(sorted.begin(), sorted.end());
        addChain(sorted.rbegin(), sorted.rend());
    }
    out.swap(hull);
}
