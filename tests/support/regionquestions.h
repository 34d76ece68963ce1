// What a region is asked, with the answers of the plain procedures.
#pragma once

#include <cstddef>
#include <string>
#include <utility>
#include <vector>

#include "cntr/region.h"
#include "tests/reference/region_containment.h"
#include "tests/support/hardprobes.h"
#include "tests/support/questions.h"
#include "tests/support/testcontour.h"
#include "tests/support/testregion.h"

namespace support {

using RegionQuestions = Questions<gmRegion>;

/// How often rays cross the outline, and what comes of it without holes.
inline void addRays(RegionQuestions& questions, const reference::Region& plain, const gmVector<2>& p) {
    const std::string at = " " + text(p);
    const long ahead = reference::insideCount(plain, p, false);
    questions.push_back(
        question<gmRegion>("inside" + at, ahead % 2 == 1, [p](const gmRegion& r) { return r.inside(p, false); }));
    questions.push_back(question<gmRegion>("crossings of one ray" + at, ahead,
                                           [p](const gmRegion& r) { return insideCount(r, p, false); }));
    questions.push_back(question<gmRegion>("crossings of two rays" + at, reference::insideCount(plain, p, true),
                                           [p](const gmRegion& r) { return insideCount(r, p, true); }));
}

/// What holes may change.
inline void addWithHoles(RegionQuestions& questions, const reference::Region& plain, const gmVector<2>& p) {
    const std::string at = " " + text(p);
    for (const bool holes : {false, true}) {
        const std::string with = holes ? " with holes" : "";
        questions.push_back(refusable<gmRegion>(
            "inside" + at + with, [&] { return reference::inside(plain, p, holes); },
            [=](const gmRegion& r) { return r.inside(p, holes); }));
        for (const bool ofHole : {false, true})
            questions.push_back(refusable<gmRegion>(
                std::string(ofHole ? "hole of " : "") + "the closest vertex to" + at + with,
                [&] {
                    const reference::VertexOf closest = reference::closestVertexIndex(plain, p, holes);
                    return ofHole ? closest.hole : closest.index;
                },
                [=](const gmRegion& r) {
                    long hole = -7;
                    const long index = r.closestVertexIndex(p, holes, hole);
                    return ofHole ? hole : index;
                }));
        for (const bool vertexOnly : {false, true}) {
            questions.push_back(refusable<gmRegion>(
                "closest point to" + at + with, [&] { return reference::closestPoint(plain, p, vertexOnly, holes); },
                [=](const gmRegion& r) { return r.closestPoint(p, vertexOnly, holes); }));
            for (const bool insideIsZero : {false, true})
                questions.push_back(refusable<gmRegion>(
                    "distance of" + at + with,
                    [&] { return reference::distToPoint(plain, p, vertexOnly, holes, insideIsZero); },
                    [=](const gmRegion& r) { return r.distToPoint(p, vertexOnly, holes, insideIsZero); }));
        }
    }
}

inline void addRegionCrossings(RegionQuestions& questions, const reference::Region& plain, const gmLineSeg& seg) {
    for (const bool holes : {false, true})
        for (const bool endpointEdges : {false, true})
            questions.push_back(refusable<gmRegion>(
                "crossings of " + text(seg) + (holes ? " with holes" : ""),
                [&] { return reference::intersections(plain, seg, endpointEdges, holes); },
                [=](const gmRegion& r) { return r.intersections(seg, endpointEdges, holes); }));
}

inline void addRegionCrossings(RegionQuestions& questions, const reference::Region& plain, const Outline& other) {
    for (const bool holes : {false, true})
        questions.push_back(refusable<gmRegion>(
            std::string("crossings of an outline") + (holes ? " with holes" : ""),
            [&] { return reference::intersections(plain, other, holes); },
            [=, contour = TestContour(other)](const gmRegion& r) { return r.intersections(contour, holes); }));
}

}  // namespace support
