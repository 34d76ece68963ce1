// Shapes that share holes, regions and transforms, for scripts to work on.
#pragma once

#include <unordered_set>
#include <vector>

#include "fuzz/bytes.h"
#include "fuzz/edgeanswers.h"

namespace fuzz {

using EdgeRegionCPtr = gmPtrHandle_const<EdgeRegion>;

inline bool reaches(const gmRegion* from, const gmRegion* to, std::unordered_set<const gmRegion*>& seen) {
    if (!from || !seen.insert(from).second)
        return false;
    if (from == to)
        return true;
    for (const RegionCPtr& hole : from->holes())
        if (reaches(hole.get(), to, seen))
            return true;
    if (const auto* edge = dynamic_cast<const EdgeRegion*>(from))
        for (const EdgeRegionCPtr& hole : edge->holes())
            if (reaches(hole.get(), to, seen))
                return true;
    return false;
}

/// Whether `from` holds `to`, at whatever depth, or is it.
inline bool reaches(const gmRegion* from, const gmRegion* to) {
    std::unordered_set<const gmRegion*> seen;
    return reaches(from, to, seen);
}

template <class Handle>
bool anyReaches(const std::vector<Handle>& from, const gmRegion* to) {
    for (const Handle& each : from)
        if (reaches(each.get(), to))
            return true;
    return false;
}

/// That a shape refuses what it is told is as good as that it does it.
template <class Order>
void tell(Order order) {
    Answers().askEdgePoints([&] {
        order();
        return true;
    });
}

/// Slots with plain shapes and shapes with edge points.
class Pool {
  public:
    using Region = gmPtrHandle<gmRegion>;
    using Contour = gmPtrHandle<gmContour>;
    using Set = gmPtrHandle<gmRegionSet>;

    /// Squares one in the other, half of them with edge points, each with holes that nothing else keeps alive.
    explicit Pool(Bytes& in) : in_(in) {
        for (std::size_t i = 0; i < regions_.size(); ++i) {
            const std::vector<gmVector<2>> outline = square(static_cast<double>(2 * i));
            regions_[i] = i % 2 == 0 ? Region(new gmRegion(outline)) : Region(new EdgeRegion(edgelets(outline)));
            const EdgeRegion::Holes islands = edgeHoles(18.0, {});
            const EdgeRegion::Holes holes = edgeHoles(15.0, islands);
            regions_[i]->holes(std::vector<RegionCPtr>(holes.begin(), holes.end()));
            if (auto* region = dynamic_cast<EdgeRegion*>(regions_[i].get()))
                region->holes(holes);
        }
        for (std::size_t i = 0; i < contours_.size(); ++i) {
            const std::vector<gmVector<2>> outline = square(static_cast<double>(3 * i));
            contours_[i] = i == 0 ? Contour(new gmContour(outline, true)) : Contour(new EdgeContour(edgelets(outline)));
        }
        sets_[0] = Set(new gmRegionSet(std::vector<RegionCPtr>{regions_[0], regions_[1]}));
        sets_[1] = Set(new EdgeSet(EdgeSet::Regions{edge(regions_[1]), edge(regions_[3])}));
        sets_[2] = Set(new gmRegionSet);
    }

    Region& region() { return in_.oneOf(regions_); }
    Contour& contour() { return in_.oneOf(contours_); }
    Set& set() { return in_.oneOf(sets_); }

    Region newRegion() {
        if (in_.oneIn(2))
            return Region(new EdgeRegion(edgelets(outline()), xform()));
        return Region(new gmRegion(outline()));
    }
    Contour newContour() {
        if (in_.oneIn(2))
            return Contour(new EdgeContour(edgelets(outline()), xform()));
        return Contour(new gmContour(outline(), in_.oneIn(2)));
    }
    Set newSet() {
        if (in_.oneIn(2))
            return Set(new EdgeSet(EdgeSet::Regions{edge(anyRegion())}));
        return Set(new gmRegionSet(std::vector<RegionCPtr>{anyRegion()}));
    }

    /// A region of the pool, or from there on down the holes.
    RegionCPtr anyRegion() {
        RegionCPtr chosen = region();
        while (!chosen->holes().empty() && in_.oneIn(2))
            chosen = RegionCPtr(in_.oneOf(chosen->holes()));
        return chosen;
    }
    std::vector<RegionCPtr> anyRegions() {
        if (in_.oneIn(2))
            return anyRegion()->holes();
        std::vector<RegionCPtr> regions(in_.below(3));
        for (RegionCPtr& each : regions)
            each = anyRegion();
        return regions;
    }
    static EdgeRegionCPtr edge(const RegionCPtr& region) {
        return EdgeRegionCPtr(dynamic_cast<const EdgeRegion*>(region.get()));
    }
    const gmContour& anyContour() { return in_.oneIn(2) ? static_cast<const gmContour&>(*anyRegion()) : *contour(); }

  private:
    static std::vector<gmVector<2>> square(double inset) {
        const double far = 40.0 - inset;
        return {{inset, inset}, {far, inset}, {far, far}, {inset, far}};
    }
    /// Two squares, one in the other, that share their holes.
    static EdgeRegion::Holes edgeHoles(double inset, const EdgeRegion::Holes& islands) {
        EdgeRegion::Holes holes;
        for (const double more : {0.0, 1.0}) {
            const gmPtrHandle<EdgeRegion> hole(new EdgeRegion(edgelets(square(inset + more))));
            hole->holes(std::vector<RegionCPtr>(islands.begin(), islands.end()));
            hole->holes(islands);
            holes.push_back(hole);
        }
        return holes;
    }
    std::vector<gmVector<2>> outline() {
        if (in_.oneIn(3))
            return anyPlaces(in_, in_.below(7));
        return square(static_cast<double>(in_.below(16)));
    }
    static std::vector<gmEdgelet> edgelets(const std::vector<gmVector<2>>& outline) {
        std::vector<gmEdgelet> edgelets;
        for (const gmVector<2>& place : outline)
            edgelets.emplace_back(place, static_cast<unsigned short>(edgelets.size()), gmAngle8(3));
        return edgelets;
    }
    gmPtrHandle<gm2XformBase> xform() {
        if (in_.oneIn(3))
            return gmPtrHandle<gm2XformBase>(new gm2XformLinear(gmXform<2>({2, 0, 0, 2}, {1, 1})));
        return nullptr;
    }

    Bytes& in_;
    std::vector<Region> regions_{6};
    std::vector<Contour> contours_{3};
    std::vector<Set> sets_{3};
};

}  // namespace fuzz
