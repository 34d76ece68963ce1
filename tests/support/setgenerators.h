// Sets of regions to try.
#pragma once

#include <map>
#include <memory>
#include <string>
#include <utility>

#include "tests/reference/regionset.h"
#include "tests/support/regiongenerators.h"
#include "tests/support/testregionset.h"
#include "tests/support/text.h"

namespace support {

inline Points placed(Points points, double size, const gmVector<2>& shift) {
    for (gmVector<2>& v : points)
        v = v * size + shift;
    return points;
}

/// Boxes and crossing outlines on a small grid, and in a while whatever stresses contours.
inline Points anyOutline(Random& random) {
    if (random.chance(0.4)) {
        const gmVector<2> from = random.gridPoint(0, 4);
        const gmVector<2> size = random.gridPoint(1, 3);
        return turned(random, {from, from + gmVector<2>(size.x(), 0), from + size,  //
                               from + gmVector<2>(0, size.y())});
    }
    if (random.chance(0.3))
        return placed(bowTieOutline(random).points, 1.0, random.gridPoint(0, 4));
    if (random.chance(0.3))
        return gridOutline(random).points;
    const auto family = random.oneOf(regionFamilies());
    return family.draw == largeOutline ? Points() : family.draw(random).points;
}

/// Apart, nested, side by side, across each other or equal; perhaps the same object again.
inline reference::RegionSet anySet(Random& random) {
    reference::RegionSet set;
    for (int n = random.integer(0, 5); n > 0; n--) {
        Points points = anyOutline(random);
        if (!set.empty()) {
            const auto& other = random.oneOf(set);
            if (random.chance(0.1)) {
                set.emplace_back(other);
                continue;
            }
            if (other && !other->points.empty() && random.chance(0.4)) {
                const gmVector<2> step = random.gridPoint(-2, 2) * random.oneOf<double>({0.0, 5e-7, 1e-6, 1.0, 1.0});
                const double size = random.oneOf<double>({1.0, 1.0, 0.5, 0.9});
                points = placed(other->points, size, step + random.oneOf(other->points) * (1.0 - size));
            }
        }
        if (random.chance(0.02))
            set.emplace_back(nullptr);
        else
            set.push_back(std::make_shared<reference::Region>(regionOf(random, points, random.chance(0.3) ? 2 : 0)));
    }
    return set;
}

inline std::string textOf(const reference::Region& region) {
    std::string result = "region(" + text(region.points);
    for (const reference::Region& hole : region.holes)
        result += ", " + textOf(hole);
    return result + ")";
}

inline std::string textOf(const reference::RegionSet& set) {
    std::string result = "set of";
    for (const auto& region : set)
        result += "\n    " + (region ? textOf(*region) : "nothing");
    return result;
}

/// Holes that meet the outline come to it as they can: the outline changes after they are set.
inline gmPtrHandle<gmRegion> made(const reference::Region& plain) {
    gmPtrHandle<gmRegion> region(new gmRegion);
    Holes holes;
    for (const reference::Region& hole : plain.holes)
        holes.push_back(made(hole));
    if (!holes.empty()) {
        region->points({gmVector<2>(0, 0)});
        region->holes(holes);
    }
    region->points(plain.points);
    return region;
}

/// Regions that nobody has asked yet: one with holes tells its centre only once.
struct Fresh {
    explicit Fresh(const reference::RegionSet& plain) {
        for (const auto& region : plain) {
            gmPtrHandle<gmRegion>& handle = known[region.get()];
            if (region && handle.isNull())
                handle = made(*region);
            handles.push_back(handle);
        }
        set.regions(handles);
    }

    std::map<const reference::Region*, gmPtrHandle<gmRegion>> known;
    std::vector<gmPtrHandle<gmRegion>> handles;
    TestRegionSet set;
};

}  // namespace support
