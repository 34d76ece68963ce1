// Everything that shapes with edge points can be asked beyond what plain ones can.
#pragma once

#include "fuzz/answers.h"

namespace fuzz {

using EdgeContour = gmContourT<gmEdgelet>;
using EdgeRegion = gmRegionT<gmEdgelet>;
using EdgeSet = gmRegionSetT<gmEdgelet>;

inline Answers answersOf(const EdgeContour& contour) {
    Answers answers = answersOf(static_cast<const gmContour&>(contour));
    answers.add(contour.data());
    answers.add(contour.dataFromPointsXform().isNull());
    answers.askEdgePoints([&] { return contour.point(gmEdgelet({3.0, -2.0}, 7, gmAngle8(9))); });
    answers.askEdgePoints([&] { return contour.datum({3.0, -2.0}); });
    answers.askEdgePoints([&] {
        EdgeRegion hull;
        contour.convexHullT(hull);
        return true;
    });
    return answers;
}

inline Answers answersOf(const EdgeRegion& region) {
    Answers answers = answersOf(static_cast<const EdgeContour&>(region));
    answers.add(answersOf(static_cast<const gmRegion&>(region)));
    answers.add(region.holes().size());
    for (const auto& hole : region.holes())
        answers.add(RegionCPtr(hole));
    answers.askEdgePoints([&] {
        EdgeRegion result;
        region.regularizeT(result);
        return true;
    });
    return answers;
}

inline Answers answersOf(const EdgeSet& set) {
    Answers answers = answersOf(static_cast<const gmRegionSet&>(set));
    for (const auto& region : set.regionsT())
        answers.add(RegionCPtr(region));
    return answers;
}

}  // namespace fuzz
