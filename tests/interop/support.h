// What the tests of the conversions have in common.
#pragma once

#include <algorithm>
#include <string>
#include <vector>

#include "cntr/cntr.h"
#include "tests/support/random.h"

namespace interop_test {

using Points = std::vector<gmVector<2>>;

/// The text of the refusal, or "accepted".
template <class Conversion>
std::string refusal(const Conversion& conversion) {
    try {
        conversion();
    } catch (const gmContourDefs::BadParams& error) {
        return error.message();
    }
    return "accepted";
}

inline RegionCPtr shared(const Points& points, const std::vector<RegionCPtr>& holes = {}) {
    const gmPtrHandle<gmRegion> region(new gmRegion(points));
    if (!holes.empty())
        region->holes(holes);
    return region;
}

/// Counter-clockwise with y up.
inline Points square(double x, double y, double side) {
    return {{x, y}, {x + side, y}, {x + side, y + side}, {x, y + side}};
}

inline Points backwards(Points points) {
    if (!points.empty())
        std::reverse(points.begin() + 1, points.end());
    return points;
}

/// A region in a hole in a region in a hole and so on.
inline RegionCPtr nest(int depth) {
    RegionCPtr inner;
    for (int i = 0; i < depth; ++i)
        inner = shared(square(-i - 1, -i - 1, 2 * i + 2),
                       inner.isNull() ? std::vector<RegionCPtr>() : std::vector<RegionCPtr>{inner});
    return inner;
}

/// A region with the same hole twice, which has the same hole twice, and so on: 2^depth outlines of as many regions as
/// there are levels.
inline RegionCPtr doubling(int depth) {
    RegionCPtr inner = nest(1);
    for (int i = 1; i < depth; ++i)
        inner = shared(square(-i - 1, -i - 1, 2 * i + 2), {inner, inner});
    return inner;
}

inline std::vector<Points> outlines(const gmRegion& region) {
    std::vector<Points> all{region.points()};
    for (const RegionCPtr& hole : region.holes())
        all.push_back(hole->points());
    return all;
}

}  // namespace interop_test
