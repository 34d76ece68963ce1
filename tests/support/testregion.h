#pragma once

#include <string>
#include <vector>

#include "cntr/region.h"
#include "tests/support/text.h"

namespace support {

// An explicit instantiation may name private members: this is how tests reach two of the region's.
struct InsideCountTag {
    using Member = long (gmRegion::*)(const gmVector<2>&, bool) const;
    friend Member memberOf(InsideCountTag);
};
struct SpliceTag {
    using Member = void (gmRegion::*)(const gmRegion&, gmRegion&) const;
    friend Member memberOf(SpliceTag);
};
template <class Tag, typename Tag::Member Value>
struct Opened {
    friend typename Tag::Member memberOf(Tag) { return Value; }
};
template struct Opened<InsideCountTag, &gmRegion::insideCount>;
template struct Opened<SpliceTag, &gmRegion::splice>;

/// How often a ray from the point crosses the outline; with `bothDirections` the smaller count of two opposite rays.
inline long insideCount(const gmRegion& region, const gmVector<2>& p, bool bothDirections) {
    return (region.*memberOf(InsideCountTag()))(p, bothDirections);
}

inline void splice(const gmRegion& region, const gmRegion& other, gmRegion& out) {
    (region.*memberOf(SpliceTag()))(other, out);
}

/// A region that lets tests at what only derived classes see.
class TestRegion : public gmRegion {
  public:
    TestRegion() = default;
    // The outline is a virtual base, so it is the most derived class that constructs it.
    explicit TestRegion(const std::vector<gmVector<2>>& points) : gmContour(points, true), gmRegion(points) {}

    using gmContour::medianFeatureSize;
    using gmRegion::checkEmptyContour;
    using gmRegion::cleanCacheInfo;

    /// Moves a vertex without a word to anyone: answers that do not follow are remembered ones.
    void moveSecretly(std::size_t vertex, const gmVector<2>& position) {
        const_cast<std::vector<gmVector<2>>&>(points())[vertex] = position;
    }
};

using Holes = std::vector<RegionCPtr>;
using OwnHoles = std::vector<gmPtrHandle<gmRegion>>;
using Handle = gmPtrHandle<gmRegion>;

/// region("0 0, 4 0, 4 3") is the triangle.
inline gmRegion region(const std::string& vertices, gmContourDefs::IntersectionMode mode = gmContourDefs::eKeep) {
    return gmRegion(points(vertices), mode);
}

inline TestRegion testRegion(const std::string& vertices, const Holes& holes = {}) {
    TestRegion region(points(vertices));
    region.holes(holes);
    return region;
}

/// The same on the heap, to be a hole.
inline RegionCPtr shared(const std::string& vertices) {
    return RegionCPtr(new gmRegion(points(vertices)));
}

}  // namespace support
