#pragma once

#include <cmath>
#include <cstddef>
#include <limits>
#include <memory>
#include <set>
#include <vector>

#include "cntr/defs.h"
#include "foundation/object/exception.h"
#include "tests/reference/region_measures.h"
#include "tests/reference/region_topology.h"

namespace reference {

/// The plain procedures' own idea of a set: regions in order, some perhaps missing, some perhaps in it twice.
using RegionSet = std::vector<std::shared_ptr<const Region>>;

inline const Region& regionAt(const RegionSet& set, std::size_t i) {
    if (!set[i])
        throw gmBadPointer();
    return *set[i];
}

inline void refuseEmpty(const RegionSet& set) {
    if (set.empty())
        throw gmContourDefs::EmptyRegionSet();
}

inline double area(const RegionSet& set, bool considerHoles) {
    double total = 0.0;
    for (std::size_t i = 0; i < set.size(); i++)
        total += area(regionAt(set, i), considerHoles);
    return total;
}

/// Of regions that nobody has asked before. One with holes that is in the set twice answers (0, 0) the second time.
inline gmVector<2> centerOfMass(const RegionSet& set, bool considerHoles) {
    refuseEmpty(set);
    std::set<const Region*> asked;
    gmVector<2> moment;
    double mass = 0.0;
    for (std::size_t i = 0; i < set.size(); i++) {
        const Region& region = regionAt(set, i);
        const double regionMass = area(region, considerHoles);
        gmVector<2> center = centerOfMass(region, considerHoles);
        if (!asked.insert(&region).second && considerHoles && !region.holes.empty())
            center = gmVector<2>();
        moment = moment + regionMass * center;
        mass += regionMass;
    }
    if (std::fabs(mass) > 1e-15)
        return moment * (1.0 / mass);
    return {0.0, 0.0};
}

inline gmMatrix<2> inertiaMatrix(const RegionSet& set, bool considerHoles) {
    refuseEmpty(set);
    Moments total;
    for (std::size_t i = 0; i < set.size(); i++) {
        const Region& region = regionAt(set, i);
        Moments moments;
        moments.area = area(region, considerHoles);
        moments.center = centerOfMass(region, considerHoles);
        const gmMatrix<2> matrix = inertiaMatrix(region, considerHoles);
        moments.xx = matrix(0, 0);
        moments.xy = matrix(0, 1);
        moments.yy = matrix(1, 1);
        total = sum(total, moments);
    }
    return gmMatrix<2>(total.xx, total.xy, total.xy, total.yy);
}

inline bool inside(const RegionSet& set, const gmVector<2>& p, bool considerHoles) {
    for (std::size_t i = 0; i < set.size(); i++)
        if (inside(regionAt(set, i), p, considerHoles))
            return true;
    return false;
}

inline double distToPoint(const RegionSet& set, const gmVector<2>& p, bool vertexOnly, bool considerHoles,
                          bool insideIsZero) {
    refuseEmpty(set);
    double best = std::numeric_limits<double>::infinity();
    for (std::size_t i = 0; i < set.size(); i++) {
        const double d = distToPoint(regionAt(set, i), p, vertexOnly, considerHoles, insideIsZero);
        if (best > d)
            best = d;
    }
    return best;
}

inline gmRect encloseRect(const RegionSet& set, const gmXform<2>& xform) {
    refuseEmpty(set);
    refuseWithoutVertex(boundary(regionAt(set, 0)));
    gmRect rect = encloseRect(boundary(*set[0]), xform);
    for (std::size_t i = 1; i < set.size(); i++) {
        refuseWithoutVertex(boundary(regionAt(set, i)));
        rect = rect.enclose(encloseRect(boundary(*set[i]), xform));
    }
    return rect;
}

/// `found` is the answer; where the answer fails part-way, what was found until then.
inline void findSelfIntersection(const RegionSet& set, bool& found) {
    found = false;
    for (std::size_t i = 0; i < set.size(); i++)
        if (isSelfIntersecting(boundary(regionAt(set, i))))
            found = true;
    for (std::size_t i = 0; i + 1 < set.size(); i++)
        for (std::size_t j = i + 1; j < set.size(); j++)
            if (!intersections(regionAt(set, i), boundary(regionAt(set, j)), false).empty()) {
                found = true;
                return;
            }
}

/// Each region is compared once with those behind it. Where two are merged the last takes the place of the second, and
/// is passed over.
inline RegionSet mergeSweep(RegionSet set) {
    for (std::size_t i = 0; i + 1 < set.size(); i++)
        for (std::size_t j = i + 1; j < set.size(); j++) {
            if (intersections(regionAt(set, i), boundary(regionAt(set, j)), false).empty())
                continue;
            set[i] = std::make_shared<Region>(Region{splice(*set[i], *set[j]), {}});
            set[j] = std::shared_ptr<const Region>(set.back());
            set.pop_back();
        }
    return set;
}

inline RegionSet outerHullRegularize(const RegionSet& set, bool hull) {
    refuseEmpty(set);
    RegionSet result = mergeSweep(set);
    for (std::size_t k = 0; k < result.size(); k++) {
        const Region& region = regionAt(result, k);
        result[k] = std::make_shared<Region>(hull ? outerHull(region) : regularize(region));
    }
    return result;
}

/// A set that does not cross itself keeps its regions, the same ones.
inline RegionSet cleanedUp(const RegionSet& set, bool hull) {
    bool crosses = false;
    findSelfIntersection(set, crosses);
    return crosses ? outerHullRegularize(set, hull) : set;
}

}  // namespace reference
