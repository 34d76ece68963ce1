#pragma once

#include <functional>
#include <ostream>
#include <string>
#include <vector>

#include "tests/support/testregionset.h"
#include "tests/support/text.h"

namespace support {

/// The outlines of a set's regions.
inline std::string text(const gmRegionSet& set) {
    std::string result;
    for (const RegionCPtr& region : set.regions())
        result += (result.empty() ? "" : " + ") + (region.isNull() ? "nothing" : text(region->points()));
    return result;
}

inline std::string textOfRegularized(const gmRegionSet& set) {
    gmRegionSet out;
    set.regularize(out);
    return text(out);
}
inline std::string textOfOuterHull(const gmRegionSet& set) {
    gmRegionSet out;
    set.outerHull(out);
    return text(out);
}

/// A query whose answer a set remembers, as text, and two lists of regions that it answers differently.
struct RememberedSetQuery {
    const char* name;
    std::string (*ask)(const gmRegionSet&);
    std::vector<RegionCPtr> first;
    std::vector<RegionCPtr> second;
    bool announces;  ///< says that the caches have changed

    friend void PrintTo(const RememberedSetQuery& query, std::ostream* out) { *out << query.name; }
};

inline std::vector<RememberedSetQuery> rememberedSetQueries() {
    const std::vector<RegionCPtr> crossing = regionsOf({"0 0, 4 0, 4 4, 0 4", "2 2, 6 2, 6 6, 2 6"});
    const std::vector<RegionCPtr> alsoCrossing = regionsOf({"9 0, 14 0, 14 4, 9 4", "11 1, 19 1, 19 2, 11 2"});
    const std::vector<RegionCPtr> apart = regionsOf({"0 0, 1 0, 1 1, 0 1", "5 5, 6 5, 6 6"});
    return {
        {"Area", [](const gmRegionSet& s) { return text(s.area(false)); }, crossing, alsoCrossing, true},
        {"AreaWithHoles", [](const gmRegionSet& s) { return text(s.area(true)); }, crossing, alsoCrossing, true},
        {"CenterOfMass", [](const gmRegionSet& s) { return text(s.centerOfMass(false)); }, crossing, apart, true},
        {"CenterOfMassWithHoles", [](const gmRegionSet& s) { return text(s.centerOfMass(true)); }, crossing, apart,
         true},
        {"InertiaMatrix", [](const gmRegionSet& s) { return text(s.inertiaMatrix(false)); }, crossing, apart, true},
        {"InertiaMatrixWithHoles", [](const gmRegionSet& s) { return text(s.inertiaMatrix(true)); }, crossing, apart,
         true},
        {"EncloseRect", [](const gmRegionSet& s) { return text(s.encloseRect(gmXform<2>::I)); }, crossing, alsoCrossing,
         true},
        {"IsSelfIntersecting", [](const gmRegionSet& s) { return text(s.isSelfIntersecting()); }, crossing, apart,
         false},
        {"IsNotSelfIntersecting", [](const gmRegionSet& s) { return text(s.isSelfIntersecting()); }, apart, crossing,
         false},
        {"Regularize", textOfRegularized, crossing, alsoCrossing, false},
        {"OuterHull", textOfOuterHull, crossing, alsoCrossing, false},
    };
}

}  // namespace support

inline void PrintTo(const gmRegionSet& value, std::ostream* out) {
    *out << support::text(value);
}
